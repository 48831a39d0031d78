#include "src/Wire.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace nexwire::simulator {
namespace {

// The verb that the library's ready-made transport has for a method code.
constexpr std::array<const char*, 4> kVerbs = {"GET", "PUT", "POST", "DELETE"};

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

WireKind KindOf(std::string_view name)
{
    static constexpr std::pair<std::string_view, WireKind> kKinds[] = {
        {"text", WireKind::kText},         {"int", WireKind::kInt},         {"int64", WireKind::kInt64},
        {"real", WireKind::kReal},         {"bool", WireKind::kBool},       {"struct", WireKind::kStruct},
        {"textList", WireKind::kTextList}, {"intList", WireKind::kIntList}, {"structList", WireKind::kStructList},
    };
    for (const auto& [known, kind] : kKinds) {
        if (Same(known, name)) {
            return kind;
        }
    }
    return WireKind::kAny;
}

WireValue ReadValue(const Json& entry)
{
    WireValue value;
    const Json* plain = &entry;
    if (entry.IsObject()) {
        plain = Member(entry, "value");
        for (const char* name : {"meaning", "label", "text"}) {
            if (const Json* meaning = Member(entry, name); meaning != nullptr && value.meaning.empty()) {
                value.meaning = AsText(meaning);
            }
        }
    }
    if (plain != nullptr) {
        value.text = AsText(plain);
        value.number = AsInt(plain);
    }
    return value;
}

std::optional<double> Number(const Json& entry, const char* key)
{
    const Json* value = Member(entry, key);
    return value != nullptr && value->IsNumber() ? std::optional<double>(value->GetDouble()) : std::nullopt;
}

} // namespace

bool Same(std::string_view left, std::string_view right)
{
    return left.size() == right.size() && EndsWith(left, right);
}

bool EndsWith(std::string_view text, std::string_view part)
{
    return text.size() >= part.size() && BeginsWith(text.substr(text.size() - part.size()), part);
}

bool BeginsWith(std::string_view text, std::string_view part)
{
    return text.size() >= part.size() && std::equal(part.begin(), part.end(), text.begin(),
                                                    [](char left, char right) { return Lower(left) == Lower(right); });
}

const WireMember* WireStructure::Find(std::string_view key) const
{
    const auto found = std::find_if(members.begin(), members.end(), [&](const WireMember& m) { return m.key == key; });
    return found == members.end() ? nullptr : &*found;
}

Wire::Wire(std::string_view text)
{
    const Document document = ParseOwn(text);
    const Json* structures = Member(document, "structures");
    const Json* functions = Member(document, "functions");
    if (structures == nullptr || functions == nullptr || !functions->IsArray()) {
        throw std::runtime_error("the library's document has no functions or no structures");
    }
    if (structures->IsObject()) {
        for (const auto& entry : structures->GetObject()) {
            ReadStructure(AsText(&entry.name), entry.value);
        }
    } else {
        for (const Json& entry : structures->GetArray()) {
            ReadStructure(AsText(Member(entry, "name")), entry);
        }
    }
    for (const Json& entry : functions->GetArray()) {
        ReadFunction(entry);
    }
    for (const auto& [name, structure] : structures_) {
        for (const WireMember& member : structure->members) {
            if (!member.values.empty()) {
                vocabularies_.emplace(member.key, &member);
            }
            if (member.least && member.most) {
                ranges_.emplace(member.key, &member);
            }
        }
    }
}

// The structure of that name, perhaps before its turn to be read.
const WireStructure* Wire::Declare(std::string_view name)
{
    if (name.empty()) {
        return nullptr;
    }
    std::unique_ptr<WireStructure>& slot = structures_[std::string(name)];
    if (slot == nullptr) {
        slot = std::make_unique<WireStructure>();
        slot->name = name;
    }
    return slot.get();
}

void Wire::ReadStructure(std::string_view name, const Json& entry)
{
    Declare(name);
    WireStructure& structure = *structures_[std::string(name)];
    structure.root = AsText(Member(entry, "root"));
    const Json* members = Member(entry, "members");
    if (members == nullptr || !members->IsArray()) {
        throw std::runtime_error("structure \"" + structure.name + "\" lists no members");
    }
    for (const Json& each : members->GetArray()) {
        WireMember member;
        member.key = AsText(Member(each, "key"));
        member.kind = KindOf(AsText(Member(each, "kind")));
        const Json* element = Member(each, "structure");
        member.structure = Declare(AsText(element != nullptr ? element : Member(each, "element")));
        if (const Json* values = Member(each, "values"); values != nullptr && values->IsArray()) {
            for (const Json& value : values->GetArray()) {
                member.values.push_back(ReadValue(value));
            }
        }
        member.least = Number(each, "minimum");
        member.most = Number(each, "maximum");
        if (const Json* most = Member(each, "maxLength"); most != nullptr && most->IsInt64()) {
            member.mostCharacters = most->GetInt64();
        }
        structure.members.push_back(std::move(member));
    }
}

