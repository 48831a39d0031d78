#include "core/JsonReader.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "core/PlainText.h"

#if defined(__GNUC__)
#define NEXWIRE_CALLED __attribute__((noinline))
#else
#define NEXWIRE_CALLED
#endif

namespace nexwire::core {
namespace {

using What = TapeEntry::What;

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
        return Wanted(field.kind == Kind::Struct ? Wanted::Of::Fields : Wanted::Of::Elements, field.ops->fields);
    case Kind::TextList:
    case Kind::IntList:
        return Wanted(Wanted::Of::Elements);
    default:
        return kItself;
    }
}

/// What is wanted of each element of an array; false when nothing is.
bool WantedOfElements(Wanted array, Wanted& element)
{
    if (array.of() == Wanted::Of::Everything) {
        element = array;
        return true;
    }
    element = array.table() != nullptr ? Wanted(Wanted::Of::Fields, array.table()) : kItself;
    return array.of() == Wanted::Of::Elements;
}

/// Tells of the members of one object which are wanted, each once: the first of two equal keys wins.
class MemberChoice {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    explicit MemberChoice(Wanted object) : object_(object) {}

    /// The key that comes next, if the server keeps the table's order; without data when nobody can say.
    std::string_view Likely() const
    {
        if (object_.of() == Wanted::Of::Fields) {
            return expected_ < object_.table()->count ? object_.table()->fields[expected_].Key() : std::string_view();
        }
        return expected_ < object_.size() ? object_.begin()[expected_].key : std::string_view();
    }

    /// Which of the wanted members has that key; `likely` tells that it is the likely one.
    std::size_t Take(std::string_view key, bool likely)
    {
        std::size_t index = expected_;
        if (!likely) {
            index = Find(object_, expected_, key);
            if (index == kNone) {
                return kNone;
            }
        }
        expected_ = index + 1;
        std::uint64_t& taken = taken_[index / 64];
        const std::uint64_t bit = std::uint64_t{1} << (index % 64);
        const bool first = (taken & bit) == 0;
        taken |= bit;
        return first ? index : kNone;
    }

    /// What is wanted of that member.
    Wanted Of(std::size_t index) const
    {
        return object_.of() == Wanted::Of::Fields ? WantedOf(object_.table()->fields[index])
                                                  : object_.begin()[index].wanted;
    }

private:
    /// A call, and by value, so that all the rest stays in registers.
    NEXWIRE_CALLED static std::size_t Find(Wanted object, std::size_t expected, std::string_view key)
    {
        if (object.of() == Wanted::Of::Fields) {
            const std::size_t index = FindField(*object.table(), expected, key);
            return index == object.table()->count ? kNone : index;
        }
        for (std::size_t index = 0; index < object.size(); ++index) {
            if (key == object.begin()[index].key) {
                return index;
            }
        }
        return kNone;
    }

    const Wanted object_;
    std::size_t expected_ = 0;
    std::uint64_t taken_[2] = {0, 0};
};

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Reads a text. Each step leaves the position behind what it read, and gives up at whatever is not plain.
class Reader {
public:
    Reader(Arena& arena, const std::string& text)
        : arena_(arena), tape_(arena), position_(text.data()), end_(text.data() + text.size())
    {
    }

    /// False when the value is not plain, or something is left behind it.
    bool Read(Wanted wanted)
    {
        SkipSpace();
        if (!Value(wanted, 0, 0)) {
            return false;
        }
        SkipSpace();
        return position_ == end_;
    }
    const TapeEntry* First() const { return tape_.First(); }

private:
    // Behind the text stands a 0, where every step ends that looks for something else.

    void SkipSpace()
    {
        while (*position_ == ' ' || *position_ == '\n' || *position_ == '\r' || *position_ == '\t') {
            ++position_;
        }
    }

    /// Whether that character comes next, behind space; if so, the position is behind it and the space that follows.
    bool Take(char expected)
    {
        if (*position_ != expected) {
            SkipSpace();
            if (*position_ != expected) {
                return false;
            }
        }
        ++position_;
        SkipSpace();
        return true;
    }

    /// Texts, which most values are, without a call.
    bool Value(Wanted wanted, std::size_t index, std::size_t depth)
    {
        if (*position_ != '"') {
            return ValueButText(wanted, index, depth);
        }
        return TextValue(index);
    }

