#include "catalogue/Comments.h"

#include <algorithm>
#include <unordered_map>

#include "catalogue/Catalogue.h"
#include "catalogue/Structures.h"

namespace nexwire::catalogue {
namespace {

const TypeRow* FindType(const std::string& name)
{
    static const std::unordered_map<std::string, const TypeRow*> types = [] {
        std::unordered_map<std::string, const TypeRow*> all;
        for (const HeaderRows* header : AllHeaders()) {
            for (const TypeRow& row : header->types) {
                all.emplace(row.name, &row);
            }
        }
        return all;
    }();
    const auto found = types.find(name);
    return found == types.end() ? nullptr : found->second;
}

void Split(const std::string& doc, FunctionDoc& result)
{
    for (std::size_t begin = 0; begin < doc.size();) {
        const std::size_t end = std::min(doc.find('\n', begin), doc.size());
        const std::string line = doc.substr(begin, end - begin);
        begin = end + 1;
        if (line.compare(0, 7, "@param ") == 0) {
            const std::size_t space = line.find(' ', 7);
            const std::size_t text = line.find_first_not_of(' ', space);
            result.parameters.emplace_back(line.substr(7, space - 7),
                                           text == std::string::npos ? "" : line.substr(text));
        } else if (line.compare(0, 8, "@return ") == 0) {
            result.returns = line.substr(8);
        } else {
            result.text += (result.text.empty() ? "" : "\n") + line;
        }
    }
}

} // namespace

FunctionDoc DocOfFunction(const Function& function)
{
    const FunctionRow& row = function.Row();
    FunctionDoc doc;
    doc.declaration = std::string(row.result) + " " + function.Name() + "(" + row.parameters + ")";
    Split(row.doc, doc);
    return doc;
}

std::string DocOfClass(const std::string& className)
{
    for (const HeaderRows* header : AllHeaders()) {
        for (const ClassRow& row : header->classes) {
            if (className == row.name) {
                return row.doc;
            }
        }
    }
    return "";
}

std::string RemarkOfClass(const std::string& className)
{
    for (const HeaderRows* header : AllHeaders()) {
        for (const ClassRow& row : header->classes) {
            if (className == row.name) {
                return header->remark;
            }
        }
    }
    return "";
}

std::string DocOfStruct(const std::string& structure)
{
    const TypeRow* const type = FindType(structure);
    return type == nullptr ? "" : type->doc;
}

std::string DocOfMember(const std::string& structure, const std::string& key)
{
    for (const MemberDoc& member : MembersOf(structure)) {
        if (member.key == key) {
            return member.text;
        }
    }
    return "";
}

std::vector<MemberDoc> MembersOf(const std::string& structure)
{
    static constexpr Limits kNone{};
    std::vector<MemberDoc> members;
    const TypeRow* const type = FindType(structure);
    if (type == nullptr) {
        return members;
    }
    // A table lists its members in the order of their declarations: that gives each its key.
    const StructureInfo* const known = FindStructure(structure);
    for (const MemberRow& row : type->members) {
        const bool hasKey = known != nullptr && members.size() < known->fields->count;
        members.push_back({hasKey ? known->fields->fields[members.size()].key : row.name, row.type, row.doc,
                           row.limits == nullptr ? &kNone : row.limits});
    }
    return members;
}

} // namespace nexwire::catalogue
