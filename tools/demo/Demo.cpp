#include "tools/demo/Demo.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <thread>

#include <keel/Error.h>
#include <keel/Log.h>
#include <rapidjson/document.h>

#include "loopback/RawServer.h"
#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/AccessController/Wiegand.h"
#include "nexwire/DeviceParameters/AcsParam.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/PassThrough/PassThrough.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include "simulator/Platform.h"
#include "simulator/VideoWallService.h"
#include "site.inc"
#include "tools/demo/AttendanceChapter.h"
#include "tools/demo/DeviceChapter.h"
#include "tools/demo/FrameworkChapter.h"
#include "tools/demo/PersonnelChapter.h"
#include "tools/demo/ReleaseChapter.h"
#include "tools/demo/Screen.h"
#include "tools/demo/VideoWallChapter.h"

namespace nexwire::demo {
namespace {

using Clock = std::chrono::steady_clock;

/// A real site takes minutes to reach its devices; nobody wants to wait for that here.
constexpr double kPace = 4.0;

double MillisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

std::string Short(double milliseconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.1f ms", milliseconds);
    return text;
}

/// Counts what passes and how long it takes.
struct Meter {
    std::atomic<int> exchanges{0};
    std::atomic<std::uint64_t> bytesOut{0};
    std::atomic<std::uint64_t> bytesIn{0};
    std::atomic<std::int64_t> microseconds{0};
};

class MeteredExecutor : public IRequestExecutor {
public:
    MeteredExecutor(std::unique_ptr<IRequestExecutor> inner, Meter& meter) : inner_(std::move(inner)), meter_(meter) {}

    bool Execute(RspInfos& response, const RequestParams& request, int flag) override
    {
        const Clock::time_point start = Clock::now();
        const bool success = inner_->Execute(response, request, flag);
        ++meter_.exchanges;
        meter_.bytesOut += request.body.size();
        meter_.bytesIn += response.body.size();
        meter_.microseconds += static_cast<std::int64_t>(MillisecondsSince(start) * 1000.0);
        return success;
    }

private:
    std::unique_ptr<IRequestExecutor> inner_;
    Meter& meter_;
};

/// The library pointed at one address for as long as it lives.
class Client {
public:
    Client(std::uint16_t port, Meter& meter)
    {
        host::HttpExecutorOptions options;
        options.baseAddress = "http://127.0.0.1:" + std::to_string(port);
        options.connectTimeoutMs = 1000;
        NexwireInitParams params;
        params.executor = new MeteredExecutor(std::make_unique<host::HttpRequestExecutor>(options), meter);
        NexwireInit(params);
    }
    ~Client() { NexwireUnInit(); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
};

struct Site {
    rapidjson::Document document;

    bool Load(const std::string& path, std::string& error)
    {
        std::string text = kBuiltInSite;
        if (!path.empty()) {
            std::ifstream file(std::filesystem::u8path(path), std::ios::binary);
            if (!file) {
                error = "cannot read " + path;
                return false;
            }
            std::ostringstream content;
            content << file.rdbuf();
            text = content.str();
        }
        document.Parse<rapidjson::kParseIterativeFlag>(text.data(), text.size());
        for (const char* list : {"groups", "persons", "doors"}) {
            if (document.HasParseError() || !document.IsObject() || !document.HasMember(list) ||
                !document[list].IsArray()) {
                error = (path.empty() ? std::string("the built-in site") : path) +
                        " is no site description: it needs lists \"groups\", \"persons\" and \"doors\"";
                return false;
            }
        }
        return true;
    }

    /// The entry of a list with that name, or null.
    const rapidjson::Value* Find(const char* list, const std::string& name) const
    {
        for (const rapidjson::Value& entry : document[list].GetArray()) {
            if (Text(entry, "name") == name) {
                return &entry;
            }
        }
        return nullptr;
    }

    static std::string Text(const rapidjson::Value& entry, const char* key)
    {
        const auto found = entry.IsObject() ? entry.FindMember(key) : entry.MemberEnd();
        return found != entry.MemberEnd() && found->value.IsString() ? found->value.GetString() : "";
    }

