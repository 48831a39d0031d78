#include "protocol/DeviceManagement/Resource.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(ResourceByNoReq, "resourceByNoReq", F(refresh))
NEXWIRE_RETURN_FIELDS(AlarmInputInfo, F(alarmInputGuid), F(deviceGuid), F(name), F(alarmInputNo), F(sensorType), F(state), F(armed), F(groupGuid))
NEXWIRE_RETURN_FIELDS(AlarmInputInfoData, F(alarmInputInfo))
NEXWIRE_INBOUND_FIELDS(AlarmInputQueryReq, "alarmInputQueryReq", F(refresh), F(keyList))
NEXWIRE_RETURN_FIELDS(AlarmInputAndDeviceInfoRsp, F(alarmInputInfo), F(deviceInfo))
NEXWIRE_RETURN_FIELDS(AlarmInputAndDeviceInfoRspData, F(alarmInputAndDeviceInfoRsp))
NEXWIRE_RETURN_FIELDS(AlarmOutputAttr, F(alarmOutputGuid), F(deviceGuid), F(name), F(alarmOutputNo), F(state), F(duration), F(groupGuid))
NEXWIRE_RETURN_FIELDS(AlarmOutputAttrData, F(alarmOutputAttr))
NEXWIRE_RETURN_FIELDS(AlarmOutputParam, F(deviceGuid), F(deviceName), F(alarmOutputList))
NEXWIRE_RETURN_FIELDS(AlarmOutputInfo, F(alarmOutputParamList))
NEXWIRE_RETURN_FIELDS(AlarmOutputInfoData, F(alarmOutputInfo))
NEXWIRE_INBOUND_FIELDS(AlarmOutputControl, "alarmOutputControl", F(action), F(duration))
NEXWIRE_RETURN_FIELDS(AlarmOutputStatusRsp, F(alarmOutputGuid), F(state), F(changeTime))
NEXWIRE_RETURN_FIELDS(AlarmOutputStatusRspData, F(alarmOutputStatusRsp))
NEXWIRE_RETURN_FIELDS(AudioInput, F(audioInputGuid), F(deviceGuid), F(name), F(audioInputNo), F(codec), F(samplingRate), F(volume), F(relatedChannelGuid))
NEXWIRE_RETURN_FIELDS(AudioInputData, F(audioInput))
NEXWIRE_RETURN_FIELDS(AudioInAndDeviceInfoRsp, F(audioInput), F(deviceInfo))
NEXWIRE_RETURN_FIELDS(AudioInAndDeviceInfoRspData, F(audioInAndDeviceInfoRsp))
NEXWIRE_RETURN_FIELDS(CardReaderInfo, F(cardReaderGuid), F(deviceGuid), F(name), F(cardReaderNo), F(doorGuid), F(direction), F(readerType), F(onlineState), F(serialNo), F(softwareVersion), F(relatedChannelGuid))
NEXWIRE_RETURN_FIELDS(CardReaderInfoData, F(cardReaderInfo))
NEXWIRE_RETURN_FIELDS(CardReaderAndDeviceInfoRsp, F(cardReaderInfo), F(deviceInfo))
NEXWIRE_RETURN_FIELDS(CardReaderAndDeviceInfoRspData, F(cardReaderAndDeviceInfoRsp))
NEXWIRE_INBOUND_FIELDS(CardReaderModification, "cardReaderModification", F(name), F(doorGuid), F(direction))
NEXWIRE_RETURN_FIELDS(LaneControllerInfo, F(laneControllerGuid), F(deviceGuid), F(name), F(laneControllerNo), F(direction), F(barrierState), F(onlineState), F(serialNo), F(softwareVersion))
NEXWIRE_RETURN_FIELDS(LaneControllerInfoData, F(laneControllerInfo))
NEXWIRE_RETURN_FIELDS(RadarAttr, F(radarGuid), F(deviceGuid), F(name), F(radarNo), F(onlineState), F(range), F(angle), F(longitude), F(latitude), F(installHeight), F(direction), F(targetNum), F(relatedChannelList))
NEXWIRE_RETURN_FIELDS(RadarAttrData, F(radarAttr))
NEXWIRE_RETURN_FIELDS(SwitchPort, F(deviceGuid), F(portNo), F(name), F(linkState), F(linkSpeed), F(poe), F(poePower), F(receiveRate), F(sendRate), F(peerDeviceGuid))
// clang-format on

} // namespace protocol
