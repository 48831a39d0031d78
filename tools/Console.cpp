#include "tools/Console.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

#include <keel/StringUtil.h>

#include "tools/Secrets.h"

namespace nexwire {
namespace tools {
namespace {

bool IsTerminal()
{
#if defined(_WIN32)
    return _isatty(_fileno(stdout)) != 0;
#else
    return isatty(STDOUT_FILENO) != 0;
#endif
}

bool Wanted(const std::string& when)
{
    if (when != "auto") {
        return when == "always";
    }
    const char* const refused = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return (refused == nullptr || *refused == '\0') && (terminal == nullptr || std::strcmp(terminal, "dumb") != 0) &&
           IsTerminal();
}

} // namespace

Style::Style(const std::string& when) : color_(Wanted(when)) {}

std::string Style::Wrap(const char* code, const std::string& text) const
{
    return color_ ? std::string("\x1b[") + code + "m" + text + "\x1b[0m" : text;
}

void Complain(const std::string& text)
{
    std::fputs(("nexwire: " + text + "\n").c_str(), stderr);
}

void Warn(const std::string& text)
{
    Complain("warning: " + text);
}

bool Print(const std::string& text)
{
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
}

int Output(const std::string& text)
{
    if (Print(text)) {
        return kDone;
    }
    Complain(std::string("cannot write to standard output: ") + std::strerror(errno));
    return kOutput;
}

std::string Shown(const std::string& text)
{
    return Keel::StringUtil::SingleLine(Redacted(text));
}

bool ReadWhole(const std::string& path, std::string& content, std::string& error)
{
    std::FILE* const file = path == "-" ? stdin : std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        error = "cannot read " + path + ": " + std::strerror(errno);
        return false;
    }
    content.clear();
    char block[65536];
    for (std::size_t got = 0; (got = std::fread(block, 1, sizeof block, file)) > 0;) {
        content.append(block, got);
    }
    const bool good = std::ferror(file) == 0;
    if (!good) {
        error = "cannot read " + path + ": " + std::strerror(errno);
    }
    if (file != stdin) {
        std::fclose(file);
    }
    return good;
}

bool WriteWhole(const std::string& path, const std::string& content, std::string& error)
{
    if (path == "-") {
        return Print(content);
    }
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    bool good = file != nullptr && std::fwrite(content.data(), 1, content.size(), file) == content.size();
    if (file != nullptr) {
        good = std::fclose(file) == 0 && good;
    }
    if (!good) {
        error = "cannot write " + path + ": " + std::strerror(errno);
    }
    return good;
}

std::size_t Width(const std::string& text)
{
    std::size_t width = 0;
    for (const char c : text) {
        width += (static_cast<unsigned char>(c) & 0xC0U) == 0x80U ? 0U : 1U;
    }
    return width;
}

std::string Wrapped(const std::string& text, std::size_t width, const std::string& indent)
{
    std::string result;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        std::string line;
        for (std::size_t at = begin; at < end;) {
            const std::size_t wordEnd = std::min(text.find(' ', at), end);
            const std::string word = text.substr(at, wordEnd - at);
            if (!line.empty() && Width(line) + 1 + Width(word) > width) {
                result += indent + line + "\n";
                line.clear();
            }
            line += (line.empty() ? "" : " ") + word;
            at = wordEnd + 1;
        }
        if (!line.empty()) {
            result += indent + line + "\n";
        }
        begin = end + 1;
    }
    return result;
}

std::string Padded(const std::string& text, std::size_t width)
{
    const std::size_t taken = Width(text);
    return taken >= width ? text : text + std::string(width - taken, ' ');
}

} // namespace tools
} // namespace nexwire
