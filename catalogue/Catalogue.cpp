#include "catalogue/Catalogue.h"

#include <cctype>

#include "catalogue/Modules.h"

namespace nexwire {
namespace catalogue {
namespace {

std::vector<std::string> SplitNames(const char* names)
{
    std::vector<std::string> result;
    std::string name;
    for (const char* at = names; *at != '\0'; ++at) {
        if (*at == ',') {
            result.push_back(name);
            name.clear();
        } else if (*at != ' ') {
            name += *at;
        }
    }
    if (!name.empty()) {
        result.push_back(name);
    }
    return result;
}

/// What a person calls a structure argument: its type with a small first letter, lists with "List" behind it.
std::string NameFromType(const TypeOps& type)
{
    if (type.shape == Shape::AnyStructure) {
        return "data";
    }
    std::string name = type.name();
    for (const std::string prefix : {"tagTW", "TW"}) {
        if (name.compare(0, prefix.size(), prefix) == 0) {
            name.erase(0, prefix.size());
            break;
        }
    }
    name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
    if (type.shape == Shape::StructureList || type.shape == Shape::RecordList) {
        name += "List";
    }
    return name;
}

} // namespace

std::string Spelled(const TypeOps& type)
{
    const std::string name = type.name();
    return type.shape == Shape::StructureList || type.shape == Shape::RecordList ? "std::vector<" + name + ">" : name;
}

bool Argument::input() const
{
    return !output || type->shape == Shape::Record ||
           (type->shape == Shape::Structure && type->fields()->rootName != nullptr);
}

bool Argument::required() const
{
    return !output && type->shape != Shape::AnyStructure;
}

Function::Function(const char* module, const Entry& entry)
    : entry_(&entry), module_(module), className_(entry.className), name_(className_ + "::" + entry.function)
{
    const std::vector<std::string> plain = SplitNames(entry.plainNames);
    std::size_t next = 0;
    for (std::size_t i = 0; i < entry.count; ++i) {
        const TypeOps& type = *entry.types[i];
        arguments_.push_back(
            {NeedsName(type.shape) ? plain.at(next++) : NameFromType(type), entry.types[i], entry.outputs[i]});
    }
}

std::string Function::Signature() const
{
    std::string text = name_ + "(";
    for (const Argument& argument : arguments_) {
        text += text.back() == '(' ? "" : ", ";
        text += Spelled(*argument.type) + (argument.output ? "& " : " ") + argument.name;
    }
    return text + ")";
}

const std::vector<Function>& All()
{
    static const std::vector<Function> functions = [] {
        std::vector<Function> all;
        for (const Module& module : Modules()) {
            for (std::size_t i = 0; i < module.count; ++i) {
                all.emplace_back(module.name, module.entries[i]);
            }
        }
        return all;
    }();
    return functions;
}

Call::Call(const Function& function) : function_(function)
{
    for (const Argument& argument : function.Arguments()) {
        values_.push_back(argument.type->create());
    }
}

Call::~Call()
{
    for (std::size_t i = 0; i < values_.size(); ++i) {
        function_.Arguments()[i].type->destroy(values_[i]);
    }
}

bool Call::Set(const std::string& name, const std::string& text, std::string& error)
{
    const std::vector<Argument>& arguments = function_.Arguments();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].name == name) {
            return Set(i, text, error);
        }
    }
    error = function_.Name() + " has no argument '" + name + "'";
    return false;
}

bool Call::Set(std::size_t index, const std::string& text, std::string& error)
{
    const Argument& argument = function_.Arguments()[index];
    if (!argument.input()) {
        error = "'" + argument.name + "' is a result of " + function_.Name();
        return false;
    }
    if (!argument.type->read(values_[index], text)) {
        error = "'" + argument.name + "' must be " + Misfit(*argument.type, text);
        return false;
    }
    return true;
}

void Call::Sample(std::size_t index)
{
    const TypeOps& type = *function_.Arguments()[index].type;
    if (type.sample != nullptr) {
        type.sample(values_[index]);
    }
}

Outcome Call::Run()
{
    return function_.Line().call(values_.data());
}

std::string Call::Json(std::size_t index) const
{
    return function_.Arguments()[index].type->write(values_[index]);
}

std::string Call::Result(const Outcome& outcome) const
{
    std::vector<std::pair<std::string, std::string>> parts;
    const std::vector<Argument>& arguments = function_.Arguments();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].output) {
            parts.emplace_back(arguments[i].name, Json(i));
        }
    }
    if (!outcome.returned.empty()) {
        parts.emplace_back("returned", outcome.returned);
    }
    if (parts.empty()) {
        return std::string("{}");
    }
    if (parts.size() == 1 && parts[0].second[0] == '{') {
        return parts[0].second;
    }
    std::string json = "{";
    for (const auto& part : parts) {
        json += (json.size() > 1 ? "," : "") + WriteText(part.first) + ":" + part.second;
    }
    return json + "}";
}

} // namespace catalogue
} // namespace nexwire
