#include "catalogue/generator/Header.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace generator {
namespace {

using Tokens = std::vector<Token>;

bool Is(const Token& token, const char* text)
{
    return (token.kind == Token::Word || token.kind == Token::Sign) && token.text == text;
}

/// Joins the lines of a comment to paragraphs; a line that begins with "@" begins one.
void AppendLine(std::string& doc, const std::string& text)
{
    if (text.empty()) {
        doc += doc.empty() || doc.back() == '\n' ? "" : "\n";
        return;
    }
    const std::size_t mark = text.find("@param");
    if (mark != std::string::npos && mark > 0) {
        AppendLine(doc, Trimmed(text.substr(0, mark)));
        AppendLine(doc, text.substr(mark));
        return;
    }
    if (!doc.empty() && doc.back() != '\n') {
        doc += text[0] == '@' ? '\n' : ' ';
    }
    doc += text;
}

/// Tokens as code: blanks between words, behind commas and behind what ends a type.
std::string Written(Tokens::const_iterator begin, Tokens::const_iterator end)
{
    std::string text;
    for (auto token = begin; token != end; ++token) {
        const bool word = token->kind == Token::Word || token->kind == Token::Literal;
        const char last = text.empty() ? '(' : text.back();
        const bool afterWord = std::isalnum(static_cast<unsigned char>(last)) != 0 || last == '_';
        if (last == ',' || (word && (afterWord || last == '>' || last == '&' || last == '*'))) {
            text += ' ';
        }
        text += token->text;
    }
    return text;
}

/// Whether the comment in front of the first function speaks of the second, too, which stands right behind it: of a
/// getter and its setter, of things done alike. "Adds ..." says nothing about the deletion below it.
bool Share(const std::string& first, const std::string& second)
{
    const auto verb = [](const std::string& name) {
        return name.substr(0,
                           static_cast<std::size_t>(std::find_if(name.begin(), name.end(),
                                                                 [](unsigned char c) { return std::islower(c) == 0; }) -
                                                    name.begin()));
    };
    const auto reads = [](const std::string& word) { return word == "get" || word == "set"; };
    return verb(first) == verb(second) || (reads(verb(first)) && reads(verb(second)));
}

class Reader {
public:
    Reader(const std::string& file, const std::string& text) : tokens_(Split(file, text)) { header_.file = file; }

    Header Run()
    {
        while (Now().kind != Token::End) {
            TakeOutside();
        }
        return std::move(header_);
    }

private:
    const Token& Now() const { return tokens_[at_]; }
    const Token& Next() const { return tokens_[std::min(at_ + 1, tokens_.size() - 1)]; }

    [[noreturn]] void Fail(int line, const std::string& reason) const { throw Unreadable(header_.file, line, reason); }

    void Expect(const char* sign)
    {
        SkipComments();
        if (!Is(Now(), sign)) {
            Fail(Now().line, std::string("'") + sign + "' expected before '" + Now().text + "'");
        }
        ++at_;
    }

    void SkipComments()
    {
        while (Now().kind >= Token::Doc && Now().kind <= Token::Blank) {
            ++at_;
        }
    }

    void Forget()
    {
        doc_.clear();
        sharer_.clear();
    }

    /// A comment or an empty line. False when there is none.
    bool TakeComment()
    {
        const Token token = Now();
        if (token.kind != Token::Doc) {
            inDoc_ = false;
        }
        switch (token.kind) {
        case Token::Doc:
            if (!inDoc_) {
                Forget();
            }
            inDoc_ = true;
            AppendLine(doc_, token.text);
            break;
        case Token::DocBehind:
            if (lastMember_ != nullptr) {
                AppendLine(lastMember_->doc, token.text);
            }
            break;
        case Token::Remark:
            if (!begun_) {
                AppendLine(header_.remark, token.text);
            } else if (token.text.compare(0, 4, "----") == 0 && token.text.size() > 8) {
                section_ = Trimmed(token.text.substr(4, token.text.rfind("----") - 4));
            }
            break;
        case Token::Blank:
            Forget();
            break;
        default:
            return false;
        }
        ++at_;
        return true;
    }

