// Commands for the devices themselves: intercom control and notices, lift relays, linkages, Wiegand formats.

#include <gtest/gtest.h>

#include "accessplan/Vector.h"
#include "nexwire/AccessController/EventCardLinkage.h"
#include "nexwire/AccessController/Intercom.h"
#include "nexwire/AccessController/LadderControlRelay.h"
#include "nexwire/AccessController/Wiegand.h"
#include "nexwire/ParseJSONUtil.h"
#include "protocol/PassThrough/PassThrough.h"

namespace {

using namespace nexwire;
using namespace test;

const std::string kExternal = "/7730/v1/deviceManagement/devices/*/dagPassThrough";
const std::string kInternal = "/7730/v1/internal/deviceManagement/devices/*/dagPassThrough";

/// A vector whose body is what goes to the device, and the condition beside it.
struct DeviceVector {
    Vector vector;
    std::string condition;
};

const std::string kStation =
    R"({"unitIndex":1,"deviceName":"Gate","unitType":"outdoor","serialNumber":"s","ipAddress":"192.0.2.7","port":8000,)"
    R"("periodNo":1,"buildingNo":2,"unitNo":3,"floorNo":-1,"number":0,"lockNum":2,"online":true})";
const std::string kRange = R"({"min":1,"max":32})";
const std::string kOptions = R"({"options":["open","close"],"defaultOption":"open"})";
const std::string kRelay = R"({"ladderControlRelay":{"relayNo":3,"moduleNo":0,"enable":true,"relayType":"auto",)"
                           R"("floorNo":-1,"floorName":"B1","openDuration":5,"openDelay":0}})";
const std::string kLinkage =
    R"({"eventCardLinkageCfg":{"enable":true,"linkageType":"card","eventType":"","eventCode":0,"sourceNo":0,)"
    R"("cardNo":"123","employeeNo":"","buzzerLinkage":false,"captureLinkage":true,"recordLinkage":false,)"
    R"("openDoorList":[1,4],"closeDoorList":[],"alwaysOpenDoorList":[],"alwaysCloseDoorList":[],)"
    R"("readerBuzzerList":[2],"alarmOutOpenList":[],"alarmOutCloseList":[],"zoneArmList":[],"zoneDisarmList":[],)"
    R"("audioNo":0}})";

protocol::EventCardLinkageCfg Linkage()
{
    protocol::EventCardLinkageCfg linkage;
    linkage.enable = true;
    linkage.linkageType = "card";
    linkage.cardNo = "123";
    linkage.captureLinkage = true;
    linkage.openDoorList = {1, 4};
    linkage.readerBuzzerList = {2};
    return linkage;
}

/// A get: what is held afterwards stands under its root name, as in the device's answer.
template <class Structure, class Call>
Vector DeviceReading(std::string name, int command, std::string answer, Call call)
{
    const auto output = std::make_shared<Structure>();
    return {std::move(name),
            kExternal,
            command,
            "",
            std::move(answer),
            [output, call](const std::string& id) { return call(*output, id); },
            [output] { return Compact(protocol::SerializeRequest(*output)); }};
}

std::vector<DeviceVector> DeviceVectors()
{
    const auto resource = [] {
        protocol::ResourceControl control;
        control.resourceType = "lift";
        control.resourceNo = 2;
        control.cmd = "open";
        control.openDuration = 9;
        control.floorNo = -1;
        control.operatorName = "o";
        return control;
    };
    const std::string resourceText = R"({"resourceControl":{"resourceType":"lift","resourceNo":2,"cmd":"open",)"
                                     R"("openDuration":9,"floorNo":-1,"operatorName":"o"}})";
    return {
        {{"resourceControlGateway", kExternal, 4220, resourceText, "",
          [resource](auto& id) { return DialLogComm::resourceControlGateway(resource(), id); }},
         ""},
        {{"corvidKestrelControlGateway", kExternal, 4230, resourceText, "",
          [resource](auto& id) { return DialLogComm::corvidKestrelControlGateway(resource(), id); }},
         ""},
        {{"remoteControlGateway", kExternal, 4221,
          R"({"remoteControlGateway":{"gatewayNo":1,"lockNo":2,"cmd":"open","controlSource":"calling",)"
          R"("operatorName":""}})",
          "",
          [](auto& id) {
              protocol::RemoteControlGateway control;
              control.lockNo = 2;
              control.cmd = "open";
              control.controlSource = "calling";
              return DialLogComm::remoteControlGateway(control, id);
          }},
         ""},
        {DeviceReading<protocol::OutDoorUnitInfo>(
             "getOutDoorUnitInfo", 2135, R"({"outDoorUnitInfo":{"outDoorUnitList":[)" + kStation + "]}}",
             [](auto& output, auto& id) { return DialLogComm::getOutDoorUnitInfo(output, id); }),
         ""},
        {DeviceReading<protocol::RemoteControlDoor>(
             "getKestrelControlGatewayCap", 1304,
             R"({"remoteControlDoor":{"isSupport":true,"gatewayNo":)" + kRange + R"(,"lockNo":)" + kRange +
                 R"(,"cmd":)" + kOptions + R"(,"controlSource":)" + kOptions + R"(,"operatorName":)" + kRange + "}}",
             [](auto& output, auto& id) { return DialLogComm::getKestrelControlGatewayCap(output, id); }),
         ""},
        {{"sendNotice", kExternal, 4222,
          R"({"noticeInfo":{"noticeNumber":"7","noticeType":"alarm","noticeTitle":"t","noticeContent":"c",)"
          R"("noticeTime":"","roomList":["101"],"pictureUrlList":[]}})",
          "",
          [](auto& id) {
              protocol::NoticeInfo notice;
              notice.noticeNumber = "7";
              notice.noticeType = "alarm";
              notice.noticeTitle = "t";
              notice.noticeContent = "c";
              notice.roomList = {"101"};
              return NoticeLogComm::sendNotice(notice, id);
          }},
         ""},
        {DeviceReading<protocol::EventCardLinkageCfg>(
             "EventCardLinkage::requestGET", 2201, kLinkage,
             [](auto& output, auto& id) { return EventCardLinkage::requestGET(output, id, 12); }),
         "12"},
        {{"EventCardLinkage::requestSET", kExternal, 4201, kLinkage, "",
          [](auto& id) {
              protocol::ReturnRst result;
              return EventCardLinkage::requestSET(result, Linkage(), id, -2147483647 - 1);
          }},
         "-2147483648"},
        {{"EventCardLinkage::requestClear", kExternal, 4155, "", "",
          [](auto& id) { return EventCardLinkage::requestClear(id, 0); }},
         "0"},
        {DeviceReading<protocol::LadderControlRelay>(
             "getLadderControlRelayCfg", 2214, kRelay,
             [](auto& output, auto& id) { return LadderControlRelay::getLadderControlRelayCfg(output, id, 128); }),
         "128"},
        {{"setLadderControlRelayCfg", kExternal, 4251, kRelay, "",
          [](auto& id) {
              protocol::LadderControlRelay relay;
              relay.relayNo = 3;
              relay.enable = true;
              relay.relayType = "auto";
              relay.floorNo = -1;
              relay.floorName = "B1";
              return LadderControlRelay::setLadderControlRelayCfg(relay, id, 3);
          }},
         "3"},
        {{"AcsCustomWiegandConfig", kInternal, 4208,
          R"({"wiegandModifyParam":{"guid":"g","name":"","enabled":false,"totalLength":26,"checkType":0,)"
          R"("oddBeginBit":0,"oddLength":0,"evenBeginBit":0,"evenLength":0,"xorBeginBit":0,"xorPerLength":0,)"
          R"("xorTotalLength":0,"deviceGuidList":[],"outRuleList":[]}})",
          "",
          [](auto& id) {
              protocol::WiegandModifyParam param;
              param.guid = "g";
              param.totalLength = 26;
              return AcsCustomWiegandConfig::setAcsChannelControlParamRequest(param, id);
          }},
         ""},
    };
}

/// The platform's envelope around a device's answer.
std::string DeviceAnswer(const std::string& outBuffer, const std::string& statusBuffer = {})
{
    protocol::DagPassThroughRsp answer;
    answer.outBuffer = outBuffer;
    answer.statusBuffer = statusBuffer;
    return R"({"code":"0-0","data":{"dagPassThroughRsp":)" + Compact(answer) + "}}";
}

TEST(DeviceSide, EachFunctionSendsItsCommand)
{
    for (const auto& [vector, condition] : DeviceVectors()) {
        for (const std::string& id : HostileIds()) {
            SCOPED_TRACE(vector.name + " with \"" + id + "\"");
            Library library;
            library.wire.otherwise = DeviceAnswer(vector.answer);
            EXPECT_TRUE(vector.call(id));
            EXPECT_EQ(vector.held(), vector.answer);
            ASSERT_EQ(library.wire.requests.size(), 1u);
            const RequestParams& request = library.wire.Last();
            EXPECT_EQ(request.url, With(vector.where, id));
            EXPECT_EQ(request.method, 2);
            EXPECT_EQ(request.timeoutMs, RequestParams::kDefaultTimeoutMs);
            EXPECT_TRUE(request.headers.empty());

            protocol::DagPassThroughReq sent;
            ASSERT_TRUE(protocol::TParseJSONStr(sent, request.body));
            EXPECT_EQ(sent.command, vector.code);
            EXPECT_EQ(sent.condBuffer, condition);
            EXPECT_EQ(Compact(sent.inBuffer), vector.body);
            EXPECT_EQ(sent.inBuffer.empty(), vector.body.empty());
        }
    }
}

TEST(DeviceSide, AGetNeedsTheDevicesAnswerASetOnlyThePlatforms)
{
    for (const auto& [vector, condition] : DeviceVectors()) {
        SCOPED_TRACE(vector.name);
        const bool set = vector.answer.empty();
        const std::string before = vector.held();
        Library library;
        for (const char* const silent : {"", "busy", R"({"somethingElse":{}})"}) {
            library.wire.AnswerWith(DeviceAnswer(silent));
            EXPECT_EQ(vector.call("id"), set) << silent;
        }
        library.wire.AnswerWith("<html>");
        EXPECT_FALSE(vector.call("id"));
        library.wire.Fail();
        EXPECT_FALSE(vector.call("id"));
        EXPECT_EQ(vector.held(), before);
    }
}

TEST(EventCardLinkage, SetHandsOutTheDevicesWord)
{
    const std::string done = R"({"returnRst":{"statusCode":1,"statusString":"OK"}})";
    const std::string refused = R"({"returnRst":{"statusCode":4,"subStatusCode":"badCard","errorCode":9}})";
    const struct {
        std::string status, out;
        int statusCode;
    } cases[] = {
        {refused, "", 4}, {"", refused, 4}, {refused, done, 4}, {"busy", done, 1}, {"", "", 0}, {"busy", "{}", 0},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.status + " | " + row.out);
        Library library;
        protocol::ReturnRst result;
        result.statusCode = 77; // Of an earlier call.
        result.errorMsg = "earlier";
        library.wire.Fail();
        EXPECT_FALSE(EventCardLinkage::requestSET(result, Linkage(), "id", 1));
        EXPECT_EQ(result.statusCode, 77);

        library.wire.AnswerWith(DeviceAnswer(row.out, row.status));
        EXPECT_TRUE(EventCardLinkage::requestSET(result, Linkage(), "id", 1));
        EXPECT_EQ(result.statusCode, row.statusCode);
        EXPECT_EQ(result.subStatusCode, row.statusCode == 4 ? "badCard" : "");
        EXPECT_EQ(result.errorMsg, "");
    }
}

} // namespace
