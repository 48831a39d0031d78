// Polling tasks. A task that runs takes a step every `pollingTime` seconds; each of its windows shows the camera that
// many places further. Nothing runs in the background: where a task stands follows from the time.

#include <algorithm>

#include "src/Engine.h"
#include "src/VideoWallState.h"

namespace nexwire::simulator {
namespace {

constexpr int kMaxPollingSeconds = 86400;

enum Switch { kBefore = 1, kBehind = 2 };

} // namespace

std::array<std::string, 3> VideoWallState::ScopeOf(const WallInput& input)
{
    return {input.Text("videoWallGuid"), input.Text("accountNo"), input.Text("teamNo")};
}

std::pair<const std::string, VideoWallState::Task>& VideoWallState::NeedTask(const WallInput& input)
{
    const std::string guid = input.Text("taskGuid");
    const auto found = tasks_.find(guid);
    if (found == tasks_.end() || found->second.scope != ScopeOf(input)) {
        throw WallRefusal(WallCode::kUnknownTask, guid);
    }
    return *found;
}

void VideoWallState::ReadTask(const WallInput& input, Task& task) const
{
    task.scope = ScopeOf(input);
    task.name = input.Text("taskName");
    task.pollingTime = input.Int("pollingTime");
    task.streamType = input.Int("streamType");
    if (task.pollingTime < 1 || task.pollingTime > kMaxPollingSeconds) {
        throw WallRefusal(WallCode::kBadPollingTime, std::to_string(task.pollingTime));
    }
    if (task.name.empty() || !input.Has("cameraList") || !input.Has("windowList")) {
        throw WallRefusal(WallCode::kEmptyTask);
    }
    std::vector<Camera> cameras;
    for (const WallInput& each : input.List("cameraList")) {
        Camera camera;
        camera.cameraGuid = each.Text("cameraGuid");
        camera.cameraName = each.Text("cameraName");
        camera.deviceSerial = each.Text("deviceSerial");
        camera.channelNo = each.Int("channelNo");
        camera.url = each.Text("url");
        camera.streamKey = each.Text("streamKey");
        camera.cameraType = each.Int("cameraType");
        camera.share = each.Int("share");
        // An entry keeps its GUID; one that is new to the task gets one.
        const std::string guid = each.Has("guid") ? each.Text("guid") : std::string();
        const bool known =
            std::any_of(task.cameras.begin(), task.cameras.end(), [&](const Camera& old) { return old.guid == guid; });
        camera.guid = known ? guid : NewGuid();
        cameras.push_back(std::move(camera));
    }
    task.cameras = std::move(cameras);
    task.places.clear();
    for (const WallInput& each : input.List("windowList")) {
        task.places.push_back({each.Text("deviceGuid"), each.Int("windowId"), each.Int("subNo")});
    }
    if (task.cameras.empty() || task.places.empty()) {
        throw WallRefusal(WallCode::kEmptyTask);
    }
}

VideoWallState::Camera& VideoWallState::NeedCamera(Task& task, const std::string& guid, const std::string& cameraGuid)
{
    for (Camera& camera : task.cameras) {
        if (guid.empty() ? camera.cameraGuid == cameraGuid : camera.guid == guid) {
            return camera;
        }
    }
    throw WallRefusal(WallCode::kUnknownCamera, guid.empty() ? cameraGuid : guid);
}

std::int64_t VideoWallState::StepOf(const Task& task) const
{
    return task.run == Run::kRunning ? task.step + (Now() - task.since) / Scaled(task.pollingTime) : task.step;
}

void VideoWallState::Hold(Task& task, Run run) const
{
    task.step = StepOf(task);
    task.run = run;
}

std::vector<std::size_t> VideoWallState::Shown(const Task& task)
{
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < task.cameras.size(); ++i) {
        if (!task.cameras[i].stopped) {
            shown.push_back(i);
        }
    }
    return shown;
}

