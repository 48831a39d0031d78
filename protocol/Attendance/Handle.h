#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

// Records by which persons in charge correct attendance: leave, forgotten records, approved overtime. Times are ISO
// 8601 with their offset, dates "YYYY-MM-DD", durations whole minutes.

/// Which month of whom.
struct NEXWIRE_API MonthCondition : IInboundData {
    std::string month; ///< "YYYY-MM".
    std::string personnelID;
    std::string orgID; ///< Instead of a person: all of an organisation.
    NEXWIRE_JSON
};

/// A day of a month.
struct NEXWIRE_API DayDetail : IReturnData {
    std::string date;
    std::string dayType;    ///< One of: "workday", "weekend", "holiday".
    std::string shiftName;  ///< Empty: nobody was expected.
    std::string status;     ///< One of: "normal", "late", "early", "lateAndEarly", "absence", "vocation", "rest".
    std::string startClock; ///< First record that counts, "HH:MM"; empty without one.
    std::string endClock;   ///< Last record that counts, "HH:MM".
    std::int32_t lateDuration = 0;         ///< min.
    std::int32_t earlyDuration = 0;        ///< min.
    std::int32_t absenceDuration = 0;      ///< min.
    std::int32_t workDuration = 0;         ///< min.
    std::int32_t overtimeDuration = 0;     ///< min.
    std::int32_t vocationDuration = 0;     ///< min.
    std::vector<std::string> handleIDList; ///< Corrections of that day.
    NEXWIRE_JSON
};

/// A month day by day; the totals are the sums of the days.
struct NEXWIRE_API MonthDetail : IReturnData {
    std::string month; ///< "YYYY-MM".
    std::string personnelID;
    std::string personnelName;
    std::int32_t workDayTotal = 0;        ///< Days on which the person was expected.
    std::int32_t attendDayTotal = 0;      ///< Of these, days with work.
    std::int32_t lateTotal = 0;           ///< Days with a late start.
    std::int32_t earlyTotal = 0;          ///< Days with an early end.
    std::int32_t absenceTotal = 0;        ///< Days with absence.
    std::int32_t lateDuration = 0;        ///< min.
    std::int32_t earlyDuration = 0;       ///< min.
    std::int32_t absenceDuration = 0;     ///< min.
    std::int32_t workDuration = 0;        ///< min.
    std::int32_t overtimeDuration = 0;    ///< min.
    std::int32_t vocationDuration = 0;    ///< min.
    std::vector<DayDetail> dayDetailList; ///< In order of date.
    NEXWIRE_JSON
};

/// Which days are asked for; empty members do not narrow.
struct NEXWIRE_API DetailCondition : IInboundData {
    std::string startDate;
    std::string endDate;
    std::string orgID;
    bool includeChildOrg = false; ///< With the organisations below.
    std::vector<std::string> personnelIDList;
    std::string personnelName;           ///< Any part of the name.
    std::vector<std::string> statusList; ///< Vocabulary of a day's status; empty: any.
    std::int32_t pageNo = 1;             ///< 1 to 100000.
    std::int32_t pageSize = 100;         ///< 1 to 1000.
    NEXWIRE_JSON
};

/// A person's day in a list.
struct NEXWIRE_API PersonDayDetail : IReturnData {
    std::string personnelID;
    std::string personnelCode;
    std::string personnelName;
    std::string orgName;
    DayDetail dayDetail;
    NEXWIRE_JSON
};

struct NEXWIRE_API HandleDetail : IReturnData {
    std::int32_t total = 0; ///< Of all pages.
    std::int32_t pageNo = 1;
    std::int32_t pageSize = 0;
    std::vector<PersonDayDetail> personDayDetailList;
    NEXWIRE_JSON
};

/// A correction on its way to the platform.
struct NEXWIRE_API HandleDataInbound : IInboundData {
    std::string personnelID;
    std::string handleType;    ///< One of: "vocation", "clock", "overtime", "businessTrip", "normal".
    std::string subTypeID;     ///< Kind of leave; for "vocation" only.
    std::string clockType;     ///< Which record is put in; for "clock" only. One of: "", "start", "end".
    std::string startTime;     ///< For "clock" the time of the record.
    std::string endTime;       ///< Empty for "clock".
    std::int32_t duration = 0; ///< 0 to 44640 min. 0 is all of the time given.
    std::string reason;        ///< Up to 256 characters.
    std::string operatorName;
    NEXWIRE_JSON
};

struct NEXWIRE_API AddHandleInfos : IInboundData {
    std::vector<HandleDataInbound> handleDataList;
    NEXWIRE_JSON
};

/// What became of one new correction.
struct NEXWIRE_API HandleResult : IReturnData {
    std::string personnelID;
    std::string handleID;        ///< Empty when it was refused.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    NEXWIRE_JSON
};

struct NEXWIRE_API AddHandleResult : IReturnData {
    std::vector<HandleResult> handleResultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API DeleteHandleInfos : IInboundData {
    std::vector<std::string> handleIDList;
    NEXWIRE_JSON
};

/// Which corrections are asked for; empty members do not narrow.
struct NEXWIRE_API GetHandleCondition : IInboundData {
    std::string startDate;
    std::string endDate;
    std::vector<std::string> personnelIDList;
    std::string handleType;      ///< One of: "", "vocation", "clock", "overtime", "businessTrip", "normal".
    std::int32_t pageNo = 1;     ///< 1 to 100000.
    std::int32_t pageSize = 100; ///< 1 to 1000.
    NEXWIRE_JSON
};

/// A correction as it is kept.
struct NEXWIRE_API HandleData : IReturnData {
    std::string handleID;
    std::string personnelID;
    std::string personnelCode;
    std::string personnelName;
    std::string orgName;
    std::string handleType; ///< One of: "vocation", "clock", "overtime", "businessTrip", "normal".
    std::string subTypeID;
    std::string subTypeName;
    std::string clockType; ///< One of: "", "start", "end".
    std::string startTime;
    std::string endTime;
    std::int32_t duration = 0; ///< min.
    std::string reason;
    std::string operatorName;
    std::string handleTime; ///< When it was made or changed.
    NEXWIRE_JSON
};

struct NEXWIRE_API HandleInfos : IReturnData {
    std::int32_t total = 0; ///< Of all pages.
    std::vector<HandleData> handleDataList;
    NEXWIRE_JSON
};

} // namespace protocol
