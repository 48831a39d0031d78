#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "src/Engine.h"

// What the rules of collections and entries mean for one request.

namespace nexwire::simulator {

constexpr std::string_view kSuccess = "success";
constexpr const char* kDevices = "devices";

/// A value as conditions compare it; nothing for objects and lists.
std::optional<StoreValue> ToStoreValue(const Json& value);

/// The condition that a document holds a text: "a.b" a member that is the text, "a[]" a list of texts, "a[].b" a list
/// whose elements have such a member.
Condition HoldsText(const std::string& field, std::string_view text);

/// Refuses a body that lacks what its entry needs or refers to what is not there.
void CheckBody(Handling& handling);
/// The same for one element, by the rules of its collection.
/// @param whole  members that must be sent have to be; otherwise only those that are sent must be filled.
void CheckElement(Handling& handling, const Json& source, bool whole);
void CheckRefusals(Handling& handling, const Json& source, const Json& document);
void CheckUnique(Handling& handling, std::string_view key, const Json& document);
/// Whether documents elsewhere hold the key.
bool Used(Handling& handling, const std::string& key);

/// What a create or modify does to a document, apart from storing it.
void Apply(Handling& handling, const Json& source, Json& document);
/// Changes what depends on the document and names it.
void Touch(Handling& handling, const std::string& key);
/// What a stored document shows to a caller.
void Present(Handling& handling, const std::string& key, Json& document);
/// Tells devices of a change: a result for each.
void Reach(Handling& handling);
/// Why a device cannot be reached; `kNone` when it can.
Reason OutOfReach(Handling& handling, std::string_view device);
/// Why a device does not do what it is told to: out of reach, or refusing.
Reason Unwilling(Handling& handling, std::string_view device);

/// Result of one element.
Json MakeResult(Handling& handling, std::string_view guid, Reason reason, std::string_view message);
/// The elements of the body that an action works through; null for a body that is one.
const Json* Items(Handling& handling);

} // namespace nexwire::simulator
