#include "protocol/ElectronicMap/EmapRadar.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(RadarPoint, "radarPoint", F(x), F(y))
NEXWIRE_INBOUND_FIELDS(DetectInfo, "detectInfo", F(enable), F(sensitivity), F(scene), F(targetType), F(detectRadius), F(startAngle), F(endAngle), F(mountHeight), F(trackDuration))
NEXWIRE_INBOUND_FIELDS(DetectInfoData, "detectInfoData", F(detectInfo))
NEXWIRE_INBOUND_FIELDS(DetectInfoCap, "detectInfoCap", F(sensitivity), F(scene), F(targetType), F(detectRadius), F(startAngle), F(endAngle), F(mountHeight), F(trackDuration))
NEXWIRE_INBOUND_FIELDS(DetectInfoCapData, "detectInfoCapData", F(detectInfoCap))
NEXWIRE_INBOUND_FIELDS(ZoneDrawingMode, "zoneDrawingMode", F(mode), F(keepPosition))
NEXWIRE_INBOUND_FIELDS(ZoneIn, "zoneIn", F(zoneNo), F(zoneName), F(zoneType), F(enable), F(subSysNo), F(alarmDelay), F(direction), F(pointList))
NEXWIRE_INBOUND_FIELDS(RadarZone, "radarZone", F(zoneIn), F(status))
NEXWIRE_INBOUND_FIELDS(ZoneListData, "zoneListData", F(zoneList))
NEXWIRE_INBOUND_FIELDS(RadarCap, "radarCap", F(zoneNo), F(zoneNameLen), F(zoneType), F(pointNum), F(alarmDelay), F(subSysNo), F(drawingMode), F(displayMode), F(presetNo), F(isSptVideoLinkage), F(isSptVirtualSceneryMark), F(isSptLandformsLearning), F(isSptEnvironmentLearning), F(isSptPointCloud))
NEXWIRE_INBOUND_FIELDS(RadarCapData, "radarCapData", F(radarCap))
NEXWIRE_INBOUND_FIELDS(RadarSubSys, "radarSubSys", F(subSysNo), F(name), F(armStatus), F(alarm))
NEXWIRE_INBOUND_FIELDS(SubSysListData, "subSysListData", F(subSysList))
NEXWIRE_INBOUND_FIELDS(SceneryMark, "sceneryMark", F(markNo), F(enable), F(reason), F(pointList))
NEXWIRE_INBOUND_FIELDS(VirtualSceneryMarkCfg, "virtualSceneryMarkCfg", F(enable), F(sceneryMarkList))
NEXWIRE_INBOUND_FIELDS(VirtualSceneryMarkCfgData, "virtualSceneryMarkCfgData", F(virtualSceneryMarkCfg))
NEXWIRE_INBOUND_FIELDS(VirtualSceneryMarkCfgCap, "virtualSceneryMarkCfgCap", F(markNo), F(pointNum), F(reason))
NEXWIRE_INBOUND_FIELDS(VirtualSceneryMarkCfgDataCap, "virtualSceneryMarkCfgDataCap", F(virtualSceneryMarkCfgCap))
NEXWIRE_INBOUND_FIELDS(LandformsLearningCap, "landformsLearningCap", F(isSptLearning), F(duration), F(zoneNo))
NEXWIRE_INBOUND_FIELDS(LandformsLearningDataCap, "landformsLearningDataCap", F(landformsLearningCap))
NEXWIRE_INBOUND_FIELDS(LandformsLearning, "landformsLearning", F(zoneNo), F(status), F(progress), F(learnedTime), F(outlineList))
NEXWIRE_INBOUND_FIELDS(LandformsLearningDataRe, "landformsLearningDataRe", F(landformsLearning))
NEXWIRE_INBOUND_FIELDS(DisplayMode, "displayMode", F(mode), F(trackHoldTime), F(showTargetNo))
NEXWIRE_INBOUND_FIELDS(VideoLinkage, "videoLinkage", F(zoneNo), F(enable), F(cameraGuid), F(channelNo), F(presetNo), F(dwellTime))
NEXWIRE_INBOUND_FIELDS(VideoLinkageEnable, "videoLinkageEnable", F(zoneNo), F(enable))
NEXWIRE_INBOUND_FIELDS(VideoLinkageDataRe, "videoLinkageDataRe", F(videoLinkage))
NEXWIRE_INBOUND_FIELDS(EnvironmentLearning, "environmentLearning", F(autoLearning), F(interval), F(duration), F(lastLearnTime))
NEXWIRE_INBOUND_FIELDS(EnvironmentLearningDataRe, "environmentLearningDataRe", F(environmentLearning))
NEXWIRE_INBOUND_FIELDS(EnvironmentManualLearningCap, "environmentManualLearningCap", F(isSptManualLearning), F(isSptAutoLearning), F(interval), F(duration))
NEXWIRE_INBOUND_FIELDS(EnvironmentManualLearningCapData, "environmentManualLearningCapData", F(environmentManualLearningCap))
NEXWIRE_INBOUND_FIELDS(LearningStatus, "learningStatus", F(status), F(progress), F(remaining))
NEXWIRE_INBOUND_FIELDS(LearningStatusData, "learningStatusData", F(learningStatus))
NEXWIRE_INBOUND_FIELDS(AlarmLineCap, "alarmLineCap", F(lineNo), F(pointNum), F(lineNameLen), F(length))
NEXWIRE_INBOUND_FIELDS(AlarmLineCapData, "alarmLineCapData", F(alarmLineCap))
NEXWIRE_INBOUND_FIELDS(AlarmRuleCap, "alarmRuleCap", F(direction), F(targetType), F(alarmDelay), F(targetSpeed), F(isSptSchedule))
NEXWIRE_INBOUND_FIELDS(AlarmRuleCapData, "alarmRuleCapData", F(alarmRuleCap))
NEXWIRE_INBOUND_FIELDS(CloudPoint, "cloudPoint", F(x), F(y), F(z), F(speed), F(intensity), F(targetNo))
NEXWIRE_INBOUND_FIELDS(PointCloudStruct, "pointCloudStruct", F(time), F(frameNo), F(pointList))
// clang-format on

} // namespace protocol
