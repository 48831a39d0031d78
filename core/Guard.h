#pragma once

namespace nexwire::core {

/// Runs a step that may run out of memory; nothing is thrown across the library's boundary.
template <class Step>
bool Guard(const Step& step) noexcept
{
    try {
        return step();
    } catch (...) {
        return false;
    }
}

/// To be called before a thread-local object with a destructor is first used on a thread: its registration aborts the
/// process when memory has run out. Here a call can still fail.
/// @throws std::bad_alloc
void PrepareThread();

} // namespace nexwire::core
