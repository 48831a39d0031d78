#pragma once

#include <string>
#include <vector>

#include "catalogue/Catalogue.h"

// Functions by what a person types.

namespace nexwire::catalogue {

/// The functions that `name` can mean: "Class::function", "function", "Class", each with or without arguments in
/// brackets to choose an overload: structures by type, others by name ("cfginterface::getConfigRequest(SnapConfig)").
/// One that has these arguments and no other goes before one with more. When none is spelled so, those that differ in
/// case only.
std::vector<const Function*> Find(const std::string& name);

/// The shortest name that `Find` answers with this function alone.
std::string UniqueName(const Function& function);

/// A few names close to one that nobody has.
std::vector<std::string> Similar(const std::string& name);

/// The candidates that a misspelt name may have meant, the closest first.
std::vector<std::string> Closest(const std::string& name, const std::vector<std::string>& candidates);

/// Module, name, structures and arguments in one text of small letters, to search in.
std::string SearchText(const Function& function);

std::string LowerCase(const std::string& text);

/// Values by argument name, and one structure whose argument is found by what fits.
struct Given {
    std::vector<std::pair<std::string, std::string>> values;
    std::string body;
    bool hasBody = false;
};

/// The call of the one function that what was given fits. Null with a text for the user when none or several do.
std::unique_ptr<Call> Prepare(const std::vector<const Function*>& candidates, const Given& given, std::string& error);

} // namespace nexwire::catalogue
