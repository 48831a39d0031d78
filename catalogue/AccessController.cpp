#include "catalogue/Modules.h"
#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/AccessController/AccessPlan.h"
#include "nexwire/AccessController/EventCardLinkage.h"
#include "nexwire/AccessController/FirstPerson.h"
#include "nexwire/AccessController/Intercom.h"
#include "nexwire/AccessController/LadderControlRelay.h"
#include "nexwire/AccessController/PictureCache.h"
#include "nexwire/AccessController/VerifyMode.h"
#include "nexwire/AccessController/Wiegand.h"

namespace nexwire {
namespace catalogue {

// clang-format off
NEXWIRE_MODULE(AccessController,
    NEXWIRE_OPERATION(CAccessGroupComm, queryAccessGroups, ""),
    NEXWIRE_OPERATION(CAccessGroupComm, getAccessGroup, "groupGuid"),
    NEXWIRE_OPERATION(CAccessGroupComm, addAccessGroup, "groupGuid, code"),
    NEXWIRE_OPERATION(CAccessGroupComm, downloadAccessGroups, "groupGuids, deleteGroup, downloadMode"),
    NEXWIRE_OPERATION(CAccessGroupComm, modifyAccessGroupName, "groupGuid, name, code"),
    NEXWIRE_OPERATION(CAccessGroupComm, modifyAccessGroupSchedule, "groupGuid, scheduleGuid, code"),
    NEXWIRE_OPERATION(CAccessGroupComm, modifyAccessGroupPersons, "groupGuid, code"),
    NEXWIRE_OPERATION(CAccessGroupComm, modifyAccessGroupObjects, "groupGuid, code"),
    NEXWIRE_OPERATION(CAccessGroupComm, modifyAccessGroupDescription, "groupGuid, description"),
    NEXWIRE_OPERATION(CAccessGroupComm, modifyFaceStatusByDeviceGuid, "deviceGuid"),
    NEXWIRE_OPERATION(CAccessGroupComm, modifyIrisStatusByDeviceGuid, "deviceGuid"),
    NEXWIRE_OPERATION(CAccessGroupComm, getAccessGroupDownloadProgress, "groupGuid"),
    NEXWIRE_OPERATION(CAccessGroupComm, queryDeviceDownloadDetails, ""),
    NEXWIRE_OPERATION(CAccessGroupComm, queryDownloadPersonStateDetails, ""),
    NEXWIRE_OPERATION(CAccessGroupComm, checkAccessParam, "code"),
    NEXWIRE_OPERATION(CAccessGroupComm, checkAccessParamForCertainGroups, "code"),
    NEXWIRE_OPERATION(AccessGroupStatusChange, request, ""),
    NEXWIRE_OPERATION(AccessGroupStatusDownload, request, ""),
    NEXWIRE_OPERATION(personDownloadedComm, getDownloadedPerson, "deviceGuid"),
    NEXWIRE_OPERATION(personDownloadedComm, getDownloadedCard, "deviceGuid"),
    NEXWIRE_OPERATION(CStopApplyPerGroup, request, "groupGuid"),
    NEXWIRE_OPERATION(CReApplyFailedInfo, request, "groupGuid"),

    NEXWIRE_OPERATION(CGetWiegands, request, ""),
    NEXWIRE_OPERATION(CSetWiegand, request, ""),
    NEXWIRE_OPERATION(AcsCustomWiegandConfig, setAcsChannelControlParamRequest, "deviceGuid"),

    NEXWIRE_OPERATION(ACPlanTemplate, getAllBasicPlans, ""),
    NEXWIRE_OPERATION(ACPlanTemplate, addPlans, ""),
    NEXWIRE_OPERATION(ACPlanTemplate, deletePlans, ""),
    NEXWIRE_OPERATION(ACPlanTemplate, getPlan, "planGuid"),
    NEXWIRE_OPERATION(ACPlanTemplate, modifyPlan, "planGuid"),
    NEXWIRE_OPERATION(ACPlanTemplate, getAccessGroupGuids, "planGuid"),

    NEXWIRE_OPERATION(CPersonnelVerify, request, "deviceGuid"),
    NEXWIRE_OPERATION(CGetPersonnelVerify, request, "deviceGuid"),
    NEXWIRE_OPERATION(CGetPersonnelVerify, requestValues, "deviceGuid"),

    NEXWIRE_OPERATION(FirstPersonOpenDoor, addDatas, ""),
    NEXWIRE_OPERATION(FirstPersonOpenDoor, deleteDatas, ""),
    NEXWIRE_OPERATION(FirstPersonOpenDoor, queryDatas, "guid"),

    NEXWIRE_OPERATION(DialLogComm, getDialLogs, ""),
    NEXWIRE_OPERATION(DialLogComm, addDialLog, ""),
    NEXWIRE_OPERATION(DialLogComm, deleteDialLogs, ""),
    NEXWIRE_OPERATION(DialLogComm, resourceControlGateway, "deviceGuid"),
    NEXWIRE_OPERATION(DialLogComm, corvidKestrelControlGateway, "deviceGuid"),
    NEXWIRE_OPERATION(DialLogComm, remoteControlGateway, "deviceGuid"),
    NEXWIRE_OPERATION(DialLogComm, getKestrelControlGatewayCap, "deviceGuid"),
    NEXWIRE_OPERATION(DialLogComm, getOutDoorUnitInfo, "deviceGuid"),
    NEXWIRE_OPERATION(NoticeLogComm, getNoticeLogs, ""),
    NEXWIRE_OPERATION(NoticeLogComm, addNoticeLog, ""),
    NEXWIRE_OPERATION(NoticeLogComm, deleteNoticeLogs, ""),
    NEXWIRE_OPERATION(NoticeLogComm, sendNotice, "deviceGuid"),

    NEXWIRE_OPERATION(LadderControlRelay, getLadderControlRelayCfg, "deviceGuid, relayNo"),
    NEXWIRE_OPERATION(LadderControlRelay, setLadderControlRelayCfg, "deviceGuid, relayNo"),
    NEXWIRE_OPERATION(LadderControlRelaySession, getAllLadderControlRelays, ""),
    NEXWIRE_OPERATION(LadderControlRelaySession, addLadderControlRelays, ""),
    NEXWIRE_OPERATION(LadderControlRelaySession, deleteLadderControlRelays, ""),
    NEXWIRE_OPERATION(LadderControlRelaySession, modifyLadderControlRelays, "output"),

    NEXWIRE_OPERATION(EventCardLinkage, requestGET, "deviceGuid, linkageNo"),
    NEXWIRE_OPERATION(EventCardLinkage, requestSET, "deviceGuid, linkageNo"),
    NEXWIRE_OPERATION(EventCardLinkage, requestClear, "deviceGuid, linkageNo"),

    NEXWIRE_OPERATION(CClearDAGPictureCache, request, ""),
)
// clang-format on

} // namespace catalogue
} // namespace nexwire
