#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "Connection.h"

namespace nexwire::host {

/// How much of a body, a path or a redirect target an error text quotes.
constexpr std::size_t kQuotedBytes = 200;

/// What a text about a failure names.
struct Attempt {
    std::string name;   ///< Begins the text: verb, path and a colon.
    std::string server; ///< "host:port"
    const HttpExecutorOptions& options;
    std::int32_t allowedMs = 0; ///< Time of the request.
    bool connectingIsBounded;   ///< The time to connect ends before that of the request.
};

/// Stores why the transfer ended so (not with an answer) as the last error; returns false.
bool FailTransfer(httpcore::Ending ending, const Connection& connection, const Attempt& attempt);

/// The same for a complete answer whose status is no success.
bool FailAnswer(const Connection& connection, const RspInfos& response, const std::string& name,
                const std::string& server);

} // namespace nexwire::host
