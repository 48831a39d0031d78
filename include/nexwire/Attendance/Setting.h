#pragma once

#include "protocol/Attendance/Setting.h"

namespace nexwire {

// Rules of attendance.
//
// All functions block until the answer is there and may be called from any thread. They return true when the answer
// was a readable envelope with the number 0; any other code becomes the last error. A result is untouched on false.

/// The rule for all who follow no shift of their own.
class NEXWIRE_API BasicConfigComm {
public:
    static bool getInfo(protocol::BasicRuleResult& result);
    static bool setInfo(const protocol::BasicRule& param);
};

/// Points where clocking in or out counts.
class NEXWIRE_API CheckpointConfigComm {
public:
    static bool addInfo(protocol::CheckpointResultData& result, const protocol::checkpoint& param);
    static bool getInfo(protocol::CheckPointQueryResult& result, const protocol::CheckPointCondition& condition);
    /// One result per check point.
    static bool removeInfo(protocol::CheckpointDeleteResultData& result,
                           const protocol::CheckPointDeleteCondition& param);
};

/// Holidays.
class NEXWIRE_API HolidayConfigComm {
public:
    static bool addInfo(protocol::HolidayResult& result, const protocol::Holiday& param);
    static bool getInfo(protocol::HolidayQueryResult& result, const protocol::HolidayCondition& condition);
    /// @param suffix  follows the path as it stands, nothing is put between: "/" and an identifier for one holiday.
    static bool getInfo(protocol::HolidayInfoReslultData& result, const std::string& suffix);
    /// One result per holiday.
    static bool removeInfo(protocol::HolidayDeleteResultData& result, const protocol::HolidayDeleteCondition& param);
};

/// Rules for overtime.
class NEXWIRE_API OvertimeConfigComm {
public:
    static bool getInfo(protocol::OvertimeConfigResult& result);
    static bool setInfo(const protocol::OvertimeConfig& param);
};

/// How reports look.
class NEXWIRE_API ReportConfigComm {
public:
    static bool getInfo(protocol::ReportConfigResultData& result);
    static bool setInfo(const protocol::ReportConfig& param);
};

/// Kinds of leave, on two levels.
class NEXWIRE_API VacateConfigComm {
public:
    /// @param type  sent; on success what the answer says of it has replaced its members: it has its identifier then.
    static bool addMainInfo(protocol::VacateMainType& type);
    static bool getMainInfos(protocol::VacateMainInfoData& result);
    static bool removeMain(const protocol::VacateMainTypeIDInfo& param);
    static bool addSubInfo(const protocol::VacateSubTypeInfo& param);
    static bool getSubInfo(protocol::VacateMainContainsVacateSubInfoData& result,
                           const protocol::VacateSubCondition& condition);
    static bool removeSub(const std::string& subTypeID);
};

/// How durations are rounded.
class NEXWIRE_API PrecisionConfigComm {
public:
    static bool getInfo(protocol::PrecisionResultData& result);
    static bool setInfo(const protocol::PrecisionList& param);
};

/// How raw records are exported for other systems.
class NEXWIRE_API CustomExportConfigComm {
public:
    static bool getCustomExportConfig(protocol::CustomExportConfigData& result);
    static bool setCustomExportConfig(const protocol::CustomExportConfig& param);
};

} // namespace nexwire
