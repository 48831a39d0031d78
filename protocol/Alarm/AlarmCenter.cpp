#include "protocol/Alarm/AlarmCenter.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(AlarmRegistered, "alarmRegistered", F(clientGuid), F(userGuid), F(address), F(port), F(registered))
NEXWIRE_INBOUND_FIELDS(AlarmRegister, "alarmRegister", F(clientGuid), F(userGuid), F(alarmTypeList))
NEXWIRE_INBOUND_FIELDS(AlarmSubscribe, "alarmSubscribe", F(clientGuid), F(alarmTypeList), F(deviceGuidList), F(minLevel), F(subscribe))
NEXWIRE_INBOUND_FIELDS(DeviceEventSync, "deviceEventSync", F(deviceGuidList), F(operation))
NEXWIRE_INBOUND_FIELDS(DeviceEventStart, "deviceEventStart", F(deviceGuidList), F(start))
NEXWIRE_INBOUND_FIELDS(SdkPassThrough, "sdkPassThrough", F(command), F(channelNo), F(condBuffer), F(inBuffer))
NEXWIRE_RETURN_FIELDS(SdkPassThroughResponse, F(errorCode), F(outBuffer), F(statusBuffer))
NEXWIRE_RETURN_FIELDS(SdkPassThroughResponseData, F(sdkPassThroughResponse))
NEXWIRE_INBOUND_FIELDS(Comment, "comment", F(userGuid), F(content), F(commentTime))
NEXWIRE_INBOUND_FIELDS(AlarmMsg, "alarmMsg", F(alarmLogGuid), F(alarmType), F(alarmLevel), F(alarmTime), F(sourceGuid), F(content), F(userGuidList))
NEXWIRE_INBOUND_FIELDS(AlarmPicture, "alarmPicture", F(channelGuid), F(captureTime), F(picUrl), F(pictureData))
// clang-format on

} // namespace protocol
