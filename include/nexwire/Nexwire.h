#pragma once

#include "nexwire/IEncryption.h"
#include "nexwire/IRequestExecutor.h"

namespace nexwire {

/// What a host hands over at start-up. From a successful `NexwireInit` on the library owns both objects and
/// deletes them in `NexwireUnInit`; allocate them with `new`.
struct NexwireInitParams {
    IRequestExecutor* executor = nullptr; ///< Transport; without one every request returns false.
    IEncryption* encryption = nullptr;    ///< Null installs the one that asks the platform's services.
};

/// Starts the library. Call it once before the first request; it must not overlap requests or `NexwireUnInit`.
///
/// @return false when the library is already initialised. Nothing changes then, and the objects in `params`
///         still belong to the caller.
NEXWIRE_API bool NexwireInit(const NexwireInitParams& params);

/// Stops the library and deletes the executor and the encryption object. Call it after the last request returned.
///
/// @return false when the library is not initialised. It may be initialised again afterwards.
NEXWIRE_API bool NexwireUnInit();

} // namespace nexwire
