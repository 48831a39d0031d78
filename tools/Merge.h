#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/Find.h"

namespace nexwire::tools {

/// A structure of a call of which only some members were given: the others go out with their defaults.
struct PartialStructure {
    std::size_t argument = 0;
    std::string name;                 ///< Of the structure.
    std::string given;                ///< Its JSON.
    std::vector<std::string> missing; ///< Keys of the members.
};

/// The structures that a call changes something with and that were given in part. A condition of a query is none: what
/// is missing there is not asked for.
std::vector<PartialStructure> PartialStructures(const catalogue::Call& call, const catalogue::Given& given);

/// The function that reads what `partial` is to change, called with the same device, door or the like; null when there
/// is none.
std::unique_ptr<catalogue::Call> ReaderOf(const catalogue::Call& call, const PartialStructure& partial,
                                          const catalogue::Given& given);

/// `change` laid over `whole`: members of objects one by one, anything else replaced.
std::string Merged(const std::string& whole, const std::string& change);

} // namespace nexwire::tools
