#include "keel/StringUtil.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "Utf8.h"

namespace Keel::StringUtil {

std::string FormatString(const char* format, ...)
{
    char shortText[512];
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(shortText, sizeof shortText, format, arguments);
    va_end(arguments);

    std::string text;
    if (length > 0) {
        const auto size = static_cast<std::size_t>(length);
        if (size < sizeof shortText) {
            text.assign(shortText, size);
        } else {
            text.resize(size);
            // The terminating NUL lands on the string's own.
            if (std::vsnprintf(&text[0], size + 1, format, again) != length) {
                text.clear();
            }
        }
    }
    va_end(again);
    return text;
}

std::vector<std::string> SplitString(const std::string& text, const std::string& separator)
{
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    if (!separator.empty()) {
        for (std::size_t end = text.find(separator); end != std::string::npos; end = text.find(separator, begin)) {
            pieces.push_back(text.substr(begin, end - begin));
            begin = end + separator.size();
        }
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

std::string StringTrim(const std::string& text)
{
    const char* const space = " \t\n\v\f\r";
    const std::size_t begin = text.find_first_not_of(space);
    if (begin == std::string::npos) {
        return std::string();
    }
    return text.substr(begin, text.find_last_not_of(space) - begin + 1);
}

std::string LowerCase(const std::string& text)
{
    std::string lower = text;
    for (char& c : lower) {
        c = LowerCase(c);
    }
    return lower;
}

std::string StringEraseInvalidChar(const std::string& text)
{
    std::string clean;
    clean.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t length = details::Utf8Length(text.data() + i, text.size() - i);
        const auto first = static_cast<unsigned char>(text[i]);
        if (length == 1 && (first < 0x20 || first == 0x7F)) {
            ++i;
        } else if (length == 0) {
            ++i;
        } else {
            clean.append(text, i, length);
            i += length;
        }
    }
    return clean;
}

namespace {

std::uint32_t CodePoint(const char* text, std::size_t length)
{
    const auto byte = [text](std::size_t i) { return std::uint32_t{static_cast<unsigned char>(text[i])}; };
    std::uint32_t code = length == 1 ? byte(0) : byte(0) & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        code = code << 6U | (byte(i) & 0x3FU);
    }
    return code;
}

bool MovesTheReader(std::uint32_t code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x061C || code == 0x200E || code == 0x200F ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string SpelledOut(std::uint32_t code)
{
    switch (code) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return code < 0x80 ? FormatString("\\x%02X", static_cast<unsigned>(code))
                           : FormatString("\\u%04X", static_cast<unsigned>(code));
    }
}

} // namespace

std::string SingleLine(const std::string& text)
{
    std::string line;
    std::size_t copied = 0;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = details::Utf8Length(text.data() + i, text.size() - i);
        const std::uint32_t code = length == 0 ? 0 : CodePoint(text.data() + i, length);
        const std::size_t next = i + (length == 0 ? 1 : length);
        if (length == 0 || MovesTheReader(code)) {
            line.append(text, copied, i - copied).append(length == 0 ? "?" : SpelledOut(code));
            copied = next;
        }
        i = next;
    }
    return copied == 0 ? text : line.append(text, copied, std::string::npos);
}

bool IsUtf8(const char* text, std::size_t length)
{
    for (std::size_t i = 0; i < length;) {
        std::uint64_t eight = 0; // Bytes of ASCII, which most of a long text is.
        if (length - i >= sizeof eight) {
            std::memcpy(&eight, text + i, sizeof eight);
            if ((eight & 0x8080808080808080U) == 0) {
                i += sizeof eight;
                continue;
            }
        }
        const std::size_t step = details::Utf8Length(text + i, length - i);
        if (step == 0) {
            return false;
        }
        i += step;
    }
    return true;
}

bool IsUtf8(const std::string& text)
{
    return IsUtf8(text.data(), text.size());
}

} // namespace Keel::StringUtil
