#include "nexwire/host/ObservingExecutor.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
#include <mutex>
#include <utility>

#include "HostFailure.h"
#include "nexwire/host/CallScope.h"
#include <keel/Error.h>

namespace nexwire::host {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kLongestWord = 15;
constexpr std::size_t kLongestPattern = 256;

bool IsIdentifier(const char* begin, const char* end)
{
    bool digit = false;
    bool other = false;
    for (const char* at = begin; at != end; ++at) {
        if (*at == '%') {
            return true;
        }
        const bool isDigit = *at >= '0' && *at <= '9';
        digit = digit || isDigit;
        other = other || !isDigit;
    }
    return digit && (!other || static_cast<std::size_t>(end - begin) > kLongestWord);
}

void FoldInto(std::string& pattern, const std::string& path)
{
    pattern.clear();
    const char* at = path.data();
    const char* const last = at + std::min(path.find('?'), path.size());
    while (at != last) {
        const char* const end = std::find(at, last, '/');
        // The first segment is the same in every path, digits or not.
        if (at - path.data() > 1 && IsIdentifier(at, end)) {
            pattern += '*';
        } else {
            pattern.append(at, end);
        }
        if (end == last) {
            break;
        }
        pattern += '/';
        at = end + 1;
    }
    pattern.resize(std::min(pattern.size(), kLongestPattern));
}

/// As a label's value.
std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c == '\n' ? ' ' : c;
    }
    return quoted + '"';
}

} // namespace

std::size_t LatencyHistogram::StepOf(std::uint64_t microseconds)
{
    if (microseconds < kSteps) {
        return static_cast<std::size_t>(microseconds);
    }
    std::size_t doubling = 0;
    while ((microseconds >> doubling) >= 2 * kSteps) {
        ++doubling;
    }
    return std::min((doubling + 1) * kSteps + static_cast<std::size_t>((microseconds >> doubling) - kSteps),
                    kSteps * kDoublings - 1);
}

std::uint64_t LatencyHistogram::UpperEnd(std::size_t step)
{
    if (step < kSteps) {
        return step;
    }
    const std::size_t doubling = step / kSteps - 1;
    return ((static_cast<std::uint64_t>(kSteps + step % kSteps) + 1) << doubling) - 1;
}

void LatencyHistogram::Add(std::uint64_t microseconds)
{
    ++counts_[StepOf(microseconds)];
    ++count_;
    sum_ += microseconds;
}

std::uint64_t LatencyHistogram::PercentileUs(double percent) const
{
    const auto wanted = static_cast<std::uint64_t>(std::ceil(static_cast<double>(count_) * percent / 100.0));
    std::uint64_t seen = 0;
    for (std::size_t step = 0; step < counts_.size(); ++step) {
        seen += counts_[step];
        if (seen > 0 && seen >= wanted) {
            return UpperEnd(step);
        }
    }
    return 0;
}

std::uint64_t LatencyHistogram::Within(std::uint64_t microseconds) const
{
    std::uint64_t seen = 0;
    for (std::size_t step = 0; step < counts_.size() && UpperEnd(step) <= microseconds; ++step) {
        seen += counts_[step];
    }
    return seen;
}

struct ObservingExecutor::State {
    using Key = std::pair<std::string, std::int32_t>;

    std::unique_ptr<IRequestExecutor> inner;
    ObserveOptions options;
    mutable std::mutex mutex{};
    std::map<Key, CallStatistics> calls{};

    void Count(const RequestParams& request, const ObservedCall& call)
    {
        thread_local Key key; // Keeps its memory.
        FoldInto(key.first, request.url);
        key.second = request.method;
        const std::lock_guard<std::mutex> lock(mutex);
        auto found = calls.find(key);
        if (found == calls.end()) {
            if (calls.size() >= options.mostPatterns) {
                key = Key("(others)", -1);
            }
            found = calls.emplace(key, CallStatistics()).first;
            found->second.path = key.first;
            found->second.method = key.second;
        }
        CallStatistics& counted = found->second;
        if (!call.success) {
            ++counted.failures;
            const Keel::Error::ErrorCode error = Keel::Error::GetLastError();
            const auto is = [&](HostError which) {
                return error.category == kHostErrorCategory && error.number == static_cast<std::int32_t>(which);
            };
            counted.statuses += error.category == kHttpStatusCategory ? 1 : 0;
            counted.late += is(HostError::DeadlinePassed) ? 1 : 0;
            counted.cancelled += is(HostError::Aborted) ? 1 : 0;
        }
        counted.bytesOut += request.body.size();
        counted.bytesIn += call.bytesIn;
        counted.latency.Add(call.microseconds);
    }
};

