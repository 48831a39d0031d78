#include "protocol/Statistics/Statistics.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(PeopleCountingQuery, "peopleCountingQuery", F(channelGuidList), F(startTime), F(endTime), F(reportType))
NEXWIRE_INBOUND_FIELDS(PeopleCountingQueryData, "peopleCountingQueryData", F(peopleCountingQuery))
NEXWIRE_RETURN_FIELDS(PeopleCountingValue, F(startTime), F(endTime), F(enterNum), F(exitNum), F(passNum))
NEXWIRE_RETURN_FIELDS(PeopleCountingData, F(channelGuid), F(channelName), F(enterTotal), F(exitTotal), F(passTotal), F(peopleCountingValueList))
NEXWIRE_RETURN_FIELDS(PeopleCountingDataData, F(peopleCountingDataList))
NEXWIRE_INBOUND_FIELDS(DSAlarmLogQuery, "dSAlarmLogQuery", F(startTime), F(endTime), F(groupBy), F(timeUnit), F(alarmTypeList), F(sourceGuidList), F(top))
NEXWIRE_INBOUND_FIELDS(DSAlarmLogQueryData, "dSAlarmLogQueryData", F(dSAlarmLogQuery))
NEXWIRE_RETURN_FIELDS(DSAlarmLogResult, F(groupKey), F(groupName), F(alarmNum), F(handledNum))
NEXWIRE_RETURN_FIELDS(DSAlarmLogResultData, F(total), F(dSAlarmLogResultList))
NEXWIRE_RETURN_FIELDS(DSAlarmLogResultDataData, F(dSAlarmLogResultData))
NEXWIRE_INBOUND_FIELDS(HeatMapQuery, "heatMapQuery", F(channelGuid), F(startTime), F(endTime), F(timeUnit), F(valueType))
NEXWIRE_INBOUND_FIELDS(HeatMapQueryData, "heatMapQueryData", F(heatMapQuery))
NEXWIRE_RETURN_FIELDS(DsHeatMapValue, F(startTime), F(endTime), F(value))
NEXWIRE_RETURN_FIELDS(DsHeatMapResultData, F(channelGuid), F(width), F(height), F(fieldList), F(dsHeatMapValueList))
NEXWIRE_RETURN_FIELDS(DsHeatMapResultDataData, F(dsHeatMapResultData))
NEXWIRE_INBOUND_FIELDS(PictureRegion, "pictureRegion", F(x), F(y), F(width), F(height))
NEXWIRE_INBOUND_FIELDS(PlateInfo, "plateInfo", F(plateNo), F(plateColor), F(plateType), F(confidence), F(region))
NEXWIRE_INBOUND_FIELDS(SmartSearchRetData, "smartSearchRetData", F(channelNo), F(startTime), F(endTime), F(eventType), F(targetType), F(similarity), F(region), F(plateInfo), F(pictureUrl))
NEXWIRE_INBOUND_FIELDS(PdcResultData, "pdcResultData", F(channelNo), F(startTime), F(endTime), F(enterNum), F(exitNum), F(passNum))
NEXWIRE_INBOUND_FIELDS(HeatMapResultData, "heatMapResultData", F(channelNo), F(startTime), F(endTime), F(width), F(height), F(fieldList), F(maxValue))
NEXWIRE_INBOUND_FIELDS(RoadTrafficresultData, "roadTrafficresultData", F(channelNo), F(laneNo), F(startTime), F(endTime), F(vehicleNum), F(smallVehicleNum), F(largeVehicleNum), F(averageSpeed), F(occupancy), F(trafficState))
NEXWIRE_INBOUND_FIELDS(UploadResult, "uploadResult", F(faceGuid), F(faceLibGuid), F(pictureID), F(result), F(errorCode))
NEXWIRE_INBOUND_FIELDS(VehicleInfo, "vehicleInfo", F(channelNo), F(laneNo), F(passTime), F(plateInfo), F(vehicleType), F(vehicleColor), F(direction), F(speed), F(pictureUrl))
// clang-format on

} // namespace protocol
