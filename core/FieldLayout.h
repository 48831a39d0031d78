#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
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
    const FieldTable* fields;
    std::size_t size;
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

/// A new structure, to be given to `Destroy`.
inline void* Create(const FieldTable& fields)
{
    void* const object = ::operator new(fields.ops.size);
    try {
        fields.ops.construct(object);
    } catch (...) {
        ::operator delete(object);
        throw;
    }
    return object;
}

inline void Destroy(const FieldTable& fields, void* object)
{
    // What has a root name is sent; everything else comes back.
    protocol::IJSONStruct* const structure = fields.ops.asStruct(object);
    if (fields.rootName != nullptr) {
        delete static_cast<protocol::IInboundData*>(structure);
    } else {
        delete static_cast<protocol::IReturnData*>(structure);
    }
}

/// A new object of a structure that is known by its table only.
class AnyObject {
public:
    explicit AnyObject(const FieldTable& fields) : fields_(fields), object_(Create(fields)) {}
    ~AnyObject() { Destroy(fields_, object_); }
    AnyObject(const AnyObject&) = delete;
    AnyObject& operator=(const AnyObject&) = delete;

    protocol::IJSONStruct& operator*() const { return *fields_.ops.asStruct(object_); }

private:
    const FieldTable& fields_;
    void* object_;
};

/// The caller's structure that a request fills, whatever its type.
class Target {
public:
    Target(protocol::IReturnData& result) : structure_(result), fields_(result.Fields()) {}
    Target(protocol::IInboundData& result) : structure_(result), fields_(result.Fields()) {}

    /// Has `fill` fill a new structure, which replaces the caller's when that was good.
    template <class Fill>
    bool ReplaceBy(Fill&& fill) const
    {
        const AnyObject fresh(fields_);
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
        : list_(&list), fields_(Element::kFields), append_([](void* to, protocol::IJSONStruct& element) {
              static_cast<std::vector<Element>*>(to)->push_back(std::move(static_cast<Element&>(element)));
          })
    {
    }

    /// Key that an element stands under in a text of its own.
    const char* RootName() const { return fields_.rootName; }

    /// Has `fill` fill a new element, which is appended when that was good.
    template <class Fill>
    bool AppendBy(Fill&& fill) const
    {
        const AnyObject fresh(fields_);
        if (!fill(*fresh)) {
            return false;
        }
        append_(list_, *fresh);
        return true;
    }

private:
    void* list_;
    const FieldTable& fields_;
    void (*append_)(void* list, protocol::IJSONStruct& element);
};

} // namespace core
} // namespace nexwire
