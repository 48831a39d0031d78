#include "src/Shape.h"

namespace nexwire::simulator {
namespace {

// Takes the mark off the end.
bool Ends(std::string_view& text, char mark)
{
    if (text.empty() || text.back() != mark) {
        return false;
    }
    text.remove_suffix(1);
    return true;
}

bool Asked(std::string_view& name)
{
    return Ends(name, '!');
}

void CheckText(Call& call, std::string_view shape, const Json& value, const std::string& where)
{
    const bool filled = Asked(shape) || Ends(shape, '+');
    if (shape == "any") {
        return;
    }
    const bool reference = shape.substr(0, 4) == "ref:";
    const bool fits = reference || shape == "text" ? value.IsString()
                      : shape == "int"             ? value.IsInt64()
                      : shape == "number"          ? value.IsNumber()
                      : shape == "bool"            ? value.IsBool()
                      : shape == "object"          ? value.IsObject()
                                                   : value.IsArray();
    if (!fits) {
        throw Refusal(Reason::kWrongType, where + " is not " + std::string(reference ? "text" : shape));
    }
    if (filled && AsText(&value, "-").empty()) {
        throw Refusal(Reason::kMissingField, where);
    }
    if (reference && !AsText(&value).empty()) {
        const std::string_view collection = shape.substr(4);
        if (!call.store.Has(collection, AsText(&value))) {
            throw Refusal(collection == "devices" ? Reason::kUnknownDevice : Reason::kUnknownGuid,
                          where + " \"" + std::string(AsText(&value)) + "\"");
        }
    }
}

} // namespace

void CheckShape(Call& call, const Json& shape, const Json& value, const std::string& where)
{
    if (shape.IsString()) {
        CheckText(call, AsText(&shape), value, where);
        return;
    }
    if (shape.IsArray()) {
        if (!value.IsArray()) {
            throw Refusal(Reason::kWrongType, where + " is not a list");
        }
        rapidjson::SizeType index = 0;
        for (const Json& element : value.GetArray()) {
            CheckShape(call, shape[0], element, where + "[" + std::to_string(index++) + "]");
        }
        return;
    }
    if (!value.IsObject()) {
        throw Refusal(Reason::kWrongType, where + " is not an object");
    }
    bool open = false;
    for (const auto& member : shape.GetObject()) {
        std::string_view name = AsText(&member.name);
        if (name == "*") {
            open = true;
            continue;
        }
        const std::string_view type = AsText(&member.value);
        const bool needed = Asked(name) || (!type.empty() && type.back() == '!');
        const Json* part = Member(value, name);
        const std::string place = where + "." + std::string(name);
        if (part != nullptr) {
            CheckShape(call, member.value, *part, place);
        } else if (needed) {
            throw Refusal(Reason::kMissingField, place);
        }
    }
    if (open) {
        return;
    }
    for (const auto& member : value.GetObject()) {
        const std::string_view name = AsText(&member.name);
        if (Member(shape, name) == nullptr && Member(shape, std::string(name) + "!") == nullptr) {
            throw Refusal(Reason::kUnknownField, where + "." + std::string(name));
        }
    }
}

} // namespace nexwire::simulator
