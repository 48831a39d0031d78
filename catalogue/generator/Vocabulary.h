#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace generator {

/// What a member may hold, as its comment says it.
struct Vocabulary {
    struct Choice {
        std::string value;
        std::string means;
    };
    struct Bound {
        bool set = false;
        std::int64_t value = 0;
    };

    std::vector<Choice> values;
    bool closed = false;  ///< There are no other values.
    bool numbers = false; ///< The values are numbers.
    Bound minimum, maximum;
    Bound minLength, maxLength;
    Bound minItems, maxItems;
    std::vector<std::int64_t> also; ///< Numbers outside the range.
    bool empty = false;             ///< The text may also be empty.
    bool required = false;
    bool readOnly = false; ///< Only answers say it.
    std::string unit;

    bool Any() const;
};

/// Reads the forms that docs/add-a-structure-and-a-request.md names. Throws std::runtime_error with the reason for one
/// that is misspelled.
Vocabulary ReadVocabulary(const std::string& comment);

} // namespace generator
