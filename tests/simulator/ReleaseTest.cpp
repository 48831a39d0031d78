#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Client.h"
#include "src/Base64.h"
#include "src/Wire.h"

// Release servers as their clients meet them.

namespace {

using nexwire::simulator::FromBase64;
using test::Reply;
using test::Site;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kServer = "5E000000000000000000000000000001";
const std::string kAway = "5E000000000000000000000000000002";
const std::string kLobby = "7E000000000000000000000000010001";
const std::string kLift = "7E000000000000000000000000010003";

class ReleaseTest : public testing::Test {
protected:
    Reply Kestrel(const std::string& line, const std::string& content = {}, const std::string& device = kServer)
    {
        return site.Post("deviceManagement/devices/" + device + "/kestrelPassThrough",
                         "{\"kestrelPassThroughReq\":{\"url\":\"" + line + "\",\"inBuffer\":\"" + content + "\"}}");
    }
    static std::string Out(const Reply& reply) { return reply.Text("/data/kestrelPassThroughRsp/outBuffer"); }
    static std::string Status(const Reply& reply) { return reply.Text("/data/kestrelPassThroughRsp/statusBuffer"); }

    std::string AddMaterial(const std::string& name, const std::string& bytes)
    {
        const Reply added =
            site.Put("irsLite/materialResource",
                     "{\"matrialResource\":{\"name\":\"" + name +
                         "\",\"materialType\":\"picture\",\"fileName\":\"a.jpg\",\"fileData\":\"" +
                         nexwire::simulator::ToBase64(bytes) + "\",\"content\":\"\",\"duration\":10,\"remark\":\"\"}}");
        EXPECT_EQ(added.Code(), "0-0") << added.body;
        return added.Text("/data/materialGuid");
    }

    Reply Cache(const std::string& material, const std::string& servers, const std::string& mode = "insert",
                const std::string& terminals = "")
    {
        return site.Put("deviceManagement/devices/publicRelease",
                        "{\"cachePublishData\":{\"name\":\"Welcome\",\"publishMode\":\"" + mode +
                            "\",\"beginTime\":\"\",\"endTime\":\"\",\"deviceGuidList\":[" + servers +
                            "],\"terminalGuidList\":[" + terminals + "],\"itemList\":[{\"materialGuid\":\"" + material +
                            "\",\"duration\":0,\"region\":\"full\"}]}}");
    }

    static std::vector<std::string> States(const Reply& reply)
    {
        return reply.Texts("/data/terminalProgressList", "state");
    }

    Reply Batch(const std::string& members, const std::string& device = kServer)
    {
        return site.Post("deviceManagement/devices/" + device + "/batchPassThrough",
                         "{\"batchPassThroughReq\":{" + members + "}}");
    }

