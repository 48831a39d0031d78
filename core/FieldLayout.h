#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "nexwire/JSONStruct.h"

// The tables that say what structures look like on the wire, and what can be done with a structure by its table. How a
// table is written: core/FieldTable.h.

namespace nexwire {
namespace core {

enum class Kind : std::uint8_t { Text, Int, Int64, Real, Bool, Struct, TextList, IntList, StructList };

/// What can be done with a structure and with a list of them, without naming its type. One object per structure, made
/// where its table stands.
struct StructOps {
    const FieldTable* fields; ///< Null for a structure that has none: one of the host's own.
    const std::type_info* type;
    std::size_t size;
    bool inbound; ///< An `IInboundData`; otherwise an `IReturnData`.
    /// Makes a new one where there is room for `size` bytes.
    void (*construct)(void* memory);
    /// Moves one structure into another of the same type.
    void (*move)(protocol::IJSONStruct& to, protocol::IJSONStruct& from);
    protocol::IJSONStruct* (*asStruct)(void* object);
    void* (*createList)();
    void (*destroyList)(void* list);
    /// Replaces all elements by `count` new ones.
    void (*renew)(void* list, std::size_t count);
    std::size_t (*count)(const void* list);
    protocol::IJSONStruct* (*at)(void* list, std::size_t index);
};

struct Field {
    const char* key;
    const StructOps* ops; ///< Set for Struct and StructList.
    std::uint32_t offset; ///< From the start of the structure.
    std::uint16_t size;
    std::uint8_t align;
    Kind kind;
};

/// Most members a structure may have; one bit of "present" each.
constexpr std::size_t kMaxFields = 128;

struct FieldTable {
    const char* name;     ///< Name of the structure.
    const char* rootName; ///< Key it is sent under; null for results.
    const Field* fields;
    std::size_t count;
    StructOps ops;

    const Field* begin() const { return fields; }
    const Field* end() const { return fields + count; }
};

template <class T>
constexpr StructOps MakeOps(const FieldTable* fields)
{
    using List = std::vector<T>;
    return {
        fields,
        &typeid(T),
        sizeof(T),
        std::is_base_of<protocol::IInboundData, T>::value,
        [](void* memory) { new (memory) T; },
        [](protocol::IJSONStruct& to, protocol::IJSONStruct& from) {
            static_cast<T&>(to) = std::move(static_cast<T&>(from));
        },
        [](void* object) -> protocol::IJSONStruct* { return static_cast<T*>(object); },
        []() -> void* { return new List; },
        [](void* list) { delete static_cast<List*>(list); },
        // Growing a list would need a copy of its code for moving elements in each structure's.
        [](void* list, std::size_t count) { *static_cast<List*>(list) = List(count); },
        [](const void* list) { return static_cast<const List*>(list)->size(); },
        [](void* list, std::size_t index) -> protocol::IJSONStruct* { return &(*static_cast<List*>(list))[index]; },
    };
}

template <class Owner>
Owner DeclaresFields(const FieldTable& (Owner::*)() const);

/// Whether a structure has a table of its own; those of a host, and what a host derives, have none.
template <class T>
constexpr bool kHasTable = std::is_same<decltype(DeclaresFields(&T::Fields)), T>::value;

template <class T>
inline constexpr StructOps kTableless = MakeOps<T>(nullptr);

template <class T>
constexpr const StructOps& OpsOf()
{
    if constexpr (kHasTable<T>) {
        return T::kFields.ops;
    } else {
        return kTableless<T>;
    }
}

/// Key that a structure is sent under; null for a result.
template <class T>
const char* RootNameOf()
{
    if constexpr (!std::is_base_of<protocol::IInboundData, T>::value) {
        return nullptr;
    } else if constexpr (kHasTable<T>) {
        return T::kFields.rootName;
    } else {
        return T().RootName();
    }
}

/// Whether a table says all of a structure: not of one that a host derived from the table's.
inline bool IsOfTable(const protocol::IJSONStruct& structure, const FieldTable& fields)
{
    return fields.ops.type != nullptr && typeid(structure) == *fields.ops.type;
}

/// A new structure, to be given to `Destroy`.
inline void* Create(const StructOps& ops)
{
    void* const object = ::operator new(ops.size);
    try {
        ops.construct(object);
    } catch (...) {
        ::operator delete(object);
        throw;
    }
    return object;
}

inline void Destroy(const StructOps& ops, void* object)
{
    protocol::IJSONStruct* const structure = ops.asStruct(object);
    if (ops.inbound) {
        delete static_cast<protocol::IInboundData*>(structure);
    } else {
        delete static_cast<protocol::IReturnData*>(structure);
    }
}

/// A new object of a structure whose type is not named.
class AnyObject {
public:
    explicit AnyObject(const StructOps& ops) : ops_(ops), object_(Create(ops)) {}
    ~AnyObject() { Destroy(ops_, object_); }
    AnyObject(const AnyObject&) = delete;
    AnyObject& operator=(const AnyObject&) = delete;

