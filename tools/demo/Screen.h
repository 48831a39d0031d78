#pragma once

#include <mutex>
#include <ostream>
#include <string>

namespace nexwire::demo {

/// What the demonstration writes on. Safe from several threads, since the platform's lines come from its workers.
class Screen {
public:
    Screen(std::ostream& out, bool colour, bool animate) : out_(out), colour_(colour), animate_(animate) {}

    void Chapter(const std::string& title);
    /// What the client does next, in a sentence.
    void Step(const std::string& text);
    /// One exchange as it went over the wire.
    void Wire(const std::string& text);
    /// What the client sees of a call.
    void Result(const std::string& text);
    /// A failure that was provoked, as the caller sees it.
    void Failure(const std::string& text);
    /// Something that should not have happened.
    void Wrong(const std::string& text);
    /// `percent` from 0 to 100; `label` in front.
    void Progress(const std::string& label, int percent);

    bool AllWell() const { return wrong_ == 0; }

private:
    void Line(const char* style, const std::string& text);

    std::ostream& out_;
    const bool colour_;
    const bool animate_;
    bool barOpen_ = false;
    int lastPercent_ = -1;
    int wrong_ = 0;
    std::mutex mutex_;
};

} // namespace nexwire::demo
