#include "nexwire/PassThrough/PassThrough.h"
#include "catalogue/Modules.h"

namespace nexwire {
namespace catalogue {

// clang-format off
NEXWIRE_MODULE(PassThrough,
    NEXWIRE_OPERATION(CPassThroughRequest, dagRequest, "deviceGuid"),
    NEXWIRE_OPERATION(CPassThroughRequest, dagRequestInner, "deviceGuid"),
    NEXWIRE_OPERATION(accessParamComm, dagThroughRequest, "deviceGuid, timeoutMs"),
    NEXWIRE_OPERATION(accessParamComm, dagThroughRequestExternal, "deviceGuid, timeoutMs"),
    NEXWIRE_OPERATION(accessParamComm, batchPassThroughRequest, "deviceGuid, errorText"),
    NEXWIRE_OPERATION(accessParamComm, batchPassThroughRequestExternal, "error, deviceGuid"),
    NEXWIRE_OPERATION(accessParamComm, setSchedule, "command, deviceGuid, errorText"),
    NEXWIRE_OPERATION(ACDoorPlan, setDoorPlan, "command, deviceGuid, unused"),
    NEXWIRE_OPERATION(ACDoorPlan, getDoorStatusInfo, "command, output, deviceGuid, unused"),
)
// clang-format on

} // namespace catalogue
} // namespace nexwire
