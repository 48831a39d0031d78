#pragma once

#include <string>

#include "tools/demo/Screen.h"

namespace nexwire::demo {

/// Defines a shift, has a team follow it, uploads a month of clock records, calculates and prints the month. Expects an
/// initialised library and the persons of the local platform.
///
/// @return false when something did not go as it should, with the reason on the screen.
bool RunAttendanceChapter(Screen& screen);

} // namespace nexwire::demo
