#include "tools/demo/VideoWallChapter.h"

#include <chrono>
#include <thread>
#include <vector>

#include "nexwire/VideoWall/VideoWall.h"

namespace nexwire::demo {
namespace {

constexpr std::size_t kOutputs = 4;
constexpr int kCameras = 3;
constexpr int kPollingSeconds = 10;

class Chapter {
public:
    explicit Chapter(Screen& screen) : screen_(screen) {}

    bool Run()
    {
        const bool well = AddDecoder() && BindOutputs() && OpenWindow() && Play() && Poll();
        return CleanUp() && well;
    }

private:
    bool Done(bool success, const std::string& what)
    {
        if (success) {
            screen_.Result(what);
        } else {
            const TWErrorInfo error = CTWDeviceCommon::getLastError();
            screen_.Wrong(what + " failed: " + std::to_string(error.code) + " of module " +
                          std::to_string(error.module) + ", " + error.message);
        }
        return success;
    }

    bool AddDecoder()
    {
        screen_.Step("Add a decoder; the service logs in to it");
        decoder_.username = "admin";
        decoder_.password = "admin123";
        decoder_.address = "10.20.0.8";
        decoder_.port = 8000;
        decoder_.alias = "Lobby decoder";
        return Done(CTWDeviceCommon::addDevice(decoder_), "added \"" + decoder_.alias + "\"");
    }

    bool BindOutputs()
    {
        screen_.Step("Bind its outputs to a square of two by two screens");
        std::vector<tagTWDeviceOutputInfo> outputs;
        const bool listed = CTWDeviceCommon::getOutputList({decoder_.guid}, outputs);
        if (!Done(listed && outputs.size() == kOutputs,
                  "the decoder has " + std::to_string(outputs.size()) + " outputs")) {
            return false;
        }
        for (tagTWDeviceOutputInfo& output : outputs) {
            output.row = (output.id - 1) / 2;
            output.col = (output.id - 1) % 2;
            if (!Done(CTWDeviceCommon::bandOutput(output), output.channelName + " shows row " +
                                                               std::to_string(output.row) + ", column " +
                                                               std::to_string(output.col))) {
                return false;
            }
        }
        return true;
    }

    bool OpenWindow()
    {
        screen_.Step("Open a window over all four");
        tagTWWindowOpenInfo window;
        window.deviceGuid = decoder_.guid;
        window.id = 1;
        window.rowNum = 2;
        window.colNum = 2;
        if (!Done(CTWDeviceCommon::openWallWindows(window), "the window is open")) {
            return false;
        }
        play_.deviceGuid = window.deviceGuid;
        play_.id = window.id;
        play_.rowNum = window.rowNum;
        play_.colNum = window.colNum;
        play_.windowId = window.windowId;
        return true;
    }

    bool Play()
    {
        screen_.Step("Play a camera and look at the decoding");
        play_.url = "rtsp://10.20.1.1:554/main";
        if (!Done(CTWDeviceCommon::startPlay(play_), "plays " + play_.url)) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        tagTWWallDecodeInfo status;
        const bool looked = CTWDeviceCommon::getTvWallDecodeInfo(play_, status);
        const std::string seen = std::to_string(status.imageWidth) + " x " + std::to_string(status.imageHeight) +
                                 " at " + std::to_string(status.videoFPS) + " frames/s, " +
                                 std::to_string(status.videoTotal) + " frames so far";
        return Done(looked && status.isDecoding != 0, seen) && Done(CTWDeviceCommon::stopPlay(play_), "stopped");
    }

    bool Poll()
    {
        screen_.Step("Let a polling task go through three cameras");
        task_.videoWallGuid = "lobby";
        task_.accountNo = "demo";
        task_.teamNo = "1";
        task_.taskName = "Entrances";
        task_.pollingTime = kPollingSeconds;
        for (int i = 1; i <= kCameras; ++i) {
            tagTWPollingCameraInfo& camera = task_.cameraList.emplace_back();
            camera.cameraGuid = "entrance-" + std::to_string(i);
            camera.cameraName = "Entrance " + std::to_string(i);
            camera.deviceSerial = "CAM" + std::to_string(i);
            camera.channelNo = 1;
            camera.url = "rtsp://10.20.1." + std::to_string(i) + ":554/main";
        }
        task_.windowList = {{play_.deviceGuid, play_.windowId, play_.subWndNo, {}}};
        return Done(CTWDeviceCommon::addPollingTask(task_), "added \"" + task_.taskName + "\"") &&
               Done(CTWDeviceCommon::startPollingTask(task_), "it runs") && Watch() &&
               Done(CTWDeviceCommon::stopPollingTask(task_), "stopped");
    }

    // Until every camera has been seen and the first one is back.
    bool Watch()
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3 * (kCameras + 1));
        int last = 0;
        for (int changes = 0; changes <= kCameras && std::chrono::steady_clock::now() < end;) {
            std::vector<tagTWWallPollingTaskInfo> tasks;
            if (!CTWDeviceCommon::getAllPollingTask(task_, tasks) || tasks.size() != 1) {
                return Done(false, "looking at the task");
            }
            const tagTWWallPollingTaskInfo& seen = tasks.front();
            if (seen.currentCameraNum == last) {
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
                continue;
            }
            if (seen.currentCameraNum != last % kCameras + 1) {
                return Done(false, "the order of the cameras");
            }
            last = seen.currentCameraNum;
            screen_.Result("shows camera " + std::to_string(last) + " of " + std::to_string(seen.totalCameraNum) +
                           ", " + seen.cameraDeviceSerial);
            if (++changes > kCameras) {
                return true;
            }
        }
        screen_.Wrong("the polling task does not advance");
        return false;
    }

    bool CleanUp()
    {
        if (decoder_.guid.empty()) {
            return false;
        }
        screen_.Step("Clean up");
        TWErrorInfoByGuid failure;
        tagTWWindowOpenInfo windows;
        windows.deviceGuid = decoder_.guid;
        const bool tasks = Done(CTWDeviceCommon::deletePollingVideoWall(task_), "the polling tasks are gone");
        const bool window = Done(CTWDeviceCommon::deleteWindow(windows), "the windows are gone");
        const bool decoder = CTWDeviceCommon::deleteDevice(decoder_.guid, failure);
        return Done(decoder && failure.guid.empty(), "the decoder is gone") && tasks && window;
    }

    Screen& screen_;
    tagTWDeviceLoginParam decoder_;
    tagTWPlayInfo play_;
    tagTWWallPollingTaskInfo task_;
};

} // namespace

int RunVideoWallChapter(Screen& screen, const std::string& host, const std::string& port)
{
    CTWDeviceCommon::init(host, port);
    return Chapter(screen).Run() ? 0 : 1;
}

} // namespace nexwire::demo
