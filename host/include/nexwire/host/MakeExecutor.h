#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "nexwire/host/FaultExecutor.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include "nexwire/host/ObservingExecutor.h"
#include "nexwire/host/RetryingExecutor.h"
#include "nexwire/host/TokenExecutor.h"
#include "nexwire/host/TracingExecutor.h"

namespace nexwire::host {

/// What an executor is to be made of; parts that are not given are left out.
struct ExecutorOptions {
    HttpExecutorOptions http;      ///< Of the ready-made transport.
    std::vector<FaultRule> faults; ///< For tests.
    std::uint32_t faultSeed = 1;
    std::string recordTo; ///< UTF-8 path of a file of exchanges; empty records nothing.
    std::optional<RetryOptions> retry;
    std::optional<TokenOptions> token;
    std::optional<ObserveOptions> observe;
    std::string transportName = "transport"; ///< As a trace calls it among the parts.
    TracingExecutor::Sink trace;             ///< Hears of what the executor is made of, and of each step; may be empty.
};

/// An executor of the kit's parts in the order in which they work together. From the outside in: scopes, counting,
/// session, repetition, recording, faults, transport; tracing is around all of them. So counts are those of the
/// caller's calls, a session is renewed once for all repetitions, and each attempt is recorded on its own.
///
/// @param observing  receives the part that counts, owned by the result; null without `observe`. May be null itself.
std::unique_ptr<IRequestExecutor> MakeExecutor(const ExecutorOptions& options, ObservingExecutor** observing = nullptr);

/// The same around a transport of the host's own; must not be null.
std::unique_ptr<IRequestExecutor> MakeExecutor(std::unique_ptr<IRequestExecutor> transport,
                                               const ExecutorOptions& options, ObservingExecutor** observing = nullptr);

} // namespace nexwire::host
