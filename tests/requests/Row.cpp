#include "requests/Row.h"

#include <cctype>
#include <fstream>
#include <stdexcept>

namespace requests {

namespace {

using Error = std::runtime_error;

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

/// Reads a line from left to right.
class Scanner {
public:
    explicit Scanner(std::string text) : text_(std::move(text)) { Skip(); }

    bool AtEnd() const { return at_ == text_.size(); }
    char Next() const { return AtEnd() ? '\0' : text_[at_]; }

    bool Take(const std::string& token)
    {
        if (text_.compare(at_, token.size(), token) != 0) {
            return false;
        }
        at_ += token.size();
        Skip();
        return true;
    }

    /// Up to the next blank, or to one of `ends`.
    std::string Word(const std::string& ends = "")
    {
        const std::size_t begin = at_;
        while (!AtEnd() && !IsBlank(text_[at_]) && ends.find(text_[at_]) == std::string::npos) {
            ++at_;
        }
        const std::string word = text_.substr(begin, at_ - begin);
        Skip();
        return word;
    }

    /// A JSON value where one begins, otherwise a word.
    std::string JsonOrWord()
    {
        // A structure as the program makes it, with some members set.
        if (text_.compare(at_, 4, "new{") == 0) {
            at_ += 3;
            return "new" + JsonOrWord();
        }
        if (Next() != '{' && Next() != '[' && Next() != '"') {
            return Word();
        }
        const std::size_t begin = at_;
        int depth = 0;
        bool quoted = false;
        do {
            const char c = Next();
            if (quoted && c == '\\') {
                ++at_;
            } else if (c == '"') {
                quoted = !quoted;
            } else if (!quoted) {
                depth += c == '{' || c == '[' ? 1 : c == '}' || c == ']' ? -1 : 0;
            }
            ++at_;
            if (at_ > text_.size()) {
                throw Error("JSON without an end: " + text_.substr(begin));
            }
        } while (depth > 0 || quoted);
        const std::string json = text_.substr(begin, at_ - begin);
        if (rapidjson::Document().Parse(json.c_str()).HasParseError()) {
            throw Error("no JSON: " + json);
        }
        Skip();
        return json;
    }

    int Number()
    {
        const std::string word = Word();
        std::size_t read = 0;
        const int number = word.empty() ? 0 : std::stoi(word, &read);
        if (word.empty() || read != word.size()) {
            throw Error("no number: '" + word + "'");
        }
        return number;
    }

    std::string Rest()
    {
        const std::string rest = text_.substr(at_);
        at_ = text_.size();
        return rest;
    }

    /// Key and value with '=' between them.
    std::pair<std::string, std::string> Assignment(bool json = true)
    {
        const std::string name = Word("=");
        if (Next() != '=') {
            throw Error("'" + name + "' without a value");
        }
        ++at_; // Blanks end an empty value.
        return {name, json ? JsonOrWord() : Word()};
    }

private:
    void Skip()
    {
        while (!AtEnd() && IsBlank(text_[at_])) {
            ++at_;
        }
    }

