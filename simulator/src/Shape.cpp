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

void CheckValue(const WireMember& member, const Json& value, const std::string& where, bool condition)
{
    if (condition && (value.IsString() ? value.GetStringLength() == 0
                                       : value.IsInt64() && (value.GetInt64() == 0 || value.GetInt64() == -1))) {
        return;
    }
    const bool known =
        member.values.empty() || std::any_of(member.values.begin(), member.values.end(), [&](const WireValue& each) {
            return value.IsString() ? each.text == AsText(&value) : !value.IsInt64() || each.number == value.GetInt64();
        });
    const bool within = !value.IsNumber() || ((!member.least || value.GetDouble() >= *member.least) &&
                                              (!member.most || value.GetDouble() <= *member.most));
    // Characters, not bytes: a continuation byte of UTF-8 begins with the bits 10.
    const std::string_view text = AsText(&value);
    const auto characters = std::count_if(text.begin(), text.end(),
                                          [](char c) { return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u; });
    if (!known || !within || (member.mostCharacters && characters > *member.mostCharacters)) {
        throw Refusal(Reason::kOutOfRange, where + " " + PrintJson(value));
    }
}

void CheckMember(const WireMember& member, WireKind kind, const Json& value, const std::string& where, bool condition)
{
    if (!Fits(kind, value)) {
        throw Refusal(Reason::kWrongType, where + " is not " + Wanted(kind));
    }
    if (value.IsArray() && member.IsList()) {
        rapidjson::SizeType index = 0;
        for (const Json& element : value.GetArray()) {
            CheckMember(member, ElementOf(member.kind), element, where + "[" + std::to_string(index++) + "]",
                        condition);
        }
    } else if (kind == WireKind::kStruct && member.structure != nullptr) {
        CheckShape(*member.structure, value, where, condition);
    } else if (kind != WireKind::kAny) {
        CheckValue(member, value, where, condition);
    }
}

} // namespace

void CheckShape(const WireStructure& structure, const Json& value, const std::string& where, bool condition)
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
            CheckMember(*member, member->kind, each.value, where + "." + std::string(key), condition);
        }
    }
}

} // namespace nexwire::simulator
