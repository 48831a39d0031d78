#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulator/Client.h"

namespace {

using nexwire::simulator::Options;
using nexwire::simulator::Platform;
using test::Client;
using test::Device;
using test::Reply;
using test::SendRaw;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const std::string kGroups = "/7730/v1/accessController/accessGroups";
const std::string kCommands = "/7730/v1/deviceManagement/devices/" + Device(1) + "/dagPassThrough";
const std::string kOpenDoor = R"({"dagPassThroughReq":{"command":2102,"condBuffer":"1"}})";

std::string AddBody(const std::string& name)
{
    return "{\"accessGroupAddParam\":{\"name\":\"" + name + "\"}}";
}

/// A platform, its API and its workbench on one connection.
class Workbench : public testing::Test {
protected:
    explicit Workbench(Options options = {}) : platform(std::move(options))
    {
        std::string error;
        EXPECT_TRUE(platform.Start(error)) << error;
        client = std::make_unique<Client>(platform.Port());
    }

    Reply Send(const std::string& verb, const std::string& path, const std::string& body = {})
    {
        return client->Send(verb, path.front() == '/' ? path : "/_workbench/" + path, body);
    }

    Platform platform;
    std::unique_ptr<Client> client;
};

TEST_F(Workbench, TellsWhatWentOverTheWireInWordsOfTheLibrary)
{
    Send("PUT", kGroups, AddBody("it's mine"));
    Send("PUT", kGroups + "/none", R"({"accessGroupModifyParam":{"description":"x"}})");
    Send("GET", "/7730/v1/nothing");
    Send("POST", kCommands, kOpenDoor);
    const Reply added = Send("GET", "exchanges/1");
    EXPECT_EQ(added.Print("/functions"), R"(["CAccessGroupComm::addAccessGroup"])");
    EXPECT_EQ(added.Text("/outcome"), "ok");
    EXPECT_EQ(added.Text("/request/text"), AddBody("it's mine"));
    EXPECT_EQ(added.Text("/lines/curl"), "curl -X PUT http://127.0.0.1:" + std::to_string(platform.Port()) + kGroups +
                                             " -H 'Content-Type: application/json' --data-binary"
                                             R"( '{"accessGroupAddParam":{"name":"it'\''s mine"}}')");
    EXPECT_EQ(added.Text("/lines/call"), "nexwire call CAccessGroupComm::addAccessGroup --server http://127.0.0.1:" +
                                             std::to_string(platform.Port()) + R"( param='{"name":"it'\''s mine"}')");
    EXPECT_THAT(added.Text("/lines/cpp"),
                testing::StartsWith("protocol::AccessGroupAddParam param{};\nparam.name = \"it's mine\";\n"));
    const Reply refused = Send("GET", "exchanges/2");
    EXPECT_EQ(refused.Print("/functions"), R"(["CAccessGroupComm::modifyAccessGroupDescription"])")
        << "the body tells apart what shares a path";
    EXPECT_EQ(refused.Text("/code") + refused.Text("/outcome"), "3-20refused");
    EXPECT_THAT(refused.Text("/lines/cpp"), HasSubstr("modifyAccessGroupDescription(\"none\", \"x\")"));
    const Reply opened = Send("GET", "exchanges/4");
    EXPECT_EQ(opened.Int("/device/command"), 2102);
    EXPECT_GT(opened.Int("/device/answer/acsDoorParamCfg/openDuration"), 0) << opened.body;

    const auto lines = [&](const std::string& query) { return Send("GET", "exchanges?" + query).body; };
    EXPECT_THAT(lines("outcome=error"), AllOf(HasSubstr("\"id\":3"), Not(HasSubstr("\"id\":2"))));
    EXPECT_THAT(lines("text=it%27s+mine"), AllOf(HasSubstr("\"id\":1"), Not(HasSubstr("\"id\":2"))));
    EXPECT_THAT(lines("function=modify*scription"), AllOf(HasSubstr("\"id\":2"), Not(HasSubstr("\"id\":1"))));
    EXPECT_THAT(lines("after=1&limit=1&full=1"), AllOf(HasSubstr("\"id\":4"), HasSubstr("requestHeaders")));
    Send("PUT", kGroups, "{\n\"100%\": \"\\t\"\t}");
    EXPECT_THAT(Send("GET", "exchanges/5").Text("/lines/curl"),
                AllOf(testing::StartsWith(R"(printf '{\n"100%%": "\\t"\011}' | curl -X PUT )"),
                      testing::EndsWith(" --data-binary @-")));
    EXPECT_EQ(Send("DELETE", "exchanges").status, 200u);
    EXPECT_EQ(Send("GET", "exchanges/4").status, 404u);
    EXPECT_EQ(platform.ExchangeCount(), 5u) << "the workbench's own requests are none";
}

TEST_F(Workbench, ShowsSecretsOnlyWhereAsked)
{
    Send("POST", "/7730/v1/framework/login?token=geheim-1", R"({"userLogin":{"userName":"u","password":"geheim-2"}})");
    EXPECT_THAT(Send("GET", "exchanges?full=1").body, Not(HasSubstr("geheim")));
    EXPECT_THAT(Send("GET", "exchanges/1?secrets=1").body, AllOf(HasSubstr("geheim-1"), HasSubstr("geheim-2")));
    EXPECT_THAT(Send("GET", "exchanges?text=geheim").body, Not(HasSubstr("\"id\":1")))
        << "a search must not tell what is not shown";
}

TEST_F(Workbench, EventsComeInBatchesAndSayWhatALateReaderMissed)
{
    const std::string head = "GET /_workbench/events?after=0 HTTP/1.1\r\nHost: localhost\r\n\r\n";
    Send("PUT", kGroups, AddBody("one"));
    Send("PUT", kGroups, AddBody("two"));
    EXPECT_THAT(SendRaw(platform.Port(), head, false),
                AllOf(HasSubstr("text/event-stream"), HasSubstr("id: 2\nevent: exchange\ndata: [{\"id\":1,"),
                      Not(HasSubstr("event: lost"))));
    for (int i = 0; i < 1100; ++i) {
        Send("POST", kGroups);
    }
    EXPECT_THAT(SendRaw(platform.Port(), head, false),
                AllOf(HasSubstr("event: lost\ndata: {\"count\":102}"), HasSubstr("id: 1102\n")));
}

TEST_F(Workbench, StateCanBeReadChangedSeededAndBegunAnew)
{
    const std::string guid = Send("PUT", kGroups, AddBody("Old")).Text("/data/accessGroupModifyResult/accessGroupGuid");
    const std::string path = "state/accessGroups/" + guid;
    std::string document = Send("GET", path).body;
    EXPECT_EQ(Send("GET", "state/accessGroups?text=old").Int("/total"), 1);
    document.replace(document.find("Old"), 3, "New");
    EXPECT_EQ(Send("PUT", path, document).status, 200u);
    EXPECT_EQ(Send("POST", kGroups + "/" + guid).Text("/data/accessGroupQueryResponse/name"), "New");
    EXPECT_EQ(Send("PUT", "state/accessGroups/other", document).status, 400u) << "the key stands in the document";
    EXPECT_EQ(Send("GET", "state/_platform").status, 404u);
    EXPECT_THAT(Send("GET", "state").body, Not(HasSubstr("\"_platform\"")));

    const std::size_t devices = Send("GET", "devices").Size("");
    const std::string device = R"({"deviceGuid":"EE","name":"Seeded","deviceType":"alarmPanel"})";
    EXPECT_EQ(Send("POST", "seed", "{\"devices\":[" + device + "],\"nonsense\":[]}").status, 400u);
    EXPECT_EQ(Send("GET", "state/devices/EE").status, 404u) << "a seed is written whole or not at all";
    EXPECT_EQ(Send("POST", "seed", "{\"devices\":[" + device + "]}").status, 200u);
    EXPECT_EQ(Send("GET", "state/devices/EE").body, device);
    EXPECT_EQ(Send("POST", "reset").status, 200u);
    EXPECT_EQ(Send("GET", path).status, 404u);
    EXPECT_EQ(Send("GET", "devices").Size(""), devices);
    EXPECT_EQ(Send("POST", kCommands, kOpenDoor).Code(), "0-0") << "what was seeded is there again";
}

TEST_F(Workbench, DevicesAreSwitchedAndAlarmsProvoked)
{
    const std::string device = "devices/" + Device(1);
    const auto command = [&] { return Send("POST", kCommands, kOpenDoor).Code(); };
    Send("PUT", device, R"({"offline":true})");
    EXPECT_EQ(command(), "4-40");
    EXPECT_EQ(Send("POST", device + "/alarm", "{}").status, 409u) << "nothing comes from a device that is away";
    Send("PUT", device, R"({"offline":false,"refusing":true})");
    EXPECT_EQ(command(), "4-43");
    EXPECT_EQ(Send("GET", "devices").Print("/0/online"), "true");
    Send("PUT", device, R"({"refusing":false,"slowMs":120})");
    EXPECT_EQ(command(), "0-0");
    const std::string exchange = Send("GET", "exchanges?limit=1").body;
    const double ms = std::stod(exchange.substr(exchange.find("\"ms\":") + 5));
    EXPECT_TRUE(ms >= 120.0 && ms < 200.0) << exchange;
    EXPECT_EQ(Send("PUT", device, R"({"slow":1})").status, 400u);

    EXPECT_EQ(Send("POST", device + "/alarm", R"({"event":"doorForced"})").Text("/event"), "doorForced");
    EXPECT_THAT(Send("GET", "state/alarmLogs").body, HasSubstr("\"alarmType\":\"doorForced\""));
    EXPECT_EQ(Send("POST", device + "/alarm", R"({"source":"none"})").status, 404u);
}

TEST_F(Workbench, TheClockCarriesJobsToTheirEnd)
{
    const std::string guid =
        Send("PUT", kGroups,
             R"({"accessGroupAddParam":{"name":"Long","personnelAddList":[{"personnelGuid":")" + test::Person(1) +
                 R"("}],"objectAddList":[{"deviceGuid":")" + Device(1) + R"(","objectGuid":"d"}]}})")
            .Text("/data/accessGroupModifyResult/accessGroupGuid");
    Send("PUT", "/7730/v1/accessController/accessDownload",
         "{\"accessDownload\":{\"accessGroupDownList\":[{\"accessgroupGuid\":\"" + guid + "\"}]}}");
    EXPECT_EQ(Send("GET", "jobs").Text("/0/state"), "running");
    const std::int64_t before = Send("GET", "clock").Int("/nowMs");
    EXPECT_GE(Send("POST", "clock", R"({"advanceMs":3600000})").Int("/nowMs"), before + 3600000);
    EXPECT_EQ(Send("GET", "jobs").Text("/0/state") + Send("GET", "jobs").Print("/0/percent"), "done100");
    EXPECT_EQ(Send("POST", "clock", R"({"advanceMs":-1})").status, 400u) << "time does not go back";
}