    std::string Qualified(const std::string& name) const
    {
        std::string all;
        for (const std::string& part : space_) {
            all += part.empty() ? "" : part + "::";
        }
        return all + name;
    }

    /// Outside of classes.
    void TakeOutside()
    {
        if (TakeComment()) {
            return;
        }
        if (Is(Now(), "namespace")) {
            ++at_;
            std::string name;
            for (; !Is(Now(), "{") && Now().kind != Token::End; ++at_) {
                name += Now().text;
            }
            Expect("{");
            begun_ = true;
            space_.push_back(name);
            Forget();
        } else if (Is(Now(), "}")) {
            if (space_.empty()) {
                Fail(Now().line, "'}' closes nothing");
            }
            space_.pop_back();
            ++at_;
        } else if (Is(Now(), "class") || Is(Now(), "struct")) {
            TakeType();
        } else {
            TakeFreeDeclaration();
        }
    }

    void TakeFreeDeclaration()
    {
        const bool exported = Is(Now(), "NEXWIRE_API");
        const Tokens statement = TakeStatement();
        const auto open = std::find_if(statement.begin(), statement.end(), [](const Token& t) { return Is(t, "("); });
        if (exported && open != statement.end() && open != statement.begin()) {
            header_.exportedFunctions.push_back(Qualified((open - 1)->text));
        }
        Forget();
    }

    /// Everything up to the semicolon, or up to the end of a body, without comments.
    Tokens TakeStatement()
    {
        Tokens statement;
        const int line = Now().line;
        for (int depth = 0;; ++at_) {
            if (Now().kind == Token::End) {
                Fail(line, "a declaration without end");
            }
            if (Now().kind >= Token::Doc && Now().kind <= Token::Blank) {
                continue;
            }
            if (depth == 0 && Is(Now(), ";")) {
                ++at_;
                return statement;
            }
            depth += Is(Now(), "{") || Is(Now(), "(") ? 1 : Is(Now(), "}") || Is(Now(), ")") ? -1 : 0;
            statement.push_back(Now());
            // The body of a function ends it; what stands in braces behind a type's name or a member's does not.
            if (depth == 0 && Is(Now(), "}") && HasBody(statement) && !Is(Next(), "{") && !Is(Next(), ",")) {
                ++at_;
                return statement;
            }
        }
    }

    static bool HasBody(const Tokens& statement)
    {
        const auto sign =
            std::find_if(statement.begin(), statement.end(), [](const Token& t) { return Is(t, "(") || Is(t, "{"); });
        const bool keyword = Is(statement.front(), "enum") || Is(statement.front(), "using");
        return sign != statement.end() && Is(*sign, "(") && !keyword;
    }

    static bool IsDefinedElsewhere(const Tokens& statement)
    {
        static const std::set<std::string> here = {"}", "default", "delete"};
        return HasBrackets(statement) && here.count(statement.back().text) == 0 && !Is(statement.front(), "using") &&
               !Is(statement.front(), "friend");
    }

    /// Whether it is a function: its brackets come before any value.
    static bool HasBrackets(const Tokens& statement)
    {
        const auto sign = std::find_if(statement.begin(), statement.end(),
                                       [](const Token& t) { return Is(t, "(") || Is(t, "{") || Is(t, "="); });
        return sign != statement.end() && Is(*sign, "(");
    }

