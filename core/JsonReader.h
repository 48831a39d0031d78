#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <cjson/cJSON.h>

#include "core/FieldLayout.h"
#include "core/Tape.h"

namespace nexwire::core {

/// What of a JSON value somebody will read; the rest is only judged.
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

/// Tells of the members of one object which are wanted, each once: the first of two equal keys wins.
class MemberChoice {
public:
    explicit MemberChoice(const Wanted& object) : object_(object) {}

    /// The key that comes next, if the server keeps the table's order; without data when nobody can say.
    std::string_view Likely() const
    {
        return object_.of == Wanted::Of::Fields && expected_ < object_.table->count
                   ? object_.table->fields[expected_].Key()
                   : std::string_view();
    }

    /// Whether the member with that key is wanted; if so, what of it, and which one it is. Quickest when the key is the
    /// likely one itself.
    bool Take(std::string_view key, Wanted& member, std::size_t& index);

private:
    const Wanted& object_;
    std::size_t expected_ = 0;
    std::uint64_t taken_[2] = {0, 0};
};

/// Reads text into a tape that lives in the arena: what is wanted of it, with the texts and numbers that cJSON's parser
/// would read, at a fraction of the cost of one allocation per node, key and text. The text outlives the tape.
///
/// Null for whatever is not plain JSON to the letter: cJSON's parser, which is more lenient, has the last word on that.
/// @throws std::bad_alloc, AnswerTooCostly
const TapeEntry* ReadPlainJson(Arena& arena, const std::string& text, const Wanted& wanted = kEverything);

/// The same of a tree.
/// @throws std::bad_alloc, AnswerTooCostly
const TapeEntry* ReadTree(Arena& arena, const cJSON& root, const Wanted& wanted);

} // namespace nexwire::core
