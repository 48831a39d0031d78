#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "nexwire/IRequestExecutor.h"

namespace nexwire::host {

/// Times in fixed memory: eight steps to each doubling, so that a percentile is at most an eighth too long.
class LatencyHistogram {
public:
    void Add(std::uint64_t microseconds);
    std::uint64_t Count() const { return count_; }
    std::uint64_t SumUs() const { return sum_; }
    /// The time, in microseconds, that `percent` of the calls (0 to 100) stayed within; 0 without calls.
    std::uint64_t PercentileUs(double percent) const;
    /// How many calls took at most so many microseconds, as far as the steps can tell.
    std::uint64_t Within(std::uint64_t microseconds) const;

private:
    static constexpr std::size_t kSteps = 8;
    static constexpr std::size_t kDoublings = 34; ///< Up to some five hours.
    static std::size_t StepOf(std::uint64_t microseconds);
    static std::uint64_t UpperEnd(std::size_t step);

    std::array<std::uint64_t, kSteps * kDoublings> counts_{};
    std::uint64_t count_ = 0;
    std::uint64_t sum_ = 0;
};

/// What became of the calls of one method code and path pattern.
struct CallStatistics {
    std::string path;            ///< With "*" for identifiers; "(others)" once there are too many patterns.
    std::int32_t method = 0;     ///< Method code.
    std::uint64_t failures = 0;  ///< All of the calls without a usable answer; by what stood in the way:
    std::uint64_t statuses = 0;  ///< an HTTP status,
    std::uint64_t late = 0;      ///< the time,
    std::uint64_t cancelled = 0; ///< a scope that was cancelled, or an executor that was aborted. The rest is other.
    std::uint64_t bytesOut = 0;  ///< Bodies of requests.
    std::uint64_t bytesIn = 0;   ///< Bodies of answers.
    LatencyHistogram latency;
};

/// One call, for tracing.
struct ObservedCall {
    const RequestParams* request = nullptr; ///< Valid during the hook only; may hold secrets.
    std::string scope;                      ///< Name of the thread's `CallScope`; empty without one.
    bool success = false;                   ///< At the end.
    std::uint64_t microseconds = 0;         ///< At the end.
    std::size_t bytesIn = 0;                ///< At the end.
};

struct ObserveOptions {
    /// Patterns that are told apart; further ones count together.
    std::size_t mostPatterns = 256;
    /// Called on the calling thread before and after each call; may be empty. They may not throw.
    std::function<void(const ObservedCall&)> begin;
    std::function<void(const ObservedCall&)> end;
};

/// Counts what passes. Safe from any number of threads; its memory does not grow with the number of calls.
///
/// A segment of a path is an identifier when it has a digit and is longer than 15 characters, has digits only, or has a
/// percent sign; what a caller puts into a path is not counted as a pattern of its own.
class ObservingExecutor : public IRequestExecutor {
public:
    /// @param inner  does the work; must not be null.
    explicit ObservingExecutor(std::unique_ptr<IRequestExecutor> inner, const ObserveOptions& options = {});
    ~ObservingExecutor() override;

    bool Execute(RspInfos& response, const RequestParams& request, int flag) override;

    /// By path, then by method code.
    std::vector<CallStatistics> Snapshot() const;
    /// The snapshot as Prometheus reads it: counters of calls, failures and bytes, and a histogram of seconds.
    std::string Prometheus() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace nexwire::host
