#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include "nexwire/IRequestExecutor.h"

namespace nexwire::host {

/// When to repeat what failed.
struct RetryOptions {
    std::int32_t attempts = 4; ///< At most so many in all; 1 repeats nothing.
    /// Method codes whose requests may be repeated although the platform may have carried them out. Others are
    /// repeated only when nothing was sent.
    std::set<std::int32_t> methods{0, 2};
    std::int32_t firstDelayMs = 100; ///< The longest wait before the second attempt; doubles from there.
    std::int32_t maxDelayMs = 5000;  ///< No wait is longer, unless the server asks for it.
    /// Share of calls that may be repetitions, in percent, so that a platform in trouble is not drowned by them; a
    /// fresh executor has ten to spend.
    std::int32_t budgetPercent = 20;
    /// A number from 0 to 1 for the share of each wait; empty takes one that is random. Any thread may call it.
    std::function<double()> random;
};

/// Repeats requests that failed where that can do no harm. Safe from any number of threads.
///
/// Repeated are failures to reach the server, whatever the method code; for the listed method codes also connections
/// that broke and the statuses 429, 502, 503 and 504. Not repeated are failures that a repetition cannot mend (options,
/// certificates, what the host refused to send) and calls that were cancelled. An answer that carries a failure in its
/// envelope is an answer.
///
/// The time of the request bounds all attempts and the waits between them: no wait begins that would end behind it. A
/// wait is a random part of the current longest one, or what "Retry-After" asks for; a `CallScope` that is cancelled
/// ends it.
class RetryingExecutor : public IRequestExecutor {
public:
    /// @param inner  does the work; must not be null.
    explicit RetryingExecutor(std::unique_ptr<IRequestExecutor> inner, const RetryOptions& options = {});
    ~RetryingExecutor() override;

    /// @return what the last attempt returned. A failure that was repeated says how often it was tried, at the end of
    ///         the last error's text.
    bool Execute(RspInfos& response, const RequestParams& request, int flag) override;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace nexwire::host
