#include "catalogue/Types.h"

#include <charconv>

#include <rapidjson/document.h>
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

bool IsField(const core::FieldTable& fields, const char* key)
{
    for (const core::Field& field : fields) {
        if (std::string_view(field.key) == key) {
            return true;
        }
    }
    return false;
}

} // namespace

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
    const rapidjson::Value::Member* const only = OnlyMember(document);
    const bool wrapped = only != nullptr && fields.rootName != nullptr &&
                         std::string_view(only->name.GetString()) == fields.rootName &&
                         !IsField(fields, fields.rootName);
    const rapidjson::Value& members = wrapped ? only->value : document;
    for (const auto& member : members.GetObject()) {
        if (!IsField(fields, member.name.GetString())) {
            return false;
        }
    }
    return protocol::ParseJSONText(value, wrapped ? fields.rootName : nullptr, text);
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
