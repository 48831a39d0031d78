#include "src/Query.h"

#include <charconv>

#include "src/Wire.h"

namespace nexwire::simulator {
namespace {

int Digit(char c)
{
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                  : -1;
}

} // namespace

std::string Decoded(std::string_view text, bool query)
{
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? Digit(text[i + 1]) : -1;
        const int low = high < 0 ? -1 : Digit(text[i + 2]);
        if (low >= 0) {
            decoded += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            decoded += query && text[i] == '+' ? ' ' : text[i];
        }
    }
    return decoded;
}

std::string Encoded(std::string_view text)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' ||
                           c == '_' || c == '.' || c == '~';
        encoded += plain ? std::string(1, c) : std::string("%") + kDigits[byte >> 4u] + kDigits[byte & 15u];
    }
    return encoded;
}

std::string Query::Text(std::string_view name) const
{
    for (std::string_view rest = text_; !rest.empty();) {
        const std::string_view one = rest.substr(0, rest.find('&'));
        const std::size_t equals = one.find('=');
        if (one.substr(0, equals) == name) {
            return equals == std::string_view::npos ? std::string("1") : Decoded(one.substr(equals + 1), true);
        }
        rest.remove_prefix(one.size() < rest.size() ? one.size() + 1 : one.size());
    }
    return {};
}

std::int64_t Query::Number(std::string_view name, std::int64_t otherwise) const
{
    const std::string text = Text(name);
    std::int64_t number = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    return parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() ? number : otherwise;
}

bool Fits(std::string_view pattern, std::string_view text)
{
    // Goes back to the last star only, so the time is bounded by the product of the lengths.
    std::size_t star = std::string_view::npos;
    std::size_t from = 0;
    std::size_t p = 0;
    for (std::size_t t = 0; t < text.size();) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            from = t;
        } else if (p < pattern.size() && Same(pattern.substr(p, 1), text.substr(t, 1))) {
            ++p;
            ++t;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            t = ++from;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

} // namespace nexwire::simulator