    static int Number(const rapidjson::Value& entry, const char* key)
    {
        const auto found = entry.FindMember(key);
        return found != entry.MemberEnd() && found->value.IsInt() ? found->value.GetInt() : 0;
    }
};

/// What a caller sees of a call that returned false.
std::string Seen()
{
    const ExchangeRecord& exchange = LastExchange();
    if (!exchange.sent) {
        return "false; not sent";
    }
    if (!exchange.answered) {
        const Keel::Error::ErrorCode error = Keel::Error::GetLastError();
        return "false; no answer: " + error.text + " [" + std::to_string(error.category) + "-" +
               std::to_string(error.number) + "]";
    }
    if (!exchange.parsed) {
        return "false; answer not readable";
    }
    return "false; refused with " + std::to_string(exchange.category) + "-" + std::to_string(exchange.number) + " \"" +
           exchange.message + "\"";
}

class Demonstration {
public:
    Demonstration(Screen& screen, const Site& site) : screen_(screen), site_(site) {}

    bool Start()
    {
        simulator::Options options;
        options.timeScale = kPace;
        options.onExchange = [this](const simulator::Served& exchange) {
            // Polling would drown everything else.
            const auto within = [&](const char* part) { return exchange.path.find(part) != std::string::npos; };
            if (!within("/downloadProgress/") && !within("/configurationFiles/") && !within("/progress") &&
                !within("/visitorDownLoadFaildRecord")) {
                screen_.Wire(exchange.verb + " " + exchange.path + "  " + std::to_string(exchange.requestBytes) +
                             " B -> " + exchange.code + ", " + std::to_string(exchange.answerBytes) + " B");
            }
        };
        platform_ = std::make_unique<simulator::Platform>(std::move(options));
        std::string error;
        if (!platform_->Start(error)) {
            screen_.Wrong("the local platform does not start: " + error);
            return false;
        }
        screen_.Result("a platform listens on 127.0.0.1:" + std::to_string(platform_->Port()));
        return true;
    }

    void Run()
    {
        {
            const Client client(platform_->Port(), meter_);
            Groups();
            Download();
            Wiegand();
            Device();
            RunChapter("Devices: a camera, a panel, an alarm, a file of events", RunDeviceChapter);
            RunChapter("The platform itself: users, network, views, log", RunFrameworkChapter);
            RunChapter("Personnel: a tree, a list, a face, a visitor", RunPersonnelChapter);
            RunChapter("Attendance: a shift, clock records, a month", RunAttendanceChapter);
            RunChapter("Signage and maps: a release server, a program, a large picture", RunReleaseChapter);
        }
        VideoWall();
        Failures();
        Summary();
    }

private:
    /// Says so when a call did not end as it should.
    bool Expect(bool success, const char* what)
    {
        if (!success) {
            screen_.Wrong(std::string(what) + ": " + Seen());
        }
        return success;
    }

    void Groups()
    {
        screen_.Chapter("Access groups");
        for (const rapidjson::Value& group : site_.document["groups"].GetArray()) {
            protocol::AccessGroupAddParam param;
            param.name = Site::Text(group, "name");
            param.secheduleGuid = Site::Text(group, "schedule");
            param.description = Site::Text(group, "description");
            AddMembers(group, param);
            screen_.Step("Create the group \"" + param.name + "\": " + std::to_string(param.personnelAddList.size()) +
                         " persons, " + std::to_string(param.objectAddList.size()) + " doors");
            std::string guid;
            int code = 0;
            if (Expect(CAccessGroupComm::addAccessGroup(param, guid, code), "addAccessGroup")) {
                groups_.push_back(guid);
                screen_.Result("true, group " + guid);
            }
        }
        if (groups_.empty()) {
            screen_.Wrong("the site has no groups");
            return;
        }
        screen_.Step("Rename the first; only the name goes over the wire");
        int code = 0;
        Expect(CAccessGroupComm::modifyAccessGroupName(groups_.front(), "Office staff, weekdays", code),
               "modifyAccessGroupName");
        protocol::AccessGroupQueryResponseListData all;
        if (Expect(CAccessGroupComm::queryAccessGroups(all), "queryAccessGroups")) {
            for (const protocol::AccessGroupQueryResponse& group : all.accessGroupQueryResponseList) {
                screen_.Result("\"" + group.name + "\": " + std::to_string(group.personnelResList.size()) +
                               " persons, " + std::to_string(group.objectResList.size()) + " doors");
            }
        }
    }

