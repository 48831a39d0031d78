#include "Application/VideoWall/VideoWallInterfaceMgr.h"

#include <algorithm>
#include <utility>

#include <keel/Encrypt.h>

#include "Application/VideoWall/WallExchange.h"
#include "core/Log.h"

namespace nexwire {

using videowall::Also;
using videowall::Answer;
using videowall::ExchangeWithWall;
using videowall::Join;
using videowall::Keys;
using videowall::Post;
using videowall::PostCameras;
using videowall::PostNothing;
using videowall::PostTask;
using videowall::RecordField;
using videowall::WallOperation;

namespace {

#define DEVICE "/videoWall/v1/deviceManager/device/"
#define OUTPUT "/videoWall/v1/output/"
#define WALL "/videoWall/v1/wall/"
#define POLLING "/videoWall/v1/wall/polling/"

// ---- Elements of lists, and results of several keys ----

using Failure = TWErrorInfoByGuid;
constexpr RecordField<Failure> kFailure[] = {
    {"code", &Failure::code},
    {"module", &Failure::module},
    {"guid", &Failure::guid},
};

using Device = tagTWDeviceInfo;
constexpr RecordField<Device> kDevice[] = {
    {"loginStatus", &Device::loginStatus},
    {"address", &Device::address},
    {"guid", &Device::guid},
    {"deviceName", &Device::deviceName},
    {"deviceSerial", &Device::deviceSerial},
    {"username", &Device::username},
    {"port", &Device::port},
};

using Output = tagTWDeviceOutputInfo;
constexpr RecordField<Output> kOutput[] = {
    {"id", &Output::id},
    {"channelName", &Output::channelName},
    {"portType", &Output::portType},
    {"deviceGuid", &Output::deviceGuid},
    {"currentResolution", &Output::currentResolution, Also::Number},
    {"bindStatus", &Output::bindStatus},
};

using Decode = tagTWWallDecodeInfo;
constexpr RecordField<Decode> kDecode[] = {
    {"subWndNo", &Decode::subWndNo},     {"videoFPS", &Decode::videoFPS},     {"audioFPS", &Decode::audioFPS},
    {"isDecoding", &Decode::isDecoding}, {"videoType", &Decode::videoType},   {"packetType", &Decode::packetType},
    {"videoTotal", &Decode::videoTotal}, {"imageWidth", &Decode::imageWidth}, {"imageHeight", &Decode::imageHeight},
};

using Spec = tagTWWallSpec;
constexpr RecordField<Spec> kSpec[] = {
    {"videoWallNum", &Spec::videoWallNum},
    {"screenRowNum", &Spec::screenRowNum},
    {"screenColNum", &Spec::screenColNum},
};

using Camera = tagTWPollingCameraInfo;
constexpr RecordField<Camera> kNewCamera[] = {
    {"cameraGuid", &Camera::cameraGuid},
    {"cameraName", &Camera::cameraName},
    {"deviceSerial", &Camera::deviceSerial},
    {"channelNo", &Camera::channelNo},
    {"url", &Camera::url},
    {"streamKey", &Camera::streamKey},
    {"cameraType", &Camera::cameraType},
    {"share", &Camera::share},
};
constexpr RecordField<Camera> kKnownCamera[] = {
    {"cameraGuid", &Camera::cameraGuid},
    {"cameraName", &Camera::cameraName},
    {"deviceSerial", &Camera::deviceSerial},
    {"channelNo", &Camera::channelNo},
    {"url", &Camera::url},
    {"streamKey", &Camera::streamKey},
    {"guid", &Camera::guid},
    {"cameraType", &Camera::cameraType},
    {"share", &Camera::share},
};
// The capital C of the camera edits is the service's.
constexpr RecordField<Camera> kRenamedCamera[] = {
    {"guid", &Camera::guid},
    {"cameraName", &Camera::cameraName},
    {"CameraGuid", &Camera::cameraGuid},
};
constexpr RecordField<Camera> kRemovedCamera[] = {
    {"guid", &Camera::guid},
    {"CameraGuid", &Camera::cameraGuid},
};
constexpr RecordField<Camera> kSoughtCamera[] = {
    {"cameraGuid", &Camera::cameraGuid},
};
constexpr RecordField<Camera> kFoundCamera[] = {
    {"isExist", &Camera::isExist},
    {"taskGuid", &Camera::taskGuid},
};

using Window = tagTWPollingWindowInfo;
constexpr RecordField<Window> kWindow[] = {
    {"deviceGuid", &Window::deviceGuid},
    {"windowId", &Window::windowId},
    {"subNo", &Window::subNo},
};
constexpr RecordField<Window> kKnownWindow[] = {
    {"deviceGuid", &Window::deviceGuid},
    {"windowId", &Window::windowId},
    {"subNo", &Window::subNo},
    {"guid", &Window::guid},
};

using Task = tagTWWallPollingTaskInfo;
constexpr RecordField<Task> kTask[] = {
    {"taskGuid", &Task::taskGuid},
    {"taskName", &Task::taskName},
    {"pollingTime", &Task::pollingTime},
    {"isRunning", &Task::isRunning, Also::Bool},
    {"streamType", &Task::streamType},
    {"cameraDeviceSerial", &Task::cameraDeviceSerial},
    {"cameraChannelNo", &Task::cameraChannelNo},
    {"currentCameraNum", &Task::currentCameraNum},
    {"totalCameraNum", &Task::totalCameraNum},
};

// ---- Keys that several bodies share ----

Keys LoginKeys(const tagTWDeviceLoginParam& device)
{
    return {{"username", Keel::Encrypt::Base64Encode(device.username)},
            {"password", Keel::Encrypt::Base64Encode(device.password)},
            {"address", device.address},
            {"port", device.port},
            {"alias", device.alias}};
}

template <class Record>
Keys WindowKeys(const Record& window)
{
    return {{"windowInfo/subWndNo", window.subWndNo}, {"windowInfo/row", window.row},
            {"windowInfo/col", window.col},           {"windowInfo/rowNum", window.rowNum},
            {"windowInfo/colNum", window.colNum},     {"windowInfo/windowId", window.windowId}};
}

Keys TaskKeys(const tagTWWallPollingTaskInfo& task)
{
    return {{"videoWallGuid", task.videoWallGuid},
            {"accountNo", task.accountNo},
            {"teamNo", task.teamNo},
            {"taskGuid", task.taskGuid}};
}

} // namespace

CTWDeviceOperation& CTWDeviceOperation::Instance()
{
    static CTWDeviceOperation instance;
    return instance;
}

void CTWDeviceOperation::init(const std::string& host, const std::string& port)
{
    baseUrl_ = "http://" + host + ":" + port;
}

// ---- Decoders ----

bool CTWDeviceOperation::addDevice(tagTWDeviceLoginParam& device) const
{
    return Post({NEXWIRE_FUNCTION, "addDevice", DEVICE "add", 15000}, Join(LoginKeys(device), {{"synAdd", 1}}),
                [&](const Answer& answer) { answer.Read("data/guid", device.guid); });
}

bool CTWDeviceOperation::addDeviceAsyn(tagTWDeviceLoginParam& device) const
{
    return Post({NEXWIRE_FUNCTION, "addDeviceAsyn", DEVICE "add", 15000}, LoginKeys(device),
                [&](const Answer& answer) { answer.Read("data/guid", device.guid); });
}

bool CTWDeviceOperation::modifyDevice(const tagTWDeviceLoginParam& device) const
{
    return Post({NEXWIRE_FUNCTION, "modifyDevice", DEVICE "modify"}, Join(LoginKeys(device), {{"guid", device.guid}}));
}

bool CTWDeviceOperation::deleteDevice(const std::string& deviceGuid, TWErrorInfoByGuid& failure) const
{
    std::vector<TWErrorInfoByGuid> failures;
    if (!deleteDevices({deviceGuid}, failures)) {
        return false;
    }
    if (!failures.empty()) {
        failure = std::move(failures.front());
    }
    return true;
}

bool CTWDeviceOperation::deleteDevices(const std::vector<std::string>& deviceGuids,
                                       std::vector<TWErrorInfoByGuid>& failures) const
{
    return Post({NEXWIRE_FUNCTION, "deleteDevices", DEVICE "delete"}, {{"deviceList", deviceGuids, "guid"}},
                [&](const Answer& answer) { failures = answer.List("data/fail", kFailure); });
}

bool CTWDeviceOperation::getAllDevices(std::vector<tagTWDeviceInfo>& devices, const std::string& account,
                                       const std::string& teamNo, bool syncCloud) const
{
    return Post({NEXWIRE_FUNCTION, "getAllDevices", DEVICE "list/get"},
                {{"account", account}, {"teamNo", teamNo}, {"SynCloud", syncCloud}},
                [&](const Answer& answer) { devices = answer.List("data/list", kDevice); });
}

bool CTWDeviceOperation::refreshDevice(const std::string& deviceGuid) const
{
    return Post({NEXWIRE_FUNCTION, "refreshDevice", DEVICE "refresh"}, {{"guid", deviceGuid}});
}

bool CTWDeviceOperation::clearConfig(const std::string& deviceGuid) const
{
    return Post({NEXWIRE_FUNCTION, "clearConfig", DEVICE "config/clear", 5000, "bandOutput"},
                {{"deviceGuid", deviceGuid}});
}

// ---- Outputs ----

bool CTWDeviceOperation::getOutputList(const std::vector<std::string>& deviceGuids,
                                       std::vector<tagTWDeviceOutputInfo>& outputs) const
{
    return Post({NEXWIRE_FUNCTION, "getOutputList", "/videoWall/v1/deviceManager/output/list/get"},
                {{"deviceList", deviceGuids, "guid"}},
                [&](const Answer& answer) { outputs = answer.List("data/list", kOutput); });
}

bool CTWDeviceOperation::getResolutionCap(tagTWResolutionCap& capability) const
{
    return Post({NEXWIRE_FUNCTION, "getResolutionCap", OUTPUT "channels/capabilities/get"},
                {{"deviceGuid", capability.deviceGuid}, {"id", capability.id}}, [&](const Answer& answer) {
                    std::vector<std::string> list(answer.Size("data/resolutionCapList"));
                    for (std::size_t i = 0; i < list.size(); ++i) {
                        answer.Read("data/resolutionCapList/" + std::to_string(i) + "/resolution", list[i]);
                    }
                    answer.Read("data/currentResolution", capability.currentResolution, Also::Number);
                    capability.resolutionCapList = std::move(list);
                });
}

bool CTWDeviceOperation::modifyResolution(const tagTWResolutionCap& capability) const
{
    return Post({NEXWIRE_FUNCTION, "modifyResolution", OUTPUT "channels/resolution"},
                {{"deviceGuid", capability.deviceGuid}, {"id", capability.id}, {"resolution", capability.resolution}});
}

bool CTWDeviceOperation::unBandOutput(const tagTWDeviceOutputInfo& output) const
{
    return Post({NEXWIRE_FUNCTION, "unBandOutput", OUTPUT "unband"},
                {{"deviceGuid", output.deviceGuid}, {"id", output.id}});
}

bool CTWDeviceOperation::bandOutput(const tagTWDeviceOutputInfo& output) const
{
    return Post({NEXWIRE_FUNCTION, "bandOutput", OUTPUT "band"},
                {{"deviceGuid", output.deviceGuid}, {"id", output.id}, {"row", output.row}, {"col", output.col}});
}

// ---- Windows and what they play ----

bool CTWDeviceOperation::openWallWindows(tagTWWindowOpenInfo& window) const
{
    return Post({NEXWIRE_FUNCTION, "openWallWindows", WALL "open/window"},
                Join({{"deviceGuid", window.deviceGuid}, {"id", window.id}}, WindowKeys(window)),
                [&](const Answer& answer) { answer.Read("data/windowId", window.windowId); });
}

bool CTWDeviceOperation::deleteWindow(const tagTWWindowOpenInfo& window) const
{
    return Post({NEXWIRE_FUNCTION, "deleteWindow", WALL "delete/all/windows"}, {{"deviceGuid", window.deviceGuid}});
}

bool CTWDeviceOperation::unBandPlayWindow(const tagTWPlayInfo& play) const
{
    return Post({NEXWIRE_FUNCTION, "unBandPlayWindow", WALL "window/delete"},
                {{"deviceGuid", play.deviceGuid}, {"id", play.id}, {"windowId", play.windowId}});
}

bool CTWDeviceOperation::startPlay(tagTWPlayInfo& play) const
{
    return Post({NEXWIRE_FUNCTION, "startPlay", WALL "startPlay"},
                Join({{"deviceGuid", play.deviceGuid},
                      {"id", play.id},
                      {"url", play.url},
                      {"streamEncrypt", play.streamEncrypt},
                      {"streamPassword", play.streamPassword}},
                     WindowKeys(play)),
                [&](const Answer& answer) { answer.Read("data/windowId", play.windowId); });
}

bool CTWDeviceOperation::stopPlay(const tagTWPlayInfo& play) const
{
    return Post({NEXWIRE_FUNCTION, "stopPlay", WALL "stopPlay"},
                {{"deviceGuid", play.deviceGuid}, {"windowId", play.windowId}, {"subWndNo", play.subWndNo}});
}

bool CTWDeviceOperation::setTvVoice(const tagTWPlayInfo& play) const
{
    return Post({NEXWIRE_FUNCTION, "setTvVoice", OUTPUT "audio/set"}, {{"deviceGuid", play.deviceGuid},
                                                                       {"id", play.id},
                                                                       {"enable", play.enable},
                                                                       {"windowId", play.windowId},
                                                                       {"subWndNo", play.subWndNo}});
}

bool CTWDeviceOperation::getTvVoice(tagTWPlayInfo& play) const
{
    return Post({NEXWIRE_FUNCTION, "getTvVoice", OUTPUT "audio/get"},
                {{"deviceGuid", play.deviceGuid}, {"id", play.id}},
                [&](const Answer& answer) { answer.Read("data/enable", play.enable); });
}

bool CTWDeviceOperation::getScreenNum(tagTWPlayInfo& play) const
{
    return Post({NEXWIRE_FUNCTION, "getScreenNum", WALL "screenNumber/get"},
                {{"deviceGuid", play.deviceGuid}, {"windowId", play.windowId}},
                [&](const Answer& answer) { answer.Read("data/windowNum", play.windowNum); });
}

bool CTWDeviceOperation::setScreenNum(const tagTWPlayInfo& play) const
{
    return Post({NEXWIRE_FUNCTION, "setScreenNum", WALL "screenNumber"},
                {{"deviceGuid", play.deviceGuid}, {"windowId", play.windowId}, {"number", play.number}});
}

bool CTWDeviceOperation::getTvWallDecodeInfo(const tagTWPlayInfo& play, tagTWWallDecodeInfo& status) const
{
    return Post({NEXWIRE_FUNCTION, "getTvWallDecodeInfo", WALL "decode/status/get"},
                {{"deviceGuid", play.deviceGuid}, {"windowId", play.windowId}, {"subWndNo", play.subWndNo}},
                [&](const Answer& answer) { answer.Read("data", status, kDecode); });
}

// ---- Walls and clients ----

bool CTWDeviceOperation::getTvWallSpec(tagTWWallSpec& spec) const
{
    return PostNothing({NEXWIRE_FUNCTION, "getTvWallSpec", "/api-link-desk/desk/device/v1/getSpec"},
                       [&](const Answer& answer) { answer.Read("data", spec, kSpec); });
}

bool CTWDeviceOperation::notifyLoginStatus(bool loggedIn) const
{
    return Post({NEXWIRE_FUNCTION, "[mko-v1.13.2]notifyLoginStatus", "/videoWall/v1/client/login/stats", 1000},
                {{"loginStatus", loggedIn}});
}

// ---- Polling tasks ----

bool CTWDeviceOperation::addPollingTask(tagTWWallPollingTaskInfo& task) const
{
    return PostTask({NEXWIRE_FUNCTION, "[mko-v1.13.1]addPollingTask", POLLING "task/add"}, task,
                    {{"videoWallGuid", task.videoWallGuid},
                     {"accountNo", task.accountNo},
                     {"teamNo", task.teamNo},
                     {"taskName", task.taskName},
                     {"pollingTime", task.pollingTime},
                     {"streamType", task.streamType},
                     {"cameraList", task.cameraList, kNewCamera},
                     {"windowList", task.windowList, kWindow}},
                    [&](const Answer& answer) { answer.Read("data/taskGuid", task.taskGuid); });
}

bool CTWDeviceOperation::modifyPollingTask(tagTWWallPollingTaskInfo& task) const
{
    return PostTask({NEXWIRE_FUNCTION, "[mko-v1.13.1]modifyPollingTask", POLLING "task/modify"}, task,
                    Join(TaskKeys(task), {{"taskName", task.taskName},
                                          {"pollingTime", task.pollingTime},
                                          {"streamType", task.streamType},
                                          {"cameraList", task.cameraList, kKnownCamera},
                                          {"windowList", task.windowList, kKnownWindow}}),
                    [&](const Answer& answer) { answer.Read("data/taskGuid", task.taskGuid); });
}

bool CTWDeviceOperation::getAllPollingTask(const tagTWWallPollingTaskInfo& scope,
                                           std::vector<tagTWWallPollingTaskInfo>& tasks) const
{
    const WallOperation operation = {NEXWIRE_FUNCTION, "[mko-v1.13.1]getAllPollingTask", POLLING "task/get"};
    // The list is asked for as "taskList" and answered as "TaskList".
    const Keys body = {{"videoWallGuid", scope.videoWallGuid},
                       {"accountNo", scope.accountNo},
                       {"teamNo", scope.teamNo},
                       {"taskList", scope.taskGuidList, "taskGuid"}};
    const auto read = [&](const Answer& answer) {
        std::vector<tagTWWallPollingTaskInfo> fresh = answer.List("data/TaskList", kTask);
        NEXWIRE_LOG_INFO_OF(operation.function, "%s TaskList size:[%d]", operation.name,
                            static_cast<int>(fresh.size()));
        for (std::size_t i = 0; i < fresh.size(); ++i) {
            const std::string path = "data/TaskList/" + std::to_string(i);
            fresh[i].cameraList = answer.List(path + "/cameraList", kKnownCamera);
            NEXWIRE_LOG_INFO_OF(operation.function, "%s cameraList size:[%d]", operation.name,
                                static_cast<int>(fresh[i].cameraList.size()));
            fresh[i].windowList = answer.List(path + "/windowList", kWindow);
            NEXWIRE_LOG_INFO_OF(operation.function, "%s windowList size:[%d]", operation.name,
                                static_cast<int>(fresh[i].windowList.size()));
        }
        tasks = std::move(fresh);
    };
    if (!ExchangeWithWall(operation, &body, read)) {
        return false;
    }
    NEXWIRE_LOG_INFO_OF(operation.function, "%s success! [vsPollingTaskInfos - %d].", operation.name,
                        static_cast<int>(tasks.size()));
    return true;
}

bool CTWDeviceOperation::deletePollingTask(const tagTWWallPollingTaskInfo& task) const
{
    return PostTask({NEXWIRE_FUNCTION, "[mko-v1.13.1]deletePollingTask", POLLING "task/delete"}, task, TaskKeys(task));
}

bool CTWDeviceOperation::startPollingTask(const tagTWWallPollingTaskInfo& task) const
{
    return PostTask({NEXWIRE_FUNCTION, "[mko-v1.13.1]startPollingTask", POLLING "task/start"}, task, TaskKeys(task));
}

bool CTWDeviceOperation::stopPollingTask(const tagTWWallPollingTaskInfo& task) const
{
    return PostTask({NEXWIRE_FUNCTION, "[mko-v1.13.1]stopPollingTask", POLLING "task/stop"}, task, TaskKeys(task));
}

bool CTWDeviceOperation::suspendPollingTask(const tagTWWallPollingTaskInfo& task) const
{
    return PostTask({NEXWIRE_FUNCTION, "[mko-v1.13.1]suspendPollingTask", POLLING "task/suspend"}, task,
                    TaskKeys(task));
}

bool CTWDeviceOperation::switchOverPollingTask(const tagTWWallPollingTaskInfo& task) const
{
    return PostTask({NEXWIRE_FUNCTION, "[mko-v1.13.1]switchOverPollingTask", POLLING "task/switchOver"}, task,
                    Join(TaskKeys(task), {{"optType", task.optType}}));
}

bool CTWDeviceOperation::stopSingleSourcePollingDecode(const tagTWWallPollingTaskInfo& task) const
{
    return PostTask({NEXWIRE_FUNCTION, "[pel-v1.13.1]stopSingleSourcePollingDecode", POLLING "task/camera/stop"}, task,
                    {{"accountNo", task.accountNo},
                     {"teamNo", task.teamNo},
                     {"videoWallGuid", task.videoWallGuid},
                     {"taskGuid", task.taskGuid},
                     {"cameraGuid", task.cameraList.empty() ? std::string() : task.cameraList.front().cameraGuid}});
}

bool CTWDeviceOperation::deletePollingVideoWall(const tagTWWallPollingTaskInfo& scope) const
{
    const WallOperation operation = {
        NEXWIRE_FUNCTION, "[mko-v1.13.1]deletePollingVideoWall", POLLING "videoWall/delete", 5000,
        nullptr,          "[mko-v1.13.1]addPollingTask"};
    const Keys body = {
        {"videoWallGuid", scope.videoWallGuid}, {"accountNo", scope.accountNo}, {"teamNo", scope.teamNo}};
    if (!ExchangeWithWall(operation, &body)) {
        return false;
    }
    NEXWIRE_LOG_INFO_OF(operation.function, "%s success! [videoWallGuid - %s].", operation.name,
                        scope.videoWallGuid.c_str());
    return true;
}

bool CTWDeviceOperation::modifyPollingTaskCamera(const tagTWWallPollingTaskInfo& task) const
{
    return PostCameras({NEXWIRE_FUNCTION, "[mko-v1.13.1]modifyPollingTaskCamera", POLLING "task/camera/modify"}, task,
                       Join(TaskKeys(task), {{"cameraList", task.cameraList, kRenamedCamera}}));
}

bool CTWDeviceOperation::deletePollingTaskCamera(const tagTWWallPollingTaskInfo& task) const
{
    return PostCameras({NEXWIRE_FUNCTION, "[mko-v1.13.1]deletePollingTaskCamera", POLLING "task/camera/delete"}, task,
                       Join(TaskKeys(task), {{"cameraList", task.cameraList, kRemovedCamera}}));
}

bool CTWDeviceOperation::isExistCameraInPollingTask(tagTWWallPollingTaskInfo& task) const
{
    const WallOperation operation = {
        NEXWIRE_FUNCTION, "[mko-v1.13.1]isExistCameraInPollingTask", POLLING "task/camera/isExist", 5000, nullptr,
        nullptr,          "[mko-v1.13.1]isEixstCameraInPollingTask"};
    return PostCameras(
        operation, task,
        {{"accountNo", task.accountNo}, {"teamNo", task.teamNo}, {"cameraList", task.cameraList, kSoughtCamera}},
        [&](const Answer& answer) {
            const std::size_t found = answer.Size("data/cameraList");
            NEXWIRE_LOG_INFO_OF(operation.function, "%s CameraList size:[%d - %d]", operation.name,
                                static_cast<int>(task.cameraList.size()), static_cast<int>(found));
            std::vector<tagTWPollingCameraInfo> fresh = task.cameraList;
            for (std::size_t i = 0; i < std::min(fresh.size(), found); ++i) {
                answer.Read("data/cameraList/" + std::to_string(i), fresh[i], kFoundCamera);
            }
            task.cameraList = std::move(fresh);
        });
}

bool CTWDeviceOperation::refreshPollingTask(const tagTWWallPollingTaskInfo& scope) const
{
    return PostTask({NEXWIRE_FUNCTION, "[pel-v1.13.1]refreshPollingTask", POLLING "task/refresh"}, scope,
                    {{"accountNo", scope.accountNo}, {"teamNo", scope.teamNo}, {"videoWallGuid", scope.videoWallGuid}});
}

bool CTWDeviceOperation::stopAllPollingTask(const tagTWWallPollingTaskInfo& scope) const
{
    return PostTask({NEXWIRE_FUNCTION, "[pel-v1.13.1]stopAllPollingTask", POLLING "task/all/stop"}, scope,
                    {{"accountNo", scope.accountNo},
                     {"teamNo", scope.teamNo},
                     {"videoWallGuid", scope.videoWallGuid},
                     {"stopMode", scope.stopMode}});
}

bool CTWDeviceOperation::setPollingTasksAbnormal(const tagTWWallPollingTaskInfo& scope) const
{
    return PostTask({NEXWIRE_FUNCTION, "[pel-v1.13.1]setPollingTasksAbnormal", POLLING "task/abnormal"}, scope,
                    {{"accountNo", scope.accountNo},
                     {"teamNo", scope.teamNo},
                     {"videoWallGuid", scope.videoWallGuid},
                     {"taskGuidList", scope.taskGuidList, "taskGuid"}});
}

} // namespace nexwire
