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

// How a structure says what it looks like on the wire: one line per structure, members in declaration order.
//
//   NEXWIRE_INBOUND_FIELDS(AccessGroupDown, "accessGroupDown", F(accessgroupGuid), F(deleteGroup), F(downloadMode))
//   NEXWIRE_RETURN_FIELDS(GroupDownloadProgress, F(deviceGuid), F(deviceProgress), F(downloadState))
//
// F(member) uses the member's name as its key, K("Key", member) another one. A table that misses, repeats or
// reorders a member does not compile. One interpreter reads and writes all structures from these tables.

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

constexpr bool IsRoot(const char* rootName)
{
    return rootName != nullptr;
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

template <class Member>
struct MemberKind {
    static_assert(std::is_base_of<protocol::IJSONStruct, Member>::value, "no wire form for members of this type");
    static constexpr Kind kind = Kind::Struct;
    static constexpr const StructOps* ops = &OpsOf<Member>();
};
template <class Element>
struct MemberKind<std::vector<Element>> {
    static_assert(std::is_base_of<protocol::IJSONStruct, Element>::value, "no wire form for lists of this type");
    static constexpr Kind kind = Kind::StructList;
    static constexpr const StructOps* ops = &OpsOf<Element>();
};
template <Kind K>
struct PlainKind {
    static constexpr Kind kind = K;
    static constexpr const StructOps* ops = nullptr;
};
template <>
struct MemberKind<std::string> : PlainKind<Kind::Text> {
};
template <>
struct MemberKind<std::int32_t> : PlainKind<Kind::Int> {
};
template <>
struct MemberKind<std::int64_t> : PlainKind<Kind::Int64> {
};
template <>
struct MemberKind<double> : PlainKind<Kind::Real> {
};
template <>
struct MemberKind<bool> : PlainKind<Kind::Bool> {
};
template <>
struct MemberKind<std::vector<std::string>> : PlainKind<Kind::TextList> {
};
template <>
struct MemberKind<std::vector<std::int32_t>> : PlainKind<Kind::IntList> {
};

template <class Member>
constexpr Field MakeField(const char* key, std::size_t offset)
{
    static_assert(sizeof(Member) <= UINT16_MAX, "a member this large belongs into a list");
    return {key,
            MemberKind<Member>::ops,
            static_cast<std::uint32_t>(offset),
            static_cast<std::uint16_t>(sizeof(Member)),
            static_cast<std::uint8_t>(alignof(Member)),
            MemberKind<Member>::kind};
}

constexpr std::size_t RoundUp(std::size_t size, std::size_t align)
{
    return (size + align - 1) / align * align;
}

/// Whether the fields cover a structure from the end of its base to the filter that stands last in it, without a
/// gap wider than alignment asks for. (What alignment padding could hide, the sweep over all structures finds.)
template <class T>
constexpr bool CoversAllMembers(const Field* fields, std::size_t count)
{
    using Filter = protocol::SerializationIgnoreItemFeatures;
    using Base = std::conditional_t<std::is_base_of<protocol::IInboundData, T>::value, protocol::IInboundData,
                                    protocol::IReturnData>;
    std::size_t position = sizeof(Base) - sizeof(Filter);
    for (std::size_t i = 0; i < count; ++i) {
        position = RoundUp(position, fields[i].align);
        if (fields[i].offset != position) {
            return false;
        }
        position += fields[i].size;
    }
    // Where 64-bit numbers have a wider alignment than pointers, the filter may not end the structure.
    return RoundUp(RoundUp(position, alignof(Filter)) + sizeof(Filter), alignof(T)) == sizeof(T);
}

} // namespace core
} // namespace nexwire

#if defined(__GNUC__)
#define NEXWIRE_OFFSETS_BEGIN _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Winvalid-offsetof\"")
#define NEXWIRE_OFFSETS_END _Pragma("GCC diagnostic pop")
#else
#define NEXWIRE_OFFSETS_BEGIN
#define NEXWIRE_OFFSETS_END
#endif

#define F(member) K(#member, member)
#define K(key, member) ::nexwire::core::MakeField<decltype(Self::member)>(key, offsetof(Self, member))

#define NEXWIRE_FIELDS(T, root, ...)                                                                                   \
    NEXWIRE_OFFSETS_BEGIN                                                                                              \
    namespace {                                                                                                        \
    struct FieldsOf##T {                                                                                               \
        using Self = T;                                                                                                \
        static constexpr ::nexwire::core::Field kList[] = {__VA_ARGS__};                                               \
        static constexpr std::size_t kCount = sizeof(kList) / sizeof(kList[0]);                                        \
    };                                                                                                                 \
    }                                                                                                                  \
    NEXWIRE_OFFSETS_END                                                                                                \
    static_assert(::nexwire::core::CoversAllMembers<T>(FieldsOf##T::kList, FieldsOf##T::kCount),                       \
                  "the table of " #T " must list every member once, in declaration order");                            \
    static_assert(FieldsOf##T::kCount <= ::nexwire::core::kMaxFields, #T " has too many members");                     \
    NEXWIRE_TABLE(T, root, FieldsOf##T::kList, FieldsOf##T::kCount)

/// The second line is the name under which the list of all structures finds the table without the header.
#define NEXWIRE_TABLE(T, root, list, count)                                                                            \
    static_assert(::nexwire::core::IsRoot(root) == std::is_base_of<::protocol::IInboundData, T>::value,                \
                  "what is sent has a key that it is sent under, and nothing else has one: " #T);                      \
    const ::nexwire::core::FieldTable T::kFields = {#T, root, list, count, ::nexwire::core::MakeOps<T>(&T::kFields)};  \
    extern const ::nexwire::core::FieldTable* const k##T##Table;                                                       \
    const ::nexwire::core::FieldTable* const k##T##Table = &T::kFields;                                                \
    const ::nexwire::core::FieldTable& T::Fields() const                                                               \
    {                                                                                                                  \
        return kFields;                                                                                                \
    }

/// Table of a structure that is sent, with the key it is sent under.
#define NEXWIRE_INBOUND_FIELDS(T, root, ...) NEXWIRE_FIELDS(T, root, __VA_ARGS__)
/// Table of a result.
#define NEXWIRE_RETURN_FIELDS(T, ...) NEXWIRE_FIELDS(T, nullptr, __VA_ARGS__)
/// Request or result that carries nothing.
#define NEXWIRE_NO_FIELDS(T, root)                                                                                     \
    static_assert(::nexwire::core::CoversAllMembers<T>(nullptr, 0), #T " has members; list them");                     \
    NEXWIRE_TABLE(T, root, nullptr, 0)
