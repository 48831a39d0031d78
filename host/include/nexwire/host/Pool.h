#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "nexwire/host/CallScope.h"

namespace nexwire::host {

/// What a future throws whose work never ran: the pool was full, ended, or the token was pulled before.
class PoolRefused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct PoolOptions {
    std::size_t threads = 4;     ///< At least 1.
    std::size_t queue = 256;     ///< Work that may wait; at least 1.
    bool waitWhenFull = false;   ///< True: `Submit` waits for room; false: it refuses.
    std::int32_t deadlineMs = 0; ///< For each piece of work, from its beginning; 0 none.
    /// Hands a function to another thread, such as that of the window; for `Submit` with `done`. It may be called from
    /// any thread and should return soon. Empty: `done` runs on the worker, and so does `failed`, except that refused
    /// work is told of by the thread that refuses it.
    std::function<void(std::function<void()>)> post;
};

/// Runs work on threads of its own, so that calls do not block the caller. Each piece of work has a `CallScope` around
/// it, whose token the caller gets: pulling it ends the call that runs. Safe from any number of threads.
///
///     host::Pool pool({});
///     auto work = pool.Submit([] {
///         protocol::AccessGroupQueryResponseListData groups;
///         nexwire::CAccessGroupComm::queryAccessGroups(groups);
///         return groups;
///     });
///     ... work.token.Cancel() or work.future.get() ...
class Pool {
public:
    template <class Result>
    struct Work {
        std::future<Result> future;
        CancelToken token;
    };

    explicit Pool(const PoolOptions& options);
    /// Cancels what runs, refuses what waits, and waits for the threads to end.
    ~Pool();
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;

    /// @return at once, unless the pool is full and waits. What `function` throws comes out of the future; so does
    ///         `PoolRefused`.
    template <class Function>
    Work<std::invoke_result_t<Function>> Submit(Function function)
    {
        using Result = std::invoke_result_t<Function>;
        auto promise = std::make_shared<std::promise<Result>>();
        Work<Result> work{promise->get_future(), CancelToken()};
        Task task;
        task.token = work.token;
        task.run = [promise, function = std::move(function)]() mutable {
            try {
                if constexpr (std::is_void_v<Result>) {
                    function();
                    promise->set_value();
                } else {
                    promise->set_value(function());
                }
            } catch (...) {
                promise->set_exception(std::current_exception());
            }
        };
        task.refuse = [promise](const char* why) { promise->set_exception(std::make_exception_ptr(PoolRefused(why))); };
        Take(std::move(task));
        return work;
    }

    /// The same with a function that receives the result (nothing, where there is none) where `post` leads to, instead
    /// of a future. `failed` receives a `std::exception_ptr` there instead: what `function` threw, or `PoolRefused`.
    template <class Function, class Done, class Failed>
    CancelToken Submit(Function function, Done done, Failed failed)
    {
        Task task;
        const CancelToken token = task.token;
        const auto fail = [this, failed](std::exception_ptr why) { Post([failed, why]() mutable { failed(why); }); };
        task.run = [this, fail, function = std::move(function), done = std::move(done)]() mutable {
            std::function<void()> message;
            try {
                if constexpr (std::is_void_v<std::invoke_result_t<Function>>) {
                    function();
                    message = std::move(done);
                } else {
                    auto result = std::make_shared<std::invoke_result_t<Function>>(function());
                    message = [done = std::move(done), result]() mutable { done(std::move(*result)); };
                }
            } catch (...) {
                fail(std::current_exception());
                return;
            }
            Post(std::move(message));
        };
        task.refuse = [fail](const char* why) { fail(std::make_exception_ptr(PoolRefused(why))); };
        Take(std::move(task));
        return token;
    }

    /// The same for whoever does not want to hear of failures.
    template <class Function, class Done>
    CancelToken Submit(Function function, Done done)
    {
        return Submit(std::move(function), std::move(done), [](const std::exception_ptr&) {});
    }

    /// Work that waits or runs.
    std::size_t Pending() const;

private:
    struct Task {
        CancelToken token;
        std::function<void()> run;
        std::function<void(const char*)> refuse;
    };
    struct State;

    void Take(Task task);
    void Post(std::function<void()> function);

    std::unique_ptr<State> state_;
};

} // namespace nexwire::host
