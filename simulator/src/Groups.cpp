#include <map>

#include "src/Fields.h"
#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kGroups = "groups";
constexpr const char* kElements = "elements";
constexpr const char* kAll = "60000000000000000000000000000001"; ///< The group of what nobody has put elsewhere.

enum Status { kUnknown = 0, kOnline = 1, kOffline = 2 };

/// Where resources come from, and what they are in groups.
struct Source {
    const char* collection;
    const char* name;
    const char* number;
    std::int64_t type;
};

constexpr Source kSources[] = {
    {"devices", "name", "", 1},
    {"channels", "channelName", "channelNo", 2},
    {"alarmInputs", "alarmInName", "alarmInNo", 3},
    {"alarmOutputs", "alarmOutName", "alarmOutNo", 4},
    {"controlPoints", "objectName", "objectNo", 5},
    {"cardReaders", "name", "readerNo", 6},
};

Json Abilities(Handling& handling, std::int64_t type)
{
    static const std::map<std::int64_t, std::vector<const char*>> kAbilities = {
        {1, {"config"}}, {2, {"live", "record", "ptz"}}, {3, {"arm"}}, {4, {"switch"}}, {5, {"unlock", "lock"}}};
    Json list(rapidjson::kArrayType);
    const auto found = kAbilities.find(type);
    for (const char* ability : found == kAbilities.end() ? std::vector<const char*>() : found->second) {
        list.PushBack(MakeText(ability, handling.Memory()), handling.Memory());
    }
    return list;
}

/// Keys of a collection that another one has not.
std::vector<std::string> Missing(Handling& handling, const std::string& here, const std::string& there)
{
    std::vector<std::string> keys;
    handling.store.Run("SELECT name FROM documents AS d WHERE collection=? AND NOT EXISTS"
                       " (SELECT 1 FROM documents WHERE collection=? AND name=d.name) ORDER BY place",
                       {here, there}, [&](const StoreRow& row) { keys.push_back(std::get<std::string>(row.front())); });
    return keys;
}

/// The group, and those below it.
std::vector<std::string> WithSub(Handling& handling, const std::string& group, bool sub)
{
    std::vector<std::string> groups = {group};
    for (std::size_t i = 0; i < groups.size() && sub; ++i) {
        handling.Each({kGroups, {{"parentGroupGuid", Test::kEquals, StoreValue(groups[i])}}},
                      [&](const std::string& key, Json&) { groups.push_back(key); });
    }
    return groups;
}

/// Brings the elements into step with the resources that there are, and names "groups": what a query is about.
void Settle(Handling& handling)
{
    for (const Source& source : kSources) {
        const std::string resources = source.collection;
        for (const std::string& key : Missing(handling, resources, kElements)) {
            const Json resource = handling.Load(resources, key);
            const Json* name = Member(resource, source.name);
            const std::string_view device = AsText(Member(resource, "deviceGuid"));
            Json element =
                Fields(handling.Memory())
                    .Text("elementGuid", key)
                    .Text("elementName", AsText(name != nullptr ? name : Member(resource, "deviceName")))
                    .Number("elementType", source.type)
                    .Text("groupGuid", kAll)
                    .Text("deviceGuid", device)
                    .Number("elementNo", AsInt(Member(resource, source.number)))
                    .Number("elementStatus", OutOfReach(handling, device) == Reason::kNone ? kOnline : kOffline)
                    .Number("orderNo", 0)
                    .Value("abilityList", Abilities(handling, source.type))
                    .Text("description", "")
                    .Take();
            handling.Save(kElements, key, element);
        }
        const Selection known{kElements, {{"elementType", Test::kEquals, source.type}}};
        if (handling.store.Count(known) > handling.store.Count({resources})) {
            handling.Each(known, [&](const std::string& key, Json&) {
                if (!handling.store.Has(resources, key)) {
                    handling.store.Erase(kElements, key);
                }
            });
        }
    }
    handling.Each({kGroups}, [&](const std::string& key, Json& group) {
        const std::int64_t count = handling.store.Count({kElements, {{"groupGuid", Test::kEquals, StoreValue(key)}}});
        if (count != AsInt(Member(group, "elementNum"), -1)) {
            Fields(group, handling.Memory()).Number("elementNum", count);
            handling.Save(kGroups, key, group);
        }
    });
    const Json nothing(rapidjson::kObjectType);
    const Json& body = handling.body == nullptr ? nothing : *handling.body;
    std::string about(handling.Identifier("groupGuid"));
    about = about.empty() ? AsText(Member(body, "parentGroupGuid")) : about;
    if (!about.empty()) {
        Json groups(rapidjson::kArrayType);
        for (const std::string& group : WithSub(handling, about, AsBool(Member(body, "includeSub")))) {
            groups.PushBack(MakeText(group, handling.Memory()), handling.Memory());
        }
        handling.Define("groups", std::move(groups));
    }
}

