#include <cctype>

#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

/// What a device answers to a request line.
struct Spoken {
    std::string document;
    std::string status;
};

std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (const char each : text) {
        escaped += each == '<' ? "&lt;" : each == '&' ? "&amp;" : std::string(1, each);
    }
    return escaped;
}

std::string Status(std::string_view path, int code, std::string_view words, std::string_view reason)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ResponseStatus><requestURL>" + Escaped(path) +
           "</requestURL><statusCode>" + std::to_string(code) + "</statusCode><statusString>" + std::string(words) +
           "</statusString><subStatusCode>" + std::string(reason) + "</subStatusCode></ResponseStatus>";
}

Spoken NotSupported(std::string_view path)
{
    return {{}, Status(path, 4, "Invalid Operation", "notSupport")};
}

// Calls `each` with every text of a value and the name it has.
void Texts(const Json& value, std::string_view name,
           const std::function<void(std::string_view, std::string_view)>& each)
{
    if (value.IsString()) {
        each(name, AsText(&value));
    } else if (value.IsObject()) {
        for (const auto& member : value.GetObject()) {
            Texts(member.value, AsText(&member.name), each);
        }
    }
}

bool IsRequestLine(std::string_view text)
{
    for (const char* verb : {"GET /", "PUT /", "POST /", "DELETE /"}) {
        if (BeginsWith(text, verb)) {
            return true;
        }
    }
    return false;
}

// The text that answers, in the member of the result that takes it.
void Give(Handling& handling, const std::string& text, const std::string& status = {})
{
    Compose(handling);
    Allocator& memory = handling.Memory();
    if (handling.endpoint.result == nullptr) {
        return;
    }
    Json* object = &handling.data;
    const WireStructure* structure = handling.endpoint.result;
    while (structure->members.size() == 1 && structure->members.front().kind == WireKind::kStruct) {
        object = Member(*object, structure->members.front().key);
        structure = structure->members.front().structure;
    }
    const WireMember* place = nullptr;
    for (const WireMember& member : structure->members) {
        const bool out = BeginsWith(member.key, "out") || BeginsWith(member.key, "response");
        if (member.kind == WireKind::kText && (place == nullptr || out)) {
            place = &member;
        }
    }
    if (place != nullptr) {
        SetMember(*object, place->key, MakeText(text, memory), memory);
    }
    if (structure->Find("statusBuffer") != nullptr) {
        SetMember(*object, "statusBuffer", MakeText(status, memory), memory);
    }
}

Json BodyOf(Handling& handling)
{
    if (handling.body != nullptr) {
        return Copy(*handling.body, handling.Memory());
    }
    Document parsed(&handling.Memory());
    std::string error;
    if (!ParseJson(parsed, handling.request.body, error)) {
        throw Refusal(Reason::kNotJson, error);
    }
    return Json(std::move(static_cast<Json&>(parsed)));
}

std::string EntryText(const Json& entry)
{
    return entry.IsString() ? std::string(AsText(&entry)) : PrintJson(entry);
}

void CheckReach(Handling& handling)
{
    const std::string_view device = handling.Identifier("1");
    const Reason reason = Unwilling(handling, device);
    if (reason == Reason::kDeviceOffline || reason == Reason::kDeviceRefused) {
        throw Refusal(reason, "\"" + std::string(device) + "\"");
    }
}

// The line under which the resource files know a document; of numbered things they know the first.
std::string KnownLine(Handling& handling, const std::string& line)
{
    static constexpr std::string_view kTerminals = "GET /KESTREL/Publish/TerminalMgr/terminals/";
    static constexpr std::string_view kRest = "/capabilities";
    if (BeginsWith(line, kTerminals) && line.size() > kTerminals.size() && line[kTerminals.size()] >= '1' &&
        line[kTerminals.size()] <= '9') {
        const std::size_t slash = line.find('/', kTerminals.size());
        const std::string number = line.substr(kTerminals.size(), slash - kTerminals.size());
        const bool plain = number.size() < 9 && number.find_first_not_of("0123456789") == std::string::npos;
        if (plain && slash != std::string::npos && line.substr(slash) == kRest &&
            std::stol(number) <= TerminalCount(handling)) {
            return std::string(kTerminals) + "1" + std::string(kRest);
        }
    }
    return line;
}

