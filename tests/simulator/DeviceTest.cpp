#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <map>

#include "Client.h"
#include "src/Wire.h"

namespace {

using test::Device;
using test::Person;
using test::Reply;
using test::Site;
using testing::ElementsAre;
using testing::HasSubstr;

std::string Quoted(const std::string& text)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    writer.String(text.c_str(), static_cast<rapidjson::SizeType>(text.size()));
    return buffer.GetString();
}

class DeviceTest : public testing::Test {
protected:
    Reply Run(int command, const std::string& condition = {}, const std::string& input = {}, int device = 1,
              const std::string& route = "")
    {
        return site.Post(route + "deviceManagement/devices/" + Device(device) + "/dagPassThrough",
                         "{\"dagPassThroughReq\":{\"command\":" + std::to_string(command) +
                             ",\"condBuffer\":" + Quoted(condition) + ",\"inBuffer\":" + Quoted(input) + "}}");
    }
    static std::string Out(const Reply& reply) { return reply.Text("/data/dagPassThroughRsp/outBuffer"); }

    Reply Batch(const std::string& members, int device = 1)
    {
        return site.Post("deviceManagement/devices/" + Device(device) + "/batchPassThrough",
                         "{\"batchPassThroughReq\":{" + members + "}}");
    }
    static std::vector<std::string> Ids(const Reply& reply)
    {
        return reply.Texts("/data/batchPassThroughRsp/batchReturnDataList", "id");
    }
    static std::string Finished(const Reply& reply) { return reply.Print("/data/batchPassThroughRsp/isFinish"); }

    Site site;
};

TEST_F(DeviceTest, AnswersExactlyWhatWasSetPerCondition)
{
    const std::string input = "{\n\t\"acsDoorParamCfg\":\t{\n\t\t\"doorName\":\t\"T\xC3\xBCr \\\"1\\\"\"\n\t}\n}";
    const std::string other = Out(Run(2102, "2"));
    const Reply set = Run(4102, "1", input);
    EXPECT_EQ(set.Code(), "0-0") << set.body;
    EXPECT_EQ(Out(set), "");
    EXPECT_THAT(set.Text("/data/dagPassThroughRsp/statusBuffer"), HasSubstr("\"statusCode\":1"));
    EXPECT_EQ(Out(Run(2102, "1")), input);
    EXPECT_EQ(Out(Run(2102, "1", "", 1, "internal/")), input) << "both routes lead to the same device";
    EXPECT_EQ(Out(Run(2102, "2")), other);
    EXPECT_NE(Out(Run(2102, "1", "", 2)), input);

    // Set without a condition, it holds for every condition that has nothing of its own.
    const std::string snap = "{\"snapConfig\":{\"snapTimes\":3}}";
    const std::string own = "{\"snapConfig\":{\"snapTimes\":4}}";
    Run(4250, "", snap);
    Run(4250, "2", own);
    EXPECT_EQ(Out(Run(2205, "1")), snap);
    EXPECT_EQ(Out(Run(2205, "2")), own);
    Run(4201, "1", "{\"eventCardLinkageCfg\":{\"enable\":true}}");
    EXPECT_EQ(Run(4155, "1").Code(), "0-0");
    EXPECT_THAT(Out(Run(2201, "1")), HasSubstr("\"enable\":false"));
}