/// Sets the state that the elements of a group show, and of the groups below it.
void Synchronise(Handling& handling)
{
    const std::string group(handling.Identifier("groupGuid"));
    handling.Need(*handling.description.FindCollection(kGroups), group);
    const std::int64_t type = AsInt(Member(*handling.body, "elementType"));
    for (const std::string& each : WithSub(handling, group, AsBool(Member(*handling.body, "includeSub")))) {
        handling.Each({kElements, {{"groupGuid", Test::kEquals, StoreValue(each)}}},
                      [&](const std::string& key, Json& element) {
                          if (type == 0 || type == AsInt(Member(element, "elementType"))) {
                              Fields(element, handling.Memory()).Same("elementStatus", *handling.body);
                              handling.Save(kElements, key, element);
                          }
                      });
    }
}

/// Takes devices with all their parts into a group, an existing one or a new one.
void Import(Handling& handling)
{
    const Json& body = *handling.body;
    std::string guid(AsText(Member(body, "groupGuid")));
    Json group;
    if (guid.empty()) {
        guid = NewGuid();
        group = Fields(handling.Memory())
                    .Text("groupGuid", guid)
                    .Text("groupName", handling.NeedText(body, "groupName"))
                    .Text("parentGroupGuid", AsText(Member(body, "parentGroupGuid")))
                    .Number("groupType", 0)
                    .Number("orderNo", 0)
                    .Text("description", "")
                    .Take();
        handling.Save(kGroups, guid, group);
    } else {
        group = handling.Need(*handling.description.FindCollection(kGroups), guid);
    }
    std::int64_t moved = 0;
    Json results(rapidjson::kArrayType);
    for (const Json& device : Elements(Member(body, "deviceGuidList"))) {
        const bool known = handling.store.Has(kDevices, AsText(&device));
        const Reason reason = known ? Reason::kNone : Reason::kUnknownDevice;
        results.PushBack(Fields(handling.Memory())
                             .Text("guid", AsText(&device))
                             .Number("resultCode", static_cast<int>(reason))
                             .Text("resultMsg", known ? "" : ReasonText(reason))
                             .Take(),
                         handling.Memory());
        handling.Each({kElements, {{"deviceGuid", Test::kEquals, StoreValue(std::string(AsText(&device)))}}},
                      [&](const std::string& key, Json& element) {
                          Fields(element, handling.Memory()).Text("groupGuid", guid);
                          handling.Save(kElements, key, element);
                          ++moved;
                      });
    }
    handling.data = Fields(handling.Memory())
                        .Value("groupImportResult", Fields(handling.Memory())
                                                        .Text("groupGuid", guid)
                                                        .Same("groupName", group)
                                                        .Number("elementNum", moved)
                                                        .Value("operationResultList", std::move(results))
                                                        .Take())
                        .Take();
    Settle(handling);
}

void GroupsOf(Handling& handling)
{
    Json list(rapidjson::kArrayType);
    const Json element = handling.Load(kElements, handling.NeedText(*handling.body, "resourceGuid"));
    if (!element.IsNull()) {
        list.PushBack(handling.Load(kGroups, AsText(Member(element, "groupGuid"))), handling.Memory());
    }
    handling.data = Fields(handling.Memory()).Value("groupList", std::move(list)).Take();
}

} // namespace

void AddGroups(Services& services)
{
    services["settleElements"] = Settle;
    services["synchroniseElements"] = Synchronise;
    services["importDevices"] = Import;
    services["groupsOfResource"] = GroupsOf;
}

} // namespace nexwire::simulator
