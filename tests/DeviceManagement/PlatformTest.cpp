#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "nexwire/Alarm/AlarmLog.h"
#include "nexwire/Alarm/ClientLink.h"
#include "nexwire/DeviceManagement/AlarmPanel.h"
#include "nexwire/DeviceManagement/Channel.h"
#include "nexwire/DeviceManagement/Device.h"
#include "nexwire/DeviceManagement/DeviceService.h"
#include "nexwire/DeviceManagement/DeviceTask.h"
#include "nexwire/DeviceManagement/EventImport.h"
#include "nexwire/DeviceManagement/Resource.h"
#include "nexwire/LastExchange.h"
#include "support/AtPlatform.h"
#include "support/TempFolder.h"

// Devices and alarms through the library, the ready-made transport and the local platform.

namespace {

using namespace nexwire;
using testing::ElementsAre;

const std::string kRecorder = "AC000000000000000000000000000015";
const std::string kChannel = "C1000000000000000000000000150001";
const std::string kPanel = "AC000000000000000000000000000016";
const std::string kSiren = "C3000000000000000000000000160001";

simulator::Options With(double alarmsPerMinute)
{
    simulator::Options options;
    options.alarmsPerMinute = alarmsPerMinute;
    return options;
}

class Building : public test::AtPlatform {
protected:
    explicit Building(double alarmsPerMinute = 0) : AtPlatform(1704067200000, With(alarmsPerMinute)) {}

