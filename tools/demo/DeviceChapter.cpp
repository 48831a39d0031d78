#include "tools/demo/DeviceChapter.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>

#include <keel/Error.h>
#include <keel/GuidUtil.h>

#include "nexwire/Alarm/AlarmLog.h"
#include "nexwire/DeviceManagement/AlarmPanel.h"
#include "nexwire/DeviceManagement/Channel.h"
#include "nexwire/DeviceManagement/Device.h"
#include "nexwire/DeviceManagement/EventImport.h"
#include "nexwire/DeviceManagement/Resource.h"
#include "nexwire/LastExchange.h"
#include "tools/demo/ChapterBase.h"

namespace nexwire::demo {
namespace {

constexpr const char* kPanel = "AC000000000000000000000000000016";
constexpr const char* kSiren = "C3000000000000000000000000160001";
constexpr int kEvents = 40;

std::filesystem::path Temporary(const std::string& name)
{
    return std::filesystem::temp_directory_path() / (Keel::GuidUtil::CreateGuid() + name);
}

void Pause()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
}

/// Saved by a device while nobody listened; the last line is broken. Padded so that it takes several slices.
std::string Events(const std::string& device)
{
    std::string text = "alarmType,alarmTime,alarmLevel,deviceGuid,sourceName,description\n";
    for (int i = 0; i < kEvents; ++i) {
        text += "motion,2026-03-01T08:" + std::to_string(10 + i) + ":00+00:00," + std::to_string(1 + i % 3) + "," +
                device + ",Yard," + std::string(40000, 'm') + "\n";
    }
    return text + "motion,tomorrow\n";
}

class Chapter : private ChapterBase {
public:
    explicit Chapter(Screen& screen) : ChapterBase(screen) {}

    bool Run() { return AddCamera() && ListChannels() && Preset() && Arm() && Alarm() && Picture() && Upload(); }

private:
    bool AddCamera()
    {
        screen_.Step("Add a camera; user name and password travel encrypted, and the wrong ones first");
        protocol::DeviceAddReq device;
        device.name = "Yard";
        device.deviceType = "camera";
        device.protocolType = "sdk";
        device.addMode = "address";
        device.address = "192.0.2.77";
        device.port = 8000;
        device.username = "admin";
        protocol::DeviceResultListData result;
        for (const char* password : {"guessed", "Device-1234"}) {
            device.password = password;
            if (!CAddDevice::request(result, device) || result.deviceResultList.size() != 1) {
                return Done(false, "CAddDevice");
            }
            const protocol::DeviceResult& one = result.deviceResultList.front();
            if (one.resultCode == 0) {
                screen_.Result("added as " + one.deviceGuid);
            } else {
                screen_.Failure(one.resultMsg);
            }
        }
        camera_ = result.deviceResultList.front().deviceGuid;
        return Done(!camera_.empty(), "the camera is in");
    }

    bool ListChannels()
    {
        screen_.Step("List its channels");
        protocol::ChannelsAndDeviceInfoRspData channels;
        if (!CGetChannelsAndDevComm::request(channels, {}, camera_)) {
            return Done(false, "CGetChannelsAndDevComm");
        }
        for (const protocol::ChannelInfo& channel : channels.channelsAndDeviceInfoRsp.channelInfoList) {
            screen_.Result(channel.channelExtra.name + ", " + channel.cameraType + ", " +
                           std::to_string(channel.channelStreamList.size()) + " streams");
            channel_ = channel.channelGuid;
        }
        return Done(!channel_.empty(), "one channel");
    }

    bool Preset()
    {
        screen_.Step("Save a preset and recall it: the camera is told through the platform");
        protocol::PresetInfo preset;
        preset.name = "Gate";
        std::string guid;
        protocol::PresetInfoListData all;
        const bool saved = CChannelPresetComm::savePreset(guid, preset, camera_, channel_) &&
                           CChannelPresetComm::getAllPresetInfo(all, camera_, channel_) &&
                           all.presetInfoList.size() == 1;
        if (!Done(saved, "preset " + std::to_string(preset.presetNo) + " \"" + preset.name + "\"")) {
            return false;
        }
        protocol::KestrelPassThroughReq order;
        order.url =
            "PUT /KESTREL/PTZCtrl/channels/1/presets/" + std::to_string(all.presetInfoList[0].presetNo) + "/goto";
        protocol::KestrelPassThroughRspData answer;
        return Done(CKestrelPassThroughComm::request(answer, order, camera_) && LastExchange().number == 0,
                    "the camera turns to it");
    }

