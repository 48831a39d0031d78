#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/FieldLayout.h"

namespace nexwire::catalogue {

/// A structure that crosses the wire.
struct StructureInfo {
    std::string name; ///< Without `protocol::`, but with a namespace within it.
    const core::FieldTable* fields;
    bool inbound; ///< Can be sent; has a root name.

    /// A new object of a structure that can be sent.
    std::unique_ptr<protocol::IInboundData> makeInbound() const;
};

/// All structures of the protocol by name.
const std::vector<StructureInfo>& Structures();

/// The structure of that name, or null.
const StructureInfo* FindStructure(const std::string& name);

/// The name of the structure with that table.
const std::string& NameOf(const core::FieldTable& fields);

/// Structures by root name: a new object, or null.
std::unique_ptr<protocol::IInboundData> MakeByRootName(const std::string& rootName);

} // namespace nexwire::catalogue
