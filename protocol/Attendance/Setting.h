#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

// Durations are whole minutes, times of day "HH:MM" in the site's local time, dates "YYYY-MM-DD".

/// How many minutes make late, early and absent, for all who follow no shift of their own.
struct NEXWIRE_API BasicRule : IInboundData {
    std::int32_t weekStartDay = 1;              ///< First day of a week in reports. 1 to 7, Monday is 1.
    std::int32_t monthStartDay = 1;             ///< First day of an attendance month. 1 to 28.
    std::int32_t lateAllowDuration = 0;         ///< So late without being late. 0 to 1440 min.
    std::int32_t earlyAllowDuration = 0;        ///< So early without leaving early. 0 to 1440 min.
    std::int32_t lateToAbsenceDuration = 60;    ///< From here on late counts as absent. 0 to 1440 min.
    std::int32_t earlyToAbsenceDuration = 60;   ///< The same for leaving early. 0 to 1440 min.
    std::string noStartClockStatus = "absence"; ///< Without a record at the start. One of: "absence", "late", "normal".
    std::int32_t noStartClockDuration = 60;     ///< Minutes late where that is "late". 0 to 1440 min.
    std::string noEndClockStatus = "absence";   ///< Without a record at the end. One of: "absence", "early", "normal".
    std::int32_t noEndClockDuration = 60;       ///< Minutes early where that is "early". 0 to 1440 min.
    std::int32_t validClockInterval = 1;        ///< Records closer together count once. 0 to 60 min.
    bool weekendAsOvertime = false;             ///< Work on days without a shift is overtime.
    std::string autoCalculateTime = "04:00";    ///< When the platform calculates the day before.
    NEXWIRE_JSON
};

struct NEXWIRE_API BasicRuleResult : IReturnData {
    BasicRule basicRule;
    NEXWIRE_JSON
};

/// A point where clocking in or out counts.
struct NEXWIRE_API checkpoint : IInboundData { // Spelled in lower case.
    std::string checkpointID;                  ///< Given by the server; empty in a new one.
    std::string deviceGuid;                    ///< Controller or terminal.
    std::string objectGuid;                    ///< Door or card reader of the device.
    std::string objectName;                    ///< Up to 64 characters.
    std::int32_t objectType = 0;               ///< One of: 0 door, 1 card reader.
    std::int32_t purpose = 0; ///< What a record here means. One of: 0 start and end, 1 start only, 2 end only.
    NEXWIRE_JSON
};

struct NEXWIRE_API CheckpointResult : IReturnData {
    std::string checkpointID;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    NEXWIRE_JSON
};

struct NEXWIRE_API CheckpointResultData : IReturnData {
    CheckpointResult checkpointResult;
    NEXWIRE_JSON
};

/// Which check points are asked for; empty members do not narrow.
struct NEXWIRE_API CheckPointCondition : IInboundData {
    std::string deviceGuid;
    std::string objectName;    ///< Any part of the name.
    std::int32_t pageNo = 1;   ///< 1 to 100000.
    std::int32_t pageSize = 0; ///< 0 to 1000. 0 gives all.
    NEXWIRE_JSON
};

struct NEXWIRE_API CheckPointQueryResult : IReturnData {
    std::int32_t total = 0; ///< Of all pages.
    std::vector<checkpoint> checkpointList;
    NEXWIRE_JSON
};

struct NEXWIRE_API CheckPointDeleteCondition : IInboundData {
    std::vector<std::string> checkpointIDList;
    NEXWIRE_JSON
};

