#pragma once

#include "nexwire/JSONStruct.h"

// Positions on a map are pixels of its picture at full size, from its upper left corner; x to the right, y down.
// Scales are factors: 1 shows the picture at full size. Colours are "#RRGGBB".

namespace protocol {

/// What ties a map's picture to the earth: two points of which both positions are known.
struct NEXWIRE_API LonlatCaliInfo : IInboundData {
    double dLatOne = 0.0; ///< Degrees north, -90 to 90.
    double dLatTwo = 0.0;
    double dLonOne = 0.0; ///< Degrees east, -180 to 180.
    double dLonTwo = 0.0;
    double dXPosOne = 0.0;
    double dXPosTwo = 0.0;
    double dYPosOne = 0.0;
    double dYPosTwo = 0.0;
    NEXWIRE_JSON
};

/// A new map. Its picture is sent by itself, with `CEmapElementComm::putMapPicture`.
struct NEXWIRE_API MapAdd : IInboundData {
    std::string mapName;       ///< Up to 64 characters.
    std::string mapFilePath;   ///< Name of the picture on the client that drew the map.
    std::string parentMapGuid; ///< Map that this one is a detail of; empty for a map of its own.
    double dXPos = 0.0;        ///< Where the view is centred when the map opens.
    double dYPos = 0.0;
    double dScale = 1.0;             ///< Zoom with which the map opens.
    double dProportionalScale = 0.0; ///< Metres per pixel; 0 unknown.
    NEXWIRE_JSON
};

/// A change of a map; only what the filter lets through is sent.
struct NEXWIRE_API MapModify : IInboundData {
    std::string mapName; ///< Up to 64 characters.
    std::string mapFilePath;
    double dXPos = 0.0;
    double dYPos = 0.0;
    double dScale = 1.0;
    double dProportionalScale = 0.0; ///< Metres per pixel; 0 unknown.
    double dLatOne = 0.0;            ///< This and the others of the calibration as in `LonlatCaliInfo`.
    double dLatTwo = 0.0;
    double dLonOne = 0.0;
    double dLonTwo = 0.0;
    double dXPosOne = 0.0;
    double dXPosTwo = 0.0;
    double dYPosOne = 0.0;
    double dYPosTwo = 0.0;
    NEXWIRE_JSON
};

/// Maps, hot spots or hot zones to remove.
struct NEXWIRE_API EmapDelete : IInboundData {
    std::vector<std::string> guidList;
    NEXWIRE_JSON
};

/// The identifier of something new.
struct NEXWIRE_API EmapAddedData : IReturnData {
    std::string guid;
    NEXWIRE_JSON
};

/// A map in the list of all.
struct NEXWIRE_API MapQueryAll : IReturnData {
    std::string mapGuid;
    std::string mapName;
    std::string mapFilePath;
    std::string parentMapGuid; ///< Empty for a map of its own.
    bool hasPicture = false;   ///< `CEmapElementComm::getMapPicture` has something to fetch.
    NEXWIRE_JSON
};

struct NEXWIRE_API MapQueryAllListData : IReturnData {
    std::vector<MapQueryAll> mapQueryAllList;
    NEXWIRE_JSON
};

/// A map as the platform keeps it.
struct NEXWIRE_API MapQuery : IReturnData {
    std::string mapGuid;
    std::string mapName;
    std::string mapFilePath;
    std::string parentMapGuid;
    bool hasPicture = false;
    double dXPos = 0.0; ///< Where the view is centred when the map opens.
    double dYPos = 0.0;
    double dScale = 1.0;             ///< Zoom with which the map opens.
    double dProportionalScale = 0.0; ///< Metres per pixel; 0 unknown.
    double dLatOne = 0.0;            ///< This and the others of the calibration as in `LonlatCaliInfo`; all 0: none.
    double dLatTwo = 0.0;
    double dLonOne = 0.0;
    double dLonTwo = 0.0;
    double dXPosOne = 0.0;
    double dXPosTwo = 0.0;
    double dYPosOne = 0.0;
    double dYPosTwo = 0.0;
    NEXWIRE_JSON
};

struct NEXWIRE_API MapQueryData : IReturnData {
    MapQuery mapQuery;
    NEXWIRE_JSON
};

/// A resource placed on a map: an icon, with a sector for what it sees or reaches. Only what the filter lets through
/// is sent in changes.
struct NEXWIRE_API HotSpot : IInboundData {
    std::string name;         ///< Up to 64 characters; shown beside the icon.
    std::string resourceGuid; ///< Camera, door, alarm input ... that it stands for.
    std::string resourceType; ///< One of: "camera", "door", "alarmInput", "alarmOutput", "radar", "map".
    double dXPos = 0.0;
    double dYPos = 0.0;
    std::string color;
    std::int32_t picIndex = 0; ///< Which icon of the client's set, 0 to 255.
    double startAngle = 0.0;   ///< Degrees, 0 to the right, clockwise.
    double spanAngle = 0.0;    ///< Degrees, 0 without sector to 360.
    double sectorRadius = 0.0; ///< Pixels.
    NEXWIRE_JSON
};

/// A hot spot in the list of a map.
struct NEXWIRE_API HotSpotGet : IReturnData {
    std::string guid;
    std::string name;
    std::string resourceGuid;
    std::string resourceType; ///< As in `HotSpot`.
    double dXPos = 0.0;
    double dYPos = 0.0;
    std::string color;
    std::int32_t picIndex = 0;
    double startAngle = 0.0;
    double spanAngle = 0.0;
    double sectorRadius = 0.0;
    NEXWIRE_JSON
};

struct NEXWIRE_API HotSpotGetListData : IReturnData {
    std::vector<HotSpotGet> hotSpotGetList;
    NEXWIRE_JSON
};

/// A single hot spot, with what it stands for.
struct NEXWIRE_API HotSpotGetSingle : IReturnData {
    HotSpotGet hotSpot;
    std::string mapGuid;
    std::string resourceName; ///< Empty when the resource is gone.
    NEXWIRE_JSON
};

struct NEXWIRE_API HotSpotGetSingleData : IReturnData {
    HotSpotGetSingle hotSpotGetSingle;
    NEXWIRE_JSON
};

/// A corner of a hot zone.
struct NEXWIRE_API HotZonePoint : IInboundData {
    double dXPos = 0.0;
    double dYPos = 0.0;
    NEXWIRE_JSON
};

/// An area of a map that leads to another map. Only what the filter lets through is sent in changes.
struct NEXWIRE_API HotZone : IInboundData {
    std::string name;          ///< Up to 64 characters.
    std::string linkedMapGuid; ///< Map that a click on the area opens; may be empty.
    double dXPos = 0.0;        ///< Where its icon stands.
    double dYPos = 0.0;
    std::string color;
    std::int32_t picIndex = 0;           ///< Which icon of the client's set, 0 to 255.
    std::vector<HotZonePoint> pointList; ///< Corners in order; at least 3, or none for the icon alone.
    NEXWIRE_JSON
};

/// A hot zone in the list of a map.
struct NEXWIRE_API HotZoneGet : IReturnData {
    std::string guid;
    std::string name;
    std::string linkedMapGuid;
    double dXPos = 0.0;
    double dYPos = 0.0;
    std::string color;
    std::int32_t picIndex = 0;
    std::vector<HotZonePoint> pointList;
    NEXWIRE_JSON
};

struct NEXWIRE_API HotZoneGetListData : IReturnData {
    std::vector<HotZoneGet> hotZoneGetList;
    NEXWIRE_JSON
};

/// A single hot zone, with where it leads.
struct NEXWIRE_API HotZoneGetSingle : IReturnData {
    HotZoneGet hotZone;
    std::string mapGuid;
    std::string linkedMapName; ///< Empty when there is no such map.
    NEXWIRE_JSON
};

struct NEXWIRE_API HotZoneGetSingleData : IReturnData {
    HotZoneGetSingle hotZoneGetSingle;
    NEXWIRE_JSON
};

} // namespace protocol
