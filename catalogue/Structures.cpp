#include "catalogue/Structures.h"

#include <algorithm>
#include <unordered_map>

#include "core/Structures.h"

namespace nexwire::catalogue {

std::unique_ptr<protocol::IInboundData> StructureInfo::makeInbound() const
{
    return std::unique_ptr<protocol::IInboundData>(
        static_cast<protocol::IInboundData*>(core::StructOps::AsStruct(core::Create(fields->ops))));
}

const std::vector<StructureInfo>& Structures()
{
    static const std::vector<StructureInfo> structures = [] {
        std::vector<StructureInfo> all;
        for (const core::StructureGroup& group : core::AllStructures()) {
            for (std::size_t i = 0; i < group.count; ++i) {
                const core::FieldTable* const fields = *group.tables[i];
                const std::string space = group.space;
                all.push_back(
                    {(space.empty() ? "" : space + "::") + fields->name, fields, fields->rootName != nullptr});
            }
        }
        std::sort(all.begin(), all.end(),
                  [](const StructureInfo& left, const StructureInfo& right) { return left.name < right.name; });
        return all;
    }();
    return structures;
}

const StructureInfo* FindStructure(const std::string& name)
{
    const std::vector<StructureInfo>& all = Structures();
    const auto found =
        std::lower_bound(all.begin(), all.end(), name, [](const StructureInfo& structure, const std::string& wanted) {
            return structure.name < wanted;
        });
    return found != all.end() && found->name == name ? &*found : nullptr;
}

const std::string& NameOf(const core::FieldTable& fields)
{
    static const std::unordered_map<const core::FieldTable*, const std::string*> names = [] {
        std::unordered_map<const core::FieldTable*, const std::string*> all;
        for (const StructureInfo& structure : Structures()) {
            all[structure.fields] = &structure.name;
        }
        return all;
    }();
    return *names.at(&fields);
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

} // namespace nexwire::catalogue
