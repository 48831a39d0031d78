#pragma once

#include <cstdint>

#include "nexwire/Export.h"

namespace nexwire {

/// Sets how much memory reading one answer may take, in bytes: its text, the JSON of it that somebody reads, and the
/// structures that it fills. A text of a few megabytes can be made to need a hundred times its size. Beyond the limit
/// the call returns false, with `AnswerError::TooCostly` as the last error, and its result is untouched.
///
/// The default is 2 GiB in a 64-bit process and 512 MiB in a 32-bit one. May be called at any time from any thread;
/// answers that are being read keep the limit they began with.
NEXWIRE_API void SetAnswerMemoryLimit(std::uint64_t bytes);

} // namespace nexwire
