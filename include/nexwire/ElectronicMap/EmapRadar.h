#pragma once

#include "protocol/ElectronicMap/EmapRadar.h"
#include "protocol/PassThrough/PassThrough.h"

namespace nexwire {

/// Security radars that are shown on maps, reached through the platform.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was a readable envelope, whatever its code; reads also need the radar's answer in it, and leave `output` untouched
/// on false.
class NEXWIRE_API CEmapRadarElementComm {
public:
    static bool getDetectInfoCfg(protocol::DetectInfoData& output, const std::string& deviceGuid);
    static bool getDetectCap(protocol::DetectInfoCapData& output, const std::string& deviceGuid);
    static bool getRadarCap(protocol::RadarCapData& output, const std::string& deviceGuid);

    static bool getRadarZoneMode(protocol::ZoneDrawingMode& output, const std::string& deviceGuid);
    static bool setRadarZoneMode(const protocol::ZoneDrawingMode& input, const std::string& deviceGuid);
    static bool getRadarZoneInfo(protocol::ZoneListData& output, const std::string& deviceGuid);
    /// Makes a zone or replaces it. @param zoneNo  its number on the radar.
    static bool setRadarZoneInfo(const protocol::ZoneIn& input, const std::string& deviceGuid, int zoneNo);

    /// @param subSys  number of the subsystem, as decimal text; empty: all.
    static bool setArmRadar(const std::string& deviceGuid, const std::string& subSys);
    static bool setDisarmRadar(const std::string& deviceGuid, const std::string& subSys);
    /// Which subsystems are armed.
    static bool getRadarArmStatus(protocol::SubSysListData& output, const std::string& deviceGuid);

    static bool getFalseAlarmAreaInfo(protocol::VirtualSceneryMarkCfgData& output, const std::string& deviceGuid);
    static bool setFalseAlarmAreaInfo(const protocol::VirtualSceneryMarkCfg& input, const std::string& deviceGuid);
    /// Reads what areas of false alarms may be; its name says set all the same.
    static bool setFalseAlarmAreaCap(protocol::VirtualSceneryMarkCfgDataCap& output, const std::string& deviceGuid);

    static bool getLandformsLearningCap(protocol::LandformsLearningDataCap& output, const std::string& deviceGuid);
    static bool getLandformsLearning(protocol::LandformsLearningDataRe& output, const std::string& deviceGuid,
                                     int zoneNo);
    static bool setRadarDisplayMode(const protocol::DisplayMode& input, const std::string& deviceGuid);

    /// The camera that looks into a zone.
    static bool getPresetPointSetting(protocol::VideoLinkageDataRe& output, const std::string& deviceGuid, int zoneNo);
    static bool setPresetPointSetting(const protocol::VideoLinkage& input, const std::string& deviceGuid, int zoneNo);
    /// Only switches the camera on or off; the same command, told apart by its structure.
    static bool setPresetPointEnable(const protocol::VideoLinkageEnable& input, const std::string& deviceGuid,
                                     int zoneNo);

    static bool getLearningEnvironment(protocol::EnvironmentLearningDataRe& output, const std::string& deviceGuid);
    static bool getLearningEnvironmentCap(protocol::EnvironmentManualLearningCapData& output,
                                          const std::string& deviceGuid);
    static bool getLearningEnviStatus(protocol::LearningStatusData& output, const std::string& deviceGuid);

    static bool getAlarmLineCap(protocol::AlarmLineCapData& output, const std::string& deviceGuid);
    static bool getAlarmLineRuleCap(protocol::AlarmRuleCapData& output, const std::string& deviceGuid);

    /// Sends a request to the radar's HTTP interface and hands out what it answers.
    static bool kestrelRequest(protocol::KestrelPassThroughRspData& result, const std::string& deviceGuid,
                               const protocol::KestrelPassThroughReq& request);
    /// What the radar sees at the moment, echo by echo.
    static bool getPointCloudStruct(protocol::PointCloudStruct& output, const std::string& deviceGuid);
};

} // namespace nexwire
