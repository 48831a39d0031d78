#include "src/ExchangeText.h"

#include <algorithm>

#include <keel/StringUtil.h>

#include "src/Base64.h"
#include "src/Fields.h"
#include "src/Query.h"

namespace nexwire::simulator {
namespace {

constexpr std::size_t kShownOfBytes = 1024; // Of a body that is no text.

const char* OutcomeOf(const HttpServer::Done& served, bool wall)
{
    return !served.fault.empty()                 ? "fault"
           : served.status >= 400                ? "error"
           : served.code == (wall ? "0" : "0-0") ? "ok"
                                                 : "refused";
}

std::string AsIs(std::string text, const Json* encoding)
{
    std::string bytes;
    return AsText(encoding) == "base64" && FromBase64(text, bytes) ? bytes : text;
}

/// Copies what a device was sent or said, opened, under other names.
void Open(const Json& from, Json& to, std::initializer_list<std::pair<const char*, const char*>> names,
          Allocator& memory)
{
    for (const auto& [member, name] : names) {
        const std::string text(AsText(Member(from, member)));
        if (!text.empty()) {
            const std::string encoding = std::string(member) + "Encoding";
            SetMember(to, name, Opened(AsIs(text, Member(from, encoding)), memory), memory);
        }
    }
}

Json OpenEach(const Json* items, std::initializer_list<std::pair<const char*, const char*>> names, Allocator& memory)
{
    Json list(rapidjson::kArrayType);
    for (const Json& item : Elements(items)) {
        Json one(rapidjson::kObjectType);
        Open(item, one, names, memory);
        list.PushBack(one, memory);
    }
    return list;
}

/// Texts for a device, opened up; null when there are none.
Json DeviceTexts(const std::string& sent, const std::string& answered, Allocator& memory)
{
    Document request;
    Document answer;
    std::string error;
    if (!ParseJson(request, sent, error) || !request.IsObject() || request.MemberCount() != 1) {
        return Json();
    }
    const Json& root = request.MemberBegin()->value;
    const Json* command = Member(root, "command");
    const auto has = [&](const char* name) { return Member(root, name) != nullptr; };
    if (command == nullptr || !(has("condBuffer") || has("inBuffer") || has("batchSendDataList"))) {
        return Json();
    }
    Json texts(rapidjson::kObjectType);
    SetMember(texts, "command", Copy(*command, memory), memory);
    Open(root, texts, {{"condBuffer", "condition"}, {"inBuffer", "request"}}, memory);
    if (const Json* items = Member(root, "batchSendDataList")) {
        SetMember(texts, "request", OpenEach(items, {{"inBuffer", "request"}}, memory), memory);
    }
    const Json* data = ParseJson(answer, answered, error) ? Member(answer, "data") : nullptr;
    if (data != nullptr && data->IsObject() && data->MemberCount() == 1) {
        const Json& result = data->MemberBegin()->value;
        Open(result, texts, {{"outBuffer", "answer"}, {"statusBuffer", "status"}}, memory);
        if (const Json* items = Member(result, "batchReturnDataList")) {
            SetMember(texts, "answer", OpenEach(items, {{"outBuffer", "answer"}, {"statusBuffer", "status"}}, memory),
                      memory);
        }
    }
    return texts;
}

/// How well what a function sends explains a body: members that both have, less what only one has or what differs.
int Likeness(const Json& sample, const Json& body)
{
    int likeness = 0;
    for (const auto& member : sample.GetObject()) {
        const Json* sent = Member(body, AsText(&member.name));
        const std::string_view pattern = AsText(&member.value);
        const bool differs = sent != nullptr && !pattern.empty() && sent->IsString() && !Fits(pattern, AsText(sent));
        likeness += sent == nullptr ? -1 : differs ? -4 : 1;
    }
    return likeness - static_cast<int>(body.MemberCount());
}

/// Leaves those functions of an endpoint that the body tells apart: by command, else by what they send.
void Narrow(std::vector<const WireFunction*>& functions, std::string_view body)
{
    Document parsed;
    std::string error;
    if (!ParseJson(parsed, body, error) || !parsed.IsObject() || parsed.MemberCount() != 1 ||
        !parsed.MemberBegin()->value.IsObject()) {
        return;
    }
    const Json& root = parsed.MemberBegin()->value;
    const std::int64_t command = AsInt(Member(root, "command"));
    std::vector<const WireFunction*> best;
    int most = 0;
    for (const WireFunction* function : functions) {
        std::string failed;
        Document sample;
        const bool sampled = ParseJson(sample, function->sample, failed) && sample.IsObject();
        const int likeness = (sampled ? Likeness(sample, root) : -1) +
                             (command != 0 && function->command == command ? 100 : 0) -
                             (function->command != 0 && function->command != command ? 100 : 0);
        if (best.empty() || likeness > most) {
            best.clear();
            most = likeness;
        }
        if (likeness == most) {
            best.push_back(function);
        }
    }
    functions = std::move(best);
}

} // namespace

std::string_view FirstKey(std::string_view body)
{
    const std::size_t open = body.find_first_not_of(" \t\r\n");
    if (open == std::string_view::npos || body[open] != '{') {
        return {};
    }
    const std::size_t begin = body.find_first_not_of(" \t\r\n", open + 1);
    if (begin == std::string_view::npos || body[begin] != '"') {
        return {};
    }
    return body.substr(begin + 1, std::min(body.find('"', begin + 1), body.size()) - begin - 1);
}

Json Opened(std::string_view text, Allocator& memory)
{
    Document parsed(&memory);
    std::string error;
    const bool structured = text.find_first_of("{[") != std::string_view::npos && ParseJson(parsed, text, error);
    return structured ? Json(std::move(static_cast<Json&>(parsed))) : MakeText(text, memory);
}

ExchangeText::ExchangeText(const Description& description) : description_(description)
{
    for (const WireFunction& function : description.Library().Functions()) {
        if (function.direct) {
            direct_.emplace(function.path, &function);
        }
    }
}

std::vector<const WireFunction*> ExchangeText::FunctionsOf(std::string_view verb, std::string_view path,
                                                           std::string_view body) const
{
    std::vector<const WireFunction*> functions;
    const auto [first, last] = direct_.equal_range(path);
    std::transform(first, last, std::back_inserter(functions), [](const auto& entry) { return entry.second; });
    if (!functions.empty()) {
        return functions;
    }
    const std::string_view root = FirstKey(body);
    for (const Endpoint* endpoint : description_.Find(verb, path).endpoints) {
        if (endpoint->root == root || endpoint->root.empty()) {
            functions = endpoint->functions;
            break;
        }
    }
    if (std::any_of(functions.begin(), functions.end(),
                    [&](const WireFunction* each) { return each->name != functions.front()->name; })) {
        Narrow(functions, body);
    }
    return functions;
}

std::vector<const WireFunction*> ExchangeText::FunctionsOf(const KeptExchange& kept) const
{
    const Request& request = kept.exchange->served.request;
    static const std::string none;
    return FunctionsOf(request.verb, request.path, kept.bodies ? *kept.bodies->sent : none);
}

std::string ExchangeText::RedactedQuery(std::string_view query) const
{
    std::string redacted;
    while (!query.empty()) {
        const std::string_view one = query.substr(0, query.find('&'));
        const std::size_t equals = one.find('=');
        const bool secret =
            equals != std::string_view::npos && redactor_.IsSecret(Decoded(one.substr(0, equals), true));
        redacted += redacted.empty() ? "" : "&";
        redacted += secret ? std::string(one.substr(0, equals + 1)) + "***" : redactor_.Redact(std::string(one));
        query.remove_prefix(std::min(one.size() + 1, query.size()));
    }
    return redacted;
}

Json ExchangeText::Summary(const KeptExchange& kept, Allocator& memory) const
{
    const HttpServer::Done& served = kept.exchange->served;
    const std::vector<const WireFunction*> functions = FunctionsOf(kept);
    Json names(rapidjson::kArrayType);
    for (const WireFunction* function : functions) {
        const Json* known = names.Empty() ? nullptr : &names[names.Size() - 1];
        if (AsText(known) != function->name) { // Overloads follow each other.
            names.PushBack(MakeText(function->name, memory), memory);
        }
    }
    Fields summary(memory);
    summary.Number("id", kept.exchange->id)
        .Number("timeMs", kept.exchange->timeMs)
        .Text("module", functions.empty() ? "" : functions.front()->module)
        .Value("functions", std::move(names))
        .Text("verb", served.request.verb);
    if (!functions.empty()) {
        summary.Number("method", functions.front()->method);
    }
    summary.Text("path", served.request.path.empty() ? served.target : served.request.path)
        .Text("query", RedactedQuery(served.request.query))
        .Number("status", served.status)
        .Text("code", served.code)
        .Text("msg", redactor_.Redact(served.message))
        .Text("outcome", OutcomeOf(served, kept.exchange->wall))
        .Value("ms", Json(served.milliseconds))
        .Number("requestBytes", static_cast<std::int64_t>(served.requestBytes))
        .Number("answerBytes", static_cast<std::int64_t>(served.answerBytes));
    if (kept.exchange->wall) {
        summary.Flag("wall", true);
    }
    return summary.Take();
}

Json ExchangeText::HeaderFields(const std::string& head, bool secrets, Allocator& memory) const
{
    Json fields(rapidjson::kObjectType);
    for (std::size_t begin = head.find('\n'); begin != std::string::npos && begin + 1 < head.size();) {
        const std::size_t end = std::min(head.find('\r', begin + 1), head.size());
        const std::string line = head.substr(begin + 1, end - begin - 1);
        const std::size_t colon = line.find(": ");
        if (colon != std::string::npos) {
            const std::string name = line.substr(0, colon);
            const std::string value = line.substr(colon + 2);
            SetMember(fields, name,
                      MakeText(secrets                    ? value
                               : redactor_.IsSecret(name) ? "***"
                                                          : redactor_.Redact(value),
                               memory),
                      memory);
        }
        begin = head.find('\n', end);
    }
    return fields;
}

Json ExchangeText::Body(const std::string* body, std::string_view type, std::uint64_t bytes, bool secrets,
                        Allocator& memory) const
{
    Fields shown(memory);
    shown.Text("type", type).Number("bytes", static_cast<std::int64_t>(bytes));
    if (body == nullptr) {
        return shown.Flag("gone", true).Take();
    }
    std::string text = *body;
    if (text.size() < bytes) {
        shown.Flag("cut", true);
        // The cut may have gone through a character.
        for (int i = 0; i < 3 && !Keel::StringUtil::IsUtf8(text); ++i) {
            text.pop_back();
        }
    }
    if (!Keel::StringUtil::IsUtf8(text) || text.find('\0') != std::string::npos) {
        return shown.Text("base64", ToBase64(std::string_view(*body).substr(0, kShownOfBytes))).Take();
    }
    return shown.Text("text", secrets ? text : redactor_.Redact(text)).Take();
}

Json ExchangeText::Whole(const KeptExchange& kept, bool secrets, const std::string& server, Allocator& memory) const
{
    const HttpServer::Done& served = kept.exchange->served;
    const auto plain = [&](const std::shared_ptr<const std::string>& body) {
        return body == nullptr ? std::string() : secrets ? *body : redactor_.Redact(*body);
    };
    const std::string sent = kept.bodies ? plain(kept.bodies->sent) : std::string();
    std::string head = "\n";
    for (const auto& [name, value] : served.request.headers) {
        head += name + ": " + value + "\r\n";
    }
    const auto type = served.request.headers.find("content-type");
    Json whole = Summary(kept, memory);
    Fields fields(whole, memory);
    if (secrets) {
        fields.Text("query", served.request.query).Text("msg", served.message);
    }
    fields.Value("requestHeaders", HeaderFields(head, secrets, memory))
        .Value("answerHeaders", HeaderFields(served.head, secrets, memory))
        .Value("request", Body(kept.bodies ? kept.bodies->sent.get() : nullptr,
                               type == served.request.headers.end() ? std::string_view() : type->second,
                               served.requestBytes, secrets, memory))
        .Value("answer", Body(kept.bodies ? kept.bodies->answer.get() : nullptr, served.type, served.answerBytes,
                              secrets, memory));
    if (kept.bodies) {
        Json texts = DeviceTexts(sent, plain(kept.bodies->answer), memory);
        if (!texts.IsNull()) {
            fields.Value("device", std::move(texts));
        }
    }
    if (!served.fault.empty()) {
        fields.Text("fault", served.fault);
    }
    if (!secrets) {
        fields.Flag("redacted", true);
    }
    const std::vector<const WireFunction*> functions = FunctionsOf(kept);
    const std::string query = secrets ? served.request.query : RedactedQuery(served.request.query);
    const std::string target = served.request.path + (query.empty() ? "" : "?") + query;
    fields.Value("lines", CallLines(description_.Library(), *kept.exchange, target, sent,
                                    functions.empty() ? nullptr : functions.front(), server, redactor_, memory));
    return whole;
}

} // namespace nexwire::simulator
