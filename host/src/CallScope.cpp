#include "nexwire/host/CallScope.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

#include "HostFailure.h"
#include "TransferFailure.h"
#include "Waiting.h"

namespace nexwire {
namespace host {

namespace {

thread_local CallScope* t_current = nullptr;

} // namespace

// ---- Tokens ----

struct CancelToken::State {
    std::atomic<bool> cancelled{false};
    std::mutex mutex;
    std::vector<CancelWatch*> watches;
};

CancelToken::CancelToken() : m_state(std::make_shared<State>()) {}

void CancelToken::Cancel()
{
    m_state->cancelled = true;
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    for (const CancelWatch* watch : m_state->watches) {
        watch->m_wake();
    }
}

bool CancelToken::Cancelled() const
{
    return m_state->cancelled.load(std::memory_order_acquire);
}

CancelWatch::CancelWatch(std::function<void()> wake) : m_wake(std::move(wake)), m_scope(CallScope::Current())
{
    try {
        for (const CallScope* scope = m_scope; scope != nullptr; scope = scope->m_outer) {
            CancelToken::State& state = *scope->m_token.m_state;
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
    for (const CallScope* scope = m_scope; scope != nullptr; scope = scope->m_outer) {
        CancelToken::State& state = *scope->m_token.m_state;
        const std::lock_guard<std::mutex> lock(state.mutex);
        state.watches.erase(std::remove(state.watches.begin(), state.watches.end(), this), state.watches.end());
    }
}

// ---- Scopes ----

CallScope::CallScope(const std::string& name, std::int32_t deadlineMs) : CallScope(name, deadlineMs, CancelToken()) {}

CallScope::CallScope(const std::string& name, std::int32_t deadlineMs, const CancelToken& token)
    : m_outer(t_current), m_name(name), m_token(token)
{
    if (deadlineMs > 0) {
        m_deadline = Clock::now() + std::chrono::milliseconds(deadlineMs);
    }
    if (m_outer != nullptr) {
        m_deadline = std::min(m_deadline, m_outer->m_deadline);
        m_headers = m_outer->m_headers;
        m_name = m_outer->m_name.empty() || name.empty() ? m_outer->m_name + name : m_outer->m_name + "/" + name;
    }
    t_current = this;
}

CallScope::~CallScope()
{
    t_current = m_outer;
}

void CallScope::Header(const std::string& name, const std::string& value)
{
    m_headers[name] = value;
}

bool CallScope::Cancelled() const
{
    for (const CallScope* scope = this; scope != nullptr; scope = scope->m_outer) {
        if (scope->m_token.Cancelled()) {
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
        return m_inner->Execute(response, request, flag);
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
        for (const auto& [name, value] : scope->m_headers) {
            scoped.headers[name] = value;
        }
        if (scope->HasDeadline()) {
            const std::int32_t left = MsUntil(scope->Deadline());
            if (left <= 0) {
                return refuse(HostError::DeadlinePassed, "the time of this scope is over");
            }
            scoped.timeoutMs = std::min(left, AllowedMs(request));
        }
        return m_inner->Execute(response, scoped, flag);
    });
}

} // namespace host
} // namespace nexwire
