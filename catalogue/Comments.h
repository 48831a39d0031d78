#pragma once

#include <string>
#include <utility>
#include <vector>

namespace nexwire::catalogue {

class Function;
struct Limits;

// What the library's headers say, as text: paragraphs separated by line feeds. Empty where they say nothing.

struct FunctionDoc {
    std::string declaration; ///< "bool CAccessGroupComm::getAccessGroup(protocol::… result, …)".
    std::string text;
    std::vector<std::pair<std::string, std::string>> parameters; ///< Name and what is said about it.
    std::string returns;
};

FunctionDoc DocOfFunction(const Function& function);
std::string DocOfClass(const std::string& className);
/// What the class's header says about everything in it.
std::string RemarkOfClass(const std::string& className);

std::string DocOfStruct(const std::string& structure);
/// @param key  as on the wire.
std::string DocOfMember(const std::string& structure, const std::string& key);

/// A member as its header declares it.
struct MemberDoc {
    std::string key;
    std::string type; ///< "std::vector<PersonnelAdd>".
    std::string text;
    const Limits* limits; ///< Never null; empty for a member that may hold anything.
};
/// All members of a structure or record in declaration order; empty for unknown ones.
std::vector<MemberDoc> MembersOf(const std::string& structure);

} // namespace nexwire::catalogue
