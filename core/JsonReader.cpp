#include "core/JsonReader.h"

#include <array>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>

// The reader looks at many characters at a time where the processor can. Its code is then not that of the others in
// the process.
#if defined(__SSE2__)
#define RAPIDJSON_SSE2
#elif defined(__ARM_NEON)
#define RAPIDJSON_NEON
#endif
#define RAPIDJSON_NAMESPACE nexwire::core::json
#define RAPIDJSON_NAMESPACE_BEGIN namespace nexwire::core::json {
#define RAPIDJSON_NAMESPACE_END }
#include <rapidjson/reader.h>

#include "core/AnswerBudget.h"
#include "core/FieldLayout.h"

namespace nexwire::core {
namespace {

constexpr std::size_t kLongestNumber = 63; ///< cJSON reads no longer ones.

/// What of a member somebody reads, by what it holds.
Wanted WantedOf(const Field& field)
{
    switch (field.kind) {
    case Kind::Struct:
    case Kind::StructList:
        // Nobody knows what a structure of the host's own reads.
        if (field.ops->fields == nullptr) {
            return kEverything;
        }
        return {field.kind == Kind::Struct ? Wanted::Of::Fields : Wanted::Of::Elements, field.ops->fields, nullptr, 0};
    case Kind::TextList:
    case Kind::IntList:
        return {Wanted::Of::Elements, nullptr, nullptr, 0};
    default:
        return kItself;
    }
}

/// Makes cJSON nodes of what the parser reports and somebody wants.
class TreeBuilder {
public:
    TreeBuilder(Arena& arena, const Wanted& wanted) : arena_(arena), next_(wanted) {}

    const cJSON* Root() const { return root_; }

