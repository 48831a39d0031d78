#include "catalogue/Structures.h"

#include <algorithm>
#include <cstring>

#include "catalogue/Types.h"
#include "structures.inc.headers"

namespace nexwire {
namespace catalogue {
namespace {

template <class T>
StructureInfo Describe()
{
    if constexpr (std::is_base_of<protocol::IInboundData, T>::value) {
        return {TypeOf<T>::Fields(), true,
                []() -> std::unique_ptr<protocol::IInboundData> { return std::make_unique<T>(); }};
    } else {
        return {TypeOf<T>::Fields(), false, nullptr};
    }
}

} // namespace

const std::vector<StructureInfo>& Structures()
{
    static const std::vector<StructureInfo> structures = [] {
        std::vector<StructureInfo> all = {
#define STRUCTURE(T) Describe<T>(),
#include "structures.inc"
#undef STRUCTURE
        };
        std::sort(all.begin(), all.end(), [](const StructureInfo& left, const StructureInfo& right) {
            return std::strcmp(left.fields->name, right.fields->name) < 0;
        });
        return all;
    }();
    return structures;
}

const StructureInfo* FindStructure(const std::string& name)
{
    for (const StructureInfo& structure : Structures()) {
        if (name == structure.fields->name) {
            return &structure;
        }
    }
    return nullptr;
}

std::unique_ptr<protocol::IInboundData> MakeByRootName(const std::string& rootName)
{
    for (const StructureInfo& structure : Structures()) {
        if (structure.inbound && rootName == structure.fields->rootName) {
            return structure.makeInbound();
        }
    }
    return nullptr;
}

} // namespace catalogue
} // namespace nexwire
