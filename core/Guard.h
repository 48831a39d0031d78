#pragma once

namespace nexwire {
namespace core {

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

} // namespace core
} // namespace nexwire