    void AddMembers(const rapidjson::Value& group, protocol::AccessGroupAddParam& param)
    {
        for (const auto& name : group["persons"].GetArray()) {
            if (const rapidjson::Value* person = site_.Find("persons", name.GetString())) {
                protocol::PersonnelAdd& added = param.personnelAddList.emplace_back();
                added.personnelGuid = Site::Text(*person, "guid");
                added.personnelNo = Site::Text(*person, "number");
                added.personnelName = name.GetString();
            }
        }
        for (const auto& name : group["doors"].GetArray()) {
            if (const rapidjson::Value* door = site_.Find("doors", name.GetString())) {
                protocol::ObjectAdd& added = param.objectAddList.emplace_back();
                added.deviceGuid = Site::Text(*door, "device");
                added.objectGuid = Site::Text(*door, "guid");
                added.objectName = name.GetString();
                added.objectNo = Site::Number(*door, "number");
                added.objectType = 1;
                device_ = device_.empty() ? added.deviceGuid : device_;
            }
        }
    }

    void Download()
    {
        if (groups_.empty()) {
            return;
        }
        screen_.Chapter("Download to the devices");
        screen_.Step("Start the download and follow it");
        if (!Expect(CAccessGroupComm::downloadAccessGroups({groups_.front()}, false, 0), "downloadAccessGroups")) {
            return;
        }
        protocol::GroupDownloadProgressData progress;
        const Clock::time_point start = Clock::now();
        do {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            if (!Expect(CAccessGroupComm::getAccessGroupDownloadProgress(progress, groups_.front()),
                        "getAccessGroupDownloadProgress")) {
                return;
            }
            screen_.Progress("devices", progress.groupProgress);
        } while (progress.groupProgress < 100 && MillisecondsSince(start) < 30000);
        if (progress.groupProgress < 100) {
            screen_.Wrong("the download does not end");
            return;
        }
        screen_.Result("done in " + Short(MillisecondsSince(start)));

        screen_.Step("What the first device got, person by person");
        protocol::DeviceDownloadDetailsCont condition;
        condition.detailsQueryCondition.deviceGuid = device_;
        condition.detailsQueryCondition.groupGuid = groups_.front();
        protocol::DeviceDownloadDetailsResponseData details;
        if (Expect(CAccessGroupComm::queryDeviceDownloadDetails(details, condition), "queryDeviceDownloadDetails")) {
            const protocol::DeviceDownloadDetailsResponse& device = details.deviceDownloadDetailsResponse;
            for (const protocol::DeviceDownloadDetail& person : device.deviceDownloadDetailList) {
                screen_.Result(person.personName + ": state " + std::to_string(person.downloadState) +
                               (person.errorCode == 0 ? "" : ", " + person.errorMsg));
            }
            screen_.Result(std::to_string(device.successNum) + " of " + std::to_string(device.totalNum) + " arrived");
        }
    }

    void Wiegand()
    {
        screen_.Chapter("Wiegand formats");
        screen_.Step("Read the formats and lengthen the first by a bit");
        protocol::WiegandQueryResultListData formats;
        if (!Expect(CGetWiegands::request(formats), "CGetWiegands") || formats.wiegandQueryResultList.empty()) {
            return;
        }
        const protocol::WiegandQueryResult& format = formats.wiegandQueryResultList.front();
        screen_.Result("\"" + format.name + "\" has " + std::to_string(format.totalLength) + " bits");
        protocol::WiegandModifyParam change;
        change.guid = format.guid;
        change.name = format.name;
        change.totalLength = format.totalLength + 1;
        change.WriteOnly({"guid", "name", "totalLength"});
        protocol::OperationResultListData result;
        if (Expect(CSetWiegand::request(result, change), "CSetWiegand") &&
            Expect(CGetWiegands::request(formats), "CGetWiegands")) {
            screen_.Result("now " + std::to_string(formats.wiegandQueryResultList.front().totalLength) + " bits");
        }
    }

