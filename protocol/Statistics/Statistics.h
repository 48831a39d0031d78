#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

// What the platform and the devices counted. Times are ISO 8601 with their offset.

/// People counted by cameras above entrances.
struct NEXWIRE_API PeopleCountingQuery : IInboundData {
    std::vector<std::string> channelGuidList; ///< Cameras; empty: all that count.
    std::string startTime;
    std::string endTime;
    std::string reportType = "day"; ///< What one value covers. One of: "hour", "day", "week", "month".
    NEXWIRE_JSON
};

struct NEXWIRE_API PeopleCountingQueryData : IInboundData {
    PeopleCountingQuery peopleCountingQuery;
    NEXWIRE_JSON
};

struct NEXWIRE_API PeopleCountingValue : IReturnData {
    std::string startTime;
    std::string endTime;
    std::int32_t enterNum = 0; ///< Persons that came in.
    std::int32_t exitNum = 0;  ///< Persons that went out.
    std::int32_t passNum = 0;  ///< Persons that passed by.
    NEXWIRE_JSON
};

struct NEXWIRE_API PeopleCountingData : IReturnData {
    std::string channelGuid;
    std::string channelName;
    std::int32_t enterTotal = 0; ///< Sum of the values, as are the other totals.
    std::int32_t exitTotal = 0;
    std::int32_t passTotal = 0;
    std::vector<PeopleCountingValue> peopleCountingValueList; ///< In order of time.
    NEXWIRE_JSON
};

struct NEXWIRE_API PeopleCountingDataData : IReturnData {
    std::vector<PeopleCountingData> peopleCountingDataList;
    NEXWIRE_JSON
};

/// Alarms by number.
struct NEXWIRE_API DSAlarmLogQuery : IInboundData {
    std::string startTime;
    std::string endTime;
    std::string groupBy = "time";            ///< One of: "time", "type", "level", "area", "source".
    std::string timeUnit = "day";            ///< For "time". One of: "hour", "day", "week", "month".
    std::vector<std::int32_t> alarmTypeList; ///< Platform's numbers of alarm types; empty: all.
    std::vector<std::string> sourceGuidList; ///< Devices or channels; empty: all.
    std::int32_t top = 0;                    ///< So many of the largest. 0 to 1000. 0 gives all.
    NEXWIRE_JSON
};

struct NEXWIRE_API DSAlarmLogQueryData : IInboundData {
    DSAlarmLogQuery dSAlarmLogQuery;
    NEXWIRE_JSON
};

struct NEXWIRE_API DSAlarmLogResult : IReturnData {
    std::string groupKey; ///< Start of the time, number of the type or level, GUID of area or source.
    std::string groupName;
    std::int32_t alarmNum = 0;
    std::int32_t handledNum = 0; ///< Of these, handled.
    NEXWIRE_JSON
};

