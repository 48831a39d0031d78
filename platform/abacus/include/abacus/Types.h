#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// What capability documents of release servers are made of. A document says what a server takes: which lengths, which
// numbers, which words, whether it knows a thing at all.
//
// XML, with one element per member under the name that the member has:
//
//   <MaterialAbility>
//       <nameLength min="1" max="64"/>                       Range
//       <materialType options="static,dynamic" default="static"/>  Options
//       <isSptReplace>true</isSptReplace>                    bool, number or text
//       <formatList><format>...</format></formatList>        list: one element each
//   </MaterialAbility>
//
// or the same in JSON: {"MaterialAbility": {"nameLength": {"min": 1, "max": 64}, "materialType": {"options":
// ["static"], "default": "static"}, "isSptReplace": true, "formatList": [...]}}.
//
// Elements that are not known are passed over; of those that are missing or unreadable the member keeps its default, so
// a server that says nothing of a thing does not have it. Of two elements of one name the first counts.
//
// The structures are plain: copies are their own, and one may be used by one thread at a time. `Parse` may be called
// from any thread.

namespace Abacus {

struct Table;

/// Largest document that is read, in bytes, and how deep its elements may lie in each other.
constexpr std::size_t kMaxBytes = 4U * 1024U * 1024U;
constexpr std::size_t kMaxDepth = 32;

/// Numbers that are taken, both ends included; for a text its length in bytes of UTF-8.
struct Range {
    std::int64_t min = 0;
    std::int64_t max = 0;
    bool given = false; ///< The document speaks of it.

    bool Holds(std::int64_t value) const { return given && min <= value && value <= max; }
};

/// Words that are taken.
struct Options {
    std::vector<std::string> options;
    std::string defaultOption; ///< What a server takes when nothing is said; may be empty.

    bool Offer(const std::string& word) const
    {
        for (const std::string& each : options) {
            if (each == word) {
                return true;
            }
        }
        return false;
    }
};

} // namespace Abacus

/// Last line of a structure that is part of documents.
#define ABACUS_PART static const ::Abacus::Table kTable;

/// Last line of a structure that is a document. `Parse` reads one and replaces all members, or returns false and
/// changes none: when the text is neither XML nor JSON, has another root, declares a document type, or is larger or
/// deeper than the limits. It never throws.
#define ABACUS_DOCUMENT                                                                                                \
    bool Parse(const std::string& document);                                                                           \
    ABACUS_PART
