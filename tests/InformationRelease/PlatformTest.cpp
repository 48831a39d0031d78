#include <gtest/gtest.h>
#include <keel/Error.h>

#include "nexwire/ElectronicMap/EmapElement.h"
#include "nexwire/ElectronicMap/EmapRadar.h"
#include "nexwire/InformationRelease/ReleaseDevice.h"
#include "nexwire/LibraryErrors.h"
#include "support/AtPlatform.h"
#include "support/TempFolder.h"

// Release servers, maps and radars through the library, the ready-made transport and the local platform.

namespace {

using namespace nexwire;
using Release = CInformationReleaseDeviceComm;

const std::string kServer = "5E000000000000000000000000000001";
const std::string kRadar = "4A000000000000000000000000000001";

class Site : public test::AtPlatform {
protected:
    Site() : AtPlatform(1767225600000) {} // 2026-01-01.
};

/// Reads a capability and hands it out.
template <class Capability>
Capability Read(bool (*get)(const std::string&, Capability&))
{
    Capability capability;
    EXPECT_TRUE(get(kServer, capability)) << Keel::Error::GetLastError().text;
    return capability;
}

TEST_F(Site, ServersTellAllThatTheyCanDo)
{
    EXPECT_EQ(Read(Release::getMaterialCapability).formatList.at(1).sizeKB.max, 4194304);
    EXPECT_TRUE(Read(Release::getMaterialSearchCapability).isSptFuzzyName);
    EXPECT_TRUE(Read(Release::getProgramCapability).resolution.Offer("1080x1920"));
    EXPECT_EQ(Read(Release::getProgramSearchCapability).maxResults.max, 100);
    EXPECT_EQ(Read(Release::getDynamicProgramCapability).resolutionList.at(1).resolution, "3840x2160");
    EXPECT_TRUE(Read(Release::getProgramPageCapability).textStyle.isSptColor);
    EXPECT_EQ(Read(Release::getPlayScheduleCapability).kindList.at(1).type, "weekly");
    EXPECT_TRUE(Read(Release::getTerminalControlCapability).operateType.Offer("setVolume"));
    EXPECT_EQ(Read(Release::getTerminalGroupCapability).levelNum.max, 5);
    EXPECT_EQ(Read(Release::getPublishServerCapability).protocolVersion, "2.0");
    EXPECT_TRUE(Read(Release::getWinDynamicCapability).combinationList.at(1).excludes.Offer("webPage"));
    EXPECT_TRUE(Read(Release::getTemplateCapability).isSptFromProgram);
    EXPECT_TRUE(Read(Release::getTemplateSearchCapability).searchBy.Offer("type"));
    EXPECT_EQ(Read(Release::getUserConfigCapability).userLevel.defaultOption, "operator");
    EXPECT_TRUE(Read(Release::getUserPermissionCapability).permissionList.at(0).isDefault);
    EXPECT_EQ(Read(Release::getUserRoleCapability).permissionList.at(0).name, "materialApprove");
    EXPECT_EQ(Read(Release::getOrgnizationCapability).organizationNum.max, 256);
    EXPECT_TRUE(Read(Release::getTouchWinMaterialCapability).gesture.Offer("slide"));
    EXPECT_TRUE(Read(Release::getAudioWinMaterialCapability).isSptBackground);
    EXPECT_EQ(Read(Release::getCharConfigCapability).textLength.max, 512);
    EXPECT_EQ(Read(Release::getADBDebugCapability).openTimeMin.max, 120);
    EXPECT_EQ(Read(Release::getTerminalManagerCapability).terminalNum.max, 500);
    EXPECT_EQ(Read(Release::getIPCLinkAbility).cameraNum.max, 4);
    EXPECT_EQ(Read(Release::getTerminalLinkIPCAbility).popupS.min, 3);
    EXPECT_EQ(Read(Release::getBatchSetParaAbility).parameterList.at(0).value.max, 100);
    EXPECT_EQ(Read(Release::getBasicCapabililty).model, "publish-64");
    EXPECT_TRUE(Read(Release::getIRSSecurityCapability).isSptAudit);
    Abacus::TerminalAbility terminal;
    EXPECT_TRUE(Release::getTerminalCapability(kServer, terminal, 2));
    EXPECT_TRUE(terminal.timedSwitch.isSptHoliday);
    EXPECT_FALSE(Release::getTerminalCapability(kServer, terminal, 4));
    EXPECT_EQ(Keel::Error::GetLastError().category, kDeviceStatusCategory);
}

TEST_F(Site, ServersAreRegisteredFilesMoveAndLogsComeInPages)
{
    bool exists = true;
    int what = 7;
    Release::ServerExisted("192.0.2.77", 8443, "admin", "Device-1234", exists, what);
    EXPECT_FALSE(exists);
    const std::string server = Release::addServer("192.0.2.77", 8443, "admin", "Device-1234");
    ASSERT_FALSE(server.empty()) << Keel::Error::GetLastError().text;
    EXPECT_EQ(Release::ServerExisted("192.0.2.77", 8443, "admin", "Device-1234", exists, what), server);
    EXPECT_TRUE(exists);
    EXPECT_EQ(Release::addServer("192.0.2.78", 8443, "admin", "wrong"), "");

    protocol::FileUpload file;
    file.fileName = "a.zip";
    file.fileType = "package";
    file.fileSize = 10;
    std::string transfer;
    bool finished = true;
    ASSERT_TRUE(Release::uploadFile(transfer, server, file, "", "", finished));
    EXPECT_FALSE(finished);
    int progress = 0;
    now += 1000;
    ASSERT_TRUE(Release::getProgress(server, transfer, progress, "", finished));
    EXPECT_EQ(progress, 50);
    now += 1000;
    ASSERT_TRUE(Release::getProgress(server, transfer, progress, "", finished));
    EXPECT_TRUE(finished);
    EXPECT_TRUE(Release::rebootDevice(server));

    protocol::DeviceLogQueryCondition condition;
    condition.majorType = "all";
    condition.maxResults = 1;
    std::vector<protocol::DeviceLogQueryResult> logs;
    std::string search;
    finished = false;
    for (int page = 0; page < 3 && !finished; ++page) {
        ASSERT_TRUE(Release::findDeviceLogs(condition, server, search, finished, logs));
    }
    ASSERT_EQ(logs.size(), 2u);
    EXPECT_EQ(logs[0].objectName, "a.zip");
    EXPECT_EQ(logs[1].minorType, "reboot");
    EXPECT_TRUE(Release::deleteServer(server));
}

TEST_F(Site, PicturesOfMapsComeBackAsTheyWent)
{
    TempFolder folder;
    std::string content = "\xFF\xD8";
    for (std::size_t i = 0; i < 10485761; ++i) {
        content += static_cast<char>(i * 31 % 251);
    }
    const std::string source = folder.Write("map.jpg", content);
    protocol::MapAdd map;
    map.mapName = "Hall";
    std::string guid;
    ASSERT_TRUE(CEmapElementComm::putMap(map, guid));
    EXPECT_FALSE(CEmapElementComm::getMapPicture(guid, folder.File("none.jpg"))) << "there is none yet";
    ASSERT_TRUE(CEmapElementComm::putMapPicture(guid, source));
    ASSERT_TRUE(CEmapElementComm::getMapPicture(guid, folder.File("back.jpg"))) << Keel::Error::GetLastError().text;
    EXPECT_TRUE(folder.Read("back.jpg") == content);

    protocol::LonlatCaliInfo points;
    points.dLatOne = 48.1 + 1e-13;
    points.dLonTwo = -11.0 / 3.0;
    ASSERT_TRUE(CEmapElementComm::setLonlatCaliInfo(guid, points));
    protocol::MapQueryData read;
    ASSERT_TRUE(CEmapElementComm::getMap(read, guid));
    EXPECT_EQ(read.mapQuery.dLatOne, points.dLatOne);
    EXPECT_EQ(read.mapQuery.dLonTwo, points.dLonTwo);
    EXPECT_EQ(read.mapQuery.mapName, "Hall");
    EXPECT_TRUE(read.mapQuery.hasPicture);
}

TEST_F(Site, RadarsAnswerWhatTheyWereTold)
{
    protocol::ZoneListData zones;
    ASSERT_TRUE(CEmapRadarElementComm::getRadarZoneInfo(zones, kRadar));
    ASSERT_EQ(zones.zoneList.size(), 2u);
    protocol::ZoneIn zone = zones.zoneList[0].zoneIn;
    zone.pointList[0].x = -10.125;
    ASSERT_TRUE(CEmapRadarElementComm::setRadarZoneInfo(zone, kRadar, 1));
    ASSERT_TRUE(CEmapRadarElementComm::getRadarZoneInfo(zones, kRadar));
    EXPECT_EQ(zones.zoneList[0].zoneIn.pointList[0].x, -10.125);
    now += 10000;
    protocol::LandformsLearningDataRe ground;
    ASSERT_TRUE(CEmapRadarElementComm::getLandformsLearning(ground, kRadar, 1));
    EXPECT_EQ(ground.landformsLearning.progress, 50);

    protocol::VideoLinkage link;
    link.zoneNo = 1;
    link.cameraGuid = "C1000000000000000000000000150001";
    link.channelNo = 1;
    ASSERT_TRUE(CEmapRadarElementComm::setPresetPointSetting(link, kRadar, 1));
    protocol::VideoLinkageEnable on;
    on.zoneNo = 1;
    on.enable = true;
    ASSERT_TRUE(CEmapRadarElementComm::setPresetPointEnable(on, kRadar, 1));
    protocol::VideoLinkageDataRe seen;
    ASSERT_TRUE(CEmapRadarElementComm::getPresetPointSetting(seen, kRadar, 1));
    EXPECT_TRUE(seen.videoLinkage.enable);
    EXPECT_EQ(seen.videoLinkage.cameraGuid, link.cameraGuid);

    ASSERT_TRUE(CEmapRadarElementComm::setArmRadar(kRadar, "1"));
    protocol::SubSysListData systems;
    ASSERT_TRUE(CEmapRadarElementComm::getRadarArmStatus(systems, kRadar));
    EXPECT_EQ(systems.subSysList.at(0).armStatus, "arming");
    protocol::RadarCapData capability;
    ASSERT_TRUE(CEmapRadarElementComm::getRadarCap(capability, kRadar));
    EXPECT_EQ(capability.radarCap.zoneNo.max, 16);
    protocol::PointCloudStruct cloud;
    ASSERT_TRUE(CEmapRadarElementComm::getPointCloudStruct(cloud, kRadar));
    EXPECT_EQ(cloud.pointList.size(), 18u);
}

} // namespace
