#include "src/Shape.h"

#include <algorithm>

#include "src/Codes.h"

namespace nexwire::simulator {
namespace {

const char* Wanted(WireKind kind)
{
    switch (kind) {
    case WireKind::kText:
        return "text";
    case WireKind::kInt:
    case WireKind::kInt64:
        return "an integer";
    case WireKind::kReal:
        return "a number";
    case WireKind::kBool:
        return "true or false";
    case WireKind::kStruct:
        return "an object";
    default:
        return "a list";
    }
}

bool Fits(WireKind kind, const Json& value)
{
    switch (kind) {
    case WireKind::kText:
        return value.IsString();
    case WireKind::kInt:
        return value.IsInt();
    case WireKind::kInt64:
        return value.IsInt64();
    case WireKind::kReal:
        return value.IsNumber();
    case WireKind::kBool:
        return value.IsBool();
    case WireKind::kStruct:
        return value.IsObject();
    case WireKind::kAny:
        return true;
    default:
        return value.IsArray();
    }
}

WireKind ElementOf(WireKind list)
{
    return list == WireKind::kTextList  ? WireKind::kText
           : list == WireKind::kIntList ? WireKind::kInt
                                        : WireKind::kStruct;
}

bool Known(const WireMember& member, const Json& value)
{
    return member.values.empty() || std::any_of(member.values.begin(), member.values.end(), [&](const WireValue& each) {
               return value.IsString() ? each.text == AsText(&value)
                                       : !value.IsInt64() || each.number == value.GetInt64();
           });
}

bool Within(const WireMember& member, const Json& value)
{
    if (!value.IsNumber() ||
        std::find(member.also.begin(), member.also.end(), value.GetDouble()) != member.also.end()) {
        return true;
    }
    return value.GetDouble() >= member.least.value_or(value.GetDouble()) &&
           value.GetDouble() <= member.most.value_or(value.GetDouble());
}

bool Long(std::optional<std::int64_t> least, std::optional<std::int64_t> most, std::int64_t length)
{
    return length >= least.value_or(0) && length <= most.value_or(length);
}

// Characters, not bytes: a continuation byte of UTF-8 begins with the bits 10.
std::int64_t Characters(std::string_view text)
{
    return std::count_if(text.begin(), text.end(),
                         [](char c) { return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u; });
}

void CheckValue(const WireMember& member, const Json& value, const std::string& where, bool condition)
{
    const bool nothing = value.IsString() ? value.GetStringLength() == 0
                                          : value.IsInt64() && (value.GetInt64() == 0 || value.GetInt64() == -1);
    if (nothing && (condition || (value.IsString() && member.mayBeEmpty))) {
        return;
    }
    // How long a password is cannot be told from its enciphered form.
    const bool measured = value.IsString() && !EndsWith(member.key, "password");
    const bool fits = Known(member, value) && Within(member, value) &&
                      (!measured || Long(member.leastCharacters, member.mostCharacters, Characters(AsText(&value))));
    if (!fits) {
        throw Refusal(Reason::kOutOfRange, where + " " + PrintJson(value));
    }
}

void CheckMember(const WireMember& member, WireKind kind, const Json& value, const std::string& where, Strictness how)
{
    if (!Fits(kind, value)) {
        throw Refusal(Reason::kWrongType, where + " is not " + Wanted(kind));
    }
    if (value.IsArray() && member.IsList()) {
        if (how != Strictness::kCondition && !Long(member.leastItems, member.mostItems, value.Size())) {
            throw Refusal(Reason::kOutOfRange, where + " has " + std::to_string(value.Size()) + " elements");
        }
        rapidjson::SizeType index = 0;
        for (const Json& element : value.GetArray()) {
            CheckMember(member, ElementOf(member.kind), element, where + "[" + std::to_string(index++) + "]", how);
        }
    } else if (kind == WireKind::kStruct && member.structure != nullptr) {
        CheckShape(*member.structure, value, where, how == Strictness::kPart ? Strictness::kWhole : how);
    } else if (kind != WireKind::kAny) {
        CheckValue(member, value, where, how == Strictness::kCondition);
    }
}

} // namespace

void CheckShape(const WireStructure& structure, const Json& value, const std::string& where, Strictness how)
{
    if (!value.IsObject()) {
        throw Refusal(Reason::kWrongType, where + " is not an object");
    }
    for (const auto& each : value.GetObject()) {
        const std::string_view key = AsText(&each.name);
        const WireMember* member = structure.Find(key);
        // Of two equal keys the first counts, here as everywhere else.
        if (member == nullptr && !structure.open) {
            throw Refusal(Reason::kUnknownField, where + "." + std::string(key));
        }
        if (member != nullptr && Member(value, key) == &each.value) {
            CheckMember(*member, member->kind, each.value, where + "." + std::string(key), how);
        }
    }
    for (const WireMember& member : structure.members) {
        const Json* sent = Member(value, member.key);
        const bool missing = sent == nullptr ? how != Strictness::kPart : AsText(sent, "-").empty();
        if (member.required && missing) {
            throw Refusal(Reason::kMissingField, where + "." + member.key);
        }
    }
}

} // namespace nexwire::simulator
