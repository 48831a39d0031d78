#pragma once

#include "protocol/DeviceParameters/AntiBack.h"

namespace nexwire {

/// Anti-passback of a device: nobody enters twice without leaving.
///
/// All functions block until the device has answered through the platform and may be called from any thread.
/// Getters return true when the device's answer held the structure; `output` is untouched otherwise. The others
/// return true when the envelope parsed, whatever the device made of the order.
class NEXWIRE_API AntiBack {
public:
    /// How the device can be made to forget who is where.
    static bool getClearRecordCapRequest(protocol::ClearAntiSneak& output, const std::string& deviceGuid);

    /// The device as a whole.
    static bool getAntiBackParamRequest(protocol::AcsAntiSneakParamCfg& output, const std::string& deviceGuid);
    static bool setAntiBackParamRequest(const protocol::AcsAntiSneakParamCfg& input, const std::string& deviceGuid);

    /// Its readers.
    static bool getCardReaderAntiBackParamRequest(protocol::AcsCardReaderAntiSneakParamCfg& output,
                                                  const std::string& deviceGuid);
    static bool setCardReaderAntiBackParamRequest(const protocol::AcsCardReaderAntiSneakParamCfg& input,
                                                  const std::string& deviceGuid);

    /// Puts settings back to those of a new device.
    static bool clearAntiBackParamRequest(const protocol::AcsClearAntiSneakParamCfg& input,
                                          const std::string& deviceGuid);
    /// Forgets who is where; persons then pass once from anywhere.
    static bool clearAntiBackRecordRequest(const protocol::AcsClearAntiSneakRecord& input,
                                           const std::string& deviceGuid);

    /// When the device forgets by itself.
    static bool getAntiBackRestRulesCapRequest(protocol::AntiPassbackrestRulesCapability& output,
                                               const std::string& deviceGuid);
    static bool getAntiBackResetRuleParamRequest(protocol::AntiBackResetRuleConfig& output,
                                                 const std::string& deviceGuid);
    static bool setAntiBackResetRuleParamRequest(const protocol::AntiBackResetRuleConfig& input,
                                                 const std::string& deviceGuid);

    /// When anti-passback does not hold.
    static bool getAntiBackNTScheduleCapRequest(protocol::AntiBackNTScheduleCap& output, const std::string& deviceGuid);
    static bool getAntiBackNTScheduleParamRequest(protocol::AntiBackNTScheduleConfig& output,
                                                  const std::string& deviceGuid);
    static bool setAntiBackNTScheduleParamRequest(const protocol::AntiBackNTScheduleConfig& input,
                                                  const std::string& deviceGuid);
};

/// Interlock of the doors of a device: only one of a group opens at a time. Results as for `AntiBack`.
class NEXWIRE_API CGetMultiDoorInterLock {
public:
    static bool getMultiDoorInterLockInfo(protocol::MultiDoorInterLockParam& output, const std::string& deviceGuid);
    static bool setMultiDoorInterLockInfo(const protocol::MultiDoorInterLockParam& input,
                                          const std::string& deviceGuid);
};

} // namespace nexwire
