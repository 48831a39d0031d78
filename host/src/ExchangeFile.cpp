#include "ExchangeFile.h"

#include <map>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "Secrets.h"
#include <keel/Encrypt.h>
#include <keel/StringUtil.h>

namespace nexwire::host {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;
using Document = rapidjson::Document;
using Value = rapidjson::Value;
using Keel::StringUtil::IsUtf8;

constexpr const char* kHidden = "***";
constexpr const char* kBase64 = "base64";

void Text(Writer& writer, const std::string& text)
{
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

// A text under `key`, or any bytes under `key` + "Base64".
void Bytes(Writer& writer, const std::string& key, const std::string& bytes)
{
    if (IsUtf8(bytes)) {
        Text(writer, key);
        Text(writer, bytes);
    } else {
        Text(writer, key + "Base64");
        Text(writer, Keel::Encrypt::Base64Encode(bytes));
    }
}

// The value of a field is a text or, if it is not UTF-8, {"base64":"…"}.
void Fields(Writer& writer, const char* key, const std::map<std::string, std::string>& fields)
{
    writer.Key(key);
    writer.StartObject();
    for (const auto& [name, value] : fields) {
        if (!IsUtf8(name)) {
            continue; // No server or caller that follows HTTP writes one.
        }
        Text(writer, name);
        const std::string shown = IsSecretField(name) ? kHidden : WithoutSecrets(value);
        if (IsUtf8(shown)) {
            Text(writer, shown);
        } else {
            writer.StartObject();
            writer.Key(kBase64);
            Text(writer, Keel::Encrypt::Base64Encode(shown));
            writer.EndObject();
        }
    }
    writer.EndObject();
}

const Value* Find(const Value& object, const std::string& key)
{
    const auto member = object.FindMember(key.c_str());
    return member == object.MemberEnd() ? nullptr : &member->value;
}

std::string TextOf(const Value& value)
{
    return std::string(value.GetString(), value.GetStringLength());
}

bool ReadBytes(const Value& object, const std::string& key, std::string& bytes)
{
    const Value* value = Find(object, key);
    if (value != nullptr) {
        if (!value->IsString()) {
            return false;
        }
        bytes = TextOf(*value);
        return true;
    }
    value = Find(object, key + "Base64");
    return value != nullptr && value->IsString() && Keel::Encrypt::Base64Decode(TextOf(*value), bytes);
}

bool ReadFields(const Value& object, std::map<std::string, std::string>& fields)
{
    const Value* const value = Find(object, "headers");
    if (value == nullptr || !value->IsObject()) {
        return false;
    }
    for (const auto& member : value->GetObject()) {
        std::string& field = fields[TextOf(member.name)];
        if (member.value.IsString()) {
            field = TextOf(member.value);
            continue;
        }
        const Value* const bytes = member.value.IsObject() ? Find(member.value, kBase64) : nullptr;
        if (bytes == nullptr || !bytes->IsString() || !Keel::Encrypt::Base64Decode(TextOf(*bytes), field)) {
            return false;
        }
    }
    return true;
}

bool ReadError(const Value& object, Keel::Error::ErrorCode& error)
{
    const Value* const value = Find(object, "error");
    if (value == nullptr) {
        return true;
    }
    if (!value->IsObject()) {
        return false;
    }
    const Value* const category = Find(*value, "category");
    const Value* const number = Find(*value, "number");
    if (category == nullptr || !category->IsInt() || number == nullptr || !number->IsInt()) {
        return false;
    }
    error.category = category->GetInt();
    error.number = number->GetInt();
    return ReadBytes(*value, "text", error.text);
}

} // namespace

std::string WriteExchange(const RequestParams& request, const RspInfos& response, bool answered,
                          const Keel::Error::ErrorCode& error, const std::string& time, std::int64_t elapsedMs)
{
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    Bytes(writer, "time", time);
    writer.Key("method");
    writer.Int(request.method);
    Bytes(writer, "path", WithoutSecrets(request.url));
    Fields(writer, "headers", request.headers);
    Fields(writer, "params", request.params);
    Bytes(writer, "body", WithoutSecrets(request.body));
    writer.Key("timeoutMs");
    writer.Int(request.timeoutMs);
    writer.Key("answered");
    writer.Bool(answered);
    writer.Key("elapsedMs");
    writer.Int64(elapsedMs);
    writer.Key("response");
    writer.StartObject();
    Fields(writer, "headers", response.headers);
    Bytes(writer, "body", WithoutSecrets(response.body));
    writer.EndObject();
    if (!answered) {
        writer.Key("error");
        writer.StartObject();
        writer.Key("category");
        writer.Int(error.category);
        writer.Key("number");
        writer.Int(error.number);
        Bytes(writer, "text", WithoutSecrets(error.text));
        writer.EndObject();
    }
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + '\n';
}

bool ReadExchange(const std::string& line, RecordedExchange& exchange, std::string& problem)
{
    Document document;
    document.Parse<rapidjson::kParseIterativeFlag>(line.data(), line.size());
    if (document.HasParseError()) {
        problem = std::string("not JSON: ") + rapidjson::GetParseError_En(document.GetParseError());
        return false;
    }
    if (!document.IsObject()) {
        problem = "not an object";
        return false;
    }
    const Value* const method = Find(document, "method");
    const Value* const answered = Find(document, "answered");
    const Value* const response = Find(document, "response");
    if (method == nullptr || !method->IsInt() || answered == nullptr || !answered->IsBool() ||
        !ReadBytes(document, "path", exchange.path) || !ReadBytes(document, "body", exchange.body)) {
        problem = "\"method\", \"path\", \"body\" or \"answered\" is missing or of another type";
        return false;
    }
    exchange.method = method->GetInt();
    exchange.answered = answered->GetBool();
    if (response == nullptr || !response->IsObject() || !ReadBytes(*response, "body", exchange.response.body) ||
        !ReadFields(*response, exchange.response.headers)) {
        problem = "\"response\" has no \"headers\" or no \"body\"";
        return false;
    }
    if (!ReadError(document, exchange.error)) {
        problem = "\"error\" has no \"category\", \"number\" or \"text\"";
        return false;
    }
    return true;
}

} // namespace nexwire::host
