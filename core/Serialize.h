#pragma once

#include <string>

#include "nexwire/HTTPCommonJSONStruct.h"

namespace nexwire::core {

/// What `protocol::SerializeRequest` gives; for requests on their way out, which had better not go than go without
/// their body: throws when memory runs out.
std::string Serialize(const protocol::IInboundData& request);

/// What `ReturnData::Parse` gives; `table` is that of the data, where that is known already.
bool ReadEnvelope(protocol::ReturnData& envelope, const std::string& body, const FieldTable* table) noexcept;

/// What `protocol::ParseJSONText` gives, but throws when memory runs out: callers must tell that from a text that holds
/// something else.
bool ReadText(protocol::IJSONStruct& out, const char* root, const std::string& json, const char* caller);

} // namespace nexwire::core
