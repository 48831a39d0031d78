#include "nexwire/host/RetryingExecutor.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <random>
#include <string>
#include <utility>

#include "HostFailure.h"
#include "Waiting.h"
#include "keel/Error.h"
#include "keel/StringUtil.h"

namespace nexwire {
namespace host {

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

/// Milliseconds that the server asks to wait; -1 when it does not. Dates are not read.
std::int64_t RetryAfter(const RspInfos& response)
{
    for (const auto& [name, value] : response.headers) {
        if (Keel::StringUtil::LowerCase(name) != "retry-after") {
            continue;
        }
        std::int64_t seconds = 0;
        for (const char c : value) {
            if (c < '0' || c > '9') {
                return -1;
            }
            seconds = std::min<std::int64_t>(seconds * 10 + (c - '0'), kLongestWaitMs / 1000);
        }
        return value.empty() ? -1 : seconds * 1000;
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
    std::mutex mutex;
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

    bool Perform(RspInfos& response, const RequestParams& request, int flag)
    {
        const std::int32_t allowed = request.timeoutMs > 0 ? request.timeoutMs : RequestParams::kDefaultTimeoutMs;
        const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(allowed);
        Earn();
        if (inner->Execute(response, request, flag)) {
            return true;
        }
        RequestParams again = request;
        std::int32_t tried = 1;
        for (;; ++tried) {
            const Keel::Error::ErrorCode error = Keel::Error::GetLastError();
            const Remedy remedy = RemedyFor(error);
            const bool may =
                remedy == Remedy::Always || (remedy == Remedy::WhenSafe && options.methods.count(request.method) != 0);
            const Clock::time_point next = Clock::now() + std::chrono::milliseconds(Delay(tried, response));
            if (!may || tried >= options.attempts || next >= deadline || !Spend()) {
                return Told(error, tried);
            }
            if (!WaitUntil(next)) {
                Told(error, tried);
                return Fail(HostError::Aborted,
                            "cancelled before it was tried again: " + Keel::Error::GetLastError().text);
            }
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
            again.timeoutMs = static_cast<std::int32_t>(std::max<std::int64_t>(left.count(), 1));
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
    : m_state(new State)
{
    m_state->inner = std::move(inner);
    m_state->options = options;
}

RetryingExecutor::~RetryingExecutor() = default;

bool RetryingExecutor::Execute(RspInfos& response, const RequestParams& request, int flag)
{
    try {
        return m_state->Perform(response, request, flag);
    } catch (const std::exception&) {
        return FailWithoutMemory(response);
    }
}

} // namespace host
} // namespace nexwire
