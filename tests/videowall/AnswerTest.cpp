#include <atomic>
#include <chrono>
#include <regex>
#include <thread>

#include "Application/VideoWall/VideoWallInterfaceMgr.h"
#include "videowall/Wall.h"

namespace wall_test {
namespace {

using namespace nexwire;
using namespace std::chrono_literals;
using test_support::Reply;

/// An operation with a result. Every value that is read stands once in `data`, which makes it replaceable: two digits,
/// a letter and a digit in quotes, or true and false.
struct Row {
    std::string name;
    std::string data;
    /// Calls the operation with a filled record and gives the members after it, in the order of `data`.
    std::function<Lines(bool& done)> call;
    bool keepsElements = false; ///< Elements of lists stand in the caller's record; otherwise they are new.
};

std::string Show(int number)
{
    return std::to_string(number);
}

std::string Show(const std::string& text)
{
    return text;
}

template <class... Values>
Lines Shown(const Values&... values)
{
    return {Show(values)...};
}

void Fill(std::string& member)
{
    member = "old";
}

void Fill(int& member)
{
    member = -1;
}

void Fill(bool&) {} // Stays false.

/// An operation that fills members of its record.
template <class Record, class... Members>
std::function<Lines(bool& done)> Into(bool (*operation)(Record&), Members Record::*... members)
{
    return [=](bool& done) {
        Record record;
        (Fill(record.*members), ...);
        done = operation(record);
        return Shown(record.*members...);
    };
}

std::vector<Row> Rows()
{
    using C = CTWDeviceCommon;
    using Play = tagTWPlayInfo;
    using Spec = tagTWWallSpec;
    using Task = tagTWWallPollingTaskInfo;
    return {
        {"addDevice", R"({"guid":"g1"})", Into(C::addDevice, &tagTWDeviceLoginParam::guid)},
        {"addDeviceAsyn", R"({"guid":"g1"})", Into(C::addDeviceAsyn, &tagTWDeviceLoginParam::guid)},
        {"deleteDevice", R"({"fail":[{"code":11,"module":12,"guid":"g1"},{"code":1}]})",
         [](bool& done) {
             TWErrorInfoByGuid failure{"old", -1, -2};
             done = C::deleteDevice("x", failure);
             return Shown(failure.code, failure.module, failure.guid);
         }},
        {"getAllDevices",
         R"({"list":[{"loginStatus":11,"address":"a1","guid":"g1","deviceName":"n1","deviceSerial":"s1",)"
         R"("username":"u1","port":12},{"port":13}]})",
         [](bool& done) {
             std::vector<tagTWDeviceInfo> devices(3);
             done = C::getAllDevices(devices, "", "", false);
             devices.resize(2);
             const tagTWDeviceInfo& d = devices[0];
             return Shown(d.loginStatus, d.address, d.guid, d.deviceName, d.deviceSerial, d.username, d.port,
                          devices[1].port);
         }},
        {"getOutputList",
         R"({"list":[{"id":11,"channelName":"n1","portType":12,"deviceGuid":"g1","currentResolution":"r1",)"
         R"("bindStatus":13}]})",
         [](bool& done) {
             std::vector<tagTWDeviceOutputInfo> outputs(3);
             done = C::getOutputList({}, outputs);
             const tagTWDeviceOutputInfo& o = outputs.at(0);
             return Shown(o.id, o.channelName, o.portType, o.deviceGuid, o.currentResolution, o.bindStatus);
         }},
        {"getResolutionCap",
         R"({"currentResolution":"r1","resolutionCapList":[{"resolution":"r2"},{"resolution":"r3"}]})",
         [](bool& done) {
             tagTWResolutionCap capability;
             capability.currentResolution = "old";
             done = C::getResolutionCap(capability);
             capability.resolutionCapList.resize(2);
             return Shown(capability.currentResolution, capability.resolutionCapList[0],
                          capability.resolutionCapList[1]);
         }},
        {"startPlay", R"({"windowId":11})", Into(C::startPlay, &Play::windowId)},
        {"openWallWindows", R"({"windowId":11})", Into(C::openWallWindows, &tagTWWindowOpenInfo::windowId)},
        {"getTvVoice", R"({"enable":true})", Into(C::getTvVoice, &Play::enable)},
        {"getScreenNum", R"({"windowNum":11})", Into(C::getScreenNum, &Play::windowNum)},
        {"getTvWallDecodeInfo",
         R"({"subWndNo":11,"videoFPS":12,"audioFPS":13,"isDecoding":14,"videoType":15,"packetType":16,)"
         R"("videoTotal":17,"imageWidth":18,"imageHeight":19})",
         [](bool& done) {
             tagTWWallDecodeInfo s{-1, -1, -1, -1, -1, -1, -1, -1, -1};
             done = C::getTvWallDecodeInfo({}, s);
             return Shown(s.subWndNo, s.videoFPS, s.audioFPS, s.isDecoding, s.videoType, s.packetType, s.videoTotal,
                          s.imageWidth, s.imageHeight);
         }},
        {"getTvWallSpec", R"({"videoWallNum":11,"screenRowNum":12,"screenColNum":13})",
         Into(C::getTvWallSpec, &Spec::videoWallNum, &Spec::screenRowNum, &Spec::screenColNum)},
        {"addPollingTask", R"({"taskGuid":"k1"})", Into(C::addPollingTask, &Task::taskGuid)},
        {"modifyPollingTask", R"({"taskGuid":"k1"})", Into(C::modifyPollingTask, &Task::taskGuid)},
        {"getAllPollingTask",
         R"({"TaskList":[{"taskGuid":"k1","taskName":"n1","pollingTime":11,"isRunning":12,"streamType":13,)"
         R"("cameraList":[{"cameraGuid":"c1"},{"cameraGuid":"c2","cameraName":"m2","deviceSerial":"s2",)"
         R"("channelNo":14,"url":"u2","streamKey":"e2","guid":"g2","cameraType":15,"share":16}],)"
         R"("windowList":[{"deviceGuid":"d1","windowId":17,"subNo":18}],)"
         R"("cameraDeviceSerial":"s1","cameraChannelNo":19,"currentCameraNum":20,"totalCameraNum":21}]})",
         [](bool& done) {
             std::vector<Task> tasks(2);
             done = C::getAllPollingTask({}, tasks);
             Task& t = tasks.at(0);
             t.cameraList.resize(2);
             t.windowList.resize(1);
             const tagTWPollingCameraInfo& c = t.cameraList[1];
             const tagTWPollingWindowInfo& w = t.windowList[0];
             return Shown(t.taskGuid, t.taskName, t.pollingTime, t.isRunning, t.streamType, t.cameraList[0].cameraGuid,
                          c.cameraGuid, c.cameraName, c.deviceSerial, c.channelNo, c.url, c.streamKey, c.guid,
                          c.cameraType, c.share, w.deviceGuid, w.windowId, w.subNo, t.cameraDeviceSerial,
                          t.cameraChannelNo, t.currentCameraNum, t.totalCameraNum);
         }},
        // The third entry of the answer has no camera to go to.
        {"isExistCameraInPollingTask",
         R"({"cameraList":[{"isExist":true,"taskGuid":"k1"},{"isExist":false,"taskGuid":"k2"},{"taskGuid":"none"}]})",
         [](bool& done) {
             Task task;
             task.cameraList.resize(2);
             task.cameraList[0].taskGuid = task.cameraList[1].taskGuid = "old";
             task.cameraList[1].isExist = true;
             done = C::isExistCameraInPollingTask(task, false);
             const auto& cameras = task.cameraList; // The call may have put another list there.
             return Shown(cameras[0].isExist, cameras[0].taskGuid, cameras[1].isExist, cameras[1].taskGuid);
         },
         true},
    };
}

enum Kind : unsigned { kText = 1, kInt = 2, kBool = 4 };

/// A value of an answer, and what its member holds where the answer lacks it.
struct Value {
    std::size_t position = 0;
    std::string json;
    std::string otherwise;
    unsigned kinds = 0; ///< JSON types that are read.
};

/// What a member holds after a JSON value of a kind that it reads.
std::string Read(const std::string& json)
{
    if (json == "true" || json == "false") {
        return json == "true" ? "1" : "0";
    }
    return json.front() == '"' ? json.substr(1, json.size() - 2) : json;
}

std::vector<Value> Values(const Row& row)
{
    static const std::regex kPattern(R"re("(\w+)":("[a-z]\d"|\d\d|true|false))re");
    std::vector<Value> values;
    for (std::sregex_iterator it(row.data.begin(), row.data.end(), kPattern), end; it != end; ++it) {
        const std::string key = it->str(1);
        Value value{std::size_t(it->position(2)), it->str(2), "", 0};
        const bool kept = row.keepsElements || row.data.find('[') > value.position;
        if (value.json.front() == '"') {
            value.kinds = key == "currentResolution" ? kText | kInt : kText;
            value.otherwise = kept ? "old" : "";
        } else if (value.json == "true" || value.json == "false") {
            value.kinds = kBool;
            value.otherwise = value.json == "true" ? "0" : "1";
        } else {
            value.kinds = key == "isRunning" ? kInt | kBool : kInt;
            value.otherwise = kept ? "-1" : "0";
        }
        values.push_back(value);
    }
    return values;
}

Lines AllRead(const std::vector<Value>& values)
{
    Lines lines;
    for (const Value& value : values) {
        lines.push_back(Read(value.json));
    }
    return lines;
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

TEST_F(Answers, ResultKeysAreReadAndWrongTypesKeepOnlyTheirMember)
{
    const std::vector<std::pair<std::string, unsigned>> replacements = {
        {R"("7")", kText}, {"-2147483648", kInt}, {"true", kBool}, {"null", 0}, {"{}", 0}, {"[1]", 0},
        {"1.5", 0},        {"1e300", 0}};
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.name);
        const std::vector<Value> values = Values(row);
        EXPECT_EQ(Call(row, R"({"code":0,"module":0,"msg":"","data":)" + row.data + "}"), AllRead(values));
        for (std::size_t i = 0; i < values.size(); ++i) {
            for (const auto& [json, kind] : replacements) {
                SCOPED_TRACE(values[i].json + " becomes " + json);
                std::string data = row.data;
                data.replace(values[i].position, values[i].json.size(), json);
                Lines expected = AllRead(values);
                expected[i] = (values[i].kinds & kind) != 0 ? Read(json) : values[i].otherwise;
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
    // Nor does a success without a failure in it.
    Answer(R"({"code":0,"data":{"fail":[]}})");
    TWErrorInfoByGuid failure{"old", 1, 2};
    EXPECT_TRUE(CTWDeviceCommon::deleteDevice("a", failure));
    EXPECT_EQ(failure.guid, "old");
    EXPECT_EQ(failure.code, 1);
}

TEST_F(Answers, EnvelopesWithoutACodeAreNetworkFailures)
{
    for (const char* body : {"{", "nonsense", R"({"code":0}<html>)", "[]", "null", "{}", R"({"code":"0"})",
                             R"({"code":0.5,"msg":"m"})", R"({"code":4294967296})", R"({"Code":0})", " "}) {
        SCOPED_TRACE(body);
        Keel::Error::SetLastErrorJson("before", 1, 2);
        Answer(body);
        EXPECT_FALSE(CTWDeviceCommon::refreshDevice("a"));
        EXPECT_EQ(LastError(), kNetworkError);
    }
    // Other members of another type are empty.
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