const VideoWallState::Camera* VideoWallState::CameraAt(const Task& task, std::size_t place) const
{
    const std::vector<std::size_t> shown = Shown(task);
    if (shown.empty()) {
        return nullptr;
    }
    const std::int64_t count = static_cast<std::int64_t>(shown.size());
    const std::int64_t at = (StepOf(task) + static_cast<std::int64_t>(place)) % count;
    return &task.cameras[shown[static_cast<std::size_t>(at < 0 ? at + count : at)]];
}

bool VideoWallState::Drives(const std::string& deviceGuid) const
{
    return std::any_of(tasks_.begin(), tasks_.end(), [&](const Tasks::value_type& entry) {
        const Task& task = entry.second;
        return task.run == Run::kRunning &&
               std::any_of(task.places.begin(), task.places.end(),
                           [&](const Place& place) { return place.deviceGuid == deviceGuid; });
    });
}

bool VideoWallState::StreamAt(const Place& place, const Window& window, Stream& stream) const
{
    for (const auto& [guid, task] : tasks_) {
        if (task.run != Run::kRunning && task.run != Run::kSuspended) {
            continue;
        }
        for (std::size_t i = 0; i < task.places.size(); ++i) {
            const Camera* const camera = CameraAt(task, i);
            if (camera != nullptr && task.places[i] == place) {
                const std::int64_t steps = StepOf(task) - task.step;
                stream = {camera->url, task.since + steps * Scaled(task.pollingTime)};
                return true;
            }
        }
    }
    const auto found = window.streams.find(place.subNo);
    if (found == window.streams.end()) {
        return false;
    }
    stream = found->second;
    return true;
}

void VideoWallState::AddTask(const WallInput& input, WallOutput& output)
{
    Task task;
    ReadTask(input, task);
    for (const auto& [guid, other] : tasks_) {
        if (other.scope == task.scope && other.name == task.name) {
            throw WallRefusal(WallCode::kDuplicateTask, guid);
        }
    }
    const std::string guid = NewGuid();
    tasks_.emplace(guid, std::move(task));
    output.Put(output.Data(), "taskGuid", guid);
}

void VideoWallState::ModifyTask(const WallInput& input, WallOutput& output)
{
    auto& [guid, task] = NeedTask(input);
    Task fresh = task;
    ReadTask(input, fresh);
    for (const auto& [otherGuid, other] : tasks_) {
        if (otherGuid != guid && other.scope == fresh.scope && other.name == fresh.name) {
            throw WallRefusal(WallCode::kDuplicateTask, otherGuid);
        }
    }
    if (fresh.run == Run::kRunning) {
        NeedFreePlaces(guid, fresh);
    }
    fresh.step = 0;
    fresh.since = Now();
    task = std::move(fresh);
    output.Put(output.Data(), "taskGuid", guid);
}

void VideoWallState::DeleteTask(const WallInput& input, WallOutput&)
{
    const std::string guid = NeedTask(input).first;
    tasks_.erase(guid);
}

