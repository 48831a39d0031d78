#pragma once

#include <cstddef>
#include <string>

#include "Connection.h"

namespace nexwire {
namespace host {

/// How much of a body, a path or a redirect target an error text quotes.
constexpr std::size_t kQuotedBytes = 200;

/// Stores why the transfer failed as the last error; returns false. `name` begins the text, `server` is "host:port".
bool FailTransfer(CURLcode result, const Connection& connection, const std::string& name, const std::string& server);

/// The same for a complete answer whose status is no success.
bool FailAnswer(long status, const Connection& connection, const RspInfos& response, const std::string& name,
                const std::string& server);

} // namespace host
} // namespace nexwire
