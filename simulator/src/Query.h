#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace nexwire::simulator {

/// A text of a path or query with its percent signs resolved; in a query "+" is a blank.
std::string Decoded(std::string_view text, bool query);
/// The text as a path segment.
std::string Encoded(std::string_view text);

/// The parameters behind a question mark.
class Query {
public:
    explicit Query(std::string_view text) : text_(text) {}

    /// Empty when it is not there.
    std::string Text(std::string_view name) const;
    std::int64_t Number(std::string_view name, std::int64_t otherwise) const; ///< Also for what is no number.
    bool Flag(std::string_view name) const { return Number(name, 0) != 0; }

private:
    std::string_view text_;
};

/// Whether a text fits a pattern in which "*" stands for anything, whatever the case of ASCII letters.
bool Fits(std::string_view pattern, std::string_view text);

} // namespace nexwire::simulator
