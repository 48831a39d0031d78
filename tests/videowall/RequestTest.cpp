#include "videowall/Wall.h"

namespace wall_test {
namespace {

using namespace nexwire;

const std::string kKey = "\xF0\x9F\x94\x91"; // A sign beyond the basic plane.

/// What an operation sends and what it logs.
struct Row {
    std::string name; ///< As log texts have it.
    std::string path;
    std::string body;
    std::function<bool()> call;
    int timeoutMs = 5000;
    std::string success = " success! ";
    std::string requestName = {}; ///< These three where a text names another operation.
    std::string replyName = {};
    std::string sendFailName = {};
};

tagTWDeviceLoginParam Login()
{
    tagTWDeviceLoginParam device;
    device.username = "admin";
    device.password = "p\"w\xC3\xA4";
    device.address = "10.0.0.7/a%20b";
    device.port = 8000;
    device.alias = "Wall " + kKey;
    device.guid = "G/1%";
    return device;
}

tagTWPlayInfo Play()
{
    tagTWPlayInfo play;
    play.deviceGuid = "D\\1";
    play.id = 2;
    play.url = "rtsp://h/1?a=b&c";
    play.streamEncrypt = true;
    play.streamPassword = "sp";
    play.subWndNo = 3;
    play.row = 4;
    play.col = 5;
    play.rowNum = 6;
    play.colNum = 7;
    play.windowId = -8;
    play.enable = true;
    play.number = 9;
    play.windowNum = 10;
    return play;
}

tagTWWindowOpenInfo Window()
{
    tagTWWindowOpenInfo window;
    window.deviceGuid = "D1";
    window.id = 2;
    window.subWndNo = 3;
    window.row = 4;
    window.col = 5;
    window.rowNum = 6;
    window.colNum = 7;
    window.windowId = 8;
    return window;
}

tagTWWallPollingTaskInfo Task()
{
    tagTWWallPollingTaskInfo task;
    task.videoWallGuid = "V1";
    task.accountNo = "A1";
    task.teamNo = "T1";
    task.taskGuid = "K1";
    task.taskName = "Round";
    task.pollingTime = 30;
    task.streamType = 1;
    for (int i = 1; i <= 2; ++i) {
        const std::string number = std::to_string(i);
        tagTWPollingCameraInfo& camera = task.cameraList.emplace_back();
        camera.cameraGuid = "C" + number;
        camera.cameraName = "Gate " + number;
        camera.deviceSerial = "S" + number;
        camera.channelNo = i;
        camera.url = "u" + number;
        camera.streamKey = "k" + number;
        camera.guid = "g" + number;
        camera.cameraType = 10 + i;
        camera.share = 20 + i;
        tagTWPollingWindowInfo& window = task.windowList.emplace_back();
        window.deviceGuid = "D" + number;
        window.windowId = 30 + i;
        window.subNo = 40 + i;
        window.guid = "w" + number;
    }
    task.optType = 5;
    task.stopMode = 6;
    task.taskGuidList = {"K1", "K2"};
    return task;
}

template <class Record>
std::function<bool()> With(bool (*operation)(Record&), Record (*record)())
{
    return [=] {
        Record copy = record();
        return operation(copy);
    };
}

#define LOGIN_KEYS                                                                                                     \
    R"("username":"YWRtaW4=","password":"cCJ3w6Q=","address":"10.0.0.7/a%20b","port":8000,"alias":"Wall )" + kKey +    \
        R"(")"
#define WINDOW_INFO R"("windowInfo":{"subWndNo":3,"row":4,"col":5,"rowNum":6,"colNum":7,"windowId":)"
#define SCOPE R"("videoWallGuid":"V1","accountNo":"A1","teamNo":"T1")"
#define LATE_SCOPE R"("accountNo":"A1","teamNo":"T1","videoWallGuid":"V1")"
#define TASK_SUCCESS " success! [strTaskGuid - K1]."

std::vector<Row> Rows()
{
    using C = CTWDeviceCommon;
    const std::string device = "/videoWall/v1/deviceManager/";
    const std::string output = "/videoWall/v1/output/";
    const std::string wall = "/videoWall/v1/wall/";
    const std::string polling = "/videoWall/v1/wall/polling/";
    const std::string mko = "[mko-v1.13.1]";
    const std::string pel = "[pel-v1.13.1]";

    std::vector<Row> rows = {
        {"addDevice", device + "device/add", "{" LOGIN_KEYS R"(,"synAdd":1})", With(C::addDevice, Login), 15000},
        {"addDeviceAsyn", device + "device/add", "{" LOGIN_KEYS "}", With(C::addDeviceAsyn, Login), 15000},
        {"modifyDevice", device + "device/modify", "{" LOGIN_KEYS R"(,"guid":"G/1%"})", With(C::modifyDevice, Login)},
        {"deleteDevices", device + "device/delete", R"({"deviceList":[{"guid":"a/b"},{"guid":""}]})",
         [] {
             std::vector<TWErrorInfoByGuid> failures;
             return C::deleteDevices({"a/b", ""}, failures);
         }},
        {"deleteDevices", device + "device/delete", R"({"deviceList":[{"guid":"a"}]})",
         [] {
             TWErrorInfoByGuid failure;
             return C::deleteDevice("a", failure);
         }},
        {"getAllDevices", device + "device/list/get", R"({"account":"me","teamNo":"7","SynCloud":true})",
         [] {
             std::vector<tagTWDeviceInfo> devices;
             return C::getAllDevices(devices, "me", "7", true);
         }},
        {"refreshDevice", device + "device/refresh", R"({"guid":"a b"})", [] { return C::refreshDevice("a b"); }},
        {"clearConfig", device + "device/config/clear", R"({"deviceGuid":"a"})", [] { return C::clearConfig("a"); },
         5000, " success! ", "bandOutput"},
        {"getOutputList", device + "output/list/get", R"({"deviceList":[{"guid":"x"},{"guid":"y"},{"guid":"z"}]})",
         [] {
             std::vector<tagTWDeviceOutputInfo> outputs;
             return C::getOutputList({"x", "y", "z"}, outputs);
         }},
        {"getResolutionCap", output + "channels/capabilities/get", R"({"deviceGuid":"d","id":4})",
         [] {
             tagTWResolutionCap capability;
             capability.deviceGuid = "d";
             capability.id = 4;
             return C::getResolutionCap(capability);
         }},
        {"modifyResolution", output + "channels/resolution", R"({"deviceGuid":"d","id":4,"resolution":"1920*1080"})",
         [] {
             tagTWResolutionCap capability;
             capability.deviceGuid = "d";
             capability.id = 4;
             capability.resolution = "1920*1080";
             return C::modifyResolution(capability);
         }},
        {"unBandOutput", output + "unband", R"({"deviceGuid":"d","id":4})",
         [] {
             tagTWDeviceOutputInfo info;
             info.deviceGuid = "d";
             info.id = 4;
             return C::unBandOutput(info);
         }},
        {"bandOutput", output + "band", R"({"deviceGuid":"d","id":4,"row":1,"col":2})",
         [] {
             tagTWDeviceOutputInfo info;
             info.deviceGuid = "d";
             info.id = 4;
             info.row = 1;
             info.col = 2;
             return C::bandOutput(info);
         }},
        {"startPlay", wall + "startPlay",
         R"({"deviceGuid":"D\\1","id":2,"url":"rtsp://h/1?a=b&c","streamEncrypt":true,"streamPassword":"sp",)" //
         WINDOW_INFO "-8}}",
         With(C::startPlay, Play)},
        {"stopPlay", wall + "stopPlay", R"({"deviceGuid":"D\\1","windowId":-8,"subWndNo":3})", With(C::stopPlay, Play)},
        {"setTvVoice", output + "audio/set", R"({"deviceGuid":"D\\1","id":2,"enable":true,"windowId":-8,"subWndNo":3})",
         With(C::setTvVoice, Play)},
        {"getTvVoice", output + "audio/get", R"({"deviceGuid":"D\\1","id":2})", With(C::getTvVoice, Play)},
        {"unBandPlayWindow", wall + "window/delete", R"({"deviceGuid":"D\\1","id":2,"windowId":-8})",
         With(C::unBandPlayWindow, Play)},
        {"getScreenNum", wall + "screenNumber/get", R"({"deviceGuid":"D\\1","windowId":-8})",
         With(C::getScreenNum, Play)},
        {"setScreenNum", wall + "screenNumber", R"({"deviceGuid":"D\\1","windowId":-8,"number":9})",
         With(C::setScreenNum, Play)},
        {"getTvWallDecodeInfo", wall + "decode/status/get", R"({"deviceGuid":"D\\1","windowId":-8,"subWndNo":3})",
         [] {
             tagTWWallDecodeInfo status;
             return C::getTvWallDecodeInfo(Play(), status);
         }},
        {"openWallWindows", wall + "open/window", R"({"deviceGuid":"D1","id":2,)" WINDOW_INFO "8}}",
         With(C::openWallWindows, Window)},
        {"deleteWindow", wall + "delete/all/windows", R"({"deviceGuid":"D1"})", With(C::deleteWindow, Window)},
        {"getTvWallSpec", "/api-link-desk/desk/device/v1/getSpec", "",
         [] {
             tagTWWallSpec spec;
             return C::getTvWallSpec(spec);
         }},
        {"[mko-v1.13.2]notifyLoginStatus", "/videoWall/v1/client/login/stats", R"({"loginStatus":true})",
         [] { return C::notifyLoginStatus(true); }, 1000},
        {mko + "addPollingTask", polling + "task/add",
         "{" SCOPE R"(,"taskName":"Round","pollingTime":30,"streamType":1,"cameraList":[)"
         R"({"cameraGuid":"C1","cameraName":"Gate 1","deviceSerial":"S1","channelNo":1,"url":"u1","streamKey":"k1",)"
         R"("cameraType":11,"share":21},)"
         R"({"cameraGuid":"C2","cameraName":"Gate 2","deviceSerial":"S2","channelNo":2,"url":"u2","streamKey":"k2",)"
         R"("cameraType":12,"share":22}],"windowList":[{"deviceGuid":"D1","windowId":31,"subNo":41},)"
         R"({"deviceGuid":"D2","windowId":32,"subNo":42}]})",
         With(C::addPollingTask, Task), 5000, TASK_SUCCESS},
        {mko + "modifyPollingTask", polling + "task/modify",
         "{" SCOPE R"(,"taskGuid":"K1","taskName":"Round","pollingTime":30,"streamType":1,"cameraList":[)"
         R"({"cameraGuid":"C1","cameraName":"Gate 1","deviceSerial":"S1","channelNo":1,"url":"u1","streamKey":"k1",)"
         R"("guid":"g1","cameraType":11,"share":21},)"
         R"({"cameraGuid":"C2","cameraName":"Gate 2","deviceSerial":"S2","channelNo":2,"url":"u2","streamKey":"k2",)"
         R"("guid":"g2","cameraType":12,"share":22}],)"
         R"("windowList":[{"deviceGuid":"D1","windowId":31,"subNo":41,"guid":"w1"},)"
         R"({"deviceGuid":"D2","windowId":32,"subNo":42,"guid":"w2"}]})",
         With(C::modifyPollingTask, Task), 5000, TASK_SUCCESS},
        {mko + "getAllPollingTask", polling + "task/get",
         "{" SCOPE R"(,"taskList":[{"taskGuid":"K1"},{"taskGuid":"K2"}]})",
         [] {
             std::vector<tagTWWallPollingTaskInfo> tasks;
             return C::getAllPollingTask(Task(), tasks);
         },
         5000, " success! [vsPollingTaskInfos - 0]."},
        {mko + "getAllPollingTask", polling + "task/get", "{" SCOPE "}",
         [] {
             tagTWWallPollingTaskInfo scope = Task();
             scope.taskGuidList.clear();
             std::vector<tagTWWallPollingTaskInfo> tasks;
             return C::getAllPollingTask(scope, tasks);
         },
         5000, " success! [vsPollingTaskInfos - 0]."},
        {mko + "switchOverPollingTask", polling + "task/switchOver", "{" SCOPE R"(,"taskGuid":"K1","optType":5})",
         With(C::switchOverPollingTask, Task), 5000, TASK_SUCCESS},
        {pel + "stopSingleSourcePollingDecode", polling + "task/camera/stop",
         "{" LATE_SCOPE R"(,"taskGuid":"K1","cameraGuid":"C1"})", With(C::stopSingleSourcePollingDecode, Task), 5000,
         TASK_SUCCESS},
        {mko + "deletePollingVideoWall",
         polling + "videoWall/delete",
         "{" SCOPE "}",
         With(C::deletePollingVideoWall, Task),
         5000,
         " success! [videoWallGuid - V1].",
         {},
         mko + "addPollingTask"},
        {mko + "modifyPollingTaskCamera", polling + "task/camera/modify",
         "{" SCOPE R"(,"taskGuid":"K1","cameraList":[{"guid":"g1","cameraName":"Gate 1","CameraGuid":"C1"},)"
         R"({"guid":"g2","cameraName":"Gate 2","CameraGuid":"C2"}]})",
         With(C::modifyPollingTaskCamera, Task), 5000, TASK_SUCCESS},
        {mko + "deletePollingTaskCamera", polling + "task/camera/delete",
         "{" SCOPE R"(,"taskGuid":"K1","cameraList":[{"guid":"g1","CameraGuid":"C1"},)"
         R"({"guid":"g2","CameraGuid":"C2"}]})",
         With(C::deletePollingTaskCamera, Task), 5000, TASK_SUCCESS},
        {mko + "isExistCameraInPollingTask",
         polling + "task/camera/isExist",
         R"({"accountNo":"A1","teamNo":"T1","cameraList":[{"cameraGuid":"C1"},{"cameraGuid":"C2"}]})",
         [] {
             tagTWWallPollingTaskInfo task = Task();
             return C::isExistCameraInPollingTask(task, true);
         },
         5000,
         TASK_SUCCESS,
         {},
         {},
         mko + "isEixstCameraInPollingTask"},
        {pel + "refreshPollingTask", polling + "task/refresh", "{" LATE_SCOPE "}", With(C::refreshPollingTask, Task),
         5000, TASK_SUCCESS},
        {pel + "stopAllPollingTask", polling + "task/all/stop", "{" LATE_SCOPE R"(,"stopMode":6})",
         With(C::stopAllPollingTask, Task), 5000, TASK_SUCCESS},
        {pel + "setPollingTasksAbnormal", polling + "task/abnormal",
         "{" LATE_SCOPE R"(,"taskGuidList":[{"taskGuid":"K1"},{"taskGuid":"K2"}]})",
         With(C::setPollingTasksAbnormal, Task), 5000, TASK_SUCCESS},
    };
    struct Plain {
        const char* name;
        const char* path;
        bool (*operation)(tagTWWallPollingTaskInfo&);
    };
    for (const Plain& plain : {Plain{"deletePollingTask", "task/delete", C::deletePollingTask},
                               Plain{"startPollingTask", "task/start", C::startPollingTask},
                               Plain{"stopPollingTask", "task/stop", C::stopPollingTask},
                               Plain{"suspendPollingTask", "task/suspend", C::suspendPollingTask}}) {
        rows.push_back({mko + plain.name, polling + plain.path, "{" SCOPE R"(,"taskGuid":"K1"})",
                        With(plain.operation, Task), 5000, TASK_SUCCESS});
    }
    return rows;
}

class Requests : public Wall {
protected:
    // What stands on the wire for a row, to the last byte.
    std::string Bytes(const Row& row) const
    {
        std::string bytes = "POST " + row.path + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(server.Port()) +
                            "\r\nAccept: */*\r\nContent-Type: application/json\r\n"
                            "User-Agent: TARVO-Client/VideoWall\r\n";
        if (!row.body.empty()) {
            bytes += "Content-Length: " + std::to_string(row.body.size()) + "\r\n";
        }
        return bytes + "\r\n" + row.body;
    }

    // What a row logs up to the end of the sending.
    Lines Begin(const Row& row, std::uint16_t port) const
    {
        const std::string& name = row.requestName.empty() ? row.name : row.requestName;
        Lines lines = {"INFO " + name + " url:[http://127.0.0.1:" + std::to_string(port) + row.path + "]"};
        if (!row.body.empty()) {
            lines.push_back("INFO " + name + " conntent:[" + row.body + "]");
        }
        if (row.timeoutMs != 5000) {
            lines.push_back("INFO [kkkkpppp]HttpSend timeout : [" + std::to_string(row.timeoutMs) + "].");
        }
        return lines;
    }

    static std::string DataLine(const Row& row, const std::string& answer)
    {
        return "INFO " + (row.replyName.empty() ? row.name : row.replyName) + " data:[" + answer + "]";
    }
};

TEST_F(Requests, EveryOperationSendsTheseBytesOverOneConnection)
{
    Answer(R"({"code":0,"module":3,"msg":"done"})");
    const std::vector<Row> rows = Rows();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Keel::Error::SetLastErrorJson("before", 1, 2);
        EXPECT_TRUE(row.call());
        EXPECT_EQ(LastError(), "0 3 done");
        EXPECT_EQ(server.Requests().back().bytes, Bytes(row));
    }
    EXPECT_EQ(server.Requests().size(), rows.size());
    EXPECT_EQ(server.Connections(), 1u);
}

TEST_F(Requests, EveryOperationLogsTheseTexts)
{
    const std::string success = R"({"code":0,"module":3,"msg":"done","data":{}})";
    const std::string refusal = R"({"code":41,"module":7,"msg":"nein"})";
    const std::uint16_t nobody = test_support::ClosedPort();
    LogFile log(false);
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.name);
        CTWDeviceCommon::init("127.0.0.1", std::to_string(server.Port()));