    void TakeType()
    {
        const bool isClass = Is(Now(), "class");
        const int line = Now().line;
        ++at_;
        Type type;
        if (Is(Now(), "NEXWIRE_API")) {
            type.exported = true;
            ++at_;
        }
        std::string name;
        for (; Now().kind == Token::Word || Is(Now(), "::"); ++at_) {
            if (!Is(Now(), "final")) {
                name += Now().text;
            }
        }
        type.name = Qualified(name);
        if (Is(Now(), ":")) {
            type.derived = true;
            while (!Is(Now(), "{") && Now().kind != Token::End) {
                ++at_;
            }
        }
        if (!Is(Now(), "{")) { // Declared only, or the type of something.
            TakeStatement();
            Forget();
            return;
        }
        ++at_;
        type.doc = Trimmed(doc_);
        Forget();
        section_.clear();
        TakeBody(type, name, isClass);
        if (Now().kind == Token::End) {
            Fail(line, name + " has no end");
        }
        Expect("}");
        Expect(";");
        lastMember_ = nullptr;
        for (Member& member : type.members) {
            member.doc = Trimmed(member.doc);
            try {
                member.vocabulary = ReadVocabulary(member.doc);
            } catch (const std::runtime_error& problem) {
                Fail(member.line, name + "::" + member.name + ": " + problem.what());
            }
        }
        header_.types.push_back(std::move(type));
        Forget();
    }

    void TakeBody(Type& type, const std::string& name, bool isClass)
    {
        bool seen = !isClass;
        while (!Is(Now(), "}") && Now().kind != Token::End) {
            if (TakeComment()) {
                continue;
            }
            const Token& token = Now();
            if ((token.text == "public" || token.text == "private" || token.text == "protected") && Is(Next(), ":")) {
                seen = token.text == "public";
                at_ += 2;
                Forget();
            } else if (Is(token, "NEXWIRE_JSON") || Is(token, "ABACUS_PART") || Is(token, "ABACUS_DOCUMENT")) {
                type.compiled = true;
                ++at_;
            } else if (Is(token, "class") || Is(token, "struct")) {
                space_.push_back(name);
                TakeType();
                space_.pop_back();
            } else {
                const int line = token.line;
                const Tokens statement = TakeStatement();
                type.compiled = type.compiled || IsDefinedElsewhere(statement);
                if (seen && !statement.empty()) {
                    TakeDeclaration(type, name, statement, line);
                }
            }
        }
    }

    void TakeDeclaration(Type& type, const std::string& name, const Tokens& statement, int line)
    {
        static const std::set<std::string> others = {"using", "typedef",       "friend", "template",
                                                     "enum",  "static_assert", "extern"};
        if (others.count(statement.front().text) != 0) {
            Forget();
            return;
        }
        const auto open = std::find_if(statement.begin(), statement.end(), [](const Token& t) { return Is(t, "("); });
        const auto value =
            std::find_if(statement.begin(), statement.end(), [](const Token& t) { return Is(t, "=") || Is(t, "{"); });
        bool isStatic = false;
        auto begin = statement.begin();
        static const std::set<std::string> specifiers = {"static",   "virtual", "inline",     "constexpr",
                                                         "explicit", "mutable", "NEXWIRE_API"};
        for (; begin != statement.end(); ++begin) {
            if (Is(*begin, "[")) { // An attribute
                begin = std::find_if(begin, statement.end(), [](const Token& t) { return Is(t, "]"); }) + 1;
            } else if (specifiers.count(begin->text) == 0) {
                break;
            }
            isStatic = isStatic || Is(*begin, "static");
        }
        if (open < value) {
            if (isStatic) {
                TakeFunction(type, begin, open, statement, line);
            } else if ((open - 1)->text != name && std::none_of(statement.begin(), open, [](const Token& t) {
                           return Is(t, "operator") || Is(t, "~");
                       })) {
                type.instanceFunction = line;
                type.instanceFunctionName = (open - 1)->text;
            }
            return;
        }
        if (!isStatic) {
            TakeMember(type, begin, value, line);
        }
    }

