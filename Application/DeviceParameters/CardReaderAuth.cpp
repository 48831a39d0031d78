#include "nexwire/DeviceParameters/CardReaderAuth.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

// clang-format off
NEXWIRE_DEVICE_GET(CardReaderAuth, getCardReaderAuthAbilityRequest, CardReaderVerifyTypePlan, External, 109)
NEXWIRE_DEVICE_GET(CardReaderAuth, getAuthPlanTemplateNoRequest, CardReaderVerifyPlanTemplateNo, External, 2136)
NEXWIRE_DEVICE_SET(CardReaderAuth, setAuthPlanTemplateNoRequest, CardReaderVerifyPlanTemplateNo, External, 4144)
NEXWIRE_DEVICE_GET(CardReaderAuth, getPlanTemplateParamRequest, VerifyPlanTemplateParam, External, 2127)
NEXWIRE_DEVICE_SET(CardReaderAuth, setPlanTemplateParamRequest, VerifyPlanTemplateParam, External, 4127)
NEXWIRE_DEVICE_GET(CardReaderAuth, getCardReaderAuthParamRequest, VerifyWeekPlanCfgData, External, 2130)
NEXWIRE_DEVICE_SET(CardReaderAuth, setCardReaderAuthParamRequest, VerifyWeekPlanCfgData, External, 4130)
// clang-format on

} // namespace nexwire
