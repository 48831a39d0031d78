#pragma once

#include "protocol/DeviceParameters/CardReaderAuth.h"

namespace nexwire {

/// How persons prove who they are at the readers of a device, by plan.
///
/// All functions block until the device has answered through the platform and may be called from any thread.
/// Getters return true when the device's answer held the structure; `output` is untouched otherwise. Setters return
/// true when the envelope parsed, whatever the device made of the order.
class NEXWIRE_API CardReaderAuth {
public:
    /// What plans may hold.
    static bool getCardReaderAuthAbilityRequest(protocol::CardReaderVerifyTypePlan& output,
                                                const std::string& deviceGuid);

    /// Which template each reader follows.
    static bool getAuthPlanTemplateNoRequest(protocol::CardReaderVerifyPlanTemplateNo& output,
                                             const std::string& deviceGuid);
    static bool setAuthPlanTemplateNoRequest(const protocol::CardReaderVerifyPlanTemplateNo& input,
                                             const std::string& deviceGuid);

    /// The templates.
    static bool getPlanTemplateParamRequest(protocol::VerifyPlanTemplateParam& output, const std::string& deviceGuid);
    static bool setPlanTemplateParamRequest(const protocol::VerifyPlanTemplateParam& input,
                                            const std::string& deviceGuid);

    /// The week plans that templates name.
    static bool getCardReaderAuthParamRequest(protocol::VerifyWeekPlanCfgData& output, const std::string& deviceGuid);
    static bool setCardReaderAuthParamRequest(const protocol::VerifyWeekPlanCfgData& input,
                                              const std::string& deviceGuid);
};

} // namespace nexwire
