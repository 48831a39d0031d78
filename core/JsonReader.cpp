#include "core/JsonReader.h"

#include <charconv>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>

#include "core/AnswerBudget.h"
#include "core/FieldLayout.h"
#include "core/PlainText.h"

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

/// What is wanted of each element of an array; false when nothing is.
bool WantedOfElements(const Wanted& array, Wanted& element)
{
    if (array.of == Wanted::Of::Everything) {
        element = array;
        return true;
    }
    element = array.table != nullptr ? Wanted{Wanted::Of::Fields, array.table, nullptr, 0} : kItself;
    return array.of == Wanted::Of::Elements;
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Reads a text that may be written to and has room for `kWordBytes` more behind its end, all of them 0. Each step
/// leaves the position behind what it read, and gives up at whatever is not plain.
class Reader {
public:
    Reader(Arena& arena, char* text) : arena_(arena), position_(text) {}

    /// Null when the value is not plain, or something is left behind it.
    const cJSON* Read(const Wanted& wanted, const char* end)
    {
        SkipSpace();
        cJSON* const root = Value(wanted, 0);
        SkipSpace();
        return position_ == end ? root : nullptr;
    }

private:
    void SkipSpace()
    {
        while (*position_ == ' ' || *position_ == '\n' || *position_ == '\r' || *position_ == '\t') {
            ++position_;
        }
    }

    /// Whether that character comes next, behind space; if so, the position is behind it and the space that follows.
    bool Take(char expected)
    {
        SkipSpace();
        if (*position_ != expected) {
            return false;
        }
        ++position_;
        SkipSpace();
        return true;
    }

    cJSON* New(int type)
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
        return node;
    }

    cJSON* Value(const Wanted& wanted, std::size_t depth)
    {
        switch (*position_) {
        case '{':
            return Object(wanted, depth);
        case '[':
            return Array(wanted, depth);
        case '"': {
            char* const text = Text();
            if (text == nullptr) {
                return nullptr;
            }
            cJSON* const node = New(cJSON_String);
            node->valuestring = text;
            return node;
        }
        case 't':
            if (Word("true")) {
                cJSON* const node = New(cJSON_True);
                node->valueint = 1;
                return node;
            }
            return nullptr;
        case 'f':
            return Word("false") ? New(cJSON_False) : nullptr;
        case 'n':
            return Word("null") ? New(cJSON_NULL) : nullptr;
        default: {
            double value = 0.0;
            if (!Number(value)) {
                return nullptr;
            }
            cJSON* const node = New(cJSON_Number);
            node->valuedouble = value;
            node->valueint = value >= INT_MAX ? INT_MAX : (value <= INT_MIN ? INT_MIN : static_cast<int>(value));
            return node;
        }
        }
    }

    /// A value that nobody reads: as strict, but no nodes.
    bool Skip(std::size_t depth)
    {
        switch (*position_) {
        case '{':
            return depth < CJSON_NESTING_LIMIT &&
                   Members([] { return nullptr; }, [&](char*) { return Skip(depth + 1); });
        case '[':
            return depth < CJSON_NESTING_LIMIT && Elements([&] { return Skip(depth + 1); });
        case '"':
            return Text() != nullptr;
        case 't':
            return Word("true");
        case 'f':
            return Word("false");
        case 'n':
            return Word("null");
        default: {
            double value = 0.0;
            return Number(value);
        }
        }
    }

    /// Adds nodes to a container.
    class Children {
    public:
        explicit Children(cJSON* parent) : parent_(parent) {}
        bool Add(cJSON* node)
        {
            if (node == nullptr) {
                return false;
            }
            node->prev = last_;
            (last_ != nullptr ? last_->next : parent_->child) = node;
            last_ = node;
            return true;
        }
        /// The first one tells the last, as everywhere in cJSON's trees.
        cJSON* Done()
        {
            if (last_ != nullptr) {
                parent_->child->prev = last_;
            }
            return parent_;
        }

    private:
        cJSON* parent_;
        cJSON* last_ = nullptr;
    };

    cJSON* Object(const Wanted& wanted, std::size_t depth)
    {
        if (depth >= CJSON_NESTING_LIMIT) {
            return nullptr;
        }
        Children children(New(cJSON_Object));
        std::size_t expected = 0; // Index of the member that comes next, if the server keeps the table's order.
        const auto likely = [&] {
            return wanted.of == Wanted::Of::Fields && expected < wanted.table->count
                       ? wanted.table->fields[expected].key
                       : nullptr;
        };
        const bool plain = Members(likely, [&](char* key) {
            Wanted next = wanted;
            if (!WantedOfMember(wanted, key, expected, next)) {
                return Skip(depth + 1);
            }
            cJSON* const node = Value(next, depth + 1);
            if (node != nullptr) {
                node->string = key;
            }
            return children.Add(node);
        });
        return plain ? children.Done() : nullptr;
    }

    cJSON* Array(const Wanted& wanted, std::size_t depth)
    {
        if (depth >= CJSON_NESTING_LIMIT) {
            return nullptr;
        }
        Children children(New(cJSON_Array));
        Wanted next = wanted;
        const bool some = WantedOfElements(wanted, next);
        const bool plain = Elements([&] { return some ? children.Add(Value(next, depth + 1)) : Skip(depth + 1); });
        return plain ? children.Done() : nullptr;
    }

    /// Has `read` read the value behind each key. `likely` tells which key probably comes next, or null.
    template <class Likely, class Read>
    bool Members(const Likely& likely, const Read& read)
    {
        ++position_;
        SkipSpace();
        if (Take('}')) {
            return true;
        }
        do {
            char* const key = Key(likely());
            if (key == nullptr || !Take(':') || !read(key)) {
                return false;
            }
        } while (Take(','));
        return Take('}');
    }

    /// The key that comes next; `likely` itself where it is that.
    char* Key(const char* likely)
    {
        if (*position_ != '"') {
            return nullptr;
        }
        if (likely != nullptr) {
            char* text = position_ + 1;
            const char* same = likely;
            while (*same != '\0' && *text == *same) {
                ++text;
                ++same;
            }
            if (*same == '\0' && *text == '"') {
                position_ = text + 1;
                return const_cast<char*>(likely);
            }
        }
        return Text();
    }

    template <class Read>
    bool Elements(const Read& read)
    {
        ++position_;
        SkipSpace();
        if (Take(']')) {
            return true;
        }
        do {
            if (!read()) {
                return false;
            }
        } while (Take(','));
        return Take(']');
    }

    /// What is wanted of the value behind a key, which becomes the table's own where there is one: that is found again
    /// at once. False when nothing is.
    static bool WantedOfMember(const Wanted& object, char*& key, std::size_t& expected, Wanted& member)
    {
        switch (object.of) {
        case Wanted::Of::Everything:
            return true;
        case Wanted::Of::Fields: {
            const std::size_t index = FindField(*object.table, expected, key);
            if (index == object.table->count) {
                return false;
            }
            const Field& field = object.table->fields[index];
            expected = index + 1;
            key = const_cast<char*>(field.key);
            member = WantedOf(field);
            return true;
        }
        case Wanted::Of::Members:
            for (std::size_t i = 0; i < object.count; ++i) {
                if (std::strcmp(object.members[i].key, key) == 0) {
                    member = object.members[i].wanted;
                    return true;
                }
            }
            return false;
        default:
            return false;
        }
    }

    bool Word(std::string_view word)
    {
        // Behind the text are enough zeros to compare with.
        if (std::memcmp(position_, word.data(), word.size()) != 0) {
            return false;
        }
        position_ += word.size();
        return true;
    }

    bool Digits()
    {
        if (!IsDigit(*position_)) {
            return false;
        }
        while (IsDigit(*position_)) {
            ++position_;
        }
        return true;
    }

    bool Number(double& value)
    {
        constexpr std::ptrdiff_t kExactDigits = 15;
        const char* const start = position_;
        const bool negative = *position_ == '-';
        if (negative) {
            ++position_;
        }
        const char* const digits = position_;
        if (!Digits() || (*digits == '0' && position_ - digits > 1)) {
            return false;
        }
        const bool whole = *position_ != '.' && *position_ != 'e' && *position_ != 'E';
        if (whole && position_ - digits <= kExactDigits) {
            std::int64_t number = 0;
            for (const char* digit = digits; digit < position_; ++digit) {
                number = number * 10 + (*digit - '0');
            }
            const auto magnitude = static_cast<double>(number);
            value = negative ? -magnitude : magnitude;
            return true;
        }
        if (*position_ == '.') {
            ++position_;
            if (!Digits()) {
                return false;
            }
        }
        if (*position_ == 'e' || *position_ == 'E') {
            ++position_;
            if (*position_ == '+' || *position_ == '-') {
                ++position_;
            }
            if (!Digits()) {
                return false;
            }
        }
        if (position_ - start > static_cast<std::ptrdiff_t>(kLongestNumber)) {
            return false;
        }
        const std::from_chars_result result = std::from_chars(start, position_, value);
        return result.ec == std::errc() && result.ptr == position_;
    }

    /// The text in quotation marks, unescaped where it stands, with a 0 behind it.
    char* Text()
    {
        char* const start = ++position_;
        position_ = const_cast<char*>(EndOfPlainText(start));
        char* to = position_;
        while (*position_ != '"') {
            if (*position_ != '\\' || !Unescape(to)) {
                return nullptr; // A control character, or the end.
            }
            const char* const next = EndOfPlainText(position_);
            const auto length = static_cast<std::size_t>(next - position_);
            std::memmove(to, position_, length);
            to += length;
            position_ += length;
        }
        ++position_;
        *to = '\0';
        return start;
    }

    /// Writes what an escape stands for, which is never longer.
    bool Unescape(char*& to)
    {
        const char escape = position_[1];
        position_ += 2;
        switch (escape) {
        case '"':
        case '\\':
        case '/':
            *to++ = escape;
            return true;
        case 'b':
            *to++ = '\b';
            return true;
        case 'f':
            *to++ = '\f';
            return true;
        case 'n':
            *to++ = '\n';
            return true;
        case 'r':
            *to++ = '\r';
            return true;
        case 't':
            *to++ = '\t';
            return true;
        case 'u':
            return UnescapeNumber(to);
        default:
            return false;
        }
    }

    /// The code unit written as four hexadecimal digits.
    bool CodeUnit(std::uint32_t& unit)
    {
        const std::from_chars_result result = std::from_chars(position_, position_ + 4, unit, 16);
        const bool whole = result.ptr == position_ + 4;
        position_ += 4;
        return whole;
    }

    bool UnescapeNumber(char*& to)
    {
        std::uint32_t character = 0;
        if (!CodeUnit(character)) {
            return false;
        }
        if (character >= 0xD800 && character < 0xE000) {
            std::uint32_t low = 0;
            if (character >= 0xDC00 || position_[0] != '\\' || position_[1] != 'u') {
                return false;
            }
            position_ += 2;
            if (!CodeUnit(low) || low < 0xDC00 || low >= 0xE000) {
                return false;
            }
            character = 0x10000 + ((character - 0xD800) << 10) + (low - 0xDC00);
        }
        const auto put = [&](std::uint32_t byte) { *to++ = static_cast<char>(static_cast<unsigned char>(byte)); };
        const auto follow = [&](int shift) { put(0x80 | (character >> shift & 0x3F)); };
        if (character < 0x80) {
            put(character);
        } else if (character < 0x800) {
            put(0xC0 | character >> 6);
            follow(0);
        } else if (character < 0x10000) {
            put(0xE0 | character >> 12);
            follow(6);
            follow(0);
        } else {
            put(0xF0 | character >> 18);
            follow(12);
            follow(6);
            follow(0);
        }
        return true;
    }

    static constexpr std::size_t kChargedAtOnce = 32;

    Arena& arena_;
    char* position_;
    std::size_t charged_ = 0; ///< Nodes that are counted towards the answer and not made yet.
};

} // namespace

const cJSON* ReadPlainJson(Arena& arena, const std::string& text, const Wanted& wanted)
{
    // Keys and texts are unescaped in place and stay there.
    auto* const copy = static_cast<char*>(arena.Allocate(text.size() + kWordBytes));
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    std::memcpy(copy, text.data(), text.size());
    std::memset(copy + text.size(), 0, kWordBytes);
    return Reader(arena, copy).Read(wanted, copy + text.size());
}

} // namespace nexwire::core
