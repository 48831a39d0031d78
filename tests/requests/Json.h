#pragma once

#include <string>
#include <vector>

#include <rapidjson/document.h>

#include "core/FieldLayout.h"

namespace requests {

using rapidjson::Document;
using Value = rapidjson::Value;

/// Null for what is not JSON.
Document Parsed(const std::string& text);
std::string TextOf(const Value& value);
/// The text in quotes.
std::string Quoted(const std::string& text);

enum class Match {
    Ordered, ///< The same members in the same order.
    Whole,   ///< The same members.
    Part,    ///< Members beyond the expected ones are allowed.
};

/// The first place where `found` is not what was expected, with both values; empty when there is none.
std::string Difference(const Value& expected, const Value& found, Match match, const std::string& at = "");

/// Replaces in `base` what `over` has, member by member; lists as a whole, or by what stands behind their elements.
std::string Overlaid(const std::string& base, const std::string& over, bool append = false);

/// Distinct values; those of two fillings differ from each other in every place.
struct Filling {
    int series;           ///< 0 to 9.
    std::string suffix;   ///< Stands at the end of every text.
    std::size_t elements; ///< In each list.
    int count = 0;

    int Number() { return series * 1000 + ++count; }
    std::string Text() { return std::to_string(Number()) + " \xE9\x97\xA8 " + suffix; }
    bool Flag() { return (++count + series) % 2 != 0; }
};

/// A structure with a value in every member.
std::string Filled(const nexwire::core::FieldTable& table, Filling& filling, int depth = 0);
/// The same JSON with other leaves.
std::string Refilled(const std::string& json, Filling& filling);

/// A key and, where they were named, those under it.
struct Key {
    std::string name;
    std::vector<Key> inside;
};

/// Why the members of a table are not these; empty when they are.
std::string Misfit(const std::vector<Key>& keys, bool more, const nexwire::core::FieldTable& table);
/// The same for an object, or for every element of a list.
std::string Misfit(const std::vector<Key>& keys, bool more, const Value& value);

} // namespace requests
