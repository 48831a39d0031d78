#include "protocol/ElectronicMap/EmapElement.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(LonlatCaliInfo, "lonlatCaliInfo", F(dLatOne), F(dLatTwo), F(dLonOne), F(dLonTwo), F(dXPosOne), F(dXPosTwo), F(dYPosOne), F(dYPosTwo))
NEXWIRE_INBOUND_FIELDS(MapAdd, "mapAdd", F(mapName), F(mapFilePath), F(parentMapGuid), F(dXPos), F(dYPos), F(dScale), F(dProportionalScale))
NEXWIRE_INBOUND_FIELDS(MapModify, "mapModify", F(mapName), F(mapFilePath), F(dXPos), F(dYPos), F(dScale), F(dProportionalScale), F(dLatOne), F(dLatTwo), F(dLonOne), F(dLonTwo), F(dXPosOne), F(dXPosTwo), F(dYPosOne), F(dYPosTwo))
NEXWIRE_INBOUND_FIELDS(EmapDelete, "emapDelete", F(guidList))
NEXWIRE_RETURN_FIELDS(EmapAddedData, F(guid))
NEXWIRE_RETURN_FIELDS(MapQueryAll, F(mapGuid), F(mapName), F(mapFilePath), F(parentMapGuid), F(hasPicture))
NEXWIRE_RETURN_FIELDS(MapQueryAllListData, F(mapQueryAllList))
NEXWIRE_RETURN_FIELDS(MapQuery, F(mapGuid), F(mapName), F(mapFilePath), F(parentMapGuid), F(hasPicture), F(dXPos), F(dYPos), F(dScale), F(dProportionalScale), F(dLatOne), F(dLatTwo), F(dLonOne), F(dLonTwo), F(dXPosOne), F(dXPosTwo), F(dYPosOne), F(dYPosTwo))
NEXWIRE_RETURN_FIELDS(MapQueryData, F(mapQuery))
NEXWIRE_INBOUND_FIELDS(HotSpot, "hotSpot", F(name), F(resourceGuid), F(resourceType), F(dXPos), F(dYPos), F(color), F(picIndex), F(startAngle), F(spanAngle), F(sectorRadius))
NEXWIRE_RETURN_FIELDS(HotSpotGet, F(guid), F(name), F(resourceGuid), F(resourceType), F(dXPos), F(dYPos), F(color), F(picIndex), F(startAngle), F(spanAngle), F(sectorRadius))
NEXWIRE_RETURN_FIELDS(HotSpotGetListData, F(hotSpotGetList))
NEXWIRE_RETURN_FIELDS(HotSpotGetSingle, F(hotSpot), F(mapGuid), F(resourceName))
NEXWIRE_RETURN_FIELDS(HotSpotGetSingleData, F(hotSpotGetSingle))
NEXWIRE_INBOUND_FIELDS(HotZonePoint, "hotZonePoint", F(dXPos), F(dYPos))
NEXWIRE_INBOUND_FIELDS(HotZone, "hotZone", F(name), F(linkedMapGuid), F(dXPos), F(dYPos), F(color), F(picIndex), F(pointList))
NEXWIRE_RETURN_FIELDS(HotZoneGet, F(guid), F(name), F(linkedMapGuid), F(dXPos), F(dYPos), F(color), F(picIndex), F(pointList))
NEXWIRE_RETURN_FIELDS(HotZoneGetListData, F(hotZoneGetList))
NEXWIRE_RETURN_FIELDS(HotZoneGetSingle, F(hotZone), F(mapGuid), F(linkedMapName))
NEXWIRE_RETURN_FIELDS(HotZoneGetSingleData, F(hotZoneGetSingle))
// clang-format on

} // namespace protocol
