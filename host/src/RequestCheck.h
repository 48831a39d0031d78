#pragma once

#include <string>

namespace nexwire::host {

/// Why the path must not go onto the wire; empty when it may.
std::string RefusePath(const std::string& path);

/// Why the text must not stand behind the question mark of a request line; empty when it may.
std::string RefuseQuery(const std::string& query);

/// Why the pair must not become a header field; empty when it may. Never quotes the value.
std::string RefuseHeader(const std::string& name, const std::string& value);

} // namespace nexwire::host
