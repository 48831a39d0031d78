#pragma once

#include <string>
#include <vector>

namespace nexwire::tools {

// What a command answers with.
constexpr int kDone = 0;
constexpr int kFalse = 1;     ///< The function returned false, or nothing was found.
constexpr int kUsage = 2;     ///< The command line cannot be carried out.
constexpr int kTransport = 3; ///< No answer from the server.
constexpr int kRefused = 4;   ///< The server answered with a number other than 0.
constexpr int kOutput = 5;    ///< Standard output cannot be written: a full disk, a reader that has gone.

/// The words of the command line in UTF-8, with what main was given. From here on the standard streams pass bytes as
/// they are, and a console shows UTF-8. Called once, before anything is read or written.
std::vector<std::string> OpenConsole(int argc, char** argv);

/// A variable of the environment in UTF-8; false when there is none.
bool FromEnvironment(const std::string& name, std::string& value);

/// How text stands out on standard output. Plain unless it goes to a terminal and NO_COLOR is not set.
class Style {
public:
    /// @param when  "auto", "always" or "never".
    explicit Style(const std::string& when);

    std::string Heading(const std::string& text) const { return Wrap("1", text); }
    std::string Faint(const std::string& text) const { return Wrap("2", text); }
    std::string Name(const std::string& text) const { return Wrap("36", text); }
    bool color() const { return color_; }

private:
    std::string Wrap(const char* code, const std::string& text) const;
    bool color_;
};

/// Writes to standard error with the program's name in front.
void Complain(const std::string& text);
/// The same, marked as a warning.
void Warn(const std::string& text);

/// Shows how far something is on standard error: a bar on a terminal, otherwise a line whenever the figure has changed.
void ShowProgress(int percent, bool finished);

/// Writes to standard output. False when it is full or gone; `errno` says why.
bool Print(const std::string& text);
/// The same, as the last step of a command: its exit code.
int Output(const std::string& text);

/// `text` from elsewhere as a terminal and a log may see it: on one line, control characters spelled out, secrets and
/// credentials in addresses replaced.
std::string Shown(const std::string& text);

/// Whole content of a file; "-" is standard input. False with a text for the user.
bool ReadWhole(const std::string& path, std::string& content, std::string& error);

/// Writes a file anew; "-" is standard output. False with a text for the user.
bool WriteWhole(const std::string& path, const std::string& content, std::string& error);

/// `text` broken at blanks into lines of at most `width` characters, each behind `indent`.
std::string Wrapped(const std::string& text, std::size_t width, const std::string& indent);

/// Width in characters of UTF-8 text.
std::size_t Width(const std::string& text);

/// `text` with blanks behind it up to a width.
std::string Padded(const std::string& text, std::size_t width);

} // namespace nexwire::tools
