#include <atomic>
#include <chrono>
#include <thread>

#include "Application/VideoWall/VideoWallInterfaceMgr.h"
#include "videowall/Wall.h"

namespace wall_test {
namespace {

using namespace nexwire;
using namespace std::chrono_literals;
using test_support::Reply;

enum Kind : unsigned { kText = 1, kInt = 2, kBool = 4 };

/// A result key: how its value stands in the answer, and what its member holds before and after.
struct Value {
    std::string json;
    std::string otherwise; ///< What the member holds when the answer lacks the value.
    unsigned kinds = 0;    ///< JSON types that are read.
};

/// An operation with a result. Every `json` stands once in `data`, which makes it replaceable.
struct Row {
    std::string name;
    std::string data;
    std::vector<Value> values;
    /// Calls the operation with a filled record and gives the members of `values`, in their order, after it.
    std::function<Lines(bool& done)> call;
};

std::string Show(int number)
{
    return std::to_string(number);
}

std::vector<Row> Rows()
{
    using C = CTWDeviceCommon;
    return {
        {"addDevice",
         R"({"guid":"g1"})",
         {{R"("g1")", "old", kText}},
         [](bool& done) {
             tagTWDeviceLoginParam device;
             device.guid = "old";
             done = C::addDevice(device);
             return Lines{device.guid};
         }},
        {"addDeviceAsyn",
         R"({"guid":"g1"})",
         {{R"("g1")", "old", kText}},
         [](bool& done) {
             tagTWDeviceLoginParam device;
             device.guid = "old";
             done = C::addDeviceAsyn(device);
             return Lines{device.guid};
         }},
        {"deleteDevice",
         R"({"fail":[{"code":11,"module":12,"guid":"g1"},{"code":1}]})",
         {{"11", "0", kInt}, {"12", "0", kInt}, {R"("g1")", "", kText}},
         [](bool& done) {
             TWErrorInfoByGuid failure{"old", -1, -2};
             done = C::deleteDevice("x", failure);
             return Lines{Show(failure.code), Show(failure.module), failure.guid};
         }},
        {"getAllDevices",
         R"({"list":[{"loginStatus":11,"address":"a1","guid":"g1","deviceName":"n1","deviceSerial":"s1",)"
         R"("username":"u1","port":12},{"port":13}]})",
         {{"11", "0", kInt},
          {R"("a1")", "", kText},
          {R"("g1")", "", kText},
          {R"("n1")", "", kText},
          {R"("s1")", "", kText},
          {R"("u1")", "", kText},
          {"12", "0", kInt},
          {"13", "0", kInt}},
         [](bool& done) {
             std::vector<tagTWDeviceInfo> devices(3);
             done = C::getAllDevices(devices, "", "", false);
             devices.resize(2);
             const tagTWDeviceInfo& d = devices[0];
             return Lines{Show(d.loginStatus), d.address,  d.guid,       d.deviceName,
                          d.deviceSerial,      d.username, Show(d.port), Show(devices[1].port)};
         }},
        {"getOutputList",
         R"({"list":[{"id":11,"channelName":"n1","portType":12,"deviceGuid":"g1","currentResolution":"r1",)"
         R"("bindStatus":13}]})",
         {{"11", "0", kInt},
          {R"("n1")", "", kText},
          {"12", "0", kInt},
          {R"("g1")", "", kText},
          {R"("r1")", "", kText | kInt},
          {"13", "0", kInt}},
         [](bool& done) {
             std::vector<tagTWDeviceOutputInfo> outputs(3);
             done = C::getOutputList({}, outputs);
             const tagTWDeviceOutputInfo& o = outputs.at(0);
             return Lines{Show(o.id),   o.channelName,       Show(o.portType),
                          o.deviceGuid, o.currentResolution, Show(o.bindStatus)};
         }},
        {"getResolutionCap",
         R"({"currentResolution":"r1","resolutionCapList":[{"resolution":"r2"},{"resolution":"r3"}]})",
         {{R"("r1")", "old", kText | kInt}, {R"("r2")", "", kText}, {R"("r3")", "", kText}},
         [](bool& done) {
             tagTWResolutionCap capability;
             capability.currentResolution = "old";
             done = C::getResolutionCap(capability);
             capability.resolutionCapList.resize(2);
             return Lines{capability.currentResolution, capability.resolutionCapList[0],
                          capability.resolutionCapList[1]};
         }},
        {"startPlay",
         R"({"windowId":11})",
         {{"11", "-1", kInt}},
         [](bool& done) {
             tagTWPlayInfo play;
             play.windowId = -1;
             done = C::startPlay(play);
             return Lines{Show(play.windowId)};
         }},
        {"openWallWindows",
         R"({"windowId":11})",
         {{"11", "-1", kInt}},
         [](bool& done) {
             tagTWWindowOpenInfo window;
             window.windowId = -1;
             done = C::openWallWindows(window);
             return Lines{Show(window.windowId)};
         }},
        {"getTvVoice",
         R"({"enable":true})",
         {{"true", "0", kBool}},
         [](bool& done) {
             tagTWPlayInfo play;
             done = C::getTvVoice(play);
             return Lines{Show(play.enable)};
         }},
        {"getScreenNum",
         R"({"windowNum":11})",
         {{"11", "-1", kInt}},
         [](bool& done) {
             tagTWPlayInfo play;
             play.windowNum = -1;
             done = C::getScreenNum(play);
             return Lines{Show(play.windowNum)};
         }},
        {"getTvWallDecodeInfo",
         R"({"subWndNo":11,"videoFPS":12,"audioFPS":13,"isDecoding":14,"videoType":15,"packetType":16,)"
         R"("videoTotal":17,"imageWidth":18,"imageHeight":19})",
         {{"11", "-1", kInt},
          {"12", "-2", kInt},
          {"13", "-3", kInt},
          {"14", "-4", kInt},
          {"15", "-5", kInt},
          {"16", "-6", kInt},
          {"17", "-7", kInt},
          {"18", "-8", kInt},
          {"19", "-9", kInt}},
         [](bool& done) {
             tagTWWallDecodeInfo s{-1, -2, -3, -4, -5, -6, -7, -8, -9};
             done = C::getTvWallDecodeInfo({}, s);
             return Lines{Show(s.subWndNo),   Show(s.videoFPS),   Show(s.audioFPS),
                          Show(s.isDecoding), Show(s.videoType),  Show(s.packetType),
                          Show(s.videoTotal), Show(s.imageWidth), Show(s.imageHeight)};
         }},
        {"getTvWallSpec",
         R"({"videoWallNum":11,"screenRowNum":12,"screenColNum":13})",
         {{"11", "-1", kInt}, {"12", "-2", kInt}, {"13", "-3", kInt}},
         [](bool& done) {
             tagTWWallSpec spec{-1, -2, -3};
             done = C::getTvWallSpec(spec);
             return Lines{Show(spec.videoWallNum), Show(spec.screenRowNum), Show(spec.screenColNum)};
         }},
        {"addPollingTask",
         R"({"taskGuid":"k1"})",
         {{R"("k1")", "old", kText}},
         [](bool& done) {
             tagTWWallPollingTaskInfo task;
             task.taskGuid = "old";
             done = C::addPollingTask(task);
             return Lines{task.taskGuid};
         }},
        {"modifyPollingTask",
         R"({"taskGuid":"k1"})",
         {{R"("k1")", "old", kText}},
         [](bool& done) {
             tagTWWallPollingTaskInfo task;
             task.taskGuid = "old";
             done = C::modifyPollingTask(task);
             return Lines{task.taskGuid};
         }},
        {"getAllPollingTask",
         R"({"TaskList":[{"taskGuid":"k1","taskName":"n1","pollingTime":11,"isRunning":12,"streamType":13,)"
         R"("cameraList":[{"cameraGuid":"c1"},{"cameraGuid":"c2","cameraName":"m2","deviceSerial":"s2",)"
         R"("channelNo":14,"url":"u2","streamKey":"e2","guid":"g2","cameraType":15,"share":16}],)"
         R"("windowList":[{"deviceGuid":"d1","windowId":17,"subNo":18}],)"
         R"("cameraDeviceSerial":"s1","cameraChannelNo":19,"currentCameraNum":20,"totalCameraNum":21}]})",
         {{R"("k1")", "", kText}, {R"("n1")", "", kText}, {"11", "0", kInt},      {"12", "0", kInt | kBool},
          {"13", "0", kInt},      {R"("c1")", "", kText}, {R"("c2")", "", kText}, {R"("m2")", "", kText},
          {R"("s2")", "", kText}, {"14", "0", kInt},      {R"("u2")", "", kText}, {R"("e2")", "", kText},
          {R"("g2")", "", kText}, {"15", "0", kInt},      {"16", "0", kInt},      {R"("d1")", "", kText},
          {"17", "0", kInt},      {"18", "0", kInt},      {R"("s1")", "", kText}, {"19", "0", kInt},
          {"20", "0", kInt},      {"21", "0", kInt}},
         [](bool& done) {
             std::vector<tagTWWallPollingTaskInfo> tasks(2);
             done = C::getAllPollingTask({}, tasks);
             tagTWWallPollingTaskInfo& t = tasks.at(0);
             t.cameraList.resize(2);
             t.windowList.resize(1);
             const tagTWPollingCameraInfo& c = t.cameraList[1];
             const tagTWPollingWindowInfo& w = t.windowList[0];
             return Lines{t.taskGuid,
                          t.taskName,
                          Show(t.pollingTime),
                          Show(t.isRunning),
                          Show(t.streamType),
                          t.cameraList[0].cameraGuid,
                          c.cameraGuid,
                          c.cameraName,
                          c.deviceSerial,
                          Show(c.channelNo),
                          c.url,
                          c.streamKey,
                          c.guid,
                          Show(c.cameraType),
                          Show(c.share),
                          w.deviceGuid,
                          Show(w.windowId),
                          Show(w.subNo),
                          t.cameraDeviceSerial,
                          Show(t.cameraChannelNo),
                          Show(t.currentCameraNum),
                          Show(t.totalCameraNum)};
         }},
        // The third entry of the answer has no camera to go to.
        {"isExistCameraInPollingTask",
         R"({"cameraList":[{"isExist":true,"taskGuid":"k1"},{"isExist":false,"taskGuid":"k2"},{"taskGuid":"k3"}]})",
         {{"true", "0", kBool}, {R"("k1")", "old", kText}, {"false", "1", kBool}, {R"("k2")", "old", kText}},
         [](bool& done) {
             tagTWWallPollingTaskInfo task;
             task.cameraList.resize(2);
             task.cameraList[0].taskGuid = "old";
             task.cameraList[1].taskGuid = "old";
             task.cameraList[1].isExist = true;
             done = C::isExistCameraInPollingTask(task, false);
             return Lines{Show(task.cameraList[0].isExist), task.cameraList[0].taskGuid,
                          Show(task.cameraList[1].isExist), task.cameraList[1].taskGuid};
         }},
    };
}

/// What a member holds after a JSON value of a kind that it reads.
std::string Read(const std::string& json)
{
    if (json == "true" || json == "false") {
        return json == "true" ? "1" : "0";
    }
    return json.front() == '"' ? json.substr(1, json.size() - 2) : json;
}

class Answers : public Wall {
protected:
    Lines Call(const Row& row, const std::string& answer)
    {
        Answer(answer);
        bool done = false;
        const Lines lines = row.call(done);
        EXPECT_TRUE(done) << answer;
        return lines;
    }
};

TEST_F(Answers, EveryResultKeyIsRead)
{
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.name);
        Lines expected;
        for (const Value& value : row.values) {
            expected.push_back(Read(value.json));
        }
        EXPECT_EQ(Call(row, R"({"code":0,"module":0,"msg":"","data":)" + row.data + "}"), expected);
    }
}

