#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <keel/Error.h>

#include "core/FieldTable.h"
#include "nexwire/JSONStruct.h"

// What an argument of a request function can be, and how a value of it is made from text and shown as JSON.

namespace nexwire {
namespace catalogue {

enum class Shape {
    Text,          ///< std::string, as it is.
    Integer,       ///< int, decimal.
    Boolean,       ///< bool, true or false.
    TextList,      ///< JSON array of texts.
    Structure,     ///< JSON object, with or without its root name around it.
    StructureList, ///< JSON array of objects.
    Record,        ///< JSON object of a plain record (video wall).
    RecordList,    ///< JSON array of such objects.
    ErrorCode,     ///< Error record, output only.
    AnyStructure,  ///< JSON object with one key: the root name of the structure inside it.
};

/// A structure chosen at run time, for functions that take an untyped pointer.
struct AnyStructure {
    std::unique_ptr<protocol::IInboundData> structure;
};

/// How values of one type are handled without naming it.
struct TypeOps {
    Shape shape;
    void* (*create)();
    void (*destroy)(void* value);
    /// Reads a value a person gave. False when the text does not fit the type; `value` may be half-read then.
    bool (*read)(void* value, const std::string& text);
    /// The value as JSON text.
    std::string (*write)(const void* value);
    /// Name of the type as the host writes it, without its namespace; of the element for lists.
    std::string (*name)();
    /// The wire table of a structure or of a list's element; null for everything else.
    const core::FieldTable* (*fields)();
    /// Fills a record so that every member shows: texts with their name in braces, lists with one element. Null for
    /// everything else.
    void (*sample)(void* value);
};

/// Why `text` is no value of the type: what it should be, and the place where it is not.
std::string Misfit(const TypeOps& type, const std::string& text);

// Readers and writers by shape.
bool ReadText(std::string& value, const std::string& text);
bool ReadInteger(int& value, const std::string& text);
bool ReadBoolean(bool& value, const std::string& text);
bool ReadTextList(std::vector<std::string>& value, const std::string& text);
bool ReadStructure(protocol::IJSONStruct& value, const core::FieldTable& fields, const std::string& text);
bool ReadAnyStructure(AnyStructure& value, const std::string& text);
/// Calls `append` for each element of a JSON array of objects; false unless the text is one.
bool ReadList(const std::string& text, void* list, bool (*append)(void* list, const std::string& element));
std::string WriteText(const std::string& value);
std::string WriteTextList(const std::vector<std::string>& value);
std::string WriteErrorCode(const Keel::Error::ErrorCode& value);
std::string WriteList(std::size_t count, const void* list, std::string (*element)(const void* list, std::size_t index));

/// Structures by root name: a new object, or null.
std::unique_ptr<protocol::IInboundData> MakeByRootName(const std::string& rootName);

template <class T>
struct TypeOpsBase {
    static void* Create() { return new T(); }
    static void Destroy(void* value) { delete static_cast<T*>(value); }
    static T& As(void* value) { return *static_cast<T*>(value); }
    static const T& As(const void* value) { return *static_cast<const T*>(value); }
    static const core::FieldTable* NoFields() { return nullptr; }
};

template <class T, class = void>
struct TypeOf;

#define NEXWIRE_PLAIN_TYPE(T, shape_, spelled, readExpression, writeExpression)                                        \
    template <>                                                                                                        \
    struct TypeOf<T> : TypeOpsBase<T> {                                                                                \
        static bool Read([[maybe_unused]] void* value, [[maybe_unused]] const std::string& text)                       \
        {                                                                                                              \
            return readExpression;                                                                                     \
        }                                                                                                              \
        static std::string Write(const void* value) { return writeExpression; }                                        \
        static std::string Name() { return spelled; }                                                                  \
        static constexpr TypeOps ops = {                                                                               \
            shape_, Create, Destroy, Read, Write, Name, TypeOpsBase<T>::NoFields, nullptr};                            \
    };

NEXWIRE_PLAIN_TYPE(std::string, Shape::Text, "std::string", ReadText(As(value), text), WriteText(As(value)))
NEXWIRE_PLAIN_TYPE(int, Shape::Integer, "int", ReadInteger(As(value), text), std::to_string(As(value)))
NEXWIRE_PLAIN_TYPE(bool, Shape::Boolean, "bool", ReadBoolean(As(value), text), As(value) ? "true" : "false")
NEXWIRE_PLAIN_TYPE(std::vector<std::string>, Shape::TextList, "std::vector<std::string>", ReadTextList(As(value), text),
                   WriteTextList(As(value)))
NEXWIRE_PLAIN_TYPE(Keel::Error::ErrorCode, Shape::ErrorCode, "Keel::Error::ErrorCode", false, WriteErrorCode(As(value)))
NEXWIRE_PLAIN_TYPE(AnyStructure, Shape::AnyStructure, "void*", ReadAnyStructure(As(value), text),
                   (static_cast<void>(value), std::string("null")))
#undef NEXWIRE_PLAIN_TYPE

std::string WriteStructure(const protocol::IJSONStruct& value);

template <class T>
struct TypeOf<T, std::enable_if_t<std::is_base_of<protocol::IJSONStruct, T>::value>> : TypeOpsBase<T> {
    using Base = TypeOpsBase<T>;
    static const core::FieldTable* Fields()
    {
        static const T sample;
        return &sample.Fields();
    }
    static bool Read(void* value, const std::string& text) { return ReadStructure(Base::As(value), *Fields(), text); }
    static std::string Write(const void* value) { return WriteStructure(Base::As(value)); }
    static std::string Name() { return Fields()->name; }
    static constexpr TypeOps ops = {Shape::Structure, Base::Create, Base::Destroy, Read, Write, Name, Fields, nullptr};
};

template <class T>
struct TypeOf<std::vector<T>> : TypeOpsBase<std::vector<T>> {
    using List = std::vector<T>;
    using Base = TypeOpsBase<List>;
    static bool Append(void* list, const std::string& text)
    {
        return TypeOf<T>::ops.read(&static_cast<List*>(list)->emplace_back(), text);
    }
    static std::string Element(const void* list, std::size_t index)
    {
        return TypeOf<T>::ops.write(&(*static_cast<const List*>(list))[index]);
    }
    static bool Read(void* value, const std::string& text) { return ReadList(text, value, Append); }
    static std::string Write(const void* value) { return WriteList(Base::As(value).size(), value, Element); }
    static std::string Name() { return TypeOf<T>::ops.name(); }
    static constexpr TypeOps ops = {TypeOf<T>::ops.shape == Shape::Structure ? Shape::StructureList : Shape::RecordList,
                                    Base::Create,
                                    Base::Destroy,
                                    Read,
                                    Write,
                                    Name,
                                    TypeOf<T>::ops.fields,
                                    nullptr};
};

} // namespace catalogue
} // namespace nexwire
