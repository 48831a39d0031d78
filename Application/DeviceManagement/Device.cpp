#include "nexwire/DeviceManagement/Device.h"

#include "Application/DeviceManagement/DeviceGuid.h"
#include "Application/DeviceManagement/Send.h"
#include "core/Cipher.h"
#include "core/Log.h"

namespace nexwire {
namespace {

constexpr const char* kDevices = "/7730/v1/deviceManagement/devices";

template <class Structure, class... Members>
void SendOnly(Structure& structure, const Members&... members)
{
    core::SendOnly(structure, &structure, {&members...});
}

using Change = protocol::DeviceModificationReq;

/// @param result  nothing or a result.
template <class... Result>
bool Modify(const char* function, protocol::DeviceBasicInfo& basicInfo, const std::string& deviceGuid,
            Result&... result)
{
    return core::Guard([&] {
        protocol::DeviceBasicInfo sent = basicInfo;
        sent.mLongStrGuid = deviceGuid;
        SendOnly(sent, sent.mLongStrGuid, sent.username, sent.password);
        if (basicInfo.FilterMode() == protocol::DeviceBasicInfo::kOnly) {
            std::vector<std::string> keys = sent.FilterKeys();
            keys.insert(keys.end(), basicInfo.FilterKeys().begin(), basicInfo.FilterKeys().end());
            sent.WriteOnly(std::move(keys));
        }
        const std::string serial = guid::Supply(function, "CModDevice", deviceGuid);
        if (!Send(Write(DevicePath(Route::External, serial), Only(&Change::deviceBasicInfo, sent)), result...)) {
            return false;
        }
        basicInfo.mLongStrGuid.swap(sent.mLongStrGuid);
        return true;
    });
}

/// The condition as it is sent: it names the device in full.
protocol::DeviceQueryCondition About(const std::string& deviceGuid, const protocol::DeviceQueryCondition& condition)
{
    protocol::DeviceQueryCondition sent = condition;
    sent.mLongStrGuid = deviceGuid;
    return sent;
}

bool GetSingle(const char* function, const char* request, bool slow, protocol::DeviceResponseData& result,
               protocol::DeviceQueryCondition& condition, const std::string& deviceGuid)
{
    return core::Guard([&] {
        protocol::DeviceQueryCondition sent = About(deviceGuid, condition);
        const std::string serial = guid::Supply(function, request, deviceGuid);
        Operation operation = Query(DevicePath(Route::External, serial), sent);
        if (!Send(slow ? operation.OnSlowThread() : operation, result)) {
            return false;
        }
        condition = std::move(sent);
        return true;
    });
}

std::string SupplyForRefresh(const char* function, const std::string& deviceGuid)
{
    std::string serial = guid::Supply(function, "CRefreshSingleDevice", deviceGuid);
    guid::LogSerial(function, "CRefreshSingleDevice", serial);
    return serial;
}

} // namespace

bool CAddDevice::request(protocol::DeviceResultListData& result, const protocol::DeviceAddReq& device)
{
    return request(result, device, 0);
}

bool CAddDevice::request(protocol::DeviceResultListData& result, const protocol::DeviceAddReq& device, int timeoutMs)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        protocol::DeviceAddReq sent = device;
        const Path path(kDevices);
        if (!core::Convert({&sent.username, &sent.password}, &IEncryption::Encrypt)) {
            NEXWIRE_LOG_ERROR_OF(function, "AESEncryption failed!");
            return core::NotSent(Write(path));
        }
        return Send(Write(path, sent).Timeout(timeoutMs), result);
    });
}

bool CAddDevice::request(std::string& answer, std::string& body)
{
    return ExchangeForBytes(Write("/newDeviceManagement/v2/device/add").Text(body).ErrorFromAnswer(), answer);
}

bool CDeleteDevice::request(protocol::DeviceResultListData& result, const protocol::DeviceList& devices)
{
    return Send(Remove(kDevices, devices), result);
}

