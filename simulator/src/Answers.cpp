#include <algorithm>
#include <array>

#include "src/Rules.h"

// Answers made from the library's structures.

namespace nexwire::simulator {
namespace {

constexpr int kDeepest = 6;                           ///< Structures may hold themselves.
constexpr std::int64_t kSampleTimeMs = 1704067200000; // 2024-01-01 00:00:00 UTC.

constexpr std::array kCodes = {"resultCode", "code", "errorCode", "errCode", "result"};
constexpr std::array kMessages = {"resultMsg", "msg", "errorMsg", "errMsg", "message", "resultMessage", "errorMessage"};
constexpr std::array kSucceeded = {"successNum", "successCount", "succeededNum"};
constexpr std::array kFailed = {"failedNum", "failedCount", "failureNum"};
constexpr std::array kTotals = {"total", "totalNum", "totalCount", "totalSize", "totalMatches", "recordCount"};

template <std::size_t Count>
bool Is(std::string_view key, const std::array<const char*, Count>& names)
{
    return std::any_of(names.begin(), names.end(), [&](const char* name) { return Same(name, key); });
}

bool Fits(const WireMember& member, const Json& value)
{
    return member.kind == WireKind::kText     ? value.IsString()
           : member.IsNumber()                ? value.IsNumber()
           : member.kind == WireKind::kBool   ? value.IsBool()
           : member.kind == WireKind::kStruct ? value.IsObject()
                                              : member.kind == WireKind::kAny || value.IsArray();
}

// A member of that name in the object or in an object inside it.
const Json* Inside(const Json* object, const WireMember& member)
{
    if (object == nullptr || !object->IsObject()) {
        return nullptr;
    }
    const Json* found = Member(*object, member.key);
    if (found != nullptr) {
        return Fits(member, *found) ? found : nullptr;
    }
    for (const auto& each : object->GetObject()) {
        if (each.value.IsObject()) {
            const Json* inner = Member(each.value, member.key);
            if (inner != nullptr && Fits(member, *inner)) {
                return inner;
            }
        }
    }
    return nullptr;
}

Json OfValue(const WireMember& member, Allocator& memory)
{
    const WireValue& value = member.values.front();
    return member.kind == WireKind::kText ? MakeText(value.text, memory) : Json(value.number);
}

std::string Hash(std::string_view text)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string digits;
    std::uint64_t hash = 14695981039346656037u;
    for (int half = 0; half < 2; ++half) {
        for (const char c : text) {
            hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
        }
        for (unsigned shift = 0; shift < 64; shift += 4) {
            digits += kDigits[(hash >> shift) & 15u];
        }
    }
    return digits;
}

bool IsOptions(const WireStructure& structure)
{
    return structure.Find("options") != nullptr && structure.members.size() <= 2;
}

bool IsRange(const WireStructure& structure)
{
    return structure.members.size() == 2 && structure.Find("min") != nullptr && structure.Find("max") != nullptr;
}

// Abilities speak about configurations: what offers modes or lengths names what the configuration's member may be.
bool IsAbility(const WireStructure& structure)
{
    return std::any_of(structure.members.begin(), structure.members.end(), [](const WireMember& member) {
        return member.structure != nullptr && (IsOptions(*member.structure) || IsRange(*member.structure));
    });
}

Json Options(Handling& handling, const std::string& key)
{
    Allocator& memory = handling.Memory();
    Json options(rapidjson::kArrayType);
    const WireMember* member = handling.description.Library().WithVocabulary(key);
    if (member == nullptr && EndsWith(key, "List")) {
        member = handling.description.Library().WithVocabulary(key.substr(0, key.size() - 4));
    }
    for (const WireValue& value : member == nullptr ? std::vector<WireValue>() : member->values) {
        options.PushBack(MakeText(value.text.empty() ? std::to_string(value.number) : value.text, memory), memory);
    }
    Json made(rapidjson::kObjectType);
    Json first = options.Empty() ? MakeText("", memory) : Copy(options[0], memory);
    SetMember(made, "options", std::move(options), memory);
    SetMember(made, "defaultOption", std::move(first), memory);
    return made;
}

Json Range(Handling& handling, const std::string& key)
{
    const WireMember* member = handling.description.Library().WithRange(key);
    Json made(rapidjson::kObjectType);
    SetMember(made, "min", Json(member == nullptr ? 0 : static_cast<int>(*member->least)), handling.Memory());
    SetMember(made, "max", Json(member == nullptr ? 255 : static_cast<int>(*member->most)), handling.Memory());
    return made;
}

Json FreshMember(Handling& handling, const WireMember& member, bool ability)
{
    Allocator& memory = handling.Memory();
    if (member.structure != nullptr && member.kind == WireKind::kStruct) {
        return IsOptions(*member.structure) ? Options(handling, member.key)
               : IsRange(*member.structure) ? Range(handling, member.key)
                                            : Fresh(handling, *member.structure);
    }
    if (member.IsList()) {
        return Json(rapidjson::kArrayType);
    }
    if (member.kind == WireKind::kBool) {
        return Json(ability || member.usual.number != 0);
    }
    if (!member.usual.text.empty() || member.usual.number != 0) {
        return member.kind == WireKind::kText ? MakeText(member.usual.text, memory) : Json(member.usual.number);
    }
    if (!member.values.empty()) {
        return OfValue(member, memory);
    }
    if (member.IsNumber()) {
        const double least = member.least.value_or(0);
        const bool zero = std::find(member.also.begin(), member.also.end(), 0.0) != member.also.end();
        return !zero && (least > 0 || member.most.value_or(0) < 0) ? Json(static_cast<std::int64_t>(least)) : Json(0);
    }
    return member.kind == WireKind::kText ? MakeText("", memory) : Json(rapidjson::kObjectType);
}

/// What an answer is made from at one place of the result.
struct Source {
    const Json* document = nullptr;
    const Json* result = nullptr;
};

Json ComposeStructure(Handling& handling, const WireStructure& structure, const Source& source, int depth);

Json FromResult(Handling& handling, const WireMember& member, const Json& result)
{
    Allocator& memory = handling.Memory();
    if (Is(member.key, kCodes)) {
        const Json* code = Member(result, member.kind == WireKind::kText ? "codeText" : "code");
        return Copy(*code, memory);
    }
    if (Is(member.key, kMessages)) {
        return Copy(*Member(result, "msg"), memory);
    }
    const Json* item = Member(result, "item");
    const Action* action = handling.action;
    const bool guid = Same(member.key, "guid") ||
                      (action != nullptr && action->collection != nullptr && member.key == action->collection->key);
    if (guid) {
        // What is identified by several members is named by the last of them.
        const Json* named =
            action == nullptr || action->by.empty() || item == nullptr ? nullptr : Member(*item, action->by.back());
        return Copy(named != nullptr ? *named : *Member(result, "guid"), memory);
    }
    for (const Json* object : {Member(result, "doc"), item}) {
        if (const Json* value = Inside(object, member)) {
            return Copy(*value, memory);
        }
    }
    if (item != nullptr && item->IsString() && member.kind == WireKind::kText && EndsWith(member.key, "guid")) {
        return Copy(*item, memory);
    }
    return Json();
}

Json ListFor(Handling& handling, const WireMember& member, int depth)
{
    Allocator& memory = handling.Memory();
    Json list(rapidjson::kArrayType);
    const Json* results = handling.Named("results");
    const Json* docs = handling.Named("docs");
    if (member.kind == WireKind::kTextList) {
        const Json* guids = handling.Named("guids");
        return guids == nullptr ? std::move(list) : Copy(*guids, memory);
    }
    if (member.kind != WireKind::kStructList || member.structure == nullptr) {
        return list;
    }
    const Json* elements = results != nullptr ? results : docs;
    if (elements == nullptr || depth > kDeepest) {
        return list;
    }
    for (const Json& each : elements->GetArray()) {
        const Source source = results != nullptr ? Source{nullptr, &each} : Source{&each, nullptr};
        list.PushBack(ComposeStructure(handling, *member.structure, source, depth + 1), memory);
    }
    return list;
}

// A scalar that the path or the body says under the same name.
Json FromRequest(Handling& handling, const WireMember& member)
{
    const std::string_view identifier = handling.Identifier(member.key);
    if (!identifier.empty() && member.kind == WireKind::kText) {
        return MakeText(identifier, handling.Memory());
    }
    const bool scalar = member.kind == WireKind::kText || member.IsNumber() || member.kind == WireKind::kBool;
    const Json* said = scalar ? Inside(handling.body, member) : nullptr;
    return said == nullptr ? Json() : Copy(*said, handling.Memory());
}

Json ComposeMember(Handling& handling, const WireMember& member, const Source& source, int depth)
{
    Allocator& memory = handling.Memory();
    if (source.result != nullptr) {
        Json value = FromResult(handling, member, *source.result);
        if (!value.IsNull()) {
            return value;
        }
    }
    if (source.document != nullptr) {
        const Json* value = Member(*source.document, member.key);
        if (value != nullptr && Fits(member, *value)) {
            return Copy(*value, memory);
        }
        if (const Json* count = Member(*source.document, "_count"); count != nullptr && member.IsNumber()) {
            return Copy(*count, memory);
        }
    }
    const bool element =
        source.result != nullptr || (depth > 0 && handling.Named("docs") != nullptr && source.document != nullptr);
    if (!element) {
        if (const Json* total = handling.Named("total");
            total != nullptr && member.IsNumber() && Is(member.key, kTotals)) {
            return Copy(*total, memory);
        }
        if (const Json* results = handling.Named("results");
            results != nullptr && member.IsNumber() && (Is(member.key, kSucceeded) || Is(member.key, kFailed))) {
            const auto each = results->GetArray();
            const auto failed = std::count_if(each.begin(), each.end(),
                                              [](const Json& one) { return AsInt(Member(one, "code")) != 0; });
            return Json(
                std::int64_t{Is(member.key, kFailed) ? failed : static_cast<std::int64_t>(each.Size()) - failed});
        }
        if (member.kind == WireKind::kStruct && member.structure != nullptr && depth < kDeepest) {
            return ComposeStructure(handling, *member.structure, source, depth + 1);
        }
        if (member.IsList()) {
            return ListFor(handling, member, depth);
        }
        Json said = FromRequest(handling, member);
        if (!said.IsNull()) {
            return said;
        }
        const Collection* collection = handling.action == nullptr ? nullptr : handling.action->collection;
        const bool guid = member.kind == WireKind::kText &&
                          (EndsWith(member.key, "guid") || (collection != nullptr && member.key == collection->key));
        if (const Json* made = handling.Named("guid"); guid && made != nullptr) {
            return Copy(*made, memory);
        }
        if (Is(member.key, kMessages) && member.kind == WireKind::kText) {
            return MakeText(kSuccess, memory);
        }
    }
    return FreshMember(handling, member, false);
}

Json ComposeStructure(Handling& handling, const WireStructure& structure, const Source& source, int depth)
{
    Json object(rapidjson::kObjectType);
    for (const WireMember& member : structure.members) {
        SetMember(object, member.key, ComposeMember(handling, member, source, depth), handling.Memory());
    }
    return object;
}

Json SampleMember(Handling& handling, const WireStructure& owner, const WireMember& member, int depth);

Json SampleStructure(Handling& handling, const WireStructure& structure, int depth)
{
    Json object(rapidjson::kObjectType);
    for (const WireMember& member : structure.members) {
        SetMember(object, member.key, SampleMember(handling, structure, member, depth), handling.Memory());
    }
    return object;
}

std::string SampleText(const WireStructure& owner, const WireMember& member)
{
    const std::string& key = member.key;
    std::string text = !member.example.empty()                           ? member.example
                       : EndsWith(key, "guid")                           ? Hash(owner.name + "." + key)
                       : EndsWith(key, "time")                           ? "2024-01-01T08:00:00+00:00"
                       : EndsWith(key, "date")                           ? "2024-01-01"
                       : EndsWith(key, "ip") || EndsWith(key, "address") ? "192.0.2.10"
                       : EndsWith(key, "url")                            ? "http://192.0.2.10/" + key
                       : Is(key, kMessages)                              ? std::string(kSuccess)
                       : Is(key, kCodes)                                 ? "0-0"
                                                                         : key;
    if (member.mostCharacters) {
        text = text.substr(0, static_cast<std::size_t>(*member.mostCharacters));
    }
    text.resize(std::max(text.size(), static_cast<std::size_t>(member.leastCharacters.value_or(0))), '0');
    return text;
}

std::int64_t SampleNumber(const WireMember& member)
{
    const std::string& key = member.key;
    const bool nothing = Is(key, kCodes) || EndsWith(key, "state") || EndsWith(key, "status") || EndsWith(key, "code");
    const std::int64_t usual = nothing                                                    ? 0
                               : EndsWith(key, "progress") || EndsWith(key, "percent")    ? 100
                               : EndsWith(key, "port")                                    ? 8000
                               : EndsWith(key, "time") && member.kind == WireKind::kInt64 ? kSampleTimeMs
                                                                                          : 1;
    const double within = std::clamp(
        static_cast<double>(usual), member.least.value_or(static_cast<double>(usual)),
        std::max(member.most.value_or(static_cast<double>(usual)), member.least.value_or(static_cast<double>(usual))));
    return static_cast<std::int64_t>(within);
}

Json SampleMember(Handling& handling, const WireStructure& owner, const WireMember& member, int depth)
{
    Allocator& memory = handling.Memory();
    Json list(rapidjson::kArrayType);
    switch (member.kind) {
    case WireKind::kStruct:
        if (member.structure == nullptr || depth > kDeepest) {
            return Json(rapidjson::kObjectType);
        }
        return IsOptions(*member.structure) ? Options(handling, member.key)
               : IsRange(*member.structure) ? Range(handling, member.key)
                                            : SampleStructure(handling, *member.structure, depth + 1);
    case WireKind::kStructList:
        if (member.structure != nullptr && depth <= kDeepest) {
            list.PushBack(SampleStructure(handling, *member.structure, depth + 1), memory);
        }
        return list;
    case WireKind::kTextList:
        list.PushBack(member.values.empty() ? MakeText(SampleText(owner, member), memory) : OfValue(member, memory),
                      memory);
        return list;
    case WireKind::kIntList:
        list.PushBack(member.values.empty() ? Json(SampleNumber(member)) : OfValue(member, memory), memory);
        return list;
    case WireKind::kBool:
        return Json(true);
    case WireKind::kText:
        return member.values.empty() ? MakeText(SampleText(owner, member), memory) : OfValue(member, memory);
    case WireKind::kAny:
        return Json(rapidjson::kObjectType);
    default:
        return member.values.empty() ? Json(SampleNumber(member)) : OfValue(member, memory);
    }
}

// What the request says shows in a sample, except inside lists.
void Echo(Handling& handling, const WireStructure& structure, Json& object)
{
    for (const WireMember& member : structure.members) {
        Json* value = Member(object, member.key);
        if (value == nullptr) {
            continue;
        }
        if (member.kind == WireKind::kStruct && member.structure != nullptr) {
            Echo(handling, *member.structure, *value);
            continue;
        }
        Json said = FromRequest(handling, member);
        if (!said.IsNull() && !AsText(&said, "-").empty()) {
            *value = said;
        }
    }
}

} // namespace

