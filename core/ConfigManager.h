#pragma once

#include "nexwire/IEncryption.h"
#include "nexwire/IRequestExecutor.h"

namespace nexwire {

/// What every request reads before it sends: one per process, created on first use, never freed.
struct RequestContext {
    bool initialised = false;
    IRequestExecutor* executor = nullptr;
    IEncryption* encryption = nullptr;

    static RequestContext& Instance();

    /// The executor to send with; null while there is none to use.
    IRequestExecutor* Usable() const { return initialised ? executor : nullptr; }
};

/// The encryption of hosts that bring none, or null when memory ran out. It is made of requests, so it stands with the
/// request functions.
IEncryption* MakeDefaultEncryption();

} // namespace nexwire
