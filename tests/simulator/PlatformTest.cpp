#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>
#include <thread>

#include "Client.h"
#include "tests/support/Regex.h"

namespace {

using nexwire::simulator::Options;
using nexwire::simulator::Platform;
using test::Client;
using test::Device;
using test::IsOfForm;
using test::Reply;
using test::SendRaw;
using test::Site;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kRoot = "/7730/v1/";
const std::string kGroups = "accessController/accessGroups";

std::string AddBody(const std::string& name)
{
    return "{\"accessGroupAddParam\":{\"name\":\"" + name + "\"}}";
}

// A database file of its own, gone at the end.
class Database {
public:
    Database()
        : path_((std::filesystem::path(testing::TempDir()) /
                 ("platform-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()) + ".db"))
                    .string())
    {
    }
    ~Database()
    {
        for (const char* suffix : {"", "-wal", "-shm"}) {
            std::remove((path_ + suffix).c_str());
        }
    }
    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

TEST(PlatformTest, SurvivesEveryMalformedBody)
{
    Site site;
    std::string deepObject;
    for (int i = 0; i < 20000; ++i) {
        deepObject += "{\"a\":";
    }
    const std::string bodies[] = {
        std::string(500000, '['),
        deepObject,
        "{\"accessGroupAddParam\":{\"name\":" + std::string(300, '[') + std::string(300, ']') + "}}",
        "{\"accessGroupAddParam\":{\"name\":\"x\",\"n\":1e999}}",
        "{\"accessGroupAddParam\":{\"name\":\"\\ud800\"}}",
        std::string("{\"accessGroupAddParam\":{\"name\":\"a\0b\"}}", 38),
        std::string("\0\0\0", 3),
        "\"text\"",
        "null",
        "12",
        "{\"accessGroupAddParam\":null}",
        "{\"accessGroupAddParam\":[]}",
        "{\"\":{}}",
        "\xEF\xBB\xBF{\"accessGroupAddParam\":{}}",
    };
    for (const std::string& body : bodies) {
        const Reply reply = site.Put(kGroups, body);
        EXPECT_EQ(reply.status, 200u);
        EXPECT_THAT(reply.Code(), IsOfForm("3-[5678]")) << body.substr(0, 60);
    }
    // A text may hold what JSON can escape; the first of two equal keys is checked, and it is the one that is kept.
    const std::string name = "'; DROP TABLE documents; --\\u0000\\t%s";
    EXPECT_EQ(site.Put(kGroups, "{\"accessGroupAddParam\":{\"name\":\"" + name + "\",\"name\":7}}").Code(), "0-0");
    EXPECT_EQ(site.Post(kGroups).Print("/data/accessGroupQueryResponseList/0/name"), "\"" + name + "\"");
    EXPECT_EQ(site.Post(kGroups).Size("/data/accessGroupQueryResponseList"), 1u);
}

TEST(PlatformTest, RefusesWhatIsNotServed)
{
    Site site;
    const struct {
        const char* verb;
        const char* path;
        const char* code;
    } cases[] = {
        {"POST", "accessController/nothing", "1-1"},          {"POST", "accessController/accessGroups/", "1-1"},
        {"POST", "accessController/accessGroups/a/b", "1-1"}, {"POST", "AccessController/accessGroups", "1-1"},
        {"GET", "accessController/accessGroups", "1-2"},      {"DELETE", "accessController/accessGroups", "1-2"},
        {"PATCH", "accessController/accessGroups/g", "1-2"},
    };
    for (const auto& c : cases) {
        const Reply reply = site.Send(c.verb, c.path, "");
        EXPECT_EQ(reply.status, 404u) << c.path;
        EXPECT_EQ(reply.Code(), c.code) << c.path;
        EXPECT_EQ(reply.Print("/data"), "{}");
    }
    EXPECT_EQ(site.Send("HEAD", "accessController/accessGroups", "").status, 404u);
    EXPECT_EQ(site.Post("accessController/accessGroups?uploadGuid=x").Code(), "0-0") << "a query is not the path";
    EXPECT_EQ(site.Post("accessController/accessGroups", "ignored").Code(), "0-0");
}

TEST(PlatformTest, AnswersBrokenHttp)
{
    Site site({}, 4096);
    const std::string post = "POST " + kRoot + kGroups + " HTTP/1.1\r\nHost: localhost\r\n";
    const struct {
        const char* what;
        std::string bytes;
        std::string begins;
        std::string holds;
    } cases[] = {
        {"no HTTP", "HELLO\r\n\r\n", "HTTP/1.1 400", "\"code\":\"1-3\""},
        {"binary", std::string("\x16\x03\x01\x02\0\x01", 6) + "\r\n\r\n", "HTTP/1.1 400", "\"code\":\"1-3\""},
        {"bad length", post + "Content-Length: -1\r\n\r\n", "HTTP/1.1 400", "\"code\":\"1-3\""},
        {"bad chunk", post + "Transfer-Encoding: chunked\r\n\r\nzz\r\n", "HTTP/1.1 400", "\"code\":\"1-3\""},
        {"announced too large", post + "Content-Length: 5000\r\n\r\n", "HTTP/1.1 413", "\"code\":\"1-4\""},
        {"too large in chunks", post + "Transfer-Encoding: chunked\r\n\r\n2000\r\n" + std::string(8192, 'x'),
         "HTTP/1.1 413", "\"code\":\"1-4\""},
        {"endless header", post + "X: " + std::string(100000, 'x'), "HTTP/1.1 4", "\"code\":\"1-"},
        {"cut body", post + "Content-Length: 10\r\n\r\nabc", "", ""},
        {"nothing", "", "", ""},
        {"half a line", "POST /77", "", ""},
        {"two at once", post + "\r\n" + post + "Connection: close\r\n\r\n", "HTTP/1.1 200", "List\":[]}}HTTP/1.1 200"},
        {"old version", "POST " + kRoot + kGroups + " HTTP/1.0\r\n\r\n", "HTTP/1.1 200", "Connection: close"},
        {"announced body",
         "PUT " + kRoot + kGroups +
             " HTTP/1.1\r\nConnection: close\r\nExpect: 100-continue\r\nContent-Length: 2\r\n\r\n{}",
         "HTTP/1.1 100", "3-6"},
    };
    for (const auto& c : cases) {
        const std::string answer = SendRaw(site.Port(), c.bytes);
        EXPECT_THAT(answer, StartsWith(c.begins)) << c.what;
        EXPECT_THAT(answer, HasSubstr(c.holds)) << c.what;
        if (c.begins.empty()) {
            EXPECT_EQ(answer, "") << c.what;
        }
    }
    EXPECT_EQ(site.Post(kGroups).Code(), "0-0");
}

TEST(PlatformTest, EightConnectionsAtOnce)
{
    Options options;
    options.threads = 4;
    Platform platform(options);
    std::string error;
    ASSERT_TRUE(platform.Start(error)) << error;
    constexpr int kClients = 8;
    constexpr int kRounds = 40;
    std::atomic<int> won{0};
    std::atomic<int> lost{0};
    std::atomic<int> bad{0};
    std::vector<std::thread> clients;
    for (int c = 0; c < kClients; ++c) {
        clients.emplace_back([&, c] {
            Client client(platform.Port());
            for (int r = 0; r < kRounds; ++r) {
                // Everybody wants the same name; one gets it.
                const std::string code =
                    client.Send("PUT", kRoot + kGroups, AddBody("same" + std::to_string(r))).Code();
                (code == "0-0" ? won : code == "3-22" ? lost : bad)++;
                const std::string own = "own" + std::to_string(c) + "-" + std::to_string(r);
                const Reply added = client.Send("PUT", kRoot + kGroups, AddBody(own));
                const std::string guid = added.Text("/data/accessGroupModifyResult/accessGroupGuid");
                const Reply read = client.Send("POST", kRoot + kGroups + "/" + guid);
                bad += read.Text("/data/accessGroupQueryResponse/name") == own ? 0 : 1;
            }
        });
    }
    for (std::thread& client : clients) {
        client.join();
    }
    EXPECT_EQ(won, kRounds);
    EXPECT_EQ(lost, kRounds * (kClients - 1));
    EXPECT_EQ(bad, 0);
    const Reply all = Client(platform.Port()).Send("POST", kRoot + kGroups);
    const auto names = all.Texts("/data/accessGroupQueryResponseList", "name");
    EXPECT_EQ(names.size(), std::size_t(kRounds * (kClients + 1)));
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
    EXPECT_EQ(platform.ExchangeCount(), std::uint64_t(kClients * kRounds * 3 + 1));
}

TEST(PlatformTest, AFileKeepsEverythingAcrossARestart)
{
    const Database database;
    std::string group;
    std::string cipher;
    const std::string door = "{\"acsDoorParamCfg\":{\"openDuration\":77}}";
    const std::string path = "deviceManagement/devices/" + Device(1) + "/dagPassThrough";
    {
        Site site(database.Path());
        group =
            site.Put(kGroups, "{\"accessGroupAddParam\":{\"name\":\"Kept\",\"personnelAddList\":[{\"personnelGuid\":"
                              "\"p\"}],\"objectAddList\":[{\"deviceGuid\":\"" +
                                  Device(1) + "\",\"objectGuid\":\"d\"}]}}")
                .Text("/data/accessGroupModifyResult/accessGroupGuid");
        site.Put("accessController/accessDownload",
                 "{\"accessDownload\":{\"accessGroupDownList\":[{\"accessgroupGuid\":\"" + group + "\"}]}}");
        cipher = site.Put("internal/framework/encryption", "{\"encryptionInfo\":{\"plaintextList\":[\"secret\"]}}")
                     .Text("/data/ciphertextList/0/ciphertext");
        site.Post(
            path,
            "{\"dagPassThroughReq\":{\"command\":4102,\"condBuffer\":\"1\",\"inBuffer\":\"{\\\"acsDoorParamCfg\\\""
            ":{\\\"openDuration\\\":77}}\"}}");
        site.Delete("accessController/planInfos",
                    "{\"planInfoRemoveParam\":{\"planInfoGuidList\":[\"51000000000000000000000000000004\"]}}");

        Options second;
        second.databasePath = database.Path();
        Platform other(second);
        std::string error;
        EXPECT_FALSE(other.Start(error)) << "two platforms on one file";
        EXPECT_THAT(error, HasSubstr("another process works with it"));
        EXPECT_EQ(other.Port(), 0);
    }
    Site site(database.Path());
    EXPECT_EQ(site.Post(kGroups + "/" + group).Text("/data/accessGroupQueryResponse/name"), "Kept");
    site.Advance(1000);
    EXPECT_EQ(site.Post("accessController/downloadProgress/" + group).Int("/data/groupProgress"), 100)
        << "a download goes on after a restart";
    EXPECT_EQ(
        site.Put("internal/framework/decryption", "{\"decryptionInfo\":{\"ciphertextList\":[\"" + cipher + "\"]}}")
            .Text("/data/plaintextList/0/plaintext"),
        "secret");
    EXPECT_EQ(site.Post(path, "{\"dagPassThroughReq\":{\"command\":2102,\"condBuffer\":\"1\"}}")
                  .Text("/data/dagPassThroughRsp/outBuffer"),
              door);
    EXPECT_EQ(site.Post("accessController/allBasicPlanInfos", "{\"basicPlanQueryCondition\":{\"planInfoType\":0}}")
                  .Size("/data/basicPlanInfoResponseList"),
              3u)
        << "what was removed does not come back with the next start";
}

TEST(PlatformTest, LeavesForeignFilesAlone)
{
    const auto start = [](const std::string& path) {
        Options options;
        options.databasePath = path;
        Platform platform(options);
        std::string error;
        EXPECT_FALSE(platform.Start(error));
        return error;
    };
    const Database text;
    std::ofstream(text.Path()) << std::string(4096, 'x');
    EXPECT_THAT(start(text.Path()), HasSubstr("not a database"));
    EXPECT_EQ(std::filesystem::file_size(text.Path()), 4096u);

    const Database foreign;
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(foreign.Path().c_str(), &database), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(database, "CREATE TABLE mine(x)", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
    EXPECT_THAT(start(foreign.Path()), HasSubstr("another program"));
    EXPECT_THAT(start((std::filesystem::path(testing::TempDir()) / "no" / "such" / "folder.db").string()),
                HasSubstr("cannot open"));
}

TEST(PlatformTest, StopsAtOnceAndStartsAgain)
{
    Platform platform;
    std::string error;
    ASSERT_TRUE(platform.Start(error)) << error;
    EXPECT_FALSE(platform.Start(error));
    const std::uint16_t port = platform.Port();
    ASSERT_NE(port, 0);
    auto idle = std::make_unique<Client>(port);
    EXPECT_EQ(idle->Send("PUT", kRoot + kGroups, AddBody("G")).Code(), "0-0");

    Options same;
    same.port = port;
    Platform second(same);
    EXPECT_FALSE(second.Start(error)) << "the port is taken";
    EXPECT_THAT(error, HasSubstr(std::to_string(port)));

    const auto begin = std::chrono::steady_clock::now();
    platform.Stop();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2)) << "an idle connection held it up";
    EXPECT_EQ(platform.Port(), 0);
    EXPECT_ANY_THROW(idle->Send("POST", kRoot + kGroups));
    EXPECT_ANY_THROW(Client{port});
    platform.Stop();

    ASSERT_TRUE(second.Start(error)) << "the port is free again: " << error;
    EXPECT_EQ(second.Port(), port);
    ASSERT_TRUE(platform.Start(error)) << error;
    EXPECT_EQ(Client(platform.Port()).Send("POST", kRoot + kGroups).Size("/data/accessGroupQueryResponseList"), 0u);

    Options bad;
    bad.timeScale = 0;
    EXPECT_FALSE(Platform(bad).Start(error));
    EXPECT_THAT(error, HasSubstr("time scale"));
}

TEST(PlatformTest, DevicesWorkAtTheGivenPace)
{
    Options options;
    options.timeScale = 1e9;
    Platform platform(options);
    std::string error;
    ASSERT_TRUE(platform.Start(error)) << error;
    Client client(platform.Port());
    const Reply added = client.Send("PUT", kRoot + kGroups,
                                    "{\"accessGroupAddParam\":{\"name\":\"G\",\"personnelAddList\":[{\"personnelGuid\":"
                                    "\"p\"}],\"objectAddList\":[{\"deviceGuid\":\"" +
                                        Device(1) + "\",\"objectGuid\":\"d\"}]}}");
    const std::string group = added.Text("/data/accessGroupModifyResult/accessGroupGuid");
    client.Send("PUT", kRoot + "accessController/accessDownload",
                "{\"accessDownload\":{\"accessGroupDownList\":[{\"accessgroupGuid\":\"" + group + "\"}]}}");
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(client.Send("POST", kRoot + "accessController/downloadProgress/" + group).Int("/data/groupProgress"),
              100);
}

TEST(PlatformTest, TellsOfEveryExchange)
{
    std::mutex mutex;
    std::vector<std::string> lines;
    Options options;
    options.now = [] { return std::int64_t{1709210096789}; };
    options.onExchange = [&](const nexwire::simulator::Served& exchange) {
        const std::lock_guard<std::mutex> lock(mutex);
        lines.push_back(ToLine(exchange));
    };
    Platform platform(options);
    std::string error;
    ASSERT_TRUE(platform.Start(error)) << error;
    Client client(platform.Port());
    client.Send("PUT", kRoot + kGroups, AddBody("G"));
    client.Send("POST", kRoot + "x?y=1");
    SendRaw(platform.Port(), "nonsense\r\n\r\n");
    platform.Stop();
    ASSERT_EQ(lines.size(), 3u);
    const std::string time = "2024-02-29 12:34:56.789 ";
    EXPECT_THAT(lines[0], StartsWith(time + "PUT /7730/v1/accessController/accessGroups 200 0-0 36/"));
    EXPECT_THAT(lines[1], StartsWith(time + "POST /7730/v1/x?y=1 404 1-1 0/"));
    EXPECT_THAT(lines[2], StartsWith(time + "- - 400 1-3 0/"));
    for (const std::string& line : lines) {
        EXPECT_THAT(line, IsOfForm(".*/[0-9]+ B [0-9]+.[0-9] ms"));
    }
}

} // namespace
