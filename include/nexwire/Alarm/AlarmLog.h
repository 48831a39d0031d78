#pragma once

#include "protocol/Alarm/AlarmLog.h"

// The log of alarms. All functions block until the answer is there and may be called from any thread. They return true
// when the answer was a readable envelope, whatever its code; a result is untouched on false. Those that fetch pictures
// return true when an answer came, and hand it out byte for byte.

namespace nexwire {

/// Alarms of the log, page by page.
class NEXWIRE_API CGetAlarmLogs {
public:
    static bool request(protocol::AlarmLogResponseDataData& result, const protocol::AlarmLogCondition& condition);
};

/// One alarm with its pictures and what was done about it.
class NEXWIRE_API CGetAlarmLogDetails {
public:
    static bool request(protocol::AlarmLogDetailsData& result, const protocol::AlarmLogDetailQueryCondition& condition);
};

/// Notes what is done about alarms.
class NEXWIRE_API CAddAlarmProcessing {
public:
    static bool request(const protocol::ProcessingAlarmData& processing);
};

/// A picture of an alarm.
class NEXWIRE_API CGetAlarmPicByGUID {
public:
    /// @param picture  the answer, byte for byte.
    static bool request(std::string& picture, const std::string& pictureGuid);
};

/// A picture of a picture storage.
class NEXWIRE_API CGetPicFromPicStorage {
public:
    /// @param picture  the answer, byte for byte.
    static bool request(std::string& picture, const protocol::PicStorageSource& source);
};

/// The same over the route of the platform's own components.
class NEXWIRE_API CInternalCGetPicFromPicStorage {
public:
    /// @param picture  the answer, byte for byte.
    static bool request(std::string& picture, const protocol::PicStorageSource& source);
};

/// Where pictures of alarms are kept.
class NEXWIRE_API CGetAlarmPicSavedPath {
public:
    static bool request(protocol::AlarmPicStorageConfig& result, const protocol::AlarmPicStorageConfigQuery& query);
};

/// Sets where pictures of alarms are kept from now on; those that are there stay.
class NEXWIRE_API CSetAlarmPicSavedPath {
public:
    static bool request(const protocol::AlarmPicStorageConfig& config);
};

} // namespace nexwire