TEST_F(Answers, WrongTypeUnderAResultKeyKeepsThatMemberOnly)
{
    const std::vector<std::pair<std::string, unsigned>> replacements = {
        {R"("7")", kText}, {"7", kInt}, {"-2147483648", kInt}, {"true", kBool}, {"null", 0}, {"{}", 0}, {"[]", 0},
        {"[1]", 0},        {"1.5", 0},  {"1e300", 0}};
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.name);
        for (std::size_t i = 0; i < row.values.size(); ++i) {
            const Value& value = row.values[i];
            for (const auto& [json, kind] : replacements) {
                SCOPED_TRACE(value.json + " becomes " + json);
                std::string data = row.data;
                data.replace(data.find(':' + value.json) + 1, value.json.size(), json);
                Lines expected;
                for (const Value& each : row.values) {
                    expected.push_back(Read(each.json));
                }
                expected[i] = (value.kinds & kind) != 0 ? Read(json) : value.otherwise;
                EXPECT_EQ(Call(row, R"({"code":0,"data":)" + data + "}"), expected);
            }
        }
    }
}

TEST_F(Answers, DataOfAnotherShapeIsNoData)
{
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.name);
        // Lists end empty, records stay; both must survive whatever stands where objects and lists should.
        for (const char* data :
             {"null", "7", "\"text\"", "[]", "[[]]", R"({"list":{}})", R"({"list":"x"})",
              R"({"list":[null,7,"x",[]],"fail":[null],"TaskList":[{"cameraList":7,"windowList":{}}],)"
              R"("cameraList":[3,4],"resolutionCapList":[[],"x"]})"}) {
            Answer(std::string(R"({"code":0,"data":)") + data + "}");
            bool done = false;
            try {
                row.call(done);
            } catch (const std::out_of_range&) {
                // The row looks at the first element of an empty list.
            }
            EXPECT_TRUE(done) << data;
        }
    }
}

