#include "protocol/Attendance/Arrange.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(QueryArrangeCondition, "queryArrangeCondition", F(startDate), F(endDate), F(personnelName), F(includeChildOrg), F(pageNo), F(pageSize))
NEXWIRE_INBOUND_FIELDS(Arrange, "arrange", F(shiftID), F(startDate), F(endDate), F(needClock), F(autoOvertime), F(checkpointIDList))
NEXWIRE_INBOUND_FIELDS(DepartArrange, "departArrange", F(includeChildOrg), F(overridePersonal), F(arrange))
NEXWIRE_RETURN_FIELDS(DepartArrangeResponse, F(orgID), F(orgName), F(inherited), F(arrangeList))
NEXWIRE_INBOUND_FIELDS(TempShift, "tempShift", F(date), F(shiftID), F(periodIDList))
NEXWIRE_INBOUND_FIELDS(TempArrange, "tempArrange", F(tempShiftList))
NEXWIRE_INBOUND_FIELDS(DepartTempArrange, "departTempArrange", F(includeChildOrg), F(tempShiftList))
NEXWIRE_RETURN_FIELDS(DepartTempArrangeResponse, F(orgID), F(orgName), F(tempShiftList))
NEXWIRE_RETURN_FIELDS(PersonnelArrangeResponse, F(personnelID), F(personnelName), F(orgName), F(inherited), F(arrangeList))
NEXWIRE_INBOUND_FIELDS(PersonArrange, "personArrange", F(personnelIDList), F(arrange))
NEXWIRE_RETURN_FIELDS(PersonnelTempArrangeResponse, F(personnelID), F(personnelName), F(tempShiftList))
NEXWIRE_RETURN_FIELDS(ArrangeStatus, F(orgID), F(orgName), F(personTotal), F(arrangedTotal), F(temporaryTotal))
NEXWIRE_RETURN_FIELDS(ArrangeStatusResponse, F(total), F(arrangeStatusList))
NEXWIRE_RETURN_FIELDS(ArrangeStatusResponseData, F(arrangeStatusResponse))
// clang-format on

} // namespace protocol
