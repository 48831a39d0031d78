#pragma once

#include "tools/demo/Screen.h"

namespace nexwire::demo {

/// Builds a tree of organisations, imports a list of persons, collects a face at a device, pages persons out of a
/// device and has the platform do the same, and admits a visitor. Expects an initialised library and the devices of the
/// local platform.
///
/// @return false when something did not go as it should, with the reason on the screen.
bool RunPersonnelChapter(Screen& screen);

} // namespace nexwire::demo
