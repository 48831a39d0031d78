#pragma once

#include <cstdint>

#include "src/Services.h"

namespace nexwire::simulator {

/// The platform's log: a table of its own, so that a page of a hundred thousand entries is there at once. Safe from any
/// thread.
class OperationLog {
public:
    /// Makes the table where there is none.
    OperationLog(Store& store, const Description& description);

    /// Writes what a request asked for and what came of it; what only reads is not worth an entry.
    void Note(const Request& request, const Answer& answer, std::int64_t nowMs);

private:
    Store& store_;
    const Description& description_;
};

} // namespace nexwire::simulator