        Answer(success);
        ASSERT_TRUE(row.call());
        Lines expected = Begin(row, server.Port());
        expected.push_back(DataLine(row, success));
        if (row.name == "[mko-v1.13.1]getAllPollingTask") {
            expected.push_back("INFO " + row.name + " TaskList size:[0]");
        } else if (row.name == "[mko-v1.13.1]isExistCameraInPollingTask") {
            expected.push_back("INFO " + row.name + " CameraList size:[2 - 0]");
        }
        expected.push_back("INFO " + row.name + row.success);
        EXPECT_EQ(log.NewLines(), expected);

        Answer(refusal);
        EXPECT_FALSE(row.call());
        EXPECT_EQ(LastError(), "41 7 nein");
        expected = Begin(row, server.Port());
        expected.push_back(DataLine(row, refusal));
        expected.push_back("ERROR " + row.name + " failed! ");
        EXPECT_EQ(log.NewLines(), expected);

        CTWDeviceCommon::init("127.0.0.1", std::to_string(nobody));
        EXPECT_FALSE(row.call());
        EXPECT_EQ(LastError(), kNetworkError);
        expected = Begin(row, nobody);
        expected.push_back("ERROR " + (row.sendFailName.empty() ? row.name : row.sendFailName) + " HttpSend failed! ");
        EXPECT_EQ(log.NewLines(), expected);
    }
}

