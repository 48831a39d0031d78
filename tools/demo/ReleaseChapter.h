#pragma once

#include "tools/demo/Screen.h"

namespace nexwire::demo {

/// A release server from registration to a running program, and a map with a large picture. Expects the library to be
/// pointed at a platform.
///
/// @return false when something did not end as it should; the screen says what.
bool RunReleaseChapter(Screen& screen);

} // namespace nexwire::demo
