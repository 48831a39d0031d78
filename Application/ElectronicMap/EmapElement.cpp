#include "nexwire/ElectronicMap/EmapElement.h"

#include "core/Download.h"
#include "core/Pipeline.h"
#include "core/Upload.h"

namespace nexwire {
namespace {

constexpr const char* kMaps = "/7730/v1/electronicMap/maps";

using protocol::HotSpot;
using protocol::HotZone;
using protocol::MapModify;

Path MapPath(const std::string& mapGuid, const char* segment = "")
{
    return {kMaps, "/", mapGuid, segment};
}

Path SpotPath(const std::string& mapGuid, const std::string& spotGuid)
{
    return {kMaps, "/", mapGuid, "/hotSpotInfos/", spotGuid};
}

Path ZonePath(const std::string& mapGuid, const std::string& zoneGuid)
{
    return {kMaps, "/", mapGuid, "/hotZoneInfos/", zoneGuid};
}

bool Create(const Path& path, const protocol::IInboundData& what, std::string& guid)
{
    protocol::EmapAddedData added;
    if (!Exchange(Write(path, what), added)) {
        return false;
    }
    guid = std::move(added.guid);
    return true;
}

bool RemoveAll(const Path& path, const std::vector<std::string>& guids)
{
    return core::Guard([&] {
        protocol::EmapDelete list;
        list.guidList = guids;
        return Exchange(Remove(path, list));
    });
}

} // namespace

bool CEmapElementComm::getAllMaps(protocol::MapQueryAllListData& result)
{
    return Exchange(Query(kMaps), result);
}

bool CEmapElementComm::getMap(protocol::MapQueryData& result, const std::string& mapGuid)
{
    return Exchange(Query(MapPath(mapGuid)), result);
}

bool CEmapElementComm::putMap(const protocol::MapAdd& map, std::string& mapGuid)
{
    return Create(kMaps, map, mapGuid);
}

bool CEmapElementComm::setMapName(const std::string& mapGuid, const std::string& name)
{
    return Exchange(Write(MapPath(mapGuid), Only(&MapModify::mapName, name)));
}

bool CEmapElementComm::setMapPath(const std::string& mapGuid, const std::string& path)
{
    return Exchange(Write(MapPath(mapGuid), Only(&MapModify::mapFilePath, path)));
}

bool CEmapElementComm::setMapPos(const std::string& mapGuid, double x, double y)
{
    return Exchange(Write(MapPath(mapGuid), Only(&MapModify::dXPos, x, &MapModify::dYPos, y)));
}

bool CEmapElementComm::setMapScale(const std::string& mapGuid, double scale)
{
    return Exchange(Write(MapPath(mapGuid), Only(&MapModify::dScale, scale)));
}

bool CEmapElementComm::setMapProportionScale(const std::string& mapGuid, double scale)
{
    return Exchange(Write(MapPath(mapGuid), Only(&MapModify::dProportionalScale, scale)));
}

bool CEmapElementComm::setLonlatCaliInfo(const std::string& mapGuid, const protocol::LonlatCaliInfo& calibration)
{
    return Exchange(
        Write(MapPath(mapGuid),
              Only(&MapModify::dLatOne, calibration.dLatOne, &MapModify::dLatTwo, calibration.dLatTwo,
                   &MapModify::dLonOne, calibration.dLonOne, &MapModify::dLonTwo, calibration.dLonTwo,
                   &MapModify::dXPosOne, calibration.dXPosOne, &MapModify::dXPosTwo, calibration.dXPosTwo,
                   &MapModify::dYPosOne, calibration.dYPosOne, &MapModify::dYPosTwo, calibration.dYPosTwo)));
}

bool CEmapElementComm::deleteMaps(const std::vector<std::string>& mapGuids)
{
    return RemoveAll(kMaps, mapGuids);
}

bool CEmapElementComm::getAllHotspots(protocol::HotSpotGetListData& result, const std::string& mapGuid)
{
    return Exchange(Query(MapPath(mapGuid, "/hotSpotInfos")), result);
}

bool CEmapElementComm::putHotspot(const std::string& mapGuid, const protocol::HotSpot& spot, std::string& spotGuid)
{
    return Create(MapPath(mapGuid, "/hotSpotInfos"), spot, spotGuid);
}

bool CEmapElementComm::deleteHOtspots(const std::string& mapGuid, const std::vector<std::string>& spotGuids)
{
    return RemoveAll(MapPath(mapGuid, "/hotSpotInfos"), spotGuids);
}

bool CEmapElementComm::getHotspot(protocol::HotSpotGetSingleData& result, const std::string& mapGuid,
                                  const std::string& spotGuid)
{
    return Exchange(Query(SpotPath(mapGuid, spotGuid)), result);
}

bool CEmapElementComm::setHotspotColor(const std::string& mapGuid, const std::string& spotGuid,
                                       const std::string& color)
{
    return Exchange(Write(SpotPath(mapGuid, spotGuid), Only(&HotSpot::color, color)));
}

bool CEmapElementComm::setHotspotPos(const std::string& mapGuid, const std::string& spotGuid, double x, double y)
{
    return Exchange(Write(SpotPath(mapGuid, spotGuid), Only(&HotSpot::dXPos, x, &HotSpot::dYPos, y)));
}

bool CEmapElementComm::setHotspotName(const std::string& mapGuid, const std::string& spotGuid, const std::string& name)
{
    return Exchange(Write(SpotPath(mapGuid, spotGuid), Only(&HotSpot::name, name)));
}

bool CEmapElementComm::setHotspotSector(const std::string& mapGuid, const std::string& spotGuid, double startAngle,
                                        double spanAngle, double sectorRadius)
{
    return Exchange(Write(SpotPath(mapGuid, spotGuid), Only(&HotSpot::startAngle, startAngle, &HotSpot::spanAngle,
                                                            spanAngle, &HotSpot::sectorRadius, sectorRadius)));
}

bool CEmapElementComm::setHotspotPicIndex(const std::string& mapGuid, const std::string& spotGuid, int picIndex)
{
    return Exchange(Write(SpotPath(mapGuid, spotGuid), Only(&HotSpot::picIndex, picIndex)));
}

bool CEmapElementComm::getAllHotzones(protocol::HotZoneGetListData& result, const std::string& mapGuid)
{
    return Exchange(Query(MapPath(mapGuid, "/hotZoneInfos")), result);
}

bool CEmapElementComm::putHotzone(const std::string& mapGuid, const protocol::HotZone& zone, std::string& zoneGuid)
{
    return Create(MapPath(mapGuid, "/hotZoneInfos"), zone, zoneGuid);
}

bool CEmapElementComm::deleteHotzones(const std::string& mapGuid, const std::vector<std::string>& zoneGuids)
{
    return RemoveAll(MapPath(mapGuid, "/hotZoneInfos"), zoneGuids);
}

bool CEmapElementComm::getHotzone(protocol::HotZoneGetSingleData& result, const std::string& mapGuid,
                                  const std::string& zoneGuid)
{
    return Exchange(Query(ZonePath(mapGuid, zoneGuid)), result);
}

bool CEmapElementComm::setHotzoneColor(const std::string& mapGuid, const std::string& zoneGuid,
                                       const std::string& color)
{
    return Exchange(Write(ZonePath(mapGuid, zoneGuid), Only(&HotZone::color, color)));
}

bool CEmapElementComm::setHotzonePos(const std::string& mapGuid, const std::string& zoneGuid, double x, double y)
{
    return Exchange(Write(ZonePath(mapGuid, zoneGuid), Only(&HotZone::dXPos, x, &HotZone::dYPos, y)));
}

bool CEmapElementComm::setHotzoneName(const std::string& mapGuid, const std::string& zoneGuid, const std::string& name)
{
    return Exchange(Write(ZonePath(mapGuid, zoneGuid), Only(&HotZone::name, name)));
}

bool CEmapElementComm::setHotzonePicIndex(const std::string& mapGuid, const std::string& zoneGuid, int picIndex)
{
    return Exchange(Write(ZonePath(mapGuid, zoneGuid), Only(&HotZone::picIndex, picIndex)));
}

bool CEmapElementComm::getMapPicture(const std::string& mapGuid, const std::string& file)
{
    return !mapGuid.empty() && DownloadByRanges(MapPath(mapGuid, "/pictures"), file);
}

bool CEmapElementComm::putMapPicture(const std::string& mapGuid, const std::string& file)
{
    const Upload upload{"image/jpeg"};
    std::string answer;
    return !mapGuid.empty() && UploadInSlices(MapPath(mapGuid, "/pictures"), upload, nullptr, file, nullptr, answer);
}

} // namespace nexwire
