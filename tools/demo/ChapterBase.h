#pragma once

#include <string>

#include "tools/demo/Screen.h"

namespace nexwire::demo {

/// Why the last call of this thread failed, in words.
std::string WhyNot();

/// What all chapters share.
class ChapterBase {
protected:
    explicit ChapterBase(Screen& screen) : screen_(screen) {}

    /// Shows what was done, or why it failed; returns which of the two.
    bool Done(bool success, const std::string& what);

    Screen& screen_;
};

/// A counter that another thread counts.
int Load(const int& counter);

} // namespace nexwire::demo
