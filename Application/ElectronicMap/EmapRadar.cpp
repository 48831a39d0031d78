#include "nexwire/ElectronicMap/EmapRadar.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {
namespace {

/// Assumed: devices are free in where they keep it, and this is where those known so far do.
constexpr const char* kPointCloud = "GET /KESTREL/Radar/pointCloud?format=json\r\n";

} // namespace

// clang-format off
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getDetectInfoCfg, DetectInfoData, External, 10000)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getRadarZoneMode, ZoneDrawingMode, External, 10001)
NEXWIRE_DEVICE_SET(CEmapRadarElementComm, setRadarZoneMode, ZoneDrawingMode, External, 10002)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getRadarZoneInfo, ZoneListData, External, 10003)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getRadarCap, RadarCapData, External, 10005)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getRadarArmStatus, SubSysListData, External, 10008)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getFalseAlarmAreaInfo, VirtualSceneryMarkCfgData, External, 10009)
NEXWIRE_DEVICE_SET(CEmapRadarElementComm, setFalseAlarmAreaInfo, VirtualSceneryMarkCfg, External, 10010)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, setFalseAlarmAreaCap, VirtualSceneryMarkCfgDataCap, External, 10011)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getLandformsLearningCap, LandformsLearningDataCap, External, 10012)
NEXWIRE_DEVICE_SET(CEmapRadarElementComm, setRadarDisplayMode, DisplayMode, External, 10015)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getLearningEnvironment, EnvironmentLearningDataRe, External, 10018)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getDetectCap, DetectInfoCapData, External, 10019)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getLearningEnvironmentCap, EnvironmentManualLearningCapData, External, 10020)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getAlarmLineCap, AlarmLineCapData, External, 10021)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getAlarmLineRuleCap, AlarmRuleCapData, External, 10022)
NEXWIRE_DEVICE_GET(CEmapRadarElementComm, getLearningEnviStatus, LearningStatusData, External, 10023)
// clang-format on

bool CEmapRadarElementComm::setRadarZoneInfo(const protocol::ZoneIn& input, const std::string& deviceGuid, int zoneNo)
{
    return DeviceSet(Route::External, 10004, deviceGuid, input, std::to_string(zoneNo));
}

bool CEmapRadarElementComm::setArmRadar(const std::string& deviceGuid, const std::string& subSys)
{
    return DeviceCommand(Route::External, 10006, deviceGuid, subSys);
}

bool CEmapRadarElementComm::setDisarmRadar(const std::string& deviceGuid, const std::string& subSys)
{
    return DeviceCommand(Route::External, 10007, deviceGuid, subSys);
}

bool CEmapRadarElementComm::getLandformsLearning(protocol::LandformsLearningDataRe& output,
                                                 const std::string& deviceGuid, int zoneNo)
{
    return DeviceGet(Route::External, 10013, deviceGuid, output, std::to_string(zoneNo));
}

bool CEmapRadarElementComm::getPresetPointSetting(protocol::VideoLinkageDataRe& output, const std::string& deviceGuid,
                                                  int zoneNo)
{
    return DeviceGet(Route::External, 10016, deviceGuid, output, std::to_string(zoneNo));
}

bool CEmapRadarElementComm::setPresetPointSetting(const protocol::VideoLinkage& input, const std::string& deviceGuid,
                                                  int zoneNo)
{
    return DeviceSet(Route::External, 10017, deviceGuid, input, std::to_string(zoneNo));
}

bool CEmapRadarElementComm::setPresetPointEnable(const protocol::VideoLinkageEnable& input,
                                                 const std::string& deviceGuid, int zoneNo)
{
    return DeviceSet(Route::External, 10017, deviceGuid, input, std::to_string(zoneNo));
}

bool CEmapRadarElementComm::kestrelRequest(protocol::KestrelPassThroughRspData& result, const std::string& deviceGuid,
                                           const protocol::KestrelPassThroughReq& request)
{
    return KestrelExchange(Route::External, deviceGuid, request, result);
}

bool CEmapRadarElementComm::getPointCloudStruct(protocol::PointCloudStruct& output, const std::string& deviceGuid)
{
    return KestrelGet(deviceGuid, kPointCloud, output);
}

} // namespace nexwire
