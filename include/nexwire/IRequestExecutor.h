#pragma once

#include "nexwire/RequestRecords.h"

namespace nexwire {

/// The host's transport. The library calls it on the caller's thread and waits for it.
///
/// Implementations must accept concurrent calls. They own the server's address, the scheme, the mapping of method
/// codes to verbs and the meaning of the two maps of the request; "Content-Type" in `params` must become the
/// request's content type.
class NEXWIRE_API IRequestExecutor {
public:
    virtual ~IRequestExecutor();

    /// Performs one exchange and stores the answer.
    ///
    /// @param response  filled with header fields and body.
    /// @param request   what to send; `timeoutMs` bounds the whole exchange.
    /// @param flag      always 1.
    /// @return true when an answer was received and stored. On false the implementation leaves the reason in
    ///         `Keel::Error::SetLastError`; the library adds nothing to it. Must not throw.
    virtual bool Execute(RspInfos& response, const RequestParams& request, int flag) = 0;
};

} // namespace nexwire
