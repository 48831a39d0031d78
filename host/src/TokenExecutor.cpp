#include "nexwire/host/TokenExecutor.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

#include "HostFailure.h"
#include "Trace.h"
#include "TransferFailure.h"
#include "Waiting.h"
#include "nexwire/HTTPCommonJSONStruct.h"
#include "nexwire/host/CallScope.h"
#include <keel/Error.h>

namespace nexwire::host {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kLongestRefusal = 4096; // What says that a session ended is short; long answers are not read.

} // namespace

struct TokenExecutor::State {
    std::unique_ptr<IRequestExecutor> inner;
    TokenOptions options;
    std::string code{}; ///< As it stands in an envelope; empty for none.
    std::mutex mutex{};
    std::condition_variable renewed{};
    std::thread::id renewing{}; ///< The thread that gets a session; none at other times.
    std::string session{};
    std::uint64_t generation = 0; ///< Of the session; 0 before there was one.
    std::uint64_t failures = 0;   ///< Renewals that brought none.

    enum class Renewal { Done, Failed, Cancelled, Late };

    bool Ended(bool success, const RspInfos& response) const
    {
        if (!success) {
            const Keel::Error::ErrorCode error = Keel::Error::GetLastError();
            return options.endedStatus != 0 && error.category == kHttpStatusCategory &&
                   error.number == options.endedStatus;
        }
        if (code.empty() || response.body.size() > kLongestRefusal || response.body.find(code) == std::string::npos) {
            return false;
        }
        protocol::ReturnData envelope;
        return envelope.Parse(response.body) && envelope.code.category == options.endedCategory &&
               envelope.code.number == options.endedNumber;
    }

    /// A session newer than `old`, got by this thread or by another one meanwhile. Those that waited for a renewal
    /// share its failure, too, unless it failed because the call that was at it was ended.
    Renewal Renew(std::uint64_t old, Clock::time_point deadline)
    {
        const CallScope* const scope = CallScope::Current();
        const auto cancelled = [scope] { return scope != nullptr && scope->Cancelled(); };
        const CancelWatch watch([this] {
            const std::lock_guard<std::mutex> lock(mutex);
            renewed.notify_all();
        });
        std::unique_lock<std::mutex> lock(mutex);
        const std::uint64_t failedBefore = failures;
        const auto ready = [&] { return cancelled() || renewing == std::thread::id(); };
        if (!ready()) {
            lock.unlock();
            Tell("session", [] { return std::string("waits for the session that another call asks for"); });
            lock.lock();
        }
        if (!renewed.wait_until(lock, deadline, ready)) {
            return Renewal::Late;
        }
        if (generation != old) {
            return Renewal::Done;
        }
        if (cancelled()) {
            return Renewal::Cancelled;
        }
        if (failures != failedBefore) {
            return Renewal::Failed;
        }
        renewing = std::this_thread::get_id();
        const std::string ended = session;
        lock.unlock();
        Tell("session", [&] { return std::string(ended.empty() ? "asks for one" : "ended; asks for a new one"); });
        std::string fresh;
        try {
            fresh = options.renew(ended);
        } catch (...) {
            fresh.clear();
        }
        const bool got = !fresh.empty();
        const bool givenUp = cancelled() || Clock::now() >= deadline;
        Tell("session", [&] { return std::string(got ? "is there" : "none was to be had"); });
        lock.lock();
        renewing = std::thread::id();
        if (got) {
            session = std::move(fresh);
            ++generation;
        } else if (!givenUp) {
            ++failures;
        }
        renewed.notify_all();
        return got ? Renewal::Done : cancelled() ? Renewal::Cancelled : Renewal::Failed;
    }

    /// Gives the request the session that holds now.
    std::uint64_t Mark(RequestParams& request)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!session.empty()) {
            request.headers[options.header] = session;
        }
        return generation;
    }

    bool IsRenewing()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return renewing == std::this_thread::get_id();
    }

    bool Perform(RspInfos& response, const RequestParams& request, int flag)
    {
        if (request.headers.count(options.header) != 0) {
            return inner->Execute(response, request, flag);
        }
        const Clock::time_point deadline = DeadlineOf(request);
        const auto refuse = [&](HostError error, const char* why) {
            response = RspInfos();
            return Fail(error, Printable(request.url, kQuotedBytes) + ": not sent: " + why);
        };
        const auto ended = [&](Renewal renewal) {
            return renewal == Renewal::Cancelled
                       ? refuse(HostError::Aborted, "cancelled while there was no session")
                       : refuse(HostError::DeadlinePassed, "its time was over before there was a session");
        };
        RequestParams sent = request;
        std::uint64_t used = Mark(sent);
        if (used == 0 && !IsRenewing()) {
            const Renewal renewal = Renew(0, deadline);
            if (renewal != Renewal::Done) {
                return renewal == Renewal::Failed ? refuse(HostError::RequestRefused, "there is no session")
                                                  : ended(renewal);
            }
            used = Mark(sent);
            sent.timeoutMs = MsUntil(deadline);
            if (sent.timeoutMs <= 0) {
                return ended(Renewal::Late);
            }
        }
        const bool success = inner->Execute(response, sent, flag);
        if (!Ended(success, response) || IsRenewing()) {
            return success;
        }
        const Keel::Error::ErrorCode error = Keel::Error::GetLastError(); // `renew` may leave another.
        const Renewal renewal = Renew(used, deadline);
        if (renewal == Renewal::Failed) {
            Keel::Error::SetLastError(error);
            return success;
        }
        sent.timeoutMs = MsUntil(deadline);
        if (renewal != Renewal::Done || sent.timeoutMs <= 0) {
            return ended(renewal);
        }
        Mark(sent);
        return inner->Execute(response, sent, flag);
    }
};

TokenExecutor::TokenExecutor(std::unique_ptr<IRequestExecutor> inner, const TokenOptions& options)
    : state_(new State{std::move(inner), options})
{
    if (options.endedNumber != 0) {
        state_->code = '"' + std::to_string(options.endedCategory) + '-' + std::to_string(options.endedNumber) + '"';
    }
}

TokenExecutor::~TokenExecutor() = default;

bool TokenExecutor::Execute(RspInfos& response, const RequestParams& request, int flag)
{
    return Guarded(response, [&] { return state_->Perform(response, request, flag); });
}

} // namespace nexwire::host
