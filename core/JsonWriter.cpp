#include "core/JsonWriter.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <system_error>

namespace nexwire::core {
namespace {

/// What stands for each character inside a text: 0 itself, 'u' its number, anything else a letter behind a backslash.
constexpr std::array<char, 256> MakeEscapes()
{
    std::array<char, 256> escapes{};
    for (std::size_t i = 0; i < 32; ++i) {
        escapes[i] = 'u';
    }
    escapes['\b'] = 'b';
    escapes['\f'] = 'f';
    escapes['\n'] = 'n';
    escapes['\r'] = 'r';
    escapes['\t'] = 't';
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    return escapes;
}

constexpr std::array<char, 256> kEscapes = MakeEscapes();

/// Whether one of eight characters is a control character, a quotation mark or a backslash.
bool NeedsEscape(std::uint64_t eight)
{
    constexpr std::uint64_t kEach = 0x0101010101010101;
    const std::uint64_t quote = eight ^ (kEach * '"');
    const std::uint64_t backslash = eight ^ (kEach * '\\');
    const std::uint64_t found =
        ((eight - kEach * 0x20) & ~eight) | ((quote - kEach) & ~quote) | ((backslash - kEach) & ~backslash);
    return (found & (kEach * 0x80)) != 0;
}

void AppendText(std::string& out, const char* text)
{
    out += '"';
    const char* const end = text + std::strlen(text);
    const char* run = text;
    while (text < end) {
        std::uint64_t eight = 0;
        while (end - text >= 8) {
            std::memcpy(&eight, text, sizeof(eight));
            if (NeedsEscape(eight)) {
                break;
            }
            text += 8;
        }
        const char* const stop = end - text > 8 ? text + 8 : end;
        for (; text < stop; ++text) {
            const auto c = static_cast<unsigned char>(*text);
            const char escape = kEscapes[c];
            if (escape == 0) {
                continue;
            }
            out.append(run, static_cast<std::size_t>(text - run));
            run = text + 1;
            out += '\\';
            out += escape;
            if (escape == 'u') {
                constexpr char kDigits[] = "0123456789abcdef";
                out += "00";
                out += kDigits[c >> 4];
                out += kDigits[c & 15];
            }
        }
    }
    out.append(run, static_cast<std::size_t>(end - run));
    out += '"';
}

bool AppendNumber(std::string& out, const cJSON& node)
{
    // Whole numbers of up to 15 digits are printed as they are; cJSON knows what to do with the others.
    constexpr double kBeyond = 1e15;
    const double value = node.valuedouble;
    char text[64];
    if (value > -kBeyond && value < kBeyond && (value != 0.0 || !std::signbit(value))) {
        const auto whole = static_cast<std::int64_t>(value);
        if (static_cast<double>(whole) == value) {
            const std::to_chars_result result = std::to_chars(text, text + sizeof(text), whole);
            out.append(text, static_cast<std::size_t>(result.ptr - text));
            return true;
        }
    }
    if (cJSON_PrintPreallocated(const_cast<cJSON*>(&node), text, sizeof(text), 0) == 0) {
        return false;
    }
    // cJSON stops at 15 digits when what they say is nearly the value; positions have to come back as they were.
    constexpr int kEnoughDigits = 17;
    const std::string_view printed(text);
    double read = 0.0; // And so it stays where 15 digits are beyond the largest number.
    const bool isNumber =
        std::from_chars(printed.data(), printed.data() + printed.size(), read).ec != std::errc::invalid_argument;
    if (isNumber && (read < value || read > value)) {
        const std::to_chars_result result =
            std::to_chars(text, text + sizeof(text), value, std::chars_format::general, kEnoughDigits);
        out.append(text, static_cast<std::size_t>(result.ptr - text));
        return true;
    }
    out += printed;
    return true;
}

bool Append(std::string& out, const cJSON& node, std::size_t depth);

bool AppendArray(std::string& out, const cJSON& array, std::size_t depth)
{
    out += '[';
    for (const cJSON* child = array.child; child != nullptr; child = child->next) {
        if (!Append(out, *child, depth + 1)) {
            return false;
        }
        if (child->next != nullptr) {
            out += ", ";
        }
    }
    out += ']';
    return true;
}

bool AppendObject(std::string& out, const cJSON& object, std::size_t depth)
{
    out += "{\n";
    for (const cJSON* child = object.child; child != nullptr; child = child->next) {
        out.append(depth + 1, '\t');
        AppendText(out, child->string != nullptr ? child->string : "");
        out += ":\t";
        if (!Append(out, *child, depth + 1)) {
            return false;
        }
        out += child->next != nullptr ? ",\n" : "\n";
    }
    out.append(depth, '\t');
    out += '}';
    return true;
}

bool Append(std::string& out, const cJSON& node, std::size_t depth)
{
    switch (node.type & 0xFF) {
    case cJSON_NULL:
        out += "null";
        return true;
    case cJSON_False:
        out += "false";
        return true;
    case cJSON_True:
        out += "true";
        return true;
    case cJSON_Number:
        return AppendNumber(out, node);
    case cJSON_Raw:
        if (node.valuestring == nullptr) {
            return false;
        }
        out += node.valuestring;
        return true;
    case cJSON_String:
        AppendText(out, node.valuestring != nullptr ? node.valuestring : "");
        return true;
    case cJSON_Array:
        return AppendArray(out, node, depth);
    case cJSON_Object:
        return AppendObject(out, node, depth);
    default:
        return false;
    }
}

} // namespace

bool AppendFormatted(std::string& out, const cJSON& root)
{
    return Append(out, root, 0);
}

} // namespace nexwire::core
