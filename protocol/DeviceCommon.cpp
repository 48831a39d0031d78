#include "protocol/DeviceCommon.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(IntRange, "intRange", F(min), F(max))
NEXWIRE_INBOUND_FIELDS(OptionList, "optionList", F(options), F(defaultOption))
NEXWIRE_INBOUND_FIELDS(TimeSegment, "timeSegment", F(beginTime), F(endTime))
NEXWIRE_INBOUND_FIELDS(DateRange, "dateRange", F(beginDate), F(endDate))
NEXWIRE_INBOUND_FIELDS(DayPlan, "dayPlan", F(week), F(enable), F(timeSegmentList))
// clang-format on

} // namespace protocol
