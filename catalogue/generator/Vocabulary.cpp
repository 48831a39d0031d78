#include "catalogue/generator/Vocabulary.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <regex>
#include <stdexcept>

#include "catalogue/generator/Tokens.h"

namespace generator {
namespace {

/// Where the piece that begins at `at` ends: at a sign of `ends` that stands outside quotes and brackets, a full stop
/// only at the end of its sentence.
std::size_t EndOf(const std::string& text, std::size_t at, const std::string& ends)
{
    bool quoted = false;
    int depth = 0;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        quoted = c == '"' ? !quoted : quoted;
        depth += quoted ? 0 : c == '(' ? 1 : c == ')' ? -1 : 0;
        const bool insideNumber =
            (c == '.' || c == ',') && at + 1 < text.size() && text[at + 1] != ' ' && text[at + 1] != '\n';
        if (!quoted && depth <= 0 && !insideNumber && ends.find(c) != std::string::npos) {
            break;
        }
    }
    return at;
}

std::vector<std::string> Pieces(const std::string& text, const std::string& ends)
{
    std::vector<std::string> pieces;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = EndOf(text, at, ends);
        pieces.push_back(Trimmed(text.substr(at, end - at)));
        at = end + 1;
    }
    return pieces;
}

Vocabulary::Choice ReadChoice(const std::string& text, bool& number)
{
    number = false;
    if (!text.empty() && text[0] == '"') {
        const std::size_t close = text.find('"', 1);
        if (close != std::string::npos) {
            return {text.substr(1, close - 1), Trimmed(text.substr(close + 1))};
        }
    }
    static const std::regex form("(-?[0-9]+)(?: +(.*))?");
    std::smatch match;
    if (!std::regex_match(text, match, form)) {
        throw std::runtime_error("'" + text + "' is no value: a text in double quotes or a number");
    }
    number = true;
    return {match[1], match[2]};
}

/// Takes "One of: ..." or "For example: ..." out of the comment.
bool TakeValues(std::string& comment, const std::string& form, Vocabulary& vocabulary)
{
    const std::string start = form + ":";
    std::size_t at = comment.find(start);
    if (at == std::string::npos) {
        std::string small = start;
        small[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(small[0])));
        at = comment.find(small);
    }
    if (at == std::string::npos) {
        return false;
    }
    const std::size_t begin = at + start.size();
    const std::size_t end = EndOf(comment, begin, ".;");
    bool numbers = false;
    for (const std::string& piece : Pieces(comment.substr(begin, end - begin), ",")) {
        // What a value means may have commas of its own.
        const bool goesOn =
            !vocabulary.values.empty() && !piece.empty() && std::isalpha(static_cast<unsigned char>(piece[0])) != 0;
        if (goesOn) {
            vocabulary.values.back().means += ", " + piece;
            continue;
        }
        bool number = false;
        vocabulary.values.push_back(ReadChoice(piece, number));
        if (vocabulary.values.size() > 1 && number != numbers) {
            throw std::runtime_error("texts and numbers stand in one list of values");
        }
        numbers = number;
    }
    if (vocabulary.values.empty()) {
        throw std::runtime_error("'" + start + "' without values");
    }
    vocabulary.numbers = numbers;
    comment.erase(at, std::min(end + 1, comment.size()) - at);
    return true;
}

std::string ShortUnit(const std::string& unit)
{
    static const std::map<std::string, std::string> known = {
        {"milliseconds", "ms"}, {"seconds", "s"}, {"second", "s"}, {"minutes", "min"}, {"minute", "min"},
        {"hours", "h"},         {"hour", "h"},    {"days", "d"},   {"day", "d"},       {"per cent", "%"}};
    const auto found = known.find(unit);
    return found == known.end() ? unit : found->second;
}

bool IsLength(const std::string& unit)
{
    return unit == "characters" || unit == "digits" || unit == "bytes" || unit == "character" || unit == "digit";
}

bool IsCount(const std::string& unit)
{
    return unit == "elements" || unit == "element";
}

