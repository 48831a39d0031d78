#include "src/Engine.h"
#include "src/Rules.h"

namespace nexwire::simulator {

Handling::Handling(const Description& theDescription, const Endpoint& theEndpoint, const Request& theRequest,
                   Store::Transaction& transaction)
    : description(theDescription), endpoint(theEndpoint), request(theRequest), store(transaction),
      data(rapidjson::kObjectType)
{
}

void Handling::Define(std::string_view name, Json value)
{
    held_.push_back(std::make_unique<Json>(std::move(value)));
    Name(name, *held_.back());
}

const Json* Handling::Named(std::string_view expression) const
{
    const std::size_t dot = expression.find('.');
    const auto found = names_.find(expression.substr(0, dot));
    if (found == names_.end()) {
        return nullptr;
    }
    return dot == std::string_view::npos ? found->second : AtPath(*found->second, expression.substr(dot + 1));
}

std::string_view Handling::Identifier(std::string_view name) const
{
    const auto found = endpoint.names.find(name);
    return found == endpoint.names.end() ? std::string_view() : std::string_view(identifiers[found->second]);
}

Json Handling::Fill(const Json& pattern)
{
    if (pattern.IsString()) {
        const std::string_view text = AsText(&pattern);
        if (!text.empty() && text.front() == '$') {
            const Json* value = Named(text.substr(1));
            return value == nullptr ? Json() : Copy(*value, Memory());
        }
        std::string filled(text);
        for (const auto& [name, place] : endpoint.names) {
            const std::string mark = "{" + name + "}";
            const std::string& value = identifiers[place];
            for (std::size_t at = filled.find(mark); at != std::string::npos; at = filled.find(mark, at)) {
                filled.replace(at, mark.size(), value);
                at += value.size();
            }
        }
        return MakeText(filled, Memory());
    }
    if (pattern.IsArray()) {
        Json list(rapidjson::kArrayType);
        for (const Json& element : pattern.GetArray()) {
            list.PushBack(Fill(element), Memory());
        }
        return list;
    }
    if (!pattern.IsObject()) {
        return Copy(pattern, Memory());
    }
    if (const Json* each = Member(pattern, "$each")) {
        Json list(rapidjson::kArrayType);
        const Json elements = Fill(*each);
        const Json* as = Member(pattern, "as");
        if (elements.IsArray() && as != nullptr) {
            for (const Json& element : elements.GetArray()) {
                Name("it", element);
                list.PushBack(Fill(*as), Memory());
            }
            names_.erase("it");
        }
        return list;
    }
    Json object(rapidjson::kObjectType);
    for (const auto& member : pattern.GetObject()) {
        Json value = Fill(member.value);
        if (!value.IsNull()) {
            SetMember(object, AsText(&member.name), std::move(value), Memory());
        }
    }
    return object;
}

std::string Handling::FillText(const Json* pattern)
{
    if (pattern == nullptr) {
        return {};
    }
    const Json filled = Fill(*pattern);
    return std::string(AsText(&filled));
}

Json Handling::Parse(std::string_view document)
{
    Document parsed(&Memory());
    parsed.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag>(document.data(), document.size());
    if (parsed.HasParseError()) {
        throw StoreError("a stored document is not JSON");
    }
    return Json(std::move(static_cast<Json&>(parsed)));
}

Json Handling::Load(std::string_view collection, std::string_view key)
{
    const auto document = store.Read(collection, key);
    return document ? Parse(*document) : Json();
}

Json Handling::Need(const Collection& collection, std::string_view key)
{
    Json document = Load(collection.name, key);
    if (document.IsNull()) {
        throw Refusal(collection.name == kDevices ? Reason::kUnknownDevice : Reason::kUnknownGuid,
                      "\"" + std::string(key) + "\"");
    }
    return document;
}

void Handling::Save(std::string_view collection, std::string_view key, const Json& document)
{
    store.Write(collection, key, PrintJson(document));
}

void Handling::Each(const Selection& selection, const std::function<void(const std::string&, Json&)>& each)
{
    store.Select(selection, [&](const std::string& key, const std::string& text) {
        Json document = Parse(text);
        each(key, document);
    });
}

std::string Handling::NeedText(const Json& object, std::string_view member)
{
    const Json* value = Member(object, member);
    if (value == nullptr || AsText(value, "-").empty()) {
        throw Refusal(Reason::kMissingField, member);
    }
    if (!value->IsString()) {
        throw Refusal(Reason::kWrongType, member);
    }
    return std::string(AsText(value));
}

} // namespace nexwire::simulator
