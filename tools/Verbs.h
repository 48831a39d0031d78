#pragma once

#include <string>

namespace nexwire::tools {

/// The verb that the host kit maps a method code to.
std::string VerbOf(int method);
/// What the code stands for: "read", "write", "query", "remove".
std::string MeaningOf(int method);

} // namespace nexwire::tools