// A request line names a document of the device: what the resource files say, else what was sent there. Of what they
// do not know, release servers say so.
Spoken Answer(Handling& handling, const std::string& verb, const std::string& path, const std::string& content)
{
    static constexpr std::string_view kPointCloud = "/KESTREL/Radar/pointCloud";
    const std::string bare = path.substr(0, path.find_first_of("? "));
    const std::string key = std::string(handling.Identifier("1")) + " " + bare;
    const Json* device = handling.Named("device");
    const bool server = device != nullptr && AsText(Member(*device, "deviceType")) == "publishServer";
    const bool changes = verb != "GET";
    if (server && changes && !BeginsWith(bare, "/KESTREL/Publish/") && !BeginsWith(bare, "/KESTREL/Security/")) {
        return NotSupported(path);
    }
    const Json kept = handling.Load(kDeviceTexts, key);
    if (verb == "PUT" || verb == "POST") {
        if (server && content.empty()) {
            return {{}, Status(path, 6, "Invalid Content", "badContent")};
        }
        Json text(rapidjson::kObjectType);
        SetMember(text, "text", MakeText(content, handling.Memory()), handling.Memory());
        handling.Save(kDeviceTexts, key, text);
    } else if (verb == "DELETE") {
        if (server && kept.IsNull()) {
            return NotSupported(path);
        }
        handling.store.Erase(kDeviceTexts, key);
    }
    const auto& known = handling.description.Entries("kestrel");
    const auto entry = known.find(KnownLine(handling, verb + " " + path));
    if (entry != known.end()) {
        return {EntryText(*entry->second), {}};
    }
    if (changes) {
        return {{}, Status(path, 1, "OK", "ok")};
    }
    if (kept.IsObject()) {
        return {std::string(AsText(Member(kept, "text"))), {}};
    }
    if (bare == kPointCloud) {
        return {PointCloud(handling), {}};
    }
    if (server) {
        return NotSupported(path);
    }
    const std::string name = bare.substr(bare.rfind('/') + 1);
    return {path.find("format=json") != std::string::npos ? "{}" : "<?xml version=\"1.0\"?><" + name + "/>", {}};
}

void Kestrel(Handling& handling)
{
    CheckReach(handling);
    const Json body = BodyOf(handling);
    std::string line;
    std::string content;
    Texts(body, "", [&](std::string_view, std::string_view text) {
        if (line.empty() && IsRequestLine(text)) {
            line = text;
        } else if (text.size() > content.size()) {
            content = text;
        }
    });
    if (line.empty()) {
        throw Refusal(Reason::kMissingField, "a request line");
    }
    // A request may bring its content behind the line.
    const std::size_t end = line.find_first_of("\r\n");
    if (end != std::string::npos) {
        const std::size_t rest = line.find_first_not_of("\r\n", end);
        content = rest == std::string::npos ? content : line.substr(rest);
        line.resize(end);
    }
    const std::size_t blank = line.find(' ');
    const Spoken spoken = Answer(handling, line.substr(0, blank), line.substr(blank + 1), content);
    Give(handling, spoken.document, spoken.status);
}

// An SDK command by its code; what comes with it is kept; without any text it is read back.
void Netsdk(Handling& handling)
{
    CheckReach(handling);
    const Json body = BodyOf(handling);
    std::int64_t code = 0;
    for (const auto& member : body.GetObject()) {
        const std::string_view name = AsText(&member.name);
        if (member.value.IsInt64() && code == 0 &&
            (EndsWith(name, "command") || EndsWith(name, "code") || EndsWith(name, "cmd"))) {
            code = member.value.GetInt64();
        }
    }
    std::string content;
    Texts(body, "", [&](std::string_view name, std::string_view text) {
        content = BeginsWith(name, "in") ? std::string(text) : content;
    });
    const std::string key = std::string(handling.Identifier("1")) + " " + std::to_string(code);
    const auto& known = handling.description.Entries("netsdk");
    const auto entry = known.find(std::to_string(code));
    if (entry == known.end() && !content.empty()) {
        Json kept(rapidjson::kObjectType);
        SetMember(kept, "text", MakeText(content, handling.Memory()), handling.Memory());
        handling.Save(kDeviceTexts, key, kept);
    }
    const Json kept = handling.Load(kDeviceTexts, key);
    Give(handling, entry != known.end() ? EntryText(*entry->second)
                   : kept.IsObject()    ? std::string(AsText(Member(kept, "text")))
                                        : "{}");
}

} // namespace

void AddDeviceTexts(Services& services)
{
    services["kestrel"] = Kestrel;
    services["netsdk"] = Netsdk;
}

} // namespace nexwire::simulator
