#include "Waiting.h"

#include <condition_variable>
#include <mutex>

#include "nexwire/host/CallScope.h"

namespace nexwire {
namespace host {

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

} // namespace host
} // namespace nexwire
