#include "nexwire/host/MakeExecutor.h"

#include <utility>

#include "Trace.h"
#include "nexwire/host/CallScope.h"
#include "nexwire/host/ExchangeRecorder.h"

namespace nexwire::host {

std::unique_ptr<IRequestExecutor> MakeExecutor(const ExecutorOptions& options, ObservingExecutor** observing)
{
    return MakeExecutor(std::make_unique<HttpRequestExecutor>(options.http), options, observing);
}

std::unique_ptr<IRequestExecutor> MakeExecutor(std::unique_ptr<IRequestExecutor> transport,
                                               const ExecutorOptions& options, ObservingExecutor** observing)
{
    std::unique_ptr<IRequestExecutor> made = std::move(transport);
    std::string parts = options.transportName;
    const auto put = [&](std::unique_ptr<IRequestExecutor> part, const std::string& name) {
        made = std::move(part);
        parts = name + " > " + parts;
    };
    if (options.trace) {
        made = TraceAttempts(std::move(made));
    }
    if (!options.faults.empty()) {
        put(std::make_unique<FaultExecutor>(std::move(made), options.faults, options.faultSeed),
            "faults (rules: " + std::to_string(options.faults.size()) + ")");
    }
    if (!options.recordTo.empty()) {
        put(std::make_unique<RecordingExecutor>(std::move(made), options.recordTo), "recording");
    }
    if (options.retry) {
        put(std::make_unique<RetryingExecutor>(std::move(made), *options.retry),
            "retry (at most " + std::to_string(options.retry->attempts) + " attempts)");
    }
    if (options.token) {
        put(std::make_unique<TokenExecutor>(std::move(made), *options.token), "session");
    }
    if (observing != nullptr) {
        *observing = nullptr;
    }
    if (options.observe) {
        auto counting = std::make_unique<ObservingExecutor>(std::move(made), *options.observe);
        if (observing != nullptr) {
            *observing = counting.get();
        }
        put(std::move(counting), "counts");
    }
    put(std::make_unique<ScopedExecutor>(std::move(made)), "scope");
    if (options.trace) {
        options.trace({"parts", parts, 0});
        made = std::make_unique<TracingExecutor>(std::move(made), options.trace);
    }
    return made;
}

} // namespace nexwire::host
