#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/Types.h"

// What the build step makes of the headers: constant tables, one object per header.

namespace nexwire::catalogue {

template <class T>
struct Span {
    const T* data = nullptr;
    std::size_t count = 0;

    const T* begin() const { return data; }
    const T* end() const { return data + count; }
};

/// A value that a member may have.
struct Choice {
    const char* value;
    const char* means; ///< Empty when the value says it itself.
};

struct Bound {
    bool set;
    std::int64_t value;
};

/// What a member may hold, as its comment says it; docs/add-a-structure-and-a-request.md has the forms.
struct Limits {
    Span<Choice> values;
    bool closed;  ///< There are no other values; otherwise they are examples.
    bool numbers; ///< The values are numbers.
    Bound minimum, maximum;
    Bound minLength, maxLength; ///< Of a text, in characters.
    Bound minItems, maxItems;   ///< Of a list.
    Span<std::int64_t> also;    ///< Numbers outside the range that may stand, too.
    bool empty;                 ///< The text may also be empty.
    bool required;
    bool readOnly; ///< Only answers say it; what a request says there does not count.
    const char* unit;
};

struct MemberRow {
    const char* name;
    const char* type;
    const char* doc;
    const Limits* limits; ///< Null for a member that may hold anything.
};

struct TypeRow {
    const char* name; ///< Without `protocol::` and `nexwire::`.
    const char* doc;
    Span<MemberRow> members; ///< In the order of their declarations.
};

struct ClassRow {
    const char* name;
    const char* doc;
};

/// What a function answered.
struct Outcome {
    bool success = true;
    std::string returned; ///< JSON of a return value other than bool; else empty.
};

struct ParameterRow {
    const char* name;
    const TypeOps& (*plain)(); ///< Null for structures and records.
    const char* structure;     ///< Name of the structure or record, of the element for lists; else null.
    bool list;
    bool output;                   ///< Passed by non-const reference.
    const ListType* ops = nullptr; ///< Of a list of structures.
};

struct FunctionRow {
    const char* className;
    const char* name;
    const char* result;     ///< As declared.
    const char* parameters; ///< As declared.
    const char* doc;
    const ParameterRow* arguments;
    std::size_t count;
    void (*call)(void* const* arguments, Outcome& outcome);
};

struct RecordMember {
    const char* name;
    core::Kind kind;
    std::size_t offset;
    const char* record; ///< Of a record or a list of them; else empty.
};

/// A plain record: what a structure's table and operations are to a structure.
struct RecordTable {
    const char* name;
    Span<RecordMember> members;
    void* (*create)();
    void (*destroy)(void* record);
    void* (*createList)();
    void (*destroyList)(void* list);
    void (*clear)(void* list);
    void* (*append)(void* list);
    std::size_t (*count)(const void* list);
    const void* (*at)(const void* list, std::size_t index);
};

template <class T>
constexpr RecordTable MakeRecord(const char* name, Span<RecordMember> members)
{
    using List = std::vector<T>;
    return {
        name,
        members,
        []() -> void* { return new T(); },
        [](void* record) { delete static_cast<T*>(record); },
        []() -> void* { return new List(); },
        [](void* list) { delete static_cast<List*>(list); },
        [](void* list) { static_cast<List*>(list)->clear(); },
        [](void* list) -> void* { return &static_cast<List*>(list)->emplace_back(); },
        [](const void* list) { return static_cast<const List*>(list)->size(); },
        [](const void* list, std::size_t index) -> const void* { return &(*static_cast<const List*>(list))[index]; }};
}

struct HeaderRows {
    const char* module; ///< Empty for headers of structures.
    const char* header; ///< As an include spells it.
    const char* remark; ///< What it says about everything in it.
    Span<FunctionRow> functions;
    Span<ClassRow> classes;
    Span<TypeRow> types;
    Span<RecordTable> records;
};

/// In the order of their names: modules, then structures.
Span<const HeaderRows* const> AllHeaders();

/// The argument that stands in a slot of a call.
template <class T>
T& Slot(void* value)
{
    return *static_cast<T*>(value);
}

template <class T>
const T* Bytes(void* value)
{
    return static_cast<const T*>(static_cast<const void*>(Slot<std::string>(value).data()));
}

} // namespace nexwire::catalogue
