#include "src/Wire.h"

#include <algorithm>
#include <stdexcept>

namespace nexwire::simulator {
namespace {

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
        value.meaning = AsText(Member(entry, "means"));
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

std::optional<std::int64_t> Length(const Json& entry, const char* key)
{
    const Json* value = Member(entry, key);
    return value != nullptr && value->IsInt64() ? std::optional<std::int64_t>(value->GetInt64()) : std::nullopt;
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
    for (const Json* kind : {structures, Member(document, "records")}) {
        if (kind != nullptr && kind->IsObject()) {
            for (const auto& entry : kind->GetObject()) {
                ReadStructure(AsText(&entry.name), entry.value);
            }
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
        member.structure = Declare(AsText(Member(each, "element")));
        for (const Json& value : Elements(Member(each, "values"))) {
            member.values.push_back(ReadValue(value));
        }
        for (const Json& number : Elements(Member(each, "also"))) {
            member.also.push_back(number.IsNumber() ? number.GetDouble() : 0.0);
        }
        for (const Json& example : Elements(Member(each, "examples"))) {
            member.example = member.example.empty() ? std::string(AsText(&example)) : member.example;
        }
        member.mayBeEmpty = AsBool(Member(each, "empty"));
        member.required = AsBool(Member(each, "required"));
        member.least = Number(each, "min");
        member.most = Number(each, "max");
        member.leastCharacters = Length(each, "minLength");
        member.mostCharacters = Length(each, "maxLength");
        member.leastItems = Length(each, "minItems");
        member.mostItems = Length(each, "maxItems");
        const Json* usual = Member(each, "default");
        member.usual.text = AsText(usual);
        member.usual.number = AsBool(usual) ? 1 : AsInt(usual);
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

// The members of both, those of the first as it has them.
const WireStructure* Wire::Merged(const WireStructure& first, const WireStructure* second)
{
    auto merged = std::make_unique<WireStructure>(first);
    for (const WireMember& member : second == nullptr ? std::vector<WireMember>() : second->members) {
        if (merged->Find(member.key) == nullptr) {
            merged->members.push_back(member);
        }
    }
    examples_.push_back(std::move(merged));
    return examples_.back().get();
}

// "{name}" stands for an argument.
std::string Wire::Patterned(std::string_view text)
{
    std::string pattern;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t end = text.find_first_not_of(
            "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_", text[i] == '{' ? i + 1 : text.size());
        if (end != std::string_view::npos && end > i + 1 && text[end] == '}') {
            pattern += '*';
            i = end;
        } else {
            pattern += text[i];
        }
    }
    return pattern;
}

void Wire::ReadFunction(const Json& entry)
{
    const auto text = [&](const char* key) { return std::string(AsText(Member(entry, key))); };
    WireFunction function;
    function.path = text("path");
    if (function.path.empty()) {
        return; // Sends nothing.
    }
    function.path = function.path.substr(0, function.path.find('?'));
    function.module = text("module");
    function.name = text("class") + "::" + text("function");
    function.signature = text("signature");
    for (const Json& argument : Elements(Member(entry, "arguments"))) {
        const std::string_view structure = AsText(Member(argument, "structure"));
        if (!structure.empty()) {
            function.structures.emplace_back(structure);
        }
        function.arguments.push_back({std::string(AsText(Member(argument, "name"))),
                                      std::string(AsText(Member(argument, "type"))), std::string(structure),
                                      AsBool(Member(argument, "input")), AsBool(Member(argument, "output"))});
    }
    function.method = static_cast<int>(AsInt(Member(entry, "method")));
    function.verb = text("verb");
    function.direct = AsBool(Member(entry, "direct"));
    function.root = text("root");
    function.body = Declare(text("body"));
    function.command = AsInt(Member(entry, "command"));
    if (function.command != 0) {
        function.input = Declare(text("deviceInput"));
        function.output = function.input == nullptr ? Declare(text("result")) : nullptr;
    } else {
        function.result = Declare(text("result"));
    }
    const Json* sample = Member(entry, "sample");
    const Json* root = sample == nullptr || function.direct ? sample : Member(*sample, function.root);
    if (root != nullptr && root->IsObject()) {
        function.sample = Patterned(PrintJson(*root));
    }
    if (function.direct && root != nullptr && root->IsObject()) {
        // What is sent is not quite the record: some members have other keys or none.
        function.body = Merged(*FromExample(*root), function.body);
    }
    if (function.body == nullptr && root != nullptr && root->IsObject()) {
        function.body = FromExample(*root);
    } else if (function.body != nullptr && root != nullptr && root->IsObject()) {
        const auto& members = function.body->members;
        function.partial = std::any_of(members.begin(), members.end(),
                                       [&](const WireMember& member) { return Member(*root, member.key) == nullptr; });
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
    std::vector<std::string> wanted;
    for (std::size_t at = bracket; at != std::string_view::npos && at + 1 < name.size();) {
        at = name.find_first_not_of(" ,(", at);
        const std::size_t end = name.find_first_of(",)", at);
        wanted.emplace_back(name.substr(at, end - at));
        at = end == std::string_view::npos || name[end] == ')' ? std::string_view::npos : end;
    }
    std::vector<const WireFunction*> found;
    for (const WireFunction& function : functions_) {
        const auto has = [&](const std::string& structure) {
            return std::find(function.structures.begin(), function.structures.end(), structure) !=
                   function.structures.end();
        };
        if (function.name == name.substr(0, bracket) && std::all_of(wanted.begin(), wanted.end(), has)) {
            found.push_back(&function);
        }
    }
    return found;
}

std::map<std::string, const WireStructure*, std::less<>> Wire::Direct() const
{
    std::map<std::string, const WireStructure*, std::less<>> bodies;
    for (const WireFunction& function : functions_) {
        if (function.direct && function.body != nullptr) {
            bodies.emplace(function.path, function.body);
        }
    }
    return bodies;
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
