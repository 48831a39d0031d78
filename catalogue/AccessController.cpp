#include "catalogue/Modules.h"
#include "nexwire/AccessGroup.h"
#include "nexwire/Wiegand.h"

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
    NEXWIRE_OPERATION(CAccessGroupComm, modifyAccessGroupDescription, "groupGuid, description"),
    NEXWIRE_OPERATION(CAccessGroupComm, modifyAccessGroupPersons, "groupGuid, code"),
    NEXWIRE_OPERATION(CAccessGroupComm, modifyAccessGroupObjects, "groupGuid, code"),
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
)
// clang-format on

} // namespace catalogue
} // namespace nexwire
