#include "src/VideoWallState.h"

#include <algorithm>
#include <cstdio>

#include "src/Base64.h"
#include "src/Engine.h"

namespace nexwire::simulator {
namespace {

constexpr double kLoginSeconds = 1.0;
constexpr int kFramesPerSecond = 25;
constexpr int kWalls = 4;
const char* const kResolutions[] = {"1024*768", "1280*720", "1920*1080", "2560*1440", "3840*2160"};
constexpr const char* kFirstResolution = "1920*1080";

bool IsUnreachable(const std::string& address)
{
    return address.rfind("192.0.2.", 0) == 0;
}

} // namespace

void WallOutput::Put(Json& object, std::string_view key, std::string_view text)
{
    SetMember(object, key, MakeText(text, document_.GetAllocator()), document_.GetAllocator());
}

void WallOutput::Put(Json& object, std::string_view key, int number)
{
    SetMember(object, key, Json(number), document_.GetAllocator());
}

void WallOutput::Put(Json& object, std::string_view key, bool flag)
{
    SetMember(object, key, Json(flag), document_.GetAllocator());
}

void WallOutput::Put(Json& object, std::string_view key, Json value)
{
    SetMember(object, key, std::move(value), document_.GetAllocator());
}

const std::map<std::string, VideoWallState::Handler>& VideoWallState::Handlers()
{
    using S = VideoWallState;
    static const std::map<std::string, Handler> handlers = {
        {"/api-link-desk/desk/device/v1/getSpec", &S::GetSpec},
        {"/videoWall/v1/client/login/stats", &S::NotifyLogin},
        {"/videoWall/v1/deviceManager/device/add", &S::AddDevice},
        {"/videoWall/v1/deviceManager/device/config/clear", &S::ClearDevice},
        {"/videoWall/v1/deviceManager/device/delete", &S::DeleteDevices},
        {"/videoWall/v1/deviceManager/device/list/get", &S::ListDevices},
        {"/videoWall/v1/deviceManager/device/modify", &S::ModifyDevice},
        {"/videoWall/v1/deviceManager/device/refresh", &S::RefreshDevice},
        {"/videoWall/v1/deviceManager/output/list/get", &S::ListOutputs},
        {"/videoWall/v1/output/audio/get", &S::GetSound},
        {"/videoWall/v1/output/audio/set", &S::SetSound},
        {"/videoWall/v1/output/band", &S::Bind},
        {"/videoWall/v1/output/channels/capabilities/get", &S::GetResolutions},
        {"/videoWall/v1/output/channels/resolution", &S::SetResolution},
        {"/videoWall/v1/output/unband", &S::Unbind},
        {"/videoWall/v1/wall/decode/status/get", &S::GetDecodeStatus},
        {"/videoWall/v1/wall/delete/all/windows", &S::DeleteWindows},
        {"/videoWall/v1/wall/open/window", &S::OpenWindow},
        {"/videoWall/v1/wall/polling/task/abnormal", &S::DisturbTasks},
        {"/videoWall/v1/wall/polling/task/add", &S::AddTask},
        {"/videoWall/v1/wall/polling/task/all/stop", &S::StopAllTasks},
        {"/videoWall/v1/wall/polling/task/camera/delete", &S::DeleteCameras},
        {"/videoWall/v1/wall/polling/task/camera/isExist", &S::FindCameras},
        {"/videoWall/v1/wall/polling/task/camera/modify", &S::ModifyCameras},
        {"/videoWall/v1/wall/polling/task/camera/stop", &S::StopCamera},
        {"/videoWall/v1/wall/polling/task/delete", &S::DeleteTask},
        {"/videoWall/v1/wall/polling/task/get", &S::ListTasks},
        {"/videoWall/v1/wall/polling/task/modify", &S::ModifyTask},
        {"/videoWall/v1/wall/polling/task/refresh", &S::RefreshTasks},
        {"/videoWall/v1/wall/polling/task/start", &S::StartTask},
        {"/videoWall/v1/wall/polling/task/stop", &S::StopTask},
        {"/videoWall/v1/wall/polling/task/suspend", &S::SuspendTask},
        {"/videoWall/v1/wall/polling/task/switchOver", &S::SwitchTask},
        {"/videoWall/v1/wall/polling/videoWall/delete", &S::DeleteWall},
        {"/videoWall/v1/wall/screenNumber", &S::SetScreens},
        {"/videoWall/v1/wall/screenNumber/get", &S::GetScreens},
        {"/videoWall/v1/wall/startPlay", &S::StartPlay},
        {"/videoWall/v1/wall/stopPlay", &S::StopPlay},
        {"/videoWall/v1/wall/window/delete", &S::DeleteWindow},
    };
    return handlers;
}

void VideoWallState::Handle(const std::string& path, const WallInput& input, WallOutput& output)
{
    const auto found = Handlers().find(path);
    if (found == Handlers().end()) {
        throw WallRefusal(WallCode::kUnknownPath, path);
    }
    (this->*found->second)(input, output);
}

std::int64_t VideoWallState::Scaled(double seconds) const
{
    return std::max<std::int64_t>(1, static_cast<std::int64_t>(seconds * 1000.0 / options_.timeScale));
}

// ---- Decoders ----

void VideoWallState::ReadAccount(const WallInput& input, Device& device) const
{
    Device fresh = device;
    if (!FromBase64(input.Text("username"), fresh.username) || !FromBase64(input.Text("password"), fresh.password)) {
        throw WallRefusal(WallCode::kBadCredentials, "not Base64");
    }
    fresh.address = input.Text("address");
    fresh.port = input.Int("port");
    fresh.alias = input.Text("alias");
    if (fresh.address.empty() || fresh.port < 1 || fresh.port > 65535) {
        throw WallRefusal(WallCode::kBadAddress);
    }
    device = std::move(fresh);
}

VideoWallState::Login VideoWallState::LoginOf(const Device& device) const
{
    if (Now() < device.loginAt) {
        return Login::kWaiting;
    }
    if (IsUnreachable(device.address)) {
        return Login::kUnreachable;
    }
    const bool accepted = device.username == options_.username && device.password == options_.password;
    return accepted ? Login::kDone : Login::kRefused;
}

void VideoWallState::BeginLogin(Device& device) const
{
    device.loginAt = Now() + Scaled(kLoginSeconds);
}

VideoWallState::Device& VideoWallState::NeedDevice(const std::string& guid)
{
    const auto found = devices_.find(guid);
    if (found == devices_.end()) {
        throw WallRefusal(WallCode::kUnknownDevice, guid);
    }
    return found->second;
}

VideoWallState::Device& VideoWallState::NeedOnline(const WallInput& input)
{
    Device& device = NeedDevice(input);
    const Login login = LoginOf(device);
    if (login == Login::kRefused) {
        throw WallRefusal(WallCode::kBadCredentials, device.alias);
    }
    if (login != Login::kDone) {
        throw WallRefusal(WallCode::kUnreachable, device.alias);
    }
    return device;
}

void VideoWallState::AddDevice(const WallInput& input, WallOutput& output)
{
    Device device;
    ReadAccount(input, device);
    for (const auto& [guid, other] : devices_) {
        if (other.address == device.address && other.port == device.port) {
            throw WallRefusal(WallCode::kDuplicateDevice, guid);
        }
    }
    if (input.Has("synAdd") && input.Int("synAdd") == 1) {
        // Whoever asks waits for the login, so it must be a good one.
        const Login login = LoginOf(device);
        if (login != Login::kDone) {
            throw WallRefusal(login == Login::kRefused ? WallCode::kBadCredentials : WallCode::kUnreachable,
                              device.address);
        }
    } else {
        BeginLogin(device);
    }
    char serial[16];
    std::snprintf(serial, sizeof serial, "VD%08d", nextSerial_++);
    device.serial = serial;
    device.outputs.resize(static_cast<std::size_t>(options_.outputs), Output{kFirstResolution});
    const std::string guid = NewGuid();
    devices_.emplace(guid, std::move(device));
    output.Put(output.Data(), "guid", guid);
}

void VideoWallState::ModifyDevice(const WallInput& input, WallOutput&)
{
    const std::string guid = input.Text("guid");
    Device& device = NeedDevice(guid);
    Device fresh = device;
    ReadAccount(input, fresh);
    for (const auto& [otherGuid, other] : devices_) {
        if (otherGuid != guid && other.address == fresh.address && other.port == fresh.port) {
            throw WallRefusal(WallCode::kDuplicateDevice, otherGuid);
        }
    }
    BeginLogin(fresh);
    device = std::move(fresh);
}

void VideoWallState::DeleteDevices(const WallInput& input, WallOutput& output)
{
    Json failures(rapidjson::kArrayType);
    for (const WallInput& each : input.List("deviceList")) {
        const std::string guid = each.Text("guid");
        const auto found = devices_.find(guid);
        if (found != devices_.end() && !Drives(guid)) {
            devices_.erase(found);
            continue;
        }
        const int code = static_cast<int>(found == devices_.end() ? WallCode::kUnknownDevice : WallCode::kDeviceBusy);
        Json failure = output.Object();
        output.Put(failure, "guid", guid);
        output.Put(failure, "code", code);
        output.Put(failure, "module", code / 1000);
        output.Add(failures, std::move(failure));
    }
    output.Put(output.Data(), "fail", std::move(failures));
}

void VideoWallState::ListDevices(const WallInput& input, WallOutput& output)
{
    input.Text("account");
    input.Text("teamNo");
    input.Bool("SynCloud");
    Json list(rapidjson::kArrayType);
    for (const auto& [guid, device] : devices_) {
        Json item = output.Object();
        output.Put(item, "loginStatus", static_cast<int>(LoginOf(device)));
        output.Put(item, "address", device.address);
        output.Put(item, "guid", guid);
        output.Put(item, "deviceName", device.alias);
        output.Put(item, "deviceSerial", device.serial);
        output.Put(item, "username", device.username);
        output.Put(item, "port", device.port);
        output.Add(list, std::move(item));
    }
    output.Put(output.Data(), "list", std::move(list));
}

void VideoWallState::RefreshDevice(const WallInput& input, WallOutput&)
{
    BeginLogin(NeedDevice(input.Text("guid")));
}

void VideoWallState::ClearDevice(const WallInput& input, WallOutput&)
{
    Device& device = NeedOnline(input);
    device.windows.clear();
    std::fill(device.outputs.begin(), device.outputs.end(), Output{kFirstResolution});
}

// ---- Outputs ----

VideoWallState::Output& VideoWallState::NeedOutput(Device& device, const WallInput& input)
{
    const int id = input.Int("id");
    if (id < 1 || static_cast<std::size_t>(id) > device.outputs.size()) {
        throw WallRefusal(WallCode::kUnknownOutput, std::to_string(id));
    }
    return device.outputs[static_cast<std::size_t>(id) - 1];
}

void VideoWallState::ListOutputs(const WallInput& input, WallOutput& output)
{
    Json list(rapidjson::kArrayType);
    for (const WallInput& each : input.List("deviceList")) {
        const std::string guid = each.Text("guid");
        const Device& device = NeedDevice(guid);
        int id = 0;
        for (const Output& channel : device.outputs) {
            ++id;
            Json item = output.Object();
            output.Put(item, "id", id);
            output.Put(item, "channelName", "HDMI " + std::to_string(id));
            output.Put(item, "portType", 1);
            output.Put(item, "deviceGuid", guid);
            output.Put(item, "currentResolution", channel.resolution);
            output.Put(item, "bindStatus", channel.bound ? 1 : 0);
            output.Add(list, std::move(item));
        }
    }
    output.Put(output.Data(), "list", std::move(list));
}

void VideoWallState::GetResolutions(const WallInput& input, WallOutput& output)
{
    const Output& channel = NeedOutput(NeedOnline(input), input);
    Json list(rapidjson::kArrayType);
    for (const char* resolution : kResolutions) {
        Json item = output.Object();
        output.Put(item, "resolution", std::string_view(resolution));
        output.Add(list, std::move(item));
    }
    output.Put(output.Data(), "currentResolution", channel.resolution);
    output.Put(output.Data(), "resolutionCapList", std::move(list));
}

void VideoWallState::SetResolution(const WallInput& input, WallOutput&)
{
    Output& channel = NeedOutput(NeedOnline(input), input);
    const std::string resolution = input.Text("resolution");
    if (std::find(std::begin(kResolutions), std::end(kResolutions), resolution) == std::end(kResolutions)) {
        throw WallRefusal(WallCode::kUnknownResolution, resolution);
    }
    channel.resolution = resolution;
}

void VideoWallState::Bind(const WallInput& input, WallOutput&)
{
    Device& device = NeedOnline(input);
    Output& channel = NeedOutput(device, input);
    const int row = input.Int("row");
    const int col = input.Int("col");
    if (row < 0 || row >= options_.rows || col < 0 || col >= options_.cols) {
        throw WallRefusal(WallCode::kNoSuchCell, std::to_string(row) + ", " + std::to_string(col));
    }
    for (const auto& [guid, other] : devices_) {
        for (const Output& taken : other.outputs) {
            if (&taken != &channel && taken.bound && taken.row == row && taken.col == col) {
                throw WallRefusal(WallCode::kCellTaken, guid);
            }
        }
    }
    channel.bound = true;
    channel.row = row;
    channel.col = col;
    CloseUncovered(device);
}

void VideoWallState::Unbind(const WallInput& input, WallOutput&)
{
    Device& device = NeedOnline(input);
    Output& channel = NeedOutput(device, input);
    if (!channel.bound) {
        throw WallRefusal(WallCode::kNotBound);
    }
    channel.bound = false;
    CloseUncovered(device);
}

// ---- Windows and what they play ----

bool VideoWallState::Covers(const Window& window, const Output& output)
{
    return output.bound && output.row >= window.row && output.row - window.row < window.rowNum &&
           output.col >= window.col && output.col - window.col < window.colNum;
}

// Windows need an output in every cell; those that have lost one close.
void VideoWallState::CloseUncovered(Device& device)
{
    for (auto at = device.windows.begin(); at != device.windows.end();) {
        const Window& window = at->second;
        const auto covered = std::count_if(device.outputs.begin(), device.outputs.end(),
                                           [&](const Output& output) { return Covers(window, output); });
        at = covered == std::int64_t{window.rowNum} * window.colNum ? std::next(at) : device.windows.erase(at);
    }
}

VideoWallState::Window& VideoWallState::NeedWindow(Device& device, int windowId)
{
    const auto found = device.windows.find(windowId);
    if (found == device.windows.end()) {
        throw WallRefusal(WallCode::kUnknownWindow, std::to_string(windowId));
    }
    return found->second;
}

void VideoWallState::NeedSubWindow(const Window& window, int subWndNo)
{
    if (subWndNo < 0 || subWndNo >= window.screens) {
        throw WallRefusal(WallCode::kUnknownSubWindow, std::to_string(subWndNo));
    }
}

int VideoWallState::Arrange(Device& device, const WallInput& windowInfo)
{
    const int asked = windowInfo.Int("windowId");
    const auto open = device.windows.find(asked);
    Window window = open != device.windows.end() ? open->second : Window();
    window.row = windowInfo.Int("row");
    window.col = windowInfo.Int("col");
    window.rowNum = windowInfo.Int("rowNum");
    window.colNum = windowInfo.Int("colNum");
    NeedSubWindow(window, windowInfo.Int("subWndNo"));
    const auto covered = std::count_if(device.outputs.begin(), device.outputs.end(),
                                       [&](const Output& output) { return Covers(window, output); });
    if (window.rowNum < 1 || window.colNum < 1 || covered != std::int64_t{window.rowNum} * window.colNum) {
        throw WallRefusal(WallCode::kOutsideWall);
    }
    if (open != device.windows.end()) {
        open->second = std::move(window);
        return asked;
    }
    if (device.windows.size() >= static_cast<std::size_t>(options_.maxWindows)) {
        throw WallRefusal(WallCode::kTooManyWindows);
    }
    device.windows.emplace(nextWindow_, std::move(window));
    return nextWindow_++;
}

void VideoWallState::OpenWindow(const WallInput& input, WallOutput& output)
{
    Device& device = NeedOnline(input);
    NeedOutput(device, input);
    output.Put(output.Data(), "windowId", Arrange(device, input.Object("windowInfo")));
}

void VideoWallState::DeleteWindow(const WallInput& input, WallOutput&)
{
    Device& device = NeedOnline(input);
    NeedOutput(device, input);
    const int windowId = input.Int("windowId");
    NeedWindow(device, windowId);
    device.windows.erase(windowId);
}

void VideoWallState::DeleteWindows(const WallInput& input, WallOutput&)
{
    NeedOnline(input).windows.clear();
}

void VideoWallState::StartPlay(const WallInput& input, WallOutput& output)
{
    Device& device = NeedOnline(input);
    NeedOutput(device, input);
    const std::string url = input.Text("url");
    const bool encrypted = input.Bool("streamEncrypt");
    const std::string key = input.Text("streamPassword");
    if (url.empty() || (encrypted && key.empty())) {
        throw WallRefusal(WallCode::kNoStream);
    }
    const WallInput windowInfo = input.Object("windowInfo");
    const int windowId = Arrange(device, windowInfo);
    device.windows[windowId].streams[windowInfo.Int("subWndNo")] = {url, Now()};
    output.Put(output.Data(), "windowId", windowId);
}

void VideoWallState::StopPlay(const WallInput& input, WallOutput&)
{
    Window& window = NeedWindow(NeedOnline(input), input.Int("windowId"));
    if (window.streams.erase(input.Int("subWndNo")) == 0) {
        throw WallRefusal(WallCode::kNothingPlays);
    }
}

void VideoWallState::SetSound(const WallInput& input, WallOutput&)
{
    Device& device = NeedOnline(input);
    Output& channel = NeedOutput(device, input);
    NeedSubWindow(NeedWindow(device, input.Int("windowId")), input.Int("subWndNo"));
    channel.sound = input.Bool("enable");
}

void VideoWallState::GetSound(const WallInput& input, WallOutput& output)
{
    output.Put(output.Data(), "enable", NeedOutput(NeedOnline(input), input).sound);
}

void VideoWallState::SetScreens(const WallInput& input, WallOutput&)
{
    Window& window = NeedWindow(NeedOnline(input), input.Int("windowId"));
    const int number = input.Int("number");
    if (number != 1 && number != 4 && number != 9 && number != 16) {
        throw WallRefusal(WallCode::kBadScreenNumber, std::to_string(number));
    }
    window.screens = number;
    window.streams.erase(window.streams.lower_bound(number), window.streams.end());
}

void VideoWallState::GetScreens(const WallInput& input, WallOutput& output)
{
    output.Put(output.Data(), "windowNum", NeedWindow(NeedOnline(input), input.Int("windowId")).screens);
}

void VideoWallState::GetDecodeStatus(const WallInput& input, WallOutput& output)
{
    const Place place{input.Text("deviceGuid"), input.Int("windowId"), input.Int("subWndNo")};
    const Window& window = NeedWindow(NeedOnline(input), place.windowId);
    NeedSubWindow(window, place.subNo);
    Stream stream;
    const bool plays = StreamAt(place, window, stream);
    // A sub stream is small; the frame rate breathes as that of a camera does.
    const bool small = stream.url.find("sub") != std::string::npos;
    const std::int64_t elapsed = plays ? Now() - stream.since : 0;
    const int rate = kFramesPerSecond - (elapsed / 1000 % 7 == 6 ? 1 : 0);
    Document& data = output.Data();
    output.Put(data, "subWndNo", place.subNo);
    output.Put(data, "videoFPS", plays ? rate : 0);
    output.Put(data, "audioFPS", plays ? 50 : 0);
    output.Put(data, "isDecoding", plays ? 1 : 0);
    output.Put(data, "videoType", plays ? (stream.url.find("265") != std::string::npos ? 2 : 1) : 0);
    output.Put(data, "packetType", plays ? 1 : 0);
    output.Put(data, "videoTotal", static_cast<int>(elapsed * kFramesPerSecond / 1000 % 2000000000));
    output.Put(data, "imageWidth", plays ? (small ? 704 : 1920) : 0);
    output.Put(data, "imageHeight", plays ? (small ? 576 : 1080) : 0);
}

// ---- Walls and clients ----

void VideoWallState::GetSpec(const WallInput&, WallOutput& output)
{
    output.Put(output.Data(), "videoWallNum", kWalls);
    output.Put(output.Data(), "screenRowNum", options_.rows);
    output.Put(output.Data(), "screenColNum", options_.cols);
}

// Nothing depends on clients being there.
void VideoWallState::NotifyLogin(const WallInput& input, WallOutput&)
{
    input.Bool("loginStatus");
}

} // namespace nexwire::simulator
