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

/// The thread's own object of that type, found in one step once it is there. For use in one source file.
/// @throws std::bad_alloc
template <class Object>
Object& OfThread()
{
    static thread_local Object* known = nullptr;
    if (known == nullptr) {
        PrepareThread();
        static thread_local Object object;
        known = &object;
    }
    return *known;
}

} // namespace nexwire::core