TEST_F(Requests, CameraOperationsWithoutCamerasSendNothing)
{
    LogFile log(false);
    const std::string url = " url:[" + server.Base() + "/videoWall/v1/wall/polling/task/camera/";
    tagTWWallPollingTaskInfo task;
    Keel::Error::SetLastErrorJson("before", 1, 2);
    EXPECT_FALSE(CTWDeviceCommon::modifyPollingTaskCamera(task));
    EXPECT_FALSE(CTWDeviceCommon::deletePollingTaskCamera(task));
    EXPECT_FALSE(CTWDeviceCommon::isExistCameraInPollingTask(task, false));
    EXPECT_EQ(log.NewLines(), (Lines{"INFO [mko-v1.13.1]modifyPollingTaskCamera" + url + "modify]",
                                     "ERROR [mko-v1.13.1]modifyPollingTaskCamera vsPollingCameraInfos is empty.",
                                     "INFO [mko-v1.13.1]deletePollingTaskCamera" + url + "delete]",
                                     "ERROR [mko-v1.13.1]deletePollingTaskCamera vsPollingCameraInfos is empty.",
                                     "INFO [mko-v1.13.1]isExistCameraInPollingTask" + url + "isExist]",
                                     "ERROR [mko-v1.13.1]isExistCameraInPollingTask vsPollingCameraInfos is empty."}));
    EXPECT_EQ(LastError(), "2 1 before");
    EXPECT_TRUE(server.Requests().empty());
}

