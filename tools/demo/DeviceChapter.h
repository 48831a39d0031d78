#pragma once

#include <string>

#include "tools/demo/Screen.h"

namespace nexwire::demo {

/// Adds a camera, lists channels, saves and recalls a preset, arms a partition, provokes an alarm, fetches its picture
/// into a file and uploads a file of events. Expects an initialised library and the devices of the local platform.
///
/// @return false when something did not go as it should, with the reason on the screen.
bool RunDeviceChapter(Screen& screen);

} // namespace nexwire::demo
