#pragma once

#include "protocol/DeviceCommon.h"

// How persons prove who they are at the readers of a device, by plan: a reader follows a template, the template
// names a week plan, the week plan gives each time of the week its verification mode. Habits of these structures:
// see DeviceCommon.h.

namespace protocol {

/// What the plans of a device may hold.
struct NEXWIRE_API CardReaderVerifyTypePlan : IInboundData {
    OptionList verifyMode;
    IntRange cardReaderNo;
    IntRange planTemplateNo;
    IntRange templateName; ///< Length.
    IntRange weekPlanNo;
    IntRange holidayGroupNo;
    IntRange holidayGroupNoList; ///< How many in a template.
    IntRange timeSegmentList;    ///< How many a day.
    bool sleepMode = false;      ///< Mode "sleep" switches a reader off for a time.
    NEXWIRE_JSON
};

/// The template that one reader follows.
struct NEXWIRE_API CardReaderVerifyPlan : IInboundData {
    std::int32_t cardReaderNo = 0;
    std::int32_t planTemplateNo = 0; ///< 0: the reader's own setting holds at all times.
    NEXWIRE_JSON
};

/// Templates of the readers of a device: all of them in an answer; those to change in an order.
struct NEXWIRE_API CardReaderVerifyPlanTemplateNo : IInboundData {
    std::vector<CardReaderVerifyPlan> cardReaderVerifyPlanList;
    NEXWIRE_JSON
};

/// One template.
struct NEXWIRE_API VerifyPlanTemplate : IInboundData {
    std::int32_t planTemplateNo = 0;
    bool enable = false;
    std::string templateName;
    std::int32_t weekPlanNo = 0;                  ///< 0: none.
    std::vector<std::int32_t> holidayGroupNoList; ///< Groups of holidays that override the week, the first first.
    NEXWIRE_JSON
};

/// Templates of a device: all of them in an answer; those to change, whole, in an order.
struct NEXWIRE_API VerifyPlanTemplateParam : IInboundData {
    std::vector<VerifyPlanTemplate> verifyPlanTemplateList;
    NEXWIRE_JSON
};

/// A part of a day with its mode.
struct NEXWIRE_API VerifyTimeSegment : IInboundData {
    TimeSegment timeSegment;
    std::string verifyMode; ///< As for readers, and "sleep". For example: "card", "cardAndPassword", "fingerPrint",
                            ///< "face", "sleep".
    NEXWIRE_JSON
};

/// A day of the week.
struct NEXWIRE_API VerifyDayPlan : IInboundData {
    std::string week;                               ///< One of: "Monday", "Tuesday", "Wednesday", "Thursday", "Friday",
                                                    ///< "Saturday", "Sunday".
    std::vector<VerifyTimeSegment> timeSegmentList; ///< In order of time, without overlap.
    NEXWIRE_JSON
};

/// One week plan.
struct NEXWIRE_API VerifyWeekPlan : IInboundData {
    std::int32_t weekPlanNo = 0;
    bool enable = false;
    std::vector<VerifyDayPlan> dayPlanList;
    NEXWIRE_JSON
};

/// Week plans of a device: all of them in an answer; those to change, whole, in an order.
struct NEXWIRE_API VerifyWeekPlanCfg : IInboundData {
    std::vector<VerifyWeekPlan> verifyWeekPlanList;
    NEXWIRE_JSON
};

struct NEXWIRE_API VerifyWeekPlanCfgData : IInboundData {
    VerifyWeekPlanCfg verifyWeekPlanCfg;
    NEXWIRE_JSON
};

} // namespace protocol
