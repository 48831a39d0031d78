#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "nexwire/JSONStruct.h"

// The tables that say what structures look like on the wire, and what can be done with a structure by its table. How a
// table is written: core/FieldTable.h.

namespace nexwire::core {

enum class Kind : std::uint8_t { Text, Int, Int64, Real, Bool, Struct, TextList, IntList, StructList };

/// What only code that knows a structure's type can do with one.
enum class Work : std::uint8_t {
    Construct, ///< Makes a new one in the memory `object`.
    Move,      ///< Moves `other` into `object`; only for structures without a table.
};

/// And with a `std::vector` of them.
enum class ListWork : std::uint8_t {
    Swap,  ///< Exchanges the elements with the list `other`.
    Renew, ///< Replaces the elements by `count` new ones, and answers the first.
    Look,  ///< Answers the first element, and where the last one ends to `other`, a `void*`.
};

/// What can be done with a structure without naming its type. One object per structure, made where its table stands. A
/// structure stands where its base `IJSONStruct` stands.
struct StructOps {
    const FieldTable* fields; ///< Null for a structure that has none: one of the host's own.
    const std::type_info* type;
    std::uint32_t size; ///< As small as it can be said: there are a thousand of these.
    bool inbound;       ///< An `IInboundData`; otherwise an `IReturnData`.
    /// One function for all works: with one for each, those of a thousand structures would be a quarter of the library.
    void (*work)(Work work, void* object, void* other);

    void Construct(void* memory) const { work(Work::Construct, memory, nullptr); }
    static protocol::IJSONStruct* AsStruct(void* object) { return static_cast<protocol::IJSONStruct*>(object); }
    /// The element with that index behind the first one.
    protocol::IJSONStruct* Element(void* first, std::size_t index) const
    {
        return AsStruct(static_cast<char*>(first) + index * size);
    }
};

/// The same for a list; made where a list of the structure stands.
struct ListOps : StructOps {
    void* (*listWork)(ListWork work, void* list, void* other, std::size_t count);

    void Swap(void* list, void* other) const { listWork(ListWork::Swap, list, other, 0); }
    void* Renew(void* list, std::size_t count) const { return listWork(ListWork::Renew, list, nullptr, count); }
    /// The first element.
    void* Look(const void* list, std::size_t& count) const
    {
        void* end = nullptr;
        void* const first = listWork(ListWork::Look, const_cast<void*>(list), &end, 0);
        count = static_cast<std::size_t>(static_cast<char*>(end) - static_cast<char*>(first)) / size;
        return first;
    }
};

struct Field {
    const char* key;
    const StructOps* ops; ///< Set for Struct, and for StructList, where it is a `ListOps`.
    std::uint16_t offset; ///< From the start of the structure.
    std::uint16_t size;
    std::uint8_t align;
    Kind kind;
    std::uint8_t keySize;

