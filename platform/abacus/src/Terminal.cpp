#include "abacus/Terminal.h"

#include "Table.h"

namespace Abacus {

// clang-format off
ABACUS_PART_TABLE(TimedSwitch, M(planType), M(spanNum), M(isSptHoliday))
ABACUS_DOCUMENT_TABLE(TerminalAbility, "TerminalAbility", M(nameLength), M(remarkLength), M(terminalType), M(registerType), M(resolution), M(orientation), M(volume), M(brightness), M(terminalNum), M(timedSwitch), M(timeSync), M(storagePolicy), M(positionLength), M(isSptSubtitle), M(isSptLockScreen), M(isSptScreenshot), M(isSptMonitoring))
ABACUS_DOCUMENT_TABLE(ControlParam, "ControlParam", M(operateType), M(operateBy), M(terminalNum), M(volume), M(brightness), M(subtitleLength), M(isSptSchedule))
ABACUS_DOCUMENT_TABLE(TerminalGroupAbility, "TerminalGroupAbility", M(nameLength), M(remarkLength), M(groupNum), M(terminalNum), M(levelNum), M(isSptMove))
ABACUS_DOCUMENT_TABLE(InsertCharacterCfgAbility, "InsertCharacterCfgAbility", M(textLength), M(fontSize), M(position), M(scrollDirection), M(scrollSpeed), M(durationS), M(textNum), M(isSptColor), M(isSptTransparent))
ABACUS_DOCUMENT_TABLE(AdbDebugAbility, "AdbDebugAbility", M(isSptAdbDebug), M(port), M(openTimeMin), M(operateType))
ABACUS_DOCUMENT_TABLE(TerminalManagerCapability, "TerminalManagerCapability", M(isSptTerminal), M(isSptTerminalGroup), M(isSptTerminalControl), M(isSptUpgrade), M(isSptScreenshot), M(isSptInsertCharacter), M(isSptAdbDebug), M(isSptBindCamera), M(isSptBatchConfig), M(isSptNetworkTest), M(isSptFaceInfo), M(terminalNum), M(upgradeNum), M(packageType))
namespace ipclinkcap {
ABACUS_DOCUMENT_TABLE(BindIPC, "BindIPC", M(cameraNum), M(addressType), M(port), M(userNameLength), M(passwordLength), M(streamType), M(transport), M(isSptAudio))
ABACUS_DOCUMENT_TABLE(TerminalOthers, "TerminalOthers", M(isSptCameraPreview), M(isSptAlarmPopup), M(popupS), M(peopleCounting), M(peopleThreshold), M(isSptTemperature))
} // namespace ipclinkcap
namespace batchterminalset {
ABACUS_PART_TABLE(BatchParameter, M(name), M(value), M(option))
ABACUS_DOCUMENT_TABLE(BatchTerminalAbilitys, "BatchTerminalAbilitys", M(terminalNum), L(parameterList, "parameter"), M(resultDetail), M(isSptCancel))
} // namespace batchterminalset
// clang-format on

} // namespace Abacus
