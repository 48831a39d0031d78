#include "requests/Json.h"

#include <algorithm>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace requests {

namespace {

using nexwire::core::Field;
using nexwire::core::FieldTable;
using nexwire::core::Kind;

constexpr int kDeepest = 6;

std::string Name(const Value& name)
{
    return {name.GetString(), name.GetStringLength()};
}

std::string Differs(const std::string& at, const std::string& expected, const std::string& found)
{
    return "at " + (at.empty() ? "the top" : at) + "\n    expected " + expected + "\n    found    " + found;
}

std::string Names(const Value& object)
{
    std::string names;
    for (const auto& member : object.GetObject()) {
        names += (names.empty() ? "" : " ") + Name(member.name);
    }
    return "{" + names + "}";
}

bool SameLeaf(const Value& left, const Value& right)
{
    return left.IsNumber() && right.IsNumber() ? left.GetDouble() == right.GetDouble() : left == right;
}

void Overlay(Value& base, const Value& over, Document::AllocatorType& allocator)
{
    if (!base.IsObject() || !over.IsObject()) {
        base.CopyFrom(over, allocator);
        return;
    }
    for (const auto& member : over.GetObject()) {
        const auto found = base.FindMember(member.name);
        if (found == base.MemberEnd()) {
            base.AddMember(Value(member.name, allocator), Value(member.value, allocator), allocator);
        } else {
            Overlay(found->value, member.value, allocator);
        }
    }
}

void Refill(Value& value, Filling& filling, Document::AllocatorType& allocator)
{
    if (value.IsString()) {
        value.SetString(filling.Text().c_str(), allocator);
    } else if (value.IsNumber()) {
        value.SetInt(filling.Number());
    } else if (value.IsBool()) {
        value.SetBool(filling.Flag());
    } else if (value.IsArray()) {
        for (Value& element : value.GetArray()) {
            Refill(element, filling, allocator);
        }
    } else if (value.IsObject()) {
        for (auto& member : value.GetObject()) {
            Refill(member.value, filling, allocator);
        }
    }
}

std::string FilledMember(const Field& field, Filling& filling, int depth)
{
    const auto list = [&](const auto& element) {
        std::string text;
        for (std::size_t i = 0; i < filling.elements && depth < kDeepest; ++i) {
            text += (i == 0 ? "" : ",") + element();
        }
        return "[" + text + "]";
    };
    switch (field.kind) {
    case Kind::Text:
        return Quoted(filling.Text());
    case Kind::Int64:
        return "700000000" + std::to_string(filling.Number());
    case Kind::Real:
        return std::to_string(filling.Number()) + ".25";
    case Kind::Bool:
        return filling.Flag() ? "true" : "false";
    case Kind::Struct:
        return Filled(*field.ops->fields, filling, depth + 1);
    case Kind::TextList:
        return list([&] { return Quoted(filling.Text()); });
    case Kind::IntList:
        return list([&] { return std::to_string(filling.Number()); });
    case Kind::StructList:
        return list([&] { return Filled(*field.ops->fields, filling, depth + 1); });
    case Kind::Int:
        break;
    }
    return std::to_string(filling.Number());
}

std::string Names(const std::vector<Key>& keys, bool more)
{
    std::string names;
    for (const Key& key : keys) {
        names += (names.empty() ? "" : " ") + key.name;
    }
    return names + (more ? " ..." : "");
}

} // namespace

Document Parsed(const std::string& text)
{
    Document document;
    if (document.Parse<rapidjson::kParseFullPrecisionFlag>(text.data(), text.size()).HasParseError()) {
        document.SetNull();
    }
    return document;
}

std::string TextOf(const Value& value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

std::string Quoted(const std::string& text)
{
    return TextOf(Value(rapidjson::StringRef(text.data(), text.size())));
}

std::string Difference(const Value& expected, const Value& found, Match match, const std::string& at)
{
    if (expected.IsObject() && found.IsObject()) {
        if (match != Match::Part && expected.MemberCount() != found.MemberCount()) {
            return Differs(at, Names(expected), Names(found));
        }
        auto next = found.MemberBegin();
        for (const auto& member : expected.GetObject()) {
            const auto other = match == Match::Ordered ? next++ : found.FindMember(member.name);
            if (other == found.MemberEnd() || other->name != member.name) {
                return Differs(at, Names(expected), Names(found));
            }
            const std::string inside =
                Difference(member.value, other->value, match, at + (at.empty() ? "" : ".") + Name(member.name));
            if (!inside.empty()) {
                return inside;
            }
        }
        return "";
    }
    if (expected.IsArray() && found.IsArray() && expected.Size() == found.Size()) {
        for (rapidjson::SizeType i = 0; i < expected.Size(); ++i) {
            const std::string inside = Difference(expected[i], found[i], match, at + "[" + std::to_string(i) + "]");
            if (!inside.empty()) {
                return inside;
            }
        }
        return "";
    }
    return SameLeaf(expected, found) ? "" : Differs(at, TextOf(expected), TextOf(found));
}

std::string Overlaid(const std::string& base, const std::string& over)
{
    Document document = Parsed(base);
    const Document upper = Parsed(over);
    Overlay(document, upper, document.GetAllocator());
    return TextOf(document);
}

std::string Filled(const FieldTable& table, Filling& filling, int depth)
{
    std::string text;
    for (const Field& field : table) {
        text += (text.empty() ? "" : ",") + Quoted(field.key) + ":" + FilledMember(field, filling, depth);
    }
    return "{" + text + "}";
}

std::string Refilled(const std::string& json, Filling& filling)
{
    Document document = Parsed(json);
    Refill(document, filling, document.GetAllocator());
    return TextOf(document);
}

std::string Misfit(const std::vector<Key>& keys, bool more, const FieldTable& table)
{
    // Answers come in any order.
    std::string names;
    for (const Field& field : table) {
        names += std::string(names.empty() ? "" : " ") + field.key;
    }
    bool same = more || keys.size() == table.count;
    for (const Key& key : keys) {
        const Field* const field =
            std::find_if(table.begin(), table.end(), [&](const Field& each) { return key.name == each.key; });
        same = same && field != table.end();
        if (same && !key.inside.empty()) {
            const std::string misfit =
                field->ops == nullptr ? "stands no structure" : Misfit(key.inside, false, *field->ops->fields);
            if (!misfit.empty()) {
                return "under " + key.name + " " + misfit;
            }
        }
    }
    return same ? "" : Differs("the keys", Names(keys, more), names);
}

std::string Misfit(const std::vector<Key>& keys, bool more, const Value& value)
{
    if (value.IsArray()) {
        for (const Value& element : value.GetArray()) {
            const std::string misfit = Misfit(keys, more, element);
            if (!misfit.empty()) {
                return misfit;
            }
        }
        return value.Empty() ? "stands an empty list, which shows no keys" : "";
    }
    if (!value.IsObject()) {
        return "stands no object but " + TextOf(value);
    }
    bool same = more ? keys.size() <= value.MemberCount() : keys.size() == value.MemberCount();
    auto member = value.MemberBegin();
    for (const Key& key : keys) {
        same = same && key.name == member->name.GetString();
        const std::string misfit = same && !key.inside.empty() ? Misfit(key.inside, false, member->value) : "";
        if (!misfit.empty()) {
            return "under " + key.name + " " + misfit;
        }
        member += same ? 1 : 0;
    }
    return same ? "" : Differs("the keys", Names(keys, more), Names(value));
}

} // namespace requests
