#include "core/JsonReader.h"

#include <array>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstring>

#include <rapidjson/reader.h>

namespace nexwire {
namespace core {
namespace {

/// Makes cJSON nodes of what the parser reports.
class TreeBuilder {
public:
    explicit TreeBuilder(Arena& arena) : arena_(arena) {}

    const cJSON* Root() const { return root_; }

    bool Null() { return Add(cJSON_NULL) != nullptr; }
    bool Bool(bool value)
    {
        cJSON* const node = Add(value ? cJSON_True : cJSON_False);
        if (node == nullptr) {
            return false;
        }
        node->valueint = value ? 1 : 0;
        return true;
    }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool)
    {
        double value = 0.0;
        if (!ToNumber(text, length, value)) {
            return false;
        }
        cJSON* const node = Add(cJSON_Number);
        if (node == nullptr) {
            return false;
        }
        node->valuedouble = value;
        if (value >= INT_MAX) {
            node->valueint = INT_MAX;
        } else {
            node->valueint = value <= INT_MIN ? INT_MIN : static_cast<int>(value);
        }
        return true;
    }
    // Numbers come as text only.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }
    bool String(const char* text, rapidjson::SizeType, bool)
    {
        cJSON* const node = Add(cJSON_String);
        if (node == nullptr) {
            return false;
        }
        node->valuestring = const_cast<char*>(text);
        return true;
    }
    bool Key(const char* text, rapidjson::SizeType, bool)
    {
        key_ = const_cast<char*>(text);
        return true;
    }
    bool StartObject() { return Open(cJSON_Object); }
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool StartArray() { return Open(cJSON_Array); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

private:
    static bool ToNumber(const char* text, std::size_t length, double& value)
    {
        // cJSON reads no longer ones.
        constexpr std::size_t kLongest = 63;
        constexpr std::size_t kExactDigits = 15;
        if (length > kLongest) {
            return false;
        }
        const bool negative = *text == '-';
        const std::size_t start = negative ? 1 : 0;
        if (length - start <= kExactDigits) {
            std::int64_t number = 0;
            std::size_t i = start;
            while (i < length && text[i] >= '0' && text[i] <= '9') {
                number = number * 10 + (text[i] - '0');
                ++i;
            }
            if (i == length) {
                const auto magnitude = static_cast<double>(number);
                value = negative ? -magnitude : magnitude;
                return true;
            }
        }
        const std::from_chars_result result = std::from_chars(text, text + length, value);
        return result.ec == std::errc() && result.ptr == text + length;
    }

    cJSON* Add(int type)
    {
        auto* const node = static_cast<cJSON*>(arena_.Allocate(sizeof(cJSON)));
        if (node == nullptr) {
            return nullptr;
        }
        *node = cJSON();
        node->type = type;
        node->string = key_;
        key_ = nullptr;
        if (last_ != nullptr) {
            last_->next = node;
            node->prev = last_;
        } else if (depth_ > 0) {
            open_[depth_ - 1]->child = node;
        } else {
            root_ = node;
        }
        last_ = node;
        return node;
    }

    bool Open(int type)
    {
        if (depth_ >= open_.size()) {
            return false;
        }
        cJSON* const node = Add(type);
        if (node == nullptr) {
            return false;
        }
        open_[depth_++] = node;
        last_ = nullptr;
        return true;
    }

    bool Close()
    {
        cJSON* const node = open_[--depth_];
        if (last_ != nullptr) {
            node->child->prev = last_;
        }
        last_ = node;
        return true;
    }

    Arena& arena_;
    const cJSON* root_ = nullptr;
    cJSON* last_ = nullptr; ///< Before the next node in the innermost open one.
    char* key_ = nullptr;
    std::size_t depth_ = 0;
    std::array<cJSON*, CJSON_NESTING_LIMIT> open_;
};

/// The code unit written as four hexadecimal digits; -1 when it is none.
int CodeUnit(const char* digits, const char* end)
{
    if (end - digits < 4) {
        return -1;
    }
    unsigned unit = 0;
    const std::from_chars_result result = std::from_chars(digits, digits + 4, unit, 16);
    return result.ptr == digits + 4 ? static_cast<int>(unit) : -1;
}

/// Whether an escape stands for the second half of a surrogate pair without its first half, which the fast parser
/// takes for a character and cJSON refuses.
bool HasLoneLowSurrogate(const std::string& text)
{
    const char* position = text.data();
    const char* const end = position + text.size();
    const char* afterHigh = nullptr;
    while ((position = static_cast<const char*>(
                std::memchr(position, '\\', static_cast<std::size_t>(end - position)))) != nullptr) {
        if (end - position < 2) {
            return false;
        }
        if (position[1] != 'u') {
            position += 2;
            continue;
        }
        const int unit = CodeUnit(position + 2, end);
        if (unit < 0) {
            return false;
        }
        const bool paired = afterHigh == position;
        if (unit >= 0xDC00 && unit <= 0xDFFF && !paired) {
            return true;
        }
        position += 6;
        afterHigh = unit >= 0xD800 && unit <= 0xDBFF && !paired ? position : nullptr;
    }
    return false;
}

} // namespace

const cJSON* ReadPlainJson(Arena& arena, const std::string& text)
{
    if (text.size() >= UINT32_MAX || HasLoneLowSurrogate(text)) {
        return nullptr;
    }
    // Keys and texts are unescaped in place and stay there.
    auto* const copy = static_cast<char*>(arena.Allocate(text.size() + 1));
    if (copy == nullptr) {
        return nullptr;
    }
    std::memcpy(copy, text.c_str(), text.size() + 1);

    constexpr unsigned kFlags =
        rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseStopWhenDoneFlag;
    rapidjson::InsituStringStream stream(copy);
    rapidjson::Reader reader;
    TreeBuilder builder(arena);
    if (reader.Parse<kFlags>(stream, builder).IsError()) {
        return nullptr;
    }
    // Nothing but white space may follow.
    const char* const end = copy + text.size();
    const char* position = copy + stream.Tell();
    while (position < end && (*position == ' ' || *position == '\t' || *position == '\r' || *position == '\n')) {
        ++position;
    }
    return position == end ? builder.Root() : nullptr;
}

} // namespace core
} // namespace nexwire
