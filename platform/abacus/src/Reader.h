#pragma once

#include <cstddef>

#include "Table.h"

// The part of reading that is the same for XML and JSON. A Node is one element of a document:
//
//   bool Bool(bool&), Int(std::int64_t&), Text(std::string&)   false leaves the value as it is
//   ReadRange(Range&), ReadOptions(Options&)
//   EachChild(step)           step(name, node) for each element in it
//   EachElement(name, step)   step(node) for each element of a list
//   EachNode(step)            step(node) for whatever lies directly in it

namespace Abacus {

inline const Entry* FindEntry(const Table& table, std::string_view name, std::size_t& next)
{
    // Documents mostly keep the order of the table.
    for (std::size_t i = 0; i < table.count; ++i, ++next) {
        if (next >= table.count) {
            next = 0;
        }
        if (table.entries[next].name == name) {
            return &table.entries[next++];
        }
    }
    return nullptr;
}

template <class Node>
void ReadStructure(const Node& node, const Table& table, char* structure);

template <class Node>
void ReadMember(const Node& node, const Entry& entry, char* member)
{
    switch (entry.kind) {
    case Kind::Bool:
        node.Bool(*reinterpret_cast<bool*>(member));
        break;
    case Kind::Int: {
        std::int64_t value = 0;
        if (node.Int(value) && value >= INT32_MIN && value <= INT32_MAX) {
            *reinterpret_cast<std::int32_t*>(member) = static_cast<std::int32_t>(value);
        }
        break;
    }
    case Kind::Text:
        node.Text(*reinterpret_cast<std::string*>(member));
        break;
    case Kind::Range:
        node.ReadRange(*reinterpret_cast<Range*>(member));
        break;
    case Kind::Options:
        node.ReadOptions(*reinterpret_cast<Options*>(member));
        break;
    case Kind::Struct:
        ReadStructure(node, *entry.nested, member);
        break;
    case Kind::TextList:
        node.EachElement(entry.element, [&](const Node& element) {
            std::string text;
            if (element.Text(text)) {
                reinterpret_cast<std::vector<std::string>*>(member)->push_back(std::move(text));
            }
        });
        break;
    case Kind::StructList:
        node.EachElement(entry.element, [&](const Node& element) {
            ReadStructure(element, *entry.nested, static_cast<char*>(entry.append(member)));
        });
        break;
    }
}

template <class Node>
void ReadStructure(const Node& node, const Table& table, char* structure)
{
    static_assert(kMaxEntries <= 64, "one bit each");
    std::uint64_t seen = 0;
    std::size_t next = 0;
    node.EachChild([&](std::string_view name, const Node& child) {
        const Entry* const entry = FindEntry(table, name, next);
        if (entry == nullptr) {
            return;
        }
        const std::uint64_t bit = std::uint64_t{1} << (entry - table.entries);
        if ((seen & bit) == 0) {
            seen |= bit;
            ReadMember(child, *entry, structure + entry->offset);
        }
    });
}

/// Whether nothing in it lies deeper than `levels`.
template <class Node>
bool IsShallow(const Node& node, std::size_t levels)
{
    bool shallow = levels != 0;
    if (shallow) {
        node.EachNode([&](const Node& child) { shallow = shallow && IsShallow(child, levels - 1); });
    }
    return shallow;
}

bool ReadXml(const std::string& document, const Table& table, char* structure);
bool ReadJson(const std::string& document, const Table& table, char* structure);

} // namespace Abacus
