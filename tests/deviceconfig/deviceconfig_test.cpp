// Anti-passback, interlock, verification plans and device configurations: what each function sends to a device, and
// what it makes of the device's answer.

#include <functional>

#include <gtest/gtest.h>

#include "nexwire/AntiBack.h"
#include "nexwire/CardReaderAuth.h"
#include "nexwire/DeviceConfig.h"
#include "nexwire/ParseJSONUtil.h"
#include "support/StubExecutor.h"

namespace {

using namespace nexwire;
using protocol::SerializeRequest;

/// One function. Of a getter, `call` puts what it received, in wire form, into `output`.
struct Row {
    std::string name;
    int command;
    std::string root;
    bool reads;
    bool hasCondition;
    std::string sample; ///< The structure it carries with one member changed, in wire form.
    std::string plain;  ///< The same without the change.
    std::function<bool(const std::string& id, const std::string& condition, std::string& output)> call;
};

template <class Structure, class Change, class Call>
Row MakeGet(std::string name, int command, std::string root, bool hasCondition, Change change, Call call)
{
    Structure sample;
    change(sample);
    return {std::move(name),
            command,
            std::move(root),
            true,
            hasCondition,
            SerializeRequest(sample),
            SerializeRequest(Structure()),
            [call](const std::string& id, const std::string& condition, std::string& output) {
                Structure result;
                const bool success = call(result, id, condition);
                output = SerializeRequest(result);
                return success;
            }};
}

template <class Structure, class Change, class Call>
Row MakeSet(std::string name, int command, std::string root, Change change, Call call)
{
    Structure sample;
    change(sample);
    return {std::move(name),
            command,
            std::move(root),
            false,
            false,
            SerializeRequest(sample),
            SerializeRequest(Structure()),
            [call, sample](const std::string& id, const std::string&, std::string&) { return call(sample, id); }};
}

#define CHANGE(member) [](auto& sample) { sample.member; }
#define GET(Class, function, Structure, command, root, member)                                                         \
    MakeGet<protocol::Structure>(#function " " #Structure, command, root, false, CHANGE(member),                       \
                                 [](auto& out, auto& id, auto&) { return Class::function(out, id); })
#define SET(Class, function, Structure, command, root, member)                                                         \
    MakeSet<protocol::Structure>(#function " " #Structure, command, root, CHANGE(member),                              \
                                 [](auto& in, auto& id) { return Class::function(in, id); })
#define CONFIG_GET(Structure, command, root, member)                                                                   \
    MakeGet<protocol::Structure>(                                                                                      \
        "getConfigRequest " #Structure, command, root, true, CHANGE(member),                                           \
        [](auto& out, auto& id, auto& condition) { return cfginterface::getConfigRequest(out, id, condition); })
#define CONFIG_SET(Structure, command, root, member)                                                                   \
    MakeSet<protocol::Structure>("setConfigRequest " #Structure, command, root, CHANGE(member),                        \
                                 [](auto& in, auto& id) { return cfginterface::setConfigRequest(id, in); })

const std::vector<Row>& Rows()
{
    // clang-format off
    static const std::vector<Row> rows = {
        GET(CardReaderAuth, getCardReaderAuthAbilityRequest, CardReaderVerifyTypePlan, 109, "cardReaderVerifyTypePlan", verifyMode.options = {"card"}),
        GET(CardReaderAuth, getAuthPlanTemplateNoRequest, CardReaderVerifyPlanTemplateNo, 2136, "cardReaderVerifyPlanTemplateNo", cardReaderVerifyPlanList.resize(2)),
        SET(CardReaderAuth, setAuthPlanTemplateNoRequest, CardReaderVerifyPlanTemplateNo, 4144, "cardReaderVerifyPlanTemplateNo", cardReaderVerifyPlanList.resize(1)),
        GET(CardReaderAuth, getPlanTemplateParamRequest, VerifyPlanTemplateParam, 2127, "verifyPlanTemplateParam", verifyPlanTemplateList.resize(1)),
        SET(CardReaderAuth, setPlanTemplateParamRequest, VerifyPlanTemplateParam, 4127, "verifyPlanTemplateParam", verifyPlanTemplateList.resize(2)),
        GET(CardReaderAuth, getCardReaderAuthParamRequest, VerifyWeekPlanCfgData, 2130, "verifyWeekPlanCfgData", verifyWeekPlanCfg.verifyWeekPlanList.resize(1)),
        SET(CardReaderAuth, setCardReaderAuthParamRequest, VerifyWeekPlanCfgData, 4130, "verifyWeekPlanCfgData", verifyWeekPlanCfg.verifyWeekPlanList.resize(2)),

        GET(CGetMultiDoorInterLock, getMultiDoorInterLockInfo, MultiDoorInterLockParam, 2111, "multiDoorInterLockParam", groupList.resize(3)),
        SET(CGetMultiDoorInterLock, setMultiDoorInterLockInfo, MultiDoorInterLockParam, 4111, "multiDoorInterLockParam", openTimeout = 30),

        GET(AntiBack, getClearRecordCapRequest, ClearAntiSneak, 301, "clearAntiSneak", employeeNo.max = 32),
        GET(AntiBack, getAntiBackParamRequest, AcsAntiSneakParamCfg, 2109, "acsAntiSneakParamCfg", startCardReaderNo = 4),
        SET(AntiBack, setAntiBackParamRequest, AcsAntiSneakParamCfg, 4109, "acsAntiSneakParamCfg", enable = true),
        GET(AntiBack, getCardReaderAntiBackParamRequest, AcsCardReaderAntiSneakParamCfg, 2110, "acsCardReaderAntiSneakParamCfg", cardReaderAntiSneakList.resize(2)),
        SET(AntiBack, setCardReaderAntiBackParamRequest, AcsCardReaderAntiSneakParamCfg, 4110, "acsCardReaderAntiSneakParamCfg", cardReaderAntiSneakList.resize(1)),
        SET(AntiBack, clearAntiBackParamRequest, AcsClearAntiSneakParamCfg, 4154, "acsClearAntiSneakParamCfg", resetRule = true),
        SET(AntiBack, clearAntiBackRecordRequest, AcsClearAntiSneakRecord, 4168, "acsClearAntiSneakRecord", employeeNoList = {"\xE9\x97\xA8 7"}),
        GET(AntiBack, getAntiBackRestRulesCapRequest, AntiPassbackrestRulesCapability, 1305, "antiPassbackrestRulesCapability", resetInterval.min = 5),
        GET(AntiBack, getAntiBackResetRuleParamRequest, AntiBackResetRuleConfig, 2145, "antiBackResetRuleConfig", resetInterval = 90),
        SET(AntiBack, setAntiBackResetRuleParamRequest, AntiBackResetRuleConfig, 4145, "antiBackResetRuleConfig", resetMode = "daily"),
        GET(AntiBack, getAntiBackNTScheduleCapRequest, AntiBackNTScheduleCap, 1306, "antiBackNTScheduleCap", holidayList.max = 16),
        GET(AntiBack, getAntiBackNTScheduleParamRequest, AntiBackNTScheduleConfig, 2146, "antiBackNTScheduleConfig", dayPlanList.resize(7)),
        SET(AntiBack, setAntiBackNTScheduleParamRequest, AntiBackNTScheduleConfig, 4146, "antiBackNTScheduleConfig", holidayList.resize(1)),

        CONFIG_GET(MultiNetworkCardParameters, 2119, "multiNetworkCardParameters", networkCardList.resize(2)),
        CONFIG_SET(MultiNetworkCardParameters, 4119, "multiNetworkCardParameters", workMode = "loadBalance"),
        CONFIG_GET(MultiNetworkCardParametersAbility, 112, "multiNetworkCardParametersAbility", mtu.max = 1500),
        CONFIG_GET(SnapConfig, 2205, "snapConfig", snapIntervalList = {500}),
        CONFIG_SET(SnapConfig, 4250, "snapConfig", snapTimes = 3),
        CONFIG_GET(SnapConfigAbility, 247, "snapConfigAbility", resolution.options = {"VGA"}),
        CONFIG_GET(M1CardEncryptCfg, 2206, "m1CardEncryptCfg", sectorNo = 13),
        CONFIG_SET(M1CardEncryptCfg, 4205, "m1CardEncryptCfg", sectorKey = "A0A1A2A3A4A5"),
        CONFIG_GET(M1CardParametersAbility, 241, "m1CardParametersAbility", sectorNo.max = 15),
        CONFIG_GET(RS485Parameters, 2117, "rS485Parameters", baudRate = 115200),
        CONFIG_SET(RS485Parameters, 4117, "rS485Parameters", parity = "even"),
        CONFIG_GET(RS485ParametersAbility, 111, "rS485ParametersAbility", baudRate = {9600}),
        CONFIG_GET(AcsExternelParameters, 2140, "acsExternelParameters", externelDeviceList.resize(1)),
        CONFIG_SET(AcsExternelParameters, 4143, "acsExternelParameters", offlineCheckTime = 20),
        CONFIG_GET(IdentityTerminal, 2207, "identityTerminal", faceVerifyThreshold = 80),
        CONFIG_SET(IdentityTerminal, 4204, "identityTerminal", terminalMode = "identityCheck"),
        CONFIG_GET(IdentityTerminalAbility, 242, "identityTerminalAbility", blockListCheck = true),
        CONFIG_GET(WigginParameters, 2203, "wigginParameters", pulseWidth = 100),
        CONFIG_SET(WigginParameters, 4203, "wigginParameters", wigginMode = "wiegand34"),
        CONFIG_GET(WigginParametersAbility, 240, "wigginParametersAbility", direction.defaultOption = "send"),
        CONFIG_GET(ReportTypeParameters, 2202, "reportTypeParameters", backupChannelList = {"mobile1"}),
        CONFIG_SET(ReportTypeParameters, 4202, "reportTypeParameters", centerGroupNo = 2),
        CONFIG_GET(ReportCenterCfgAbility, 244, "reportCenterCfgAbility", testReport = true),
        CONFIG_GET(NetworkCenterParameters, 2115, "networkCenterParameters", port = 65535),
        CONFIG_SET(NetworkCenterParameters, 4115, "networkCenterParameters", password = "p\"w"),
        CONFIG_GET(NetCfgAbility, 245, "netCfgAbility", port.min = 1),
        CONFIG_GET(WirelessCenterParameters, 2116, "wirelessCenterParameters", apn = "internet"),
        CONFIG_SET(WirelessCenterParameters, 4116, "wirelessCenterParameters", apnPassword = "s\\t"),
        CONFIG_GET(WirelessNetWorkCfgAbility, 246, "wirelessNetWorkCfgAbility", apn.max = 63),
        CONFIG_GET(AttendanceStatusRuleCfg, 2216, "attendanceStatusRuleCfg", dayPlanList.resize(5)),
        CONFIG_SET(AttendanceStatusRuleCfg, 4137, "attendanceStatusRuleCfg", attendanceStatus = "breakOut"),
        CONFIG_GET(AttendanceStatusRuleCfgAbility, 117, "attendanceStatusRuleCfgAbility", statusName.max = 32),
        CONFIG_GET(AttendanceStatusModeCfg, 2217, "attendanceStatusModeCfg", statusHoldTime = 60),
        CONFIG_SET(AttendanceStatusModeCfg, 4138, "attendanceStatusModeCfg", attendanceStatusMode = "auto"),
        CONFIG_GET(AttendanceStatusModeCfgAbility, 118, "attendanceStatusModeCfgAbility", statusPrompt = true),

        GET(cfginterface, getNetworkCapRequest, NetworkCap, 1301, "networkCap", networkCardNum = 2),
        GET(cfginterface, getCorvidCapRequest, CorvidAbility, 1302, "corvidAbility", tls = true),
        GET(cfginterface, getCorvidRequest, CorvidParam, 2270, "corvidParam", deviceID = "dev 1"),
        MakeSet<protocol::CorvidParam>("setCorvidRequest", 4300, "corvidParam", CHANGE(corvidKey = "k"), [](auto& in, auto& id) { return cfginterface::setCorvidRequest(id, in); }),
    };
    // clang-format on
    return rows;
}

/// A text as it stands inside a JSON text.
std::string Escaped(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        case '"':
        case '\\':
            result += '\\';
            [[fallthrough]];
        default:
            result += c;
        }
    }
    return result;
}