bool CGetAllDeviceInfo::request(protocol::DeviceResponseListData& result,
                                const protocol::DeviceQueryCondition& condition)
{
    return Send(Query(kDevices, condition), result);
}

bool CGetAllDeviceInfo::request(std::string& answer, std::string& body, const protocol::DeviceQueryCondition&)
{
    return ExchangeForBytes(Query("/newDeviceManagement/v2/device/status").Text(body).ErrorFromAnswer(), answer);
}

bool CGetAllDevicesInfo::request(protocol::DeviceResponseListData& result,
                                 const protocol::DeviceQueryCondition& condition)
{
    return Send(Query("/newDeviceManagement/v3/device/list", condition), result);
}

bool CInteralGetAllDeviceInfo::request(protocol::DeviceResponseListData& result,
                                       const protocol::DeviceQueryCondition& condition)
{
    return Send(Query("/7730/v1/internal/deviceManagement/devices", condition), result);
}

bool CGetSingleDevicesComm::request(protocol::DeviceResponseData& result, protocol::DeviceQueryCondition& condition,
                                    const std::string& deviceGuid)
{
    return GetSingle(NEXWIRE_FUNCTION, "CGetSingleDevicesComm", false, result, condition, deviceGuid);
}

bool CGetSingleDevicesCommBySlowThread::request(protocol::DeviceResponseData& result,
                                                protocol::DeviceQueryCondition& condition,
                                                const std::string& deviceGuid)
{
    return GetSingle(NEXWIRE_FUNCTION, "CGetSingleDevicesCommBySlowThread", true, result, condition, deviceGuid);
}

bool CInternalGetDeviceComm::request(protocol::DeviceResponseData& result,
                                     const protocol::DeviceQueryCondition& condition, const std::string& deviceGuid)
{
    return Send(Query(DevicePath(Route::Internal, deviceGuid), condition), result);
}

bool CModDevice::request(protocol::DeviceBasicInfo& basicInfo, const std::string& deviceGuid)
{
    return Modify(NEXWIRE_FUNCTION, basicInfo, deviceGuid);
}

bool CModDevice::request(protocol::DeviceResponseData& result, protocol::DeviceBasicInfo& basicInfo,
                         const std::string& deviceGuid)
{
    return Modify(NEXWIRE_FUNCTION, basicInfo, deviceGuid, result);
}

bool CDeviceStreamKeyComm::setStreamKey(const std::string& deviceGuid, const std::string& streamKey)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        protocol::DeviceBasicInfo basicInfo;
        basicInfo.mLongStrGuid = deviceGuid;
        SendOnly(basicInfo, basicInfo.mLongStrGuid);
        protocol::DeviceExtInfo extInfo;
        extInfo.streamKey = streamKey;
        SendOnly(extInfo, extInfo.streamKey);
        const std::string serial = guid::Supply(function, "CDeviceStreamKeyComm", deviceGuid);
        return Send(Write(DevicePath(Route::External, serial),
                          Only(&Change::deviceBasicInfo, basicInfo, &Change::deviceExtInfo, extInfo)));
    });
}

bool CRefreshDevices::request(const protocol::DeviceQueryCondition& condition)
{
    return Send(Write(Path(kDevices, "/refresh"), condition));
}

bool CRefreshSingleDevice::request(protocol::DeviceResponseData& result, protocol::DeviceQueryCondition& condition,
                                   const std::string& deviceGuid)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        protocol::DeviceQueryCondition sent = About(deviceGuid, condition);
        const std::string serial = SupplyForRefresh(function, deviceGuid);
        if (!Send(Write(DevicePath(Route::External, serial, "/refresh"), sent), result)) {
            return false;
        }
        condition = std::move(sent);
        return true;
    });
}

bool CRefreshSingleDevice::requestinternal(const std::string& deviceGuid)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        const std::string serial = SupplyForRefresh(function, deviceGuid);
        return Send(Write(DevicePath(Route::Internal, serial, "/refresh")));
    });
}

} // namespace nexwire
