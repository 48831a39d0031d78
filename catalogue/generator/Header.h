#pragma once

#include <string>
#include <vector>

#include "catalogue/generator/Tokens.h"
#include "catalogue/generator/Vocabulary.h"

// What is read of a header.

namespace generator {

/// A type as a declaration writes it, taken apart.
struct TypeName {
    std::string written; ///< "const std::vector<protocol::PersonnelAdd>&".
    std::string value;   ///< "std::vector<protocol::PersonnelAdd>": without const, reference and pointer.
    bool constant = false;
    bool reference = false;
    bool pointer = false;
};

struct Parameter {
    TypeName type;
    std::string name;
};

struct Function {
    std::string name;
    TypeName result;
    std::vector<Parameter> parameters;
    std::string doc;
    int line = 0;
};

struct Member {
    std::string type; ///< As written.
    std::string name;
    std::string doc;
    Vocabulary vocabulary;
    int line = 0;
};

/// A class or structure. Its name is qualified.
struct Type {
    std::string name;
    std::string doc;
    bool exported = false;
    bool compiled = false;           ///< Has functions that are defined elsewhere.
    bool derived = false;            ///< Has bases.
    std::vector<Function> functions; ///< Public and static.
    std::vector<Member> members;     ///< Public and not static.
    int instanceFunction = 0;        ///< Line of a public function that is not static; 0 when there is none.
    std::string instanceFunctionName;
};

struct Header {
    std::string file;    ///< As it was given.
    std::string include; ///< "nexwire/AccessController/AccessGroup.h".
    std::string module;  ///< Folder below include/nexwire; empty for every other header.
    std::string remark;  ///< What it says about itself before its first declaration.
    std::vector<Type> types;
    std::vector<std::string> exportedFunctions; ///< Free ones, qualified.
};

/// Throws Unreadable.
Header ReadHeader(const std::string& file, const std::string& text);

} // namespace generator
