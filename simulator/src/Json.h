#pragma once

#include <rapidjson/document.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace nexwire::simulator {

using Json = rapidjson::Value;
using Document = rapidjson::Document;
using Allocator = Document::AllocatorType;

/// Deepest nesting taken from outside. Printing and copying recurse, so this bounds the stack.
constexpr unsigned kMaxDepth = 200;

/// Parses one JSON value with nothing but white space around it.
/// @param error  on false, what is wrong and where.
bool ParseJson(Document& out, std::string_view text, std::string& error);

/// Parses text that this program wrote or that is part of it; throws std::runtime_error when it is not JSON.
Document ParseOwn(std::string_view text);

std::string PrintJson(const Json& value);

/// The member, or null when `object` is no object or has no such member.
const Json* Member(const Json& object, std::string_view key);
Json* Member(Json& object, std::string_view key);

/// Follows member names separated by dots.
const Json* AtPath(const Json& root, std::string_view dotted);

/// The elements of a list; none when the value is not there or is none.
Json::ConstArray Elements(const Json* value);

Json MakeText(std::string_view text, Allocator& allocator);
Json Copy(const Json& value, Allocator& allocator);

/// Replaces or adds a member; `object` must be an object.
void SetMember(Json& object, std::string_view key, Json value, Allocator& allocator);

std::string_view AsText(const Json* value, std::string_view otherwise = {});
std::int64_t AsInt(const Json* value, std::int64_t otherwise = 0);
double AsDouble(const Json* value, double otherwise = 0.0);
bool AsBool(const Json* value, bool otherwise = false);

} // namespace nexwire::simulator
