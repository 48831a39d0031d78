#pragma once

#include <chrono>
#include <cstdint>

#include "nexwire/RequestRecords.h"

namespace nexwire::host {

/// @return false at once when the calling thread's scope is cancelled meanwhile.
bool WaitUntil(std::chrono::steady_clock::time_point until);

/// Milliseconds that a request may take.
std::int32_t AllowedMs(const RequestParams& request);
std::chrono::steady_clock::time_point DeadlineOf(const RequestParams& request);

/// Whole milliseconds until then; 0 or less when it is over.
std::int32_t MsUntil(std::chrono::steady_clock::time_point deadline);

} // namespace nexwire::host
