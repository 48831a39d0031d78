#pragma once

#include <string>

#include <cjson/cJSON.h>

namespace nexwire::core {

/// Appends what cJSON prints of a tree, byte for byte, without its detour over printf and scanf for every number.
/// Where cJSON prints a real number that reads back as its neighbour, it gets as many digits as it takes.
///
/// @return false when the tree holds something that only cJSON can judge; `out` is of no use then.
bool AppendFormatted(std::string& out, const cJSON& root);

} // namespace nexwire::core
