#pragma once

#include <string>

#include "nexwire/JSONStruct.h"

namespace nexwire::core {

/// What `protocol::SerializeRequest` gives; for requests on their way out, which had better not go than go without
/// their body: throws when memory runs out.
std::string Serialize(const protocol::IInboundData& request);

/// What `protocol::ParseJSONText` gives, but throws when memory runs out: callers must tell that from a text that holds
/// something else.
bool ReadText(protocol::IJSONStruct& out, const char* root, const std::string& json, const char* caller);

} // namespace nexwire::core
