#pragma once

#include <string>

#include "src/Json.h"
#include "src/Wire.h"

namespace nexwire::simulator {

enum class Strictness {
    kWhole,     ///< What is required must be there.
    kPart,      ///< Only members that change are sent.
    kCondition, ///< The value only narrows something: an empty text, 0 and -1 are taken everywhere.
};

/// Holds a value against its structure and refuses what does not fit: members it does not have, of another type, or
/// outside their vocabulary or range, and what is required and missing.
///
/// @throws Refusal
void CheckShape(const WireStructure& structure, const Json& value, const std::string& where, Strictness how);

} // namespace nexwire::simulator
