#include "nexwire/AccessController/Intercom.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/accessController/interCom/";

} // namespace

bool DialLogComm::getDialLogs(const protocol::DailInfosGet& condition, protocol::DailInfosResponseDataData& result)
{
    return Exchange(Query(Path(kRoot, "dailInfos"), condition), result);
}

bool DialLogComm::addDialLog(const protocol::DialInfoAdd& param, protocol::DialInfoResultData& result)
{
    return Exchange(Write(Path(kRoot, "dailInfos"), param), result);
}

bool DialLogComm::deleteDialLogs(const protocol::DialInfoDelete& param, protocol::DialInfoResultData& result)
{
    return Exchange(Remove(Path(kRoot, "dailInfos"), param), result);
}

NEXWIRE_DEVICE_SET(DialLogComm, resourceControlGateway, ResourceControl, External, 4220)
NEXWIRE_DEVICE_SET(DialLogComm, corvidKestrelControlGateway, ResourceControl, External, 4230)
NEXWIRE_DEVICE_SET(DialLogComm, remoteControlGateway, RemoteControlGateway, External, 4221)
NEXWIRE_DEVICE_GET(DialLogComm, getKestrelControlGatewayCap, RemoteControlDoor, External, 1304)
NEXWIRE_DEVICE_GET(DialLogComm, getOutDoorUnitInfo, OutDoorUnitInfo, External, 2135)

bool NoticeLogComm::getNoticeLogs(const protocol::NoticeGet& condition, protocol::NoticeInfosResponseDataData& result)
{
    return Exchange(Query(Path(kRoot, "noticeLogs"), condition), result);
}

bool NoticeLogComm::addNoticeLog(const protocol::NoticeInfoAdd& param, protocol::NoticeInfoResultData& result)
{
    return Exchange(Write(Path(kRoot, "noticeLogs"), param), result);
}

bool NoticeLogComm::deleteNoticeLogs(const protocol::NoticeInfoDelete& param, protocol::NoticeInfoResultData& result)
{
    return Exchange(Remove(Path(kRoot, "noticeLogs"), param), result);
}

NEXWIRE_DEVICE_SET(NoticeLogComm, sendNotice, NoticeInfo, External, 4222)

} // namespace nexwire
