#pragma once

#include <string>

namespace nexwire {
namespace tools {

/// Writes JSON to standard output piece by piece, indented by two blanks or on one line, numbers as they stand, and
/// ends the line; what is no JSON as it is. False when nobody reads it.
bool PrintJson(const std::string& json, bool compact);

/// JSON of a structure with every member: empty texts, zeros, lists with one element.
std::string Sample(const std::string& structure);

/// `json` with empty lists of structures filled with one element, as `Sample` has them.
///
/// @param structure  of the top-level object, or of what stands in it under the structure's root name.
std::string Filled(const std::string& json, const std::string& structure);

/// `json` indented, with what is known about its members behind them as // comments. Structure as above.
std::string Commented(const std::string& json, const std::string& structure);

} // namespace tools
} // namespace nexwire