/// What became of one record of a list, by its identifier.
struct NEXWIRE_API AttendanceItemResult : IReturnData {
    std::string id;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API CheckpointDeleteResultData : IReturnData {
    std::vector<AttendanceItemResult> checkpointDeleteResultList;
    NEXWIRE_JSON
};

/// Days on which nobody is expected.
struct NEXWIRE_API Holiday : IInboundData {
    std::string holidayID;   ///< Given by the server; empty in a new one.
    std::string holidayName; ///< Up to 32 characters.
    std::string startDate;
    std::string endDate;            ///< Last day of it.
    bool repeatYearly = false;      ///< Comes back on the same dates every year.
    std::int32_t overtimeLevel = 3; ///< Level that work on these days counts as. One of: 1, 2, 3.
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API HolidayResult : IReturnData {
    std::string holidayID;
    NEXWIRE_JSON
};

/// Which holidays are asked for; empty members do not narrow.
struct NEXWIRE_API HolidayCondition : IInboundData {
    std::string holidayName; ///< Any part of the name.
    std::string startDate;   ///< Holidays that touch the days from here on.
    std::string endDate;
    std::int32_t pageNo = 1;   ///< 1 to 100000.
    std::int32_t pageSize = 0; ///< 0 to 1000. 0 gives all.
    NEXWIRE_JSON
};

struct NEXWIRE_API HolidayQueryResult : IReturnData {
    std::int32_t total = 0; ///< Of all pages.
    std::vector<Holiday> holidayList;
    NEXWIRE_JSON
};

struct NEXWIRE_API HolidayInfoReslultData : IReturnData { // Spelled so.
    Holiday holidayInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API HolidayDeleteCondition : IInboundData {
    std::vector<std::string> holidayIDList;
    NEXWIRE_JSON
};

struct NEXWIRE_API HolidayDeleteResultData : IReturnData {
    std::vector<AttendanceItemResult> holidayDeleteResultList;
    NEXWIRE_JSON
};

/// When extra work counts, and as which level.
struct NEXWIRE_API OvertimeRule : IInboundData {
    std::string dayType; ///< One of: "workday", "weekend", "holiday".
    bool enabled = true;
    std::int32_t level = 1;         ///< One of: 1, 2, 3.
    std::int32_t leastDuration = 0; ///< Shorter extra work does not count. 0 to 1440 min.
    std::int32_t mostDuration = 0;  ///< Longer extra work is cut. 0 to 1440 min. 0 is no limit.
    NEXWIRE_JSON
};

struct NEXWIRE_API OvertimeConfig : IInboundData {
    std::string overtimeSource = "clock"; ///< One of: "clock" as recorded, "approval" only what was approved.
    std::int32_t startAfter = 0;          ///< Overtime begins so long after the end of work. 0 to 1440 min.
    std::vector<OvertimeRule> overtimeRuleList;
    NEXWIRE_JSON
};

struct NEXWIRE_API OvertimeConfigResult : IReturnData {
    OvertimeConfig overtimeConfig;
    NEXWIRE_JSON
};

/// One column of a report.
struct NEXWIRE_API ReportColumn : IInboundData {
    std::string columnKey;  ///< Member of a calculation result, as "lateDuration".
    std::string columnName; ///< Heading. Up to 64 characters.
    bool visible = true;
    NEXWIRE_JSON
};

/// How reports look.
struct NEXWIRE_API ReportConfig : IInboundData {
    std::string companyName;                    ///< Heading of every report.
    std::string dateFormat = "YYYY-MM-DD";      ///< One of: "YYYY-MM-DD", "DD-MM-YYYY", "MM-DD-YYYY".
    std::string timeFormat = "HH:MM";           ///< One of: "HH:MM", "HH:MM:SS".
    std::string durationUnit = "minute";        ///< One of: "minute", "hour", "day".
    std::vector<ReportColumn> reportColumnList; ///< From left to right.
    NEXWIRE_JSON
};

struct NEXWIRE_API ReportConfigResultData : IReturnData {
    ReportConfig reportConfig;
    NEXWIRE_JSON
};

/// A kind of leave.
struct NEXWIRE_API VacateMainType : IInboundData {
    std::string mainTypeID;   ///< Given by the server; empty in a new one.
    std::string mainTypeName; ///< Up to 32 characters.
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API VacateMainInfoData : IReturnData {
    std::vector<VacateMainType> vacateMainInfoList;
    NEXWIRE_JSON
};

/// Kinds of leave to remove; one that others stand below is refused.
struct NEXWIRE_API VacateMainTypeIDInfo : IInboundData {
    std::vector<std::string> mainTypeIDList;
    NEXWIRE_JSON
};

/// A kind of leave below another one; this is what persons are given.
struct NEXWIRE_API VacateSubTypeInfo : IInboundData {
    std::string subTypeID; ///< Given by the server; empty in a new one.
    std::string mainTypeID;
    std::string subTypeName;        ///< Up to 32 characters.
    std::string unit = "hour";      ///< In which leave is taken. One of: "minute", "hour", "halfDay", "day".
    std::int32_t leastUnits = 1;    ///< Smallest leave, in that unit. 1 to 1440.
    std::int32_t roundMode = 0;     ///< One of: 0 down, 1 to the nearest, 2 up.
    bool countAsAttendance = false; ///< Counts as time at work.
    bool paid = true;
    NEXWIRE_JSON
};

struct NEXWIRE_API VacateSubCondition : IInboundData {
    std::string mainTypeID; ///< Empty: all.
    NEXWIRE_JSON
};

/// A kind of leave with all below it.
struct NEXWIRE_API VacateMainContainsVacateSubInfo : IReturnData {
    std::string mainTypeID;
    std::string mainTypeName;
    std::vector<VacateSubTypeInfo> vacateSubInfoList;
    NEXWIRE_JSON
};

struct NEXWIRE_API VacateMainContainsVacateSubInfoData : IReturnData {
    std::vector<VacateMainContainsVacateSubInfo> vacateMainContainsVacateSubInfoList;
    NEXWIRE_JSON
};

/// The kind of leave to remove.
struct NEXWIRE_API VacateSubTypeIDInfo : IInboundData {
    std::string subTypeID;
    NEXWIRE_JSON
};

/// How a duration is rounded in results.
struct NEXWIRE_API Precision : IInboundData {
    std::string item;            ///< One of: "late", "early", "absence", "work", "overtime", "vocation".
    std::string unit = "minute"; ///< One of: "minute", "hour", "day".
    double leastUnit = 1;        ///< Step that results are rounded to, in that unit, as 0.5.
    std::int32_t roundMode = 0;  ///< One of: 0 down, 1 to the nearest, 2 up.
    NEXWIRE_JSON
};

struct NEXWIRE_API PrecisionList : IInboundData {
    std::vector<Precision> precisionList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PrecisionResultData : IReturnData {
    std::vector<Precision> precisionList;
    NEXWIRE_JSON
};

/// One column of an export of raw records.
struct NEXWIRE_API CustomExportColumn : IInboundData {
    std::string columnKey;     ///< One of: "personnelCode", "personnelName", "orgName", "cardNo", "clockTime",
                               ///< "deviceName", "blank".
    std::string columnName;    ///< Heading. Up to 64 characters.
    std::int32_t width = 0;    ///< Characters; shorter texts are filled up. 0 to 255. 0 is as long as it is.
    std::string fillCharacter; ///< One character; empty is a blank.
    bool fillLeft = false;     ///< Filled up in front instead of behind.
    std::string timeFormat;    ///< For times, as "YYYYMMDDHHMMSS"; empty for the report's.
    NEXWIRE_JSON
};

/// How raw records are exported for other systems.
struct NEXWIRE_API CustomExportConfig : IInboundData {
    std::string fileType = "csv"; ///< One of: "csv", "txt", "xlsx".
    std::string separator = ",";  ///< Between columns. Up to 4 characters.
    bool withHeading = true;
    std::string sortBy = "time";                            ///< One of: "time", "person".
    std::vector<CustomExportColumn> customExportColumnList; ///< From left to right.
    NEXWIRE_JSON
};

struct NEXWIRE_API CustomExportConfigData : IReturnData {
    CustomExportConfig customExportConfig;
    NEXWIRE_JSON
};

} // namespace protocol
