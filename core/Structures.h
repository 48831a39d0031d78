#pragma once

#include <cstddef>

#include "nexwire/Export.h"

// The tables of all structures, for whoever looks at the library as a whole. A build step lists them.

namespace nexwire::core {

struct FieldTable;

/// The tables of one namespace, in the order of their sources.
struct StructureGroup {
    const char* space; ///< Within `protocol`: "personnelcommon"; empty for `protocol` itself.
    const FieldTable* const* const* tables;
    std::size_t count;
};

struct StructureGroups {
    const StructureGroup* groups;
    std::size_t count;

    const StructureGroup* begin() const { return groups; }
    const StructureGroup* end() const { return groups + count; }
};

NEXWIRE_API StructureGroups AllStructures();

} // namespace nexwire::core
