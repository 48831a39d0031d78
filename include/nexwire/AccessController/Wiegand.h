#pragma once

#include "protocol/AccessController/Wiegand.h"
#include "protocol/Common.h"

// All functions of this file block until the answer is there and may be called from any thread.

namespace nexwire {

/// Wiegand formats that the platform keeps.
class NEXWIRE_API CGetWiegands {
public:
    /// All formats. True when the envelope parsed; `result` is untouched otherwise.
    static bool request(protocol::WiegandQueryResultListData& result);
};

/// Changes a Wiegand format.
class NEXWIRE_API CSetWiegand {
public:
    /// @param result  one entry per device of the format; untouched unless the envelope parsed.
    static bool request(protocol::OperationResultListData& result, const protocol::WiegandModifyParam& param);
};

/// Sets a Wiegand format on a device itself, over the route of the platform's own components.
class NEXWIRE_API AcsCustomWiegandConfig {
public:
    /// True when the platform's answer was readable, whatever the device makes of it.
    static bool setAcsChannelControlParamRequest(const protocol::WiegandModifyParam& input,
                                                 const std::string& deviceGuid);
};

} // namespace nexwire
