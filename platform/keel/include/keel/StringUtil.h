#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "keel/Export.h"

#if defined(__GNUC__)
#define KEEL_PRINTF(formatIndex, firstIndex) __attribute__((format(printf, formatIndex, firstIndex)))
#else
#define KEEL_PRINTF(formatIndex, firstIndex)
#endif

namespace Keel::StringUtil {

/// printf into a text of any length. An encoding error gives an empty text.
KEEL_API std::string FormatString(const char* format, ...) KEEL_PRINTF(1, 2);

/// The pieces of `text` between separators, empty ones included: "a--b" split at "-" gives "a", "", "b", and an
/// empty text gives one empty piece. An empty separator gives the whole text.
KEEL_API std::vector<std::string> SplitString(const std::string& text, const std::string& separator);

/// `text` without leading and trailing ASCII white space.
KEEL_API std::string StringTrim(const std::string& text);

/// A to Z made lower case, whatever the locale.
inline char LowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// `text` with A to Z made lower case; every other byte stays, UTF-8 sequences included.
KEEL_API std::string LowerCase(const std::string& text);

/// `text` without control characters (0x00 to 0x1F and 0x7F) and without bytes that are not valid UTF-8.
KEEL_API std::string StringEraseInvalidChar(const std::string& text);

/// `text` on one line and harmless to a terminal: control characters (those of Unicode, line and paragraph separators
/// and marks of writing direction included) are spelled out, "\n" or "\x1B" or "\u202E", and bytes that are not valid
/// UTF-8 become "?". Nothing else changes, backslashes included.
KEEL_API std::string SingleLine(const std::string& text);

/// Whether all of it is valid UTF-8: no overlong forms, no surrogates, nothing beyond U+10FFFF.
KEEL_API bool IsUtf8(const char* text, std::size_t length);
KEEL_API bool IsUtf8(const std::string& text);

} // namespace Keel::StringUtil
