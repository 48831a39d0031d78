#include "Waiting.h"

#include <algorithm>
#include <condition_variable>
#include <limits>
#include <mutex>

#include "nexwire/host/CallScope.h"

namespace nexwire::host {

bool WaitUntil(std::chrono::steady_clock::time_point until)
{
    std::mutex mutex;
    std::condition_variable woken;
    const CallScope* const scope = CallScope::Current();
    const CancelWatch watch([&] {
        const std::lock_guard<std::mutex> lock(mutex);
        woken.notify_all();
    });
    std::unique_lock<std::mutex> lock(mutex);
    return !woken.wait_until(lock, until, [scope] { return scope != nullptr && scope->Cancelled(); });
}

std::int32_t AllowedMs(const RequestParams& request)
{
    return request.timeoutMs > 0 ? request.timeoutMs : RequestParams::kDefaultTimeoutMs;
}

std::chrono::steady_clock::time_point DeadlineOf(const RequestParams& request)
{
    return std::chrono::steady_clock::now() + std::chrono::milliseconds(AllowedMs(request));
}

std::int32_t MsUntil(std::chrono::steady_clock::time_point deadline)
{
    using Milliseconds = std::chrono::milliseconds;
    const auto left = std::chrono::duration_cast<Milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    return static_cast<std::int32_t>(std::clamp<Milliseconds::rep>(left, (std::numeric_limits<std::int32_t>::min)(),
                                                                   (std::numeric_limits<std::int32_t>::max)()));
}

} // namespace nexwire::host
