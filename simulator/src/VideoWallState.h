#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "simulator/VideoWallService.h"
#include "src/VideoWallInput.h"

namespace nexwire::simulator {

/// Data of an answer, an object under construction.
class WallOutput {
public:
    WallOutput() : document_(rapidjson::kObjectType) {}

    Json Object() { return Json(rapidjson::kObjectType); }
    void Put(Json& object, std::string_view key, std::string_view text);
    void Put(Json& object, std::string_view key, const char* text) = delete; // It would become a bool.
    void Put(Json& object, std::string_view key, int number);
    void Put(Json& object, std::string_view key, bool flag);
    void Put(Json& object, std::string_view key, Json value);
    void Add(Json& list, Json value) { list.PushBack(value, document_.GetAllocator()); }

    Document& Data() { return document_; }

private:
    Document document_;
};

/// What the service knows and does. Not safe from several threads at once. Handlers throw `WallRefusal` before they
/// change anything.
class VideoWallState {
public:
    explicit VideoWallState(const VideoWallService::Options& options) : options_(options) {}

    /// Does what `path` stands for; refuses paths that stand for nothing.
    void Handle(const std::string& path, const WallInput& input, WallOutput& output);

    /// Everything that it knows, to be kept (VideoWallKeeping.cpp).
    Json Save(Allocator& memory) const;
    /// What was saved; only into one that knows nothing yet.
    void Load(const Json& saved);

private:
    enum class Login { kWaiting = 0, kDone = 1, kRefused = 2, kUnreachable = 3 };
    enum class Run { kStopped = 0, kRunning = 1, kSuspended = 2, kDisturbed = 3 };

    struct Output {
        std::string resolution;
        bool bound = false;
        int row = 0;
        int col = 0;
        bool sound = false;
    };
    struct Stream {
        std::string url;
        std::int64_t since = 0; ///< Milliseconds since 1970 UTC.
    };
    struct Window {
        int row = 0;
        int col = 0;
        int rowNum = 1;
        int colNum = 1;
        int screens = 1;               ///< Sub-windows.
        std::map<int, Stream> streams; ///< By sub-window.
    };
    struct Device {
        std::string username;
        std::string password;
        std::string address;
        int port = 0;
        std::string alias;
        std::string serial;
        std::int64_t loginAt = 0; ///< When the login that is under way ends.
        std::vector<Output> outputs;
        std::map<int, Window> windows;
    };
    struct Camera {
        std::string cameraGuid;
        std::string cameraName;
        std::string deviceSerial;
        int channelNo = 0;
        std::string url;
        std::string streamKey;
        std::string guid;
        int cameraType = 0;
        int share = 0;
        bool stopped = false; ///< Left out until the task is started again.
    };
    struct Place {
        std::string deviceGuid;
        int windowId = 0;
        int subNo = 0;
        bool operator==(const Place& other) const
        {
            return deviceGuid == other.deviceGuid && windowId == other.windowId && subNo == other.subNo;
        }
    };
    struct Task {
        std::array<std::string, 3> scope; ///< Wall, account, team.
        std::string name;
        int pollingTime = 0; ///< Seconds.
        int streamType = 0;
        std::vector<Camera> cameras;
        std::vector<Place> places;
        Run run = Run::kStopped;
        std::int64_t step = 0;  ///< Steps taken up to `since`.
        std::int64_t since = 0; ///< Milliseconds since 1970 UTC.
    };
    class Keeping;
    using Handler = void (VideoWallState::*)(const WallInput&, WallOutput&);
    using Tasks = std::map<std::string, Task>;
    static const std::map<std::string, Handler>& Handlers();

    void AddDevice(const WallInput& input, WallOutput& output);
    void ModifyDevice(const WallInput& input, WallOutput& output);
    void DeleteDevices(const WallInput& input, WallOutput& output);
    void ListDevices(const WallInput& input, WallOutput& output);
    void RefreshDevice(const WallInput& input, WallOutput& output);
    void ClearDevice(const WallInput& input, WallOutput& output);

