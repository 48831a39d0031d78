#include "nexwire/host/TokenExecutor.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

#include "HostFailure.h"
#include "TransferFailure.h"
#include "keel/Error.h"
#include "nexwire/HTTPCommonJSONStruct.h"

namespace nexwire {
namespace host {

namespace {

constexpr std::size_t kLongestRefusal = 4096; // What says that a session ended is short; long answers are not read.

} // namespace

struct TokenExecutor::State {
    std::unique_ptr<IRequestExecutor> inner;
    TokenOptions options;
    std::string code; ///< As it stands in an envelope; empty for none.
    std::mutex mutex;
    std::condition_variable renewed;
    std::thread::id renewing; ///< The thread that gets a session; none at other times.
    std::string session;
    std::uint64_t generation = 0; ///< Of the session; 0 before there was one.

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

    /// A session newer than `old`, got by this thread or by another one meanwhile; false when there is none.
    bool Renew(std::uint64_t old)
    {
        std::unique_lock<std::mutex> lock(mutex);
        const auto free = [this] { return renewing == std::thread::id(); };
        renewed.wait(lock, free);
        if (generation != old) {
            return true;
        }
        renewing = std::this_thread::get_id();
        const std::string ended = session;
        lock.unlock();
        std::string fresh;
        try {
            fresh = options.renew(ended);
        } catch (...) {
            fresh.clear();
        }
        lock.lock();
        renewing = std::thread::id();
        if (!fresh.empty()) {
            session = std::move(fresh);
            ++generation;
        }
        renewed.notify_all();
        return generation != old;
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
        RequestParams sent = request;
        std::uint64_t used = Mark(sent);
        if (used == 0 && !IsRenewing()) {
            if (!Renew(0)) {
                response = RspInfos();
                return Fail(HostError::RequestRefused,
                            Printable(request.url, kQuotedBytes) + ": not sent: there is no session");
            }
            used = Mark(sent);
        }
        const bool success = inner->Execute(response, sent, flag);
        if (!Ended(success, response) || IsRenewing()) {
            return success;
        }
        const Keel::Error::ErrorCode error = Keel::Error::GetLastError(); // `renew` may leave another.
        if (!Renew(used)) {
            Keel::Error::SetLastError(error);
            return success;
        }
        Mark(sent);
        return inner->Execute(response, sent, flag);
    }
};

TokenExecutor::TokenExecutor(std::unique_ptr<IRequestExecutor> inner, const TokenOptions& options) : m_state(new State)
{
    m_state->inner = std::move(inner);
    m_state->options = options;
    if (options.endedNumber != 0) {
        m_state->code = '"' + std::to_string(options.endedCategory) + '-' + std::to_string(options.endedNumber) + '"';
    }
}

TokenExecutor::~TokenExecutor() = default;

bool TokenExecutor::Execute(RspInfos& response, const RequestParams& request, int flag)
{
    try {
        return m_state->Perform(response, request, flag);
    } catch (const std::exception&) {
        return FailWithoutMemory(response);
    }
}

} // namespace host
} // namespace nexwire