std::string Answer(const std::string& outBuffer)
{
    return R"({"code":"0-0","msg":"","data":{"dagPassThroughRsp":{"outBuffer":")" + Escaped(outBuffer) +
           R"(","statusBuffer":"ok"}}})";
}

TEST(DeviceConfig, EveryFunctionSendsItsCommandOnTheExternalRoute)
{
    test::Library library;
    const std::string condition = "7 \"\\\n\xE9\x97\xA8";
    for (const Row& row : Rows()) {
        for (const std::string& id : test::HostileIds()) {
            SCOPED_TRACE(row.name + " " + id);
            library.wire.requests.clear();
            library.wire.AnswerWith(Answer(row.sample));
            std::string output;
            EXPECT_TRUE(row.call(id, condition, output));

            ASSERT_EQ(library.wire.requests.size(), 1u);
            const RequestParams& request = library.wire.Last();
            EXPECT_EQ(request.url, "/7730/v1/deviceManagement/devices/" + id + "/dagPassThrough");
            EXPECT_EQ(request.method, 2);
            EXPECT_EQ(request.timeoutMs, 40000);
            EXPECT_TRUE(request.headers.empty() && request.params.empty());
            EXPECT_EQ(request.body, "{\n\t\"dagPassThroughReq\":\t{\n\t\t\"command\":\t" + std::to_string(row.command) +
                                        ",\n\t\t\"condBuffer\":\t\"" + (row.hasCondition ? Escaped(condition) : "") +
                                        "\",\n\t\t\"inBuffer\":\t\"" + (row.reads ? "" : Escaped(row.sample)) +
                                        "\"\n\t}\n}");
        }
    }
}