    void ListOutputs(const WallInput& input, WallOutput& output);
    void GetResolutions(const WallInput& input, WallOutput& output);
    void SetResolution(const WallInput& input, WallOutput& output);
    void Bind(const WallInput& input, WallOutput& output);
    void Unbind(const WallInput& input, WallOutput& output);

    void OpenWindow(const WallInput& input, WallOutput& output);
    void DeleteWindow(const WallInput& input, WallOutput& output);
    void DeleteWindows(const WallInput& input, WallOutput& output);
    void StartPlay(const WallInput& input, WallOutput& output);
    void StopPlay(const WallInput& input, WallOutput& output);
    void SetSound(const WallInput& input, WallOutput& output);
    void GetSound(const WallInput& input, WallOutput& output);
    void SetScreens(const WallInput& input, WallOutput& output);
    void GetScreens(const WallInput& input, WallOutput& output);
    void GetDecodeStatus(const WallInput& input, WallOutput& output);

    void GetSpec(const WallInput& input, WallOutput& output);
    void NotifyLogin(const WallInput& input, WallOutput& output);

    void AddTask(const WallInput& input, WallOutput& output);
    void ModifyTask(const WallInput& input, WallOutput& output);
    void DeleteTask(const WallInput& input, WallOutput& output);
    void ListTasks(const WallInput& input, WallOutput& output);
    void StartTask(const WallInput& input, WallOutput& output);
    void StopTask(const WallInput& input, WallOutput& output);
    void SuspendTask(const WallInput& input, WallOutput& output);
    void SwitchTask(const WallInput& input, WallOutput& output);
    void StopCamera(const WallInput& input, WallOutput& output);
    void ModifyCameras(const WallInput& input, WallOutput& output);
    void DeleteCameras(const WallInput& input, WallOutput& output);
    void FindCameras(const WallInput& input, WallOutput& output);
    void RefreshTasks(const WallInput& input, WallOutput& output);
    void StopAllTasks(const WallInput& input, WallOutput& output);
    void DisturbTasks(const WallInput& input, WallOutput& output);
    void DeleteWall(const WallInput& input, WallOutput& output);

    std::int64_t Now() const { return options_.now(); }
    /// How long something that takes so many seconds takes here, in ms; at least 1.
    std::int64_t Scaled(double seconds) const;

    void ReadAccount(const WallInput& input, Device& device) const;
    Login LoginOf(const Device& device) const;
    void BeginLogin(Device& device) const;
    Device& NeedDevice(const std::string& guid);
    Device& NeedDevice(const WallInput& input) { return NeedDevice(input.Text("deviceGuid")); }
    /// A decoder that is logged in to.
    Device& NeedOnline(const WallInput& input);
    static Output& NeedOutput(Device& device, const WallInput& input);
    static Window& NeedWindow(Device& device, int windowId);
    static void NeedSubWindow(const Window& window, int subWndNo);
    /// Opens a window or gives an open one another place; its number.
    int Arrange(Device& device, const WallInput& windowInfo);
    static bool Covers(const Window& window, const Output& output);
    static void CloseUncovered(Device& device);

    static std::array<std::string, 3> ScopeOf(const WallInput& input);
    std::pair<const std::string, Task>& NeedTask(const WallInput& input);
    void ReadTask(const WallInput& input, Task& task) const;
    /// Refuses windows that are not there or that another running task drives.
    void NeedFreePlaces(const std::string& taskGuid, const Task& task);
    static Camera& NeedCamera(Task& task, const std::string& guid, const std::string& cameraGuid);
    std::int64_t StepOf(const Task& task) const;
    void Hold(Task& task, Run run) const;
    /// The cameras that are not left out, as indices.
    static std::vector<std::size_t> Shown(const Task& task);
    /// Which camera the place of a task shows; null without any.
    const Camera* CameraAt(const Task& task, std::size_t place) const;
    bool Drives(const std::string& deviceGuid) const;
    /// What plays in a sub-window, if anything.
    bool StreamAt(const Place& place, const Window& window, Stream& stream) const;

    const VideoWallService::Options& options_;
    std::map<std::string, Device> devices_;
    Tasks tasks_;
    int nextSerial_ = 1;
    int nextWindow_ = 1;
};

} // namespace nexwire::simulator
