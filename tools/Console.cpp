#include "tools/Console.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#if defined(_WIN32)
#include <filesystem>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#else
#include <unistd.h>
#endif

#include <keel/StringUtil.h>

#include "tools/Secrets.h"

namespace nexwire::tools {
namespace {

#if defined(_WIN32)

std::string Utf8(const wchar_t* text)
{
    return std::filesystem::path(text).u8string();
}

/// A console is UTF-8 and takes escape sequences while this lives.
class Utf8Console {
public:
    Utf8Console() : former_(GetConsoleOutputCP())
    {
        SetConsoleOutputCP(CP_UTF8);
        for (const DWORD each : {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
            DWORD mode = 0;
            if (GetConsoleMode(GetStdHandle(each), &mode) != 0) {
                SetConsoleMode(GetStdHandle(each), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
            }
        }
    }
    ~Utf8Console() { SetConsoleOutputCP(former_); }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

private:
    const UINT former_;
};

bool IsTerminal(std::FILE* stream)
{
    return _isatty(_fileno(stream)) != 0;
}

std::FILE* Open(const std::string& path, const char* mode)
{
    return _wfopen(std::filesystem::u8path(path).c_str(), std::filesystem::path(mode).c_str());
}

#else

bool IsTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) != 0;
}

std::FILE* Open(const std::string& path, const char* mode)
{
    return std::fopen(path.c_str(), mode);
}

#endif

bool Wanted(const std::string& when)
{
    if (when != "auto") {
        return when == "always";
    }
    const char* const refused = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return (refused == nullptr || *refused == '\0') && (terminal == nullptr || std::strcmp(terminal, "dumb") != 0) &&
           IsTerminal(stdout);
}

} // namespace

std::vector<std::string> OpenConsole(int argc, char** argv)
{
#if defined(_WIN32)
    static const Utf8Console console;
    for (std::FILE* const stream : {stdin, stdout, stderr}) {
        _setmode(_fileno(stream), _O_BINARY);
    }
    // What main was given has lost the characters that the code page lacks.
    int count = 0;
    if (wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count)) {
        std::vector<std::string> words;
        for (int i = 0; i < count; ++i) {
            words.push_back(Utf8(wide[i]));
        }
        LocalFree(wide);
        return words;
    }
#endif
    return std::vector<std::string>(argv, argv + argc);
}

bool FromEnvironment(const std::string& name, std::string& value)
{
#if defined(_WIN32)
    const wchar_t* const found = _wgetenv(std::filesystem::u8path(name).c_str());
    value = found != nullptr ? Utf8(found) : std::string();
#else
    const char* const found = std::getenv(name.c_str());
    value = found != nullptr ? found : "";
#endif
    return found != nullptr;
}

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

void ShowProgress(int percent, bool finished)
{
    static int shown = -1;
    if (percent == shown && !finished) {
        return;
    }
    shown = percent;
    if (!IsTerminal(stderr)) {
        Complain(std::to_string(percent) + " %");
        return;
    }
    constexpr int kWidth = 40;
    const int filled = std::min(std::max(percent, 0), 100) * kWidth / 100;
    std::string bar(static_cast<std::size_t>(kWidth), '.');
    bar.replace(0, static_cast<std::size_t>(filled), static_cast<std::size_t>(filled), '#');
    std::fputs(("\r[" + bar + "] " + std::to_string(percent) + " %" + (finished ? "\n" : "")).c_str(), stderr);
    std::fflush(stderr);
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
    std::FILE* const file = path == "-" ? stdin : Open(path, "rb");
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
    std::FILE* const file = Open(path, "wb");
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

} // namespace nexwire::tools