    std::string text_;
    std::size_t at_ = 0;
};

std::vector<Key> ReadKeys(Scanner& scanner, bool& more)
{
    std::vector<Key> keys;
    while (!scanner.AtEnd() && scanner.Next() != ')') {
        if (scanner.Take("...")) {
            more = true;
            break;
        }
        Key key{scanner.Word("()"), {}};
        if (key.name.empty()) {
            throw Error("a bracket without a key");
        }
        if (scanner.Take("(")) {
            key.inside = ReadKeys(scanner, more);
            if (!scanner.Take(")")) {
                throw Error("a bracket without an end");
            }
        }
        keys.push_back(std::move(key));
    }
    return keys;
}

Form ReadForm(Scanner& scanner)
{
    Form form;
    if (scanner.Take("text ")) {
        form.kind = Form::Kind::Text;
        form.text = scanner.Rest();
    } else if (scanner.Next() == '{' || scanner.Next() == '[') {
        form.kind = Form::Kind::Literal;
        form.text = scanner.JsonOrWord();
    } else {
        form.kind = Form::Kind::Keys;
        form.root = scanner.Word(":");
        scanner.Take(":");
        form.keys = ReadKeys(scanner, form.more);
        form.named = !form.keys.empty();
        if (form.root.empty()) {
            throw Error("a form without a root");
        }
    }
    return form;
}

Step ReadStep(Scanner& scanner)
{
    Step step;
    step.method = scanner.Number();
    step.path = scanner.Word();
    if (scanner.Next() == '{') {
        step.body = scanner.JsonOrWord();
    }
    if (scanner.Take("answer ")) {
        step.data = scanner.JsonOrWord();
    }
    return step;
}

void ReadTarget(Scanner& scanner, Row& row)
{
    static const std::map<std::string, Route> routes = {{"device", Route::Dag},      {"batch", Route::Batch},
                                                        {"kestrel", Route::Kestrel}, {"netsdk", Route::Netsdk},
                                                        {"POST", Route::Wall},       {"nothing", Route::Nothing}};
    row.method = 2;
    if (std::isdigit(static_cast<unsigned char>(scanner.Next())) != 0) {
        row.method = scanner.Number();
        row.path = scanner.Word();
        return;
    }
    std::string word = scanner.Word();
    const std::size_t internal = word.find("-internal");
    row.internal = internal != std::string::npos;
    const auto route = routes.find(word.substr(0, internal));
    if (route == routes.end()) {
        throw Error("unknown target '" + word + "'");
    }
    row.route = route->second;
    if (row.route == Route::Wall) {
        row.path = scanner.Word();
    } else if (row.route == Route::Kestrel) {
        row.request = scanner.Next() == '"' ? Parsed(scanner.JsonOrWord()).GetString() : scanner.Rest() + "\r\n";
    } else if (row.route != Route::Nothing) {
        row.command = scanner.Number();
    }
}

Row ReadFirstLine(const std::string& text)
{
    Row row;
    Scanner scanner(text);
    row.function = scanner.Word();
    const auto give = [&] {
        if (!row.arguments.insert(scanner.Assignment()).second) {
            throw Error("an argument is given twice");
        }
    };
    while (!scanner.Take("->")) {
        if (scanner.AtEnd()) {
            throw Error("no '->'");
        }
        give();
    }
    ReadTarget(scanner, row);
    while (!scanner.AtEnd()) {
        give();
    }
    return row;
}

void ReadLine(const std::string& text, Row& row)
{
    Scanner scanner(text);
    const std::string name = scanner.Word();
    const std::map<std::string, Form*> forms = {
        {"body", &row.body}, {"in", &row.in}, {"answer", &row.answer}, {"out", &row.out}};
    const std::map<std::string, bool*> flags = {
        {"judged", &row.judged}, {"unread", &row.unread}, {"failure", &row.failure}, {"tolerant", &row.tolerant}};
    const std::map<std::string, std::map<std::string, std::string>*> maps = {{"header", &row.headers},
                                                                             {"param", &row.params},
                                                                             {"field", &row.fields},
                                                                             {"gives", &row.gives},
                                                                             {"appends", &row.appends}};
    const std::map<std::string, std::string*> words = {
        {"code", &row.code}, {"error", &row.error}, {"long", &row.longKey}};
    const std::map<std::string, std::string*> texts = {{"condition", &row.condition},
                                                       {"status", &row.status},
                                                       {"otherwise", &row.otherwise},
                                                       {"success", &row.success}};
    if (const auto form = forms.find(name); form != forms.end()) {
        if (form->second->kind != Form::Kind::None) {
            throw Error("a second '" + name + "'");
        }
        *form->second = ReadForm(scanner);
    } else if (const auto flag = flags.find(name); flag != flags.end()) {
        *flag->second = true;
    } else if (const auto map = maps.find(name); map != maps.end()) {
        const auto entry = scanner.Assignment();
        // A header field's value may hold blanks.
        const std::string rest = scanner.Rest();
        map->second->insert({entry.first, entry.second + (rest.empty() ? "" : " " + rest)});
    } else if (const auto word = words.find(name); word != words.end()) {
        *word->second = scanner.Word();
    } else if (const auto whole = texts.find(name); whole != texts.end()) {
        *whole->second = scanner.Rest();
    } else if (name == "logs") {
        row.logs = scanner.Word();
        while (!scanner.AtEnd()) {
            row.misnamed.insert(scanner.Assignment(false));
        }
    } else if (name == "also") {
        row.also.push_back(scanner.Rest());
    } else if (name == "timeout") {
        row.timeoutMs = scanner.Number();
    } else if (name == "first" || name == "then") {
        (name == "first" ? row.first : row.then).push_back(ReadStep(scanner));
    } else if (name == "raw") {
        row.hasRaw = true;
        row.raw = scanner.Rest();
    } else if (name == "returns") {
        row.hasReturns = true;
        row.returns = scanner.Rest();
    } else if (name == "alone") {
        row.alone = true;
        if (scanner.Rest().empty()) {
            throw Error("'alone' without a reason");
        }
    } else {
        throw Error("unknown line '" + name + "'");
    }
    if (!scanner.AtEnd()) {
        throw Error("'" + scanner.Rest() + "' is too much after '" + name + "'");
    }
}

/// The identifier rule of devices: at most 32 characters, longer ones by their serial part, shorter ones filled up.
std::string In32(const std::string& id)
{
    const std::string serial = id.size() > 32 ? id.substr(id.size() - 10) : id;
    return serial + std::string(32 - serial.size(), '$');
}

std::string Replaced(const std::string& text, const std::string& id, const std::string& in32)
{
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '*') {
            result += text[at];
        } else if (text.compare(at, 2, "*$") == 0) {
            result += in32;
            ++at;
        } else {
            result += id;
        }
    }
    return result;
}

std::string Inside(const std::string& quoted)
{
    return quoted.substr(1, quoted.size() - 2);
}

} // namespace

std::string With(const std::string& text, const std::string& id)
{
    return Replaced(text, id, In32(id));
}

std::string WithInJson(const std::string& json, const std::string& id)
{
    return Replaced(json, Inside(Quoted(id)), Inside(Quoted(In32(id))));
}

Rows ReadRows(const std::string& file)
{
    Rows result;
    std::ifstream stream(file);
    /// Lines with what continues them.
    std::vector<std::pair<int, std::string>> lines;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        const std::size_t begin = line.find_first_not_of(" \t");
        if (begin == std::string::npos || line[begin] == '#') {
            continue;
        }
        if (begin >= 8 && !lines.empty()) {
            lines.back().second += " " + line.substr(begin);
        } else {
            lines.emplace_back(number, line);
        }
    }
    for (const auto& [number, text] : lines) {
        try {
            if (!IsBlank(text[0])) {
                result.rows.push_back(ReadFirstLine(text));
                result.rows.back().file = file;
                result.rows.back().line = number;
            } else if (result.rows.empty()) {
                throw Error("a line without a row");
            } else {
                ReadLine(text, result.rows.back());
            }
        } catch (const std::exception& error) {
            result.errors.push_back(file + ":" + std::to_string(number) + ": " + error.what());
        }
    }
    return result;
}

} // namespace requests