    protocol::DeviceResult Add(const std::string& address, const std::string& password = "Device-1234")
    {
        protocol::DeviceAddReq device;
        device.name = "Yard";
        device.deviceType = "camera";
        device.protocolType = "sdk";
        device.addMode = "address";
        device.address = address;
        device.username = "admin";
        device.password = password;
        protocol::DeviceResultListData result;
        EXPECT_TRUE(CAddDevice::request(result, device));
        return result.deviceResultList.empty() ? protocol::DeviceResult() : result.deviceResultList.front();
    }
    static protocol::DeviceResponse Device(const std::string& guid)
    {
        protocol::DeviceResponseData result;
        protocol::DeviceQueryCondition condition;
        EXPECT_TRUE(CGetSingleDevicesComm::request(result, condition, guid));
        return result.deviceResponse;
    }
    static std::vector<std::string> States()
    {
        protocol::PartitionStatusRspData status;
        EXPECT_TRUE(CGetPartitionStatusComm::request(status, kPanel));
        std::vector<std::string> states;
        for (const protocol::PartitionStatus& each : status.partitionStatusRsp.partitionStatusList) {
            states.push_back(each.armState + (each.alarm ? "!" : ""));
        }
        return states;
    }
    static int Order(const std::string& action, const std::string& code = {})
    {
        protocol::PartitionControl control;
        control.action = action;
        control.operatorPwd = code;
        control.partitionNoList = {1};
        protocol::PartitionControlRspData result;
        EXPECT_TRUE(CPartitionControlComm::request(result, control, kPanel));
        const auto& list = result.partitionControlRsp.resultList;
        return list.empty() ? -1 : list.front().resultCode;
    }
    static void Siren(int action, const std::string& device = kPanel, const std::string& output = kSiren)
    {
        protocol::AlarmOutputControl control;
        control.action = action;
        EXPECT_TRUE(CAlarmoutputComm::requestControl(device, output, control));
    }
    static protocol::AlarmLogResponseData Logs(const protocol::AlarmLogCondition& condition = {})
    {
        protocol::AlarmLogResponseDataData result;
        EXPECT_TRUE(CGetAlarmLogs::request(result, condition));
        return result.alarmLogResponseData;
    }
};

TEST_F(Building, DevicesAreAddedWithCheckedCredentialsAndBringTheirParts)
{
    EXPECT_EQ(Add("192.0.2.77", "guessed").resultCode, 50);
    EXPECT_EQ(Add("192.0.2.70").resultCode, 40) << "nothing answers there";
    const std::string guid = Add("192.0.2.77").deviceGuid;
    EXPECT_EQ(guid.size(), 32U);
    EXPECT_EQ(Add("192.0.2.77").resultCode, 22);
    const protocol::DeviceResponse device = Device(guid);
    EXPECT_EQ(device.onlineState, 1);
    EXPECT_EQ(device.deviceBasicInfo.username, "admin");
    EXPECT_EQ(device.deviceBasicInfo.password, "");
    EXPECT_EQ(device.deviceCapacity.channelNum, 1);
    // An identifier that no path can carry finds the device by the serial number at its end.
    EXPECT_EQ(Device(std::string(30, 'x') + "AC20240015").deviceGuid, kRecorder);

    protocol::DeviceBasicInfo change;
    change.username = "admin";
    change.password = "changed elsewhere";
    protocol::DeviceResponseData changed;
    ASSERT_TRUE(CModDevice::request(changed, change, guid));
    EXPECT_EQ(changed.deviceResponse.onlineState, 0);
    EXPECT_EQ(changed.deviceResponse.errorCode, 50);
    change.password = "Device-1234";
    ASSERT_TRUE(CModDevice::request(changed, change, guid));
    EXPECT_EQ(changed.deviceResponse.onlineState, 1);

    protocol::DeviceResponseListData list;
    protocol::DeviceQueryCondition condition;
    condition.deviceType = "camera";
    ASSERT_TRUE(CGetAllDeviceInfo::request(list, condition));
    EXPECT_EQ(list.total, 1);
    protocol::DeviceList gone;
    gone.deviceGuidList = {guid, "none"};
    protocol::DeviceResultListData result;
    ASSERT_TRUE(CDeleteDevice::request(result, gone));
    ASSERT_EQ(result.deviceResultList.size(), 2U);
    EXPECT_EQ(result.deviceResultList[0].resultCode, 0);
    EXPECT_EQ(result.deviceResultList[1].resultCode, 21);
}

TEST_F(Building, AnUpgradedDeviceComesBackWithItsNewVersion)
{
    protocol::DeviceList devices;
    devices.deviceGuidList = {kRecorder};
    protocol::DeviceResultListData result;
    ASSERT_TRUE(CUpgradeDevice::request(result, devices));
    EXPECT_EQ(Device(kRecorder).onlineState, 0);
    EXPECT_EQ(Device(kRecorder).deviceBasicInfo.softwareVersion, "V1.4.2");
    now += 9000;
    EXPECT_EQ(Device(kRecorder).onlineState, 1);
    EXPECT_EQ(Device(kRecorder).deviceBasicInfo.softwareVersion, "V1.5.0");

    const std::string task = "C8000000000000000000000000150001";
    ASSERT_TRUE(CSetTaskInfoComm::setRelatedChannelNo(2, kRecorder, task));
    now += 10000;
    protocol::TaskInfoData info;
    ASSERT_TRUE(CGetTaskInfoComm::request(info, kRecorder, task));
    EXPECT_EQ(info.taskInfo.relateChannelNo, 2);
    EXPECT_EQ(info.taskInfo.progress, 50);
    EXPECT_EQ(info.taskInfo.state, 1);
}

TEST_F(Building, ChannelsKeepPresetsAndGiveSnapshots)
{
    protocol::ChannelParamReq query;
    query.channelNoList = {1, 3};
    protocol::ChannelsAndDeviceInfoRspData channels;
    ASSERT_TRUE(CGetChannelsAndDevComm::request(channels, query, kRecorder));
    EXPECT_EQ(channels.channelsAndDeviceInfoRsp.channelInfoList.size(), 2U);
    EXPECT_EQ(channels.channelsAndDeviceInfoRsp.deviceInfo.deviceGuid, kRecorder);
    protocol::ChannelAndDeviceInfoRspData second;
    ASSERT_TRUE(CGetChannelAndDevComm::request(second, {}, kRecorder, 2));
    EXPECT_EQ(second.channelAndDeviceInfoRsp.channelInfo.channelNo, 2);
    ASSERT_TRUE(CChannelRequestComm::setRelatedServers(kRecorder, kChannel, "S"));
    protocol::ChannelInfoData channel;
    ASSERT_TRUE(CGetChannelInfoComm::request(channel, kRecorder, kChannel));
    EXPECT_EQ(channel.channelInfo.channelExtra.relatedServer, "S");
    EXPECT_EQ(channel.channelInfo.channelExtra.name, "Lobby recorder channel 1");

    std::vector<std::string> guids(2);
    for (std::string& guid : guids) {
        protocol::PresetInfo preset;
        preset.name = "Gate";
        ASSERT_TRUE(CChannelPresetComm::savePreset(guid, preset, kRecorder, kChannel));
    }
    ASSERT_TRUE(CChannelPresetComm::updatePresetName(kRecorder, kChannel, guids[1], "Door"));
    ASSERT_TRUE(CChannelPresetComm::deletePreset(kRecorder, kChannel, guids[0]));
    protocol::PresetInfoListData presets;
    ASSERT_TRUE(CChannelPresetComm::getAllPresetInfo(presets, kRecorder, kChannel));
    ASSERT_EQ(presets.presetInfoList.size(), 1U);
    EXPECT_EQ(presets.presetInfoList[0].name, "Door");
    EXPECT_EQ(presets.presetInfoList[0].presetNo, 2);
    std::string unused;
    protocol::PresetInfo fixed;
    ASSERT_TRUE(CChannelPresetComm::savePreset(unused, fixed, kRecorder, "C1000000000000000000000000150002"));
    EXPECT_EQ(LastExchange().number, 43) << "the second camera does not move";

    std::string snapshot;
    ASSERT_TRUE(CChannelCaptureComm::request(snapshot, kRecorder, kChannel));
    EXPECT_EQ(snapshot.substr(0, 8), "\x89PNG\r\n\x1A\n");
}

TEST_F(Building, AnArmedZoneRaisesAnAlarmThatIsLoggedShownAndHandled)
{
    Siren(1);
    EXPECT_EQ(Logs().total, 0) << "nothing is armed";
    EXPECT_EQ(Order("arm", "9999"), 50);
    EXPECT_EQ(Order("arm", "1234"), 0);
    EXPECT_THAT(States(), ElementsAre("arming", "disarmed"));
    now += 11000;
    EXPECT_THAT(States(), ElementsAre("armed", "disarmed"));
    Siren(1);
    EXPECT_THAT(States(), ElementsAre("armed!", "disarmed"));
    const protocol::AlarmLogResponseData logs = Logs();
    ASSERT_EQ(logs.total, 1);
    const protocol::AlarmLog& log = logs.alarmLogList[0];
    EXPECT_EQ(log.alarmType, "zone");
    EXPECT_EQ(log.alarmTime, "2024-01-01T00:00:11+00:00");
    EXPECT_EQ(log.endTime, "");

    protocol::ProcessingAlarmData handled;
    handled.alarmLogGuidList = {log.alarmLogGuid};
    handled.processState = 2;
    handled.comment = "seen";
    ASSERT_TRUE(CAddAlarmProcessing::request(handled));
    now += 1000;
    EXPECT_EQ(Order("disarm"), 0);
    EXPECT_THAT(States(), ElementsAre("disarmed", "disarmed"));
    protocol::AlarmLogDetailQueryCondition condition;
    condition.alarmLogGuid = log.alarmLogGuid;
    protocol::AlarmLogDetailsData details;
    ASSERT_TRUE(CGetAlarmLogDetails::request(details, condition));
    EXPECT_EQ(details.alarmLogDetails.alarmLog.processState, 2);
    EXPECT_EQ(details.alarmLogDetails.alarmLog.endTime, "2024-01-01T00:00:12+00:00");
    ASSERT_EQ(details.alarmLogDetails.alarmProcessingList.size(), 1U);
    EXPECT_EQ(details.alarmLogDetails.alarmProcessingList[0].comment, "seen");
    EXPECT_EQ(details.alarmLogDetails.alarmProcessingList[0].processUser, "admin");
    ASSERT_EQ(details.alarmLogDetails.alarmLogPictureList.size(), 1U);

    const protocol::AlarmLogPicture& about = details.alarmLogDetails.alarmLogPictureList[0];
    std::string picture;
    ASSERT_TRUE(CGetAlarmPicByGUID::request(picture, about.pictureGuid));
    EXPECT_EQ(picture.size(), static_cast<std::size_t>(about.pictureSize));
    EXPECT_GT(std::count(picture.begin(), picture.end(), '\0'), 10);
    protocol::PicStorageSource source;
    source.picUrl = about.picUrl;
    std::string same;
    ASSERT_TRUE(CGetPicFromPicStorage::request(same, source));
    EXPECT_TRUE(same == picture);
    source.thumbnail = true;
    ASSERT_TRUE(CInternalCGetPicFromPicStorage::request(same, source));
    EXPECT_LT(same.size(), picture.size());
}

TEST_F(Building, LinksDecideWhetherAnAlarmCounts)
{
    const std::string input = "C2000000000000000000000000150001";
    const std::string output = "C3000000000000000000000000150001";
    protocol::ModifyEventTemplates templates;
    templates.eventTemplateList.emplace_back().name = "Night";
    protocol::TemplateEventResultListData made;
    ASSERT_TRUE(CModifyAlarmTemplates::request(made, templates));
    ASSERT_EQ(made.templateEventResultList.size(), 1U);
    const std::string night = made.templateEventResultList[0].templateGuid;

    protocol::AlarmInputEventCfg config;
    protocol::LinkedEventCfg& link = config.linkedEventList.emplace_back();
    link.eventType = "alarmInput";
    link.alarmLevel = 3;
    link.templateGuid = night;
    link.clientLink.channelGuidList = {kChannel};
    ASSERT_TRUE(CModifyAlarmInputClientLink::request(input, config));
    Siren(1, kRecorder, output);
    ASSERT_EQ(Logs().total, 1);
    EXPECT_EQ(Logs().alarmLogList[0].alarmLevel, 3);
    link.enable = false;
    ASSERT_TRUE(CModifyAlarmInputClientLink::request(input, config));
    Siren(1, kRecorder, output);
    EXPECT_EQ(Logs().total, 1);

    protocol::TemplateEventInfoData one;
    ASSERT_TRUE(CGetAlarmSingleTemplate::request(one, night));
    EXPECT_THAT(one.templateEventInfo.resourceGuidList, ElementsAre(input));
    templates.eventTemplateList.clear();
    templates.removeGuidList = {night};
    ASSERT_TRUE(CModifyAlarmTemplates::request(made, templates));
    EXPECT_EQ(made.templateEventResultList[0].resultCode, 23) << "a link follows it";

    protocol::ResourceEventInfoData events;
    ASSERT_TRUE(CGetResourceEventClientLink::request(events, input, {}));
    ASSERT_EQ(events.resourceEventInfo.linkedEventList.size(), 1U);
    EXPECT_THAT(events.resourceEventInfo.linkedEventList[0].clientLink.channelGuidList, ElementsAre(kChannel));
    protocol::ResourceEventDelete remove;
    remove.eventGuidList = {events.resourceEventInfo.linkedEventList[0].eventGuid};
    protocol::ResourceEventResultData removed;
    ASSERT_TRUE(CDeleteResourceEventClientLink::request(removed, input, remove));
    protocol::ResourceEventGuidData left;
    ASSERT_TRUE(CGetResourceEventClientLink::requestGUID(left, input, {}));
    EXPECT_TRUE(left.resourceEventGuid.eventGuidList.empty());
}

TEST_F(Building, AFileOfEventsIsImportedLineByLine)
{
    TempFolder folder;
    std::string text = "alarmType,alarmTime,alarmLevel,deviceGuid,description\r\n";
    for (int i = 0; i < 9; ++i) {
        text += "motion,2024-01-01T08:0" + std::to_string(i) + ":00+00:00,3," + kRecorder + "," +
                std::string(1000, 'm') + "\r\n";
    }
    const std::string file = folder.Write("events.csv", text + "broken\r\n");
    const auto progress = std::make_shared<int>(0);
    std::string upload;
    std::string answer;
    ASSERT_TRUE(FileImportEventComm::requestUpload(progress, upload, file, answer));
    std::string task;
    ASSERT_TRUE(FileImportEventComm::requestImportFile(task, upload, "", "", answer));
    protocol::personnelcommon::SynchronouProgressData job;
    now += 200;
    ASSERT_TRUE(FileImportEventComm::requestImportProgress(job, task, answer));
    EXPECT_EQ(job.progress, 50);
    EXPECT_FALSE(job.finished);
    EXPECT_EQ(Logs().total, 5);
    now += 1000;
    ASSERT_TRUE(FileImportEventComm::requestImportProgress(job, task, answer));
    EXPECT_TRUE(job.finished);
    EXPECT_EQ(job.successNum, 9);
    EXPECT_EQ(job.failedNum, 1);
    EXPECT_EQ(job.failedList.size(), 1U);
    protocol::AlarmLogCondition condition;
    condition.alarmLevelList = {3};
    condition.beginTime = "2024-01-01T08:02:00+00:00";
    condition.descending = false;
    condition.pageSize = 2;
    const protocol::AlarmLogResponseData logs = Logs(condition);
    EXPECT_EQ(logs.total, 7);
    ASSERT_EQ(logs.alarmLogList.size(), 2U);
    EXPECT_EQ(logs.alarmLogList[0].alarmTime, "2024-01-01T08:02:00+00:00");
    EXPECT_EQ(logs.alarmLogList[0].description.size(), 1000U);
}

class Restless : public Building {
protected:
    Restless() : Building(6) {}
};

TEST_F(Restless, AlarmsHappenAtTheirRateAndCeaseWithTheGuard)
{
    EXPECT_EQ(Logs().total, 0);
    now += 60000;
    const int first = Logs().total;
    EXPECT_GE(first, 3);
    EXPECT_LE(first, 6) << "zones that are not armed are silent";
    protocol::AlarmLogCondition motion;
    motion.alarmTypeList = {"motion"};
    motion.withPicture = true;
    EXPECT_GT(Logs(motion).total, 0);
    protocol::DeviceGuard guard;
    protocol::DeviceGuardStateListData devices;
    ASSERT_TRUE(CGetDeviceGuards::request(devices));
    for (const protocol::DeviceGuardState& each : devices.deviceGuardStateList) {
        guard.deviceGuidList.push_back(each.deviceGuid);
    }
    protocol::GuardResultListData result;
    ASSERT_TRUE(CModifyDeviceGuards::request(result, guard));
    ASSERT_EQ(result.guardResultList.size(), devices.deviceGuardStateList.size());
    EXPECT_EQ(result.guardResultList[13].resultCode, 40) << "is offline";
    now += 60000;
    EXPECT_EQ(Logs().total, first);
}

} // namespace
