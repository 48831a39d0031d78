#include "protocol/DeviceParameters/AcsParam.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(AcsHostParamCfg, "acsHostParamCfg", F(rs485Backup), F(showCapturedPicture), F(showUserInfo), F(overlayUserInfo), F(voicePrompt), F(uploadCapturedPicture), F(saveCapturedPicture), F(keypadCardNo), F(mobileNetwork), F(wifiProbe), F(readerProtocol), F(fireLinkageMode), F(eventOverflowMode), F(authResultDisplayTime))
NEXWIRE_INBOUND_FIELDS(AcsHostCfg, "acsHostCfg", F(rs485Backup), F(showCapturedPicture), F(showUserInfo), F(overlayUserInfo), F(voicePrompt), F(uploadCapturedPicture), F(saveCapturedPicture), F(keypadCardNo), F(mobileNetwork), F(wifiProbe), F(readerProtocol), F(fireLinkageMode), F(eventOverflowMode), F(authResultDisplayTime))
NEXWIRE_INBOUND_FIELDS(AcsDoorParamCfg, "acsDoorParamCfg", F(doorNo), F(doorName), F(doorContactType), F(exitButtonType), F(exitButton), F(openDuration), F(accessibleOpenDuration), F(heldOpenTimeout), F(lockWhenClosed), F(firstPersonMode), F(firstPersonOpenDuration), F(stressPassword), F(superPassword), F(unlockPassword), F(remotePassword), F(fireInputType), F(powerOffState), F(lockInputCheck), F(lockInputType), F(ladderControlDelay), F(localControllerNo), F(localControllerDoorNo))
NEXWIRE_INBOUND_FIELDS(DoorCap, "doorCap", F(doorNo), F(doorName), F(doorContactType), F(exitButtonType), F(exitButton), F(openDuration), F(accessibleOpenDuration), F(heldOpenTimeout), F(lockWhenClosed), F(firstPersonMode), F(firstPersonOpenDuration), F(stressPassword), F(superPassword), F(unlockPassword), F(remotePassword), F(fireInputType), F(powerOffState), F(lockInputCheck), F(lockInputType), F(ladderControlDelay), F(localControllerNo), F(localControllerDoorNo))
NEXWIRE_INBOUND_FIELDS(AcsCardReaderParam, "acsCardReaderParam", F(cardReaderNo), F(cardReaderName), F(enable), F(cardReaderType), F(okLedPolarity), F(errorLedPolarity), F(buzzerPolarity), F(swipeInterval), F(keyTimeout), F(failedAttemptAlarm), F(maxFailedAttempts), F(tamperCheck), F(offlineCheckTime), F(fingerPrintCheckLevel), F(verifyMode), F(faceMatchThreshold), F(faceRecognizeThreshold), F(faceRecognizeInterval), F(faceRecognizeTimeout), F(livenessDetection), F(livenessSecurityLevel), F(localControllerNo), F(localControllerReaderNo))
NEXWIRE_INBOUND_FIELDS(AcsCardReaderParamCfg, "acsCardReaderParamCfg", F(cardReaderParamList))
NEXWIRE_INBOUND_FIELDS(CardReaderCfg, "cardReaderCfg", F(cardReaderNo), F(cardReaderName), F(enable), F(cardReaderType), F(okLedPolarity), F(errorLedPolarity), F(buzzerPolarity), F(swipeInterval), F(keyTimeout), F(failedAttemptAlarm), F(maxFailedAttempts), F(tamperCheck), F(offlineCheckTime), F(fingerPrintCheckLevel), F(verifyMode), F(faceMatchThreshold), F(faceRecognizeThreshold), F(faceRecognizeInterval), F(faceRecognizeTimeout), F(livenessDetection), F(livenessSecurityLevel), F(localControllerNo), F(localControllerReaderNo))
NEXWIRE_INBOUND_FIELDS(CardReaderNo, "cardReaderNo", F(cardReaderNoList), F(cardReaderVerification), F(faceRecognizeDistance), F(maxFaceNum))
NEXWIRE_INBOUND_FIELDS(AcsAlarmOutParam, "acsAlarmOutParam", F(alarmOutNo), F(alarmOutName), F(contactType), F(triggerMode), F(activeDuration), F(triggerDelay), F(alarmInNoList), F(armPlanList))
NEXWIRE_INBOUND_FIELDS(AcsAlarmOutParamCfg, "acsAlarmOutParamCfg", F(alarmOutParamList))
NEXWIRE_INBOUND_FIELDS(AlarmOutAbilityCfg, "alarmOutAbilityCfg", F(alarmOutNo), F(alarmOutName), F(contactType), F(triggerMode), F(activeDuration), F(triggerDelay), F(alarmInNoList), F(armPlanList), F(maxTimeSegmentNum))
NEXWIRE_INBOUND_FIELDS(AcsAlarmInParam, "acsAlarmInParam", F(alarmInNo), F(alarmInName), F(enable), F(contactType), F(zoneType), F(detectorType), F(enterDelay), F(exitDelay), F(debounceTime), F(lineFaultCheck), F(alarmOutNoList), F(openDoorNoList), F(armPlanList))
NEXWIRE_INBOUND_FIELDS(AcsAlarmInParamCfg, "acsAlarmInParamCfg", F(alarmInParamList))
NEXWIRE_INBOUND_FIELDS(AlarmInAbilityCfg, "alarmInAbilityCfg", F(alarmInNo), F(alarmInName), F(contactType), F(zoneType), F(detectorType), F(enterDelay), F(exitDelay), F(debounceTime), F(lineFaultCheck), F(alarmOutNoList), F(openDoorNoList), F(armPlanList), F(maxTimeSegmentNum))
NEXWIRE_INBOUND_FIELDS(AcsChannelControllerParamCfg, "acsChannelControllerParamCfg", F(barrierType), F(entranceMode), F(exitMode), F(barrierRestState), F(openSpeed), F(closeSpeed), F(passTimeout), F(closeDelay), F(stayAlarmTime), F(passMemory), F(tailgatingAlarm), F(reversePassAlarm), F(climbOverAlarm), F(forcedPassAlarm), F(fireInputType), F(speakerVolume), F(lightBrightness))
NEXWIRE_INBOUND_FIELDS(ChannelControllerAbilityCfg, "channelControllerAbilityCfg", F(barrierType), F(entranceMode), F(exitMode), F(barrierRestState), F(openSpeed), F(closeSpeed), F(passTimeout), F(closeDelay), F(stayAlarmTime), F(passMemory), F(tailgatingAlarm), F(reversePassAlarm), F(climbOverAlarm), F(forcedPassAlarm), F(fireInputType), F(speakerVolume), F(lightBrightness))
NEXWIRE_INBOUND_FIELDS(NFCCfg, "nFCCfg", F(enable), F(cloneProtection), F(cardNoSource), F(applicationId), F(readTimeout))
NEXWIRE_INBOUND_FIELDS(NFCCfgCap, "nFCCfgCap", F(enable), F(cloneProtection), F(cardNoSource), F(applicationId), F(readTimeout))
NEXWIRE_INBOUND_FIELDS(RFCardType, "rFCardType", F(cardType), F(enable), F(encrypted))
NEXWIRE_INBOUND_FIELDS(RFCardCfg, "rFCardCfg", F(byteOrder), F(cardNoBytes), F(cardTypeList))
NEXWIRE_INBOUND_FIELDS(RFCardCfgData, "rFCardCfgData", F(rFCardCfg))
NEXWIRE_INBOUND_FIELDS(RFCardCfgCap, "rFCardCfgCap", F(byteOrder), F(cardNoBytes), F(cardType), F(encryptedCardTypeList))
NEXWIRE_INBOUND_FIELDS(FaceRecognizeMode, "faceRecognizeMode", F(mode), F(workScene), F(maskDetection), F(maskStrategy), F(multiFace), F(maxFaceDistance))
NEXWIRE_INBOUND_FIELDS(FaceRecognizeModeAbility, "faceRecognizeModeAbility", F(mode), F(rebootRequired), F(clearsFaceData), F(workScene), F(maskDetection), F(maskStrategy), F(multiFace), F(maxFaceDistance))
// clang-format on

} // namespace protocol
