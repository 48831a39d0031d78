#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

// Durations are whole minutes, times of day "HH:MM" in the site's local time. A time that ends before it begins ends on
// the next day.

/// A rest within a period.
struct NEXWIRE_API AddRestPeriod : IInboundData {
    std::string restPeriodName; ///< Up to 32 characters.
    std::string startTime;
    std::string endTime;
    std::int32_t deductMode = 0;         ///< One of: 0 the whole time is taken off, 1 what was clocked, 2 nothing.
    std::int32_t lateAllowDuration = 0;  ///< Back so late without being late. 0 to 240 min.
    std::int32_t earlyAllowDuration = 0; ///< Gone so early without leaving early. 0 to 240 min.
    bool needClock = false;              ///< Persons clock out and in around it.
    NEXWIRE_JSON
};

struct NEXWIRE_API RestPeriod : IReturnData {
    std::string restPeriodID;
    AddRestPeriod restPeriodInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API RestPeriodListData : IReturnData {
    std::vector<RestPeriod> restPeriodList;
    NEXWIRE_JSON
};

struct NEXWIRE_API GetRestPeriodIDData : IReturnData {
    RestPeriod getRestPeriodID;
    NEXWIRE_JSON
};

struct NEXWIRE_API RestPeriodConfigResult : IReturnData {
    std::string restPeriodID;
    NEXWIRE_JSON
};

struct NEXWIRE_API RestPeriodConfigResultData : IReturnData {
    RestPeriodConfigResult restPeriodConfigResult;
    NEXWIRE_JSON
};

struct NEXWIRE_API RestPeriodConfigDelete : IInboundData {
    std::vector<std::string> restPeriodIDList;
    NEXWIRE_JSON
};

/// What became of one period, rest period or shift.
struct NEXWIRE_API PeriodDeleteResult : IReturnData {
    std::string id;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number; one in use is refused.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API RestPeriodConfigDeleteResultData : IReturnData {
    std::vector<PeriodDeleteResult> restPeriodConfigDeleteResultList;
    NEXWIRE_JSON
};

/// A stretch of work within a shift, with the windows in which clocking in and out counts for it.
struct NEXWIRE_API AddPeriod : IInboundData {
    std::string periodName;      ///< Up to 32 characters.
    std::int32_t periodType = 0; ///< One of: 0 fixed times, 1 flexible.
    std::string startTime;
    std::string endTime;
    std::string startClockBegin; ///< From here on a record counts as clocking in; empty: 60 minutes before.
    std::string startClockEnd;   ///< Empty: the end of the period.
    std::string endClockBegin;   ///< From here on a record counts as clocking out; empty: the start of the period.
    std::string endClockEnd;     ///< Empty: 240 minutes after.
    bool needStartClock = true;
    bool needEndClock = true;
    std::int32_t lateAllowDuration = 0;  ///< So late without being late. 0 to 1440 min.
    std::int32_t earlyAllowDuration = 0; ///< So early without leaving early. 0 to 1440 min.
    /// From here on late counts as absent. 0 to 1440 min. 0 is the basic rule's.
    std::int32_t lateToAbsenceDuration = 0;
    std::int32_t earlyToAbsenceDuration = 0; ///< The same for leaving early. 0 to 1440 min. 0 is the basic rule's.
    std::int32_t flexibleDuration = 0; ///< Coming later is made up for by leaving later, up to here. 0 to 480 min.
    std::int32_t workDuration = 0;     ///< To be worked where times are flexible. 0 to 1440 min.
    std::vector<std::string> restPeriodIDList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PeriodConfigRespone : IReturnData { // Spelled so.
    std::string periodID;
    AddPeriod periodInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API PeriodConfigResponeListData : IReturnData {
    std::vector<PeriodConfigRespone> periodConfigResponeList;
    NEXWIRE_JSON
};

struct NEXWIRE_API GetPeriodData : IReturnData {
    PeriodConfigRespone getPeriod;
    NEXWIRE_JSON
};

struct NEXWIRE_API PeriodConfigResult : IReturnData {
    std::string periodID;
    NEXWIRE_JSON
};

struct NEXWIRE_API PeriodConfigResultData : IReturnData {
    PeriodConfigResult periodConfigResult;
    NEXWIRE_JSON
};

struct NEXWIRE_API PeriodConfigDelete : IInboundData {
    std::vector<std::string> periodIDList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PeriodConfigDeleteResultData : IReturnData {
    std::vector<PeriodDeleteResult> periodConfigDeleteResultList;
    NEXWIRE_JSON
};

/// The periods of one day of a shift.
struct NEXWIRE_API ShiftDay : IInboundData {
    std::int32_t dayNo = 1;                ///< Day of the cycle. 1 to 31; in a week Monday is 1.
    std::vector<std::string> periodIDList; ///< Empty: a free day.
    NEXWIRE_JSON
};

/// A shift: which periods are worked on which days of a cycle.
struct NEXWIRE_API ShiftInfo : IInboundData {
    std::string shiftName;          ///< Up to 32 characters.
    std::string cycleUnit = "week"; ///< One of: "day", "week", "month".
    std::int32_t cycleCount = 1;    ///< Units until it begins anew. 1 to 31.
    bool holidayFree = true;        ///< Holidays are free days.
    std::vector<ShiftDay> shiftDayList;
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API ShiftQueryCondition : IInboundData {
    std::string shiftName;     ///< Any part of the name; empty: all.
    bool needDetail = true;    ///< False leaves the days out.
    std::int32_t pageNo = 1;   ///< 1 to 100000.
    std::int32_t pageSize = 0; ///< 0 to 1000. 0 gives all.
    NEXWIRE_JSON
};

struct NEXWIRE_API ShiftResponse : IReturnData {
    std::string shiftID;
    ShiftInfo shiftInfo;
    bool isUsed = false; ///< At least one arrangement follows it.
    NEXWIRE_JSON
};

struct NEXWIRE_API ShiftResponseListData : IReturnData {
    std::int32_t total = 0; ///< Of all pages.
    std::vector<ShiftResponse> shiftResponseList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ShiftResult : IReturnData {
    std::string shiftID;
    NEXWIRE_JSON
};

/// Shifts to remove.
struct NEXWIRE_API ShiftList : IInboundData {
    std::vector<std::string> shiftIDList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ShiftResultListData : IReturnData {
    std::vector<PeriodDeleteResult> shiftResultList;
    NEXWIRE_JSON
};

} // namespace protocol