    std::string release = "deviceManagement/devices/" + kServer + "/publicRelease";
    std::string upgrade = "deviceManagement/devices/" + kServer + "/terminalUpgrade";
    std::string shot = "deviceManagement/devices/" + kServer + "/terminalScreenShot";
    Site site;
};

TEST_F(ReleaseTest, ServersTellWhatTheyAreAndRefuseWhatTheyDoNotKnow)
{
    EXPECT_THAT(Out(Kestrel("GET /KESTREL/Publish/capabilities\\r\\n")), StartsWith("<PublishServerCap>"));
    EXPECT_THAT(Out(Kestrel("GET /KESTREL/Publish/TerminalMgr/insertCharacterCfg/capabilities")),
                StartsWith("<InsertCharacterCfgAbility>"));
    EXPECT_THAT(Out(Kestrel("GET /KESTREL/Publish/TerminalMgr/capabilities?format=json\\r\\n")),
                StartsWith("{\"TerminalManagerCapability\""));
    EXPECT_THAT(Out(Kestrel("GET /KESTREL/Publish/TerminalMgr/terminals/3/capabilities\\r\\n")),
                StartsWith("<TerminalAbility>"));
    for (const char* line :
         {"GET /KESTREL/Publish/TerminalMgr/terminals/4/capabilities", "GET /KESTREL/Publish/nothing?a=<b&c",
          "DELETE /KESTREL/Publish/ScheduleMgr/playSchedule/7", "PUT /KESTREL/System/time",
          "GET /KESTREL/Publish/TerminalMgr/terminals/1x/capabilities"}) {
        const Reply refused = Kestrel(line, "x");
        EXPECT_EQ(refused.Code(), "0-0") << line;
        EXPECT_EQ(Out(refused), "") << line;
        EXPECT_THAT(Status(refused), HasSubstr("<subStatusCode>notSupport</subStatusCode>")) << line;
        EXPECT_THAT(Status(refused), testing::Not(HasSubstr("<b"))) << line;
    }
    EXPECT_EQ(Kestrel("GET /KESTREL/Publish/capabilities", "", kAway).Code(), "4-40");

    // What is sent there is kept until it is deleted.
    EXPECT_THAT(Status(Kestrel("PUT /KESTREL/Publish/ScheduleMgr/playSchedule/7", "<PlaySchedule/>")),
                HasSubstr("<statusCode>1</statusCode>"));
    EXPECT_EQ(Out(Kestrel("GET /KESTREL/Publish/ScheduleMgr/playSchedule/7")), "<PlaySchedule/>");
    Kestrel("DELETE /KESTREL/Publish/ScheduleMgr/playSchedule/7");
    EXPECT_THAT(Status(Kestrel("GET /KESTREL/Publish/ScheduleMgr/playSchedule/7")), HasSubstr("notSupport"));
}

TEST_F(ReleaseTest, MaterialsKeepTheirFiles)
{
    const std::string first = AddMaterial("Welcome", std::string(3000, 'x'));
    AddMaterial("Menu", "yy");
    const auto find = [&](const std::string& members) {
        return site.Post("irsLite/materialResource", "{\"matrialResourceQueryCondition\":{" + members + "}}");
    };
    const Reply all = find("\"name\":\"\",\"withData\":false,\"pageNo\":1,\"pageSize\":1");
    EXPECT_EQ(all.Int("/data/total"), 2) << all.body;
    EXPECT_EQ(all.Int("/data/matrialResourceList/0/fileSize"), 3000);
    EXPECT_EQ(all.Text("/data/matrialResourceList/0/fileData"), "");
    const Reply one = find("\"name\":\"elcom\",\"withData\":true,\"pageNo\":1,\"pageSize\":20");
    std::string bytes;
    EXPECT_TRUE(FromBase64(one.Text("/data/matrialResourceList/0/fileData"), bytes));
    EXPECT_EQ(bytes, std::string(3000, 'x'));

    const std::string path = "irsLite/materialResource/" + first;
    EXPECT_EQ(site.Put(path, "{\"matrialResource\":{\"fileData\":\"%%\"}}").Code(), "9-8");
    EXPECT_EQ(site.Put(path, "{\"matrialResource\":{\"fileData\":\"eHg=\"}}").Code(), "0-0");
    EXPECT_EQ(find("\"name\":\"Welcome\"").Int("/data/matrialResourceList/0/fileSize"), 2);
    EXPECT_EQ(site.Put("irsLite/materialResource/none", "{\"matrialResource\":{\"remark\":\"a\"}}").Code(), "9-20");
    EXPECT_EQ(site.Delete(path, "").Code(), "0-0");
    EXPECT_EQ(site.Delete(path, "").Code(), "9-20");
}

TEST_F(ReleaseTest, AReleaseReachesTheTerminalsThatAreOn)
{
    const std::string material = AddMaterial("Welcome", std::string(80000, 'x'));
    EXPECT_EQ(site.Put(release).Code(), "9-20") << "nothing has been handed over";
    const Reply cached = Cache(material, "\"" + kServer + "\",\"" + kAway + "\",\"" + test::Device(1) + "\",\"none\"");
    EXPECT_EQ(cached.Int("/data/totalSize"), 80000) << cached.body;
    EXPECT_EQ(cached.Print("/data/resultList/0/resultCode") + cached.Print("/data/resultList/1/resultCode") +
                  cached.Print("/data/resultList/2/resultCode") + cached.Print("/data/resultList/3/resultCode"),
              "0404321");
    EXPECT_EQ(Cache("none", "\"" + kServer + "\"").Code(), "9-20");
    EXPECT_EQ(Cache(material, "\"" + kServer + "\"", "insert", "\"elsewhere\"").Code(), "9-20");
    EXPECT_EQ(site.Post(release).Code(), "9-20");

    EXPECT_EQ(site.Put(release).Code(), "0-0");
    EXPECT_EQ(site.Put(release).Code(), "9-23") << "the terminals are busy";
    site.Advance(600);
    const Reply half = site.Post(release);
    EXPECT_THAT(States(half), ElementsAre("running", "running", "waiting")) << half.body;
    EXPECT_GT(half.Int("/data/progress"), 0);
    EXPECT_LT(half.Int("/data/progress"), 100);
    site.Advance(1000);
    EXPECT_THAT(States(site.Post(release)), ElementsAre("done", "running", "failed"));
    site.Advance(10000);
    const Reply end = site.Post(release);
    EXPECT_THAT(States(end), ElementsAre("done", "done", "failed"));
    EXPECT_EQ(end.Text("/data/state") + end.Print("/data/progress"), "failed100");
    EXPECT_EQ(end.Int("/data/terminalProgressList/2/errorCode"), 40);
    EXPECT_EQ(site.Delete("irsLite/materialResource/" + material, "").Code(), "9-23") << "it is on a screen";

    // Only one terminal, and nothing but darkness.
    EXPECT_EQ(Cache(material, "\"" + kServer + "\"", "clear", "\"" + kLobby + "\"").Code(), "0-0");
    site.Put(release);
    site.Advance(600);
    EXPECT_EQ(site.Delete(release, "").Code(), "0-0");
    site.Advance(10000);
    EXPECT_THAT(States(site.Post(release)), ElementsAre("stopped"));
    EXPECT_EQ(site.Post(release).Text("/data/state"), "stopped");
    EXPECT_EQ(site.Put("deviceManagement/devices/" + kAway + "/publicRelease").Code(), "9-40");
}

TEST_F(ReleaseTest, ScreenshotsShowWhatIsPlayed)
{
    const auto take = [&](const std::string& terminal, const std::string& format, int width, int height) {
        const Reply reply = site.Post(
            shot, "{\"terminalScreenShot\":{\"terminalGuid\":\"" + terminal + "\",\"pictureFormat\":\"" + format +
                      "\",\"width\":" + std::to_string(width) + ",\"height\":" + std::to_string(height) + "}}");
        std::string bytes;
        return FromBase64(reply.Text("/data/screenShot"), bytes) ? bytes : reply.Code();
    };
    EXPECT_EQ(take(kLift, "png", 0, 0), "9-40");
    EXPECT_EQ(take("none", "png", 0, 0), "9-20");
    const std::string dark = take(kLobby, "png", 0, 0);
    EXPECT_EQ(dark.substr(0, 24), std::string("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\x07\x80\0\0\x04\x38", 24));
    const std::string material = AddMaterial("Welcome", "x");
    Cache(material, "\"" + kServer + "\"");
    site.Put(release);
    site.Advance(10000);
    site.Post(release);
    const std::string playing = take(kLobby, "png", 0, 0);
    EXPECT_EQ(playing.size(), dark.size());
    EXPECT_NE(playing, dark);
    EXPECT_EQ(take(kLobby, "png", 0, 0), playing);
    const std::string small = take(kLobby, "jpeg", 321, 123);
    EXPECT_THAT(small, StartsWith("\xFF\xD8\xFF\xE0"));
    EXPECT_NE(small.find(std::string("\xFF\xC0\0\x11\x08\0\x7B\x01\x41", 9)), std::string::npos);
    EXPECT_EQ(small.substr(small.size() - 2), "\xFF\xD9");
}

TEST_F(ReleaseTest, TerminalsTakeFirmwareOnce)
{
    const auto start = [&](const std::string& version, bool force) {
        return site
            .Put(upgrade, "{\"terminalUpgrade\":{\"packageGuid\":\"p\",\"packageType\":\"firmware\",\"version\":\"" +
                              version + "\",\"terminalGuidList\":[\"" + kLobby +
                              "\"],\"force\":" + (force ? "true" : "false") + "}}")
            .Code();
    };
    EXPECT_EQ(start("V3.1.0", false), "0-0");
    EXPECT_EQ(start("V3.1.0", false), "9-23");
    site.Advance(2000);
    EXPECT_THAT(States(site.Post(upgrade)), ElementsAre("running"));
    site.Advance(3000);
    EXPECT_THAT(States(site.Post(upgrade)), ElementsAre("done"));
    EXPECT_EQ(start("V3.1.0", false), "0-0");
    site.Advance(5);
    EXPECT_THAT(States(site.Post(upgrade)), ElementsAre("done")) << "it was there already";
    EXPECT_EQ(start("V3.1.0", true), "0-0");
    site.Advance(5);
    EXPECT_THAT(States(site.Post(upgrade)), ElementsAre("running"));
    EXPECT_EQ(site.Delete(upgrade, "").Code(), "0-0");
    EXPECT_THAT(States(site.Post(upgrade)), ElementsAre("stopped"));
}

TEST_F(ReleaseTest, FilesMoveOverTimeAndTheLogTellsOfThem)
{
    const auto move = [&](int command, const std::string& file) {
        return Batch("\"command\":" + std::to_string(command) +
                     ",\"batchSendDataList\":[{\"id\":\"1\",\"inBuffer\":\"" + file + "\"}]");
    };
    const auto progress = [&](const Reply& started) {
        return Batch("\"guid\":\"" + started.Text("/data/batchPassThroughRsp/guid") + "\",\"command\":9243");
    };
    const auto text = [](const Reply& reply) {
        return reply.Text("/data/batchPassThroughRsp/batchReturnDataList/0/outBuffer");
    };
    const std::string file = "{\\\"fileUpload\\\":{\\\"fileName\\\":\\\"a.zip\\\",\\\"fileType\\\":\\\"package\\\"}}";
    const Reply up = move(9241, file);
    EXPECT_EQ(up.Print("/data/batchPassThroughRsp/isFinish"), "false") << up.body;
    site.Advance(1000);
    EXPECT_THAT(text(progress(up)), HasSubstr("\"progress\":50,\"state\":\"running\""));
    site.Advance(1500);
    EXPECT_THAT(text(progress(up)), HasSubstr("\"progress\":100,\"state\":\"done\""));
    EXPECT_EQ(progress(up).Print("/data/batchPassThroughRsp/isFinish"), "true");
    const Reply twice = move(9241, file);
    site.Advance(1500);
    EXPECT_THAT(text(progress(twice)), HasSubstr("\"state\":\"failed\",\"errorCode\":22"));
    const Reply down = move(9242, "{\\\"fileDownload\\\":{\\\"fileName\\\":\\\"none\\\"}}");
    site.Advance(1500);
    EXPECT_THAT(text(progress(down)), HasSubstr("\"errorCode\":20"));
    EXPECT_EQ(Batch("\"command\":9243").Code(), "4-42");
    const Reply link = Batch("\"command\":9244,\"condBuffer\":\"1\"");
    site.Advance(600);
    EXPECT_THAT(text(progress(link)), HasSubstr("\"state\":\"done\""));
    EXPECT_EQ(Batch("\"guid\":\"" + link.Text("/data/batchPassThroughRsp/guid") + "\",\"command\":9244,\"cancel\":true")
                  .Code(),
              "0-0");
    EXPECT_EQ(progress(link).Code(), "4-42");

    const auto logs = [&](const std::string& condition) {
        return Batch("\"command\":9234,\"maxResultNum\":40,\"condBuffer\":\"{\\\"deviceLogQueryCondition\\\":{" +
                     condition + "}}\"");
    };
    EXPECT_EQ(logs("\\\"majorType\\\":\\\"all\\\"").Size("/data/batchPassThroughRsp/batchReturnDataList"), 3u);
    const Reply today = logs("\\\"beginTime\\\":\\\"2024-01-01T00:00:00+00:00\\\"");
    EXPECT_EQ(today.Size("/data/batchPassThroughRsp/batchReturnDataList"), 1u);
    EXPECT_THAT(text(today), HasSubstr("\"objectName\":\"a.zip\""));
}

TEST_F(ReleaseTest, RestoringForgetsAndTheSharedKeyIsTold)
{
    Kestrel("PUT /KESTREL/Publish/ScheduleMgr/playSchedule/1", "<PlaySchedule/>");
    EXPECT_EQ(site.Post("deviceManagement/devices/" + kServer + "/dagPassThrough",
                        "{\"dagPassThroughReq\":{\"command\":2222}}")
                  .Code(),
              "0-0");
    EXPECT_THAT(Status(Kestrel("GET /KESTREL/Publish/ScheduleMgr/playSchedule/1")), HasSubstr("notSupport"));

    const std::string path = "deviceManagement/devices/generalCorvidKey";
    const Reply set = site.Put(path, "{\"generalCorvidKey\":{\"corvidKey\":\"correct-horse\",\"enable\":true}}");
    EXPECT_EQ(set.Text("/data/status"), "success") << set.body;
    EXPECT_THAT(set.Texts("/data/resultList", "guid"), testing::UnorderedElementsAre(kAway, test::Device(14)));
    EXPECT_EQ(site.Post(path).Text("/data/corvidKey"), "correct-horse");
    EXPECT_EQ(site.Post("deviceManagement/devices/portConfig").Int("/data/httpPort"), 80);
    site.Put("deviceManagement/devices/portConfig", "{\"portConfig\":{\"httpPort\":8080}}");
    EXPECT_EQ(site.Post("deviceManagement/devices/portConfig").Int("/data/httpPort"), 8080);
}

} // namespace
