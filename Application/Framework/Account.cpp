#include "nexwire/Framework/Account.h"

#include "core/Log.h"
#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/Tarvo/v1/framework/";
constexpr const char* kDeviceRoot = "/7730/v1/deviceManagement/";
constexpr const char* kLoginToken = "users/login/LoginToken";

} // namespace

bool CGetLoginToken::request(protocol::UserResponseInfoData& result, int clientType)
{
    return Exchange(Query(Path(kRoot, kLoginToken), Only(&protocol::LoginTokenRequest::clientType, clientType)),
                    result);
}

bool CGetLoginTokenBySlowThread::request(protocol::UserResponseInfoData& result, int clientType)
{
    return Exchange(
        Query(Path(kRoot, kLoginToken), Only(&protocol::LoginTokenRequest::clientType, clientType)).OnSlowThread(),
        result);
}

bool CSetLoginToken::request(protocol::CloudP2PAccountInfo& account)
{
    const char* const function = NEXWIRE_FUNCTION;
    const bool done = ExchangeBothWays(Write(Path(kDeviceRoot, "setToken"), account), account);
    return core::Guard([&] {
               NEXWIRE_LOG_INFO_OF(function, "CSetLoginToken %s", done ? "true" : "false");
               return done;
           }) ||
           done;
}

bool CStartTiming::request(std::string& token)
{
    return core::Guard([&] {
        protocol::StartTiming timing;
        timing.token = token;
        if (!ExchangeBothWays(Write(Path(kDeviceRoot, "startTiming"), timing), timing)) {
            return false;
        }
        token = std::move(timing.token);
        return true;
    });
}

bool CGetLockParam::request(protocol::UserResponseInfoData& result, int operateType, const std::string& userName,
                            const std::string& password, int lockMinutes)
{
    using Lock = protocol::LockScreenRequest;
    // A capital V, unlike the others.
    return Exchange(
        Query("/7730/V1/framework/users/lockscreen", Only(&Lock::operateType, operateType, &Lock::userName, userName,
                                                          &Lock::password, password, &Lock::lockMinutes, lockMinutes)),
        result);
}

bool CGetOrvelAccountInfo::request(protocol::OrvelAccountInfo& account)
{
    return ExchangeBothWays(Query(Path(kRoot, "account/info"), account), account);
}

bool CSetOrvelAccountInfo::request(const protocol::OrvelAccountInfoModify& param)
{
    return Exchange(Write(Path(kRoot, "account/info"), param));
}

bool CSetUserMeasureInfo::request(const protocol::UserMeasureModify& param)
{
    return Exchange(Write(Path(kRoot, "user/measureinfo"), param));
}

bool CGetCurrentTeam::request(protocol::TeamOperateResponseInfoData& result,
                              const protocol::TeamOperateRequestInfo& param)
{
    return Exchange(Query(Path(kRoot, "team/getCurrentTeam"), param), result);
}

bool CGetStreamPackageInfo::request(protocol::StreamPackageInfoResponseInfoData& result)
{
    return Exchange(Query(Path(kRoot, "users/getStreamPackageInfo")), result);
}

bool CSetComponentRecvMsg::request(protocol::WSRequestInfo& param)
{
    const char* const function = NEXWIRE_FUNCTION;
    const bool done = ExchangeBothWays(Write(Path(kRoot, "msg/recv"), param), param);
    return core::Guard([&] {
               NEXWIRE_LOG_INFO_OF(function, "CSetComponentRecvMsg %s", done ? "true" : "false");
               return done;
           }) ||
           done;
}

bool CGetAccountAndTeamInfo::request(protocol::UserLoginAccountTeamInfo& result)
{
    const char* const function = NEXWIRE_FUNCTION;
    return Exchange(Read(Path(kRoot, "users/accountTeamInfo")), result) || core::Guard([&] {
               NEXWIRE_LOG_ERROR_OF(function, "GetAccountAndTeamInfo false");
               return false;
           });
}

bool CSetActiveDevice::request(protocol::Resource& device)
{
    return ExchangeBothWays(Write(Path(kRoot, "device/active"), device), device);
}

} // namespace nexwire