TEST(DeviceConfig, GettersReadTheStructureUnderItsRootName)
{
    test::Library library;
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.name);
        const std::string opening = "{\n\t\"" + row.root + "\":\t{";
        EXPECT_EQ(row.sample.substr(0, opening.size()), opening);
        EXPECT_NE(row.sample, row.plain);
        if (row.reads) {
            library.wire.AnswerWith(Answer(row.sample));
            std::string output;
            EXPECT_TRUE(row.call("d", "", output));
            EXPECT_EQ(output, row.sample);
        }
    }
}

TEST(DeviceConfig, GettersRefuseAnswersWithoutTheStructureAndLeaveTheResultAlone)
{
    test::Library library;
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.name);
        const std::string withoutRoot = row.sample.substr(row.sample.find(":\t") + 2);
        for (const std::string& text : {std::string(), row.sample + "x", row.sample.substr(0, row.sample.size() - 1),
                                        withoutRoot.substr(0, withoutRoot.size() - 2), std::string("null")}) {
            library.wire.AnswerWith(Answer(text));
            std::string output;
            // A setter asks no more of the device's text than that it came.
            EXPECT_EQ(row.call("d", "", output), !row.reads) << text;
            EXPECT_EQ(output, row.reads ? row.plain : "") << text;
        }
    }
}

