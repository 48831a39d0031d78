#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

// Results of attendance. Durations are whole minutes, dates "YYYY-MM-DD".

/// What to calculate anew.
struct NEXWIRE_API ManualCalcCondition : IInboundData {
    std::string startDate;
    std::string endDate;
    std::vector<std::string> orgIDList; ///< With what stands below them.
    std::vector<std::string> personnelIDList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ManualResult : IReturnData {
    std::string taskID;
    std::int32_t personTotal = 0; ///< Persons that will be calculated.
    NEXWIRE_JSON
};

struct NEXWIRE_API ManualResultData : IReturnData {
    ManualResult manualResult;
    NEXWIRE_JSON
};

/// Which results are asked for; empty members do not narrow.
struct NEXWIRE_API StatisticsCalcCondition : IInboundData {
    std::string startDate;
    std::string endDate;
    std::vector<std::string> orgIDList; ///< With what stands below them.
    std::vector<std::string> personnelIDList;
    std::string personnelName;           ///< Any part of the name.
    std::vector<std::string> statusList; ///< Status at the start or end; empty: any.
    std::int32_t pageNo = 1;             ///< 1 to 100000.
    std::int32_t pageSize = 1000;        ///< 1 to 100000.
    NEXWIRE_JSON
};

/// A person's day. All members are required.
struct NEXWIRE_API StatisticsCalc : IReturnData {
    std::string personnelID;
    std::string personnelCode;
    std::string personnelName;
    std::string orgName;
    std::string attendenceDate; ///< Spelled so.
    std::string shiftName;
    std::string periodID;
    std::string periodName;
    std::string startWorkStatus;         ///< One of: "normal", "late", "absence", "vocation", "noClock", "rest".
    std::string endWorkStatus;           ///< One of: "normal", "early", "absence", "vocation", "noClock", "rest".
    std::int32_t lateDuration = 0;       ///< min.
    std::int32_t earlyDuration = 0;      ///< min.
    std::int32_t attendanceDuration = 0; ///< Expected, min.
    std::int32_t absenceDuration = 0;    ///< min.
    std::int32_t workDuration = 0;       ///< min.
    std::int32_t restDuartion = 0;       ///< min. Spelled so.
    std::string vocationName;            ///< Kind of leave; empty without leave.
    std::int32_t vocationDuartion = 0;   ///< min. Spelled so.
    std::int32_t level1Duartion = 0;     ///< Overtime of level 1, min. Spelled so, as the next two.
    std::int32_t level2Duartion = 0;     ///< min.
    std::int32_t level3Duartion = 0;     ///< min.
    std::string detail;                  ///< Records that were counted, "HH:MM" separated by blanks.
    NEXWIRE_JSON
};

/// A page of results. All members are required.
struct NEXWIRE_API StatisticsCalcData : IReturnData {
    std::int32_t total = 0; ///< Of all pages.
    std::int32_t pageSize = 0;
    std::int32_t pageNo = 0; ///< From 1.
    std::vector<StatisticsCalc> statisticsCalcList;
    NEXWIRE_JSON
};

/// All members are required.
struct NEXWIRE_API StatisticsCalcDataData : IReturnData {
    StatisticsCalcData statisticsCalcData;
    NEXWIRE_JSON
};

struct NEXWIRE_API CalculateStatus : IReturnData {
    std::int32_t status = 0;   ///< One of: 0 nothing to do, 1 running, 2 done, 3 failed.
    std::int32_t progress = 0; ///< 0 to 100 %.
    std::string taskID;
    std::string startTime;  ///< ISO 8601.
    std::string finishTime; ///< ISO 8601; empty while it runs.
    NEXWIRE_JSON
};

struct NEXWIRE_API CalculateStatusData : IReturnData {
    CalculateStatus calculateStatus;
    NEXWIRE_JSON
};

} // namespace protocol