TEST_F(Answers, RefusalTouchesNoResult)
{
    tagTWWallSpec spec{1, 2, 3};
    std::vector<TWErrorInfoByGuid> failures(1);
    std::vector<tagTWWallPollingTaskInfo> tasks(1);
    Answer(R"({"code":12,"module":5,"msg":"no","data":{"videoWallNum":9,"fail":[],"TaskList":[{},{}]}})");
    EXPECT_FALSE(CTWDeviceCommon::getTvWallSpec(spec));
    EXPECT_FALSE(CTWDeviceCommon::deleteDevices({"a"}, failures));
    EXPECT_FALSE(CTWDeviceCommon::getAllPollingTask({}, tasks));
    EXPECT_EQ(spec.videoWallNum, 1);
    EXPECT_EQ(failures.size(), 1u);
    EXPECT_EQ(tasks.size(), 1u);
    EXPECT_EQ(LastError(), "12 5 no");
}

TEST_F(Answers, DeleteDeviceWithoutFailureKeepsTheRecord)
{
    Answer(R"({"code":0,"data":{"fail":[]}})");
    TWErrorInfoByGuid failure{"old", 1, 2};
    EXPECT_TRUE(CTWDeviceCommon::deleteDevice("a", failure));
    EXPECT_EQ(failure.guid, "old");
    EXPECT_EQ(failure.code, 1);
}

