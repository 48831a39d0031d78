#pragma once

#include <string>

#include "keel/Export.h"

namespace Keel::GuidUtil {

/// A new random identifier (UUID version 4): 32 lower-case hexadecimal digits without hyphens, the length that
/// identifiers have in device paths. Empty when the system yields no random numbers. Safe from any thread.
KEEL_API std::string CreateGuid();

} // namespace Keel::GuidUtil
