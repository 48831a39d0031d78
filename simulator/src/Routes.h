#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "src/Description.h"

namespace nexwire::simulator {

/// Where paths with the same beginning part.
struct Description::Node {
    std::map<std::string, std::unique_ptr<Node>, std::less<>> literals;
    std::map<std::string, std::unique_ptr<Node>, std::less<>> identifiers; ///< By what stands around them.
    std::map<std::string, std::vector<Endpoint*>, std::less<>> verbs;
};

} // namespace nexwire::simulator
