#include <atomic>
#include <set>

#include <gtest/gtest.h>

#include "VideoWall/Wall.h"
#include "nexwire/VideoWall/VideoWall.h"
#include "simulator/VideoWallService.h"

namespace wall_test {
namespace {

using namespace nexwire;
using simulator::VideoWallService;
using C = CTWDeviceCommon;

class Service : public ::testing::Test {
protected:
    Service() : service(MakeOptions())
    {
        NoLog();
        std::string error;
        EXPECT_TRUE(service.Start(error)) << error;
        C::init("127.0.0.1", std::to_string(service.Port()));
    }

    VideoWallService::Options MakeOptions()
    {
        VideoWallService::Options options;
        options.now = [this] { return clock.load(); };
        return options;
    }

    static tagTWDeviceLoginParam Login(const std::string& address)
    {
        tagTWDeviceLoginParam device;
        device.username = "admin";
        device.password = "admin123";
        device.address = address;
        device.port = 8000;
        device.alias = "Decoder";
        return device;
    }

    // A decoder whose four outputs stand in a square at `col`.
    static std::string AddBound(const std::string& address, int col)
    {
        tagTWDeviceLoginParam device = Login(address);
        EXPECT_TRUE(C::addDevice(device)) << LastError();
        for (int i = 0; i < 4; ++i) {
            tagTWDeviceOutputInfo output;
            output.deviceGuid = device.guid;
            output.id = i + 1;
            output.row = i / 2;
            output.col = col + i % 2;
            EXPECT_TRUE(C::bandOutput(output)) << LastError();
        }
        return device.guid;
    }

    static int Open(const std::string& deviceGuid, int col, int size)
    {
        tagTWWindowOpenInfo window;
        window.deviceGuid = deviceGuid;
        window.id = 1;
        window.col = col;
        window.rowNum = size;
        window.colNum = size;
        EXPECT_TRUE(C::openWallWindows(window)) << LastError();
        return window.windowId;
    }

    static tagTWWallPollingTaskInfo MakeTask(const std::string& name, const std::string& deviceGuid, int windowId)
    {
        tagTWWallPollingTaskInfo task;
        task.videoWallGuid = "wall";
        task.accountNo = "account";
        task.teamNo = "team";
        task.taskName = name;
        task.pollingTime = 10;
        for (int i = 1; i <= 3; ++i) {
            tagTWPollingCameraInfo& camera = task.cameraList.emplace_back();
            camera.cameraGuid = "c" + std::to_string(i);
            camera.cameraName = "Camera " + std::to_string(i);
            camera.deviceSerial = "S" + std::to_string(i);
            camera.channelNo = 10 + i;
            camera.url = "rtsp://10.0.0.1/" + std::to_string(i);
        }
        task.windowList = {{deviceGuid, windowId, 0, ""}};
        return task;
    }

    static tagTWWallPollingTaskInfo Look(const tagTWWallPollingTaskInfo& task)
    {
        tagTWWallPollingTaskInfo scope = task;
        scope.taskGuidList = {task.taskGuid};
        std::vector<tagTWWallPollingTaskInfo> tasks;
        EXPECT_TRUE(C::getAllPollingTask(scope, tasks)) << LastError();
        return tasks.size() == 1 ? tasks[0] : tagTWWallPollingTaskInfo();
    }

    static void Refused(bool done, int code)
    {
        EXPECT_FALSE(done);
        const TWErrorInfo error = C::getLastError();
        EXPECT_EQ(error.code, code) << error.message;
        EXPECT_EQ(error.module, code / 1000);
        EXPECT_FALSE(error.message.empty());
    }

