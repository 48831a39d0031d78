#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

/// Removes maps with all that is on them; maps that were details of one stand by themselves from then on.
void RemoveMaps(Handling& handling)
{
    constexpr const char* kMaps = "emaps";
    constexpr const char* kParent = "parentMapGuid";
    Remove(handling);
    for (const Json& each : Elements(Member(*handling.body, "guidList"))) {
        const std::string guid(AsText(&each));
        for (const char* collection : {"hotSpots", "hotZones"}) {
            handling.store.Select(
                {collection, {{"_maps", Test::kEquals, StoreValue(guid)}}},
                [&](const std::string& key, const std::string&) { handling.store.Erase(collection, key); });
        }
        handling.Each({kMaps, {{kParent, Test::kEquals, StoreValue(guid)}}}, [&](const std::string& key, Json& map) {
            SetMember(map, kParent, MakeText("", handling.Memory()), handling.Memory());
            handling.Save(kMaps, key, map);
        });
        EraseFile(handling, "mapPictures", guid);
    }
}

} // namespace

void AddMaps(Services& services)
{
    services["map.remove"] = RemoveMaps;
}

} // namespace nexwire::simulator
