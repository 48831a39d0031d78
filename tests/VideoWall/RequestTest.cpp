#include "VideoWall/Wall.h"

namespace wall_test {
namespace {

using namespace nexwire;

const std::string kKey = "\xF0\x9F\x94\x91"; // A sign beyond the basic plane.

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

using Requests = Wall;

TEST_F(Requests, TravelOverOneConnectionWithTheseFields)
{
    Answer(R"({"code":0,"module":3,"msg":"done"})");
    const std::string head = " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(server.Port()) +
                             "\r\nAccept: */*\r\nContent-Type: application/json\r\n"
                             "User-Agent: TARVO-Client/VideoWall\r\n";
    EXPECT_TRUE(CTWDeviceCommon::clearConfig("a"));
    EXPECT_EQ(server.Requests().back().bytes, "POST /videoWall/v1/deviceManager/device/config/clear" + head +
                                                  "Content-Length: 18\r\n\r\n{\"deviceGuid\":\"a\"}");
    tagTWWallSpec spec;
    EXPECT_TRUE(CTWDeviceCommon::getTvWallSpec(spec));
    EXPECT_EQ(server.Requests().back().bytes, "POST /api-link-desk/desk/device/v1/getSpec" + head + "\r\n");
    EXPECT_EQ(server.Connections(), 1u);
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
    nexwire::loopback::RawServer other;
    EXPECT_FALSE(CTWDeviceCommon::refreshDevice("a"));
    CTWDeviceCommon::init("127.0.0.1", std::to_string(other.Port()));
    EXPECT_FALSE(CTWDeviceCommon::refreshDevice("b"));
    ASSERT_EQ(server.Requests().size(), 1u);
    ASSERT_EQ(other.Requests().size(), 1u);
    EXPECT_EQ(other.Requests()[0].body, R"({"guid":"b"})");
}

} // namespace
} // namespace wall_test