struct NEXWIRE_API DSAlarmLogResultData : IReturnData {
    std::int32_t total = 0; ///< Sum of the groups.
    std::vector<DSAlarmLogResult> dSAlarmLogResultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API DSAlarmLogResultDataData : IReturnData {
    DSAlarmLogResultData dSAlarmLogResultData;
    NEXWIRE_JSON
};

/// Where people stayed, by cameras above an area.
struct NEXWIRE_API HeatMapQuery : IInboundData {
    std::string channelGuid;
    std::string startTime;
    std::string endTime;
    std::string timeUnit = "hour";     ///< What one value covers. One of: "hour", "day", "week", "month".
    std::string valueType = "persons"; ///< One of: "persons", "stay" seconds.
    NEXWIRE_JSON
};

struct NEXWIRE_API HeatMapQueryData : IInboundData {
    HeatMapQuery heatMapQuery;
    NEXWIRE_JSON
};

struct NEXWIRE_API DsHeatMapValue : IReturnData {
    std::string startTime;
    std::string endTime;
    std::int64_t value = 0; ///< Persons, or seconds of stay.
    NEXWIRE_JSON
};

struct NEXWIRE_API DsHeatMapResultData : IReturnData {
    std::string channelGuid;
    std::int32_t width = 0;                         ///< Fields of the map from left to right.
    std::int32_t height = 0;                        ///< Fields from top to bottom.
    std::vector<std::int32_t> fieldList;            ///< width * height values, row by row from the top left; 0 to 255.
    std::vector<DsHeatMapValue> dsHeatMapValueList; ///< In order of time.
    NEXWIRE_JSON
};

struct NEXWIRE_API DsHeatMapResultDataData : IReturnData {
    DsHeatMapResultData dsHeatMapResultData;
    NEXWIRE_JSON
};

// ---- What devices answer, one structure an item of a batch ----

/// Part of a picture in thousandths of its width and height.
struct NEXWIRE_API PictureRegion : IInboundData {
    std::int32_t x = 0;      ///< Left edge. 0 to 1000.
    std::int32_t y = 0;      ///< Upper edge. 0 to 1000.
    std::int32_t width = 0;  ///< 0 to 1000.
    std::int32_t height = 0; ///< 0 to 1000.
    NEXWIRE_JSON
};

struct NEXWIRE_API PlateInfo : IInboundData {
    std::string plateNo;         ///< As read, without blanks.
    std::string plateColor;      ///< One of: "white", "yellow", "blue", "black", "green", "other".
    std::string plateType;       ///< Device vocabulary.
    std::int32_t confidence = 0; ///< 0 to 100 %.
    PictureRegion region;
    NEXWIRE_JSON
};

/// A hit of a search in a recorder.
struct NEXWIRE_API SmartSearchRetData : IInboundData {
    std::int32_t channelNo = 0; ///< From 1.
    std::string startTime;
    std::string endTime;
    std::string eventType;  ///< One of: "lineDetection", "fieldDetection", "regionEntrance", "regionExiting", "face",
                            ///< "vehicle".
    std::string targetType; ///< One of: "human", "vehicle", "face", "other".
    std::int32_t similarity = 0; ///< Of a face with the one looked for. 0 to 100 %.
    PictureRegion region;
    PlateInfo plateInfo;    ///< For vehicles.
    std::string pictureUrl; ///< Of the snapshot on the device; empty without one.
    NEXWIRE_JSON
};

/// People counted by a device in a span of time.
struct NEXWIRE_API PdcResultData : IInboundData {
    std::int32_t channelNo = 0; ///< From 1.
    std::string startTime;
    std::string endTime;
    std::int32_t enterNum = 0;
    std::int32_t exitNum = 0;
    std::int32_t passNum = 0;
    NEXWIRE_JSON
};

/// A device's heat map of a span of time.
struct NEXWIRE_API HeatMapResultData : IInboundData {
    std::int32_t channelNo = 0; ///< From 1.
    std::string startTime;
    std::string endTime;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::int32_t> fieldList; ///< width * height values, row by row from the top left; 0 to 255.
    std::int32_t maxValue = 0;           ///< What 255 stands for, in persons or seconds.
    NEXWIRE_JSON
};

/// Vehicles of one lane in a span of time.
struct NEXWIRE_API RoadTrafficresultData : IInboundData { // Spelled so.
    std::int32_t channelNo = 0;                           ///< From 1.
    std::int32_t laneNo = 0;                              ///< From 1.
    std::string startTime;
    std::string endTime;
    std::int32_t vehicleNum = 0;
    std::int32_t smallVehicleNum = 0; ///< Of these, cars.
    std::int32_t largeVehicleNum = 0; ///< Of these, lorries and buses.
    double averageSpeed = 0;          ///< km/h.
    double occupancy = 0;             ///< Of the time that the lane was occupied. 0 to 100 %.
    std::string trafficState;         ///< One of: "smooth", "slow", "congested", "unknown".
    NEXWIRE_JSON
};

/// What became of one face on its way into a device's library.
struct NEXWIRE_API UploadResult : IInboundData {
    std::string faceGuid;
    std::string faceLibGuid;
    std::string pictureID; ///< In the device's library.
    /// One of: 0 done, 1 no face found, 2 poor picture, 3 already there, 4 library full, 5 other error.
    std::int32_t result = 0;
    std::int32_t errorCode = 0; ///< The device's own number.
    NEXWIRE_JSON
};

/// A vehicle that passed.
struct NEXWIRE_API VehicleInfo : IInboundData {
    std::int32_t channelNo = 0; ///< From 1.
    std::int32_t laneNo = 0;    ///< From 1.
    std::string passTime;
    PlateInfo plateInfo;
    std::string vehicleType;  ///< One of: "car", "bus", "truck", "van", "motorcycle", "other".
    std::string vehicleColor; ///< One of: "white", "silver", "grey", "black", "red", "blue", "yellow", "green",
                              ///< "brown", "other".
    std::string direction;    ///< One of: "forward", "backward", "unknown".
    std::int32_t speed = 0;   ///< 0 to 400 km/h. 0 not measured.
    std::string pictureUrl;   ///< On the device; empty without one.
    NEXWIRE_JSON
};

} // namespace protocol
