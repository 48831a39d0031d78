#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "nexwire/IRequestExecutor.h"

namespace nexwire::host {

/// One step of a call on its way through the parts of an executor.
struct TraceStep {
    std::string
        part; ///< "parts" (once, when they are put together), "call", "session", "retry", "faults", "transport".
    std::string text; ///< What happened, on one line. Holds paths and errors as they are, no header fields or bodies.
    std::uint64_t microseconds = 0; ///< Since the call began.
};

/// Tells each step of its calls while it happens, on the calling thread: begin and end, attempts and what became of
/// them, waits, sessions, faults. `MakeExecutor` makes it the outermost part. Safe from any number of threads.
class TracingExecutor : public IRequestExecutor {
public:
    using Sink = std::function<void(const TraceStep&)>;

    /// @param inner  does the work; must not be null.
    /// @param sink   called from any thread; must not be empty and may not throw.
    TracingExecutor(std::unique_ptr<IRequestExecutor> inner, Sink sink);

    bool Execute(RspInfos& response, const RequestParams& request, int flag) override;

private:
    std::unique_ptr<IRequestExecutor> inner_;
    Sink sink_;
};

} // namespace nexwire::host
