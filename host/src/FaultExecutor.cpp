#include "nexwire/host/FaultExecutor.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <optional>
#include <random>
#include <utility>

#include "HostFailure.h"
#include "Trace.h"
#include "TransferFailure.h"
#include "Waiting.h"

namespace nexwire::host {

struct FaultExecutor::State {
    std::unique_ptr<IRequestExecutor> inner;
    std::vector<FaultRule> rules;
    std::mt19937 generator;
    std::vector<std::uint64_t> struck = std::vector<std::uint64_t>(rules.size());
    mutable std::mutex mutex{};

    /// The delay that strikes, and the fault; null for none.
    const FaultRule* Draw(const RequestParams& request, std::int32_t& delayMs)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (std::size_t i = 0; i < rules.size(); ++i) {
            const FaultRule& rule = rules[i];
            const bool fits = request.url.find(rule.path) != std::string::npos &&
                              (rule.method < 0 || rule.method == request.method) &&
                              (rule.times < 0 || struck[i] < static_cast<std::uint64_t>(rule.times));
            // Not by a distribution of the standard library: those differ from one library to the other.
            if (!fits || static_cast<double>(generator()) >= rule.probability * 4294967296.0) {
                continue;
            }
            ++struck[i];
            if (rule.fault != FaultRule::Fault::Delay) {
                return &rule;
            }
            delayMs += rule.delayMs;
        }
        return nullptr;
    }

    bool Perform(RspInfos& response, const RequestParams& request, int flag)
    {
        response.headers.clear();
        response.body.clear();
        const auto name = [&] { return Printable(request.url, kQuotedBytes) + ": "; };
        std::int32_t delayMs = 0;
        const FaultRule* const rule = Draw(request, delayMs);
        if (rule != nullptr || delayMs > 0) {
            Tell("faults", [&] {
                return (rule == nullptr ? std::string("delayed")
                                        : "rule " + std::to_string(rule - rules.data() + 1) + " strikes" +
                                              (delayMs > 0 ? ", delayed" : "")) +
                       (delayMs > 0 ? " by " + std::to_string(delayMs) + " ms" : "");
            });
        }
        std::optional<RequestParams> hurried;
        if (delayMs > 0) {
            const std::int32_t allowed = AllowedMs(request);
            const bool late = delayMs >= allowed;
            if (!WaitUntil(std::chrono::steady_clock::now() + std::chrono::milliseconds(std::min(delayMs, allowed)))) {
                return Fail(HostError::Aborted, name() + "cancelled during a delay by rule");
            }
            if (late) {
                return Fail(HostError::DeadlinePassed, name() + "delayed by rule beyond its time");
            }
            hurried = request;
            hurried->timeoutMs = allowed - delayMs;
        }
        if (rule != nullptr && rule->fault == FaultRule::Fault::Unsent) {
            return Fail(rule->error, name() + "not sent, by rule");
        }
        if (rule != nullptr && (rule->fault == FaultRule::Fault::Status || rule->fault == FaultRule::Fault::Answer)) {
            response.body = rule->body;
            return rule->fault == FaultRule::Fault::Answer ||
                   FailStatus(rule->status, name() + "status " + std::to_string(rule->status) + " by rule");
        }
        if (inner == nullptr) {
            return Fail(HostError::ConnectFailed, name() + "nothing stands behind the faults");
        }
        const bool success = inner->Execute(response, hurried ? *hurried : request, flag);
        if (success && rule != nullptr && rule->fault == FaultRule::Fault::Torn) {
            response.body.resize(response.body.size() / 2);
        } else if (rule != nullptr && rule->fault == FaultRule::Fault::Lost) {
            response = RspInfos();
            return Fail(rule->error, name() + "answer lost, by rule");
        }
        return success;
    }
};

FaultExecutor::FaultExecutor(std::unique_ptr<IRequestExecutor> inner, std::vector<FaultRule> rules, std::uint32_t seed)
    : state_(new State{std::move(inner), std::move(rules), std::mt19937(seed)})
{
}

FaultExecutor::~FaultExecutor() = default;

bool FaultExecutor::Execute(RspInfos& response, const RequestParams& request, int flag)
{
    return Guarded(response, [&] { return state_->Perform(response, request, flag); });
}

std::vector<std::uint64_t> FaultExecutor::Struck() const
{
    const std::lock_guard<std::mutex> lock(state_->mutex);
    return state_->struck;
}

} // namespace nexwire::host
