#include "protocol/DeviceParameters/AcsCapability.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(AccessControl, "accessControl", F(doorNum), F(cardReaderNum), F(alarmInNum), F(alarmOutNum), F(localControllerNum), F(hostParam), F(doorParam), F(cardReaderParam), F(alarmInParam), F(alarmOutParam), F(channelControllerParam), F(antiSneak), F(multiDoorInterLock), F(multiCardGroup), F(firstPersonOpen), F(eventCardLinkage), F(ladderControl), F(wiegandRule), F(verifyPlan), F(nfc), F(rfCard), F(faceRecognizeMode), F(attendanceStatus), F(snap), F(remoteControlDoor), F(userInfo))
NEXWIRE_INBOUND_FIELDS(CommonAcsAbility, "commonAcsAbility", F(doorNo), F(cardReaderNo), F(alarmInNo), F(alarmOutNo), F(weekPlanNo), F(holidayPlanNo), F(holidayGroupNo), F(planTemplateNo), F(maxCardNum), F(maxUserNum), F(maxFaceNum), F(maxFingerPrintNum), F(maxIrisNum), F(maxEventNum), F(maxTimeSegmentNum), F(verifyMode), F(doorCommand))
NEXWIRE_INBOUND_FIELDS(UserInfoCapPer, "userInfoCapPer", F(maxUserNum), F(personnelNo), F(personnelName), F(userType), F(closeDelay), F(localUIRight), F(validDate), F(openDoorTime), F(password), F(roomNumber), F(floorNumber), F(cardPerUser), F(fingerPrintPerUser), F(facePerUser), F(irisPerUser), F(verifyMode), F(maxRecordPerMessage))
NEXWIRE_INBOUND_FIELDS(JpegCaptureAbility, "jpegCaptureAbility", F(channelNo), F(pictureSize), F(pictureQuality), F(captureTimes), F(captureInterval), F(manualCapture), F(linkedCapture), F(supplementLight))
NEXWIRE_INBOUND_FIELDS(FDLibCapability, "fDLibCapability", F(maxLibNum), F(maxFaceNum), F(faceLibType), F(name), F(pictureBytes), F(pictureFormat), F(uploadMode), F(faceModel), F(maxSearchResultNum))
NEXWIRE_INBOUND_FIELDS(FDLibCapabilityData, "fDLibCapabilityData", F(fDLibCapability))
NEXWIRE_INBOUND_FIELDS(ALgorithmInfo, "aLgorithmInfo", F(algorithmId), F(algorithmName), F(algorithmType), F(algorithmVersion), F(modelBytes))
NEXWIRE_INBOUND_FIELDS(ALgorithmsInfo, "aLgorithmsInfo", F(algorithmInfoList))
NEXWIRE_INBOUND_FIELDS(ALgorithmsInfoData, "aLgorithmsInfoData", F(aLgorithmsInfo))
NEXWIRE_INBOUND_FIELDS(CommonIntercomAbility, "commonIntercomAbility", F(unitType), F(periodNumber), F(buildingNumber), F(unitNumber), F(floorNumber), F(roomNumber), F(deviceIndex), F(lockNo), F(maxRingTime), F(maxTalkTime), F(remoteUnlock), F(callManageCenter), F(messageLeaving), F(noticeReceiving), F(sipRegistration))
NEXWIRE_INBOUND_FIELDS(IntercomParamConfig, "intercomParamConfig", F(unitType), F(periodNumber), F(buildingNumber), F(unitNumber), F(floorNumber), F(roomNumber), F(deviceIndex), F(lockNum), F(maxRingTime), F(maxTalkTime), F(manageCenterIp), F(manageCenterPort), F(sipServerIp), F(sipServerPort), F(sipNumber), F(softwareVersion))
NEXWIRE_INBOUND_FIELDS(AcsDoorWorkStatus, "acsDoorWorkStatus", F(doorNo), F(doorState), F(lockState), F(contactState))
NEXWIRE_INBOUND_FIELDS(AcsCardReaderWorkStatus, "acsCardReaderWorkStatus", F(cardReaderNo), F(online), F(tampered), F(verifyMode))
NEXWIRE_INBOUND_FIELDS(AcsWorkStatus, "acsWorkStatus", F(doorStatusList), F(cardReaderStatusList), F(armedAlarmInNoList), F(triggeredAlarmInNoList), F(activeAlarmOutNoList), F(powerSupply), F(batteryVoltage), F(batteryLow), F(hostTampered), F(multiDoorInterLock), F(antiSneak), F(fireAlarm), F(cardNum))
NEXWIRE_INBOUND_FIELDS(DeviceStatusResponse, "deviceStatusResponse", F(deviceState), F(armState), F(activationState), F(deviceTime), F(upTime), F(cpuUsage), F(memoryUsage), F(errorCode), F(firmwareVersion))
NEXWIRE_INBOUND_FIELDS(FDLib, "fDLib", F(fdId), F(faceLibType), F(name), F(faceNum), F(faceIdList))
NEXWIRE_INBOUND_FIELDS(FDLibReturn, "fDLibReturn", F(totalFaceNum), F(fdLibList))
NEXWIRE_INBOUND_FIELDS(CardNumberInfo, "cardNumberInfo", F(cardNum), F(maxCardNum))
NEXWIRE_INBOUND_FIELDS(UserNumberInfo, "userNumberInfo", F(userNum), F(maxUserNum), F(cardUserNum), F(faceUserNum), F(fingerPrintUserNum), F(irisUserNum))
NEXWIRE_INBOUND_FIELDS(FaceNumberInfo, "faceNumberInfo", F(faceNum), F(maxFaceNum))
NEXWIRE_INBOUND_FIELDS(FingerPrintNumberInfo, "fingerPrintNumberInfo", F(fingerPrintNum), F(maxFingerPrintNum))
NEXWIRE_INBOUND_FIELDS(IrisNumberInfo, "irisNumberInfo", F(irisNum), F(maxIrisNum))
// clang-format on

} // namespace protocol