TEST(DeviceConfig, FailedExchangesFailEveryFunction)
{
    test::Library library;
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.name);
        std::string output;
        library.wire.Fail();
        EXPECT_FALSE(row.call("d", "", output));
        library.wire.AnswerWith("<html>");
        EXPECT_FALSE(row.call("d", "", output));
    }
}

TEST(DeviceConfig, PlansNestAsWritten)
{
    test::Library library;
    protocol::VerifyWeekPlanCfgData input;
    protocol::VerifyWeekPlan& plan = input.verifyWeekPlanCfg.verifyWeekPlanList.emplace_back();
    plan.weekPlanNo = 3;
    protocol::VerifyDayPlan& day = plan.dayPlanList.emplace_back();
    day.week = "Monday";
    protocol::VerifyTimeSegment& segment = day.timeSegmentList.emplace_back();
    segment.timeSegment.beginTime = "08:00:00";
    segment.timeSegment.endTime = "24:00:00";
    segment.verifyMode = "cardAndPassword";

    library.wire.AnswerWith(Answer(SerializeRequest(input)));
    protocol::VerifyWeekPlanCfgData output;
    ASSERT_TRUE(CardReaderAuth::getCardReaderAuthParamRequest(output, "d"));
    ASSERT_EQ(output.verifyWeekPlanCfg.verifyWeekPlanList.size(), 1u);
    const protocol::VerifyDayPlan& read = output.verifyWeekPlanCfg.verifyWeekPlanList[0].dayPlanList.at(0);
    EXPECT_EQ(read.week, "Monday");
    EXPECT_EQ(read.timeSegmentList.at(0).timeSegment.endTime, "24:00:00");
    EXPECT_EQ(read.timeSegmentList.at(0).verifyMode, "cardAndPassword");
}

} // namespace
