#include "nexwire/DeviceManagement/CloudP2P.h"

#include "Application/DeviceManagement/Send.h"

namespace nexwire {
namespace {

constexpr const char* kAccounts = "/7730/v1/deviceManagement/cloudP2P/accounts";

} // namespace

bool CCloudP2PAccountLoginComm::request(protocol::CloudP2PAccountInfo& account)
{
    return ExchangeInPlace(Write(kAccounts, account).ErrorFromAnswer(), account);
}

bool CCloudP2PAccountLogoutComm::request()
{
    return Send(Remove(kAccounts));
}

bool CGetCloudP2PAccountComm::request(protocol::CloudP2PAccountResultData& result)
{
    return Send(Query(kAccounts), result);
}

bool CCloudP2PConfigComm::request(protocol::CloudP2PConfigs& result)
{
    return Send(Query("/7730/v1/deviceManagement/cloudP2P/configs"), result);
}

bool CGetCloudP2PCertStandard::request(const std::string& deviceGuid, protocol::CertificationStandardData& result)
{
    return Send(Query(DevicePath(Route::External, deviceGuid, "/certificationStandard")), result);
}

bool CCloudP2PUserCheck::request(const std::string& deviceGuid)
{
    return Send(Write(DevicePath(Route::External, deviceGuid, "/userCheck")));
}

bool CGetCloudP2PCapabilitiesComm::request(protocol::CloudP2PCapabilitiesData& result, const std::string& deviceGuid,
                                           const std::string& channelGuid)
{
    return Send(Query(DevicePath(Route::External, deviceGuid, "/channels/", channelGuid, "/capabilities/cloudP2P")),
                result);
}

} // namespace nexwire
