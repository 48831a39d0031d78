#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "nexwire/IRequestExecutor.h"

namespace nexwire::host {

/// Ends calls from another thread. Copies share one state; safe from any number of threads.
class CancelToken {
public:
    CancelToken();

    /// Ends what runs under the token and lets nothing begin under it any more. Returns without waiting.
    void Cancel();
    bool Cancelled() const;

private:
    friend class CancelWatch;
    struct State;
    std::shared_ptr<State> state_;
};

/// What holds for all calls that a thread makes while the object lives: a deadline, a token that ends them, header
/// fields, a name. Put it on the stack; scopes nest, and the inner one never has more time than the outer one.
///
///     host::CallScope scope("import", 5000);
///     scope.Header("SID", session);
///     CAccessGroupComm::queryAccessGroups(groups);   // gets what is left of the 5 s
///
/// It works where a `ScopedExecutor` is outermost, which `MakeExecutor` sees to. A scope belongs to the thread that
/// made it; only its token may be used from others.
class CallScope {
public:
    using Clock = std::chrono::steady_clock;

    /// @param name        for traces: up to the first outer scope, names are joined with "/". May be empty.
    /// @param deadlineMs  from now on; 0 sets none.
    explicit CallScope(const std::string& name = {}, std::int32_t deadlineMs = 0);
    CallScope(const std::string& name, std::int32_t deadlineMs, const CancelToken& token);
    ~CallScope();
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

    /// A field of every request; it wins over that of an outer scope and over the request's own.
    void Header(const std::string& name, const std::string& value);

    const CancelToken& Token() const { return token_; }
    /// Names of the outer scopes and its own, "outer/inner".
    const std::string& Name() const { return name_; }
    bool HasDeadline() const { return deadline_ != (Clock::time_point::max)(); }
    Clock::time_point Deadline() const { return deadline_; }
    /// Whether its token or that of an outer scope was pulled.
    bool Cancelled() const;

    /// The innermost scope of the calling thread, or null.
    static const CallScope* Current();

private:
    friend class CancelWatch;
    friend class ScopedExecutor;
    CallScope* const outer_;
    std::string name_;
    Clock::time_point deadline_ = (Clock::time_point::max)();
    CancelToken token_;
    std::map<std::string, std::string> headers_; ///< Those of the outer scopes included.
};

/// Calls a function when a token that holds for the calling thread is pulled, from the thread that pulls it. For
/// executors that wait: `wake` only wakes them up, `CallScope::Cancelled` tells why. It may not make or end watches.
class CancelWatch {
public:
    explicit CancelWatch(std::function<void()> wake);
    /// `wake` runs no more when this returns.
    ~CancelWatch();
    CancelWatch(const CancelWatch&) = delete;
    CancelWatch& operator=(const CancelWatch&) = delete;

private:
    friend class CancelToken;
    void Leave();

    std::function<void()> wake_;
    const CallScope* const scope_; ///< Where watching began.
};

/// Has every request follow the calling thread's scope: what is left of its deadline (at most), its header fields, its
/// token. Without a scope it hands on what it got. Safe from any number of threads.
class ScopedExecutor : public IRequestExecutor {
public:
    /// @param inner  does the work; must not be null.
    explicit ScopedExecutor(std::unique_ptr<IRequestExecutor> inner) : inner_(std::move(inner)) {}

    /// @return what the inner executor returns; false with `HostError::DeadlinePassed` or `HostError::Aborted`, and
    ///         nothing sent, when the scope has no time left or was cancelled.
    bool Execute(RspInfos& response, const RequestParams& request, int flag) override;

private:
    std::unique_ptr<IRequestExecutor> inner_;
};

} // namespace nexwire::host