    std::string_view Key() const { return {key, keySize}; }
    const ListOps& List() const { return static_cast<const ListOps&>(*ops); } ///< Only of a StructList.
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

template <class Owner>
Owner DeclaresFields(const FieldTable& (Owner::*)() const);

/// Whether a structure has a table of its own; those of a host, and what a host derives, have none.
template <class T>
constexpr bool kHasTable = std::is_same<decltype(DeclaresFields(&T::Fields)), T>::value;

template <class T>
void DoWork(Work work, void* object, [[maybe_unused]] void* other)
{
    if (work == Work::Construct) {
        new (object) T;
        return;
    }
    if constexpr (!kHasTable<T>) {
        *static_cast<T*>(object) = std::move(*static_cast<T*>(other));
    }
}

template <class T>
constexpr StructOps MakeOps(const FieldTable* fields)
{
    return {fields, &typeid(T), static_cast<std::uint32_t>(sizeof(T)),
            std::is_base_of<protocol::IInboundData, T>::value, &DoWork<T>};
}

template <class T>
void* DoListWork(ListWork work, void* object, void* other, std::size_t count)
{
    using List = std::vector<T>;
    List& list = *static_cast<List*>(object);
    switch (work) {
    case ListWork::Swap:
        list.swap(*static_cast<List*>(other));
        break;
    case ListWork::Renew:
        // Growing a list would need a copy of its code for moving elements in each structure's.
        List(count).swap(list);
        break;
    default:
        *static_cast<void**>(other) = list.data() + list.size();
        break;
    }
    return list.data();
}

template <class T>
inline constexpr StructOps kTableless = MakeOps<T>(nullptr);

template <class T>
constexpr const StructOps& OpsOf()
{
    if constexpr (kHasTable<T>) {
        return T::Table::kFields.ops;
    } else {
        return kTableless<T>;
    }
}

template <class T>
constexpr const FieldTable* FieldsOf()
{
    if constexpr (kHasTable<T>) {
        return &T::Table::kFields;
    } else {
        return nullptr;
    }
}

template <class T>
constexpr ListOps MakeListOps(const FieldTable* fields)
{
    return {MakeOps<T>(fields), &DoListWork<T>};
}

/// What can be done with a list of a structure.
template <class T>
inline constexpr ListOps kListOps = MakeListOps<T>(FieldsOf<T>());

/// Key that a structure is sent under; null for a result.
template <class T>
const char* RootNameOf()
{
    if constexpr (!std::is_base_of<protocol::IInboundData, T>::value) {
        return nullptr;
    } else if constexpr (kHasTable<T>) {
        return T::Table::kFields.rootName;
    } else {
        return T().RootName();
    }
}

/// Whether a table says all of a structure: not of one that a host derived from the table's.
inline bool IsOfTable(const protocol::IJSONStruct& structure, const FieldTable& fields)
{
    return fields.ops.type != nullptr && typeid(structure) == *fields.ops.type;
}

/// Moves one structure of a table into another one.
void MoveByTable(protocol::IJSONStruct& to, protocol::IJSONStruct& from, const FieldTable& fields);

/// A new structure, to be given to `Destroy`.
inline void* Create(const StructOps& ops)
{
    void* const object = ::operator new(ops.size);
    try {
        ops.Construct(object);
    } catch (...) {
        ::operator delete(object);
        throw;
    }
    return object;
}

/// Ends a structure and leaves its memory.
inline void End(const StructOps& ops, void* object)
{
    protocol::IJSONStruct* const structure = StructOps::AsStruct(object);
    if (ops.inbound) {
        static_cast<protocol::IInboundData*>(structure)->~IInboundData();
    } else {
        static_cast<protocol::IReturnData*>(structure)->~IReturnData();
    }
}

inline void Destroy(const StructOps& ops, void* object)
{
    End(ops, object);
    ::operator delete(object);
}

/// A new object of a structure whose type is not named. Small ones lie in it.
class AnyObject {
public:
    explicit AnyObject(const StructOps& ops) : ops_(ops), object_(ops.size <= sizeof(room_) ? room_ : Create(ops))
    {
        if (object_ == room_) {
            ops.Construct(room_);
        }
    }
    ~AnyObject()
    {
        if (object_ == room_) {
            End(ops_, object_);
        } else {
            Destroy(ops_, object_);
        }
    }
    AnyObject(const AnyObject&) = delete;
    AnyObject& operator=(const AnyObject&) = delete;

    protocol::IJSONStruct& operator*() const { return *StructOps::AsStruct(object_); }

private:
    const StructOps& ops_;
    void* const object_;
    alignas(std::max_align_t) char room_[512]; // NOLINT(cppcoreguidelines-pro-type-member-init)
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

/// Keys are short: no call is worth it.
inline bool IsSameKey(std::string_view key, const char* other)
{
    const auto same = [&](std::size_t at, auto word) {
        auto otherWord = word;
        std::memcpy(&word, key.data() + at, sizeof(word));
        std::memcpy(&otherWord, other + at, sizeof(word));
        return word == otherWord;
    };
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    std::size_t at = 0;
    if (key.size() >= kWord) {
        for (; at + kWord < key.size(); at += kWord) {
            if (!same(at, std::uint64_t{})) {
                return false;
            }
        }
        return same(key.size() - kWord, std::uint64_t{});
    }
    while (at < key.size() && key[at] == other[at]) {
        ++at;
    }
    return at == key.size();
}

/// Index of the field with that key, looked for from `expected` on, as answers mostly come in the table's order; the
/// table's count when there is none.
inline std::size_t FindField(const FieldTable& table, std::size_t expected, std::string_view key)
{
    const auto is = [&](std::size_t i) {
        return key.size() == table.fields[i].keySize && IsSameKey(key, table.fields[i].key);
    };
    for (std::size_t i = expected; i < table.count; ++i) {
        if (is(i)) {
            return i;
        }
    }
    for (std::size_t i = 0; i < expected && i < table.count; ++i) {
        if (is(i)) {
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

    /// Of what `ReplaceBy` has filled; null for a structure of the host's own.
    const FieldTable* Table() const { return IsOfTable(structure_, fields_) ? &fields_ : nullptr; }

    /// Has `fill` fill a new structure, which replaces the caller's when that was good. A structure of the host's own
    /// parses what there is itself, then.
    template <class Fill>
    bool ReplaceBy(Fill&& fill) const
    {
        if (Table() == nullptr) {
            HeldValue held;
            return fill(held) && held.HandTo(structure_);
        }
        const AnyObject fresh(fields_.ops);
        if (!fill(*fresh)) {
            return false;
        }
        MoveByTable(structure_, *fresh, fields_);
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

} // namespace nexwire::core
