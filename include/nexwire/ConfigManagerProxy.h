#pragma once

#include "nexwire/RequestRecords.h"

namespace nexwire {

/// For callers that build a request themselves.
class NEXWIRE_API CConfigManagerProxy {
public:
    /// Hands `request` to the executor as it is and stores the answer; nothing is serialised, parsed or logged.
    /// False when the library is not initialised, has no executor, or the executor fails. Any thread.
    static bool httpRequest(RspInfos& response, const RequestParams& request);
};

} // namespace nexwire