void VideoWallState::ListTasks(const WallInput& input, WallOutput& output)
{
    const std::array<std::string, 3> scope = ScopeOf(input);
    std::vector<std::string> asked;
    if (input.Has("taskList")) {
        for (const WallInput& each : input.List("taskList")) {
            asked.push_back(each.Text("taskGuid"));
        }
    }
    Json list(rapidjson::kArrayType);
    for (const auto& [guid, task] : tasks_) {
        const bool wanted = asked.empty() || std::find(asked.begin(), asked.end(), guid) != asked.end();
        if (task.scope != scope || !wanted) {
            continue;
        }
        Json cameras(rapidjson::kArrayType);
        for (const Camera& camera : task.cameras) {
            Json item = output.Object();
            output.Put(item, "cameraGuid", camera.cameraGuid);
            output.Put(item, "cameraName", camera.cameraName);
            output.Put(item, "deviceSerial", camera.deviceSerial);
            output.Put(item, "channelNo", camera.channelNo);
            output.Put(item, "url", camera.url);
            output.Put(item, "streamKey", camera.streamKey);
            output.Put(item, "guid", camera.guid);
            output.Put(item, "cameraType", camera.cameraType);
            output.Put(item, "share", camera.share);
            output.Add(cameras, std::move(item));
        }
        Json windows(rapidjson::kArrayType);
        for (const Place& place : task.places) {
            Json item = output.Object();
            output.Put(item, "deviceGuid", place.deviceGuid);
            output.Put(item, "windowId", place.windowId);
            output.Put(item, "subNo", place.subNo);
            output.Add(windows, std::move(item));
        }
        Json item = output.Object();
        output.Put(item, "taskGuid", guid);
        output.Put(item, "taskName", task.name);
        output.Put(item, "pollingTime", task.pollingTime);
        output.Put(item, "isRunning", static_cast<int>(task.run));
        output.Put(item, "streamType", task.streamType);
        output.Put(item, "cameraList", std::move(cameras));
        output.Put(item, "windowList", std::move(windows));
        const Camera* const current = task.run == Run::kStopped ? nullptr : CameraAt(task, 0);
        output.Put(item, "cameraDeviceSerial", current != nullptr ? current->deviceSerial : std::string());
        output.Put(item, "cameraChannelNo", current != nullptr ? current->channelNo : 0);
        output.Put(item, "currentCameraNum",
                   current != nullptr ? static_cast<int>(current - task.cameras.data()) + 1 : 0);
        output.Put(item, "totalCameraNum", static_cast<int>(task.cameras.size()));
        output.Add(list, std::move(item));
    }
    output.Put(output.Data(), "TaskList", std::move(list));
}

void VideoWallState::NeedFreePlaces(const std::string& taskGuid, const Task& task)
{
    for (const Place& place : task.places) {
        NeedSubWindow(NeedWindow(NeedDevice(place.deviceGuid), place.windowId), place.subNo);
        for (const auto& [otherGuid, other] : tasks_) {
            const bool drives = std::any_of(other.places.begin(), other.places.end(),
                                            [&](const Place& taken) { return taken == place; });
            if (otherGuid != taskGuid && other.run == Run::kRunning && drives) {
                throw WallRefusal(WallCode::kWindowBusy, otherGuid);
            }
        }
    }
}

void VideoWallState::StartTask(const WallInput& input, WallOutput&)
{
    auto& [guid, task] = NeedTask(input);
    NeedFreePlaces(guid, task);
    if (task.run == Run::kRunning) {
        return;
    }
    if (task.run != Run::kSuspended) {
        task.step = 0;
        for (Camera& camera : task.cameras) {
            camera.stopped = false;
        }
    }
    task.run = Run::kRunning;
    task.since = Now();
}

void VideoWallState::StopTask(const WallInput& input, WallOutput&)
{
    Task& task = NeedTask(input).second;
    Hold(task, Run::kStopped);
}

void VideoWallState::SuspendTask(const WallInput& input, WallOutput&)
{
    Task& task = NeedTask(input).second;
    if (task.run != Run::kRunning) {
        throw WallRefusal(WallCode::kNotRunning);
    }
    Hold(task, Run::kSuspended);
}

void VideoWallState::SwitchTask(const WallInput& input, WallOutput&)
{
    Task& task = NeedTask(input).second;
    const int operation = input.Int("optType");
    if (operation != kBefore && operation != kBehind) {
        throw WallRefusal(WallCode::kUnknownSwitch, std::to_string(operation));
    }
    if (task.run != Run::kRunning && task.run != Run::kSuspended) {
        throw WallRefusal(WallCode::kNotRunning);
    }
    // The camera switched to stays its whole time.
    task.step = StepOf(task) + (operation == kBehind ? 1 : -1);
    task.since = Now();
}

