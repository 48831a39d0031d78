#include "nexwire/host/RetryingExecutor.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <mutex>
#include <random>
#include <string>
#include <utility>

#include <curl/curl.h>

#include "HostFailure.h"
#include "Trace.h"
#include "Waiting.h"
#include <keel/Error.h>
#include <keel/StringUtil.h>

namespace nexwire::host {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kFirstBudget = 10.0;
constexpr double kMostBudget = 100.0;
constexpr std::int64_t kLongestWaitMs = 24 * 3600 * 1000;

enum class Remedy { None, WhenSafe, Always };

/// What a repetition can do about a failure.
Remedy RemedyFor(const Keel::Error::ErrorCode& error)
{
    if (error.category == kHttpStatusCategory) {
        const bool passing = error.number == 429 || (error.number >= 502 && error.number <= 504);
        return passing ? Remedy::WhenSafe : Remedy::None;
    }
    if (error.category != kHostErrorCategory) {
        return Remedy::None;
    }
    switch (static_cast<HostError>(error.number)) {
    case HostError::ResolveFailed:
    case HostError::ConnectFailed:
        return Remedy::Always;
    case HostError::SendFailed:
    case HostError::AnswerIncomplete:
    case HostError::NotRepeated:
        return Remedy::WhenSafe;
    default:
        return Remedy::None;
    }
}

/// Milliseconds that the server asks to wait, in seconds or as a date; -1 when it does not.
std::int64_t RetryAfter(const RspInfos& response)
{
    for (const auto& [name, value] : response.headers) {
        if (Keel::StringUtil::LowerCase(name) != "retry-after" || value.empty()) {
            continue;
        }
        std::int64_t seconds = 0;
        if (value.find_first_not_of("0123456789") == std::string::npos) {
            for (const char c : value) {
                seconds = std::min<std::int64_t>(seconds * 10 + (c - '0'), kLongestWaitMs / 1000);
            }
        } else {
            const std::int64_t when = curl_getdate(value.c_str(), nullptr);
            if (when < 0) {
                return -1;
            }
            seconds = std::clamp<std::int64_t>(when - std::time(nullptr), 0, kLongestWaitMs / 1000);
        }
        return seconds * 1000;
    }
    return -1;
}

double Random()
{
    thread_local std::minstd_rand generator{std::random_device{}()};
    return std::uniform_real_distribution<double>(0.0, 1.0)(generator);
}

} // namespace

struct RetryingExecutor::State {
    std::unique_ptr<IRequestExecutor> inner;
    RetryOptions options;
    std::mutex mutex{};
    double budget = kFirstBudget;

    void Earn()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        budget = std::min(budget + options.budgetPercent / 100.0, kMostBudget);
    }

    bool Spend()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (budget < 1.0) {
            return false;
        }
        budget -= 1.0;
        return true;
    }

    /// Milliseconds before the attempt behind `tried` ones.
    std::int64_t Delay(std::int32_t tried, const RspInfos& response) const
    {
        const std::int64_t asked = RetryAfter(response);
        const std::int64_t doubled = std::int64_t{options.firstDelayMs} << std::min(tried - 1, 30);
        const double share = options.random ? options.random() : Random();
        const auto most = static_cast<double>(std::min<std::int64_t>(doubled, options.maxDelayMs));
        return std::max(asked, static_cast<std::int64_t>(most * share));
    }

    /// Why there is no further attempt; null when there is one. Then it is paid for.
    const char* WhyNot(const Keel::Error::ErrorCode& error, const RequestParams& request, std::int32_t tried,
                       std::int64_t delayMs, Clock::time_point deadline)
    {
        const Remedy remedy = RemedyFor(error);
        if (remedy == Remedy::None) {
            return "that would not mend it";
        }
        if (remedy == Remedy::WhenSafe && options.methods.count(request.method) == 0) {
            return "it may have been carried out";
        }
        if (tried >= options.attempts) {
            return "that was the last attempt";
        }
        if (Clock::now() + std::chrono::milliseconds(delayMs) >= deadline) {
            return "its time would be over";
        }
        return Spend() ? nullptr : "too many calls are repeated already";
    }

    bool Perform(RspInfos& response, const RequestParams& request, int flag)
    {
        const Clock::time_point deadline = DeadlineOf(request);
        Earn();
        if (inner->Execute(response, request, flag)) {
            return true;
        }
        RequestParams again = request;
        for (std::int32_t tried = 1;; ++tried) {
            const Keel::Error::ErrorCode error = Keel::Error::GetLastError();
            const std::int64_t delayMs = Delay(tried, response);
            if (const char* const why = WhyNot(error, request, tried, delayMs, deadline)) {
                Tell("retry", [&] { return std::string("not tried again: ") + why; });
                return Told(error, tried);
            }
            Tell("retry", [&] {
                return "waits " + std::to_string(delayMs) + " ms, then attempt " + std::to_string(tried + 1) +
                       " of at most " + std::to_string(options.attempts);
            });
            if (!WaitUntil(Clock::now() + std::chrono::milliseconds(delayMs))) {
                Told(error, tried);
                return Fail(HostError::Aborted,
                            "cancelled before it was tried again: " + Keel::Error::GetLastError().text);
            }
            again.timeoutMs = std::max<std::int32_t>(MsUntil(deadline), 1);
            if (inner->Execute(response, again, flag)) {
                return true;
            }
        }
    }

    static bool Told(Keel::Error::ErrorCode error, std::int32_t tried)
    {
        if (tried > 1) {
            error.text += " (tried " + std::to_string(tried) + " times)";
            Keel::Error::SetLastError(error);
        }
        return false;
    }
};

RetryingExecutor::RetryingExecutor(std::unique_ptr<IRequestExecutor> inner, const RetryOptions& options)
    : state_(new State{std::move(inner), options})
{
}

RetryingExecutor::~RetryingExecutor() = default;

bool RetryingExecutor::Execute(RspInfos& response, const RequestParams& request, int flag)
{
    return Guarded(response, [&] { return state_->Perform(response, request, flag); });
}

} // namespace nexwire::host
