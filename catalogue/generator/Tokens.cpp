#include "catalogue/generator/Tokens.h"

#include <cctype>

namespace generator {
namespace {

bool IsWordPart(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

class Splitter {
public:
    Splitter(const std::string& file, const std::string& text) : file_(file), text_(text) {}

    std::vector<Token> Run()
    {
        bool emptyLine = true;
        while (at_ < text_.size()) {
            const char c = text_[at_];
            if (c == '\n') {
                if (emptyLine) {
                    Add(Token::Blank, "");
                }
                emptyLine = true;
                ++line_;
                ++at_;
            } else if (std::isspace(static_cast<unsigned char>(c)) != 0) {
                ++at_;
            } else if (c == '#' && emptyLine) {
                SkipDirective();
            } else {
                emptyLine = false;
                Take(c);
            }
        }
        Add(Token::End, "");
        return std::move(tokens_);
    }

private:
    void Add(Token::Kind kind, const std::string& text) { tokens_.push_back({kind, text, line_}); }

    void Take(char c)
    {
        if (text_.compare(at_, 2, "//") == 0) {
            TakeComment();
        } else if (text_.compare(at_, 2, "/*") == 0) {
            const std::size_t end = text_.find("*/", at_ + 2);
            if (end == std::string::npos) {
                throw Unreadable(file_, line_, "a comment without end");
            }
            for (; at_ < end + 2; ++at_) {
                line_ += text_[at_] == '\n' ? 1 : 0;
            }
        } else if (c == '"' || c == '\'') {
            TakeLiteral(c);
        } else if (IsWordPart(c)) {
            const std::size_t begin = at_;
            while (at_ < text_.size() && IsWordPart(text_[at_])) {
                ++at_;
            }
            Add(Token::Word, text_.substr(begin, at_ - begin));
        } else {
            const std::string sign = text_.compare(at_, 2, "::") == 0 ? "::" : std::string(1, c);
            at_ += sign.size();
            Add(Token::Sign, sign);
        }
    }

    void TakeComment()
    {
        const std::size_t end = std::min(text_.find('\n', at_), text_.size());
        const std::string line = text_.substr(at_, end - at_);
        at_ = end;
        if (line.compare(0, 4, "///<") == 0) {
            Add(Token::DocBehind, Trimmed(line.substr(4)));
        } else if (line.compare(0, 3, "///") == 0) {
            Add(Token::Doc, Trimmed(line.substr(3)));
        } else {
            Add(Token::Remark, Trimmed(line.substr(2)));
        }
    }

    void TakeLiteral(char quote)
    {
        const std::size_t begin = at_++;
        while (at_ < text_.size() && text_[at_] != quote && text_[at_] != '\n') {
            at_ += text_[at_] == '\\' ? 2 : 1;
        }
        if (at_ >= text_.size() || text_[at_] != quote) {
            throw Unreadable(file_, line_, "a literal without end");
        }
        ++at_;
        Add(Token::Literal, text_.substr(begin, at_ - begin));
    }

    void SkipDirective()
    {
        for (; at_ < text_.size() && text_[at_] != '\n'; ++at_) {
            if (text_[at_] == '\\' && at_ + 1 < text_.size() && text_[at_ + 1] == '\n') {
                ++line_;
                ++at_;
            }
        }
        // Its line is not empty.
        if (at_ < text_.size()) {
            ++line_;
            ++at_;
        }
    }

    const std::string& file_;
    const std::string& text_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    int line_ = 1;
};

} // namespace

std::vector<Token> Split(const std::string& file, const std::string& text)
{
    return Splitter(file, text).Run();
}

std::string Trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

} // namespace generator
