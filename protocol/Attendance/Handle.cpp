#include "protocol/Attendance/Handle.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(MonthCondition, "monthCondition", F(month), F(personnelID), F(orgID))
NEXWIRE_RETURN_FIELDS(DayDetail, F(date), F(dayType), F(shiftName), F(status), F(startClock), F(endClock), F(lateDuration), F(earlyDuration), F(absenceDuration), F(workDuration), F(overtimeDuration), F(vocationDuration), F(handleIDList))
NEXWIRE_RETURN_FIELDS(MonthDetail, F(month), F(personnelID), F(personnelName), F(workDayTotal), F(attendDayTotal), F(lateTotal), F(earlyTotal), F(absenceTotal), F(lateDuration), F(earlyDuration), F(absenceDuration), F(workDuration), F(overtimeDuration), F(vocationDuration), F(dayDetailList))
NEXWIRE_INBOUND_FIELDS(DetailCondition, "detailCondition", F(startDate), F(endDate), F(orgID), F(includeChildOrg), F(personnelIDList), F(personnelName), F(statusList), F(pageNo), F(pageSize))
NEXWIRE_RETURN_FIELDS(PersonDayDetail, F(personnelID), F(personnelCode), F(personnelName), F(orgName), F(dayDetail))
NEXWIRE_RETURN_FIELDS(HandleDetail, F(total), F(pageNo), F(pageSize), F(personDayDetailList))
NEXWIRE_INBOUND_FIELDS(HandleDataInbound, "handleDataInbound", F(personnelID), F(handleType), F(subTypeID), F(clockType), F(startTime), F(endTime), F(duration), F(reason), F(operatorName))
NEXWIRE_INBOUND_FIELDS(AddHandleInfos, "addHandleInfos", F(handleDataList))
NEXWIRE_RETURN_FIELDS(HandleResult, F(personnelID), F(handleID), F(resultCode))
NEXWIRE_RETURN_FIELDS(AddHandleResult, F(handleResultList))
NEXWIRE_INBOUND_FIELDS(DeleteHandleInfos, "deleteHandleInfos", F(handleIDList))
NEXWIRE_INBOUND_FIELDS(GetHandleCondition, "getHandleCondition", F(startDate), F(endDate), F(personnelIDList), F(handleType), F(pageNo), F(pageSize))
NEXWIRE_RETURN_FIELDS(HandleData, F(handleID), F(personnelID), F(personnelCode), F(personnelName), F(orgName), F(handleType), F(subTypeID), F(subTypeName), F(clockType), F(startTime), F(endTime), F(duration), F(reason), F(operatorName), F(handleTime))
NEXWIRE_RETURN_FIELDS(HandleInfos, F(total), F(handleDataList))
// clang-format on

} // namespace protocol
