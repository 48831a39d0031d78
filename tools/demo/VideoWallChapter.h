#pragma once

#include <string>

#include "tools/demo/Screen.h"

namespace nexwire::demo {

/// Works with a video wall service: adds a decoder, binds its outputs, opens a window, plays, lets a polling task go
/// through three cameras and cleans up. Points `CTWDeviceCommon` at the service. Expects the account admin/admin123
/// and that ten seconds of the service's time pass within three seconds.
///
/// @return 0 when everything went as it should, 1 otherwise, with the reason on the screen.
int RunVideoWallChapter(Screen& screen, const std::string& host, const std::string& port);

} // namespace nexwire::demo
