#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/FieldTable.h"

namespace nexwire {
namespace catalogue {

/// A structure that crosses the wire.
struct StructureInfo {
    const core::FieldTable* fields;
    bool inbound;                                             ///< Can be sent; has a root name.
    std::unique_ptr<protocol::IInboundData> (*makeInbound)(); ///< Null for results.
};

/// All structures of the protocol by name.
const std::vector<StructureInfo>& Structures();

/// The structure of that name, or null.
const StructureInfo* FindStructure(const std::string& name);

} // namespace catalogue
} // namespace nexwire
