#include "nexwire/DeviceParameters/DeviceConfig.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

#define GET(function, Structure, command)                                                                              \
    bool cfginterface::function(protocol::Structure& output, const std::string& deviceGuid,                            \
                                const std::string& condition)                                                          \
    {                                                                                                                  \
        return DeviceGet(Route::External, command, deviceGuid, output, condition);                                     \
    }
#define SET(function, Structure, command)                                                                              \
    bool cfginterface::function(const std::string& deviceGuid, const protocol::Structure& input)                       \
    {                                                                                                                  \
        return DeviceSet(Route::External, command, deviceGuid, input);                                                 \
    }
#define CONFIG(Structure, get, set) GET(getConfigRequest, Structure, get) SET(setConfigRequest, Structure, set)
#define ABILITY(Structure, command) GET(getConfigRequest, Structure, command)

// clang-format off
CONFIG(MultiNetworkCardParameters, 2119, 4119)
ABILITY(MultiNetworkCardParametersAbility, 112)
CONFIG(SnapConfig, 2205, 4250)
ABILITY(SnapConfigAbility, 247)
CONFIG(M1CardEncryptCfg, 2206, 4205)
ABILITY(M1CardParametersAbility, 241)
CONFIG(RS485Parameters, 2117, 4117)
ABILITY(RS485ParametersAbility, 111)
CONFIG(AcsExternelParameters, 2140, 4143)
CONFIG(IdentityTerminal, 2207, 4204)
ABILITY(IdentityTerminalAbility, 242)
CONFIG(WigginParameters, 2203, 4203)
ABILITY(WigginParametersAbility, 240)
CONFIG(ReportTypeParameters, 2202, 4202)
ABILITY(ReportCenterCfgAbility, 244)
CONFIG(NetworkCenterParameters, 2115, 4115)
ABILITY(NetCfgAbility, 245)
CONFIG(WirelessCenterParameters, 2116, 4116)
ABILITY(WirelessNetWorkCfgAbility, 246)
CONFIG(AttendanceStatusRuleCfg, 2216, 4137)
ABILITY(AttendanceStatusRuleCfgAbility, 117)
CONFIG(AttendanceStatusModeCfg, 2217, 4138)
ABILITY(AttendanceStatusModeCfgAbility, 118)

NEXWIRE_DEVICE_GET(cfginterface, getNetworkCapRequest, NetworkCap, External, 1301)
NEXWIRE_DEVICE_GET(cfginterface, getCorvidCapRequest, CorvidAbility, External, 1302)
NEXWIRE_DEVICE_GET(cfginterface, getCorvidRequest, CorvidParam, External, 2270)
SET(setCorvidRequest, CorvidParam, 4300)
// clang-format on

#undef ABILITY
#undef CONFIG
#undef SET
#undef GET

} // namespace nexwire
