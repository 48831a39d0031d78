#pragma once

#include <string>

namespace nexwire::tools {

/// JSON indented by two blanks, numbers as they stand. `json` itself when it is none.
std::string Pretty(const std::string& json);
/// The same on one line.
std::string Compact(const std::string& json);

/// JSON of a structure with every member: empty texts, zeros, lists with one element.
std::string Sample(const std::string& structure);

/// `json` with empty lists of structures filled with one element, as `Sample` has them.
///
/// @param structure  of the top-level object, or of what stands in it under the structure's root name.
std::string Filled(const std::string& json, const std::string& structure);

/// `json` indented, with what is known about its members behind them as // comments. Structure as above.
std::string Commented(const std::string& json, const std::string& structure);

} // namespace nexwire::tools
