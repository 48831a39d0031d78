#pragma once

#include "protocol/DeviceCommon.h"

// What security radars are told and asked. A radar sees a sector of ground: positions are metres from the radar, x to
// its right, y straight ahead; angles are degrees from straight ahead, clockwise. Zones, lines, presets and subsystems
// are numbered from 1. Numbers, texts and capability documents follow the habits of all devices.

namespace protocol {

/// A place on the ground before a radar.
struct NEXWIRE_API RadarPoint : IInboundData {
    double x = 0.0; ///< Metres.
    double y = 0.0; ///< Metres.
    NEXWIRE_JSON
};

/// How a radar detects.
struct NEXWIRE_API DetectInfo : IInboundData {
    bool enable = false;
    std::int32_t sensitivity = 50;  ///< 1 to 100.
    std::string scene;              ///< One of: "open", "bushes", "trees", "water".
    std::string targetType;         ///< What is reported. One of: "all", "human", "vehicle".
    double detectRadius = 0.0;      ///< Metres.
    double startAngle = 0.0;        ///< Degrees; left edge of the sector.
    double endAngle = 0.0;          ///< Degrees; right edge of the sector.
    std::int32_t mountHeight = 0;   ///< Centimetres above the ground.
    std::int32_t trackDuration = 0; ///< Seconds that a target has to be seen before it is reported.
    NEXWIRE_JSON
};

struct NEXWIRE_API DetectInfoData : IInboundData {
    DetectInfo detectInfo;
    NEXWIRE_JSON
};

/// What `DetectInfo` may hold on a radar.
struct NEXWIRE_API DetectInfoCap : IInboundData {
    IntRange sensitivity;
    OptionList scene;
    OptionList targetType;
    IntRange detectRadius;
    IntRange startAngle;
    IntRange endAngle;
    IntRange mountHeight;
    IntRange trackDuration;
    NEXWIRE_JSON
};

struct NEXWIRE_API DetectInfoCapData : IInboundData {
    DetectInfoCap detectInfoCap;
    NEXWIRE_JSON
};

/// How the zones of a radar come about.
struct NEXWIRE_API ZoneDrawingMode : IInboundData {
    std::string mode;         ///< One of: "manual" drawn on the map, "walking" walked along on the ground.
    bool keepPosition = true; ///< Zones stay where they are on the map when the radar's view is turned.
    NEXWIRE_JSON
};

/// A zone or trip line of a radar.
struct NEXWIRE_API ZoneIn : IInboundData {
    std::int32_t zoneNo = 0; ///< Number on the radar, from 1.
    std::string zoneName;    ///< Up to 32 characters.
    std::string zoneType;    ///< One of: "detection", "ignored", "line".
    bool enable = false;
    std::int32_t subSysNo = 0;         ///< Subsystem that arms it.
    std::int32_t alarmDelay = 0;       ///< From entering the zone to the alarm, 0 to 300 s.
    std::string direction;             ///< Of a line. One of: "both", "leftToRight", "rightToLeft".
    std::vector<RadarPoint> pointList; ///< Corners in order; two for a line.
    NEXWIRE_JSON
};

/// A zone as the radar has it.
struct NEXWIRE_API RadarZone : IInboundData {
    ZoneIn zoneIn;
    std::string status; ///< One of: "idle", "alarm", "fault".
    NEXWIRE_JSON
};

struct NEXWIRE_API ZoneListData : IInboundData {
    std::vector<RadarZone> zoneList;
    NEXWIRE_JSON
};

/// What a radar can do at all.
struct NEXWIRE_API RadarCap : IInboundData {
    IntRange zoneNo;      ///< Numbers that zones may have.
    IntRange zoneNameLen; ///< Bytes of UTF-8.
    OptionList zoneType;
    IntRange pointNum;   ///< Corners of a zone.
    IntRange alarmDelay; ///< Seconds.
    IntRange subSysNo;
    OptionList drawingMode;
    OptionList displayMode;
    IntRange presetNo; ///< Presets of linked cameras.
    bool isSptVideoLinkage = false;
    bool isSptVirtualSceneryMark = false;
    bool isSptLandformsLearning = false;
    bool isSptEnvironmentLearning = false;
    bool isSptPointCloud = false;
    NEXWIRE_JSON
};

struct NEXWIRE_API RadarCapData : IInboundData {
    RadarCap radarCap;
    NEXWIRE_JSON
};

/// A subsystem: zones that are armed together.
struct NEXWIRE_API RadarSubSys : IInboundData {
    std::int32_t subSysNo = 0;
    std::string name;
    std::string armStatus; ///< One of: "disarmed", "armed", "arming".
    bool alarm = false;    ///< A zone of it is in alarm.
    NEXWIRE_JSON
};

struct NEXWIRE_API SubSysListData : IInboundData {
    std::vector<RadarSubSys> subSysList;
    NEXWIRE_JSON
};

/// An area whose targets are not believed, because something there looks like one.
struct NEXWIRE_API SceneryMark : IInboundData {
    std::int32_t markNo = 0; ///< From 1.
    bool enable = false;
    std::string reason;                ///< One of: "tree", "water", "flag", "fence", "other".
    std::vector<RadarPoint> pointList; ///< Corners in order, at least 3.
    NEXWIRE_JSON
};

/// The areas of false alarms of a radar.
struct NEXWIRE_API VirtualSceneryMarkCfg : IInboundData {
    bool enable = false;
    std::vector<SceneryMark> sceneryMarkList;
    NEXWIRE_JSON
};

struct NEXWIRE_API VirtualSceneryMarkCfgData : IInboundData {
    VirtualSceneryMarkCfg virtualSceneryMarkCfg;
    NEXWIRE_JSON
};

/// What `VirtualSceneryMarkCfg` may hold on a radar.
struct NEXWIRE_API VirtualSceneryMarkCfgCap : IInboundData {
    IntRange markNo;
    IntRange pointNum; ///< Corners of an area.
    OptionList reason;
    NEXWIRE_JSON
};

struct NEXWIRE_API VirtualSceneryMarkCfgDataCap : IInboundData {
    VirtualSceneryMarkCfgCap virtualSceneryMarkCfgCap;
    NEXWIRE_JSON
};

/// Whether and how long a radar learns the shape of the ground.
struct NEXWIRE_API LandformsLearningCap : IInboundData {
    bool isSptLearning = false;
    IntRange duration; ///< Minutes.
    IntRange zoneNo;   ///< Zones it can be done for.
    NEXWIRE_JSON
};

struct NEXWIRE_API LandformsLearningDataCap : IInboundData {
    LandformsLearningCap landformsLearningCap;
    NEXWIRE_JSON
};

/// What a radar has learned of the ground.
struct NEXWIRE_API LandformsLearning : IInboundData {
    std::int32_t zoneNo = 0;
    std::string status;                  ///< One of: "idle", "learning", "done", "failed".
    std::int32_t progress = 0;           ///< 0 to 100 %.
    std::string learnedTime;             ///< When it was done, ISO 8601; empty: never.
    std::vector<RadarPoint> outlineList; ///< Edge of what it can see.
    NEXWIRE_JSON
};

/// The device's own holder; spelled Re.
struct NEXWIRE_API LandformsLearningDataRe : IInboundData {
    LandformsLearning landformsLearning;
    NEXWIRE_JSON
};

/// How a radar reports targets to maps.
struct NEXWIRE_API DisplayMode : IInboundData {
    std::string mode;               ///< One of: "target", "track", "pointCloud".
    std::int32_t trackHoldTime = 0; ///< How long the track of a lost target stays, 0 to 600 s.
    bool showTargetNo = false;
    NEXWIRE_JSON
};

/// A camera that looks where a radar sees something.
struct NEXWIRE_API VideoLinkage : IInboundData {
    std::int32_t zoneNo = 0;
    bool enable = false;
    std::string cameraGuid;
    std::int32_t channelNo = 0; ///< Of the camera, from 1.
    std::int32_t presetNo = 0;  ///< Preset that it turns to; 0: it follows the target.
    std::int32_t dwellTime = 0; ///< How long it stays, 0 to 600 s.
    NEXWIRE_JSON
};

/// Only the switch of it; the radar tells the two apart by what it is sent.
struct NEXWIRE_API VideoLinkageEnable : IInboundData {
    std::int32_t zoneNo = 0;
    bool enable = false;
    NEXWIRE_JSON
};

/// The device's own holder; spelled Re.
struct NEXWIRE_API VideoLinkageDataRe : IInboundData {
    VideoLinkage videoLinkage;
    NEXWIRE_JSON
};

/// How a radar learns what moves around it every day.
struct NEXWIRE_API EnvironmentLearning : IInboundData {
    bool autoLearning = false;
    std::int32_t interval = 0; ///< Hours between two rounds.
    std::int32_t duration = 0; ///< Minutes of a round.
    std::string lastLearnTime; ///< ISO 8601; empty: never.
    NEXWIRE_JSON
};

/// The device's own holder; spelled Re.
struct NEXWIRE_API EnvironmentLearningDataRe : IInboundData {
    EnvironmentLearning environmentLearning;
    NEXWIRE_JSON
};

/// What a radar offers of learning started by hand.
struct NEXWIRE_API EnvironmentManualLearningCap : IInboundData {
    bool isSptManualLearning = false;
    bool isSptAutoLearning = false;
    IntRange interval; ///< Hours.
    IntRange duration; ///< Minutes.
    NEXWIRE_JSON
};

struct NEXWIRE_API EnvironmentManualLearningCapData : IInboundData {
    EnvironmentManualLearningCap environmentManualLearningCap;
    NEXWIRE_JSON
};

/// How far learning has come.
struct NEXWIRE_API LearningStatus : IInboundData {
    std::string status;         ///< One of: "idle", "learning", "done", "failed".
    std::int32_t progress = 0;  ///< 0 to 100 %.
    std::int32_t remaining = 0; ///< Seconds; 0 when it does not learn.
    NEXWIRE_JSON
};

struct NEXWIRE_API LearningStatusData : IInboundData {
    LearningStatus learningStatus;
    NEXWIRE_JSON
};

/// What trip lines may be on a radar.
struct NEXWIRE_API AlarmLineCap : IInboundData {
    IntRange lineNo;
    IntRange pointNum;
    IntRange lineNameLen; ///< Bytes of UTF-8.
    IntRange length;      ///< Metres.
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmLineCapData : IInboundData {
    AlarmLineCap alarmLineCap;
    NEXWIRE_JSON
};

/// When crossing a line is an alarm.
struct NEXWIRE_API AlarmRuleCap : IInboundData {
    OptionList direction;
    OptionList targetType;
    IntRange alarmDelay;  ///< Seconds.
    IntRange targetSpeed; ///< Kilometres per hour.
    bool isSptSchedule = false;
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmRuleCapData : IInboundData {
    AlarmRuleCap alarmRuleCap;
    NEXWIRE_JSON
};

/// One echo.
struct NEXWIRE_API CloudPoint : IInboundData {
    double x = 0.0;             ///< Metres.
    double y = 0.0;             ///< Metres.
    double z = 0.0;             ///< Metres above the ground.
    double speed = 0.0;         ///< Metres per second, towards the radar negative.
    std::int32_t intensity = 0; ///< 0 to 255.
    std::int32_t targetNo = 0;  ///< Target that it was counted to; 0 none.
    NEXWIRE_JSON
};

/// What a radar sees at a moment, echo by echo.
struct NEXWIRE_API PointCloudStruct : IInboundData {
    std::string time; ///< ISO 8601.
    std::int32_t frameNo = 0;
    std::vector<CloudPoint> pointList;
    NEXWIRE_JSON
};

} // namespace protocol
