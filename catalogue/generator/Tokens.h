#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace generator {

/// Something in a header that cannot be read; what() is "file:line: reason", as compilers say it.
class Unreadable : public std::runtime_error {
public:
    Unreadable(const std::string& file, int line, const std::string& reason)
        : std::runtime_error(file + ":" + std::to_string(line) + ": " + reason)
    {
    }
};

struct Token {
    enum Kind {
        Word,      ///< Names, keywords and numbers.
        Sign,      ///< One character, or "::".
        Literal,   ///< Texts and characters with their quotes.
        Doc,       ///< A line of "///", without it.
        DocBehind, ///< A line of "///<", without it.
        Remark,    ///< A line of "//", without it.
        Blank,     ///< An empty line.
        End
    };
    Kind kind;
    std::string text;
    int line;
};

/// A header as tokens; preprocessor lines are left out. Ends with an End token.
std::vector<Token> Split(const std::string& file, const std::string& text);

std::string Trimmed(const std::string& text);

} // namespace generator
