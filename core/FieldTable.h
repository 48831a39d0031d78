#pragma once

#include <string>
#include <type_traits>

#include "core/FieldLayout.h"

// How a structure says what it looks like on the wire: one line per structure, members in declaration order.
//
//   NEXWIRE_INBOUND_FIELDS(AccessGroupDown, "accessGroupDown", F(accessgroupGuid), F(deleteGroup), F(downloadMode))
//   NEXWIRE_RETURN_FIELDS(GroupDownloadProgress, F(deviceGuid), F(deviceProgress), F(downloadState))
//
// F(member) uses the member's name as its key, K("Key", member) another one. A table that misses, repeats or
// reorders a member does not compile. One interpreter reads and writes all structures from these tables.

#if defined(__GNUC__)
#define NEXWIRE_OFFSETS_BEGIN _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Winvalid-offsetof\"")
#define NEXWIRE_OFFSETS_END _Pragma("GCC diagnostic pop")
#else
#define NEXWIRE_OFFSETS_BEGIN
#define NEXWIRE_OFFSETS_END
#endif

namespace nexwire::core {

constexpr bool IsRoot(const char* rootName)
{
    return rootName != nullptr;
}

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
    static constexpr const StructOps* ops = &kListOps<Element>;
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

template <class Member, std::size_t KeySize>
constexpr Field MakeField(const char (&key)[KeySize], std::size_t offset)
{
    static_assert(KeySize <= UINT8_MAX, "no key is this long");
    return {key,
            MemberKind<Member>::ops,
            static_cast<std::uint16_t>(offset),
            static_cast<std::uint16_t>(sizeof(Member)),
            static_cast<std::uint8_t>(alignof(Member)),
            MemberKind<Member>::kind,
            static_cast<std::uint8_t>(KeySize - 1)};
}

constexpr std::size_t RoundUp(std::size_t size, std::size_t align)
{
    return (size + align - 1) / align * align;
}

/// What stands where the members of a structure begin. The base itself may be longer: its size counts the filter and
/// the room behind it.
template <class Base>
struct Begun : Base {
    char first;
};

/// Whether the fields cover a structure from the end of its base to the filter that stands last in it, without a
/// gap wider than alignment asks for. (What alignment padding could hide, the sweep over all structures finds.)
template <class T>
constexpr bool CoversAllMembers(const Field* fields, std::size_t count)
{
    using Filter = protocol::SerializationIgnoreItemFeatures;
    using Base = std::conditional_t<std::is_base_of<protocol::IInboundData, T>::value, protocol::IInboundData,
                                    protocol::IReturnData>;
    NEXWIRE_OFFSETS_BEGIN
    std::size_t position = offsetof(Begun<Base>, first);
    NEXWIRE_OFFSETS_END
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

} // namespace nexwire::core

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
    static_assert(sizeof(T) <= UINT16_MAX, #T " is too large: members like these belong into lists");                  \
    static_assert(::nexwire::core::CoversAllMembers<T>(FieldsOf##T::kList, FieldsOf##T::kCount),                       \
                  "the table of " #T " must list every member once, in declaration order");                            \
    static_assert(FieldsOf##T::kCount <= ::nexwire::core::kMaxFields, #T " has too many members");                     \
    NEXWIRE_TABLE(T, root, FieldsOf##T::kList, FieldsOf##T::kCount)

/// The second line is the name under which the list of all structures finds the table without the header.
#define NEXWIRE_TABLE(T, root, list, count)                                                                            \
    static_assert(::nexwire::core::IsRoot(root) == std::is_base_of<::protocol::IInboundData, T>::value,                \
                  "what is sent has a key that it is sent under, and nothing else has one: " #T);                      \
    const ::nexwire::core::FieldTable T::Table::kFields = {#T, root, list, count,                                      \
                                                           ::nexwire::core::MakeOps<T>(&T::Table::kFields)};           \
    extern const ::nexwire::core::FieldTable* const k##T##Table;                                                       \
    const ::nexwire::core::FieldTable* const k##T##Table = &T::Table::kFields;                                         \
    const ::nexwire::core::FieldTable& T::Fields() const                                                               \
    {                                                                                                                  \
        return Table::kFields;                                                                                         \
    }

/// Table of a structure that is sent, with the key it is sent under.
#define NEXWIRE_INBOUND_FIELDS(T, root, ...) NEXWIRE_FIELDS(T, root, __VA_ARGS__)
/// Table of a result.
#define NEXWIRE_RETURN_FIELDS(T, ...) NEXWIRE_FIELDS(T, nullptr, __VA_ARGS__)
/// Request or result that carries nothing.
#define NEXWIRE_NO_FIELDS(T, root)                                                                                     \
    static_assert(::nexwire::core::CoversAllMembers<T>(nullptr, 0), #T " has members; list them");                     \
    NEXWIRE_TABLE(T, root, nullptr, 0)
