#include "catalogue/Comments.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "catalogue/Catalogue.h"

namespace nexwire {
namespace catalogue {
namespace {

struct TypeRow {
    const char* name;
    const char* doc;
};
struct MemberRow {
    const char* structure;
    const char* key;
    const char* type;
    const char* doc;
};
struct ClassRow {
    const char* name;
    const char* doc;
    const char* remark;
};
struct FunctionRow {
    const char* className;
    const char* name;
    const char* result;
    const char* parameters;
    const char* doc;
};
#include "comments.inc"

bool IsWordPart(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool HoldsWord(const std::string& text, const std::string& word)
{
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || !IsWordPart(text[at - 1])) && (end == text.size() || !IsWordPart(text[end]))) {
            return true;
        }
    }
    return false;
}

/// Whether a declaration can be that of the function: same name, and every structure of the function in its
/// parameters.
bool Declares(const FunctionRow& row, const Function& function)
{
    if (function.ClassName() != row.className || function.Line().function != std::string_view(row.name)) {
        return false;
    }
    for (const Argument& argument : function.Arguments()) {
        if (!NeedsName(argument.type->shape) && argument.type->shape != Shape::AnyStructure &&
            !HoldsWord(row.parameters, argument.type->name())) {
            return false;
        }
    }
    return true;
}

void Split(const std::string& doc, FunctionDoc& result)
{
    for (std::size_t begin = 0; begin < doc.size();) {
        const std::size_t end = std::min(doc.find('\n', begin), doc.size());
        const std::string line = doc.substr(begin, end - begin);
        begin = end + 1;
        if (line.compare(0, 7, "@param ") == 0) {
            const std::size_t space = line.find(' ', 7);
            const std::size_t text = line.find_first_not_of(' ', space);
            result.parameters.emplace_back(line.substr(7, space - 7),
                                           text == std::string::npos ? "" : line.substr(text));
        } else if (line.compare(0, 8, "@return ") == 0) {
            result.returns = line.substr(8);
        } else {
            result.text += (result.text.empty() ? "" : "\n") + line;
        }
    }
}

} // namespace

FunctionDoc DocOfFunction(const Function& function)
{
    FunctionDoc doc;
    for (const FunctionRow& row : kFunctions) {
        if (Declares(row, function)) {
            doc.declaration = std::string(row.result) + " " + function.Name() + "(" + row.parameters + ")";
            Split(row.doc, doc);
            break;
        }
    }
    return doc;
}

std::string DocOfClass(const std::string& className)
{
    for (const ClassRow& row : kClasses) {
        if (className == row.name) {
            return row.doc;
        }
    }
    return "";
}

std::string RemarkOfClass(const std::string& className)
{
    for (const ClassRow& row : kClasses) {
        if (className == row.name) {
            return row.remark;
        }
    }
    return "";
}

std::string DocOfStruct(const std::string& structure)
{
    for (const TypeRow& row : kTypes) {
        if (structure == row.name) {
            return row.doc;
        }
    }
    return "";
}

std::string DocOfMember(const std::string& structure, const std::string& key)
{
    for (const MemberRow& row : kMembers) {
        if (structure == row.structure && key == row.key) {
            return row.doc;
        }
    }
    return "";
}

std::vector<MemberDoc> MembersOf(const std::string& structure)
{
    std::vector<MemberDoc> members;
    for (const MemberRow& row : kMembers) {
        if (structure == row.structure) {
            members.push_back({row.key, row.type, row.doc});
        }
    }
    return members;
}

} // namespace catalogue
} // namespace nexwire
