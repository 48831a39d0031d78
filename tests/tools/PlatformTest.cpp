#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Process.h"
#include "tests/support/Regex.h"

using testing::HasSubstr;

namespace test {
namespace {

TEST(Platform, PrintsItsAddressServesAndStopsOnRequest)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        Running platform(NexwireCommand({"platform", "--port", "0", "--verbose"}));
        const std::string address = platform.Line();
        ASSERT_THAT(address, IsOfForm("http://127\\.0\\.0\\.1:[0-9]+"));
        const ProcessResult call = Nexwire({"call", "queryAccessGroups", "--server", address});
        EXPECT_EQ(0, call.code) << call.err;
        platform.Signal(signal);
        const ProcessResult end = platform.Wait();
        EXPECT_EQ(0, end.code);
        EXPECT_EQ("", end.out);
        EXPECT_THAT(end.err, HasSubstr("POST /7730/v1/accessController/accessGroups 200 0-0"));
    }
}

TEST(Platform, RunsTheVideoWallServiceBesideIt)
{
    Running platform(NexwireCommand({"platform", "--wall-port", "0"}));
    const std::string line = platform.Line();
    ASSERT_THAT(line, IsOfForm("http://127\\.0\\.0\\.1:[0-9]+ http://127\\.0\\.0\\.1:[0-9]+"));
    const std::string wall = line.substr(line.find(' ') + 1);
    ProcessOptions login;
    login.input = R"({"username":"admin","password":"admin123","address":"10.0.0.9","port":8000})";
    EXPECT_EQ(0, Nexwire({"call", "CTWDeviceCommon::addDevice", "--server", wall, "--body", "-"}, login).code);
    const ProcessResult devices =
        Nexwire({"call", "CTWDeviceCommon::getAllDevices", "account=", "teamNo=", "syncCloud=false", "--server", wall});
    EXPECT_EQ(0, devices.code);
    EXPECT_THAT(devices.out, HasSubstr("\"address\": \"10.0.0.9\""));
}

TEST(Platform, TakesFaultsSeedsAndATokenFromFilesAndHasItsDatabaseToItself)
{
    const Folder folder;
    const std::string faults =
        folder.Write("faults.json", R"([{"function":"*::queryAccessGroups","fault":"refuse","code":"3-7","times":1}])");
    const std::string seed =
        folder.Write("seed.json", R"({"accessGroups":[{"accessGroupGuid":"EE","name":"Seeded"}]})");
    const std::string token = "@file:" + folder.Write("token", "0123456789abcdef\n");
    const std::string header = "Authorization=@file:" + folder.Write("header", "Bearer 0123456789abcdef");
    Running platform(NexwireCommand(
        {"platform", "--db", folder.Path("site.db"), "--faults", faults, "--seed", seed, "--token", token}));
    const std::string address = platform.Line();
    const auto query = [&](const std::vector<std::string>& more) {
        std::vector<std::string> arguments = {"call", "queryAccessGroups", "--server", address};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Nexwire(arguments);
    };
    EXPECT_THAT(query({}).err, HasSubstr("401"));
    EXPECT_THAT(query({"--header", header}).err, HasSubstr("3-7"));
    EXPECT_THAT(query({"--header", header}).out, HasSubstr("Seeded"));

    const ProcessResult second = Nexwire({"platform", "--db", folder.Path("site.db")});
    EXPECT_NE(0, second.code);
    EXPECT_THAT(second.err, HasSubstr("another process works with it"));
    EXPECT_THAT(Nexwire({"platform", "--faults", folder.Write("bad.json", R"([{"fault":"dealy"}])")}).err,
                HasSubstr("dealy"));
    EXPECT_THAT(Nexwire({"platform", "--token", "0123456789abcdef"}).err, HasSubstr("@file:"));
}

TEST(Platform, SaysSoWhenItsPortIsTaken)
{
    Running first(NexwireCommand({"platform"}));
    const std::string address = first.Line();
    const ProcessResult second = Nexwire({"platform", "--port", address.substr(address.rfind(':') + 1)});
    EXPECT_EQ(3, second.code);
    EXPECT_EQ("", second.out);
    EXPECT_NE("", second.err);
}

TEST(InsecureServers, AreWarnedOf)
{
    Running platform(NexwireCommand({"platform"}));
    const ProcessResult call = Nexwire({"call", "queryAccessGroups", "--server", platform.Line(), "--insecure"});
    EXPECT_EQ(0, call.code);
    EXPECT_THAT(call.err, HasSubstr("warning: --insecure"));
}

} // namespace
} // namespace test
