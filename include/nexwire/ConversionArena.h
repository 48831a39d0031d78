#pragma once

#include <cstddef>

#include "nexwire/Export.h"

namespace nexwire {

/// Takes all of cJSON's memory during conversions between structures and JSON from a per-thread arena, and keeps more
/// of it from one conversion to the next. Large requests are written in about 70 % of the time; answers are read in
/// about the same. (The library's own conversions are always done in the arena; without this call a thread keeps at
/// most 1 MiB of it.)
///
/// It installs cJSON's allocation hooks, which are process-wide: a host that uses cJSON itself with other hooks
/// must not call it. Call it at most once, before the first request and before any other thread uses cJSON.
///
/// @param keepBytes  how much memory a thread keeps between conversions, in bytes; what a larger conversion
///                   needed beyond that is returned.
NEXWIRE_API void UseConversionArena(std::size_t keepBytes = std::size_t{32} << 20);

} // namespace nexwire
