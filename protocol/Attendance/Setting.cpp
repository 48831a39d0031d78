#include "protocol/Attendance/Setting.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(BasicRule, "basicRule", F(weekStartDay), F(monthStartDay), F(lateAllowDuration), F(earlyAllowDuration), F(lateToAbsenceDuration), F(earlyToAbsenceDuration), F(noStartClockStatus), F(noStartClockDuration), F(noEndClockStatus), F(noEndClockDuration), F(validClockInterval), F(weekendAsOvertime), F(autoCalculateTime))
NEXWIRE_RETURN_FIELDS(BasicRuleResult, F(basicRule))
NEXWIRE_INBOUND_FIELDS(checkpoint, "checkpoint", F(checkpointID), F(deviceGuid), F(objectGuid), F(objectName), F(objectType), F(purpose))
NEXWIRE_RETURN_FIELDS(CheckpointResult, F(checkpointID), F(resultCode))
NEXWIRE_RETURN_FIELDS(CheckpointResultData, F(checkpointResult))
NEXWIRE_INBOUND_FIELDS(CheckPointCondition, "checkPointCondition", F(deviceGuid), F(objectName), F(pageNo), F(pageSize))
NEXWIRE_RETURN_FIELDS(CheckPointQueryResult, F(total), F(checkpointList))
NEXWIRE_INBOUND_FIELDS(CheckPointDeleteCondition, "checkPointDeleteCondition", F(checkpointIDList))
NEXWIRE_RETURN_FIELDS(AttendanceItemResult, F(id), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(CheckpointDeleteResultData, F(checkpointDeleteResultList))
NEXWIRE_INBOUND_FIELDS(Holiday, "holiday", F(holidayID), F(holidayName), F(startDate), F(endDate), F(repeatYearly), F(overtimeLevel), F(description))
NEXWIRE_RETURN_FIELDS(HolidayResult, F(holidayID))
NEXWIRE_INBOUND_FIELDS(HolidayCondition, "holidayCondition", F(holidayName), F(startDate), F(endDate), F(pageNo), F(pageSize))
NEXWIRE_RETURN_FIELDS(HolidayQueryResult, F(total), F(holidayList))
NEXWIRE_RETURN_FIELDS(HolidayInfoReslultData, F(holidayInfo))
NEXWIRE_INBOUND_FIELDS(HolidayDeleteCondition, "holidayDeleteCondition", F(holidayIDList))
NEXWIRE_RETURN_FIELDS(HolidayDeleteResultData, F(holidayDeleteResultList))
NEXWIRE_INBOUND_FIELDS(OvertimeRule, "overtimeRule", F(dayType), F(enabled), F(level), F(leastDuration), F(mostDuration))
NEXWIRE_INBOUND_FIELDS(OvertimeConfig, "overtimeConfig", F(overtimeSource), F(startAfter), F(overtimeRuleList))
NEXWIRE_RETURN_FIELDS(OvertimeConfigResult, F(overtimeConfig))
NEXWIRE_INBOUND_FIELDS(ReportColumn, "reportColumn", F(columnKey), F(columnName), F(visible))
NEXWIRE_INBOUND_FIELDS(ReportConfig, "reportConfig", F(companyName), F(dateFormat), F(timeFormat), F(durationUnit), F(reportColumnList))
NEXWIRE_RETURN_FIELDS(ReportConfigResultData, F(reportConfig))
NEXWIRE_INBOUND_FIELDS(VacateMainType, "vacateMainType", F(mainTypeID), F(mainTypeName), F(description))
NEXWIRE_RETURN_FIELDS(VacateMainInfoData, F(vacateMainInfoList))
NEXWIRE_INBOUND_FIELDS(VacateMainTypeIDInfo, "vacateMainTypeIDInfo", F(mainTypeIDList))
NEXWIRE_INBOUND_FIELDS(VacateSubTypeInfo, "vacateSubTypeInfo", F(subTypeID), F(mainTypeID), F(subTypeName), F(unit), F(leastUnits), F(roundMode), F(countAsAttendance), F(paid))
NEXWIRE_INBOUND_FIELDS(VacateSubCondition, "vacateSubCondition", F(mainTypeID))
NEXWIRE_RETURN_FIELDS(VacateMainContainsVacateSubInfo, F(mainTypeID), F(mainTypeName), F(vacateSubInfoList))
NEXWIRE_RETURN_FIELDS(VacateMainContainsVacateSubInfoData, F(vacateMainContainsVacateSubInfoList))
NEXWIRE_INBOUND_FIELDS(VacateSubTypeIDInfo, "vacateSubTypeIDInfo", F(subTypeID))
NEXWIRE_INBOUND_FIELDS(Precision, "precision", F(item), F(unit), F(leastUnit), F(roundMode))
NEXWIRE_INBOUND_FIELDS(PrecisionList, "precisionList", F(precisionList))
NEXWIRE_RETURN_FIELDS(PrecisionResultData, F(precisionList))
NEXWIRE_INBOUND_FIELDS(CustomExportColumn, "customExportColumn", F(columnKey), F(columnName), F(width), F(fillCharacter), F(fillLeft), F(timeFormat))
NEXWIRE_INBOUND_FIELDS(CustomExportConfig, "customExportConfig", F(fileType), F(separator), F(withHeading), F(sortBy), F(customExportColumnList))
NEXWIRE_RETURN_FIELDS(CustomExportConfigData, F(customExportConfig))
// clang-format on

} // namespace protocol
