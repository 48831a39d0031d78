#include <cctype>

#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kTexts = "_deviceTexts"; // What was sent to a device, by request line or command.

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
void Give(Handling& handling, const std::string& text)
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
    if (OutOfReach(handling, device) == Reason::kDeviceOffline) {
        throw Refusal(Reason::kDeviceOffline, "\"" + std::string(device) + "\"");
    }
}

// A request line names a document of the device: what the resource files say, else what was sent there.
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
    const std::string verb = line.substr(0, blank);
    const std::string path = line.substr(blank + 1);
    const std::string bare = path.substr(0, path.find_first_of("? "));
    const std::string key = std::string(handling.Identifier("1")) + " " + bare;
    const auto& known = handling.description.Entries("kestrel");
    const auto entry = known.find(line);
    if (verb == "PUT" || verb == "POST") {
        Json kept(rapidjson::kObjectType);
        SetMember(kept, "text", MakeText(content, handling.Memory()), handling.Memory());
        handling.Save(kTexts, key, kept);
    } else if (verb == "DELETE") {
        handling.store.Erase(kTexts, key);
    }
    const Json kept = handling.Load(kTexts, key);
    const std::string name = bare.substr(bare.rfind('/') + 1);
    Give(handling, entry != known.end()                            ? EntryText(*entry->second)
                   : verb != "GET"                                 ? ""
                   : kept.IsObject()                               ? std::string(AsText(Member(kept, "text")))
                   : path.find("format=json") != std::string::npos ? "{}"
                                                                   : "<?xml version=\"1.0\"?><" + name + "/>");
}

// An SDK command by its code; what comes with it is kept and given back to who asks without any text.
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
        handling.Save(kTexts, key, kept);
    }
    const Json kept = handling.Load(kTexts, key);
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