TEST_F(Workbench, RefusesWhatPagesOfOthersSend)
{
    const auto status = [&](const std::string& path, const std::string& fields) {
        return SendRaw(platform.Port(), "GET " + path + " HTTP/1.1\r\nConnection: close\r\n" + fields + "\r\n")
            .substr(9, 3);
    };
    const std::string port = ":" + std::to_string(platform.Port());
    for (const std::string& path : {std::string("/_workbench/health"), "/7730/v1/framework/version" + std::string()}) {
        EXPECT_EQ(status(path, "Host: evil.example" + port + "\r\n"), "403") << path;
        EXPECT_EQ(status(path, "Host: 127.0.0.1:1\r\n"), "403") << path;
        EXPECT_EQ(status(path, "Host: localhost" + port + "\r\nOrigin: http://evil.example\r\n"), "403") << path;
        EXPECT_NE(status(path, "Host: localhost" + port + "\r\nOrigin: http://localhost" + port + "\r\n"), "403");
    }
    EXPECT_EQ(status("/_workbench/health", "Host: [::1]" + port + "\r\n"), "200");
    EXPECT_EQ(status("/_workbench/../x", "Host: localhost\r\n"), "404");
}

TEST(WorkbenchToken, IsAskedForBeyondLoopback)
{
    Options options;
    options.address = "0.0.0.0";
    std::string error;
    EXPECT_FALSE(Platform(options).Start(error));
    EXPECT_THAT(error, HasSubstr("token"));

    options.address = "127.0.0.1";
    options.token = "0123456789abcdef";
    Platform platform(options);
    ASSERT_TRUE(platform.Start(error)) << error;
    const auto answer = [&](const std::string& path, const std::string& field) {
        return SendRaw(platform.Port(),
                       "GET " + path + " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n" + field + "\r\n");
    };
    EXPECT_THAT(answer("/7730/v1/x", ""), HasSubstr("401"));
    EXPECT_THAT(answer("/_workbench/health", "Authorization: Bearer 0123456789abcdeF\r\n"), HasSubstr("401"));
    EXPECT_THAT(answer("/_workbench/health", "Authorization: Bearer 0123456789abcdef\r\n"), HasSubstr("uptimeMs"));
    EXPECT_THAT(answer("/_workbench/health?token=0123456789abcdef", ""), HasSubstr("HttpOnly"));
    EXPECT_THAT(answer("/_workbench/health", "Cookie: a=b; nexwire-token=0123456789abcdef\r\n"), HasSubstr("uptimeMs"));
}

} // namespace
