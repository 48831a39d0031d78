#include "protocol/Personnel/Progress.h"

#include "core/FieldTable.h"

namespace protocol::personnelcommon {

// clang-format off
NEXWIRE_RETURN_FIELDS(ProgressFailure, F(item), F(name), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(SynchronouProgressData, F(progress), F(state), F(finished), F(totalNum), F(successNum), F(failedNum), F(addedNum), F(updatedNum), F(beginTime), F(endTime), F(failedList))
NEXWIRE_RETURN_FIELDS(ProgressData, F(progress), F(state), F(finished), F(totalNum), F(successNum), F(failedNum), F(failedList))
NEXWIRE_INBOUND_FIELDS(SynchronousQuery, "synchronousQuery", F(taskGuid), F(stop), F(dataTypeList), F(orgGuid), F(coverMode), F(personNoList), F(stationIpList), F(beginTime), F(endTime))
NEXWIRE_INBOUND_FIELDS(EnrollmentStationData, "enrollmentStationData", F(orgGuid))
// clang-format on

} // namespace protocol::personnelcommon
