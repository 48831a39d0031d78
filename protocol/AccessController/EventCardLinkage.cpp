#include "protocol/AccessController/EventCardLinkage.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(EventCardLinkageCfg, "eventCardLinkageCfg", F(enable), F(linkageType), F(eventType), F(eventCode), F(sourceNo), F(cardNo), F(employeeNo), F(buzzerLinkage), F(captureLinkage), F(recordLinkage), F(openDoorList), F(closeDoorList), F(alwaysOpenDoorList), F(alwaysCloseDoorList), F(readerBuzzerList), F(alarmOutOpenList), F(alarmOutCloseList), F(zoneArmList), F(zoneDisarmList), F(audioNo))
NEXWIRE_INBOUND_FIELDS(ReturnRst, "returnRst", F(statusCode), F(statusString), F(subStatusCode), F(errorCode), F(errorMsg))
// clang-format on

} // namespace protocol