    bool Null() { return Unwanted() || Add(cJSON_NULL) != nullptr; }
    bool Bool(bool value)
    {
        if (!Unwanted()) {
            Add(value ? cJSON_True : cJSON_False)->valueint = value ? 1 : 0;
        }
        return true;
    }
    bool RawNumber(const char* text, json::SizeType length, bool)
    {
        if (Unwanted()) {
            return length <= kLongestNumber;
        }
        double value = 0.0;
        if (!ToNumber(text, length, value)) {
            return false;
        }
        cJSON* const node = Add(cJSON_Number);
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
    bool String(const char* text, json::SizeType, bool)
    {
        if (!Unwanted()) {
            Add(cJSON_String)->valuestring = const_cast<char*>(text);
        }
        return true;
    }
    bool Key(const char* text, json::SizeType, bool)
    {
        if (unwantedDepth_ == 0) {
            key_ = const_cast<char*>(text);
            ChooseByKey(text);
        }
        return true;
    }
    bool StartObject() { return Open(cJSON_Object); }
    bool EndObject(json::SizeType) { return Close(); }
    bool StartArray() { return Open(cJSON_Array); }
    bool EndArray(json::SizeType) { return Close(); }

private:
    struct Level {
        cJSON* node;
        Wanted wanted;        ///< Of the value itself.
        std::size_t expected; ///< Index of the member that comes next, if the server keeps the table's order.
    };

    static bool ToNumber(const char* text, std::size_t length, double& value)
    {
        constexpr std::size_t kExactDigits = 15;
        if (length > kLongestNumber) {
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

    /// Chooses what is wanted of the value behind a key.
    void ChooseByKey(const char* key)
    {
        Level& level = open_[depth_ - 1];
        const Wanted& wanted = level.wanted;
        wantsNext_ = false;
        switch (wanted.of) {
        case Wanted::Of::Everything:
            wantsNext_ = true;
            next_ = wanted;
            break;
        case Wanted::Of::Fields: {
            const std::size_t index = FindField(*wanted.table, level.expected, key);
            if (index < wanted.table->count) {
                const Field& field = wanted.table->fields[index];
                level.expected = index + 1;
                wantsNext_ = true;
                next_ = WantedOf(field);
                // The table's own is found again at once.
                key_ = const_cast<char*>(field.key);
            }
            break;
        }
        case Wanted::Of::Members:
            for (std::size_t i = 0; i < wanted.count && !wantsNext_; ++i) {
                if (std::strcmp(wanted.members[i].key, key) == 0) {
                    wantsNext_ = true;
                    next_ = wanted.members[i].wanted;
                }
            }
            break;
        default:
            break;
        }
    }

    /// Chooses what is wanted of the next element of the innermost array.
    void ChooseElement()
    {
        const Wanted& wanted = open_[depth_ - 1].wanted;
        wantsNext_ = true;
        if (wanted.of == Wanted::Of::Everything) {
            next_ = wanted;
        } else if (wanted.of == Wanted::Of::Elements) {
            next_ = wanted.table != nullptr ? Wanted{Wanted::Of::Fields, wanted.table, nullptr, 0} : kItself;
        } else {
            wantsNext_ = false;
        }
    }

    /// Whether nobody reads the value that begins.
    bool Unwanted() const { return unwantedDepth_ > 0 || !wantsNext_; }

    cJSON* Add(int type)
    {
        if (charged_ == 0) {
            ChargeAnswer(kChargedAtOnce * sizeof(cJSON));
            charged_ = kChargedAtOnce;
        }
        --charged_;
        auto* const node = static_cast<cJSON*>(arena_.Allocate(sizeof(cJSON)));
        if (node == nullptr) {
            throw std::bad_alloc();
        }
        *node = cJSON();
        node->type = type;
        node->string = key_;
        key_ = nullptr;
        if (last_ != nullptr) {
            last_->next = node;
            node->prev = last_;
        } else if (depth_ > 0) {
            open_[depth_ - 1].node->child = node;
        } else {
            root_ = node;
        }
        last_ = node;
        return node;
    }

    bool Open(int type)
    {
        if (depth_ + unwantedDepth_ >= open_.size()) {
            return false;
        }
        if (Unwanted()) {
            ++unwantedDepth_;
            return true;
        }
        cJSON* const node = Add(type);
        open_[depth_++] = {node, next_, 0};
        last_ = nullptr;
        if (type == cJSON_Array) {
            ChooseElement();
        }
        return true;
    }

    bool Close()
    {
        if (unwantedDepth_ > 0) {
            --unwantedDepth_;
            return true;
        }
        cJSON* const node = open_[--depth_].node;
        if (last_ != nullptr) {
            node->child->prev = last_;
        }
        last_ = node;
        if (depth_ > 0 && open_[depth_ - 1].node->type == cJSON_Array) {
            ChooseElement();
        }
        return true;
    }

    static constexpr std::size_t kChargedAtOnce = 32;

    Arena& arena_;
    std::size_t charged_ = 0; ///< Nodes that are counted towards the answer and not made yet.
    const cJSON* root_ = nullptr;
    cJSON* last_ = nullptr; ///< Before the next node in the innermost open one.
    char* key_ = nullptr;
    Wanted next_;           ///< Of the value that comes next.
    bool wantsNext_ = true; ///< Whether anybody reads that at all.
    std::size_t depth_ = 0;
    std::size_t unwantedDepth_ = 0; ///< Containers open around the next value that nobody reads.
    std::array<Level, CJSON_NESTING_LIMIT> open_;
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

const cJSON* ReadPlainJson(Arena& arena, const std::string& text, const Wanted& wanted)
{
    if (text.size() >= UINT32_MAX || HasLoneLowSurrogate(text)) {
        return nullptr;
    }
    // Keys and texts are unescaped in place and stay there.
    auto* const copy = static_cast<char*>(arena.Allocate(text.size() + 1));
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    std::memcpy(copy, text.c_str(), text.size() + 1);

    constexpr unsigned kFlags =
        json::kParseInsituFlag | json::kParseNumbersAsStringsFlag | json::kParseStopWhenDoneFlag;
    json::InsituStringStream stream(copy);
    json::Reader reader;
    TreeBuilder builder(arena, wanted);
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

} // namespace nexwire::core
