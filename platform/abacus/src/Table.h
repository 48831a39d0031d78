#pragma once

#include <string_view>
#include <type_traits>

#include "abacus/Types.h"

// How a structure says where its members stand in a document: one line each, members in declaration order.
//
//   ABACUS_DOCUMENT_TABLE(AdbDebugAbility, "AdbDebugAbility", M(isSptAdbDebug), M(port), L(modeList, "mode"))
//
// M(member) is the element of the member's name, L(member, "element") a list with elements of that name. A table that
// misses, repeats or reorders a member does not compile.

namespace Abacus {

enum class Kind : std::uint8_t { Bool, Int, Text, Range, Options, Struct, TextList, StructList };

struct Entry {
    std::string_view name;
    std::string_view element;    ///< Of lists: the name of their elements.
    const Table* nested;         ///< Of Struct and StructList.
    void* (*append)(void* list); ///< Of StructList.
    std::size_t offset;
    std::size_t size;
    std::size_t align;
    Kind kind;
};

struct Table {
    std::string_view root;
    const Entry* entries;
    std::size_t count;
};

/// Most members that a structure may have.
constexpr std::size_t kMaxEntries = 64;

template <class Member>
struct KindOf {
    static constexpr Kind kind = Kind::Struct;
    static constexpr const Table* nested = &Member::kTable;
    static constexpr void* (*append)(void*) = nullptr;
};
template <class Element>
struct KindOf<std::vector<Element>> {
    static constexpr Kind kind = Kind::StructList;
    static constexpr const Table* nested = &Element::kTable;
    static constexpr void* (*append)(void*) = [](void* list) -> void* {
        return &static_cast<std::vector<Element>*>(list)->emplace_back();
    };
};
template <Kind K>
struct PlainKind {
    static constexpr Kind kind = K;
    static constexpr const Table* nested = nullptr;
    static constexpr void* (*append)(void*) = nullptr;
};
template <>
struct KindOf<bool> : PlainKind<Kind::Bool> {
};
template <>
struct KindOf<std::int32_t> : PlainKind<Kind::Int> {
};
template <>
struct KindOf<std::string> : PlainKind<Kind::Text> {
};
template <>
struct KindOf<Range> : PlainKind<Kind::Range> {
};
template <>
struct KindOf<Options> : PlainKind<Kind::Options> {
};
template <>
struct KindOf<std::vector<std::string>> : PlainKind<Kind::TextList> {
};

template <class Member>
constexpr Entry MakeEntry(std::string_view name, std::string_view element, std::size_t offset)
{
    using Of = KindOf<Member>;
    return {name, element, Of::nested, Of::append, offset, sizeof(Member), alignof(Member), Of::kind};
}

template <class T, std::size_t Count>
constexpr bool CoversAllMembers(const Entry (&entries)[Count])
{
    std::size_t position = 0;
    for (const Entry& entry : entries) {
        position = (position + entry.align - 1) / entry.align * entry.align;
        const bool isList = entry.kind == Kind::StructList || entry.kind == Kind::TextList;
        if (entry.offset != position || isList == entry.element.empty()) {
            return false;
        }
        position += entry.size;
    }
    return Count <= kMaxEntries && (position + alignof(T) - 1) / alignof(T) * alignof(T) == sizeof(T);
}

/// Reads a document into a new structure. False when it is none, or not one of this root.
bool ReadDocument(const std::string& document, const Table& table, void* structure) noexcept;

template <class Document>
bool ParseInto(Document& document, const std::string& text) noexcept
{
    try {
        Document fresh;
        if (!ReadDocument(text, Document::kTable, &fresh)) {
            return false;
        }
        document = std::move(fresh);
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace Abacus

#define M(member) ::Abacus::MakeEntry<decltype(Self::member)>(#member, {}, offsetof(Self, member))
#define L(member, element) ::Abacus::MakeEntry<decltype(Self::member)>(#member, element, offsetof(Self, member))

#define ABACUS_TABLE(T, rootName, ...)                                                                                 \
    namespace {                                                                                                        \
    struct EntriesOf##T {                                                                                              \
        using Self = T;                                                                                                \
        static constexpr ::Abacus::Entry kList[] = {__VA_ARGS__};                                                      \
    };                                                                                                                 \
    }                                                                                                                  \
    static_assert(::Abacus::CoversAllMembers<T>(EntriesOf##T::kList),                                                  \
                  "the table of " #T " must list every member once, in declaration order");                            \
    const ::Abacus::Table T::kTable = {rootName, EntriesOf##T::kList,                                                  \
                                       sizeof(EntriesOf##T::kList) / sizeof(EntriesOf##T::kList[0])};

#define ABACUS_PART_TABLE(T, ...) ABACUS_TABLE(T, "", __VA_ARGS__)
#define ABACUS_DOCUMENT_TABLE(T, rootName, ...)                                                                        \
    ABACUS_TABLE(T, rootName, __VA_ARGS__)                                                                             \
    bool T::Parse(const std::string& document)                                                                         \
    {                                                                                                                  \
        return ::Abacus::ParseInto(*this, document);                                                                   \
    }