void SetRange(Vocabulary& vocabulary, const Vocabulary::Bound& from, const Vocabulary::Bound& to,
              const std::string& unit)
{
    if (from.set && to.set && to.value < from.value) {
        throw std::runtime_error("the range ends below its beginning");
    }
    if (IsLength(unit)) {
        vocabulary.minLength = from;
        vocabulary.maxLength = to;
    } else if (IsCount(unit)) {
        vocabulary.minItems = from;
        vocabulary.maxItems = to;
    } else {
        vocabulary.minimum = from;
        vocabulary.maximum = to;
        vocabulary.unit = unit.empty() ? vocabulary.unit : ShortUnit(unit);
    }
}

Vocabulary::Bound BoundOf(const std::string& digits)
{
    try {
        return {true, std::stoll(digits)};
    } catch (const std::exception&) {
        throw std::runtime_error("'" + digits + "' is too large a number");
    }
}

/// One clause, with a small first letter.
void TakeClause(const std::string& clause, Vocabulary& vocabulary)
{
    // A unit is a word or "per cent". Everything else is prose.
    static const std::string unit = "(?: +(per cent|[^ 0-9\"]+))?";
    static const std::regex range("(?:from )?(-?[0-9]+) to (-?[0-9]+)" + unit);
    static const std::regex from("from (-?[0-9]+)" + unit);
    static const std::regex upTo("up to (-?[0-9]+)" + unit);
    static const std::regex exact("([0-9]+) (characters|character|digits|digit|bytes|elements|element)");
    static const std::regex also("(-?[0-9]+)(?:: .*| for .*)");
    static const std::regex empty("empty(?:[: ].*)?");
    static const std::regex onlyUnit("milliseconds|seconds|minutes|hours|days|per cent");
    std::smatch match;
    if (std::regex_match(clause, match, range)) {
        SetRange(vocabulary, BoundOf(match[1]), BoundOf(match[2]), match[3]);
    } else if (std::regex_match(clause, match, from)) {
        SetRange(vocabulary, BoundOf(match[1]), {}, match[2]);
    } else if (std::regex_match(clause, match, upTo)) {
        SetRange(vocabulary, {}, BoundOf(match[1]), match[2]);
    } else if (std::regex_match(clause, match, exact)) {
        SetRange(vocabulary, BoundOf(match[1]), BoundOf(match[1]), match[2]);
    } else if (std::regex_match(clause, match, also)) {
        vocabulary.also.push_back(BoundOf(match[1]).value);
    } else if (std::regex_match(clause, empty)) {
        vocabulary.empty = true;
    } else if (clause == "required") {
        vocabulary.required = true;
    } else if (clause == "read only") {
        vocabulary.readOnly = true;
    } else if (std::regex_match(clause, onlyUnit)) {
        vocabulary.unit = ShortUnit(clause);
    }
}

} // namespace

bool Vocabulary::Any() const
{
    return !values.empty() || minimum.set || maximum.set || minLength.set || maxLength.set || minItems.set ||
           maxItems.set || empty || required || readOnly || !unit.empty();
}

Vocabulary ReadVocabulary(const std::string& comment)
{
    Vocabulary vocabulary;
    std::string rest = comment;
    vocabulary.closed = TakeValues(rest, "One of", vocabulary);
    if (!vocabulary.closed) {
        TakeValues(rest, "For example", vocabulary);
    }
    for (std::string clause : Pieces(rest, ".;,\n")) {
        if (clause.compare(0, 3, "or ") == 0) {
            clause.erase(0, 3);
        }
        if (!clause.empty()) {
            clause[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(clause[0])));
        }
        TakeClause(clause, vocabulary);
        // "1 Monday to 7 Sunday: 1 to 7" says the range behind the colon.
        const std::size_t colon = clause.find(": ");
        if (colon != std::string::npos) {
            TakeClause(clause.substr(colon + 2), vocabulary);
        }
    }
    // Without a bound to stand outside of, these are prose.
    if (!vocabulary.minimum.set && !vocabulary.maximum.set) {
        vocabulary.also.clear();
    }
    if (!vocabulary.minLength.set && (vocabulary.values.empty() || vocabulary.numbers)) {
        vocabulary.empty = false;
    }
    return vocabulary;
}

} // namespace generator
