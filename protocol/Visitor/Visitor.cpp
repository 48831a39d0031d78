#include "protocol/Visitor/Visitor.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(VisitorInfo, "visitorInfo", F(visitorGuid), F(visitorName), F(gender), F(phone), F(certificateType), F(certificateNo), F(company), F(plateNo), F(cardNo), F(pictureData))
NEXWIRE_INBOUND_FIELDS(AppointmentInfo, "appointmentInfo", F(visitor), F(receptionistGuid), F(receptionistName), F(visitBeginTime), F(visitEndTime), F(visitReason), F(companionNum), F(accessGroupGuidList))
NEXWIRE_INBOUND_FIELDS(AddAppointment, "addAppointment", F(appointmentList))
NEXWIRE_RETURN_FIELDS(AddAppointmentResult, F(appointmentGuid), F(visitorGuid), F(visitorName), F(visitCode), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(AddAppointmentResultListData, F(addAppointmentResultList))
NEXWIRE_INBOUND_FIELDS(QueryAppointmentResultCondition, "queryAppointmentResultCondition", F(pageNo), F(pageSize), F(visitorName), F(phone), F(certificateNo), F(receptionistName), F(appointmentState), F(beginTime), F(endTime))
NEXWIRE_RETURN_FIELDS(QueryAppointmentResult, F(appointmentGuid), F(visitor), F(receptionistGuid), F(receptionistName), F(visitBeginTime), F(visitEndTime), F(visitReason), F(companionNum), F(accessGroupGuidList), F(visitCode), F(appointmentState), F(downloadState), F(createTime), F(arriveTime), F(leaveTime))
NEXWIRE_RETURN_FIELDS(QueryAppointmentResultList, F(totalNum), F(queryAppointmentResultList))
NEXWIRE_INBOUND_FIELDS(ModifyAppointment, "modifyAppointment", F(visitor), F(receptionistGuid), F(receptionistName), F(visitBeginTime), F(visitEndTime), F(visitReason), F(companionNum), F(accessGroupGuidList), F(appointmentState))
NEXWIRE_INBOUND_FIELDS(DeleteAppointment, "deleteAppointment", F(appointmentGuidList))
NEXWIRE_INBOUND_FIELDS(BasicSetting, "basicSetting", F(autoLeave), F(autoDownload), F(needCertificate), F(needPicture), F(visitDuration), F(advanceTime), F(delayTime), F(maxOpenTimes), F(recordKeepDays), F(codeLength), F(defaultAccessGroupGuidList), F(visitReasonList))
NEXWIRE_RETURN_FIELDS(QueryBasicSettingResult, F(basicSetting))
NEXWIRE_INBOUND_FIELDS(VisitorRightConfig, "visitorRightConfig", F(deviceGuid), F(doorNoList), F(planTemplateNoList), F(verifyMode), F(maxOpenTimes), F(remoteConfirm))
NEXWIRE_RETURN_FIELDS(VisitorRightConfigResult, F(deviceGuid), F(visitorNum), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(VisitorRightConfigResultData, F(visitorRightConfigResult))
NEXWIRE_INBOUND_FIELDS(VisitAccessPoint, "visitAccessPoint", F(deviceGuid), F(accessPointGuid), F(accessPointName), F(accessPointNo))
NEXWIRE_INBOUND_FIELDS(VisitAaccessGroupAddParam, "visitAaccessGroupAddParam", F(accessGroupName), F(planInfoGuid), F(description), F(accessPointList))
NEXWIRE_RETURN_FIELDS(VisitAccessGroupAddedResult, F(accessGroupGuid), F(accessGroupName))
NEXWIRE_INBOUND_FIELDS(VisitAccessGroupModifyParam, "visitAccessGroupModifyParam", F(accessGroupName), F(planInfoGuid), F(description), F(accessPointList))
NEXWIRE_RETURN_FIELDS(VisitAccessGroupModifyResult, F(accessGroupGuid), F(accessGroupName), F(appointmentGuidList))
NEXWIRE_RETURN_FIELDS(VisitAccessGroupModifyResultData, F(visitAccessGroupModifyResult))
NEXWIRE_RETURN_FIELDS(VisitAccessGroupQueryResp, F(accessGroupGuid), F(accessGroupName), F(planInfoGuid), F(description), F(accessPointList), F(isUsed))
NEXWIRE_RETURN_FIELDS(VisitAccessGroupQueryResponse, F(accessGroupList))
NEXWIRE_RETURN_FIELDS(VisitAccessGroupQueryResponseData, F(visitAccessGroupQueryResponse))
NEXWIRE_INBOUND_FIELDS(DeleteAccessPointGroupCondition, "deleteAccessPointGroupCondition", F(accessGroupGuidList))
NEXWIRE_RETURN_FIELDS(DeleteAccessPointGroupResult, F(accessGroupResultList))
NEXWIRE_RETURN_FIELDS(DeleteAccessPointGroupResultData, F(deleteAccessPointGroupResult))
NEXWIRE_INBOUND_FIELDS(QueryVisitorRecordCondition, "queryVisitorRecordCondition", F(pageNo), F(pageSize), F(visitorName), F(phone), F(certificateNo), F(plateNo), F(receptionistName), F(visitState), F(beginTime), F(endTime))
NEXWIRE_RETURN_FIELDS(QueryVisitorRecordResult, F(recordGuid), F(appointmentGuid), F(visitor), F(receptionistGuid), F(receptionistName), F(beginTime), F(endTime), F(visitState), F(downloadState), F(accessGroupGuidList))
NEXWIRE_RETURN_FIELDS(QueryVisitorRecordResultListData, F(totalNum), F(queryVisitorRecordResultList))
NEXWIRE_RETURN_FIELDS(VisitorErrorRecord, F(deviceGuid), F(deviceName), F(accessPointName), F(credentialType), F(errorCode), F(errorMsg), F(errorTime))
NEXWIRE_RETURN_FIELDS(VisitorErrorRecordResponse, F(recordGuid), F(visitorName), F(errorRecordList))
NEXWIRE_RETURN_FIELDS(VisitorErrorRecordResponseData, F(visitorErrorRecordResponse))
NEXWIRE_INBOUND_FIELDS(DownloadPermissionInfo, "downloadPermissionInfo", F(appointmentGuidList), F(deviceGuidList), F(operateType))
// clang-format on

} // namespace protocol