    bool TextValue(std::size_t index)
    {
        std::string_view text;
        if (!Text(text)) {
            return false;
        }
        tape_.Add(What::Text, index).SetText(text);
        return true;
    }

    bool ValueButText(Wanted wanted, std::size_t index, std::size_t depth)
    {
        switch (*position_) {
        case '{':
            return Object(wanted, index, depth);
        case '[':
            return Array(wanted, index, depth);
        case 't':
            return Word("true", What::True, index);
        case 'f':
            return Word("false", What::False, index);
        case 'n':
            return Word("null", What::Null, index);
        default: {
            double value = 0.0;
            if (!Number(value)) {
                return false;
            }
            tape_.Add(What::Number, index).SetNumber(value);
            return true;
        }
        }
    }

    /// A value that nobody reads: as strict, but no entries.
    bool Skip(std::size_t depth)
    {
        switch (*position_) {
        case '{':
            return depth < CJSON_NESTING_LIMIT &&
                   Members([] { return std::string_view(); }, [&](std::string_view, bool) { return Skip(depth + 1); });
        case '[':
            return depth < CJSON_NESTING_LIMIT && Elements([&] { return Skip(depth + 1); });
        case '"': {
            const Arena::Mark mark = arena_.Position();
            std::string_view text;
            const bool plain = Text(text);
            arena_.GoBack(mark);
            return plain;
        }
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

    bool Object(Wanted wanted, std::size_t index, std::size_t depth)
    {
        if (depth >= CJSON_NESTING_LIMIT) {
            return false;
        }
        const bool keyed = wanted.of() == Wanted::Of::Everything;
        TapeEntry& object = tape_.Add(keyed ? What::KeyedObject : What::Object, index);
        MemberChoice choice(wanted);
        std::size_t count = 0;
        const auto read = [&](std::string_view key, bool likely) {
            if (keyed) {
                tape_.Add(What::Text, 0).SetText(key);
                ++count;
                return Value(wanted, 0, depth + 1);
            }
            const std::size_t which = choice.Take(key, likely);
            if (which == MemberChoice::kNone) {
                return Skip(depth + 1);
            }
            ++count;
            // Of a text nobody has to be asked what is wanted.
            return *position_ == '"' ? TextValue(which) : ValueButText(choice.Of(which), which, depth + 1);
        };
        if (!Members([&] { return choice.Likely(); }, read)) {
            return false;
        }
        object.SetSize(count);
        return true;
    }

    bool Array(Wanted wanted, std::size_t index, std::size_t depth)
    {
        if (depth >= CJSON_NESTING_LIMIT) {
            return false;
        }
        TapeEntry& array = tape_.Add(What::Array, index);
        Wanted element = wanted;
        std::size_t count = 0;
        if (!WantedOfElements(wanted, element)) {
            return Elements([&] { return Skip(depth + 1); });
        }
        const auto read = [&] {
            ++count;
            return Value(element, 0, depth + 1);
        };
        if (!Elements(read)) {
            return false;
        }
        array.SetSize(count);
        return true;
    }

    /// Has `read` read the value behind each key, and tells whether that was the likely one. `likely` tells which key
    /// probably comes next, if any.
    template <class Likely, class Read>
    bool Members(const Likely& likely, const Read& read)
    {
        ++position_;
        SkipSpace();
        if (Take('}')) {
            return true;
        }
        do {
            std::string_view key = likely();
            const bool asLikely = IsKey(key);
            if ((!asLikely && !Key(key)) || !Take(':') || !read(key, asLikely)) {
                return false;
            }
        } while (Take(','));
        return Take('}');
    }

    /// Whether that key comes next; if so, the position is behind it.
    bool IsKey(std::string_view key)
    {
        const char* const text = position_ + 1;
        if (key.data() == nullptr || *position_ != '"' || end_ - text <= static_cast<std::ptrdiff_t>(key.size()) ||
            text[key.size()] != '"' || !IsSameKey(key, text)) {
            return false;
        }
        position_ = text + key.size() + 1;
        return true;
    }

    bool Key(std::string_view& key) { return *position_ == '"' && Text(key); }

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

    bool Word(std::string_view word)
    {
        if (static_cast<std::size_t>(end_ - position_) < word.size() ||
            std::memcmp(position_, word.data(), word.size()) != 0) {
            return false;
        }
        position_ += word.size();
        return true;
    }

    bool Word(std::string_view word, What what, std::size_t index)
    {
        if (!Word(word)) {
            return false;
        }
        tape_.Add(what, index);
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

    /// The text in quotation marks, up to a NUL in it.
    bool Text(std::string_view& text)
    {
        const char* const start = ++position_;
        position_ = EndOfPlainText(start, end_);
        if (*position_ == '"') {
            text = std::string_view(start, static_cast<std::size_t>(position_ - start));
            ++position_;
            return true;
        }
        return *position_ == '\\' && Unescape(start, text);
    }

    /// The text that begins there and has its first escape at the position. Unescaped it is never longer.
    bool Unescape(const char* start, std::string_view& text)
    {
        const char* last = position_;
        while (*last == '\\' && last[1] != '\0') {
            last = EndOfPlainText(last + 2, end_);
        }
        if (*last != '"') {
            return false; // A control character, or the end.
        }
        auto* const unescaped = static_cast<char*>(arena_.Obtain(static_cast<std::size_t>(last - start)));
        char* to = unescaped;
        const auto copy = [&](const char* from, const char* end) {
            const auto length = static_cast<std::size_t>(end - from);
            std::memcpy(to, from, length);
            to += length;
        };
        copy(start, position_);
        while (*position_ != '"') {
            if (!Escape(to)) {
                return false;
            }
            const char* const from = position_;
            position_ = EndOfPlainText(from, end_);
            copy(from, position_);
        }
        ++position_;
        text = std::string_view(unescaped, static_cast<std::size_t>(std::find(unescaped, to, '\0') - unescaped));
        return true;
    }

    /// Writes what an escape stands for.
    bool Escape(char*& to)
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
            return EscapedNumber(to);
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

    bool EscapedNumber(char*& to)
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

    Arena& arena_;
    Tape tape_;
    const char* position_;
    const char* const end_;
};

/// Lays the value of a tree onto a tape.
void Lay(Tape& tape, const cJSON& node, Wanted wanted, std::size_t index)
{
    if (wanted.of() == Wanted::Of::Everything) {
        tape.Add(What::Tree, index).SetTree(&node);
        return;
    }
    std::size_t count = 0;
    switch (node.type & 0xFF) {
    case cJSON_Array: {
        TapeEntry& array = tape.Add(What::Array, index);
        Wanted element = wanted;
        if (WantedOfElements(wanted, element)) {
            for (const cJSON* child = node.child; child != nullptr; child = child->next, ++count) {
                Lay(tape, *child, element, 0);
            }
            array.SetSize(count);
        }
        break;
    }
    case cJSON_Object: {
        TapeEntry& object = tape.Add(What::Object, index);
        MemberChoice choice(wanted);
        for (const cJSON* child = node.child; child != nullptr; child = child->next) {
            const std::size_t which =
                child->string != nullptr ? choice.Take(child->string, false) : MemberChoice::kNone;
            if (which != MemberChoice::kNone) {
                Lay(tape, *child, choice.Of(which), which);
                ++count;
            }
        }
        object.SetSize(count);
        break;
    }
    case cJSON_String:
        if (node.valuestring != nullptr) {
            tape.Add(What::Text, index).SetText(node.valuestring);
        } else {
            tape.Add(What::Null, index);
        }
        break;
    case cJSON_Number:
        tape.Add(What::Number, index).SetNumber(node.valuedouble);
        break;
    case cJSON_True:
        tape.Add(What::True, index);
        break;
    case cJSON_False:
        tape.Add(What::False, index);
        break;
    default:
        tape.Add(What::Null, index);
        break;
    }
}

} // namespace

const TapeEntry* ReadPlainJson(Arena& arena, const std::string& text, Wanted wanted)
{
    Reader reader(arena, text);
    return reader.Read(wanted) ? reader.First() : nullptr;
}

const TapeEntry* ReadTree(Arena& arena, const cJSON& root, Wanted wanted)
{
    Tape tape(arena);
    Lay(tape, root, wanted, 0);
    return tape.First();
}

} // namespace nexwire::core