    protocol::IJSONStruct& operator*() const { return *ops_.asStruct(object_); }

private:
    const StructOps& ops_;
    void* object_;
};

/// Keeps a value of an answer until the exchange is known to be good, for a structure that only its own `Parse` can
/// fill.
class HeldValue final : public protocol::IJSONStruct {
public:
    HeldValue() = default;
    void Parse(const cJSON* node) override;
    cJSON* ToJson() const override;
    /// Has `structure` parse the value, if there was one.
    bool HandTo(protocol::IJSONStruct& structure) const;

private:
    std::string text_;
};

/// Index of the field with that key, looked for from `expected` on, as answers mostly come in the table's order; the
/// table's count when there is none.
inline std::size_t FindField(const FieldTable& table, std::size_t expected, const char* key)
{
    for (std::size_t i = expected; i < table.count; ++i) {
        if (std::strcmp(table.fields[i].key, key) == 0) {
            return i;
        }
    }
    for (std::size_t i = 0; i < expected && i < table.count; ++i) {
        if (std::strcmp(table.fields[i].key, key) == 0) {
            return i;
        }
    }
    return table.count;
}

/// The caller's structure that a request fills, whatever its type.
class Target {
public:
    Target(protocol::IReturnData& result) : structure_(result), fields_(result.Fields()) {}
    Target(protocol::IInboundData& result) : structure_(result), fields_(result.Fields()) {}

    /// Has `fill` fill a new structure, which replaces the caller's when that was good. A structure of the host's own
    /// parses what there is itself, then.
    template <class Fill>
    bool ReplaceBy(Fill&& fill) const
    {
        if (!IsOfTable(structure_, fields_)) {
            HeldValue held;
            return fill(held) && held.HandTo(structure_);
        }
        const AnyObject fresh(fields_.ops);
        if (!fill(*fresh)) {
            return false;
        }
        fields_.ops.move(structure_, *fresh);
        return true;
    }

private:
    protocol::IJSONStruct& structure_;
    const FieldTable& fields_;
};

/// The caller's list that a request appends to, whatever its elements' type.
class TargetList {
public:
    template <class Element>
    TargetList(std::vector<Element>& list)
        : list_(&list), ops_(OpsOf<Element>()), rootName_(RootNameOf<Element>()),
          append_([](void* to, protocol::IJSONStruct& element) {
              static_cast<std::vector<Element>*>(to)->push_back(std::move(static_cast<Element&>(element)));
          })
    {
    }

    /// Key that an element stands under in a text of its own.
    const char* RootName() const { return rootName_; }

    /// Has `fill` fill a new element, which is appended when that was good.
    template <class Fill>
    bool AppendBy(Fill&& fill) const
    {
        const AnyObject fresh(ops_);
        if (!fill(*fresh)) {
            return false;
        }
        append_(list_, *fresh);
        return true;
    }

private:
    void* list_;
    const StructOps& ops_;
    const char* rootName_;
    void (*append_)(void* list, protocol::IJSONStruct& element);
};

} // namespace core
} // namespace nexwire
