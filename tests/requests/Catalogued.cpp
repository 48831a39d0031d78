#include "requests/Catalogued.h"

#include <algorithm>
#include <cctype>

#include "catalogue/Comments.h"

namespace requests {

namespace {

/// Names of the parameters as the header has them.
std::vector<std::string> HeaderNames(const Function& function)
{
    const std::string declaration = nexwire::catalogue::DocOfFunction(function).declaration;
    std::vector<std::string> names;
    std::string word;
    int depth = 0;
    for (const char c : declaration.substr(std::min(declaration.find('('), declaration.size()))) {
        depth += c == '<' ? 1 : c == '>' ? -1 : 0;
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_') {
            word += c;
        } else if (c == ',' || c == ')') {
            if (depth == 0 && !word.empty()) {
                names.push_back(word);
            }
            word.clear();
        } else {
            word.clear();
        }
    }
    return names;
}

bool HasType(const Function& function, const std::string& type)
{
    const std::vector<Argument>& arguments = function.Arguments();
    return std::any_of(arguments.begin(), arguments.end(), [&](const Argument& argument) {
        return argument.type->name() == type || nexwire::catalogue::Spelled(*argument.type) == type;
    });
}

} // namespace

std::vector<const Function*> Meant(const std::string& name)
{
    const std::size_t open = std::min(name.find('<'), name.size());
    const std::string type = open == name.size() ? "" : name.substr(open + 1, name.size() - open - 2);
    std::vector<const Function*> meant;
    for (const Function& function : nexwire::catalogue::All()) {
        if (function.Name() == name.substr(0, open) && (type.empty() || HasType(function, type))) {
            meant.push_back(&function);
        }
    }
    return meant;
}

std::size_t PlaceOf(const Function& function, const std::string& argument)
{
    const std::vector<Argument>& arguments = function.Arguments();
    const std::vector<std::string> names = HeaderNames(function);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].name == argument || (names.size() == arguments.size() && names[i] == argument)) {
            return i;
        }
    }
    return arguments.size();
}

Invocation::Invocation(const Function& function) : function_(function)
{
    for (const Argument& argument : function.Arguments()) {
        values_.push_back(argument.type->create());
    }
}

Invocation::~Invocation()
{
    for (std::size_t i = 0; i < values_.size(); ++i) {
        function_.Arguments()[i].type->destroy(values_[i]);
    }
}

bool Invocation::Set(std::size_t place, const std::string& text)
{
    return function_.Arguments()[place].type->read(values_[place], text);
}

void Invocation::Set(std::size_t place, const Keel::Error::ErrorCode& error)
{
    *static_cast<Keel::Error::ErrorCode*>(values_[place]) = error;
}

void Invocation::Sample(std::size_t place)
{
    function_.Arguments()[place].type->sample(values_[place]);
}

std::string Invocation::Json(std::size_t place) const
{
    return function_.Arguments()[place].type->write(values_[place]);
}

Outcome Invocation::Run()
{
    Outcome outcome;
    function_.Row().call(values_.data(), outcome);
    return outcome;
}

} // namespace requests
