#pragma once

#include "protocol/DeviceCommon.h"

// Rules over several doors of an access-control device: anti-passback (nobody enters twice without leaving) and
// interlock (only one door of a group stands open at a time). Habits of these structures: see DeviceCommon.h.

namespace protocol {

// ---- Anti-passback ----

/// Anti-passback of the device as a whole.
struct NEXWIRE_API AcsAntiSneakParamCfg : IInboundData {
    bool enable = false;
    std::string antiSneakMode;          ///< One of: "route" readers in a given order, "inOut" by reader direction.
    std::string violationMode;          ///< Second passage. One of: "deny", "alarmOnly".
    std::int32_t startCardReaderNo = 0; ///< Reader where every route begins; 0: at any.
    bool firstPassFree = false;         ///< A person whose whereabouts are unknown passes everywhere.
    bool superCardFree = false;         ///< Super cards pass whatever the rules say.
    bool crossDevice = false;           ///< The platform shares whereabouts between devices.
    NEXWIRE_JSON
};

/// Anti-passback at one reader.
struct NEXWIRE_API CardReaderAntiSneak : IInboundData {
    std::int32_t cardReaderNo = 0;
    bool enable = false;
    std::string direction;                              ///< For mode "inOut" one of: "in", "out", "none"; empty
                                                        ///< otherwise.
    std::vector<std::int32_t> followUpCardReaderNoList; ///< For mode "route": readers that may come next.
    NEXWIRE_JSON
};

/// Anti-passback of the readers of a device: all of them in an answer; those to change, whole, in an order.
struct NEXWIRE_API AcsCardReaderAntiSneakParamCfg : IInboundData {
    std::vector<CardReaderAntiSneak> cardReaderAntiSneakList;
    NEXWIRE_JSON
};

/// Puts anti-passback settings back to those of a new device.
struct NEXWIRE_API AcsClearAntiSneakParamCfg : IInboundData {
    bool antiSneakParam = false;                ///< Those of the device as a whole.
    std::vector<std::int32_t> cardReaderNoList; ///< Those of these readers.
    bool resetRule = false;                     ///< The rule by which the device forgets whereabouts.
    bool ntSchedule = false;                    ///< The times without anti-passback.
    NEXWIRE_JSON
};

/// Has a device forget who is where.
struct NEXWIRE_API AcsClearAntiSneakRecord : IInboundData {
    std::string clearMode;                   ///< One of: "all", "employeeNo", "cardNo".
    std::vector<std::string> employeeNoList; ///< Persons, for mode "employeeNo".
    std::vector<std::string> cardNoList;     ///< Cards, for mode "cardNo"; decimal texts.
    NEXWIRE_JSON
};

/// What `AcsClearAntiSneakRecord` may hold on a device.
struct NEXWIRE_API ClearAntiSneak : IInboundData {
    OptionList clearMode;
    IntRange employeeNo;     ///< Length of each.
    IntRange employeeNoList; ///< How many at once.
    IntRange cardNo;         ///< Length of each.
    IntRange cardNoList;     ///< How many at once.
    NEXWIRE_JSON
};

/// When a device forgets by itself who is where.
struct NEXWIRE_API AntiBackResetRuleConfig : IInboundData {
    bool enable = false;
    std::string resetMode;                  ///< One of: "daily", "weekly", "interval".
    std::vector<std::string> resetTimeList; ///< For "daily" and "weekly": "HH:MM:SS".
    std::vector<std::string> weekList;      ///< For "weekly". One of: "Monday", "Tuesday", "Wednesday", "Thursday",
                                            ///< "Friday", "Saturday", "Sunday".
    std::int32_t resetInterval = 0;         ///< For "interval": minutes after a person's last passage.
    NEXWIRE_JSON
};

/// What `AntiBackResetRuleConfig` may hold on a device.
struct NEXWIRE_API AntiPassbackrestRulesCapability : IInboundData {
    bool enable = false;
    OptionList resetMode;
    IntRange resetTimeList; ///< How many.
    OptionList weekList;
    IntRange resetInterval; ///< Minutes.
    NEXWIRE_JSON
};

/// Special days of the times without anti-passback.
struct NEXWIRE_API AntiBackNTHoliday : IInboundData {
    std::string holidayName;
    bool enable = false;
    DateRange dateRange;
    std::vector<TimeSegment> timeSegmentList; ///< Take the place of the day's own; none: the rules hold all day.
    NEXWIRE_JSON
};

/// Times in which anti-passback does not hold, for example while a shift changes.
struct NEXWIRE_API AntiBackNTScheduleConfig : IInboundData {
    bool enable = false;
    bool resetAtEnd = false; ///< Forget who is where when such a time ends.
    std::vector<DayPlan> dayPlanList;
    std::vector<AntiBackNTHoliday> holidayList;
    NEXWIRE_JSON
};

/// What `AntiBackNTScheduleConfig` may hold on a device.
struct NEXWIRE_API AntiBackNTScheduleCap : IInboundData {
    bool enable = false;
    bool resetAtEnd = false;
    OptionList week;
    IntRange timeSegmentList; ///< How many a day.
    IntRange holidayList;     ///< How many.
    IntRange holidayName;     ///< Length.
    NEXWIRE_JSON
};

// ---- Interlock ----

/// Doors of which only one opens at a time.
struct NEXWIRE_API MultiDoorInterLockGroup : IInboundData {
    std::int32_t groupNo = 0; ///< From 1.
    bool enable = false;
    std::vector<std::int32_t> doorNoList; ///< Two or more.
    NEXWIRE_JSON
};

/// Interlock of a device: all groups in an answer; those to change, whole, in an order.
struct NEXWIRE_API MultiDoorInterLockParam : IInboundData {
    bool enable = false;
    std::string lockMode;         ///< When the others stay locked. One of: "open" while a door stands open, "unlocked"
                                  ///< as soon as it is unlocked.
    bool releaseOnFire = false;   ///< A fire signal lifts the interlock.
    bool superCardFree = false;   ///< Super cards pass whatever the rules say.
    std::int32_t openTimeout = 0; ///< A door that stands open for longer raises an alarm, seconds; 0: no alarm.
    std::vector<MultiDoorInterLockGroup> groupList;
    NEXWIRE_JSON
};

} // namespace protocol
