#include "nexwire/host/TracingExecutor.h"

#include <chrono>
#include <exception>
#include <utility>

#include "HostFailure.h"
#include "Trace.h"
#include "TransferFailure.h"
#include "Waiting.h"
#include "nexwire/host/CallScope.h"
#include <keel/Error.h>

namespace nexwire::host {

namespace {

using Clock = std::chrono::steady_clock;

/// The call of a thread that is told of, or null.
struct TracedCall {
    const TracingExecutor::Sink& sink;
    const Clock::time_point begin = Clock::now();
    int attempts = 0;
    TracedCall* const outer; ///< A renewal of the session calls the library from within a call.
};

thread_local TracedCall* t_traced = nullptr;

std::string Outcome(bool success, const RspInfos& response)
{
    if (success) {
        return "answered, " + std::to_string(response.body.size()) + " bytes";
    }
    const Keel::Error::ErrorCode error = Keel::Error::GetLastError();
    return error.text + " [" + std::to_string(error.category) + "-" + std::to_string(error.number) + "]";
}

class AttemptTracer : public IRequestExecutor {
public:
    explicit AttemptTracer(std::unique_ptr<IRequestExecutor> transport) : transport_(std::move(transport)) {}

    bool Execute(RspInfos& response, const RequestParams& request, int flag) override
    {
        Tell("transport", [&] {
            return "attempt " + std::to_string(++t_traced->attempts) + ", within " +
                   std::to_string(AllowedMs(request)) + " ms";
        });
        const bool success = transport_->Execute(response, request, flag);
        Tell("transport", [&] { return Outcome(success, response); });
        return success;
    }

private:
    std::unique_ptr<IRequestExecutor> transport_;
};

} // namespace

bool Traced()
{
    return t_traced != nullptr;
}

void TellStep(const char* part, const std::string& text)
{
    const auto since = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - t_traced->begin);
    t_traced->sink({part, text, static_cast<std::uint64_t>(since.count())});
}

std::unique_ptr<IRequestExecutor> TraceAttempts(std::unique_ptr<IRequestExecutor> transport)
{
    return std::make_unique<AttemptTracer>(std::move(transport));
}

TracingExecutor::TracingExecutor(std::unique_ptr<IRequestExecutor> inner, Sink sink)
    : inner_(std::move(inner)), sink_(std::move(sink))
{
}

bool TracingExecutor::Execute(RspInfos& response, const RequestParams& request, int flag)
{
    TracedCall traced{sink_, Clock::now(), 0, t_traced};
    t_traced = &traced;
    const bool success = Guarded(response, [&] {
        Tell("call", [&] {
            const CallScope* const scope = CallScope::Current();
            return "method code " + std::to_string(request.method) + ", " + Printable(request.url, kQuotedBytes) +
                   (scope == nullptr || scope->Name().empty() ? "" : ", in " + scope->Name());
        });
        const bool answered = inner_->Execute(response, request, flag);
        Tell("call", [&] { return Outcome(answered, response); });
        return answered;
    });
    t_traced = traced.outer;
    return success;
}

} // namespace nexwire::host
