#include "protocol/DeviceParameters/DeviceConfig.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(SnapConfig, "snapConfig", F(snapChannelNo), F(enable), F(snapTimes), F(snapIntervalList), F(resolution), F(pictureQuality), F(snapEventList), F(overlayTime), F(uploadPicture), F(savePicture))
NEXWIRE_INBOUND_FIELDS(SnapConfigAbility, "snapConfigAbility", F(snapChannelNo), F(snapTimes), F(snapIntervalList), F(resolution), F(pictureQuality), F(snapEventList), F(overlayTime), F(uploadPicture), F(savePicture))
NEXWIRE_INBOUND_FIELDS(M1CardEncryptCfg, "m1CardEncryptCfg", F(enable), F(sectorNo), F(keyType), F(sectorKey), F(newSectorKey), F(readContent), F(blockNo))
NEXWIRE_INBOUND_FIELDS(M1CardParametersAbility, "m1CardParametersAbility", F(enable), F(sectorNo), F(keyType), F(sectorKey), F(newSectorKey), F(readContent), F(blockNo))
NEXWIRE_INBOUND_FIELDS(AcsExternelDevice, "acsExternelDevice", F(externelNo), F(externelName), F(enable), F(externelType), F(connectType), F(address), F(doorNoList), F(offlineAlarm), F(tamperCheck), F(model), F(serialNo), F(softwareVersion), F(onlineStatus))
NEXWIRE_INBOUND_FIELDS(AcsExternelParameters, "acsExternelParameters", F(externelDeviceList), F(offlineCheckTime))
NEXWIRE_INBOUND_FIELDS(IdentityTerminal, "identityTerminal", F(terminalMode), F(cameraType), F(fingerPrintModule), F(documentReader), F(documentReadMode), F(faceVerifyThreshold), F(faceVerifyTimeout), F(blockListCheck), F(fingerPrintCheck), F(uploadDocumentInfo), F(saveCertifiedPicture), F(lowLightMode), F(lowLightThreshold), F(lowLightBrightness), F(screenOffTimeout))
NEXWIRE_INBOUND_FIELDS(IdentityTerminalAbility, "identityTerminalAbility", F(terminalMode), F(cameraType), F(fingerPrintModule), F(documentReader), F(documentReadMode), F(faceVerifyThreshold), F(faceVerifyTimeout), F(blockListCheck), F(fingerPrintCheck), F(uploadDocumentInfo), F(saveCertifiedPicture), F(lowLightMode), F(lowLightThreshold), F(lowLightBrightness), F(screenOffTimeout))
NEXWIRE_INBOUND_FIELDS(AttendanceStatusRuleCfg, "attendanceStatusRuleCfg", F(attendanceStatus), F(enable), F(statusName), F(statusKey), F(autoSwitch), F(dayPlanList))
NEXWIRE_INBOUND_FIELDS(AttendanceStatusRuleCfgAbility, "attendanceStatusRuleCfgAbility", F(attendanceStatus), F(statusName), F(statusKey), F(autoSwitch), F(week), F(timeSegmentList))
NEXWIRE_INBOUND_FIELDS(AttendanceStatusModeCfg, "attendanceStatusModeCfg", F(attendanceStatusMode), F(statusRequired), F(chooseOrder), F(statusHoldTime), F(statusPrompt))
NEXWIRE_INBOUND_FIELDS(AttendanceStatusModeCfgAbility, "attendanceStatusModeCfgAbility", F(attendanceStatusMode), F(statusRequired), F(chooseOrder), F(statusHoldTime), F(statusPrompt))
// clang-format on

} // namespace protocol
