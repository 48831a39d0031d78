#include "nexwire/DeviceManagement/AlarmPanel.h"

#include "Application/DeviceManagement/ByNumber.h"

namespace nexwire {
namespace {

constexpr const char* kDeviceGuards = "/7730/v1/deviceManagement/devices/deviceGuards";
constexpr const char* kIntercomGuards = "/7730/v1/deviceManagement/devices/IntercomGuards";

} // namespace

bool CPartitionControlComm::request(protocol::PartitionControlRspData& result,
                                    const protocol::PartitionControl& control, const std::string& deviceGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/partitions/controls"), control), result);
}

bool CGetPartitionStatusComm::request(protocol::PartitionStatusRspData& result, const std::string& deviceGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/partitions/status")), result);
}

bool CGetPartitionInfoComm::request(protocol::PartitionInfoData& result, const std::string& deviceGuid,
                                    const std::string& partitionGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/partitions/", partitionGuid)), result);
}

bool CGetZoneOfPartitionComm::request(protocol::PartitionZoneInfoData& result, const std::string& deviceGuid,
                                      const std::string& partitionGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/partitions/", partitionGuid, "/zones")), result);
}

bool CFreshZoneOfPartitionComm::request(protocol::PartitionZoneInfoData& result, const std::string& deviceGuid,
                                        const std::string& partitionGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/partitions/", partitionGuid, "/freshzones")),
                    result);
}

bool CGetZoneInfoComm::request(protocol::ZoneInfoData& result, const std::string& deviceGuid,
                               const std::string& zoneGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/zones/", zoneGuid)), result);
}

bool CGetZoneByNoComm::request(protocol::ZoneAndDeviceInfoRspData& result, const std::string& deviceGuid,
                               unsigned int zoneNo, bool refresh)
{
    return QueryByNumber(result, deviceGuid, "/zones/", zoneNo, refresh);
}

bool CZoneControlComm::request(protocol::ZoneControlRspData& result, const protocol::ZoneControl& control,
                               const std::string& deviceGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/zones/controls"), control), result);
}

bool CGetZoneStatusComm::request(protocol::ZoneStatusRspData& result, const std::string& deviceGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/zones/status")), result);
}

bool CGetChannelStatusByZoneNo::request(protocol::RelativeChannel& result, const std::string& deviceGuid,
                                        unsigned int zoneNo, bool)
{
    return core::Guard([&] {
        const std::string number = std::to_string(zoneNo);
        return Exchange(Query(DevicePath(Route::External, deviceGuid, "/zones/", number, "/channalstatus")), result);
    });
}

bool CRelayControlComm::request(protocol::RelayControlRspData& result, const protocol::RelayControl& control,
                                const std::string& deviceGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/relays/controls"), control), result);
}

bool CGetRelayStatusComm::request(protocol::RelayStatusRspData& result, const std::string& deviceGuid)
{
    return Exchange(Query(DevicePath(Route::External, deviceGuid, "/relays/status")), result);
}

bool CGetDeviceGuards::request(protocol::DeviceGuardStateListData& result)
{
    return Exchange(Query(kDeviceGuards), result);
}

bool CModifyDeviceGuards::request(protocol::GuardResultListData& result, const protocol::DeviceGuard& guard)
{
    return Exchange(Write(kDeviceGuards, guard), result);
}

bool CGetIntercomGuards::request(protocol::DeviceGuardStateListData& result)
{
    return Exchange(Query(kIntercomGuards), result);
}

bool CModifyIntercomGuards::request(protocol::GuardResultListData& result, const protocol::DeviceGuard& guard)
{
    return Exchange(Write(kIntercomGuards, guard), result);
}

bool CIntercomControlComm::request(const protocol::IntercomControl& control, const std::string& deviceGuid)
{
    return Exchange(Write(DevicePath(Route::External, deviceGuid, "/intercom/controls"), control));
}

} // namespace nexwire
