#include "protocol/DeviceManagement/Device.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(DeviceBasicInfo, "deviceBasicInfo", F(mLongStrGuid), F(name), F(deviceType), F(protocolType), F(address), F(port), F(username), F(password), F(serialNo), F(model), F(softwareVersion), F(groupGuid))
NEXWIRE_INBOUND_FIELDS(DeviceExtInfo, "deviceExtInfo", F(streamKey), F(streamEncrypt), F(streamServerGuid), F(timeSync), F(timeZone), F(remark))
NEXWIRE_RETURN_FIELDS(DeviceCapacity, F(channelNum), F(alarmInputNum), F(alarmOutputNum), F(audioInputNum), F(doorNum), F(readerNum), F(zoneNum), F(partitionNum), F(relayNum), F(intercom), F(cloudP2P))
NEXWIRE_RETURN_FIELDS(DeviceResponse, F(deviceGuid), F(deviceBasicInfo), F(deviceExtInfo), F(deviceCapacity), F(onlineState), F(errorCode), F(securityLevel), F(addedTime), F(refreshTime))
NEXWIRE_RETURN_FIELDS(DeviceResponseData, F(deviceResponse))
NEXWIRE_RETURN_FIELDS(DeviceResponseListData, F(deviceResponseList), F(total))
NEXWIRE_INBOUND_FIELDS(DeviceQueryCondition, "deviceQueryCondition", F(mLongStrGuid), F(deviceGuidList), F(deviceType), F(keyword), F(onlineState), F(keyList), F(pageNo), F(pageSize))
NEXWIRE_INBOUND_FIELDS(DeviceList, "deviceList", F(deviceGuidList))
NEXWIRE_INBOUND_FIELDS(DeviceAddReq, "deviceAddReq", F(name), F(deviceType), F(protocolType), F(addMode), F(address), F(endAddress), F(port), F(serialNo), F(username), F(password), F(groupGuid), F(importChannels), F(timeSync))
NEXWIRE_RETURN_FIELDS(DeviceResult, F(deviceGuid), F(address), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(DeviceResultListData, F(deviceResultList))
NEXWIRE_INBOUND_FIELDS(DeviceModificationReq, "deviceModificationReq", F(deviceBasicInfo), F(deviceExtInfo))
NEXWIRE_INBOUND_FIELDS(DeviceExisted, "deviceExisted", F(address), F(port), F(username), F(password))
NEXWIRE_RETURN_FIELDS(DeviceExistedResult, F(existed), F(existedType), F(deviceGuid))
NEXWIRE_RETURN_FIELDS(DeviceExistedResultData, F(deviceExistedResult))
// clang-format on

} // namespace protocol