// A structure that nobody named, from a body that was sent.
const WireStructure* Wire::FromExample(const Json& example)
{
    auto structure = std::make_unique<WireStructure>();
    for (const auto& entry : example.GetObject()) {
        WireMember member;
        member.key = AsText(&entry.name);
        const Json& value = entry.value;
        member.kind = value.IsString()   ? WireKind::kText
                      : value.IsInt64()  ? WireKind::kInt64
                      : value.IsNumber() ? WireKind::kReal
                      : value.IsBool()   ? WireKind::kBool
                      : value.IsObject() ? WireKind::kStruct
                                         : WireKind::kAny;
        if (value.IsObject()) {
            member.structure = FromExample(value);
        } else if (value.IsArray() && !value.Empty() && value[0].IsString()) {
            member.kind = WireKind::kTextList;
        } else if (value.IsArray() && !value.Empty() && value[0].IsInt64()) {
            member.kind = WireKind::kIntList;
        } else if (value.IsArray() && !value.Empty() && value[0].IsObject()) {
            member.kind = WireKind::kStructList;
            member.structure = FromExample(value[0]);
        }
        structure->members.push_back(std::move(member));
    }
    structure->open = structure->members.empty();
    examples_.push_back(std::move(structure));
    return examples_.back().get();
}

void Wire::ReadFunction(const Json& entry)
{
    const auto text = [&](const char* key) { return std::string(AsText(Member(entry, key))); };
    const auto structure = [&](const char* key) -> const WireStructure* {
        const Json* value = Member(entry, key);
        if (value != nullptr && value->IsArray() && !value->Empty()) {
            value = &(*value)[0];
        }
        return Declare(AsText(value));
    };
    WireFunction function;
    function.path = text("path");
    if (function.path.empty()) {
        return; // Sends nothing.
    }
    function.path = function.path.substr(0, function.path.find('?'));
    function.module = text("module");
    function.name = text("function");
    if (function.name.find("::") == std::string::npos) {
        function.name = text("class") + "::" + function.name;
    }
    function.overload = text("overload");
    const Json* verb = Member(entry, "verb");
    const std::int64_t code = AsInt(verb);
    function.verb = verb != nullptr && verb->IsString()
                        ? std::string(AsText(verb))
                        : kVerbs[static_cast<std::size_t>(code < 0 || code > 3 ? 2 : code)];
    function.direct = AsBool(Member(entry, "direct"));
    function.root = text("root");
    function.body = structure("body");
    function.result = structure("result");
    function.command = AsInt(Member(entry, "command"));
    function.input = structure("input");
    function.output = structure("output");
    if (function.body == nullptr && !function.root.empty()) {
        const std::string example = text("example");
        const Document parsed = ParseOwn(example.empty() ? "{}" : example);
        const Json* root = Member(parsed, function.root);
        if (root != nullptr && root->IsObject()) {
            function.body = FromExample(*root);
        }
    }
    functions_.push_back(std::move(function));
}

const WireStructure* Wire::Find(std::string_view name) const
{
    const auto found = structures_.find(name);
    if (found != structures_.end()) {
        return found->second.get();
    }
    // Of a namespace inside the protocol's, where the name stands for one structure only.
    const WireStructure* one = nullptr;
    for (const auto& [full, structure] : structures_) {
        if (full.size() > name.size() + 2 && EndsWith(full, name) && full[full.size() - name.size() - 1] == ':') {
            one = structure.get();
        }
    }
    return one;
}

std::vector<const WireFunction*> Wire::Named(std::string_view name) const
{
    const std::size_t bracket = name.find('(');
    const std::string_view plain = name.substr(0, bracket);
    const std::string_view inside =
        bracket == std::string_view::npos ? std::string_view() : name.substr(bracket + 1, name.find(')') - bracket - 1);
    std::vector<const WireFunction*> found;
    for (const WireFunction& function : functions_) {
        if (function.name != plain) {
            continue;
        }
        const std::size_t at = inside.empty() ? 0 : function.overload.find(inside);
        if (at != std::string::npos) {
            found.push_back(&function);
        }
    }
    return found;
}

const WireMember* Wire::WithVocabulary(std::string_view key) const
{
    const auto found = vocabularies_.find(key);
    return found == vocabularies_.end() ? nullptr : found->second;
}

const WireMember* Wire::WithRange(std::string_view key) const
{
    const auto found = ranges_.find(key);
    return found == ranges_.end() ? nullptr : found->second;
}

} // namespace nexwire::simulator
