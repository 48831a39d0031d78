#pragma once

#include <cstddef>

#include "nexwire/Export.h"

namespace nexwire {

/// Runs every conversion between structures and JSON in memory taken from a per-thread arena, which about halves
/// the time of large answers.
///
/// It installs cJSON's allocation hooks, which are process-wide: a host that uses cJSON itself with other hooks
/// must not call it. Call it at most once, before the first request and before any other thread uses cJSON.
///
/// @param keepBytes  how much memory a thread keeps between conversions, in bytes; what a larger conversion
///                   needed beyond that is returned.
NEXWIRE_API void UseConversionArena(std::size_t keepBytes = std::size_t{32} << 20);

} // namespace nexwire
