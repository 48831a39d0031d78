#pragma once

#include <string>

namespace nexwire::tools {

/// One page of HTML with all functions and structures, which needs no other file: search, light and dark, wide and
/// narrow.
std::string ReferencePage();

} // namespace nexwire::tools