TEST_F(Answers, EnvelopesThatCannotBeReadAreNetworkFailures)
{
    for (const char* body : {"{", "nonsense", R"({"code":0}<html>)", "[]", "null", "{}", R"({"code":"0"})",
                             R"({"code":0.5,"msg":"m"})", R"({"code":4294967296})", R"({"Code":0})", " "}) {
        SCOPED_TRACE(body);
        Keel::Error::SetLastErrorJson("before", 1, 2);
        Answer(body);
        EXPECT_FALSE(CTWDeviceCommon::refreshDevice("a"));
        EXPECT_EQ(LastError(), kNetworkError);
    }
}

TEST_F(Answers, EnvelopeMembersOfAnotherTypeAreEmpty)
{
    Answer(R"({"code":3,"module":"9","msg":null})");
    EXPECT_FALSE(CTWDeviceCommon::refreshDevice("a"));
    EXPECT_EQ(LastError(), "3 0 ");
    Answer("\xEF\xBB\xBF{\"msg\":\"x\\u00e9\\\"\",\"module\":1.0,\"code\":-3}\r\n");
    EXPECT_FALSE(CTWDeviceCommon::refreshDevice("a"));
    EXPECT_EQ(LastError(), "-3 1 x\xC3\xA9\"");
}

// ---- Faults of the connection. The login message is used because it gives up after one second. ----

TEST_F(Answers, AnswersWithoutADeclaredBodyAreNetworkFailures)
{
    const std::string body = R"({"code":0,"module":0,"msg":"ok"})";
    const std::pair<const char*, Reply> replies[] = {
        {"empty", Reply::Json("")},
        {"no content", Reply().Send("HTTP/1.1 204 No Content\r\n\r\n")},
        {"no length", Reply().Send("HTTP/1.1 200 OK\r\n\r\n" + body).Close()},
        {"chunks", Reply::Chunked(body, 7)},
        {"truncated", Reply().Send("HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n" + body).Close()},
        {"no head", Reply().Send("HTTP/1.1 200 OK\r\nContent-Le").Close()},
        {"not HTTP", Reply().Send(body).Close()},
        {"closed", Reply().Close()},
        {"reset", Reply().Reset()},
    };
    for (const auto& [name, reply] : replies) {
        SCOPED_TRACE(name);
        Keel::Error::SetLastErrorJson("before", 1, 2);
        server.Enqueue(reply);
        EXPECT_FALSE(CTWDeviceCommon::notifyLoginStatus(true));
        EXPECT_EQ(LastError(), kNetworkError);
    }
    // None of them spoils the next call.
    Answer(body);
    EXPECT_TRUE(CTWDeviceCommon::notifyLoginStatus(true));
}

