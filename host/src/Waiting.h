#pragma once

#include <chrono>

namespace nexwire {
namespace host {

/// @return false at once when the calling thread's scope is cancelled meanwhile.
bool WaitUntil(std::chrono::steady_clock::time_point until);

} // namespace host
} // namespace nexwire
