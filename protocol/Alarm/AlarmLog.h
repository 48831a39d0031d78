#pragma once

#include "nexwire/JSONStruct.h"

// Alarms that happened: the log, its pictures, what was done about them. Times are ISO 8601 texts,
// "2026-03-01T08:00:00+00:00".

namespace protocol {

// ---- The log ----

/// Which alarms are looked for. What is left empty does not narrow.
struct NEXWIRE_API AlarmLogCondition : IInboundData {
    std::string beginTime;                      ///< Alarms from then on.
    std::string endTime;                        ///< Alarms until then.
    std::vector<std::string> alarmTypeList;     ///< Types as in `AlarmLog`.
    std::vector<std::int32_t> alarmLevelList;   ///< 1 to 3.
    std::vector<std::string> deviceGuidList;    ///< Devices that they came from.
    std::vector<std::string> sourceGuidList;    ///< Channels, inputs, zones, doors that they came from.
    std::vector<std::int32_t> processStateList; ///< 0 to 3.
    std::string processUser;                    ///< Who handled them.
    std::string keyword;                        ///< Part of a description or of a source's name.
    bool withPicture = false;                   ///< Only those with pictures.
    std::string orderBy;                        ///< One of: "" time, "alarmTime", "alarmLevel", "sourceName".
    bool descending = true;                     ///< The last first.
    std::int32_t pageNo = 1;                    ///< From 1.
    std::int32_t pageSize = 0;                  ///< 1 to 1000; 0: all on one page.
    NEXWIRE_JSON
};

/// An alarm of the log.
struct NEXWIRE_API AlarmLog : IReturnData {
    std::string alarmLogGuid;
    std::string alarmType;       ///< For example: "motion", "alarmInput", "zone", "doorForced", "deviceOffline".
    std::int32_t alarmLevel = 1; ///< One of: 1 low, 2 medium, 3 high.
    std::string alarmTime;       ///< When it began.
    std::string endTime;         ///< When it was over; empty while it lasts.
    std::string deviceGuid;
    std::string deviceName;
    std::string sourceGuid; ///< Channel, input, zone or door; empty: the device itself.
    std::string sourceName;
    std::string sourceType; ///< One of: "device", "channel", "alarmInput", "zone", "door".
    std::string description;
    std::int32_t processState = 0; ///< One of: 0 new, 1 confirmed, 2 done, 3 false alarm.
    std::string processUser;       ///< Who handled it last.
    std::string processTime;       ///< When; empty while it is new.
    std::int32_t pictureNum = 0;   ///< Pictures; the details name them.
    NEXWIRE_JSON
};

/// A page of the log.
struct NEXWIRE_API AlarmLogResponseData : IReturnData {
    std::int32_t total = 0; ///< Alarms that the condition selects.
    std::vector<AlarmLog> alarmLogList;
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmLogResponseDataData : IReturnData {
    AlarmLogResponseData alarmLogResponseData;
    NEXWIRE_JSON
};

/// Whose details are asked for.
struct NEXWIRE_API AlarmLogDetailQueryCondition : IInboundData {
    std::string alarmLogGuid;
    bool needPicture = true;    ///< With its pictures.
    bool needProcessing = true; ///< With what was done about it.
    NEXWIRE_JSON
};

/// A picture that was taken at an alarm.
struct NEXWIRE_API AlarmLogPicture : IReturnData {
    std::string pictureGuid; ///< For `CGetAlarmPicByGUID`.
    std::string channelGuid; ///< Channel that took it.
    std::string captureTime;
    std::string storageGuid;      ///< Picture storage and ...
    std::string picUrl;           ///< ... place there, for `CGetPicFromPicStorage`.
    std::int32_t pictureSize = 0; ///< Bytes.
    NEXWIRE_JSON
};

/// What somebody did about an alarm.
struct NEXWIRE_API AlarmProcessing : IReturnData {
    std::string processUser;
    std::string processTime;
    std::int32_t processState = 0; ///< One of: 0 new, 1 confirmed, 2 done, 3 false alarm.
    std::string comment;
    NEXWIRE_JSON
};

/// An alarm with all that is known about it.
struct NEXWIRE_API AlarmLogDetails : IReturnData {
    AlarmLog alarmLog;
    std::vector<AlarmLogPicture> alarmLogPictureList;
    std::vector<AlarmProcessing> alarmProcessingList; ///< In order of time.
    std::string personGuid;                           ///< Person that it is about; empty: none.
    std::string cardNo;                               ///< Card that it is about; empty: none.
    std::string rawEvent;                             ///< What the device said, as it said it.
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmLogDetailsData : IReturnData {
    AlarmLogDetails alarmLogDetails;
    NEXWIRE_JSON
};

/// What is done about alarms.
struct NEXWIRE_API ProcessingAlarmData : IInboundData {
    std::vector<std::string> alarmLogGuidList;
    std::int32_t processState = 1; ///< One of: 1 confirmed, 2 done, 3 false alarm.
    std::string processUser;       ///< Name of the user; empty: who is logged on.
    std::string comment;           ///< Up to 512 characters.
    NEXWIRE_JSON
};

// ---- Pictures ----

/// Whose place of pictures is asked for.
struct NEXWIRE_API AlarmPicStorageConfigQuery : IInboundData {
    std::string storageType; ///< One of: "" any, "local", "picServer", "cloud".
    NEXWIRE_JSON
};

/// Where pictures of alarms are kept.
struct NEXWIRE_API AlarmPicStorageConfig : IInboundData {
    std::string storageType;    ///< One of: "local", "picServer", "cloud".
    std::string filePath;       ///< Folder of the platform's machine; with "local".
    std::string storageGuid;    ///< Picture storage; with the others.
    std::int32_t keepDays = 30; ///< Older pictures are removed. 1 to 3650 d; 0: kept for ever.
    std::int32_t capacity = 0;  ///< Greatest room. 1 to 1048576 GB; 0: no limit.
    bool overwrite = true;      ///< The oldest give way when the room is used up.
    NEXWIRE_JSON
};

/// A picture in a picture storage.
struct NEXWIRE_API PicStorageSource : IInboundData {
    std::string storageGuid; ///< Picture storage; empty: the one of alarms.
    std::string picUrl;      ///< Place there.
    bool thumbnail = false;  ///< A small one is good enough.
    NEXWIRE_JSON
};

/// A picture by its identifier.
struct NEXWIRE_API AlarmPicQuery : IInboundData {
    std::string pictureGuid;
    NEXWIRE_JSON
};

} // namespace protocol
