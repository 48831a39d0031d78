#pragma once

#include "protocol/AccessController/VerifyMode.h"

// All functions of this file block until the answer is there and may be called from any thread.

namespace nexwire {

/// Sets how persons prove who they are on a device.
class NEXWIRE_API CPersonnelVerify {
public:
    /// True when the envelope parsed, whatever its code; `result` has one entry per person and is untouched on false.
    static bool request(const std::string& deviceGuid, const protocol::SetVerifyModeReq& param,
                        protocol::SetVerifyModeRspData& result);
};

/// How persons prove who they are on a device. True when the envelope parsed, whatever its code; `result`
/// is untouched on false.
class NEXWIRE_API CGetPersonnelVerify {
public:
    /// Person by person.
    static bool request(const std::string& deviceGuid, const protocol::PersonnelVerifyModeCondition& condition,
                        protocol::PersonnelVerifyModeRspData& result);
    /// Persons per mode.
    static bool requestValues(const std::string& deviceGuid, protocol::PersonnelVerifyValuesData& result);
};

} // namespace nexwire
