#include "tools/demo/Screen.h"

namespace nexwire::demo {

void Screen::Line(const char* style, const std::string& text)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (barOpen_) {
        out_ << '\n';
        barOpen_ = false;
    }
    lastPercent_ = -1;
    if (colour_) {
        out_ << style << text << "\033[0m\n";
    } else {
        out_ << text << '\n';
    }
    out_.flush();
}

void Screen::Chapter(const std::string& title)
{
    Line("\033[1;36m", "\n== " + title + " ==");
}

void Screen::Step(const std::string& text)
{
    Line("\033[1m", "\n" + text);
}

void Screen::Wire(const std::string& text)
{
    Line("\033[2m", "    wire    " + text);
}

void Screen::Result(const std::string& text)
{
    Line("\033[32m", "    result  " + text);
}

void Screen::Failure(const std::string& text)
{
    Line("\033[33m", "    seen    " + text);
}

void Screen::Wrong(const std::string& text)
{
    ++wrong_;
    Line("\033[1;31m", "    WRONG   " + text);
}

void Screen::Progress(const std::string& label, int percent)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (percent == lastPercent_) {
        return;
    }
    lastPercent_ = percent;
    const int filled = percent * 40 / 100;
    const std::string bar = "    " + label + " [" + std::string(static_cast<std::size_t>(filled), '#') +
                            std::string(static_cast<std::size_t>(40 - filled), '.') + "] " + std::to_string(percent) +
                            "%";
    if (animate_) {
        out_ << '\r' << bar;
        barOpen_ = true;
    } else {
        out_ << bar << '\n';
    }
    out_.flush();
}

} // namespace nexwire::demo
