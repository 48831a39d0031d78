#pragma once

#include "protocol/AccessController/EventCardLinkage.h"

namespace nexwire {

/// What a device does by itself when something happens or a card is shown.
///
/// All functions are one exchange with the device through the platform, block until the answer is there and may be
/// called from any thread. `linkageNo` is the number of the linkage on the device, from 1.
class NEXWIRE_API EventCardLinkage {
public:
    /// True when the device answered with a linkage; `output` is untouched otherwise.
    static bool requestGET(protocol::EventCardLinkageCfg& output, const std::string& deviceGuid, int linkageNo);
    /// True when the platform's answer was readable, whatever the device makes of it.
    ///
    /// @param result  the device's word on it, from its status answer or else from its output; left at its defaults
    ///                when neither holds one, untouched on false.
    static bool requestSET(protocol::ReturnRst& result, const protocol::EventCardLinkageCfg& input,
                           const std::string& deviceGuid, int linkageNo);
    /// Removes a linkage. True as above.
    static bool requestClear(const std::string& deviceGuid, int linkageNo);
};

} // namespace nexwire
