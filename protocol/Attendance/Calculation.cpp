#include "protocol/Attendance/Calculation.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(ManualCalcCondition, "manualCalcCondition", F(startDate), F(endDate), F(orgIDList), F(personnelIDList))
NEXWIRE_RETURN_FIELDS(ManualResult, F(taskID), F(personTotal))
NEXWIRE_RETURN_FIELDS(ManualResultData, F(manualResult))
NEXWIRE_INBOUND_FIELDS(StatisticsCalcCondition, "statisticsCalcCondition", F(startDate), F(endDate), F(orgIDList), F(personnelIDList), F(personnelName), F(statusList), F(pageNo), F(pageSize))
NEXWIRE_RETURN_FIELDS(StatisticsCalc, F(personnelID), F(personnelCode), F(personnelName), F(orgName), F(attendenceDate), F(shiftName), F(periodID), F(periodName), F(startWorkStatus), F(endWorkStatus), F(lateDuration), F(earlyDuration), F(attendanceDuration), F(absenceDuration), F(workDuration), F(restDuartion), F(vocationName), F(vocationDuartion), F(level1Duartion), F(level2Duartion), F(level3Duartion), F(detail))
NEXWIRE_RETURN_FIELDS(StatisticsCalcData, F(total), F(pageSize), F(pageNo), F(statisticsCalcList))
NEXWIRE_RETURN_FIELDS(StatisticsCalcDataData, F(statisticsCalcData))
NEXWIRE_RETURN_FIELDS(CalculateStatus, F(status), F(progress), F(taskID), F(startTime), F(finishTime))
NEXWIRE_RETURN_FIELDS(CalculateStatusData, F(calculateStatus))
// clang-format on

} // namespace protocol
