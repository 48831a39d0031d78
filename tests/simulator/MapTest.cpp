#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Client.h"

// Maps with what is on them, and security radars.

namespace {

using test::Reply;
using test::Site;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string kMaps = "electronicMap/maps";
const std::string kSite = "3A000000000000000000000000000001";
const std::string kRadar = "4A000000000000000000000000000001";

class MapTest : public testing::Test {
protected:
    MapTest() : site({}, 8u << 20u) {}

    std::string AddMap(const std::string& name, const std::string& parent = "")
    {
        const Reply added =
            site.Put(kMaps, "{\"mapAdd\":{\"mapName\":\"" + name + "\",\"mapFilePath\":\"\",\"parentMapGuid\":\"" +
                                parent + "\",\"dXPos\":0.1,\"dYPos\":1e-7,\"dScale\":1,\"dProportionalScale\":0}}");
        EXPECT_EQ(added.Code(), "0-0") << added.body;
        return added.Text("/data/guid");
    }

    /// A request with fields of its own; all that comes back.
    std::string Raw(const std::string& verb, const std::string& path, const std::string& fields,
                    const std::string& body = "")
    {
        return test::SendRaw(site.Port(), verb + " /7730/v1/" + path +
                                              " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n" + fields +
                                              "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    }

    std::string Dag(int command, const std::string& condition = "", const std::string& input = "")
    {
        const Reply reply = site.Post("deviceManagement/devices/" + kRadar + "/dagPassThrough",
                                      "{\"dagPassThroughReq\":{\"command\":" + std::to_string(command) +
                                          ",\"condBuffer\":\"" + condition + "\",\"inBuffer\":\"" + input + "\"}}");
        return reply.Code() == "0-0" ? reply.Text("/data/dagPassThroughRsp/outBuffer") : reply.Code();
    }

    Site site;
};

TEST_F(MapTest, MapsAreChangedMemberByMemberAndGoWithWhatIsOnThem)
{
    const std::string map = AddMap("Annex", kSite);
    const std::string detail = AddMap("Cellar", map);
    const std::string path = kMaps + "/" + map;
    site.Put(path, "{\"mapModify\":{\"dXPos\":0.30000000000000004,\"dYPos\":-12.5}}");
    const Reply read = site.Post(path);
    EXPECT_EQ(std::stod(read.body.substr(read.body.find("\"dXPos\":") + 8)), 0.30000000000000004);
    EXPECT_EQ(read.Text("/data/mapQuery/mapName"), "Annex");
    EXPECT_EQ(site.Put(path, "{\"mapModify\":{\"scale\":2}}").Code(), "11-9");
    EXPECT_EQ(site.Post(kMaps).Size("/data/mapQueryAllList"), 4u);

    const Reply spot =
        site.Put(path + "/hotSpotInfos",
                 "{\"hotSpot\":{\"name\":\"Door\",\"resourceGuid\":\"D0000000000000000000000000010001\","
                 "\"resourceType\":\"door\",\"dXPos\":10.25,\"dYPos\":20.5,\"color\":\"#FF0000\",\"picIndex\":3,"
                 "\"startAngle\":0,\"spanAngle\":90,\"sectorRadius\":40}}");
    const std::string spotPath = path + "/hotSpotInfos/" + spot.Text("/data/guid");
    EXPECT_EQ(site.Put(spotPath, "{\"hotSpot\":{\"color\":\"#00FF00\"}}").Code(), "0-0") << spot.body;
    const Reply single = site.Post(spotPath);
    EXPECT_EQ(single.Text("/data/hotSpotGetSingle/hotSpot/color"), "#00FF00") << single.body;
    EXPECT_EQ(single.Print("/data/hotSpotGetSingle/hotSpot/dXPos"), "10.25");
    EXPECT_EQ(single.Text("/data/hotSpotGetSingle/resourceName"), "Main entrance door 1");
    EXPECT_EQ(single.Text("/data/hotSpotGetSingle/mapGuid"), map);
    EXPECT_THAT(site.Post(path + "/hotSpotInfos").Texts("/data/hotSpotGetList", "name"), ElementsAre("Door"));
    EXPECT_EQ(site.Post(kMaps + "/" + kSite + "/hotSpotInfos").Size("/data/hotSpotGetList"), 0u);
    const Reply zone = site.Put(path + "/hotZoneInfos",
                                "{\"hotZone\":{\"name\":\"Down\",\"linkedMapGuid\":\"" + detail +
                                    "\",\"dXPos\":1,\"dYPos\":2,\"color\":\"#000000\",\"picIndex\":0,\"pointList\":["
                                    "{\"dXPos\":1,\"dYPos\":1},{\"dXPos\":2,\"dYPos\":1},{\"dXPos\":2,\"dYPos\":2}]}}");
    const Reply lead = site.Post(path + "/hotZoneInfos/" + zone.Text("/data/guid"));
    EXPECT_EQ(lead.Text("/data/hotZoneGetSingle/linkedMapName"), "Cellar") << lead.body;
    EXPECT_EQ(lead.Size("/data/hotZoneGetSingle/hotZone/pointList"), 3u);
    for (const char* where : {"/none/hotSpotInfos", "/none/hotZoneInfos"}) {
        EXPECT_EQ(site.Post(kMaps + where).Code(), "11-20");
    }
    EXPECT_EQ(
        site.Delete(path + "/hotZoneInfos", "{\"emapDelete\":{\"guidList\":[\"" + zone.Text("/data/guid") + "\"]}}")
            .Code(),
        "0-0");
    EXPECT_EQ(site.Post(path + "/hotZoneInfos").Size("/data/hotZoneGetList"), 0u);

    EXPECT_EQ(site.Delete(kMaps, "{\"emapDelete\":{\"guidList\":[\"" + map + "\"]}}").Code(), "0-0");
    EXPECT_EQ(site.Post(spotPath).Code(), "11-20");
    EXPECT_EQ(site.Post(path).Code(), "11-20");
    EXPECT_EQ(site.Post(kMaps + "/" + detail).Text("/data/mapQuery/parentMapGuid"), "");
}

TEST_F(MapTest, PicturesAreRealAndComeInRanges)
{
    const std::string seeded = Raw("POST", kMaps + "/" + kSite + "/pictures", "");
    EXPECT_THAT(seeded, AllOf(HasSubstr("image/jpeg"), HasSubstr("\r\n\r\n\xFF\xD8\xFF\xE0")));
    EXPECT_EQ(seeded.substr(seeded.size() - 2), "\xFF\xD9");
    const std::string picture = seeded.substr(seeded.find("\r\n\r\n") + 4);

    const std::string map = AddMap("Annex");
    const std::string path = kMaps + "/" + map + "/pictures";
    EXPECT_THAT(Raw("POST", path, ""), HasSubstr("\"11-20\""));
    EXPECT_THAT(Raw("PUT", kMaps + "/none/pictures", "", "x"), HasSubstr("\"11-20\""));
    const auto slice = [&](const std::string& bytes) {
        return Raw("PUT", path,
                   "query: totalBytes=" + std::to_string(picture.size()) +
                       "\r\nContent-Type: multipart/form-data; boundary=b\r\n",
                   "--b\r\nContent-Disposition: form-data; name=\"file\"; filename=\"m.jpg\"\r\n\r\n" + bytes +
                       "\r\n--b--\r\n");
    };
    EXPECT_THAT(slice(picture.substr(0, 1000)), HasSubstr("\"0-0\""));
    EXPECT_EQ(site.Post(kMaps + "/" + map).Print("/data/mapQuery/hasPicture"), "false");
    slice(picture.substr(1000));
    EXPECT_EQ(site.Post(kMaps + "/" + map).Print("/data/mapQuery/hasPicture"), "true");
    const std::string part = Raw("POST", path, "Range: bytes=990-1009\r\n");
    EXPECT_THAT(part, AllOf(StartsWith("HTTP/1.1 206"),
                            HasSubstr("Content-Range: bytes 990-1009/" + std::to_string(picture.size()))));
    EXPECT_EQ(part.substr(part.find("\r\n\r\n") + 4), picture.substr(990, 20));
    EXPECT_THAT(Raw("POST", path, "Range: bytes=" + std::to_string(picture.size()) + "-\r\n"),
                StartsWith("HTTP/1.1 416"));
    site.Delete(kMaps, "{\"emapDelete\":{\"guidList\":[\"" + map + "\"]}}");
    EXPECT_THAT(Raw("POST", path, ""), HasSubstr("\"11-20\""));
}

TEST_F(MapTest, RadarsArmTheirSubsystems)
{
    EXPECT_THAT(Dag(10008), Not(HasSubstr("\"armed\"")));
    EXPECT_EQ(Dag(10006, "1"), "");
    EXPECT_THAT(Dag(10008), AllOf(HasSubstr("\"arming\""), HasSubstr("\"disarmed\"")));
    site.Advance(3000);
    EXPECT_THAT(Dag(10008), AllOf(HasSubstr("\"armed\""), HasSubstr("\"disarmed\"")));
    const std::string name = "{\\\"zoneIn\\\":{\\\"zoneName\\\":\\\"Court\\\"}}";
    EXPECT_EQ(Dag(10004, "1", name), "4-23") << "the zone is armed";
    EXPECT_EQ(Dag(10006), "");
    EXPECT_EQ(Dag(10007), "");
    EXPECT_THAT(Dag(10008), Not(AnyOf(HasSubstr("\"armed\""), HasSubstr("arming"))));
    EXPECT_EQ(Dag(10004, "1", name), "");
    EXPECT_EQ(Dag(10006, "3"), "4-43");
    EXPECT_EQ(Dag(10006, "one"), "4-43");
}

TEST_F(MapTest, RadarsLearnTheGroundWhenAZoneHasChanged)
{
    EXPECT_THAT(Dag(10023), HasSubstr("\"idle\""));
    EXPECT_THAT(Dag(10013, "1"), AllOf(HasSubstr("\"done\""), HasSubstr("12.5")));
    const std::string corners = ",\\\"pointList\\\":[{\\\"x\\\":0,\\\"y\\\":1},{\\\"x\\\":1.5,\\\"y\\\":1}";
    const std::string zone = "{\\\"zoneIn\\\":{\\\"zoneName\\\":\\\"Pond\\\",\\\"zoneType\\\":\\\"ignored\\\","
                             "\\\"subSysNo\\\":1" +
                             corners;
    EXPECT_EQ(Dag(10004, "3", zone + "]}}"), "4-43") << "two corners";
    EXPECT_EQ(Dag(10004, "17", zone + ",{\\\"x\\\":1,\\\"y\\\":9}]}}"), "4-43");
    EXPECT_EQ(Dag(10013, "3"), "4-43") << "no such zone yet";
    EXPECT_EQ(Dag(10004, "3", zone + ",{\\\"x\\\":1,\\\"y\\\":9}]}}"), "");
    EXPECT_THAT(Dag(10003), AllOf(HasSubstr("\"zoneNo\":3"), HasSubstr("Pond"), Not(HasSubstr("_"))));
    site.Advance(5000);
    EXPECT_THAT(Dag(10013, "3"), AllOf(HasSubstr("\"learning\",\"progress\":25"), HasSubstr("\"outlineList\":[]")));
    EXPECT_THAT(Dag(10023), HasSubstr("\"status\":\"learning\",\"progress\":8,\"remaining\":55"));
    site.Advance(55000);
    EXPECT_THAT(Dag(10013, "3"), AllOf(HasSubstr("\"done\""), HasSubstr("2024-01-01T00:00:20+00:00")));
    EXPECT_THAT(Dag(10023), HasSubstr("\"status\":\"done\",\"progress\":100,\"remaining\":0"));
    EXPECT_THAT(Dag(10018), HasSubstr("\"lastLearnTime\":\"2024-01-01T00:01:00+00:00\""));
}

TEST_F(MapTest, CamerasAreLinkedAndSwitchedByOneCommand)
{
    EXPECT_EQ(Dag(10017, "1", "{\\\"videoLinkageEnable\\\":{\\\"enable\\\":true}}"), "4-43") << "no camera";
    EXPECT_EQ(Dag(10017, "1", "{\\\"videoLinkage\\\":{\\\"cameraGuid\\\":\\\"C\\\",\\\"presetNo\\\":4}}"), "");
    EXPECT_EQ(Dag(10017, "1", "{\\\"videoLinkageEnable\\\":{\\\"presetNo\\\":4}}"), "4-43") << "not of the switch";
    EXPECT_EQ(Dag(10017, "1", "{\\\"videoLinkageEnable\\\":{\\\"enable\\\":true}}"), "");
    EXPECT_THAT(Dag(10016, "1"),
                AllOf(HasSubstr("\"enable\":true"), HasSubstr("\"cameraGuid\":\"C\""), HasSubstr("\"presetNo\":4")));
    EXPECT_THAT(Dag(10016, "2"), HasSubstr("\"enable\":false"));
    const std::string marks = "{\\\"virtualSceneryMarkCfg\\\":{\\\"enable\\\":true,\\\"sceneryMarkList\\\":[]}}";
    EXPECT_EQ(Dag(10010, "", marks), "");
    EXPECT_EQ(Dag(10009), "{\"virtualSceneryMarkCfgData\":{\"virtualSceneryMarkCfg\":{\"enable\":true,"
                          "\"sceneryMarkList\":[]}}}");
    const Reply cloud =
        site.Post("deviceManagement/devices/" + kRadar + "/kestrelPassThrough",
                  "{\"kestrelPassThroughReq\":{\"url\":\"GET /KESTREL/Radar/pointCloud?format=json\"}}");
    EXPECT_THAT(cloud.Text("/data/kestrelPassThroughRsp/outBuffer"),
                AllOf(HasSubstr("\"time\":\"2024-01-01T00:00:00+00:00\""), HasSubstr("\"targetNo\":3")));
}

} // namespace
