#include "catalogue/Catalogue.h"

#include <cctype>

namespace nexwire::catalogue {
namespace {

/// What an argument can be called besides its name: its structure with a small first letter, lists with "List" behind
/// it. Empty for plain ones.
std::string NameFromType(const TypeOps& type)
{
    if (!type.IsStructure()) {
        return "";
    }
    std::string name = type.name();
    name.erase(0, name.rfind(':') + 1);
    for (const std::string prefix : {"tagTW", "TW"}) {
        if (name.compare(0, prefix.size(), prefix) == 0) {
            name.erase(0, prefix.size());
            break;
        }
    }
    name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
    return name + (type.IsList() ? "List" : "");
}

} // namespace

std::string Spelled(const TypeOps& type)
{
    const std::string name = type.name();
    return type.IsList() ? "std::vector<" + name + ">" : name;
}

bool Argument::input() const
{
    return !output || type->shape == Shape::Record || type->shape == Shape::Counter ||
           type->shape == Shape::AnyStructure ||
           (type->shape == Shape::Structure && type->fields()->rootName != nullptr) ||
           (type->shape == Shape::Text && name == "body");
}

bool Argument::required() const
{
    // A structure of the caller's choice may be left out where it is sent, not where the answer is read into it.
    return output == (type->shape == Shape::AnyStructure) && type->shape != Shape::Counter;
}

Function::Function(const HeaderRows& header, const FunctionRow& row)
    : header_(&header), row_(&row), module_(header.module), className_(row.className),
      name_(className_ + "::" + row.name)
{
    for (std::size_t i = 0; i < row.count; ++i) {
        const ParameterRow& parameter = row.arguments[i];
        const TypeOps& type = parameter.plain != nullptr
                                  ? parameter.plain()
                                  : NamedType(parameter.structure, parameter.list, parameter.ops);
        arguments_.push_back({parameter.name, &type, parameter.output || type.shape == Shape::Counter});
    }
}

std::size_t Function::ArgumentNamed(const std::string& name) const
{
    std::size_t byType = kNoArgument;
    std::size_t fitting = 0;
    for (std::size_t i = 0; i < arguments_.size(); ++i) {
        if (arguments_[i].name == name) {
            return i;
        }
        if (NameFromType(*arguments_[i].type) == name) {
            byType = i;
            ++fitting;
        }
    }
    return fitting == 1 ? byType : kNoArgument;
}

std::string Function::Signature() const
{
    std::string text = name_ + "(";
    for (const Argument& argument : arguments_) {
        text += text.back() == '(' ? "" : ", ";
        const bool reference =
            argument.output && argument.type->shape != Shape::Counter && argument.type->shape != Shape::AnyStructure;
        text += Spelled(*argument.type) + (reference ? "& " : " ") + argument.name;
    }
    return text + ")";
}

const std::vector<Function>& All()
{
    static const std::vector<Function> functions = [] {
        std::vector<Function> all;
        for (const HeaderRows* header : AllHeaders()) {
            for (const FunctionRow& row : header->functions) {
                all.emplace_back(*header, row);
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
    const std::size_t index = function_.ArgumentNamed(name);
    if (index == Function::kNoArgument) {
        error = function_.Name() + " has no argument '" + name + "'";
        return false;
    }
    return Set(index, text, error);
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
    function_.Arguments()[index].type->sample(values_[index]);
}

Outcome Call::Run()
{
    Outcome outcome;
    function_.Row().call(values_.data(), outcome);
    return outcome;
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

} // namespace nexwire::catalogue