    void Device()
    {
        if (device_.empty()) {
            return;
        }
        screen_.Chapter("A door, through the platform to the device");
        screen_.Step("Read door 1, change its times and give it a password, which travels encrypted");
        protocol::AcsDoorParamCfg door;
        if (!Expect(AcsParamConfig::getAcsDoorParamRequest(door, device_, 1), "getAcsDoorParamRequest")) {
            return;
        }
        screen_.Result("an authentication opens it for " + std::to_string(door.openDuration) + " s");
        door.openDuration += 3;
        door.superPassword = "482913";
        if (Expect(AcsParamConfig::setAcsDoorParamRequest(door, device_, 1), "setAcsDoorParamRequest") &&
            Expect(AcsParamConfig::getAcsDoorParamRequest(door, device_, 1), "getAcsDoorParamRequest")) {
            screen_.Result("now " + std::to_string(door.openDuration) + " s; the password came back " +
                           (door.superPassword == "482913" ? "as it was set" : "changed"));
            if (door.superPassword != "482913") {
                screen_.Wrong("the password did not survive the way");
            }
        }
        protocol::CardNumberInfo cards;
        if (Expect(GetCardNumber::requestCardNum(cards, device_), "requestCardNum")) {
            screen_.Result("the device holds " + std::to_string(cards.cardNum) + " cards");
        }
        Batch();
    }

    /// Reads through a batch of results page by page.
    void Batch()
    {
        screen_.Step("Read doors 1 to 5 in one batch, two answers a page; the controller has two doors");
        protocol::BatchPassThroughReq request;
        request.command = kReadDoor;
        request.maxResultNum = 2;
        for (int i = 1; i <= 5; ++i) {
            protocol::BatchSendData& item = request.batchSendDataList.emplace_back();
            item.id = "door " + std::to_string(i);
            item.inBuffer = std::to_string(i);
        }
        protocol::BatchPassThroughRspData response;
        for (int page = 1; page <= 10; ++page) {
            std::string error;
            if (!Expect(accessParamComm::batchPassThroughRequest(request, device_, response, error),
                        "batchPassThroughRequest")) {
                return;
            }
            const protocol::BatchPassThroughRsp& answer = response.batchPassThroughRsp;
            std::string ids;
            for (const protocol::BatchReturnData& item : answer.batchReturnDataList) {
                ids += (ids.empty() ? "" : ", ") + item.id + (item.code == 0 ? "" : " (failed)");
            }
            screen_.Result("page " + std::to_string(page) + ": " + ids);
            if (answer.isFinish) {
                return;
            }
            request.guid = answer.guid;
            request.batchSendDataList.clear();
        }
        screen_.Wrong("the batch does not end");
    }

    void RunChapter(const char* title, bool (*run)(Screen& screen))
    {
        screen_.Chapter(title);
        if (!run(screen_)) {
            screen_.Wrong(std::string(title) + ": did not end well");
        }
    }

    void VideoWall()
    {
        screen_.Chapter("Video wall, over its own service");
        simulator::VideoWallService::Options options;
        options.timeScale = 20.0;
        options.onExchange = [this](const simulator::Served& exchange) {
            if (exchange.path.find("/polling/task/get") == std::string::npos) {
                screen_.Wire(exchange.verb + " " + exchange.path + " -> " + exchange.code);
            }
            ++wallExchanges_;
        };
        simulator::VideoWallService service(std::move(options));
        std::string error;
        if (!service.Start(error)) {
            screen_.Wrong("the video wall service does not start: " + error);
            return;
        }
        if (RunVideoWallChapter(screen_, "127.0.0.1", std::to_string(service.Port())) != 0) {
            screen_.Wrong("the video wall chapter did not end well");
        }
    }

