#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <cjson/cJSON.h>

#include "core/FieldLayout.h"
#include "core/Tape.h"

namespace nexwire::core {

/// What of a JSON value somebody will read; the rest is only judged. Small enough to be handed on in registers.
class Wanted {
public:
    enum class Of : std::uint32_t {
        Everything,
        Itself,   ///< The value, but nothing inside it.
        Fields,   ///< Members with a key in the table.
        Elements, ///< Elements, and of each of them the members with a key in the table, if there is one.
        Members,  ///< The listed members.
    };
    struct Member;

    constexpr explicit Wanted(Of of, const FieldTable* table = nullptr) : of_(of), table_(table) {}
    template <std::uint32_t count>
    constexpr explicit Wanted(const Member (&members)[count]) : of_(Of::Members), count_(count), members_(members)
    {
    }

    constexpr Of of() const { return of_; }
    /// Of Fields and Elements; null for what has none.
    constexpr const FieldTable* table() const { return of_ == Of::Members ? nullptr : table_; }
    constexpr const Member* begin() const { return members_; }
    constexpr std::uint32_t size() const { return count_; }

private:
    Of of_;
    std::uint32_t count_ = 0;
    union {
        const FieldTable* table_;
        const Member* members_;
    };
};

constexpr Wanted kEverything{Wanted::Of::Everything};
/// Nothing inside the value.
constexpr Wanted kItself{Wanted::Of::Itself};

struct Wanted::Member {
    std::string_view key;
    Wanted wanted;
};

/// Reads text into a tape that lives in the arena: what is wanted of it, with the texts and numbers that cJSON's parser
/// would read, at a fraction of the cost of one allocation per node, key and text. The text outlives the tape.
///
/// Null for whatever is not plain JSON to the letter: cJSON's parser, which is more lenient, has the last word on that.
/// @throws std::bad_alloc, AnswerTooCostly
const TapeEntry* ReadPlainJson(Arena& arena, const std::string& text, Wanted wanted = kEverything);

/// The same of a tree.
/// @throws std::bad_alloc, AnswerTooCostly
const TapeEntry* ReadTree(Arena& arena, const cJSON& root, Wanted wanted);

} // namespace nexwire::core
