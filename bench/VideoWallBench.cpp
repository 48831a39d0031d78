// What a video wall call costs beside a bare POST of the same bytes through libcurl with a kept handle. Both go to the
// same server on loopback, turn by turn in one run. "Service" is the local platform's, which works for its answer;
// "Null" does nothing but answer, so that only the two clients are left.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "BarePost.h"
#include "Turns.h"
#include "loopback/RawServer.h"
#include "nexwire/VideoWall/VideoWall.h"
#include "simulator/VideoWallService.h"

namespace {

using namespace nexwire;
loopback::RawServer& NullServer()
{
    static loopback::RawServer& server = *new loopback::RawServer;
    return server;
}

/// Points the library at a server.
void At(std::uint16_t port)
{
    CTWDeviceCommon::init("127.0.0.1", std::to_string(port));
}

template <class Operation>
void Compare(benchmark::State& state, std::uint16_t port, const std::string& path, const std::string& body,
             const Operation& operation, double bar)
{
    At(port);
    bench::BarePost bare;
    bare.AddField("User-Agent: TARVO-Client/VideoWall");
    const std::string url = "http://127.0.0.1:" + std::to_string(port) + path;
    const auto post = [&] { return bare.Run(url, body); };
    bool done = true;
    for (int i = 0; i < 200; ++i) { // Warm both.
        done = operation() && post() && done;
    }
    bench::Turns turns;
    for (auto _ : state) {
        done = turns.Take(operation, post) && done;
    }
    if (!done) {
        state.SkipWithError("an exchange failed");
        return;
    }
    bench::Report(state, turns.Own() * 1e6, 1 / turns.Ratio(), bar, "us|bare POST, share");
}

/// The body that an operation sends.
template <class Operation>
std::string BodyOf(const Operation& operation)
{
    loopback::RawServer& server = NullServer();
    server.SetKeeping(true);
    At(server.Port());
    operation();
    const std::vector<loopback::RawRequest> requests = server.TakeRequests();
    server.SetKeeping(false);
    return requests.empty() ? std::string() : requests.back().body;
}

constexpr const char* kEmptyAnswer = R"({"code":0,"module":0,"msg":"","data":{}})";

/// The operations, on a wall with fifty decoders of which the first has an output bound, a window and a task.
class Wall {
public:
    Wall()
    {
        simulator::VideoWallService::Options options;
        options.timeScale = 1e6; // Nobody waits for logins.
        service_ = std::make_unique<simulator::VideoWallService>(options);
        std::string error;
        ready_ = service_->Start(error);
        At(Port());
        for (int i = 0; i < kDevices; ++i) {
            tagTWDeviceLoginParam device;
            device.username = "admin";
            device.password = "admin123";
            device.address = "10.20.0." + std::to_string(i);
            device.port = 8000;
            device.alias = "Decoder " + std::to_string(i);
            ready_ = CTWDeviceCommon::addDevice(device) && ready_;
            if (i == 0) {
                output_.deviceGuid = device.guid;
                output_.id = 1;
                ready_ = CTWDeviceCommon::bandOutput(output_) && ready_;
            }
        }
        play_.deviceGuid = output_.deviceGuid;
        play_.id = 1;
        play_.url = "rtsp://10.20.1.1:554/main";
        play_.rowNum = 1;
        play_.colNum = 1;
        ready_ = CTWDeviceCommon::startPlay(play_) && ready_;
        task_.taskName = "Entrances";
        task_.pollingTime = 10;
        task_.windowList = {{play_.deviceGuid, play_.windowId, 0, {}}};
        for (int i = 0; i < kCameras; ++i) {
            tagTWPollingCameraInfo& camera = task_.cameraList.emplace_back();
            camera.cameraGuid = "5d0cf6ab2b8a4f0f9f7c0a9b1d2e3f" + std::to_string(i + 10);
            camera.cameraName = "Entrance " + std::to_string(i);
            camera.deviceSerial = "CAM00000" + std::to_string(i);
            camera.url = "rtsp://10.20.1.1:554/main";
        }
        ready_ = CTWDeviceCommon::addPollingTask(task_) && ready_;
    }

    bool Ready() const { return ready_; }
    std::uint16_t Port() const { return service_->Port(); }

    bool BandOutput() { return CTWDeviceCommon::bandOutput(output_); }
    bool StartPlay() { return CTWDeviceCommon::startPlay(play_); }
    bool ModifyPollingTask() { return CTWDeviceCommon::modifyPollingTask(task_); }
    bool GetAllDevices() { return CTWDeviceCommon::getAllDevices(devices_, "demo", "1", false); }

private:
    static constexpr int kDevices = 50;
    static constexpr int kCameras = 20;

    std::unique_ptr<simulator::VideoWallService> service_;
    bool ready_ = false;
    tagTWDeviceOutputInfo output_;
    tagTWPlayInfo play_;
    tagTWWallPollingTaskInfo task_;
    std::vector<tagTWDeviceInfo> devices_;
};

Wall& TheWall()
{
    static Wall& wall = *new Wall;
    return wall;
}

void VideoWall(benchmark::State& state, bool (Wall::*operation)(), const char* path, bool null)
{
    Wall& wall = TheWall();
    if (!wall.Ready()) {
        state.SkipWithError("the service is not ready");
        return;
    }
    NullServer().SetDefault(loopback::Reply::Json(kEmptyAnswer));
    const auto call = [&] { return (wall.*operation)(); };
    const std::string body = BodyOf(call);
    // The service works for its answer, as every server does.
    Compare(state, null ? NullServer().Port() : wall.Port(), path, body, call, null ? 0 : -1.15);
}

#define COMPARE(name, path)                                                                                            \
    BENCHMARK_CAPTURE(VideoWall, name##Service, &Wall::name, path, false)->UseRealTime();                              \
    BENCHMARK_CAPTURE(VideoWall, name##Null, &Wall::name, path, true)->UseRealTime()

COMPARE(BandOutput, "/videoWall/v1/output/band");
COMPARE(StartPlay, "/videoWall/v1/wall/startPlay");
// Twenty cameras out, and fifty decoders in.
COMPARE(ModifyPollingTask, "/videoWall/v1/wall/polling/task/modify");
COMPARE(GetAllDevices, "/videoWall/v1/deviceManager/device/list/get");

} // namespace

BENCHMARK_MAIN();
