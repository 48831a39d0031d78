#pragma once

#include "nexwire/Export.h"

namespace nexwire {

/// Has the device gateways of the platform forget the pictures they keep for devices. Any thread.
class NEXWIRE_API CClearDAGPictureCache {
public:
    /// True when the envelope parsed, whatever its code.
    static bool request();
};

} // namespace nexwire
