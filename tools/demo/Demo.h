#pragma once

#include <iosfwd>
#include <string>

namespace nexwire::demo {

struct DemoOptions {
    std::string sitePath;        ///< Site description; empty takes the one that is built in.
    bool colour = false;         ///< Only where a person reads along.
    bool animate = false;        ///< Progress bars redraw their line instead of printing new ones.
    std::ostream* out = nullptr; ///< Null: standard output.
};

/// The main job from start to finish: starts a local platform and works with it as a client would.
///
/// @return 0 when everything went as it should, 1 otherwise, with the reason on the output.
int Run(const DemoOptions& options);

} // namespace nexwire::demo
