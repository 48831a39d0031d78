#pragma once

#include "protocol/DeviceManagement/Device.h"

// Longer work: analysis tasks of devices with their rules, upgrades, applications on devices, synchronisation of
// components, stream media servers.

namespace protocol {

// ---- Analysis tasks ----

/// A point in a picture.
struct NEXWIRE_API RulePoint : IReturnData {
    double x = 0; ///< Part of the picture's width, from the left.
    double y = 0; ///< Part of the picture's height, from the top.
    NEXWIRE_JSON
};

/// What a task watches for.
struct NEXWIRE_API TaskRuleInfo : IReturnData {
    std::string ruleGuid;
    std::string name;
    std::int32_t ruleNo = 0; ///< From 1.
    std::string ruleType;    ///< For example: "lineCrossing", "intrusion", "loitering", "objectLeft", "faceDetection".
    bool enable = false;
    std::int32_t sensitivity = 0;     ///< 0 to 100 %.
    std::int32_t duration = 0;        ///< Of the event before it is reported, s.
    std::vector<RulePoint> pointList; ///< Line or area of the rule.
    NEXWIRE_JSON
};

struct NEXWIRE_API TaskRuleInfoData : IReturnData {
    TaskRuleInfo taskRuleInfo;
    NEXWIRE_JSON
};

/// An analysis that runs on a device.
struct NEXWIRE_API TaskInfo : IReturnData {
    std::string taskGuid;
    std::string deviceGuid; ///< Device that it runs on.
    std::string name;
    std::string taskType;             ///< For example: "behaviour", "face", "vehicle", "people counting".
    std::int32_t state = 0;           ///< One of: 0 stopped, 1 running, 2 failed, 3 done.
    std::int32_t progress = 0;        ///< Of a task over recordings. 0 to 100 %.
    std::string relatedServer;        ///< GUID of the stream media server that feeds it; empty: the device.
    std::int32_t relateChannelNo = 0; ///< Channel that it watches, from 1; spelled so on the wire.
    std::string beginTime;            ///< ISO 8601.
    std::string endTime;              ///< ISO 8601; empty: without end.
    std::vector<TaskRuleInfo> taskRuleInfoList;
    NEXWIRE_JSON
};

struct NEXWIRE_API TaskInfoData : IReturnData {
    TaskInfo taskInfo;
    NEXWIRE_JSON
};

/// What is wanted of a task.
struct NEXWIRE_API TaskQueryReq : IInboundData {
    bool refresh = false;  ///< Ask the device again instead of answering from memory.
    bool needRules = true; ///< With its rules.
    NEXWIRE_JSON
};

struct NEXWIRE_API TaskAndDeviceInfoRsp : IReturnData {
    TaskInfo taskInfo;
    DeviceResponse deviceInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API TaskAndDeviceInfoRspData : IReturnData {
    TaskAndDeviceInfoRsp taskAndDeviceInfoRsp;
    NEXWIRE_JSON
};

/// A change of a task; one member at a time.
struct NEXWIRE_API TaskModification : IInboundData {
    std::string relatedServer;        ///< GUID of a stream media server; empty: the device.
    std::int32_t relateChannelNo = 0; ///< Channel that it watches, from 1; spelled so on the wire.
    NEXWIRE_JSON
};

// ---- Upgrade ----

/// How devices are upgraded.
struct NEXWIRE_API DeviceUpgradeConfig : IInboundData {
    bool autoUpgrade = false;       ///< New firmware goes to devices by itself.
    std::string beginTime;          ///< "HH:MM:SS"; devices are only upgraded from here ...
    std::string endTime;            ///< ... to here.
    std::int32_t concurrentNum = 1; ///< Devices at a time. 1 to 32.
    NEXWIRE_JSON
};

struct NEXWIRE_API DeviceUpgradeConfigData : IReturnData {
    DeviceUpgradeConfig deviceUpgradeConfig;
    NEXWIRE_JSON
};

// ---- Applications on devices ----

/// A package of an application that the platform sends to devices.
struct NEXWIRE_API AppTask : IInboundData {
    std::string taskGuid; ///< Empty in the request.
    std::string appName;
    std::string appVersion;
    std::string filePath;      ///< Where the platform has the package.
    std::int64_t fileSize = 0; ///< Bytes.
    std::vector<std::string> deviceGuidList;
    std::int32_t progress = 0; ///< 0 to 100 %.
    NEXWIRE_JSON
};

/// An application of a device.
struct NEXWIRE_API AppInfo : IReturnData {
    std::string appId;
    std::string appName;
    std::string appVersion;
    std::int32_t state = 0;       ///< One of: 0 stopped, 1 running, 2 installing, 3 failed.
    std::int32_t memoryUsage = 0; ///< kB.
    std::string installTime;      ///< ISO 8601.
    std::string licenceEndTime;   ///< ISO 8601; empty: without limit.
    NEXWIRE_JSON
};

struct NEXWIRE_API AppList : IReturnData {
    std::vector<AppInfo> appInfoList;
    NEXWIRE_JSON
};

/// What an application of a device is to do; the answer tells its state then.
struct NEXWIRE_API AppManage : IInboundData {
    std::string appId;
    std::string action;     ///< One of: "start", "stop", "remove", "query".
    std::int32_t state = 0; ///< One of: 0 stopped, 1 running, 2 installing, 3 failed.
    NEXWIRE_JSON
};

// ---- Components ----

/// What the platform's components tell each other anew.
struct NEXWIRE_API SynchronousReq : IInboundData {
    std::vector<std::string> deviceGuidList; ///< Empty: all.
    std::string syncType;                    ///< For example: "device", "channel", "door", "time".
    bool force = false;                      ///< Also what has not changed.
    NEXWIRE_JSON
};

// ---- Stream media servers ----

/// A server that hands streams of devices out.
struct NEXWIRE_API SmsAddInfo : IInboundData {
    std::string name;            ///< Up to 64 characters.
    std::string address;         ///< IP address or host name.
    std::int32_t port = 0;       ///< Of its service. 1 to 65535.
    std::int32_t streamPort = 0; ///< Of its streams. 1 to 65535.
    std::string username;
    std::string password;          ///< Sent as it is given.
    std::int32_t maxStreamNum = 0; ///< Streams at a time; 0 no limit.
    NEXWIRE_JSON
};

struct NEXWIRE_API SmsResult : IReturnData {
    std::string smsGuid;
    std::string address;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API SmsResultListData : IReturnData {
    std::vector<SmsResult> smsResultList;
    NEXWIRE_JSON
};

/// A stream media server as the platform keeps it.
struct NEXWIRE_API SmsResponse : IReturnData {
    std::string smsGuid;
    std::string name;
    std::string address;
    std::int32_t port = 0;
    std::int32_t streamPort = 0;
    std::string username;
    std::int32_t maxStreamNum = 0; ///< Streams at a time; 0 no limit.
    std::int32_t streamNum = 0;    ///< Streams at the moment.
    std::int32_t onlineState = 0;  ///< One of: 0 offline, 1 online, 2 not asked yet.
    std::string softwareVersion;
    NEXWIRE_JSON
};

struct NEXWIRE_API SmsResponseData : IReturnData {
    SmsResponse smsResponse;
    NEXWIRE_JSON
};

struct NEXWIRE_API SmsResponseListData : IReturnData {
    std::vector<SmsResponse> smsResponseList;
    NEXWIRE_JSON
};

struct NEXWIRE_API SmsGuidList : IInboundData {
    std::vector<std::string> smsGuidList;
    NEXWIRE_JSON
};

/// A stream media server as it is to be.
struct NEXWIRE_API SmsModificationReq : IInboundData {
    std::string name;            ///< Up to 64 characters.
    std::string address;         ///< IP address or host name.
    std::int32_t port = 0;       ///< Of its service. 1 to 65535.
    std::int32_t streamPort = 0; ///< Of its streams. 1 to 65535.
    std::string username;
    std::string password;          ///< Sent as it is given; empty: as it was.
    std::int32_t maxStreamNum = 0; ///< Streams at a time; 0 no limit.
    NEXWIRE_JSON
};

} // namespace protocol
