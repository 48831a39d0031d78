// Anti-passback, interlock, verification plans and device configurations.

#include "nexwire/DeviceParameters/AntiBack.h"
#include "nexwire/DeviceParameters/CardReaderAuth.h"
#include "nexwire/DeviceParameters/DeviceConfig.h"
#include "support/RequestVectors.h"

namespace {

using namespace nexwire;
using namespace test;

const std::string kCondition = "7 \"\\\n\xE9\x97\xA8";

#define CONFIG_GET(Structure, command, root, key)                                                                      \
    Row<None, protocol::Structure>(                                                                                    \
        "getConfigRequest " #Structure, kExternal, command, "", Sample<protocol::Structure>(root, key),                \
        [](auto&, auto& out, auto& id) { return cfginterface::getConfigRequest(out, id, kCondition); }, kCondition)
#define CONFIG_SET(Structure, command, root, key)                                                                      \
    Row<protocol::Structure, None>("setConfigRequest " #Structure, kExternal, command,                                 \
                                   Sample<protocol::Structure>(root, key), "",                                         \
                                   [](auto& in, auto&, auto& id) { return cfginterface::setConfigRequest(id, in); })

TEST(DeviceConfig, EveryFunctionSendsItsCommandAndReadsItsAnswer)
{
    CheckDeviceCommands({
        // clang-format off
        DEVICE_GET(CardReaderAuth, getCardReaderAuthAbilityRequest, CardReaderVerifyTypePlan, kExternal, 109, "cardReaderVerifyTypePlan", "verifyMode"),
        DEVICE_GET(CardReaderAuth, getAuthPlanTemplateNoRequest, CardReaderVerifyPlanTemplateNo, kExternal, 2136, "cardReaderVerifyPlanTemplateNo", "cardReaderVerifyPlanList"),
        DEVICE_SET(CardReaderAuth, setAuthPlanTemplateNoRequest, CardReaderVerifyPlanTemplateNo, kExternal, 4144, "cardReaderVerifyPlanTemplateNo", "cardReaderVerifyPlanList"),
        DEVICE_GET(CardReaderAuth, getPlanTemplateParamRequest, VerifyPlanTemplateParam, kExternal, 2127, "verifyPlanTemplateParam", "verifyPlanTemplateList"),
        DEVICE_SET(CardReaderAuth, setPlanTemplateParamRequest, VerifyPlanTemplateParam, kExternal, 4127, "verifyPlanTemplateParam", "verifyPlanTemplateList"),
        DEVICE_GET(CardReaderAuth, getCardReaderAuthParamRequest, VerifyWeekPlanCfgData, kExternal, 2130, "verifyWeekPlanCfgData", "verifyWeekPlanCfg"),
        DEVICE_SET(CardReaderAuth, setCardReaderAuthParamRequest, VerifyWeekPlanCfgData, kExternal, 4130, "verifyWeekPlanCfgData", "verifyWeekPlanCfg"),

        DEVICE_GET(CGetMultiDoorInterLock, getMultiDoorInterLockInfo, MultiDoorInterLockParam, kExternal, 2111, "multiDoorInterLockParam", "groupList"),
        DEVICE_SET(CGetMultiDoorInterLock, setMultiDoorInterLockInfo, MultiDoorInterLockParam, kExternal, 4111, "multiDoorInterLockParam", "openTimeout"),

        DEVICE_GET(AntiBack, getClearRecordCapRequest, ClearAntiSneak, kExternal, 301, "clearAntiSneak", "employeeNo"),
        DEVICE_GET(AntiBack, getAntiBackParamRequest, AcsAntiSneakParamCfg, kExternal, 2109, "acsAntiSneakParamCfg", "startCardReaderNo"),
        DEVICE_SET(AntiBack, setAntiBackParamRequest, AcsAntiSneakParamCfg, kExternal, 4109, "acsAntiSneakParamCfg", "enable"),
        DEVICE_GET(AntiBack, getCardReaderAntiBackParamRequest, AcsCardReaderAntiSneakParamCfg, kExternal, 2110, "acsCardReaderAntiSneakParamCfg", "cardReaderAntiSneakList"),
        DEVICE_SET(AntiBack, setCardReaderAntiBackParamRequest, AcsCardReaderAntiSneakParamCfg, kExternal, 4110, "acsCardReaderAntiSneakParamCfg", "cardReaderAntiSneakList"),
        DEVICE_SET(AntiBack, clearAntiBackParamRequest, AcsClearAntiSneakParamCfg, kExternal, 4154, "acsClearAntiSneakParamCfg", "resetRule"),
        DEVICE_SET(AntiBack, clearAntiBackRecordRequest, AcsClearAntiSneakRecord, kExternal, 4168, "acsClearAntiSneakRecord", "employeeNoList"),
        DEVICE_GET(AntiBack, getAntiBackRestRulesCapRequest, AntiPassbackrestRulesCapability, kExternal, 1305, "antiPassbackrestRulesCapability", "resetInterval"),
        DEVICE_GET(AntiBack, getAntiBackResetRuleParamRequest, AntiBackResetRuleConfig, kExternal, 2145, "antiBackResetRuleConfig", "resetInterval"),
        DEVICE_SET(AntiBack, setAntiBackResetRuleParamRequest, AntiBackResetRuleConfig, kExternal, 4145, "antiBackResetRuleConfig", "resetMode"),
        DEVICE_GET(AntiBack, getAntiBackNTScheduleCapRequest, AntiBackNTScheduleCap, kExternal, 1306, "antiBackNTScheduleCap", "holidayList"),
        DEVICE_GET(AntiBack, getAntiBackNTScheduleParamRequest, AntiBackNTScheduleConfig, kExternal, 2146, "antiBackNTScheduleConfig", "dayPlanList"),
        DEVICE_SET(AntiBack, setAntiBackNTScheduleParamRequest, AntiBackNTScheduleConfig, kExternal, 4146, "antiBackNTScheduleConfig", "holidayList"),

        CONFIG_GET(MultiNetworkCardParameters, 2119, "multiNetworkCardParameters", "networkCardList"),
        CONFIG_SET(MultiNetworkCardParameters, 4119, "multiNetworkCardParameters", "workMode"),
        CONFIG_GET(MultiNetworkCardParametersAbility, 112, "multiNetworkCardParametersAbility", "mtu"),
        CONFIG_GET(SnapConfig, 2205, "snapConfig", "snapIntervalList"),
        CONFIG_SET(SnapConfig, 4250, "snapConfig", "snapTimes"),
        CONFIG_GET(SnapConfigAbility, 247, "snapConfigAbility", "resolution"),
        CONFIG_GET(M1CardEncryptCfg, 2206, "m1CardEncryptCfg", "sectorNo"),
        CONFIG_SET(M1CardEncryptCfg, 4205, "m1CardEncryptCfg", "sectorKey"),
        CONFIG_GET(M1CardParametersAbility, 241, "m1CardParametersAbility", "sectorNo"),
        CONFIG_GET(RS485Parameters, 2117, "rS485Parameters", "baudRate"),
        CONFIG_SET(RS485Parameters, 4117, "rS485Parameters", "parity"),
        CONFIG_GET(RS485ParametersAbility, 111, "rS485ParametersAbility", "baudRate"),
        CONFIG_GET(AcsExternelParameters, 2140, "acsExternelParameters", "externelDeviceList"),
        CONFIG_SET(AcsExternelParameters, 4143, "acsExternelParameters", "offlineCheckTime"),
        CONFIG_GET(IdentityTerminal, 2207, "identityTerminal", "faceVerifyThreshold"),
        CONFIG_SET(IdentityTerminal, 4204, "identityTerminal", "terminalMode"),
        CONFIG_GET(IdentityTerminalAbility, 242, "identityTerminalAbility", "blockListCheck"),
        CONFIG_GET(WigginParameters, 2203, "wigginParameters", "pulseWidth"),
        CONFIG_SET(WigginParameters, 4203, "wigginParameters", "wigginMode"),
        CONFIG_GET(WigginParametersAbility, 240, "wigginParametersAbility", "direction"),
        CONFIG_GET(ReportTypeParameters, 2202, "reportTypeParameters", "backupChannelList"),
        CONFIG_SET(ReportTypeParameters, 4202, "reportTypeParameters", "centerGroupNo"),
        CONFIG_GET(ReportCenterCfgAbility, 244, "reportCenterCfgAbility", "testReport"),
        CONFIG_GET(NetworkCenterParameters, 2115, "networkCenterParameters", "port"),
        CONFIG_SET(NetworkCenterParameters, 4115, "networkCenterParameters", "password"),
        CONFIG_GET(NetCfgAbility, 245, "netCfgAbility", "port"),
        CONFIG_GET(WirelessCenterParameters, 2116, "wirelessCenterParameters", "apn"),
        CONFIG_SET(WirelessCenterParameters, 4116, "wirelessCenterParameters", "apnPassword"),
        CONFIG_GET(WirelessNetWorkCfgAbility, 246, "wirelessNetWorkCfgAbility", "apn"),
        CONFIG_GET(AttendanceStatusRuleCfg, 2216, "attendanceStatusRuleCfg", "dayPlanList"),
        CONFIG_SET(AttendanceStatusRuleCfg, 4137, "attendanceStatusRuleCfg", "attendanceStatus"),
        CONFIG_GET(AttendanceStatusRuleCfgAbility, 117, "attendanceStatusRuleCfgAbility", "statusName"),
        CONFIG_GET(AttendanceStatusModeCfg, 2217, "attendanceStatusModeCfg", "statusHoldTime"),
        CONFIG_SET(AttendanceStatusModeCfg, 4138, "attendanceStatusModeCfg", "attendanceStatusMode"),
        CONFIG_GET(AttendanceStatusModeCfgAbility, 118, "attendanceStatusModeCfgAbility", "statusPrompt"),

        DEVICE_GET(cfginterface, getNetworkCapRequest, NetworkCap, kExternal, 1301, "networkCap", "networkCardNum"),
        DEVICE_GET(cfginterface, getCorvidCapRequest, CorvidAbility, kExternal, 1302, "corvidAbility", "tls"),
        DEVICE_GET(cfginterface, getCorvidRequest, CorvidParam, kExternal, 2270, "corvidParam", "deviceID"),
        Row<protocol::CorvidParam, None>("setCorvidRequest", kExternal, 4300, Sample<protocol::CorvidParam>("corvidParam", "corvidKey"), "", [](auto& in, auto&, auto& id) { return cfginterface::setCorvidRequest(id, in); }),
        // clang-format on
    });
}

} // namespace
