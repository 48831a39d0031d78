#pragma once

#include "tools/demo/Screen.h"

namespace nexwire::demo {

/// Signs in, lists the users, looks through the network, saves a view and reads in the log what was done. Expects an
/// initialised library and the users of the local platform.
///
/// @return false when something did not go as it should, with the reason on the screen.
bool RunFrameworkChapter(Screen& screen);

} // namespace nexwire::demo
