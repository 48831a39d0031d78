// What a video wall call costs beside a bare POST of the same bytes through libcurl with a kept handle. Both go to the
// same server on loopback, turn by turn in one run; `ratio` is the median of the one over the median of the other, and
// `extra_us` their difference. "Service" is the local platform's, which works for its answer; "Null" does nothing but
// answer, so that only the two clients are left.

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include "NullServer.h"
#include "nexwire/VideoWall/VideoWall.h"
#include "simulator/VideoWallService.h"

namespace {

using namespace nexwire;
using Clock = std::chrono::steady_clock;

using bench::NullServer;

/// The peer: libcurl alone, with what a careful user of it sets.
class BarePost {
public:
    BarePost(const std::string& url, std::string body) : body_(std::move(body)), easy_(curl_easy_init())
    {
        fields_ = curl_slist_append(fields_, "Content-Type: application/json");
        fields_ = curl_slist_append(fields_, "User-Agent: TARVO-Client/VideoWall");
        fields_ = curl_slist_append(fields_, "Expect:");
        curl_easy_setopt(easy_, CURLOPT_URL, url.c_str());
        curl_easy_setopt(easy_, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(easy_, CURLOPT_PROXY, "");
        curl_easy_setopt(easy_, CURLOPT_TIMEOUT_MS, 5000L);
        curl_easy_setopt(easy_, CURLOPT_HTTPHEADER, fields_);
        curl_easy_setopt(easy_, CURLOPT_POSTFIELDS, body_.data());
        curl_easy_setopt(easy_, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body_.size()));
        curl_easy_setopt(easy_, CURLOPT_WRITEFUNCTION, &BarePost::Take);
        curl_easy_setopt(easy_, CURLOPT_WRITEDATA, this);
    }
    ~BarePost()
    {
        curl_easy_cleanup(easy_);
        curl_slist_free_all(fields_);
    }
    BarePost(const BarePost&) = delete;
    BarePost& operator=(const BarePost&) = delete;

    bool Run()
    {
        answer_.clear();
        return curl_easy_perform(easy_) == CURLE_OK && !answer_.empty();
    }

private:
    static std::size_t Take(char* data, std::size_t size, std::size_t count, void* self)
    {
        static_cast<BarePost*>(self)->answer_.append(data, size * count);
        return size * count;
    }

