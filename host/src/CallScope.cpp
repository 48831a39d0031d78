#include "nexwire/host/CallScope.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

#include "HostFailure.h"
#include "TransferFailure.h"
#include "Waiting.h"

namespace nexwire::host {

namespace {

thread_local CallScope* t_current = nullptr;

} // namespace

// ---- Tokens ----

struct CancelToken::State {
    std::atomic<bool> cancelled{false};
    std::mutex mutex;
    std::vector<CancelWatch*> watches;
};

CancelToken::CancelToken() : state_(std::make_shared<State>()) {}

void CancelToken::Cancel()
{
    state_->cancelled = true;
    const std::lock_guard<std::mutex> lock(state_->mutex);
    for (const CancelWatch* watch : state_->watches) {
        watch->wake_();
    }
}

bool CancelToken::Cancelled() const
{
    return state_->cancelled.load(std::memory_order_acquire);
}

CancelWatch::CancelWatch(std::function<void()> wake) : wake_(std::move(wake)), scope_(CallScope::Current())
{
    try {
        for (const CallScope* scope = scope_; scope != nullptr; scope = scope->outer_) {
            CancelToken::State& state = *scope->token_.state_;
            const std::lock_guard<std::mutex> lock(state.mutex);
            state.watches.push_back(this);
        }
    } catch (...) {
        Leave();
        throw;
    }
}

CancelWatch::~CancelWatch()
{
    Leave();
}

void CancelWatch::Leave()
{
    for (const CallScope* scope = scope_; scope != nullptr; scope = scope->outer_) {
        CancelToken::State& state = *scope->token_.state_;
        const std::lock_guard<std::mutex> lock(state.mutex);
        state.watches.erase(std::remove(state.watches.begin(), state.watches.end(), this), state.watches.end());
    }
}

// ---- Scopes ----

CallScope::CallScope(const std::string& name, std::int32_t deadlineMs) : CallScope(name, deadlineMs, CancelToken()) {}

CallScope::CallScope(const std::string& name, std::int32_t deadlineMs, const CancelToken& token)
    : outer_(t_current), name_(name), token_(token)
{
    if (deadlineMs > 0) {
        deadline_ = Clock::now() + std::chrono::milliseconds(deadlineMs);
    }
    if (outer_ != nullptr) {
        deadline_ = std::min(deadline_, outer_->deadline_);
        headers_ = outer_->headers_;
        name_ = outer_->name_.empty() || name.empty() ? outer_->name_ + name : outer_->name_ + "/" + name;
    }
    t_current = this;
}

CallScope::~CallScope()
{
    t_current = outer_;
}

void CallScope::Header(const std::string& name, const std::string& value)
{
    headers_[name] = value;
}

bool CallScope::Cancelled() const
{
    for (const CallScope* scope = this; scope != nullptr; scope = scope->outer_) {
        if (scope->token_.Cancelled()) {
            return true;
        }
    }
    return false;
}

const CallScope* CallScope::Current()
{
    return t_current;
}

bool ScopedExecutor::Execute(RspInfos& response, const RequestParams& request, int flag)
{
    const CallScope* const scope = CallScope::Current();
    if (scope == nullptr) {
        return inner_->Execute(response, request, flag);
    }
    return Guarded(response, [&] {
        const auto refuse = [&](HostError error, const char* why) {
            response = RspInfos();
            return Fail(error, Printable(request.url, kQuotedBytes) + ": not sent: " + why);
        };
        if (scope->Cancelled()) {
            return refuse(HostError::Aborted, "the calls of this scope were cancelled");
        }
        RequestParams scoped = request;
        for (const auto& [name, value] : scope->headers_) {
            scoped.headers[name] = value;
        }
        if (scope->HasDeadline()) {
            const std::int32_t left = MsUntil(scope->Deadline());
            if (left <= 0) {
                return refuse(HostError::DeadlinePassed, "the time of this scope is over");
            }
            scoped.timeoutMs = std::min(left, AllowedMs(request));
        }
        return inner_->Execute(response, scoped, flag);
    });
}

} // namespace nexwire::host
