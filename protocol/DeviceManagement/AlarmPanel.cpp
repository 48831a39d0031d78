#include "protocol/DeviceManagement/AlarmPanel.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(PartitionControl, "partitionControl", F(action), F(operatorPwd), F(partitionNoList))
NEXWIRE_RETURN_FIELDS(PanelControlResult, F(no), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(PartitionControlRsp, F(resultList))
NEXWIRE_RETURN_FIELDS(PartitionControlRspData, F(partitionControlRsp))
NEXWIRE_RETURN_FIELDS(PartitionStatus, F(partitionNo), F(armState), F(alarm), F(fault), F(changeTime))
NEXWIRE_RETURN_FIELDS(PartitionStatusRsp, F(partitionStatusList))
NEXWIRE_RETURN_FIELDS(PartitionStatusRspData, F(partitionStatusRsp))
NEXWIRE_RETURN_FIELDS(PartitionInfo, F(partitionGuid), F(deviceGuid), F(name), F(partitionNo), F(entryDelay), F(exitDelay), F(zoneNoList), F(partitionStatus))
NEXWIRE_RETURN_FIELDS(PartitionInfoData, F(partitionInfo))
NEXWIRE_RETURN_FIELDS(ZoneStatus, F(zoneNo), F(armed), F(bypassed), F(alarm), F(fault), F(tamper), F(battery), F(changeTime))
NEXWIRE_RETURN_FIELDS(ZoneInfo, F(zoneGuid), F(deviceGuid), F(name), F(zoneNo), F(partitionNo), F(zoneType), F(detectorType), F(relatedChannelGuid), F(zoneStatus))
NEXWIRE_RETURN_FIELDS(ZoneInfoData, F(zoneInfo))
NEXWIRE_RETURN_FIELDS(PartitionZoneInfo, F(partitionNo), F(zoneInfoList))
NEXWIRE_RETURN_FIELDS(PartitionZoneInfoData, F(partitionZoneInfo))
NEXWIRE_RETURN_FIELDS(ZoneAndDeviceInfoRsp, F(zoneInfo), F(deviceInfo))
NEXWIRE_RETURN_FIELDS(ZoneAndDeviceInfoRspData, F(zoneAndDeviceInfoRsp))
NEXWIRE_INBOUND_FIELDS(ZoneControl, "zoneControl", F(action), F(zoneNoList))
NEXWIRE_RETURN_FIELDS(ZoneControlRsp, F(resultList))
NEXWIRE_RETURN_FIELDS(ZoneControlRspData, F(zoneControlRsp))
NEXWIRE_RETURN_FIELDS(ZoneStatusRsp, F(zoneStatusList))
NEXWIRE_RETURN_FIELDS(ZoneStatusRspData, F(zoneStatusRsp))
NEXWIRE_RETURN_FIELDS(RelativeChannel, F(zoneNo), F(channelGuid), F(channelName), F(channelNo), F(onlineState))
NEXWIRE_INBOUND_FIELDS(RelayControl, "relayControl", F(action), F(duration), F(relayNoList))
NEXWIRE_RETURN_FIELDS(RelayControlRsp, F(resultList))
NEXWIRE_RETURN_FIELDS(RelayControlRspData, F(relayControlRsp))
NEXWIRE_RETURN_FIELDS(RelayStatus, F(relayGuid), F(name), F(relayNo), F(state))
NEXWIRE_RETURN_FIELDS(RelayStatusRsp, F(relayStatusList))
NEXWIRE_RETURN_FIELDS(RelayStatusRspData, F(relayStatusRsp))
NEXWIRE_RETURN_FIELDS(DeviceGuardState, F(deviceGuid), F(deviceName), F(guardState), F(errorCode))
NEXWIRE_RETURN_FIELDS(DeviceGuardStateListData, F(deviceGuardStateList))
NEXWIRE_INBOUND_FIELDS(DeviceGuard, "deviceGuard", F(guardState), F(deviceGuidList))
NEXWIRE_RETURN_FIELDS(GuardResult, F(deviceGuid), F(guardState), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(GuardResultListData, F(guardResultList))
NEXWIRE_INBOUND_FIELDS(IntercomControl, "intercomControl", F(action), F(periodNumber), F(buildingNumber), F(unitNumber), F(roomNumber), F(doorNo))
// clang-format on

} // namespace protocol
