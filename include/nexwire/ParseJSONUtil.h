#pragma once

#include <string>

#include "nexwire/JSONStruct.h"

namespace protocol {

/// What both templates below end in.
///
/// @param root    the key the structure stands under; null reads the top-level value.
/// @param caller  the function that log entries name.
NEXWIRE_API bool ParseJSONText(IJSONStruct& out, const char* root, const std::string& json,
                               const char* caller = "ParseJSONText");

/// Reads a structure that stands under its root name in a JSON object, as device texts carry it.
///
/// @return false when `json` is empty, is not one JSON value, or lacks the root name; the latter two are logged.
///         `out` is untouched then.
template <class T>
bool TParseJSONStr(T& out, const std::string& json)
{
    return ParseJSONText(out, out.RootName(), json, NEXWIRE_FUNCTION);
}

/// Reads a structure that is the top-level value itself. Returns as `TParseJSONStr`.
template <class T>
bool TParseJSONStrWithoutRoot(T& out, const std::string& json)
{
    return ParseJSONText(out, nullptr, json, NEXWIRE_FUNCTION);
}

/// The JSON text of any structure by itself, indented with tabs; for logs, tests and tools. Empty when memory ran out.
NEXWIRE_API std::string StructureToJSON(const IJSONStruct& structure);

/// The JSON text of a request structure: an object with one member, named by its root name, indented with tabs.
/// Empty when memory ran out.
NEXWIRE_API std::string SerializeRequest(const IInboundData& request);

} // namespace protocol