TEST_F(Answers, StatusOfHttpDoesNotMatter)
{
    server.Enqueue(Reply::Http(500, R"({"code":5,"module":2,"msg":"internal"})"));
    EXPECT_FALSE(CTWDeviceCommon::refreshDevice("a"));
    EXPECT_EQ(LastError(), "5 2 internal");
    server.Enqueue(Reply::Http(404, R"({"code":0,"module":2,"msg":"found"})"));
    EXPECT_TRUE(CTWDeviceCommon::refreshDevice("a"));
}

template <class Step>
std::chrono::milliseconds Time(const Step& step)
{
    const auto start = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

TEST_F(Answers, SilenceAndLatenessEndAtTheTimeOut)
{
    const std::string late = Reply::HttpBytes(200, R"({"code":0,"module":0,"msg":"late"})");
    for (const Reply& reply :
         {Reply().Hang(), Reply().Wait(1500ms).Send(late), Reply().Send(late.substr(0, 70)).Hang()}) {
        server.Enqueue(reply);
        EXPECT_GE(Time([] { EXPECT_FALSE(CTWDeviceCommon::notifyLoginStatus(true)); }), 990ms);
        EXPECT_EQ(LastError(), kNetworkError);
    }
    // The late answer is not taken for the one to the next request.
    std::this_thread::sleep_for(700ms);
    Answer(R"({"code":0,"module":0,"msg":"mine"})");
    EXPECT_TRUE(CTWDeviceCommon::notifyLoginStatus(true));
    EXPECT_EQ(LastError(), "0 0 mine");
}

TEST_F(Answers, NobodyListens)
{
    CTWDeviceCommon::init("127.0.0.1", std::to_string(test_support::ClosedPort()));
    EXPECT_LT(Time([] { EXPECT_FALSE(CTWDeviceCommon::notifyLoginStatus(true)); }), 900ms);
    EXPECT_EQ(LastError(), kNetworkError);

    const test_support::DeafListener deaf;
    if (deaf.Works()) {
        CTWDeviceCommon::init("127.0.0.1", std::to_string(deaf.Port()));
        EXPECT_GE(Time([] { EXPECT_FALSE(CTWDeviceCommon::notifyLoginStatus(true)); }), 990ms);
        EXPECT_EQ(LastError(), kNetworkError);
    }
}

TEST_F(Answers, HttpSendAppliesItsTimeOutNotesItAndSetsNoError)
{
    LogFile log(false);
    const Vela::Net::URL url(server.Base() + "/x");
    Vela::Net::CHttpClientResponse response;
    for (const auto send : {CTWDeviceOperation::HttpSend, CTWDeviceOperation::VideoWallHttpSend}) {
        Keel::Error::SetLastErrorJson("before", 1, 2);
        server.Enqueue(Reply().Hang());
        Vela::Net::CHttpClientRequest slow("POST", url);
        const auto time = Time([&] { EXPECT_FALSE(send(slow, response, 300)); });
        EXPECT_GE(time, 290ms);
        EXPECT_LT(time, 2s);
        EXPECT_EQ(log.NewLines(), Lines{"INFO [kkkkpppp]HttpSend timeout : [300]."});

        server.Enqueue(Reply::Json("x"));
        Vela::Net::CHttpClientRequest quick("POST", url);
        EXPECT_TRUE(send(quick, response, 5000));
        EXPECT_TRUE(log.NewLines().empty());
        EXPECT_EQ(LastError(), "2 1 before");
    }
}

TEST_F(Answers, ThreadsHaveTheirOwnErrors)
{
    server.SetHandler([](const test_support::RawRequest& request) {
        const std::string number = request.body.substr(9, request.body.size() - 11);
        return Reply::Json(R"({"code":)" + number + R"(,"module":)" + number + R"(,"msg":")" + number + R"("})");
    });
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 1; i <= 8; ++i) {
        threads.emplace_back([&wrong, i] {
            const std::string number = std::to_string(i);
            for (int round = 0; round < 50; ++round) {
                if (CTWDeviceCommon::refreshDevice(number) || LastError() != number + " " + number + " " + number) {
                    ++wrong;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_LE(server.Connections(), 8u);
}

} // namespace
} // namespace wall_test
