#include "src/Json.h"

#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <stdexcept>

namespace nexwire::simulator {
namespace {

constexpr unsigned kFlags =
    rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseFullPrecisionFlag;

rapidjson::SizeType Length(std::string_view text)
{
    return static_cast<rapidjson::SizeType>(text.size());
}

bool TooDeep(std::string_view text)
{
    unsigned depth = 0;
    bool inText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inText) {
            if (c == '\\') {
                ++i;
            } else if (c == '"') {
                inText = false;
            }
        } else if (c == '"') {
            inText = true;
        } else if (c == '{' || c == '[') {
            if (++depth > kMaxDepth) {
                return true;
            }
        } else if ((c == '}' || c == ']') && depth > 0) {
            --depth;
        }
    }
    return false;
}

} // namespace

bool ParseJson(Document& out, std::string_view text, std::string& error)
{
    if (TooDeep(text)) {
        error = "nested deeper than " + std::to_string(kMaxDepth);
        return false;
    }
    out.Parse<kFlags>(text.data(), text.size());
    if (out.HasParseError()) {
        error = std::string(rapidjson::GetParseError_En(out.GetParseError())) + " At offset " +
                std::to_string(out.GetErrorOffset()) + ".";
        return false;
    }
    return true;
}

Document ParseOwn(std::string_view text)
{
    Document document;
    document.Parse<kFlags>(text.data(), text.size());
    if (document.HasParseError()) {
        throw std::runtime_error("offset " + std::to_string(document.GetErrorOffset()) + ": " +
                                 rapidjson::GetParseError_En(document.GetParseError()));
    }
    return document;
}

std::string PrintJson(const Json& value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

const Json* Member(const Json& object, std::string_view key)
{
    if (!object.IsObject()) {
        return nullptr;
    }
    const auto found = object.FindMember(Json(rapidjson::StringRef(key.data(), Length(key))));
    return found == object.MemberEnd() ? nullptr : &found->value;
}

Json* Member(Json& object, std::string_view key)
{
    return const_cast<Json*>(Member(static_cast<const Json&>(object), key));
}

const Json* AtPath(const Json& root, std::string_view dotted)
{
    const Json* at = &root;
    while (at != nullptr && !dotted.empty()) {
        const std::size_t dot = dotted.find('.');
        at = Member(*at, dotted.substr(0, dot));
        dotted = dot == std::string_view::npos ? std::string_view() : dotted.substr(dot + 1);
    }
    return at;
}

Json::ConstArray Elements(const Json* value)
{
    static const Json none(rapidjson::kArrayType);
    return value != nullptr && value->IsArray() ? value->GetArray() : none.GetArray();
}

Json MakeText(std::string_view text, Allocator& allocator)
{
    // An empty view may have no data, which RapidJSON does not take.
    return text.empty() ? Json("", 0, allocator) : Json(text.data(), Length(text), allocator);
}

Json Copy(const Json& value, Allocator& allocator)
{
    return Json(value, allocator);
}

void SetMember(Json& object, std::string_view key, Json value, Allocator& allocator)
{
    if (Json* old = Member(object, key)) {
        *old = value; // Moves: RapidJSON's assignment takes the right side's content.
        return;
    }
    object.AddMember(MakeText(key, allocator), value, allocator);
}

std::string_view AsText(const Json* value, std::string_view otherwise)
{
    return value != nullptr && value->IsString() ? std::string_view(value->GetString(), value->GetStringLength())
                                                 : otherwise;
}

std::int64_t AsInt(const Json* value, std::int64_t otherwise)
{
    return value != nullptr && value->IsInt64() ? value->GetInt64() : otherwise;
}

double AsDouble(const Json* value, double otherwise)
{
    return value != nullptr && value->IsNumber() ? value->GetDouble() : otherwise;
}

bool AsBool(const Json* value, bool otherwise)
{
    return value != nullptr && value->IsBool() ? value->GetBool() : otherwise;
}

} // namespace nexwire::simulator