void VideoWallState::StopCamera(const WallInput& input, WallOutput&)
{
    Task& task = NeedTask(input).second;
    Camera& camera = NeedCamera(task, {}, input.Text("cameraGuid"));
    if (task.run != Run::kRunning && task.run != Run::kSuspended) {
        throw WallRefusal(WallCode::kNotRunning);
    }
    camera.stopped = true;
}

void VideoWallState::ModifyCameras(const WallInput& input, WallOutput&)
{
    Task& task = NeedTask(input).second;
    Task fresh = task;
    for (const WallInput& each : input.List("cameraList")) {
        const std::string cameraGuid = each.Text("CameraGuid");
        Camera& camera = NeedCamera(fresh, each.Text("guid"), cameraGuid);
        camera.cameraName = each.Text("cameraName");
        camera.cameraGuid = cameraGuid;
    }
    task = std::move(fresh);
}

void VideoWallState::DeleteCameras(const WallInput& input, WallOutput&)
{
    Task& task = NeedTask(input).second;
    Task fresh = task;
    for (const WallInput& each : input.List("cameraList")) {
        const Camera& camera = NeedCamera(fresh, each.Text("guid"), each.Text("CameraGuid"));
        fresh.cameras.erase(fresh.cameras.begin() + (&camera - fresh.cameras.data()));
    }
    if (fresh.cameras.empty()) {
        fresh.run = Run::kStopped;
    }
    task = std::move(fresh);
}

void VideoWallState::FindCameras(const WallInput& input, WallOutput& output)
{
    const std::string account = input.Text("accountNo");
    const std::string team = input.Text("teamNo");
    Json list(rapidjson::kArrayType);
    for (const WallInput& each : input.List("cameraList")) {
        const std::string wanted = each.Text("cameraGuid");
        const auto found = std::find_if(tasks_.begin(), tasks_.end(), [&](const Tasks::value_type& entry) {
            const Task& task = entry.second;
            return task.scope[1] == account && task.scope[2] == team &&
                   std::any_of(task.cameras.begin(), task.cameras.end(),
                               [&](const Camera& camera) { return camera.cameraGuid == wanted; });
        });
        Json item = output.Object();
        output.Put(item, "cameraGuid", wanted);
        output.Put(item, "isExist", found != tasks_.end());
        output.Put(item, "taskGuid", found != tasks_.end() ? found->first : std::string());
        output.Add(list, std::move(item));
    }
    output.Put(output.Data(), "cameraList", std::move(list));
}

// The tasks are always up to date here.
void VideoWallState::RefreshTasks(const WallInput& input, WallOutput&)
{
    ScopeOf(input);
}

void VideoWallState::StopAllTasks(const WallInput& input, WallOutput&)
{
    const std::array<std::string, 3> scope = ScopeOf(input);
    input.Int("stopMode");
    for (auto& [guid, task] : tasks_) {
        if (task.scope == scope) {
            Hold(task, Run::kStopped);
        }
    }
}

void VideoWallState::DisturbTasks(const WallInput& input, WallOutput&)
{
    const std::array<std::string, 3> scope = ScopeOf(input);
    std::vector<Task*> disturbed;
    for (const WallInput& each : input.List("taskGuidList")) {
        const std::string guid = each.Text("taskGuid");
        const auto found = tasks_.find(guid);
        if (found == tasks_.end() || found->second.scope != scope) {
            throw WallRefusal(WallCode::kUnknownTask, guid);
        }
        disturbed.push_back(&found->second);
    }
    for (Task* const task : disturbed) {
        Hold(*task, Run::kDisturbed);
    }
}

void VideoWallState::DeleteWall(const WallInput& input, WallOutput&)
{
    const std::array<std::string, 3> scope = ScopeOf(input);
    for (auto at = tasks_.begin(); at != tasks_.end();) {
        at = at->second.scope == scope ? tasks_.erase(at) : std::next(at);
    }
}

} // namespace nexwire::simulator
