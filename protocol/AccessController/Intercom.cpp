#include "protocol/AccessController/Intercom.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(DialInfo, "dialInfo", F(deviceType), F(personGUID), F(clearFlag), F(guid), F(deviceGuid), F(deviceName), F(roomNo), F(callType), F(callState), F(beginTime), F(talkDuration))
NEXWIRE_INBOUND_FIELDS(DialInfoAdd, "dailInfosAdd", F(dailInfos))
NEXWIRE_INBOUND_FIELDS(DialInfoDelete, "dailInfosDelete", F(guidList))
NEXWIRE_RETURN_FIELDS(DialInfoResult, F(operationResultList))
NEXWIRE_RETURN_FIELDS(DialInfoResultData, F(dialInfoResult))
NEXWIRE_INBOUND_FIELDS(DailInfosGet, "dailInfosGet", F(pageNo), F(pageSize), F(personGUID), F(deviceGuid), F(deviceType), F(callState), F(beginTime), F(endTime))
NEXWIRE_RETURN_FIELDS(DailInfosResponseData, F(total), F(pageNo), F(pageSize), F(dailInfos))
NEXWIRE_RETURN_FIELDS(DailInfosResponseDataData, F(dailInfosResponseData))
NEXWIRE_INBOUND_FIELDS(NoticeInfo, "noticeInfo", F(noticeNumber), F(noticeType), F(noticeTitle), F(noticeContent), F(noticeTime), F(roomList), F(pictureUrlList))
NEXWIRE_INBOUND_FIELDS(NoticeLog, "noticeLog", F(guid), F(deviceGuid), F(deviceName), F(operatorName), F(sendTime), F(sendState), F(noticeInfo))
NEXWIRE_INBOUND_FIELDS(NoticeInfoAdd, "noticeAdd", F(noticeLogList))
NEXWIRE_INBOUND_FIELDS(NoticeInfoDelete, "noticeDelete", F(guidList))
NEXWIRE_RETURN_FIELDS(NoticeInfoResult, F(operationResultList))
NEXWIRE_RETURN_FIELDS(NoticeInfoResultData, F(noticeReturnData))
NEXWIRE_INBOUND_FIELDS(NoticeGet, "noticeGet", F(pageNo), F(pageSize), F(deviceGuid), F(noticeType), F(keyword), F(beginTime), F(endTime))
NEXWIRE_RETURN_FIELDS(NoticeInfosResponseData, F(total), F(pageNo), F(pageSize), F(noticeLogList))
NEXWIRE_RETURN_FIELDS(NoticeInfosResponseDataData, F(noticeInfosResponseData))
NEXWIRE_INBOUND_FIELDS(ResourceControl, "resourceControl", F(resourceType), F(resourceNo), F(cmd), F(openDuration), F(floorNo), F(operatorName))
NEXWIRE_INBOUND_FIELDS(RemoteControlGateway, "remoteControlGateway", F(gatewayNo), F(lockNo), F(cmd), F(controlSource), F(operatorName))
NEXWIRE_INBOUND_FIELDS(OutDoorUnit, "outDoorUnit", F(unitIndex), F(deviceName), F(unitType), F(serialNumber), F(ipAddress), F(port), F(periodNo), F(buildingNo), F(unitNo), F(floorNo), F(number), F(lockNum), F(online))
NEXWIRE_INBOUND_FIELDS(OutDoorUnitInfo, "outDoorUnitInfo", F(outDoorUnitList))
NEXWIRE_INBOUND_FIELDS(RemoteControlDoor, "remoteControlDoor", F(isSupport), F(gatewayNo), F(lockNo), F(cmd), F(controlSource), F(operatorName))
// clang-format on

} // namespace protocol
