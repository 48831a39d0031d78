#include "protocol/Alarm/ClientLink.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(ClientLink, "clientLink", F(popUp), F(sound), F(soundFile), F(speak), F(mapLocate), F(wallDisplay), F(duration), F(channelGuidList), F(userGuidList))
NEXWIRE_RETURN_FIELDS(LinkedEvent, F(eventGuid), F(eventType), F(eventName), F(alarmLevel), F(enable), F(templateGuid), F(clientLink))
NEXWIRE_INBOUND_FIELDS(LinkedEventCfg, "linkedEventCfg", F(eventGuid), F(eventType), F(alarmLevel), F(enable), F(templateGuid), F(clientLink))
NEXWIRE_INBOUND_FIELDS(ResourceEvent, "resourceEvent", F(resourceType), F(eventTypeList))
NEXWIRE_RETURN_FIELDS(ResourceEventInfo, F(resourceGuid), F(resourceName), F(linkedEventList))
NEXWIRE_RETURN_FIELDS(ResourceEventInfoData, F(resourceEventInfo))
NEXWIRE_RETURN_FIELDS(ResourceEventGuid, F(eventGuidList))
NEXWIRE_RETURN_FIELDS(ResourceEventGuidData, F(resourceEventGuid))
NEXWIRE_INBOUND_FIELDS(ResourceEventCfg, "resourceEventCfg", F(resourceType), F(linkedEventList))
NEXWIRE_INBOUND_FIELDS(ResourceEventDelete, "resourceEventDelete", F(resourceType), F(eventGuidList))
NEXWIRE_RETURN_FIELDS(ResourceEventResult, F(operationResultList))
NEXWIRE_RETURN_FIELDS(ResourceEventResultData, F(resourceEventResult))
NEXWIRE_INBOUND_FIELDS(CameraEvent, "cameraEvent", F(eventTypeList))
NEXWIRE_RETURN_FIELDS(CameraEventInfo, F(channelGuid), F(channelName), F(linkedEventList))
NEXWIRE_RETURN_FIELDS(CameraEventInfoData, F(cameraEventInfo))
NEXWIRE_INBOUND_FIELDS(CameraEventCfg, "cameraEventCfg", F(linkedEventList))
NEXWIRE_INBOUND_FIELDS(AlarmInEvent, "alarmInEvent", F(eventTypeList))
NEXWIRE_RETURN_FIELDS(AlarmInputEventInfo, F(alarmInputGuid), F(alarmInputName), F(linkedEventList))
NEXWIRE_RETURN_FIELDS(AlarmInputEventInfoData, F(alarmInputEventInfo))
NEXWIRE_INBOUND_FIELDS(AlarmInputEventCfg, "alarmInputEventCfg", F(linkedEventList))
NEXWIRE_INBOUND_FIELDS(QueryEventCondition, "queryEventCondition", F(keyword), F(enabledOnly), F(pageNo), F(pageSize))
NEXWIRE_INBOUND_FIELDS(EventTemplate, "eventTemplate", F(templateGuid), F(name), F(enable), F(eventTypeList), F(alarmLevel), F(weekdays), F(beginTime), F(endTime), F(clientLink))
NEXWIRE_RETURN_FIELDS(TemplateEventResponse, F(eventTemplate), F(resourceNum))
NEXWIRE_RETURN_FIELDS(TemplateEventResponseListData, F(templateEventResponseList), F(total))
NEXWIRE_INBOUND_FIELDS(ModifyEventTemplates, "modifyEventTemplates", F(eventTemplateList), F(removeGuidList))
NEXWIRE_RETURN_FIELDS(TemplateEventResult, F(templateGuid), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(TemplateEventResultListData, F(templateEventResultList))
NEXWIRE_RETURN_FIELDS(TemplateEventInfo, F(eventTemplate), F(resourceGuidList))
NEXWIRE_RETURN_FIELDS(TemplateEventInfoData, F(templateEventInfo))
// clang-format on

} // namespace protocol
