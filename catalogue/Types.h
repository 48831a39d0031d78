#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include <keel/Error.h>

#include "core/FieldLayout.h"
#include "nexwire/HTTPCommonJSONStruct.h"

// What an argument of a request function can be, and how a value of it is made from text and shown as JSON.

namespace nexwire::catalogue {

enum class Shape {
    Text,          ///< std::string, as it is.
    Integer,       ///< int and its relatives, decimal.
    Real,          ///< double, decimal.
    Boolean,       ///< bool, true or false.
    TextList,      ///< JSON array of texts.
    IntegerList,   ///< JSON array of integers.
    TextMap,       ///< JSON object of texts or integers.
    Counter,       ///< Integer that the function counts up while it runs.
    Structure,     ///< JSON object, with or without its root name around it.
    StructureList, ///< JSON array of objects.
    Record,        ///< JSON object of a plain record (video wall).
    RecordList,    ///< JSON array of such objects.
    ErrorCode,     ///< Error record, output only.
    Envelope,      ///< Whole answer of the platform, output only.
    AnyStructure,  ///< JSON object with one key: the root name of the structure inside it.
};

/// A structure chosen at run time, for functions that take an untyped pointer.
struct AnyStructure {
    std::unique_ptr<protocol::IInboundData> structure;

    std::size_t size() const { return structure ? structure->Fields().ops.size : 0; }
};

/// How values of one type are handled without naming it.
class TypeOps {
public:
    explicit TypeOps(Shape of) : shape(of) {}
    virtual ~TypeOps() = default;
    TypeOps(const TypeOps&) = delete;
    TypeOps& operator=(const TypeOps&) = delete;

    const Shape shape;

    /// A new value, to be given to `destroy`.
    virtual void* create() const = 0;
    virtual void destroy(void* value) const = 0;
    /// Reads a value a person gave. False when the text does not fit the type; `value` may be half-read then.
    virtual bool read(void* value, const std::string& text) const = 0;
    /// The value as JSON text.
    virtual std::string write(const void* value) const = 0;
    /// Name of the type as the host writes it, without namespaces of ours; of the element for lists.
    virtual std::string name() const = 0;
    /// The wire table of a structure or of a list's element; null for everything else.
    virtual const core::FieldTable* fields() const { return nullptr; }
    /// Fills a record so that every member shows: texts with their name in braces, lists with one element. Leaves
    /// everything else alone.
    virtual void sample(void*) const {}

    bool IsList() const { return shape == Shape::StructureList || shape == Shape::RecordList; }
    /// Structures and records, and lists of them.
    bool IsStructure() const { return IsList() || shape == Shape::Structure || shape == Shape::Record; }
};

/// Why `text` is no value of the type: what it should be, and the place where it is not.
std::string Misfit(const TypeOps& type, const std::string& text);

/// A type that is no structure. An argument of another type than these does not compile; a new one is a line here and
/// in Types.cpp.
template <class T>
const TypeOps& PlainType() = delete;
template <>
const TypeOps& PlainType<std::string>();
template <>
const TypeOps& PlainType<int>();
template <>
const TypeOps& PlainType<unsigned int>();
template <>
const TypeOps& PlainType<std::int64_t>();
template <>
const TypeOps& PlainType<std::uint64_t>();
template <>
const TypeOps& PlainType<double>();
template <>
const TypeOps& PlainType<bool>();
template <>
const TypeOps& PlainType<std::vector<std::string>>();
template <>
const TypeOps& PlainType<std::set<std::string>>();
template <>
const TypeOps& PlainType<std::vector<int>>();
template <>
const TypeOps& PlainType<std::map<int, std::string>>();
template <>
const TypeOps& PlainType<std::map<std::string, std::string>>();
template <>
const TypeOps& PlainType<std::map<std::string, int>>();
template <>
const TypeOps& PlainType<std::shared_ptr<int>>();
template <>
const TypeOps& PlainType<Keel::Error::ErrorCode>();
template <>
const TypeOps& PlainType<protocol::ReturnData>();
template <>
const TypeOps& PlainType<AnyStructure>();

struct RecordTable;
/// The plain record of that name, or null.
const RecordTable* FindRecord(const std::string& name);

/// What can be done with a list of them; their table is the library's own.
template <class Structure>
inline constexpr core::ListOps kListWithoutTable = core::MakeListOps<Structure>(nullptr);

/// What can be done with a list of structures; null for one of records.
template <class List>
constexpr const core::ListOps* ListOf()
{
    using Element = typename List::value_type;
    if constexpr (std::is_base_of<protocol::IJSONStruct, Element>::value) {
        return &kListWithoutTable<Element>;
    } else {
        return nullptr;
    }
}

/// The structure or record of that name, or a list of them, which for structures needs its operations.
const TypeOps& NamedType(const std::string& name, bool list, const core::ListOps* ops = nullptr);

std::string WriteText(const std::string& value);

} // namespace nexwire::catalogue