ObservingExecutor::ObservingExecutor(std::unique_ptr<IRequestExecutor> inner, const ObserveOptions& options)
    : state_(new State{std::move(inner), options})
{
}

ObservingExecutor::~ObservingExecutor() = default;

bool ObservingExecutor::Execute(RspInfos& response, const RequestParams& request, int flag)
{
    const auto tell = [](const std::function<void(const ObservedCall&)>& hook, const ObservedCall& call) {
        if (hook) {
            hook(call);
        }
    };
    ObservedCall call;
    call.request = &request;
    bool asked = false;
    try {
        const CallScope* const scope = CallScope::Current();
        if (scope != nullptr && (state_->options.begin || state_->options.end)) {
            call.scope = scope->Name();
        }
        tell(state_->options.begin, call);
        const Clock::time_point start = Clock::now();
        asked = true;
        call.success = state_->inner->Execute(response, request, flag);
        const auto took = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
        call.microseconds = static_cast<std::uint64_t>(took.count());
        call.bytesIn = response.body.size();
        state_->Count(request, call);
        tell(state_->options.end, call);
        return call.success;
    } catch (const std::exception&) {
        // Counting needs memory; the answer that is there stays one.
        return asked ? call.success : FailWithoutMemory(response);
    }
}

std::vector<CallStatistics> ObservingExecutor::Snapshot() const
{
    std::vector<CallStatistics> all;
    const std::lock_guard<std::mutex> lock(state_->mutex);
    for (const auto& each : state_->calls) {
        all.push_back(each.second);
    }
    return all;
}

std::string ObservingExecutor::Prometheus() const
{
    static constexpr std::uint64_t kBoundsUs[] = {1000, 5000, 25000, 100000, 500000, 2500000, 10000000, 40000000};
    const std::vector<CallStatistics> all = Snapshot();
    const auto labels = [](const CallStatistics& each) {
        return "{path=" + Quoted(each.path) + ",method=\"" + std::to_string(each.method) + "\"";
    };
    std::string text;
    const auto head = [&](const char* name, const char* help) {
        text += std::string("# HELP ") + name + " " + help + "\n# TYPE " + name + " counter\n";
    };
    const auto counters = [&](const char* name, const char* help, auto value) {
        head(name, help);
        for (const CallStatistics& each : all) {
            text += name + labels(each) + "} " + std::to_string(value(each)) + "\n";
        }
    };
    counters("nexwire_calls_total", "Calls.", [](const CallStatistics& each) { return each.latency.Count(); });
    head("nexwire_call_failures_total", "Calls without an answer.");
    for (const CallStatistics& each : all) {
        const std::uint64_t named = each.statuses + each.late + each.cancelled;
        for (const auto& [reason, count] :
             {std::make_pair("status", each.statuses), std::make_pair("late", each.late),
              std::make_pair("cancelled", each.cancelled), std::make_pair("other", each.failures - named)}) {
            text += "nexwire_call_failures_total" + labels(each) + ",reason=\"" + reason + "\"} " +
                    std::to_string(count) + "\n";
        }
    }
    counters("nexwire_request_bytes_total", "Bodies of requests.",
             [](const CallStatistics& each) { return each.bytesOut; });
    counters("nexwire_answer_bytes_total", "Bodies of answers.",
             [](const CallStatistics& each) { return each.bytesIn; });
    text += "# HELP nexwire_call_seconds Time of calls.\n# TYPE nexwire_call_seconds histogram\n";
    char seconds[32];
    for (const CallStatistics& each : all) {
        for (const std::uint64_t bound : kBoundsUs) {
            std::snprintf(seconds, sizeof seconds, "%g", static_cast<double>(bound) / 1e6);
            text += "nexwire_call_seconds_bucket" + labels(each) + ",le=\"" + seconds + "\"} " +
                    std::to_string(each.latency.Within(bound)) + "\n";
        }
        text += "nexwire_call_seconds_bucket" + labels(each) + ",le=\"+Inf\"} " + std::to_string(each.latency.Count()) +
                "\n";
        std::snprintf(seconds, sizeof seconds, "%.6f", static_cast<double>(each.latency.SumUs()) / 1e6);
        text += "nexwire_call_seconds_sum" + labels(each) + "} " + seconds + "\n";
        text += "nexwire_call_seconds_count" + labels(each) + "} " + std::to_string(each.latency.Count()) + "\n";
    }
    return text;
}

} // namespace nexwire::host
