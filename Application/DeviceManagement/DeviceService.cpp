#include "nexwire/DeviceManagement/DeviceService.h"

#include "Application/DeviceManagement/Send.h"

namespace nexwire {
namespace {

constexpr const char* kRoot = "/7730/v1/deviceManagement/";

constexpr const char* kContentType = "Content-Type";

} // namespace

bool CGetDeviceStatus::request(protocol::DeviceStatusData& result, const std::string& deviceGuid)
{
    return Send(Query(DevicePath(Route::External, deviceGuid, "/deviceStatus")), result);
}

bool CDeviceStatusComm::request(protocol::DeviceStatusData& result, const std::string& deviceGuid)
{
    return Send(Write(DevicePath(Route::External, deviceGuid, "/deviceStatus")), result);
}

bool CGetDeviceOnlineUser::request(protocol::OnlineUserListData& result, const std::string& deviceGuid)
{
    return Send(Query(DevicePath(Route::External, deviceGuid, "/onlineUsers")), result);
}

bool CGetNetWorkFlow::request(protocol::NetworkParamData& result, const std::string& deviceGuid)
{
    return core::Guard([&] {
        protocol::NetworkParamQuery query;
        query.deviceGuid = deviceGuid;
        return Send(Query(DevicePath(Route::External, deviceGuid, "/networkParams"), query), result);
    });
}

bool CGetDevQRCode::request(protocol::QrCodesRspData& result, const protocol::DeviceList& devices)
{
    return Send(Query(Path(kRoot, "devices/qrCodes"), devices), result);
}

bool CDeviceCapabilitiesComm::request(protocol::CapabilitiesData& result, const std::string& deviceGuid,
                                      const protocol::CapabilitiesQueryCondition& condition)
{
    return Send(Query(DevicePath(Route::External, deviceGuid, "/capabilities"), condition), result);
}

bool CDeviceCapabilitiesInnerComm::request(protocol::CapabilitiesData& result, const std::string& deviceGuid,
                                           const protocol::CapabilitiesQueryCondition& condition)
{
    return Send(Query(DevicePath(Route::Internal, deviceGuid, "/capabilities"), condition), result);
}

bool CDeviceDownloadsComm::request(std::string& content, std::string& contentType, const std::string& deviceGuid,
                                   const std::string& filePath)
{
    return core::Guard([&] {
        protocol::DeviceDownloadReq file;
        file.filePath = filePath;
        return ExchangeForBytes(Query(DevicePath(Route::External, deviceGuid, "/downloads"), file).ErrorFromAnswer(),
                                content, kContentType, contentType);
    });
}

bool CDeviceGetHttpFromNginx::request(std::string& contentType, const std::string& deviceGuid, const std::string& url)
{
    return core::Guard([&] {
        protocol::HttpFromNginxReq page;
        page.url = url;
        return ExchangeForField(
            Read(DevicePath(Route::External, deviceGuid, "/GetHttpFromNginx"), page).ErrorFromAnswer(), kContentType,
            contentType);
    });
}

bool CDeviceUploadFile::request(const protocol::UploadFileToDev& file, const std::string& deviceGuid)
{
    return Send(Write(DevicePath(Route::External, deviceGuid, "/uploadFile"), file));
}

bool CWiperComm::request(protocol::WiperControlResultListData& result, const protocol::WiperReq& order)
{
    return Send(Write(Path(kRoot, "wipers"), order), result);
}

bool CTimeSyncComm::request(const protocol::DeviceList& devices, protocol::DeviceResultListData& result)
{
    return Send(Write(Path(kRoot, "batchTimeSynchronization"), devices), result);
}

bool CDeviceCertVerificationComm::get(protocol::CertVerificationResultData& result)
{
    return Send(Query(Path(kRoot, "certVerification")), result);
}

bool CDeviceCertVerificationComm::set(const protocol::CertVerificationReq& setting)
{
    return Send(Write(Path(kRoot, "certVerification"), setting));
}

bool CDevicePurePwdVerityComm::request(protocol::PurePwdVerityEnableDeviceRspData& result)
{
    return Send(Query("/7730/v1/internal/deviceManagement/purePwdVerityEnableDevices"), result);
}

bool CDevicePermissionLogin::request(protocol::DevicePermissionDataReturn& result,
                                     const protocol::DevicePermissionData& login)
{
    return Send(Write(Path(kRoot, "devices/permission/login"), login), result);
}

bool CDevicePermissionOffline::request(protocol::DevicePermissionDataReturn& result,
                                       const protocol::DevicePermissionData& login)
{
    return Send(Write(Path(kRoot, "devices/permission/offline"), login), result);
}

} // namespace nexwire
