#include "protocol/Attendance/Shift.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(AddRestPeriod, "addRestPeriod", F(restPeriodName), F(startTime), F(endTime), F(deductMode), F(lateAllowDuration), F(earlyAllowDuration), F(needClock))
NEXWIRE_RETURN_FIELDS(RestPeriod, F(restPeriodID), F(restPeriodInfo))
NEXWIRE_RETURN_FIELDS(RestPeriodListData, F(restPeriodList))
NEXWIRE_RETURN_FIELDS(GetRestPeriodIDData, F(getRestPeriodID))
NEXWIRE_RETURN_FIELDS(RestPeriodConfigResult, F(restPeriodID))
NEXWIRE_RETURN_FIELDS(RestPeriodConfigResultData, F(restPeriodConfigResult))
NEXWIRE_INBOUND_FIELDS(RestPeriodConfigDelete, "restPeriodConfigDelete", F(restPeriodIDList))
NEXWIRE_RETURN_FIELDS(PeriodDeleteResult, F(id), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(RestPeriodConfigDeleteResultData, F(restPeriodConfigDeleteResultList))
NEXWIRE_INBOUND_FIELDS(AddPeriod, "addPeriod", F(periodName), F(periodType), F(startTime), F(endTime), F(startClockBegin), F(startClockEnd), F(endClockBegin), F(endClockEnd), F(needStartClock), F(needEndClock), F(lateAllowDuration), F(earlyAllowDuration), F(lateToAbsenceDuration), F(earlyToAbsenceDuration), F(flexibleDuration), F(workDuration), F(restPeriodIDList))
NEXWIRE_RETURN_FIELDS(PeriodConfigRespone, F(periodID), F(periodInfo))
NEXWIRE_RETURN_FIELDS(PeriodConfigResponeListData, F(periodConfigResponeList))
NEXWIRE_RETURN_FIELDS(GetPeriodData, F(getPeriod))
NEXWIRE_RETURN_FIELDS(PeriodConfigResult, F(periodID))
NEXWIRE_RETURN_FIELDS(PeriodConfigResultData, F(periodConfigResult))
NEXWIRE_INBOUND_FIELDS(PeriodConfigDelete, "periodConfigDelete", F(periodIDList))
NEXWIRE_RETURN_FIELDS(PeriodConfigDeleteResultData, F(periodConfigDeleteResultList))
NEXWIRE_INBOUND_FIELDS(ShiftDay, "shiftDay", F(dayNo), F(periodIDList))
NEXWIRE_INBOUND_FIELDS(ShiftInfo, "shiftInfo", F(shiftName), F(cycleUnit), F(cycleCount), F(holidayFree), F(shiftDayList), F(description))
NEXWIRE_INBOUND_FIELDS(ShiftQueryCondition, "shiftQueryCondition", F(shiftName), F(needDetail), F(pageNo), F(pageSize))
NEXWIRE_RETURN_FIELDS(ShiftResponse, F(shiftID), F(shiftInfo), F(isUsed))
NEXWIRE_RETURN_FIELDS(ShiftResponseListData, F(total), F(shiftResponseList))
NEXWIRE_RETURN_FIELDS(ShiftResult, F(shiftID))
NEXWIRE_INBOUND_FIELDS(ShiftList, "shiftList", F(shiftIDList))
NEXWIRE_RETURN_FIELDS(ShiftResultListData, F(shiftResultList))
// clang-format on

} // namespace protocol
