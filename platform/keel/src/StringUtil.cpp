#include "keel/StringUtil.h"

#include <cstdarg>
#include <cstdio>

#include "Utf8.h"

namespace Keel {
namespace StringUtil {

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
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
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

} // namespace StringUtil
} // namespace Keel
