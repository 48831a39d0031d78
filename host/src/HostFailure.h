#pragma once

#include <cstddef>
#include <exception>
#include <string>

#include "nexwire/RequestRecords.h"
#include "nexwire/host/HostError.h"

namespace nexwire::host {

/// Stores the last error and returns false.
bool Fail(HostError error, const std::string& text);

/// Stores a failed HTTP status as the last error and returns false.
bool FailStatus(long status, const std::string& text);

/// Empties the response, stores `HostError::OutOfMemory` as far as memory allows, and returns false.
bool FailWithoutMemory(RspInfos& response) noexcept;

/// What `perform` returns. What it throws is a failure: nothing but memory runs out here.
template <class Perform>
bool Guarded(RspInfos& response, const Perform& perform)
{
    try {
        return perform();
    } catch (const std::exception&) {
        return FailWithoutMemory(response);
    }
}

/// The first `limit` bytes of `text` as `Keel::StringUtil::SingleLine` has them: a cut is marked with "...", and no
/// UTF-8 sequence is cut in two.
std::string Printable(const std::string& text, std::size_t limit);

} // namespace nexwire::host
