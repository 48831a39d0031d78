#include "protocol/Attendance/Record.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(DeviceSyncEventReq, "deviceSyncEventReq", F(deviceGuid), F(startTime), F(endTime), F(eventTypeList), F(calculate))
NEXWIRE_INBOUND_FIELDS(ImportAttendanceFiles, "importAttendanceFiles", F(uploadGuid), F(fileName), F(encoding), F(separator), F(skipFirstLine), F(calculate))
NEXWIRE_RETURN_FIELDS(FileImportFailure, F(lineNo), F(text), F(reason))
NEXWIRE_RETURN_FIELDS(FileImportReturn, F(total), F(succeeded), F(failed), F(fileImportFailureList))
NEXWIRE_RETURN_FIELDS(FileImportReturnData, F(fileImportReturn))
NEXWIRE_INBOUND_FIELDS(AcsEventInfo, "acsEventInfo", F(major), F(minor), F(time), F(serialNo), F(employeeNoString), F(name), F(cardNo), F(cardReaderNo), F(doorNo), F(attendanceStatus), F(currentVerifyMode), F(pictureURL))
NEXWIRE_INBOUND_FIELDS(AcsEventSearch, "acsEventSearch", F(searchID), F(responseStatusStrg), F(numOfMatches), F(totalMatches), F(infoList))
NEXWIRE_INBOUND_FIELDS(StatisticsTestInfo, "statisticsTestInfo", F(startDate), F(endDate))
// clang-format on

} // namespace protocol
