#include <algorithm>
#include <set>

#include "simulator/Platform.h"
#include "src/Description.h"

namespace nexwire::simulator {
namespace {

Coverage::How HowOf(const Description& description, const WireFunction& function, const std::set<std::string>& written)
{
    if (function.direct) {
        return Coverage::kBehaviour;
    }
    if (function.command != 0) {
        const std::string code = std::to_string(function.command);
        const WireStructure* structure = function.input != nullptr ? function.input : function.output;
        const bool told = description.Entries("commands").count(code) + description.Entries("batches").count(code) != 0;
        return told                                                          ? Coverage::kBehaviour
               : structure != nullptr && written.count(structure->root) != 0 ? Coverage::kState
                                                                             : Coverage::kSample;
    }
    for (const auto& endpoint : description.Endpoints()) {
        const auto& functions = endpoint->functions;
        if (std::find(functions.begin(), functions.end(), &function) != functions.end() && !endpoint->actions.empty()) {
            return Coverage::kBehaviour;
        }
    }
    const bool kept = function.verb == "PUT" || function.verb == "DELETE" || written.count(function.path) != 0;
    return kept ? Coverage::kState : Coverage::kSample;
}

} // namespace

std::vector<Coverage> CoverageOfFunctions()
{
    const Description description(EmbeddedDocument(), EmbeddedResources());
    std::set<std::string> written; // Paths and roots of device texts.
    for (const WireFunction& function : description.Library().Functions()) {
        if (function.input != nullptr) {
            written.insert(function.input->root);
        } else if (function.verb == "PUT") {
            written.insert(function.path);
        }
    }
    std::vector<Coverage> all;
    for (const WireFunction& function : description.Library().Functions()) {
        all.push_back({function.name, HowOf(description, function, written)});
    }
    return all;
}

} // namespace nexwire::simulator
