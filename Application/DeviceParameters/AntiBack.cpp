#include "nexwire/DeviceParameters/AntiBack.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

// clang-format off
NEXWIRE_DEVICE_GET(AntiBack, getClearRecordCapRequest, ClearAntiSneak, External, 301)
NEXWIRE_DEVICE_GET(AntiBack, getAntiBackParamRequest, AcsAntiSneakParamCfg, External, 2109)
NEXWIRE_DEVICE_SET(AntiBack, setAntiBackParamRequest, AcsAntiSneakParamCfg, External, 4109)
NEXWIRE_DEVICE_GET(AntiBack, getCardReaderAntiBackParamRequest, AcsCardReaderAntiSneakParamCfg, External, 2110)
NEXWIRE_DEVICE_SET(AntiBack, setCardReaderAntiBackParamRequest, AcsCardReaderAntiSneakParamCfg, External, 4110)
NEXWIRE_DEVICE_SET(AntiBack, clearAntiBackParamRequest, AcsClearAntiSneakParamCfg, External, 4154)
NEXWIRE_DEVICE_SET(AntiBack, clearAntiBackRecordRequest, AcsClearAntiSneakRecord, External, 4168)
NEXWIRE_DEVICE_GET(AntiBack, getAntiBackRestRulesCapRequest, AntiPassbackrestRulesCapability, External, 1305)
NEXWIRE_DEVICE_GET(AntiBack, getAntiBackResetRuleParamRequest, AntiBackResetRuleConfig, External, 2145)
NEXWIRE_DEVICE_SET(AntiBack, setAntiBackResetRuleParamRequest, AntiBackResetRuleConfig, External, 4145)
NEXWIRE_DEVICE_GET(AntiBack, getAntiBackNTScheduleCapRequest, AntiBackNTScheduleCap, External, 1306)
NEXWIRE_DEVICE_GET(AntiBack, getAntiBackNTScheduleParamRequest, AntiBackNTScheduleConfig, External, 2146)
NEXWIRE_DEVICE_SET(AntiBack, setAntiBackNTScheduleParamRequest, AntiBackNTScheduleConfig, External, 4146)

NEXWIRE_DEVICE_GET(CGetMultiDoorInterLock, getMultiDoorInterLockInfo, MultiDoorInterLockParam, External, 2111)
NEXWIRE_DEVICE_SET(CGetMultiDoorInterLock, setMultiDoorInterLockInfo, MultiDoorInterLockParam, External, 4111)
// clang-format on

} // namespace nexwire
