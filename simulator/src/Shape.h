#pragma once

#include <string>

#include "src/Json.h"
#include "src/Wire.h"

namespace nexwire::simulator {

/// Holds a value against its structure and refuses what does not fit: members it does not have, of another type, or
/// outside their vocabulary or range.
///
/// @param condition  the value only narrows something: an empty text, 0 and -1 are taken everywhere.
/// @throws Refusal
void CheckShape(const WireStructure& structure, const Json& value, const std::string& where, bool condition);

} // namespace nexwire::simulator