TEST_F(Requests, SecretsDoNotReachTheLog)
{
    LogFile log(true);
    Answer(R"({"code":0,"data":{"TaskList":[{"cameraList":[{"streamKey":"planted-5"}]}],"password":"planted-6"}})");
    tagTWDeviceLoginParam device = Login();
    device.password = "planted-1";
    EXPECT_TRUE(CTWDeviceCommon::addDevice(device));
    EXPECT_TRUE(CTWDeviceCommon::addDeviceAsyn(device));
    EXPECT_TRUE(CTWDeviceCommon::modifyDevice(device));
    tagTWPlayInfo play = Play();
    play.streamPassword = "planted-2";
    EXPECT_TRUE(CTWDeviceCommon::startPlay(play));
    tagTWWallPollingTaskInfo task = Task();
    task.cameraList[0].streamKey = "planted-3";
    task.cameraList[1].streamKey = "planted-4\"";
    EXPECT_TRUE(CTWDeviceCommon::addPollingTask(task));
    EXPECT_TRUE(CTWDeviceCommon::modifyPollingTask(task));
    std::vector<tagTWWallPollingTaskInfo> tasks;
    EXPECT_TRUE(CTWDeviceCommon::getAllPollingTask(task, tasks));

    const std::string text = log.Text();
    EXPECT_NE(text.find(R"("password":"***")"), std::string::npos);
    EXPECT_EQ(text.find("planted"), std::string::npos);
    EXPECT_EQ(text.find("cGxhbnRlZC0x"), std::string::npos) << "Base64 hides nothing";
}

