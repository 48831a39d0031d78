#include "requests/Catalogued.h"

#include <algorithm>

namespace requests {

namespace {

bool HasType(const Function& function, const std::string& type)
{
    const std::vector<Argument>& arguments = function.Arguments();
    return std::any_of(arguments.begin(), arguments.end(), [&](const Argument& argument) {
        return argument.type->name() == type || nexwire::catalogue::Spelled(*argument.type) == type;
    });
}

std::string NamesOf(const Function& function)
{
    std::string names;
    for (const Argument& argument : function.Arguments()) {
        names += (names.empty() ? "" : ",") + argument.name;
    }
    return names;
}

/// Whether it has the types of a list "A,!B": A among its arguments and B not.
bool Fits(const Function& function, const std::string& types)
{
    std::size_t end = 0;
    for (std::size_t begin = 0; begin < types.size(); begin = end + 1) {
        end = std::min(types.find(',', begin), types.size());
        const bool without = types[begin] == '!';
        const std::size_t first = begin + (without ? 1 : 0);
        if (HasType(function, types.substr(first, end - first)) == without) {
            return false;
        }
    }
    return true;
}

} // namespace

std::vector<const Function*> Meant(const std::string& name)
{
    const std::size_t open = std::min(name.find('<'), name.size());
    const std::string types = open == name.size() ? "" : name.substr(open + 1, name.size() - open - 2);
    std::vector<const Function*> meant;
    for (const Function& function : nexwire::catalogue::All()) {
        if (function.Name() == name.substr(0, open) && (NamesOf(function) == types || Fits(function, types))) {
            meant.push_back(&function);
        }
    }
    return meant;
}

std::size_t PlaceOf(const Function& function, const std::string& argument)
{
    const std::vector<Argument>& arguments = function.Arguments();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].name == argument) {
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
