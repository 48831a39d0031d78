#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// An import of events that the platform has begun.
struct NEXWIRE_API EventImportTask : IReturnData {
    std::string taskGuid; ///< Names the import from then on.
    NEXWIRE_JSON
};

} // namespace protocol
