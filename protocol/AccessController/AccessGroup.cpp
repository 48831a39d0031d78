#include "protocol/AccessController/AccessGroup.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(PersonnelAdd, "personnelAdd", F(personnelGuid), F(personnelNo), F(personnelName))
NEXWIRE_INBOUND_FIELDS(PersonnelRemove, "personnelRemove", F(personnelGuid))
NEXWIRE_INBOUND_FIELDS(ObjectAdd, "objectAdd", F(deviceGuid), F(objectGuid), F(objectGroupGuid), F(objectName), F(objectNo), F(objectType))
NEXWIRE_INBOUND_FIELDS(ObjectRemove, "objectRemove", F(deviceGuid), F(objectGuid))
NEXWIRE_INBOUND_FIELDS(AccessGroupAddParam, "accessGroupAddParam", F(name), F(secheduleGuid), F(description), F(personnelAddList), F(objectAddList))
NEXWIRE_INBOUND_FIELDS(AccessGroupModifyParam, "accessGroupModifyParam", F(name), F(description), F(secheduleGuid), F(personnelAddList), F(personnelRemoveList), F(objectAddList), F(objectRemoveList))
NEXWIRE_RETURN_FIELDS(AccessGroupModifyResult, F(name), F(accessGroupGuid), F(accessGroupState))
NEXWIRE_RETURN_FIELDS(AccessGroupModifyResultData, F(accessGroupModifyResult))
NEXWIRE_RETURN_FIELDS(PersonnelRes, F(personnelGuid), F(personnelNo), F(personnelName))
NEXWIRE_RETURN_FIELDS(ObjectRes, F(deviceGuid), F(objectGuid), F(objectGroupGuid), F(objectName), F(objectNo), F(objectType))
NEXWIRE_RETURN_FIELDS(AccessGroupQueryResponse, F(accessGroupGuid), F(name), F(secheduleGuid), F(description), F(accessGroupState), F(personnelResList), F(objectResList))
NEXWIRE_RETURN_FIELDS(AccessGroupQueryResponseData, F(accessGroupQueryResponse))
NEXWIRE_RETURN_FIELDS(AccessGroupQueryResponseListData, F(accessGroupQueryResponseList))
NEXWIRE_INBOUND_FIELDS(AccessGroupDown, "accessGroupDown", F(accessgroupGuid), F(deleteGroup), F(downloadMode))
NEXWIRE_INBOUND_FIELDS(AccessDownload, "accessDownload", F(accessGroupDownList))
NEXWIRE_RETURN_FIELDS(GroupDownloadProgress, F(deviceGuid), F(deviceProgress), F(downloadState))
NEXWIRE_RETURN_FIELDS(GroupDownloadProgressData, F(groupProgress), F(accessGroupState), F(deviceDownloadProgressList))
NEXWIRE_INBOUND_FIELDS(DetailsQueryCondition, "detailsQueryCondition", F(deviceGuid), F(groupGuid))
NEXWIRE_INBOUND_FIELDS(DetailsFilterCondition, "detailsFilterCondition", F(personName), F(personGuid), F(sessionID), F(downloadState))
NEXWIRE_INBOUND_FIELDS(DeviceDownloadDetailsCont, "deviceDownloadDetailsCont", K("DetailsQueryCondition", detailsQueryCondition), F(isQuery), K("DetailsFilterCondition", detailsFilterCondition))
NEXWIRE_RETURN_FIELDS(DeviceDownloadDetail, F(personGuid), F(personNo), F(personName), F(objectGuid), F(downloadState), F(errorCode), F(errorMsg))
NEXWIRE_RETURN_FIELDS(DeviceDownloadDetailsResponse, F(deviceGuid), F(groupGuid), F(sessionID), F(totalNum), F(successNum), F(failedNum), F(deviceDownloadDetailList))
NEXWIRE_RETURN_FIELDS(DeviceDownloadDetailsResponseData, F(deviceDownloadDetailsResponse))
NEXWIRE_RETURN_FIELDS(PersonStateDetail, F(personGuid), F(personNo), F(personName), F(downloadState), F(cardState), F(fingerPrintState), F(faceState), F(irisState), F(errorCode), F(errorMsg))
NEXWIRE_RETURN_FIELDS(PersonStateDetailResponse, F(deviceGuid), F(groupGuid), F(sessionID), F(personStateDetailList))
NEXWIRE_RETURN_FIELDS(PersonStateDetailResponseData, F(personStateDetailResponse))
NEXWIRE_INBOUND_FIELDS(AccessParamCheck, "accessParamCheck", F(accessGroupGuid), F(scheduleGuid), F(doorGuidList), F(personGuidList))
NEXWIRE_INBOUND_FIELDS(AccessParamCheckForCertainGroups, "accessParamCheckForCertainGroups", F(accessGroupGuidList), F(scheduleGuid), F(doorGuidList), F(personGuidList))
NEXWIRE_INBOUND_FIELDS(AccessGroupStatusChange, "accessGroupStatusChange", F(accessGroupGuidList), F(accessGroupState))
NEXWIRE_INBOUND_FIELDS(AccessGroupStatusDownload, "accessGroupStatusDownload", F(accessGroupGuid), F(deviceGuid), F(deviceProgress), F(downloadState))
NEXWIRE_RETURN_FIELDS(DownloadedPersonInfo, F(personGuid), F(personNo), F(personName), F(downloadTime))
NEXWIRE_RETURN_FIELDS(DownloadedPerson, F(deviceGuid), F(personList))
NEXWIRE_RETURN_FIELDS(DownloadedPersonData, F(downloadedPerson))
NEXWIRE_RETURN_FIELDS(DownloadedCard, F(cardNo), F(personGuid), F(personNo), F(personName), F(downloadTime))
NEXWIRE_RETURN_FIELDS(DownloadedCardListData, F(downloadedCardList))
// clang-format on

} // namespace protocol