    std::atomic<std::int64_t> clock{1700000000000};
    VideoWallService service;
};

TEST_F(Service, DecodersLogInWithTheirAccount)
{
    tagTWDeviceLoginParam good = Login("10.0.0.1");
    ASSERT_TRUE(C::addDevice(good));
    Refused(C::addDevice(good), 2002);
    tagTWDeviceLoginParam wrong = Login("10.0.0.2");
    wrong.password = "admin124";
    Refused(C::addDevice(wrong), 2003);
    tagTWDeviceLoginParam empty = Login("10.0.0.2");
    empty.username.clear();
    Refused(C::addDeviceAsyn(empty), 2003);
    tagTWDeviceLoginParam stranger = Login("10.0.0.2");
    stranger.username = "root";
    Refused(C::addDevice(stranger), 2003);
    tagTWDeviceLoginParam away = Login("192.0.2.9");
    Refused(C::addDevice(away), 2004);
    for (const int noPort : {0, 65536}) {
        away.port = noPort;
        Refused(C::addDeviceAsyn(away), 2006);
    }
    away.port = 8000;

    // Without waiting, the service finds out later.
    ASSERT_TRUE(C::addDeviceAsyn(wrong));
    ASSERT_TRUE(C::addDeviceAsyn(away));
    const auto states = [] {
        std::map<std::string, int> seen;
        std::vector<tagTWDeviceInfo> devices;
        EXPECT_TRUE(C::getAllDevices(devices, "me", "", true));
        for (const tagTWDeviceInfo& device : devices) {
            seen[device.guid] = device.loginStatus;
        }
        return seen;
    };
    EXPECT_EQ(states(), (std::map<std::string, int>{{good.guid, 1}, {wrong.guid, 0}, {away.guid, 0}}));
    clock += 2000;
    EXPECT_EQ(states(), (std::map<std::string, int>{{good.guid, 1}, {wrong.guid, 2}, {away.guid, 3}}));
    Refused(C::clearConfig(wrong.guid), 2003);
    wrong.password = "admin123";
    ASSERT_TRUE(C::modifyDevice(wrong));
    clock += 2000;
    EXPECT_EQ(states()[wrong.guid], 1);
    ASSERT_TRUE(C::refreshDevice(good.guid));
    EXPECT_EQ(states()[good.guid], 0);
    Refused(C::refreshDevice("nobody"), 2001);
}

TEST_F(Service, BatchDeletionNamesWhatCouldNotBeDeleted)
{
    const std::string idle = AddBound("10.0.0.1", 0);
    const std::string busy = AddBound("10.0.0.2", 2);
    tagTWWallPollingTaskInfo task = MakeTask("Round", busy, Open(busy, 2, 2));
    ASSERT_TRUE(C::addPollingTask(task));
    ASSERT_TRUE(C::startPollingTask(task));

    std::vector<TWErrorInfoByGuid> failures;
    ASSERT_TRUE(C::deleteDevices({"nobody", idle, busy}, failures));
    ASSERT_EQ(failures.size(), 2u);
    EXPECT_EQ(failures[0].guid, "nobody");
    EXPECT_EQ(failures[0].code, 2001);
    EXPECT_EQ(failures[1].guid, busy);
    EXPECT_EQ(failures[1].code, 2005);
    EXPECT_EQ(failures[1].module, 2);

    ASSERT_TRUE(C::stopPollingTask(task));
    TWErrorInfoByGuid failure;
    ASSERT_TRUE(C::deleteDevice(busy, failure));
    EXPECT_TRUE(failure.guid.empty());
    std::vector<tagTWDeviceInfo> devices(1);
    ASSERT_TRUE(C::getAllDevices(devices, "", "", false));
    EXPECT_TRUE(devices.empty());
}

TEST_F(Service, OutputsAreBoundAndFreed)
{
    const std::string first = AddBound("10.0.0.1", 0);
    tagTWDeviceLoginParam second = Login("10.0.0.2");
    ASSERT_TRUE(C::addDevice(second));

    tagTWDeviceOutputInfo output;
    output.deviceGuid = second.guid;
    output.id = 1;
    Refused(C::bandOutput(output), 3003);
    output.row = 4;
    Refused(C::bandOutput(output), 3002);
    output.id = 5;
    Refused(C::bandOutput(output), 3001);
    output.id = 2;
    Refused(C::unBandOutput(output), 3004);

    std::vector<tagTWDeviceOutputInfo> outputs;
    ASSERT_TRUE(C::getOutputList({second.guid, first}, outputs));
    ASSERT_EQ(outputs.size(), 8u);
    EXPECT_EQ(outputs[0].deviceGuid, second.guid);
    EXPECT_EQ(outputs[0].bindStatus, 0);
    EXPECT_EQ(outputs[7].id, 4);
    EXPECT_EQ(outputs[7].bindStatus, 1);
    Refused(C::getOutputList({first, "nobody"}, outputs), 2001);

    tagTWResolutionCap capability;
    capability.deviceGuid = first;
    capability.id = 3;
    ASSERT_TRUE(C::getResolutionCap(capability));
    ASSERT_FALSE(capability.resolutionCapList.empty());
    capability.resolution = capability.resolutionCapList.front();
    EXPECT_NE(capability.currentResolution, capability.resolution);
    ASSERT_TRUE(C::modifyResolution(capability));
    ASSERT_TRUE(C::getResolutionCap(capability));
    EXPECT_EQ(capability.currentResolution, capability.resolution);
    capability.resolution = "1*1";
    Refused(C::modifyResolution(capability), 3005);

    ASSERT_TRUE(C::clearConfig(first));
    ASSERT_TRUE(C::getOutputList({first}, outputs));
    EXPECT_EQ(outputs[2].bindStatus, 0);
    EXPECT_EQ(outputs[2].currentResolution, "1920*1080");
}

TEST_F(Service, WindowsPlayAndDecode)
{
    const std::string device = AddBound("10.0.0.1", 0);
    tagTWPlayInfo play;
    play.deviceGuid = device;
    play.id = 1;
    play.rowNum = 2;
    play.colNum = 3;
    play.url = "rtsp://10.0.0.1/1";
    Refused(C::startPlay(play), 4002);
    play.colNum = 2;
    play.streamEncrypt = true;
    Refused(C::startPlay(play), 4007);
    play.streamEncrypt = false;
    ASSERT_TRUE(C::startPlay(play));
    ASSERT_GT(play.windowId, 0);

    tagTWWallDecodeInfo status;
    clock += 4000;
    ASSERT_TRUE(C::getTvWallDecodeInfo(play, status));
    EXPECT_EQ(status.isDecoding, 1);
    EXPECT_EQ(status.videoTotal, 100);
    EXPECT_EQ(status.imageWidth, 1920);
    clock += 2000;
    ASSERT_TRUE(C::getTvWallDecodeInfo(play, status));
    EXPECT_EQ(status.videoTotal, 150);
    EXPECT_EQ(status.videoFPS, 24);

    // The same window again, divided in four.
    play.number = 2;
    Refused(C::setScreenNum(play), 4005);
    play.number = 4;
    ASSERT_TRUE(C::setScreenNum(play));
    ASSERT_TRUE(C::getScreenNum(play));
    EXPECT_EQ(play.windowNum, 4);
    const int windowId = play.windowId;
    play.subWndNo = 4;
    Refused(C::startPlay(play), 4004);
    play.subWndNo = 3;
    Refused(C::stopPlay(play), 4006);
    ASSERT_TRUE(C::startPlay(play));
    EXPECT_EQ(play.windowId, windowId);
    ASSERT_TRUE(C::stopPlay(play));
    ASSERT_TRUE(C::getTvWallDecodeInfo(play, status));
    EXPECT_EQ(status.isDecoding, 0);

    EXPECT_TRUE(C::getTvVoice(play));
    EXPECT_FALSE(play.enable);
    play.enable = true;
    ASSERT_TRUE(C::setTvVoice(play));
    play.enable = false;
    ASSERT_TRUE(C::getTvVoice(play));
    EXPECT_TRUE(play.enable);

    ASSERT_TRUE(C::unBandPlayWindow(play));
    Refused(C::unBandPlayWindow(play), 4001);
    Refused(C::getTvWallDecodeInfo(play, status), 4001);

    // A window closes with one of its outputs, and all of them on demand.
    tagTWPlayInfo lost = play;
    lost.windowId = Open(device, 0, 2);
    lost.number = 1;
    tagTWDeviceOutputInfo output;
    output.deviceGuid = device;
    output.id = 4;
    ASSERT_TRUE(C::unBandOutput(output));
    Refused(C::setScreenNum(lost), 4001);
    lost.windowId = Open(device, 0, 1);
    tagTWWindowOpenInfo all;
    all.deviceGuid = device;
    ASSERT_TRUE(C::deleteWindow(all));
    Refused(C::setScreenNum(lost), 4001);
}

TEST_F(Service, PollingTasksAdvanceWhileTheyRun)
{
    const std::string device = AddBound("10.0.0.1", 0);
    const int windowId = Open(device, 0, 2);
    tagTWWallPollingTaskInfo task = MakeTask("Round", device, windowId);
    ASSERT_TRUE(C::addPollingTask(task));
    Refused(C::suspendPollingTask(task), 5005);
    EXPECT_EQ(Look(task).currentCameraNum, 0);
    EXPECT_EQ(Look(task).totalCameraNum, 3);

    ASSERT_TRUE(C::startPollingTask(task));
    EXPECT_EQ(Look(task).currentCameraNum, 1);
    clock += 10000;
    tagTWWallPollingTaskInfo seen = Look(task);
    EXPECT_EQ(seen.isRunning, 1);
    EXPECT_EQ(seen.currentCameraNum, 2);
    EXPECT_EQ(seen.cameraDeviceSerial, "S2");
    EXPECT_EQ(seen.cameraChannelNo, 12);
    ASSERT_EQ(seen.cameraList.size(), 3u);
    EXPECT_EQ(seen.cameraList[2].url, "rtsp://10.0.0.1/3");
    ASSERT_EQ(seen.windowList.size(), 1u);
    EXPECT_EQ(seen.windowList[0].windowId, windowId);
    clock += 25000;
    EXPECT_EQ(Look(task).currentCameraNum, 1);

    // The window decodes the camera it shows.
    tagTWPlayInfo play;
    play.deviceGuid = device;
    play.windowId = windowId;
    tagTWWallDecodeInfo status;
    ASSERT_TRUE(C::getTvWallDecodeInfo(play, status));
    EXPECT_EQ(status.isDecoding, 1);
    EXPECT_EQ(status.videoTotal, 125);

    ASSERT_TRUE(C::suspendPollingTask(task));
    clock += 100000;
    EXPECT_EQ(Look(task).currentCameraNum, 1);
    EXPECT_EQ(Look(task).isRunning, 2);
    task.optType = 1;
    ASSERT_TRUE(C::switchOverPollingTask(task));
    EXPECT_EQ(Look(task).currentCameraNum, 3);
    ASSERT_TRUE(C::startPollingTask(task));
    task.optType = 2;
    ASSERT_TRUE(C::switchOverPollingTask(task));
    EXPECT_EQ(Look(task).currentCameraNum, 1);
    task.optType = 3;
    Refused(C::switchOverPollingTask(task), 5008);

    // A camera that is stopped is left out.
    ASSERT_TRUE(C::stopSingleSourcePollingDecode(task));
    std::set<int> shown;
    for (int i = 0; i < 6; ++i) {
        shown.insert(Look(task).currentCameraNum);
        clock += 10000;
    }
    EXPECT_EQ(shown, (std::set<int>{2, 3}));

    // Two tasks do not share a window.
    tagTWWallPollingTaskInfo other = MakeTask("Other", device, windowId);
    ASSERT_TRUE(C::addPollingTask(other));
    Refused(C::startPollingTask(other), 5006);
    task.stopMode = 1;
    ASSERT_TRUE(C::stopAllPollingTask(task));
    EXPECT_EQ(Look(task).isRunning, 0);
    ASSERT_TRUE(C::startPollingTask(other));
    other.taskGuidList = {other.taskGuid};
    ASSERT_TRUE(C::setPollingTasksAbnormal(other));
    EXPECT_EQ(Look(other).isRunning, 3);
    EXPECT_TRUE(C::refreshPollingTask(other));
}

TEST_F(Service, PollingTasksAreEdited)
{
    const std::string device = AddBound("10.0.0.1", 0);
    tagTWWallPollingTaskInfo task = MakeTask("Round", device, Open(device, 0, 1));
    ASSERT_TRUE(C::addPollingTask(task));
    tagTWWallPollingTaskInfo same = task;
    Refused(C::addPollingTask(same), 5002);
    same.taskName.clear();
    Refused(C::addPollingTask(same), 5003);
    same = task;
    same.cameraList.clear();
    Refused(C::addPollingTask(same), 5003);
    same.pollingTime = 0;
    Refused(C::addPollingTask(same), 5007);
    same = task;
    same.teamNo = "another";
    Refused(C::startPollingTask(same), 5001);
    ASSERT_TRUE(C::addPollingTask(same)) << "names count within a scope";
    EXPECT_NE(same.taskGuid, task.taskGuid);

    // Entries of cameras keep their GUIDs.
    tagTWWallPollingTaskInfo known = Look(task);
    std::swap(known.cameraList[0], known.cameraList[2]);
    task.cameraList = known.cameraList;
    task.taskName = "Renamed";
    ASSERT_TRUE(C::modifyPollingTask(task));
    EXPECT_EQ(Look(task).taskName, "Renamed");
    EXPECT_EQ(Look(task).cameraList[0].guid, known.cameraList[0].guid);

    task.cameraList = {known.cameraList[1]};
    task.cameraList[0].cameraName = "Gate";
    task.cameraList[0].cameraGuid = "c9";
    ASSERT_TRUE(C::modifyPollingTaskCamera(task));
    EXPECT_EQ(Look(task).cameraList[1].cameraName, "Gate");
    EXPECT_EQ(Look(task).cameraList[1].cameraGuid, "c9");

    task.cameraList.resize(2);
    task.cameraList[1].cameraGuid = "c2";
    ASSERT_TRUE(C::isExistCameraInPollingTask(task, true));
    EXPECT_TRUE(task.cameraList[0].isExist);
    EXPECT_EQ(task.cameraList[0].taskGuid, task.taskGuid);
    EXPECT_FALSE(task.cameraList[1].isExist);

    // One camera that is not there, and none is deleted.
    Refused(C::deletePollingTaskCamera(task), 5004);
    EXPECT_EQ(Look(task).totalCameraNum, 3);
    task.cameraList.resize(1);
    ASSERT_TRUE(C::deletePollingTaskCamera(task));
    EXPECT_EQ(Look(task).totalCameraNum, 2);

    ASSERT_TRUE(C::deletePollingTask(task));
    Refused(C::startPollingTask(task), 5001);
    ASSERT_TRUE(C::deletePollingVideoWall(same));
    Refused(C::startPollingTask(same), 5001);
}

TEST_F(Service, WallsAndClients)
{
    tagTWWallSpec spec;
    ASSERT_TRUE(C::getTvWallSpec(spec));
    EXPECT_EQ(spec.screenRowNum, 4);
    EXPECT_EQ(spec.screenColNum, 8);
    EXPECT_GT(spec.videoWallNum, 0);
    EXPECT_TRUE(C::notifyLoginStatus(true));
    EXPECT_TRUE(C::notifyLoginStatus(false));
    EXPECT_EQ(C::getLastError().code, 0);
}

TEST_F(Service, StopsAndStartsAgainEmpty)
{
    tagTWDeviceLoginParam device = Login("10.0.0.1");
    ASSERT_TRUE(C::addDevice(device));
    service.Stop();
    EXPECT_EQ(service.Port(), 0);
    EXPECT_FALSE(C::notifyLoginStatus(true));
    EXPECT_EQ(LastError(), kNetworkError);
    std::string error;
    ASSERT_TRUE(service.Start(error)) << error;
    EXPECT_FALSE(service.Start(error));
    C::init("127.0.0.1", std::to_string(service.Port()));
    std::vector<tagTWDeviceInfo> devices(1);
    ASSERT_TRUE(C::getAllDevices(devices, "", "", false));
    EXPECT_TRUE(devices.empty());
}

} // namespace
} // namespace wall_test