TEST_F(DeviceTest, Refuses)
{
    const std::string door = "{\"acsDoorParamCfg\":{}}";
    const struct {
        const char* what;
        int command;
        std::string condition;
        std::string input;
        int device;
        std::string code;
    } cases[] = {
        {"command", 9999, "", "", 1, "4-41"},
        {"device", 2102, "1", "", 99, "4-21"},
        {"device that is away", 2102, "1", "", 14, "4-40"},
        {"door past the last", 2102, "3", "", 1, "4-43"},
        {"door 0", 2102, "0", "", 1, "4-43"},
        {"no door", 2102, "", "", 1, "4-43"},
        {"door in words", 2102, "1x", "", 1, "4-43"},
        {"set past the last door", 4102, "9", door, 1, "4-43"},
        {"empty input", 4102, "1", "", 1, "4-43"},
        {"input not JSON", 4102, "1", "{\"acsDoorParamCfg\":", 1, "4-43"},
        {"another structure", 4102, "1", "{\"acsHostParamCfg\":{}}", 1, "4-43"},
        {"a list", 4102, "1", "{\"acsDoorParamCfg\":[]}", 1, "4-43"},
        {"misspelled", 4102, "1", "{\"acsDoorParamCfg\":{\"openduration\":3}}", 1, "4-43"},
        {"text for a number", 4102, "1", "{\"acsDoorParamCfg\":{\"openDuration\":\"3\"}}", 1, "4-43"},
        {"too deep", 4102, "1", "{\"acsDoorParamCfg\":{\"a\":" + std::string(5000, '[') + "}}", 1, "4-43"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Run(c.command, c.condition, c.input, c.device).Code(), c.code) << c.what;
    }
    EXPECT_THAT(Out(Run(2102, "1")), HasSubstr("\"openDuration\":5")) << "a refused set changed something";
    EXPECT_EQ(
        site.Post("deviceManagement/devices/" + Device(1) + "/dagPassThrough", "{\"dagPassThroughReq\":{}}").Code(),
        "4-7");
    EXPECT_EQ(site.Put("internal/deviceManagement/clearPictureCache").Code(), "0-0");
}

TEST_F(DeviceTest, EveryReadableCommandAnswersWhatItTakesBack)
{
    const nexwire::simulator::Wire library(nexwire::simulator::EmbeddedDocument());
    std::map<std::string, int> setters;
    for (const auto& function : library.Functions()) {
        if (function.input != nullptr) {
            setters[function.input->root] = static_cast<int>(function.command);
        }
    }
    int read = 0;
    for (const auto& function : library.Functions()) {
        if (function.output == nullptr || function.command == 0) {
            continue;
        }
        ++read;
        const int command = static_cast<int>(function.command);
        const std::string& root = function.output->root;
        const std::string text = Out(Run(command, "1"));
        if (text.substr(0, 1) == "<") {
            continue; // A capability document of another kind.
        }
        rapidjson::Document out;
        out.Parse(text.c_str());
        ASSERT_FALSE(out.HasParseError()) << command << " " << text;
        ASSERT_EQ(out.MemberCount(), 1u) << command;
        ASSERT_TRUE(out.HasMember(root.c_str())) << command;
        EXPECT_GT(out[root.c_str()].MemberCount(), 0u) << command;
        EXPECT_EQ(text.find('$'), std::string::npos) << command << " " << text;
        if (setters.count(root) != 0) {
            const Reply set = Run(setters[root], "1", text);
            EXPECT_EQ(set.Code(), "0-0") << command << " " << set.body;
            EXPECT_EQ(Out(Run(command, "1")), text);
        }
    }
    EXPECT_GT(read, 70);
}

TEST_F(DeviceTest, CountsFollowTheDownload)
{
    const Reply group =
        site.Put("accessController/accessGroups",
                 "{\"accessGroupAddParam\":{\"name\":\"G\",\"personnelAddList\":[{\"personnelGuid\":\"" + Person(1) +
                     "\",\"personnelNo\":\"1001\"},{\"personnelGuid\":\"" + Person(8) +
                     "\"}],\"objectAddList\":[{\"deviceGuid\":\"" + Device(1) + "\",\"objectGuid\":\"d\"}]}}");
    const auto counts = [&] {
        return Out(Run(2141)) + Out(Run(2142)) + Out(Run(2143)) + Out(Run(2144)) + Out(Run(2147)) + Out(Run(2218));
    };
    EXPECT_THAT(counts(), HasSubstr("\"userNum\":0"));
    site.Put("accessController/accessDownload",
             "{\"accessDownload\":{\"accessGroupDownList\":[{\"accessgroupGuid\":\"" +
                 group.Text("/data/accessGroupModifyResult/accessGroupGuid") + "\"}]}}");
    site.Advance(1000);
    // The first person: a card, a finger, a face. The eighth: two cards, two fingers, an iris.
    for (const char* part : {"\"cardNum\":3", "\"userNum\":2", "\"cardUserNum\":2", "\"faceUserNum\":1",
                             "\"faceNum\":1", "\"fingerPrintNum\":3", "\"irisNum\":1", "[\"1001\"]"}) {
        EXPECT_THAT(counts(), HasSubstr(part));
    }
    EXPECT_THAT(Out(Run(2141, "", "", 2)), HasSubstr("\"cardNum\":0"));
}

