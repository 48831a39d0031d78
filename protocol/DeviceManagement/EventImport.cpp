#include "protocol/DeviceManagement/EventImport.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_RETURN_FIELDS(EventImportTask, F(taskGuid))
// clang-format on

} // namespace protocol