void Compose(Handling& handling)
{
    if (handling.endpoint.result == nullptr) {
        return;
    }
    const Json* document = handling.Named("docs") == nullptr ? handling.Named("doc") : nullptr;
    handling.data = ComposeStructure(handling, *handling.endpoint.result, {document, nullptr}, 0);
}

Json Sample(Handling& handling, const WireStructure& structure)
{
    Json made = SampleStructure(handling, structure, 0);
    Echo(handling, structure, made);
    return made;
}

Json Fresh(Handling& handling, const WireStructure& structure)
{
    const bool ability = IsAbility(structure);
    Json object(rapidjson::kObjectType);
    for (const WireMember& member : structure.members) {
        SetMember(object, member.key, FreshMember(handling, member, ability), handling.Memory());
    }
    return object;
}

void SetAtPath(Handling& handling, Json& object, std::string_view dotted, Json value)
{
    Json* at = &object;
    for (std::size_t dot = dotted.find('.'); dot != std::string_view::npos; dot = dotted.find('.')) {
        const std::string_view name = dotted.substr(0, dot);
        if (Json* inner = Member(*at, name); inner == nullptr || !inner->IsObject()) {
            SetMember(*at, name, Json(rapidjson::kObjectType), handling.Memory());
        }
        at = Member(*at, name);
        dotted = dotted.substr(dot + 1);
    }
    if (!value.IsNull()) {
        SetMember(*at, dotted, std::move(value), handling.Memory());
    }
}

} // namespace nexwire::simulator