TEST_F(DeviceTest, BatchesComeInPages)
{
    std::string items;
    for (int i = 1; i <= 7; ++i) {
        const std::string input =
            i == 3 ? "bad" : "{\"attendanceStatusRuleCfg\":{\"statusName\":\"" + std::to_string(i) + "\"}}";
        items += (i == 1 ? "" : ",") + std::string("{\"id\":\"") + std::to_string(i) +
                 "\",\"inBuffer\":" + Quoted(input) + "}";
    }
    const auto split = items.find(",{\"id\":\"6\"");
    const Reply first = Batch("\"guid\":\"\",\"command\":4137,\"hasNext\":true,\"maxResultNum\":3,"
                              "\"batchSendDataList\":[" +
                              items.substr(0, split) + "]");
    EXPECT_THAT(Ids(first), ElementsAre("1", "2", "3"));
    EXPECT_EQ(first.Int("/data/batchPassThroughRsp/batchReturnDataList/2/code"), 43);
    EXPECT_EQ(Finished(first), "false");
    const std::string guid = "\"guid\":\"" + first.Text("/data/batchPassThroughRsp/guid") + "\",\"command\":4137";
    const Reply second =
        Batch(guid + ",\"hasNext\":false,\"maxResultNum\":3,\"batchSendDataList\":[" + items.substr(split + 1) + "]");
    EXPECT_THAT(Ids(second), ElementsAre("4", "5", "6"));
    EXPECT_EQ(Finished(second), "false");
    const Reply again = Batch(guid + ",\"getPreviousData\":true,\"maxResultNum\":3");
    EXPECT_THAT(Ids(again), ElementsAre("4", "5", "6"));
    const Reply last = Batch(guid + ",\"maxResultNum\":3");
    EXPECT_THAT(Ids(last), ElementsAre("7"));
    EXPECT_EQ(Finished(last), "true");
    EXPECT_THAT(Ids(Batch(guid + ",\"getPreviousData\":true")), ElementsAre("7"));
    EXPECT_EQ(Batch(guid + ",\"batchSendDataList\":[{\"id\":\"8\"}]").Code(), "4-42") << "the last item was sent";
    EXPECT_EQ(Batch(guid, 2).Code(), "4-42") << "another device's transfer";

    // What was sent comes back, all of it or by condition; the one that was refused is not there.
    const Reply all = Batch("\"command\":2216,\"maxResultNum\":0");
    EXPECT_THAT(Ids(all), ElementsAre("1", "2", "4", "5", "6", "7"));
    EXPECT_EQ(all.Text("/data/batchPassThroughRsp/batchReturnDataList/3/outBuffer"),
              "{\"attendanceStatusRuleCfg\":{\"statusName\":\"5\"}}");
    const Reply some = Batch("\"command\":2216,\"batchSendDataList\":[{\"id\":\"a\",\"inBuffer\":\"NQ==\","
                             "\"inBufferEncoding\":\"base64\"},{\"id\":\"b\",\"inBuffer\":\"?\","
                             "\"inBufferEncoding\":\"base64\"}]");
    EXPECT_EQ(some.Text("/data/batchPassThroughRsp/batchReturnDataList/0/outBuffer"),
              "{\"attendanceStatusRuleCfg\":{\"statusName\":\"5\"}}");
    EXPECT_EQ(some.Int("/data/batchPassThroughRsp/batchReturnDataList/1/code"), 8);

    const Reply open = Batch("\"command\":2216,\"maxResultNum\":2");
    const std::string openGuid = "\"guid\":\"" + open.Text("/data/batchPassThroughRsp/guid") + "\",\"command\":2216";
    EXPECT_EQ(Finished(Batch(openGuid + ",\"cancel\":true")), "true");
    EXPECT_EQ(Batch(openGuid).Code(), "4-42") << "cancelled";
    EXPECT_EQ(Batch("\"command\":1").Code(), "4-41");
    EXPECT_EQ(Batch("\"command\":2216", 14).Code(), "4-40");
    site.Advance(11 * 60 * 1000);
    Batch("\"command\":2216");
    EXPECT_EQ(Batch(guid).Code(), "4-42") << "an abandoned transfer is forgotten";
}

} // namespace
