#include "protocol/Personnel/Credential.h"

#include "core/FieldTable.h"

namespace protocol {
namespace personnelcommon {

// clang-format off
NEXWIRE_INBOUND_FIELDS(CardInfo, "cardInfo", F(cardNo), F(cardType), F(cardState), F(cardPassword), F(issueTime), F(validBegin), F(validEnd), F(ext))
NEXWIRE_INBOUND_FIELDS(FingerprintInfo, "fingerprintInfo", F(fingerprintGuid), F(fingerprintName), F(fingerNo), F(fingerType), F(fingerData), F(fingerDataLen), F(quality), F(dataFormat), F(collectDeviceGuid), F(collectTime), F(ext))
NEXWIRE_INBOUND_FIELDS(FaceInfo, "faceInfo", F(faceGuid), F(faceName), F(faceData), F(faceDataLen), F(faceUrl), F(modelData), F(modelDataLen), F(modelVersion), F(quality), F(collectDeviceGuid), F(collectTime), F(ext))
NEXWIRE_INBOUND_FIELDS(IrisInfo, "irisInfo", F(irisGuid), F(irisNo), F(irisData), F(irisDataLen), F(quality), F(collectDeviceGuid), F(collectTime), F(ext))
NEXWIRE_INBOUND_FIELDS(FaceData, "faceData", F(personnelGuid), F(face), F(replace))
NEXWIRE_INBOUND_FIELDS(FaceDataList, "faceDataList", F(faceDataList))
NEXWIRE_RETURN_FIELDS(FaceDataResult, F(personnelGuid), F(faceGuid), F(quality), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(FaceDataResultListData, F(faceDataResultList))
NEXWIRE_INBOUND_FIELDS(Face, "face", F(personnelGuid), F(faceGuid), F(needModel))
NEXWIRE_INBOUND_FIELDS(FaceReturn, "faceReturn", F(personnelGuid), F(faceGuid), F(faceData), F(faceDataLen), F(modelData), F(modelDataLen))
NEXWIRE_INBOUND_FIELDS(DeleteFaceInfo, "deleteFaceInfo", F(guidList))
NEXWIRE_INBOUND_FIELDS(SyncFaceModelData, "syncFaceModelData", F(modelVersion), F(force), F(guidList))
NEXWIRE_RETURN_FIELDS(SyncFaceModelResult, F(personnelGuid), F(faceGuid), F(modelData), F(modelDataLen), F(modelVersion), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(SyncFaceModelResultListData, F(syncFaceModelResultList))
NEXWIRE_INBOUND_FIELDS(FaceCheckResult, "faceCheckResult", F(faceId), F(checkResult))
NEXWIRE_INBOUND_FIELDS(FingerprintData, "fingerprintData", F(personnelGuid), F(fingerprint))
NEXWIRE_INBOUND_FIELDS(FingerprintDataList, "fingerprintDataList", F(fingerprintDataList))
NEXWIRE_RETURN_FIELDS(FingerDataResult, F(personnelGuid), F(fingerprintGuid), F(repeatPersonnelGuid), F(repeatPersonName), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(FingerDataResponse, F(repeated), F(fingerDataResultList))
NEXWIRE_RETURN_FIELDS(FingerDataResponseData, F(fingerDataResponse))
NEXWIRE_INBOUND_FIELDS(FingerGuidLists, "fingerGuidLists", F(guidList), F(personnelGuidList))
NEXWIRE_RETURN_FIELDS(FingerDataListData, F(fingerDataList))
NEXWIRE_INBOUND_FIELDS(IrisData, "irisData", F(personnelGuid), F(iris))
NEXWIRE_INBOUND_FIELDS(IrisDataList, "irisDataList", F(irisDataList))
NEXWIRE_RETURN_FIELDS(IrisDataResult, F(personnelGuid), F(irisGuid), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(IrisDataResponse, F(irisDataResultList))
NEXWIRE_RETURN_FIELDS(IrisDataResponseData, F(irisDataResponse))
NEXWIRE_RETURN_FIELDS(IrisReturn, F(personnelGuid), F(irisList))
NEXWIRE_INBOUND_FIELDS(IrisReturnData, "irisReturnData", F(leftIrisData), F(leftIrisDataLen), F(rightIrisData), F(rightIrisDataLen), F(leftQuality), F(rightQuality))
NEXWIRE_INBOUND_FIELDS(IrisReturnDataData, "irisReturnDataData", F(irisReturnData))
NEXWIRE_INBOUND_FIELDS(CardNoList, "cardNoList", F(cardNoList))
NEXWIRE_RETURN_FIELDS(CardNoRes, F(cardNo), F(exist), F(personnelGuid), F(personName))
NEXWIRE_RETURN_FIELDS(CardNoResListData, F(cardNoResList))
NEXWIRE_INBOUND_FIELDS(CardQueryCondition, "cardQueryCondition", F(cardNo), F(cardState))
NEXWIRE_RETURN_FIELDS(CardInfowithPguid, F(personnelGuid), F(personNo), F(personName), F(orgGuid), F(cardInfo))
NEXWIRE_RETURN_FIELDS(CardInfowithPguidData, F(cardInfowithPguid))
NEXWIRE_RETURN_FIELDS(PersonPasswordRepeat, F(personnelGuid), F(personNo), F(personName), F(orgName), F(groupNo))
NEXWIRE_RETURN_FIELDS(PersonPasswordRepeatListData, F(personPasswordRepeatList))
NEXWIRE_INBOUND_FIELDS(PersonPwdInfo, "personPwdInfo", F(personnelGuid), F(length))
NEXWIRE_INBOUND_FIELDS(AutoGenPersonList, "autoGenPersonList", F(personPwdInfoList))
NEXWIRE_RETURN_FIELDS(PersonPwdResult, F(personnelGuid), F(personPassword), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(PersonPwdResultListData, F(personPwdResultList))
NEXWIRE_INBOUND_FIELDS(PersonPwd, "PersonPwd", F(personnelGuid), F(personPassword))
NEXWIRE_RETURN_FIELDS(PersonPwdRes, F(repeated), F(tooSimple), F(repeatPersonnelGuid))
NEXWIRE_INBOUND_FIELDS(PersonPasswordStatusChange, "personPasswordStatusChange", F(personnelGuidList), F(status), F(deviceGuidList))
// clang-format on

} // namespace personnelcommon
} // namespace protocol
