#pragma once

#include <cstddef>
#include <string>

#include <cjson/cJSON.h>

#include "core/Arena.h"

namespace nexwire::core {

struct FieldTable;

/// What of a JSON value somebody will read; of the rest no tree is built.
struct Wanted {
    enum class Of {
        Everything,
        Itself,   ///< The value, but nothing inside it.
        Fields,   ///< Members with a key in the table.
        Elements, ///< Elements, and of each of them the members with a key in the table, if there is one.
        Members,  ///< The listed members.
    };
    struct Member;

    // Trivial, so that a place for each level of nesting costs nothing.
    Of of;
    const FieldTable* table;
    const Member* members;
    std::size_t count;
};

constexpr Wanted kEverything = {Wanted::Of::Everything, nullptr, nullptr, 0};
/// Nothing inside the value.
constexpr Wanted kItself = {Wanted::Of::Itself, nullptr, nullptr, 0};

struct Wanted::Member {
    const char* key;
    Wanted wanted;
};

/// Reads text into a tree that lives in the arena, nodes and texts alike: the tree that cJSON's parser would make of
/// what is wanted, at a fraction of the cost of one allocation per node, key and text.
///
/// Null for whatever is not plain JSON to the letter: cJSON's parser, which is more lenient, has the last word on that.
/// @throws std::bad_alloc, AnswerTooCostly
const cJSON* ReadPlainJson(Arena& arena, const std::string& text, const Wanted& wanted = kEverything);

} // namespace nexwire::core
