#include "nexwire/host/MakeExecutor.h"

#include <utility>

#include "nexwire/host/CallScope.h"
#include "nexwire/host/ExchangeRecorder.h"

namespace nexwire {
namespace host {

std::unique_ptr<IRequestExecutor> MakeExecutor(const ExecutorOptions& options, ObservingExecutor** observing)
{
    std::unique_ptr<IRequestExecutor> made = std::make_unique<HttpRequestExecutor>(options.http);
    if (!options.faults.empty()) {
        made = std::make_unique<FaultExecutor>(std::move(made), options.faults, options.faultSeed);
    }
    if (!options.recordTo.empty()) {
        made = std::make_unique<RecordingExecutor>(std::move(made), options.recordTo);
    }
    if (options.retry) {
        made = std::make_unique<RetryingExecutor>(std::move(made), *options.retry);
    }
    if (options.token) {
        made = std::make_unique<TokenExecutor>(std::move(made), *options.token);
    }
    if (observing != nullptr) {
        *observing = nullptr;
    }
    if (options.observe) {
        auto counting = std::make_unique<ObservingExecutor>(std::move(made), *options.observe);
        if (observing != nullptr) {
            *observing = counting.get();
        }
        made = std::move(counting);
    }
    return std::make_unique<ScopedExecutor>(std::move(made));
}

} // namespace host
} // namespace nexwire
