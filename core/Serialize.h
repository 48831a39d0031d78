#pragma once

#include <string>

#include "nexwire/JSONStruct.h"

namespace nexwire {
namespace core {

/// What `protocol::SerializeRequest` gives; for requests on their way out, which had better not go than go without
/// their body: throws when memory runs out.
std::string Serialize(const protocol::IInboundData& request);

} // namespace core
} // namespace nexwire
