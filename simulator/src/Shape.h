#pragma once

#include <string>

#include "src/Engine.h"

namespace nexwire::simulator {

/// Compares a value with the shape that a resource description gives, and refuses what does not fit.
///
/// A shape is an object of shapes (no other members are taken, unless it has "*": "any"), a list with the shape of
/// its elements, or a text: "text", "int", "number", "bool", "object", "list", "any", "ref:<collection>" (a text that
/// is empty or the key of a document there). A "!" at its end asks for the member, and for a text that is not empty; a
/// "+" takes its absence but not an empty text; "name!" as a member's name asks for a member that is an object or a
/// list.
void CheckShape(Call& call, const Json& shape, const Json& value, const std::string& where);

} // namespace nexwire::simulator
