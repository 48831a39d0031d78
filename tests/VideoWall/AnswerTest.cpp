#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>

#include "Application/VideoWall/VideoWallInterfaceMgr.h"
#include "VideoWall/Wall.h"

namespace wall_test {
namespace {

using namespace nexwire;
using namespace std::chrono_literals;
using nexwire::loopback::Reply;

using Answers = Wall;

/// What can stand for a value, and whether a text, a number and a flag take it.
const struct {
    const char* json;
    bool text, number, flag;
} kValues[] = {
    {R"("7")", true, false, false}, {"7", false, true, false},     {"-2147483648", false, true, false},
    {"true", false, false, true},   {"null", false, false, false}, {"{}", false, false, false},
    {"[1]", false, false, false},   {"1.5", false, false, false},  {"1e300", false, false, false},
};

TEST_F(Answers, ValuesOfAnotherTypeKeepWhatWasThere)
{
    for (const auto& value : kValues) {
        SCOPED_TRACE(value.json);
        const std::string json = value.json;
        tagTWPlayInfo play;
        play.windowNum = 3;
        play.enable = false;
        tagTWDeviceLoginParam device;
        device.guid = "old";
        Answer(R"({"code":0,"data":{"windowNum":)" + json + R"(,"enable":)" + json + R"(,"guid":)" + json + "}}");
        EXPECT_TRUE(CTWDeviceCommon::getScreenNum(play) && CTWDeviceCommon::getTvVoice(play));
        EXPECT_TRUE(CTWDeviceCommon::addDevice(device));
        EXPECT_EQ(play.windowNum, value.number ? std::stoi(json) : 3);
        EXPECT_EQ(play.enable, value.flag);
        EXPECT_EQ(device.guid, value.text ? "7" : "old");

        // Elements of lists are new. Two members take a second type.
        std::vector<tagTWDeviceOutputInfo> outputs(2);
        std::vector<tagTWWallPollingTaskInfo> tasks(2);
        Answer(R"({"code":0,"data":{"list":[{"id":)" + json + R"(,"channelName":)" + json + R"(,"currentResolution":)" +
               json + R"(,"bindStatus":5}],"TaskList":[{"isRunning":)" + json + R"(,"streamType":6}]}})");
        ASSERT_TRUE(CTWDeviceCommon::getOutputList({}, outputs) && CTWDeviceCommon::getAllPollingTask({}, tasks));
        ASSERT_TRUE(outputs.size() == 1 && tasks.size() == 1);
        EXPECT_EQ(outputs[0].id, value.number ? std::stoi(json) : 0);
        EXPECT_EQ(outputs[0].channelName, value.text ? "7" : "");
        EXPECT_EQ(outputs[0].currentResolution, value.text ? "7" : value.number ? json : "");
        EXPECT_EQ(outputs[0].bindStatus, 5);
        EXPECT_EQ(tasks[0].isRunning, value.number ? std::stoi(json) : value.flag ? 1 : 0);
        EXPECT_EQ(tasks[0].streamType, 6);
    }
}

TEST_F(Answers, DataOfAnotherShapeIsNoData)
{
    // Lists end empty, records stay; both must survive whatever stands where objects and lists should.
    for (const char* data :
         {"null", "7", "\"text\"", "[]", "[[]]", R"({"list":{},"fail":7,"TaskList":"x","cameraList":{}})",
          R"({"list":[null,7,"x",[]],"fail":[null],"TaskList":[{"cameraList":7,"windowList":{}}],)"
          R"("cameraList":[3,4],"resolutionCapList":[[],"x"]})"}) {
        SCOPED_TRACE(data);
        Answer(std::string(R"({"code":0,"data":)") + data + "}");
        const bool elements = data[0] == '{' && data[std::strlen(data) - 2] == ']';
        std::vector<tagTWDeviceInfo> devices(2);
        std::vector<TWErrorInfoByGuid> failures(2);
        std::vector<tagTWWallPollingTaskInfo> tasks(2);
        tagTWResolutionCap capability;
        capability.currentResolution = "old";
        tagTWWallPollingTaskInfo task;
        task.cameraList.resize(1);
        task.cameraList[0].taskGuid = "old";
        EXPECT_TRUE(CTWDeviceCommon::getAllDevices(devices, "", "", false));
        EXPECT_TRUE(CTWDeviceCommon::deleteDevices({"a"}, failures));
        EXPECT_TRUE(CTWDeviceCommon::getAllPollingTask({}, tasks));
        EXPECT_TRUE(CTWDeviceCommon::getResolutionCap(capability));
        EXPECT_TRUE(CTWDeviceCommon::isExistCameraInPollingTask(task, false));
        EXPECT_EQ(devices.size(), elements ? 4U : 0U);
        EXPECT_EQ(failures.size(), elements ? 1U : 0U);
        EXPECT_EQ(tasks.size(), elements ? 1U : 0U);
        EXPECT_EQ(capability.currentResolution, "old");
        EXPECT_EQ(task.cameraList[0].taskGuid, "old");
    }
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
    CTWDeviceCommon::init("127.0.0.1", std::to_string(nexwire::loopback::ClosedPort()));
    EXPECT_LT(Time([] { EXPECT_FALSE(CTWDeviceCommon::notifyLoginStatus(true)); }), 900ms);
    EXPECT_EQ(LastError(), kNetworkError);

    const nexwire::loopback::DeafListener deaf;
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
    server.SetHandler([](const nexwire::loopback::RawRequest& request) {
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