    bool Arm()
    {
        screen_.Step("Arm a partition of the alarm panel and wait until everybody has left");
        protocol::PartitionControl control;
        control.action = "arm";
        control.partitionNoList = {1};
        protocol::PartitionControlRspData ordered;
        bool done = CPartitionControlComm::request(ordered, control, kPanel);
        protocol::PartitionStatusRspData status;
        std::string state;
        for (int i = 0; done && state != "armed" && i < 50; ++i) {
            done = CGetPartitionStatusComm::request(status, kPanel) &&
                   !status.partitionStatusRsp.partitionStatusList.empty();
            if (done && state != status.partitionStatusRsp.partitionStatusList[0].armState) {
                state = status.partitionStatusRsp.partitionStatusList[0].armState;
                screen_.Result("partition 1 is " + state);
            }
            Pause();
        }
        return Done(state == "armed", "armed");
    }

    bool Alarm()
    {
        screen_.Step("Provoke an alarm: the siren's wire runs by zone 1");
        protocol::AlarmOutputControl siren;
        siren.action = 1;
        siren.duration = 2;
        protocol::AlarmLogCondition condition;
        condition.deviceGuidList = {kPanel};
        protocol::AlarmLogResponseDataData logs;
        if (!CAlarmoutputComm::requestControl(kPanel, kSiren, siren) || !CGetAlarmLogs::request(logs, condition) ||
            logs.alarmLogResponseData.alarmLogList.empty()) {
            return Done(false, "the alarm");
        }
        const protocol::AlarmLog& log = logs.alarmLogResponseData.alarmLogList.front();
        alarm_ = log.alarmLogGuid;
        screen_.Result(log.alarmTime + " level " + std::to_string(log.alarmLevel) + ": " + log.description);
        protocol::ProcessingAlarmData handled;
        handled.alarmLogGuidList = {alarm_};
        handled.processState = 1;
        handled.comment = "the guard is on the way";
        return Done(CAddAlarmProcessing::request(handled), "confirmed");
    }

    bool Picture()
    {
        screen_.Step("Fetch the alarm's picture into a file");
        protocol::AlarmLogDetailQueryCondition condition;
        condition.alarmLogGuid = alarm_;
        protocol::AlarmLogDetailsData details;
        if (!CGetAlarmLogDetails::request(details, condition) || details.alarmLogDetails.alarmLogPictureList.empty()) {
            return Done(false, "CGetAlarmLogDetails");
        }
        const protocol::AlarmLogPicture& about = details.alarmLogDetails.alarmLogPictureList.front();
        std::string picture;
        if (!CGetAlarmPicByGUID::request(picture, about.pictureGuid)) {
            return Done(false, "CGetAlarmPicByGUID");
        }
        const std::filesystem::path file = Temporary(".png");
        std::ofstream(file, std::ios::binary) << picture;
        std::error_code ignored;
        const auto size = std::filesystem::file_size(file, ignored);
        std::filesystem::remove(file, ignored);
        return Done(picture.compare(1, 3, "PNG") == 0 && size == static_cast<std::uintmax_t>(about.pictureSize),
                    std::to_string(size) + " bytes of PNG, as announced");
    }

    bool Upload()
    {
        screen_.Step("Upload a file of events that the camera saved, and have it imported");
        const std::filesystem::path file = Temporary(".csv");
        std::ofstream(file, std::ios::binary) << Events(camera_);
        const auto progress = std::make_shared<int>(0);
        std::string upload;
        std::string answer;
        std::atomic<bool> over{false};
        bool sent = false;
        std::thread sender([&] {
            sent = FileImportEventComm::requestUpload(progress, upload, file.u8string(), answer);
            over = true;
        });
        while (!over) {
            screen_.Progress("upload", Load(*progress));
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        sender.join();
        screen_.Progress("upload", *progress);
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
        std::string task;
        bool done = sent && FileImportEventComm::requestImportFile(task, upload, camera_, "", answer);
        protocol::personnelcommon::SynchronouProgressData job;
        for (int i = 0; done && !job.finished && i < 50; ++i) {
            done = FileImportEventComm::requestImportProgress(job, task, answer);
            screen_.Progress("import", job.progress);
            Pause();
        }
        return Done(done && job.successNum == kEvents && job.failedNum == 1,
                    std::to_string(job.successNum) + " events imported, " + std::to_string(job.failedNum) + " refused");
    }

    std::string camera_;
    std::string channel_;
    std::string alarm_;
};

} // namespace

bool RunDeviceChapter(Screen& screen)
{
    return Chapter(screen).Run();
}

} // namespace nexwire::demo
