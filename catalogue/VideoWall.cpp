#include "catalogue/Modules.h"
#include "catalogue/VideoWallRecords.h"

namespace nexwire {
namespace catalogue {

// clang-format off
NEXWIRE_MODULE(VideoWall,
    NEXWIRE_OPERATION(CTWDeviceCommon, init, "host, port"),
    NEXWIRE_OPERATION(CTWDeviceCommon, getLastError, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, addDevice, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, addDeviceAsyn, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, modifyDevice, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, deleteDevice, "deviceGuid"),
    NEXWIRE_OPERATION(CTWDeviceCommon, deleteDevices, "deviceGuids"),
    NEXWIRE_OPERATION(CTWDeviceCommon, getAllDevices, "account, teamNo, syncCloud"),
    NEXWIRE_OPERATION(CTWDeviceCommon, refreshDevice, "deviceGuid"),
    NEXWIRE_OPERATION(CTWDeviceCommon, clearConfig, "deviceGuid"),
    NEXWIRE_OPERATION(CTWDeviceCommon, getOutputList, "deviceGuids"),
    NEXWIRE_OPERATION(CTWDeviceCommon, getResolutionCap, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, modifyResolution, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, bandOutput, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, unBandOutput, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, openWallWindows, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, deleteWindow, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, unBandPlayWindow, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, startPlay, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, stopPlay, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, setTvVoice, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, getTvVoice, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, setScreenNum, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, getScreenNum, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, getTvWallDecodeInfo, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, getTvWallSpec, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, notifyLoginStatus, "loggedIn"),
    NEXWIRE_OPERATION(CTWDeviceCommon, addPollingTask, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, deletePollingTask, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, modifyPollingTask, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, getAllPollingTask, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, startPollingTask, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, stopPollingTask, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, suspendPollingTask, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, switchOverPollingTask, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, stopSingleSourcePollingDecode, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, deletePollingVideoWall, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, modifyPollingTaskCamera, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, deletePollingTaskCamera, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, isExistCameraInPollingTask, "flag"),
    NEXWIRE_OPERATION(CTWDeviceCommon, refreshPollingTask, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, stopAllPollingTask, ""),
    NEXWIRE_OPERATION(CTWDeviceCommon, setPollingTasksAbnormal, ""),
)
// clang-format on

} // namespace catalogue
} // namespace nexwire
