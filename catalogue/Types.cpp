#include "catalogue/Types.h"

#include <charconv>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "nexwire/ParseJSONUtil.h"

namespace nexwire {
namespace catalogue {
namespace {

constexpr unsigned kParseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;

std::string TextOf(const rapidjson::Value& value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

bool Parse(rapidjson::Document& document, const std::string& text)
{
    return !document.Parse<kParseFlags>(text.data(), text.size()).HasParseError();
}

/// The one member of an object that holds nothing else; null for everything else.
const rapidjson::Value::Member* OnlyMember(const rapidjson::Value& value)
{
    return value.IsObject() && value.MemberCount() == 1 && value.MemberBegin()->value.IsObject() ? &*value.MemberBegin()
                                                                                                 : nullptr;
}

const core::Field* FindField(const core::FieldTable& fields, const char* key)
{
    for (const core::Field& field : fields) {
        if (std::string_view(field.key) == key) {
            return &field;
        }
    }
    return nullptr;
}

std::string Keys(const core::FieldTable& fields)
{
    std::string keys;
    for (const core::Field& field : fields) {
        keys += (keys.empty() ? "" : ", ") + std::string(field.key);
    }
    return keys;
}

bool IsElement(core::Kind kind, const rapidjson::Value& value)
{
    return kind == core::Kind::TextList ? value.IsString() : kind == core::Kind::IntList ? value.IsInt() : true;
}

/// What a value of the kind looks like; empty when `value` is one, as far as it can be seen without its members.
const char* Expected(core::Kind kind, const rapidjson::Value& value)
{
    switch (kind) {
    case core::Kind::Text:
        return value.IsString() ? "" : "a text";
    case core::Kind::Int:
        return value.IsInt() ? "" : "an integer of 32 bits";
    case core::Kind::Int64:
        return value.IsInt64() ? "" : "an integer";
    case core::Kind::Real:
        return value.IsNumber() ? "" : "a number";
    case core::Kind::Bool:
        return value.IsBool() ? "" : "true or false";
    case core::Kind::Struct:
        return value.IsObject() ? "" : "an object";
    case core::Kind::TextList:
    case core::Kind::IntList:
    case core::Kind::StructList:
        break;
    }
    return value.IsArray() ? "" : "a list";
}

/// The first place where `object` is not what the table says, as "'place' ..."; empty when there is none. The library
/// reads a platform's answers leniently; a person's slip should not silently be a default.
std::string Misfit(const core::FieldTable& fields, const rapidjson::Value& object, const std::string& place)
{
    for (const auto& member : object.GetObject()) {
        const std::string at = place + member.name.GetString();
        const core::Field* const field = FindField(fields, member.name.GetString());
        if (field == nullptr) {
            return "'" + at + "' is no member of " + fields.name + ", which has " +
                   (fields.count == 0 ? "none" : Keys(fields));
        }
        const char* const expected = Expected(field->kind, member.value);
        if (*expected != '\0') {
            return "'" + at + "' must be " + expected;
        }
        std::string inside;
        if (field->kind == core::Kind::Struct) {
            inside = Misfit(*field->ops->fields, member.value, at + ".");
        } else if (member.value.IsArray()) {
            std::size_t index = 0;
            for (const rapidjson::Value& element : member.value.GetArray()) {
                const std::string elementAt = at + "[" + std::to_string(index++) + "]";
                if (field->kind == core::Kind::StructList) {
                    inside = element.IsObject() ? Misfit(*field->ops->fields, element, elementAt + ".")
                                                : "'" + elementAt + "' must be an object";
                } else if (!IsElement(field->kind, element)) {
                    inside = "'" + elementAt + "' must be " +
                             (field->kind == core::Kind::TextList ? "a text" : "an integer of 32 bits");
                }
                if (!inside.empty()) {
                    break;
                }
            }
        }
        if (!inside.empty()) {
            return inside;
        }
    }
    return "";
}

/// The object that holds the members: `document`, or what stands in it under the structure's root name.
const rapidjson::Value& Unwrapped(const rapidjson::Value& document, const core::FieldTable& fields)
{
    const rapidjson::Value::Member* const only = OnlyMember(document);
    const bool wrapped = only != nullptr && fields.rootName != nullptr &&
                         std::string_view(only->name.GetString()) == fields.rootName &&
                         FindField(fields, fields.rootName) == nullptr;
    return wrapped ? only->value : document;
}

} // namespace

std::string Misfit(const TypeOps& type, const std::string& text)
{
    switch (type.shape) {
    case Shape::Text:
        return "a text";
    case Shape::Integer:
        return "a decimal integer of 32 bits";
    case Shape::Boolean:
        return "true or false";
    case Shape::ErrorCode:
        return "left out: it is a result";
    case Shape::TextList:
    case Shape::Structure:
    case Shape::StructureList:
    case Shape::Record:
    case Shape::RecordList:
    case Shape::AnyStructure:
        break;
    }
    const std::string name = type.name();
    const bool list = type.shape == Shape::StructureList || type.shape == Shape::RecordList;
    std::string wanted = type.shape == Shape::TextList       ? "a JSON list of texts"
                         : type.shape == Shape::AnyStructure ? "a JSON object with one structure under its root name"
                         : list                              ? "a JSON list of " + name
                                                             : "a JSON object, " + name;
    rapidjson::Document document;
    if (!Parse(document, text)) {
        return wanted + ": no JSON at byte " + std::to_string(document.GetErrorOffset()) + ", " +
               rapidjson::GetParseError_En(document.GetParseError());
    }
    const core::FieldTable* const fields = type.fields();
    if (fields == nullptr || (list ? !document.IsArray() : !document.IsObject())) {
        return wanted;
    }
    std::string inside;
    if (!list) {
        inside = Misfit(*fields, Unwrapped(document, *fields), "");
    } else {
        std::size_t index = 0;
        for (const rapidjson::Value& element : document.GetArray()) {
            const std::string at = "[" + std::to_string(index++) + "]";
            inside = element.IsObject() ? Misfit(*fields, Unwrapped(element, *fields), at + ".")
                                        : "'" + at + "' must be an object";
            if (!inside.empty()) {
                break;
            }
        }
    }
    return inside.empty() ? wanted : wanted + ": " + inside;
}

bool ReadText(std::string& value, const std::string& text)
{
    value = text;
    return true;
}

bool ReadInteger(int& value, const std::string& text)
{
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end;
}

bool ReadBoolean(bool& value, const std::string& text)
{
    value = text == "true" || text == "1";
    return value || text == "false" || text == "0";
}

bool ReadTextList(std::vector<std::string>& value, const std::string& text)
{
    rapidjson::Document document;
    if (!Parse(document, text) || !document.IsArray()) {
        return false;
    }
    value.clear();
    for (const rapidjson::Value& element : document.GetArray()) {
        if (!element.IsString()) {
            return false;
        }
        value.emplace_back(element.GetString(), element.GetStringLength());
    }
    return true;
}

bool ReadStructure(protocol::IJSONStruct& value, const core::FieldTable& fields, const std::string& text)
{
    rapidjson::Document document;
    if (!Parse(document, text) || !document.IsObject()) {
        return false;
    }
    const rapidjson::Value& members = Unwrapped(document, fields);
    return Misfit(fields, members, "").empty() &&
           protocol::ParseJSONText(value, &members == &document ? nullptr : fields.rootName, text);
}

bool ReadAnyStructure(AnyStructure& value, const std::string& text)
{
    rapidjson::Document document;
    if (!Parse(document, text)) {
        return false;
    }
    const rapidjson::Value::Member* const only = OnlyMember(document);
    if (only == nullptr) {
        return false;
    }
    auto structure = MakeByRootName(only->name.GetString());
    if (!structure || !ReadStructure(*structure, structure->Fields(), text)) {
        return false;
    }
    value.structure = std::move(structure);
    return true;
}

bool ReadList(const std::string& text, void* list, bool (*append)(void* list, const std::string& element))
{
    rapidjson::Document document;
    if (!Parse(document, text) || !document.IsArray()) {
        return false;
    }
    for (const rapidjson::Value& element : document.GetArray()) {
        if (!append(list, TextOf(element))) {
            return false;
        }
    }
    return true;
}

std::string WriteText(const std::string& value)
{
    return TextOf(rapidjson::Value(rapidjson::StringRef(value.data(), value.size())));
}

std::string WriteTextList(const std::vector<std::string>& value)
{
    std::string json = "[";
    for (const std::string& text : value) {
        json += (json.size() > 1 ? "," : "") + WriteText(text);
    }
    return json + "]";
}

std::string WriteErrorCode(const Keel::Error::ErrorCode& value)
{
    return "{\"category\":" + std::to_string(value.category) + ",\"number\":" + std::to_string(value.number) +
           ",\"text\":" + WriteText(value.text) + "}";
}

std::string WriteList(std::size_t count, const void* list, std::string (*element)(const void* list, std::size_t index))
{
    std::string json = "[";
    for (std::size_t i = 0; i < count; ++i) {
        json += (i > 0 ? "," : "") + element(list, i);
    }
    return json + "]";
}

std::string WriteStructure(const protocol::IJSONStruct& value)
{
    return protocol::StructureToJSON(value);
}

} // namespace catalogue
} // namespace nexwire
