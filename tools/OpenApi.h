#pragma once

#include <string>

namespace nexwire::tools {

/// The OpenAPI 3.1 document of all functions and structures, for whoever writes the server side.
///
/// A document has one operation per path and verb, but functions share them: commands that are relayed to devices,
/// partial changes. They stand in one operation then, each as a named example of its body.
std::string OpenApiDocument();

} // namespace nexwire::tools