    void TakeMember(Type& type, Tokens::const_iterator begin, Tokens::const_iterator end, int line)
    {
        int depth = 0;
        for (auto token = begin; token != end; ++token) {
            depth += Is(*token, "<") ? 1 : Is(*token, ">") ? -1 : 0;
            if (depth == 0 && (Is(*token, ",") || Is(*token, "["))) {
                Fail(line, "one member a declaration, and no array");
            }
        }
        if (end - begin < 2) {
            Fail(line, "neither a member nor a function");
        }
        Member member;
        member.type = Written(begin, end - 1);
        member.name = (end - 1)->text;
        member.doc = doc_;
        member.line = line;
        type.members.push_back(std::move(member));
        lastMember_ = &type.members.back();
        Forget();
    }

    TypeName ReadType(Tokens::const_iterator begin, Tokens::const_iterator end, int line) const
    {
        TypeName type;
        type.written = Written(begin, end);
        while (end != begin && !(Is(*(end - 1), ">") || (end - 1)->kind == Token::Word)) {
            --end;
            if (Is(*end, "&") && !type.reference) {
                type.reference = true;
            } else if (Is(*end, "*") && !type.pointer) {
                type.pointer = true;
            } else {
                Fail(line, "'" + type.written + "' is no type that an argument can have");
            }
        }
        if (begin != end && Is(*begin, "const")) {
            type.constant = true;
            ++begin;
        }
        if (begin != end && Is(*(end - 1), "const")) {
            type.constant = true;
            --end;
        }
        if (begin == end) {
            Fail(line, "'" + type.written + "' is no type");
        }
        type.value = Written(begin, end);
        return type;
    }

    Parameter ReadParameter(Tokens::const_iterator begin, Tokens::const_iterator end, int line) const
    {
        static const std::set<std::string> types = {"int",  "unsigned", "long",  "short", "char",
                                                    "bool", "double",   "float", "const", "void"};
        const auto last = std::find_if(begin, end, [](const Token& t) { return Is(t, "="); });
        const bool named = last - begin > 1 && (last - 1)->kind == Token::Word && !Is(*(last - 2), "::") &&
                           types.count((last - 1)->text) == 0;
        if (!named) {
            Fail(line, "the parameter '" + Written(begin, last) + "' has no name to call it by");
        }
        return {ReadType(begin, last - 1, line), (last - 1)->text};
    }

    void TakeFunction(Type& type, Tokens::const_iterator begin, Tokens::const_iterator open, const Tokens& statement,
                      int line)
    {
        if (open - begin < 2) {
            Fail(line, "a function without result or name");
        }
        Function function;
        function.line = line;
        function.name = (open - 1)->text;
        function.result = ReadType(begin, open - 1, line);
        int depth = 0;
        auto first = open + 1;
        for (auto token = open; token != statement.end(); ++token) {
            const bool opens = Is(*token, "(") || Is(*token, "<") || Is(*token, "{") || Is(*token, "[");
            const bool closes = Is(*token, ")") || Is(*token, ">") || Is(*token, "}") || Is(*token, "]");
            depth += opens ? 1 : closes ? -1 : 0;
            const bool end = depth == 0 && Is(*token, ")");
            if ((end && token != first) || (depth == 1 && Is(*token, ","))) {
                function.parameters.push_back(ReadParameter(first, token, token->line));
                first = token + 1;
            }
            if (end) {
                break;
            }
        }
        if (!sharer_.empty() && !Share(sharer_, function.name)) {
            doc_.clear();
        }
        sharer_ = doc_.empty() ? "" : function.name;
        function.doc = Trimmed(doc_.empty() ? section_ : doc_);
        type.functions.push_back(std::move(function));
    }

    Header header_;
    Tokens tokens_;
    std::size_t at_ = 0;
    std::vector<std::string> space_;
    std::string doc_;     ///< Of what comes next, up to a blank line.
    std::string section_; ///< Heading within a class.
    std::string sharer_;  ///< Function that `doc_` was last given to.
    Member* lastMember_ = nullptr;
    bool inDoc_ = false;
    bool begun_ = false; ///< The first namespace was seen.
};

} // namespace

Header ReadHeader(const std::string& file, const std::string& text)
{
    return Reader(file, text).Run();
}

} // namespace generator
