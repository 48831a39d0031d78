#include "core/JsonWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <system_error>

#include "core/PlainText.h"

namespace nexwire::core {
namespace {

/// Room for text that grows, in a string that is cut to its length at the end.
class Writer {
public:
    explicit Writer(std::string& out) : out_(out), used_(out.size()) { out_.resize(out_.capacity()); }

    bool Value(const cJSON& node, std::size_t depth);
    void Finish() { out_.resize(used_); }

private:
    static constexpr std::size_t kLongestEscape = 6;
    static constexpr std::size_t kLongestNumber = 64;

    /// At least so many characters from the end of what was written; what of them is used is told to `Used`.
    char* Room(std::size_t size)
    {
        if (out_.size() - used_ < size) {
            out_.resize(std::max(out_.size() * 2, used_ + size));
        }
        return &out_[used_];
    }
    void Used(const char* end) { used_ = static_cast<std::size_t>(end - out_.data()); }

    void Put(std::string_view text)
    {
        std::memcpy(Room(text.size()), text.data(), text.size());
        used_ += text.size();
    }
    void Indent(std::size_t depth)
    {
        std::memset(Room(depth), '\t', depth);
        used_ += depth;
    }
    void Text(const char* text);
    bool Number(const cJSON& node);
    bool Array(const cJSON& array, std::size_t depth);
    bool Object(const cJSON& object, std::size_t depth);

    std::string& out_;
    std::size_t used_;
};

void Writer::Text(const char* text)
{
    const std::size_t length = std::strlen(text);
    std::size_t left = length;
    char* to = Room(left + 2);
    *to++ = '"';
    while (left > 0) {
        if (length >= kWordBytes) {
            // The last ones are taken with some that were written before: those had no escapes, or it is seen here.
            const std::size_t before = left < kWordBytes ? kWordBytes - left : 0;
            std::uint64_t eight = 0;
            std::memcpy(&eight, text - before, kWordBytes);
            if (EscapesIn(eight) == 0) {
                std::memcpy(to - before, &eight, kWordBytes);
                const std::size_t taken = kWordBytes - before;
                to += taken;
                text += taken;
                left -= taken;
                continue;
            }
        }
        for (std::size_t i = std::min(left, kWordBytes); i > 0; --i, ++text, --left) {
            const auto c = static_cast<unsigned char>(*text);
            const char escape = kEscapes[c];
            if (escape == 0) {
                *to++ = *text;
                continue;
            }
            Used(to);
            to = Room(kLongestEscape + left);
            *to++ = '\\';
            *to++ = escape;
            if (escape == 'u') {
                constexpr char kDigits[] = "0123456789abcdef";
                *to++ = '0';
                *to++ = '0';
                *to++ = kDigits[c >> 4];
                *to++ = kDigits[c & 15];
            }
        }
    }
    *to++ = '"';
    Used(to);
}

bool Writer::Number(const cJSON& node)
{
    // Whole numbers of up to 15 digits are printed as they are; cJSON knows what to do with the others.
    constexpr double kBeyond = 1e15;
    const double value = node.valuedouble;
    char* const text = Room(kLongestNumber);
    if (value > -kBeyond && value < kBeyond && (value != 0.0 || !std::signbit(value))) {
        const auto whole = static_cast<std::int64_t>(value);
        if (static_cast<double>(whole) == value) {
            Used(std::to_chars(text, text + kLongestNumber, whole).ptr);
            return true;
        }
    }
    if (cJSON_PrintPreallocated(const_cast<cJSON*>(&node), text, static_cast<int>(kLongestNumber), 0) == 0) {
        return false;
    }
    // cJSON stops at 15 digits when what they say is nearly the value; positions have to come back as they were.
    constexpr int kEnoughDigits = 17;
    const char* const end = text + std::strlen(text);
    double read = 0.0; // And so it stays where 15 digits are beyond the largest number.
    const bool isNumber = std::from_chars(text, end, read).ec != std::errc::invalid_argument;
    if (isNumber && (read < value || read > value)) {
        Used(std::to_chars(text, text + kLongestNumber, value, std::chars_format::general, kEnoughDigits).ptr);
        return true;
    }
    Used(end);
    return true;
}

bool Writer::Array(const cJSON& array, std::size_t depth)
{
    Put("[");
    for (const cJSON* child = array.child; child != nullptr; child = child->next) {
        if (!Value(*child, depth + 1)) {
            return false;
        }
        if (child->next != nullptr) {
            Put(", ");
        }
    }
    Put("]");
    return true;
}

bool Writer::Object(const cJSON& object, std::size_t depth)
{
    Put("{\n");
    for (const cJSON* child = object.child; child != nullptr; child = child->next) {
        Indent(depth + 1);
        Text(child->string != nullptr ? child->string : "");
        Put(":\t");
        if (!Value(*child, depth + 1)) {
            return false;
        }
        Put(child->next != nullptr ? ",\n" : "\n");
    }
    Indent(depth);
    Put("}");
    return true;
}

bool Writer::Value(const cJSON& node, std::size_t depth)
{
    switch (node.type & 0xFF) {
    case cJSON_NULL:
        Put("null");
        return true;
    case cJSON_False:
        Put("false");
        return true;
    case cJSON_True:
        Put("true");
        return true;
    case cJSON_Number:
        return Number(node);
    case cJSON_Raw:
        if (node.valuestring == nullptr) {
            return false;
        }
        Put(node.valuestring);
        return true;
    case cJSON_String:
        Text(node.valuestring != nullptr ? node.valuestring : "");
        return true;
    case cJSON_Array:
        return Array(node, depth);
    case cJSON_Object:
        return Object(node, depth);
    default:
        return false;
    }
}

} // namespace

bool AppendFormatted(std::string& out, const cJSON& root)
{
    Writer writer(out);
    const bool written = writer.Value(root, 0);
    writer.Finish();
    return written;
}

} // namespace nexwire::core
