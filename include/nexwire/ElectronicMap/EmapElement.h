#pragma once

#include "protocol/ElectronicMap/EmapElement.h"

namespace nexwire {

/// Electronic maps: pictures of a site with the resources placed on them (hot spots) and areas that lead on (hot
/// zones).
///
/// All functions block until the answer is there and may be called from any thread. Unless a line says otherwise they
/// return true when the answer was a readable envelope, whatever its code; a result is untouched on false. The
/// `set...` functions send what they name and nothing else, so that two clients do not undo each other's changes.
class NEXWIRE_API CEmapElementComm {
public:
    /// All maps, without their elements.
    static bool getAllMaps(protocol::MapQueryAllListData& result);
    static bool getMap(protocol::MapQueryData& result, const std::string& mapGuid);
    /// Creates a map. @param mapGuid  receives its identifier.
    static bool putMap(const protocol::MapAdd& map, std::string& mapGuid);
    static bool setMapName(const std::string& mapGuid, const std::string& name);
    /// @param path  name of the picture on the client; the picture itself goes up with `putMapPicture`.
    static bool setMapPath(const std::string& mapGuid, const std::string& path);
    /// Where the view is centred when the map opens, in pixels.
    static bool setMapPos(const std::string& mapGuid, double x, double y);
    /// The zoom with which the map opens; 1 is full size.
    static bool setMapScale(const std::string& mapGuid, double scale);
    /// @param scale  metres per pixel.
    static bool setMapProportionScale(const std::string& mapGuid, double scale);
    static bool setLonlatCaliInfo(const std::string& mapGuid, const protocol::LonlatCaliInfo& calibration);
    /// Removes maps with their pictures and elements.
    static bool deleteMaps(const std::vector<std::string>& mapGuids);

    static bool getAllHotspots(protocol::HotSpotGetListData& result, const std::string& mapGuid);
    /// Places a resource on a map. @param spotGuid  receives the identifier of the new spot.
    static bool putHotspot(const std::string& mapGuid, const protocol::HotSpot& spot, std::string& spotGuid);
    /// Spelled so.
    static bool deleteHOtspots(const std::string& mapGuid, const std::vector<std::string>& spotGuids);
    static bool getHotspot(protocol::HotSpotGetSingleData& result, const std::string& mapGuid,
                           const std::string& spotGuid);
    /// @param color  "#RRGGBB".
    static bool setHotspotColor(const std::string& mapGuid, const std::string& spotGuid, const std::string& color);
    /// Pixels.
    static bool setHotspotPos(const std::string& mapGuid, const std::string& spotGuid, double x, double y);
    static bool setHotspotName(const std::string& mapGuid, const std::string& spotGuid, const std::string& name);
    /// Angles in degrees, 0 to the right, clockwise; the radius in pixels.
    static bool setHotspotSector(const std::string& mapGuid, const std::string& spotGuid, double startAngle,
                                 double spanAngle, double sectorRadius);
    /// @param picIndex  which icon of the client's set, 0 to 255.
    static bool setHotspotPicIndex(const std::string& mapGuid, const std::string& spotGuid, int picIndex);

    static bool getAllHotzones(protocol::HotZoneGetListData& result, const std::string& mapGuid);
    /// Marks an area of a map. @param zoneGuid  receives the identifier of the new zone.
    static bool putHotzone(const std::string& mapGuid, const protocol::HotZone& zone, std::string& zoneGuid);
    static bool deleteHotzones(const std::string& mapGuid, const std::vector<std::string>& zoneGuids);
    static bool getHotzone(protocol::HotZoneGetSingleData& result, const std::string& mapGuid,
                           const std::string& zoneGuid);
    /// @param color  "#RRGGBB".
    static bool setHotzoneColor(const std::string& mapGuid, const std::string& zoneGuid, const std::string& color);
    /// Where the icon of the area stands, in pixels.
    static bool setHotzonePos(const std::string& mapGuid, const std::string& zoneGuid, double x, double y);
    static bool setHotzoneName(const std::string& mapGuid, const std::string& zoneGuid, const std::string& name);
    /// @param picIndex  which icon of the client's set, 0 to 255.
    static bool setHotzonePicIndex(const std::string& mapGuid, const std::string& zoneGuid, int picIndex);

    /// Fetches the picture of a map into a file, in requests of 10 MiB each.
    ///
    /// The file is written beside its name and takes it only when the picture is complete: on false, what stood there
    /// before is untouched. False when an argument is empty, the file cannot be written (its last error says why), a
    /// request fails, or the answers do not add up to one picture: without "Content-Range", or with one that does not
    /// fit what was asked, what came, or what the answers before it said.
    ///
    /// @param file  UTF-8.
    static bool getMapPicture(const std::string& mapGuid, const std::string& file);
    /// Sends the picture of a map, a JPEG, in slices of 1 MiB; the last answer decides. False also when an argument is
    /// empty, or the file is empty, missing or shrinks meanwhile.
    ///
    /// @param file  UTF-8.
    static bool putMapPicture(const std::string& mapGuid, const std::string& file);
};

} // namespace nexwire