    const std::string body_;
    std::string answer_;
    CURL* const easy_;
    curl_slist* fields_ = nullptr;
};

NullServer& TheNullServer()
{
    static NullServer& server = *new NullServer;
    return server;
}

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

template <class Step>
double Microseconds(const Step& step, bool& done)
{
    const Clock::time_point start = Clock::now();
    done = step() && done;
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

template <class Operation>
void Compare(benchmark::State& state, const std::string& port, const std::string& path, const std::string& body,
             const Operation& operation)
{
    CTWDeviceCommon::init("127.0.0.1", port);
    BarePost bare("http://127.0.0.1:" + port + path, body);
    bool done = true;
    for (int i = 0; i < 200; ++i) { // Warm both.
        done = operation() && bare.Run() && done;
    }
    std::vector<double> calls;
    std::vector<double> posts;
    for (auto _ : state) {
        // Who goes first has the colder caches, so they take turns at that as well.
        const bool first = calls.size() % 2 == 0;
        if (first) {
            posts.push_back(Microseconds([&] { return bare.Run(); }, done));
        }
        calls.push_back(Microseconds(operation, done));
        if (!first) {
            posts.push_back(Microseconds([&] { return bare.Run(); }, done));
        }
        state.SetIterationTime(calls.back() * 1e-6);
    }
    if (!done) {
        state.SkipWithError("an exchange failed");
        return;
    }
    const double call = Median(calls);
    const double post = Median(posts);
    state.counters["call_us"] = call;
    state.counters["post_us"] = post;
    state.counters["extra_us"] = call - post;
    state.counters["ratio"] = call / post;
}

/// The body that an operation sends.
template <class Operation>
std::string BodyOf(const Operation& operation)
{
    NullServer& server = TheNullServer();
    CTWDeviceCommon::init("127.0.0.1", server.Port());
    operation();
    return server.LastBody();
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
        CTWDeviceCommon::init("127.0.0.1", Port());
        for (int i = 0; i < kDevices; ++i) {
            tagTWDeviceLoginParam device;
            device.username = "admin";
            device.password = "admin123";
            device.address = "10.20.0." + std::to_string(i);
            device.port = 8000;
            device.alias = "Decoder " + std::to_string(i);
            ready_ = CTWDeviceCommon::addDevice(device) && ready_;
            if (i == 0) {
                output.deviceGuid = device.guid;
                output.id = 1;
                ready_ = CTWDeviceCommon::bandOutput(output) && ready_;
            }
        }
        play.deviceGuid = output.deviceGuid;
        play.id = 1;
        play.url = "rtsp://10.20.1.1:554/main";
        play.rowNum = 1;
        play.colNum = 1;
        ready_ = CTWDeviceCommon::startPlay(play) && ready_;
        task.taskName = "Entrances";
        task.pollingTime = 10;
        task.windowList = {{play.deviceGuid, play.windowId, 0, {}}};
        for (int i = 0; i < kCameras; ++i) {
            tagTWPollingCameraInfo& camera = task.cameraList.emplace_back();
            camera.cameraGuid = "5d0cf6ab2b8a4f0f9f7c0a9b1d2e3f" + std::to_string(i + 10);
            camera.cameraName = "Entrance " + std::to_string(i);
            camera.deviceSerial = "CAM00000" + std::to_string(i);
            camera.url = "rtsp://10.20.1.1:554/main";
        }
        ready_ = CTWDeviceCommon::addPollingTask(task) && ready_;
    }

    bool Ready() const { return ready_; }
    std::string Port() const { return std::to_string(service_->Port()); }

    bool BandOutput() { return CTWDeviceCommon::bandOutput(output); }
    bool StartPlay() { return CTWDeviceCommon::startPlay(play); }
    bool ModifyPollingTask() { return CTWDeviceCommon::modifyPollingTask(task); }
    bool GetAllDevices() { return CTWDeviceCommon::getAllDevices(devices, "demo", "1", false); }

private:
    static constexpr int kDevices = 50;
    static constexpr int kCameras = 20;

    std::unique_ptr<simulator::VideoWallService> service_;
    bool ready_ = false;
    tagTWDeviceOutputInfo output;
    tagTWPlayInfo play;
    tagTWWallPollingTaskInfo task;
    std::vector<tagTWDeviceInfo> devices;
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
    TheNullServer().AnswerWith(kEmptyAnswer);
    const auto call = [&] { return (wall.*operation)(); };
    const std::string body = BodyOf(call);
    Compare(state, null ? TheNullServer().Port() : wall.Port(), path, body, call);
}

#define COMPARE(name, path)                                                                                            \
    BENCHMARK_CAPTURE(VideoWall, name##Service, &Wall::name, path, false)                                              \
        ->UseManualTime()                                                                                              \
        ->Unit(benchmark::kMicrosecond);                                                                               \
    BENCHMARK_CAPTURE(VideoWall, name##Null, &Wall::name, path, true)->UseManualTime()->Unit(benchmark::kMicrosecond)

COMPARE(BandOutput, "/videoWall/v1/output/band");
COMPARE(StartPlay, "/videoWall/v1/wall/startPlay");
// Twenty cameras out, and fifty decoders in.
COMPARE(ModifyPollingTask, "/videoWall/v1/wall/polling/task/modify");
COMPARE(GetAllDevices, "/videoWall/v1/deviceManager/device/list/get");

} // namespace

BENCHMARK_MAIN();