    /// One failure of each kind, and what the caller sees.
    void Failures()
    {
        screen_.Chapter("Failures, as a caller sees them");
        int code = 0;
        screen_.Step("The server refuses: rename a group that does not exist");
        {
            const Client client(platform_->Port(), meter_);
            ExpectFailure(!CAccessGroupComm::modifyAccessGroupName("no-such-group", "x", code));
        }
        // Errors of reading answers are logged; here they are wanted, and shown below.
        Keel::details::LogConfig quiet;
        quiet.console = false;
        Keel::CSingleton<Keel::details::CLog>::Instance().Configure(quiet);
        protocol::AccessGroupQueryResponseListData untouched;
        untouched.accessGroupQueryResponseList.resize(1);
        screen_.Step("The answer is no envelope: something else answers at the address");
        {
            loopback::RawServer server;
            server.SetDefault(
                loopback::Reply::Http(200, "<html>Sign in to the Wi-Fi</html>", {"Content-Type: text/html"}));
            const Client client(server.Port(), meter_);
            ExpectFailure(!CAccessGroupComm::queryAccessGroups(untouched));
        }
        screen_.Step("The deadline passes: the server takes the request and stays silent (300 ms are allowed)");
        {
            loopback::RawServer server;
            server.SetDefault(loopback::Reply().Hang());
            const Client client(server.Port(), meter_);
            protocol::DagPassThroughRspData response;
            const Clock::time_point start = Clock::now();
            ExpectFailure(!accessParamComm::dagThroughRequestExternal(response, {}, "device", 300));
            screen_.Failure("after " + Short(MillisecondsSince(start)));
        }
        screen_.Step("The server is gone");
        {
            const std::uint16_t port = platform_->Port();
            served_ = platform_->ExchangeCount();
            platform_->Stop();
            const Client client(port, meter_);
            ExpectFailure(!CAccessGroupComm::queryAccessGroups(untouched));
        }
        screen_.Step("The library was never initialised");
        ExpectFailure(!CAccessGroupComm::queryAccessGroups(untouched));
        if (untouched.accessGroupQueryResponseList.size() == 1) {
            screen_.Result("the caller's own result was never touched");
        } else {
            screen_.Wrong("a failed call touched the caller's result");
        }
    }

    void ExpectFailure(bool failed)
    {
        if (failed) {
            screen_.Failure(Seen());
        } else {
            screen_.Wrong("the call should have failed");
        }
    }

    void Summary()
    {
        screen_.Chapter("Summary");
        screen_.Result(std::to_string(meter_.exchanges) + " exchanges, " + std::to_string(served_) +
                       " of them answered by the platform; " + std::to_string(wallExchanges_) + " with the video wall");
        screen_.Result(std::to_string(meter_.bytesOut) + " B of requests, " + std::to_string(meter_.bytesIn) +
                       " B of answers, " + Short(static_cast<double>(meter_.microseconds) / 1000.0) +
                       " inside the executor");
    }

    static constexpr int kReadDoor = 2102;

    Screen& screen_;
    const Site& site_;
    std::unique_ptr<simulator::Platform> platform_;
    Meter meter_;
    std::vector<std::string> groups_;
    std::string device_;
    std::uint64_t served_ = 0;
    std::atomic<int> wallExchanges_{0};
};

} // namespace

int Run(const DemoOptions& options)
{
    Screen screen(options.out != nullptr ? *options.out : std::cout, options.colour, options.animate);
    Site site;
    std::string error;
    if (!site.Load(options.sitePath, error)) {
        screen.Wrong(error);
        return 1;
    }
    screen.Chapter("A platform to talk to");
    Demonstration demonstration(screen, site);
    if (!demonstration.Start()) {
        return 1;
    }
    demonstration.Run();
    return screen.AllWell() ? 0 : 1;
}

} // namespace nexwire::demo