TEST_F(Requests, TextThatIsNotUtf8IsNotSent)
{
    tagTWDeviceLoginParam device = Login();
    device.alias = "caf\xE9";
    EXPECT_FALSE(CTWDeviceCommon::addDevice(device));
    EXPECT_EQ(LastError(), kNetworkError);
    EXPECT_TRUE(server.Requests().empty());
}

TEST_F(Requests, BytesOfCredentialsNeedNotBeText)
{
    tagTWDeviceLoginParam device;
    device.username = std::string("\0\xFF", 2);
    Answer(R"({"code":0})");
    EXPECT_TRUE(CTWDeviceCommon::addDeviceAsyn(device));
    EXPECT_NE(server.Requests().back().body.find(R"("username":"AP8=","password":"")"), std::string::npos);
}

TEST_F(Requests, InitLeadsToAnotherService)
{
    test_support::RawServer other;
    EXPECT_FALSE(CTWDeviceCommon::refreshDevice("a"));
    CTWDeviceCommon::init("127.0.0.1", std::to_string(other.Port()));
    EXPECT_FALSE(CTWDeviceCommon::refreshDevice("b"));
    ASSERT_EQ(server.Requests().size(), 1u);
    ASSERT_EQ(other.Requests().size(), 1u);
    EXPECT_EQ(other.Requests()[0].body, R"({"guid":"b"})");
}

} // namespace
} // namespace wall_test
