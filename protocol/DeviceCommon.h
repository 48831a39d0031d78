#pragma once

#include "nexwire/JSONStruct.h"

// What the configurations and capability documents of devices are made of. Their common habits:
// - Doors, readers, inputs, outputs, plans and templates are numbered from 1; 0 names none.
// - A duration is a number whose unit its comment gives; a time of day is "HH:MM:SS", a date "YYYY-MM-DD", both in
//   the device's local time.
// - Modes, types and states are texts from the vocabulary that the comment lists.
// - A capability document has a member for each configuration member it speaks about, under the same name: an
//   IntRange for a number and for the length of a text, an OptionList for a mode, a bool (true: supported) for a
//   switch or a whole feature.

namespace protocol {

/// Values that a device accepts, both ends included. For a text: its length in bytes of UTF-8.
struct NEXWIRE_API IntRange : IInboundData {
    std::int32_t min = 0;
    std::int32_t max = 0;
    NEXWIRE_JSON
};

/// Modes that a device offers.
struct NEXWIRE_API OptionList : IInboundData {
    std::vector<std::string> options;
    std::string defaultOption; ///< Setting of a device fresh from the factory; empty when it has none.
    NEXWIRE_JSON
};

/// A part of a day.
struct NEXWIRE_API TimeSegment : IInboundData {
    std::string beginTime; ///< "HH:MM:SS".
    std::string endTime;   ///< "HH:MM:SS", not before beginTime; "24:00:00" is the end of the day.
    NEXWIRE_JSON
};

/// A part of a calendar.
struct NEXWIRE_API DateRange : IInboundData {
    std::string beginDate; ///< "YYYY-MM-DD".
    std::string endDate;   ///< "YYYY-MM-DD", the last day included.
    NEXWIRE_JSON
};

/// The time segments of a day of the week.
struct NEXWIRE_API DayPlan : IInboundData {
    std::string week; ///< One of: "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday".
    bool enable = false;
    std::vector<TimeSegment> timeSegmentList; ///< In order of time, without overlap; usually at most 8.
    NEXWIRE_JSON
};

} // namespace protocol
