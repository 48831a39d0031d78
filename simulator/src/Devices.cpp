#include <algorithm>

#include "src/Clock.h"
#include "src/Equipment.h"
#include "src/Fields.h"
#include "src/Rules.h"
#include "src/Services.h"

// Devices: added with credentials that are checked, listed, changed, refreshed, upgraded, removed.

namespace nexwire::simulator {
namespace {

constexpr double kUpgradeMs = 8000;
constexpr double kTaskMs = 20000;
constexpr std::int64_t kWidestRange = 256;
enum Online { kOffline = 0, kOnline = 1 };

/// One device's part of an answer.
Json Result(Handling& handling, std::string_view guid, std::string_view address, Reason reason)
{
    return Fields(handling.Memory())
        .Text("deviceGuid", guid)
        .Text("address", address)
        .Number("resultCode", static_cast<int>(reason))
        .Text("resultMsg", ReasonText(reason))
        .Take();
}

void Reply(Handling& handling, const char* list, Json results)
{
    handling.data = Fields(handling.Memory()).Value(list, std::move(results)).Take();
}

/// In the local network nothing answers at addresses that end in 0, and all devices take the same credentials.
Reason Contact(std::string_view address, std::string_view user, std::string_view password)
{
    return !address.empty() && address.back() == '0'            ? Reason::kDeviceOffline
           : user != kDeviceUser || password != kDevicePassword ? Reason::kWrongPassword
                                                                : Reason::kNone;
}

std::vector<std::string> Addresses(const Json& body)
{
    const std::string first(AsText(Member(body, "address")));
    const std::string last(AsText(Member(body, "endAddress")));
    if (AsText(Member(body, "addMode")) != "addressRange") {
        return {first};
    }
    const std::size_t dot = first.rfind('.');
    const auto number = [](const std::string& text) -> std::int64_t {
        const bool digits =
            !text.empty() && text.size() < 4 && text.find_first_not_of("0123456789") == std::string::npos;
        return digits ? std::stoi(text) : -1;
    };
    const std::int64_t begin = dot == std::string::npos ? -1 : number(first.substr(dot + 1));
    const std::int64_t end =
        dot == std::string::npos || last.rfind('.') != dot || last.compare(0, dot, first, 0, dot) != 0
            ? -1
            : number(last.substr(dot + 1));
    if (begin < 0 || end < begin || end >= kWidestRange) {
        throw Refusal(Reason::kOutOfRange, "deviceAddReq.endAddress \"" + last + "\"");
    }
    std::vector<std::string> all;
    for (std::int64_t each = begin; each <= end; ++each) {
        all.push_back(first.substr(0, dot + 1) + std::to_string(each));
    }
    return all;
}

void Add(Handling& handling, const Cipher& cipher)
{
    const Json& body = *handling.body;
    const std::string user = cipher.Decrypt(handling.NeedText(body, "username"));
    const std::string password = cipher.Decrypt(handling.NeedText(body, "password"));
    if (user.empty() || password.empty()) {
        throw Refusal(Reason::kWrongType, "user name and password do not come encrypted");
    }
    Allocator& memory = handling.Memory();
    Json results(rapidjson::kArrayType);
    for (const std::string& address : Addresses(body)) {
        const std::string_view serial = AsText(Member(body, "serialNo"));
        Selection same{kDevices, {{"address", Test::kEquals, StoreValue(address)}}};
        if (address.empty()) {
            same = {kDevices, {{"serialNo", Test::kEquals, StoreValue(std::string(serial))}}};
        }
        const Reason reason = handling.store.Count(same) > 0 ? Reason::kDuplicate : Contact(address, user, password);
        std::string guid;
        if (reason == Reason::kNone) {
            guid = NewGuid();
            const std::string_view name = AsText(Member(body, "name"));
            Fields device(memory);
            device.Text("deviceGuid", guid).Text("name", name.empty() ? address : std::string(name));
            for (const char* member : {"deviceType", "protocolType", "port", "groupGuid"}) {
                device.Same(member, body);
            }
            device.Text("address", address)
                .Text("serialNo", serial.empty() ? "SN" + guid.substr(24) : std::string(serial))
                .Text("username", user)
                .Text("softwareVersion", kFirstVersion)
                .Text("addedTime", IsoTime(handling.nowMs))
                .Text("refreshTime", IsoTime(handling.nowMs))
                .Value("_extInfo", Fields(memory).Same("timeSync", body).Take());
            const Json made = device.Take();
            handling.Save(kDevices, guid, made);
            Equip(handling.store, made);
        }
        results.PushBack(Result(handling, guid, address, reason), memory);
    }
    Reply(handling, "deviceResultList", std::move(results));
}

void Discard(Handling& handling)
{
    Json results(rapidjson::kArrayType);
    for (const Json& each : Elements(Member(*handling.body, "deviceGuidList"))) {
        const std::string guid(AsText(&each));
        const Json device = handling.Load(kDevices, guid);
        const Reason reason = handling.store.Erase(kDevices, guid) ? Reason::kNone : Reason::kUnknownDevice;
        for (const Part& part : Parts()) {
            std::vector<std::string> keys;
            EachPart(handling, part, guid, [&](const std::string& key, Json&) { keys.push_back(key); });
            for (const std::string& key : keys) {
                handling.store.Erase(part.collection, key);
            }
        }
        results.PushBack(Result(handling, guid, AsText(Member(device, "address")), reason), handling.Memory());
    }
    Reply(handling, "deviceResultList", std::move(results));
}

/// The devices that a condition means.
std::vector<std::string> Meant(Handling& handling, const Json& condition)
{
    const auto wanted = Elements(Member(condition, "deviceGuidList"));
    const std::string_view one = AsText(Member(condition, "mLongStrGuid"));
    const std::string_view type = AsText(Member(condition, "deviceType"));
    const std::string_view keyword = AsText(Member(condition, "keyword"));
    const std::int64_t online = AsInt(Member(condition, "onlineState"), -1);
    std::vector<std::string> guids;
    handling.Each({kDevices}, [&](const std::string& guid, Json& device) {
        const auto has = [&](const char* member) {
            return AsText(Member(device, member)).find(keyword) != std::string_view::npos;
        };
        const bool named = wanted.Empty() ||
                           std::any_of(wanted.begin(), wanted.end(), [&](const Json& g) { return AsText(&g) == guid; });
        if (named && (one.empty() || one == guid) && (type.empty() || type == AsText(Member(device, "deviceType"))) &&
            (has("name") || has("address")) &&
            (online < 0 || online == (OutOfReach(handling, guid) == Reason::kNone ? kOnline : kOffline))) {
            guids.push_back(guid);
        }
    });
    return guids;
}

void List(Handling& handling)
{
    const std::vector<std::string> guids = Meant(handling, *handling.body);
    Selection page;
    Page(handling, page);
    Json list(rapidjson::kArrayType);
    for (std::size_t i = 0; i < guids.size(); ++i) {
        const auto place = static_cast<std::int64_t>(i);
        if (place >= page.offset && (page.limit < 0 || place < page.offset + page.limit)) {
            list.PushBack(ShownDevice(handling, guids[i]), handling.Memory());
        }
    }
    handling.data = Fields(handling.Memory())
                        .Value("deviceResponseList", std::move(list))
                        .Number("total", static_cast<std::int64_t>(guids.size()))
                        .Take();
}

void States(Handling& handling)
{
    Json list(rapidjson::kArrayType);
    handling.Each({kDevices}, [&](const std::string& guid, Json&) {
        list.PushBack(Fields(handling.Memory())
                          .Text("deviceGuid", guid)
                          .Number("onlineState", OutOfReach(handling, guid) == Reason::kNone ? kOnline : kOffline)
                          .Take(),
                      handling.Memory());
    });
    Reply(handling, "deviceStatusList", std::move(list));
}

void Show(Handling& handling)
{
    Reply(handling, "deviceResponse", ShownDevice(handling, handling.identifiers[0]));
}

void Change(Handling& handling)
{
    const std::string& guid = handling.identifiers[0];
    Json device = handling.Need(*handling.description.FindCollection(kDevices), guid);
    Allocator& memory = handling.Memory();
    if (const Json* basic = Member(*handling.body, "deviceBasicInfo")) {
        for (const char* member : {"name", "protocolType", "address", "port", "groupGuid"}) {
            Fields(device, memory).Same(member, *basic);
        }
        const std::string_view user = AsText(Member(*basic, "username"));
        const std::string_view password = AsText(Member(*basic, "password"));
        if (!user.empty() && !password.empty()) { // Both or neither; the device says whether they are right.
            const Reason reason = Contact(AsText(Member(device, "address")), user, password);
            Fields(device, memory)
                .Text("username", user)
                .Flag("_offline", reason != Reason::kNone)
                .Number("_error", static_cast<int>(reason));
        }
    }
    if (const Json* ext = Member(*handling.body, "deviceExtInfo")) {
        if (Member(device, "_extInfo") == nullptr) {
            SetMember(device, "_extInfo", Json(rapidjson::kObjectType), memory);
        }
        for (const auto& member : ext->GetObject()) {
            SetMember(*Member(device, "_extInfo"), AsText(&member.name), Copy(member.value, memory), memory);
        }
    }
    handling.Save(kDevices, guid, device);
    Show(handling);
}

void Refresh(Handling& handling)
{
    std::vector<std::string> guids = handling.identifiers;
    if (guids.empty()) {
        guids = Meant(handling, *handling.body);
    } else {
        NeedReach(handling, guids.front());
    }
    for (const std::string& guid : guids) {
        if (OutOfReach(handling, guid) == Reason::kNone) {
            Json device = handling.Load(kDevices, guid);
            Fields(device, handling.Memory()).Text("refreshTime", IsoTime(handling.nowMs));
            handling.Save(kDevices, guid, device);
        }
    }
    if (handling.endpoint.result != nullptr) {
        Show(handling);
    }
}

void Status(Handling& handling)
{
    const std::string& guid = handling.identifiers[0];
    const bool online = OutOfReach(handling, guid) == Reason::kNone;
    if (handling.endpoint.Writes()) { // Asked for now, not for what is known.
        NeedReach(handling, guid);
    }
    std::int64_t partitions = 0;
    std::int64_t armed = 0;
    EachPart(handling, PartOf("partitions"), guid, [&](const std::string&, Json& partition) {
        ++partitions;
        armed += AsText(Member(partition, "_arm")) == "disarmed" ? 0 : 1;
    });
    const std::int64_t channels = handling.store.Count({"channels", {{"deviceGuid", Test::kEquals, StoreValue(guid)}}});
    Reply(handling, "deviceStatus",
          Fields(handling.Memory())
              .Number("onlineState", online ? kOnline : kOffline)
              .Number("errorCode", online ? 0 : static_cast<int>(Reason::kDeviceOffline))
              .Number("cpuUsage", online ? 10 + handling.nowMs / 1000 % 30 : 0)
              .Number("memoryUsage", online ? 40 : 0)
              .Number("diskState", channels > 1 ? 1 : 0)
              .Number("recordChannelNum", online ? channels : 0)
              .Number("armState", armed == 0            ? 0
                                  : armed == partitions ? 1
                                                        : 2)
              .Text("deviceTime", online ? IsoTime(handling.nowMs) : std::string())
              .Take());
}

/// A device takes its new firmware, restarts and is away meanwhile.
void Upgrade(Handling& handling, double timeScale)
{
    Json results(rapidjson::kArrayType);
    for (const Json& each : Elements(Member(*handling.body, "deviceGuidList"))) {
        const std::string guid(AsText(&each));
        const Reason reason = OutOfReach(handling, guid);
        Json device = handling.Load(kDevices, guid);
        if (reason == Reason::kNone) {
            const std::string version(AsText(Member(device, "softwareVersion"), kFirstVersion));
            const std::size_t dot = version.find('.') + 1;
            const int minor = std::atoi(version.c_str() + dot) + 1;
            Fields(device, handling.Memory())
                .Text("_oldVersion", version)
                .Text("softwareVersion", version.substr(0, dot) + std::to_string(minor) + ".0")
                .Number("_backMs", handling.nowMs + static_cast<std::int64_t>(kUpgradeMs / timeScale));
            handling.Save(kDevices, guid, device);
        }
        results.PushBack(Result(handling, guid, AsText(Member(device, "address")), reason), handling.Memory());
    }
    Reply(handling, "deviceResultList", std::move(results));
}

void Capabilities(Handling& handling)
{
    const std::string& guid = handling.identifiers[0];
    const Json device = ShownDevice(handling, guid);
    const auto wanted = Elements(Member(*handling.body, "capabilityList"));
    Json list(rapidjson::kArrayType);
    for (const auto& [name, count] :
         {std::make_pair("channel", "channelNum"), std::make_pair("ptz", "channelNum"),
          std::make_pair("playback", "channelNum"), std::make_pair("talk", "audioInputNum"),
          std::make_pair("alarmInput", "alarmInputNum"), std::make_pair("alarmOutput", "alarmOutputNum"),
          std::make_pair("armPartition", "partitionNum"), std::make_pair("door", "doorNum"),
          std::make_pair("relay", "relayNum")}) {
        const std::int64_t number = AsInt(AtPath(device, std::string("deviceCapacity.") + count));
        const std::string_view capability = name;
        if (wanted.Empty() ||
            std::any_of(wanted.begin(), wanted.end(), [&](const Json& each) { return AsText(&each) == capability; })) {
            list.PushBack(Fields(handling.Memory())
                              .Text("name", name)
                              .Flag("supported", number > 0)
                              .Number("min", number > 0 ? 1 : 0)
                              .Number("max", number)
                              .Value("optionList", Json(rapidjson::kArrayType))
                              .Take(),
                          handling.Memory());
        }
    }
    Reply(handling, "capabilities",
          Fields(handling.Memory())
              .Text("deviceGuid", guid)
              .Same("channelNo", *handling.body)
              .Value("capabilityList", std::move(list))
              .Take());
}

void OnlineUsers(Handling& handling)
{
    NeedReach(handling, handling.identifiers[0]);
    const Json device = ShownDevice(handling, handling.identifiers[0]);
    Json list(rapidjson::kArrayType);
    list.PushBack(Fields(handling.Memory())
                      .Text("username", AsText(AtPath(device, "deviceBasicInfo.username")))
                      .Text("userType", "administrator")
                      .Text("address", "192.0.2.3")
                      .Text("loginTime", AsText(Member(device, "addedTime")))
                      .Take(),
                  handling.Memory());
    Reply(handling, "onlineUserList", std::move(list));
}

// ---- Guards ----

bool Guarded(std::string_view path, const Json& device)
{
    const bool intercom = EndsWith(AsText(Member(device, "deviceType")), "station");
    return intercom == (path.find("IntercomGuards") != std::string_view::npos);
}

Json GuardState(Handling& handling, const std::string& guid, const Json& device)
{
    const Reason reason = OutOfReach(handling, guid);
    constexpr int kFailed = 2;
    return Fields(handling.Memory())
        .Text("deviceGuid", guid)
        .Text("deviceName", AsText(Member(device, "name")))
        .Number("guardState", reason != Reason::kNone ? kFailed : AsInt(Member(device, "_guard"), 1))
        .Number("errorCode", static_cast<int>(reason))
        .Number("resultCode", static_cast<int>(reason))
        .Text("resultMsg", ReasonText(reason))
        .Take();
}

void Guards(Handling& handling)
{
    Json list(rapidjson::kArrayType);
    handling.Each({kDevices}, [&](const std::string& guid, Json& device) {
        if (Guarded(handling.request.path, device)) {
            list.PushBack(GuardState(handling, guid, device), handling.Memory());
        }
    });
    handling.Define("doc", Fields(handling.Memory()).Value("deviceGuardStateList", std::move(list)).Take());
    Compose(handling);
}

void SetGuard(Handling& handling, const std::string& guid, Json device, std::int64_t state)
{
    Fields(device, handling.Memory()).Number("_guard", state);
    handling.Save(kDevices, guid, device);
}

void ChangeGuards(Handling& handling)
{
    Json list(rapidjson::kArrayType);
    for (const Json& each : Elements(Member(*handling.body, "deviceGuidList"))) {
        const std::string guid(AsText(&each));
        if (OutOfReach(handling, guid) == Reason::kNone) {
            SetGuard(handling, guid, handling.Load(kDevices, guid), AsInt(Member(*handling.body, "guardState")));
        }
        list.PushBack(GuardState(handling, guid, handling.Load(kDevices, guid)), handling.Memory());
    }
    Reply(handling, "guardResultList", std::move(list));
}

/// The alarm centre begins or ceases to take events.
void SynchroniseState(Handling& handling)
{
    const std::int64_t state = AsBool(Member(*handling.body, "start")) ? 1 : 0;
    for (const std::string& guid : Meant(handling, *handling.body)) {
        SetGuard(handling, guid, handling.Load(kDevices, guid), state);
    }
}

// ---- Applications ----

constexpr const char* kApps = "deviceApps";
constexpr std::int64_t kStopped = 0;
constexpr std::int64_t kRunning = 1;
constexpr std::int64_t kInstalling = 2;

std::int64_t AppStateOf(const Handling& handling, const Json& app)
{
    return AsInt(Member(app, "_readyMs")) > handling.nowMs ? kInstalling : AsInt(Member(app, "state"), kRunning);
}

void SendApp(Handling& handling, double timeScale)
{
    const Json& body = *handling.body;
    const std::string id = handling.NeedText(body, "appName");
    for (const Json& device : Elements(Member(body, "deviceGuidList"))) {
        NeedReach(handling, AsText(&device));
        handling.Save(kApps, std::string(AsText(&device)) + "/" + id,
                      Fields(handling.Memory())
                          .Text("deviceGuid", AsText(&device))
                          .Text("appId", id)
                          .Text("appName", id)
                          .Same("appVersion", body)
                          .Number("state", kRunning)
                          .Number("memoryUsage", 20480)
                          .Text("installTime", IsoTime(handling.nowMs))
                          .Text("licenceEndTime", "")
                          .Number("_readyMs", handling.nowMs + static_cast<std::int64_t>(kUpgradeMs / timeScale))
                          .Take());
    }
    handling.data = Copy(body, handling.Memory());
    Fields(handling.data, handling.Memory()).Text("taskGuid", NewGuid()).Number("progress", 0);
}

void Apps(Handling& handling)
{
    Json list(rapidjson::kArrayType);
    const Condition device{"deviceGuid", Test::kEquals, StoreValue(handling.identifiers[0])};
    handling.Each({kApps, {device}}, [&](const std::string&, Json& app) {
        Fields(app, handling.Memory()).Number("state", AppStateOf(handling, app));
        DropInternals(app);
        list.PushBack(app, handling.Memory());
    });
    Reply(handling, "appInfoList", std::move(list));
}

void ManageApp(Handling& handling)
{
    const std::string key = handling.identifiers[0] + "/" + handling.NeedText(*handling.body, "appId");
    Json app = handling.Need(*handling.description.FindCollection(kApps), key);
    const std::string_view action = AsText(Member(*handling.body, "action"));
    if (action == "remove") {
        handling.store.Erase(kApps, key);
    } else if (action == "start" || action == "stop") {
        Fields(app, handling.Memory()).Number("state", action == "start" ? kRunning : kStopped);
        handling.Save(kApps, key, app);
    }
    handling.data = Copy(*handling.body, handling.Memory());
    Fields(handling.data, handling.Memory()).Number("state", action == "remove" ? kStopped : AppStateOf(handling, app));
}

void CancelApps(Handling& handling)
{
    handling.Each({kApps}, [&](const std::string& key, Json& app) {
        if (AppStateOf(handling, app) == kInstalling) {
            handling.store.Erase(kApps, key);
        }
    });
}

// ---- Parts ----

void ShowPart(Handling& handling)
{
    const Part& part = PartOf(handling.action->collection->name);
    const std::string& device = handling.identifiers[0];
    Json found = ShownPart(handling, part, NeedPart(handling, part, device, handling.identifiers[1]));
    handling.Define("doc", Fields(handling.Memory())
                               .Value(part.root, std::move(found))
                               .Value("deviceInfo", ShownDevice(handling, device))
                               .Take());
    Compose(handling);
}

/// What the body says of a part stays with it; a task begins anew with what it watches.
void ChangePart(Handling& handling, double timeScale)
{
    const Part& part = PartOf(handling.action->collection->name);
    Json found = NeedPart(handling, part, handling.identifiers[0], handling.identifiers[1]);
    Allocator& memory = handling.Memory();
    const bool channel = std::string_view(part.collection) == "channels";
    if (channel && Member(found, "_extra") == nullptr) {
        SetMember(found, "_extra", Json(rapidjson::kObjectType), memory);
    }
    Json& target = channel ? *Member(found, "_extra") : found;
    for (const auto& member : handling.body->GetObject()) {
        SetMember(target, AsText(&member.name), Copy(member.value, memory), memory);
    }
    if (channel) {
        target.RemoveMember("longDeviceGuid");
        Fields(found, memory).Same("name", *handling.body);
    }
    if (std::string_view(part.collection) == "deviceTasks") {
        Fields(found, memory)
            .Number("_startedMs", handling.nowMs)
            .Number("_endMs", handling.nowMs + static_cast<std::int64_t>(kTaskMs / timeScale));
    }
    handling.Save(part.collection, AsText(Member(found, part.key)), found);
}

void ShowRule(Handling& handling)
{
    const Part& part = PartOf("deviceTasks");
    const Json task =
        ShownPart(handling, part, NeedPart(handling, part, handling.identifiers[0], handling.identifiers[1]));
    for (const Json& rule : Elements(Member(task, "taskRuleInfoList"))) {
        if (AsText(Member(rule, "ruleGuid")) == handling.identifiers[2]) {
            Reply(handling, "taskRuleInfo", Copy(rule, handling.Memory()));
            return;
        }
    }
    throw Refusal(Reason::kUnknownGuid, "\"" + handling.identifiers[2] + "\"");
}

} // namespace

void EquipDevices(Store& store)
{
    Store::Transaction transaction(store);
    std::vector<std::string> devices;
    transaction.Select({kDevices}, [&](const std::string&, const std::string& device) { devices.push_back(device); });
    for (const std::string& device : devices) {
        Equip(transaction, ParseOwn(device));
    }
    transaction.Commit();
}

void AddDevices(Services& services, std::shared_ptr<const Cipher> cipher, double timeScale)
{
    services["addDevices"] = [cipher](Handling& handling) { Add(handling, *cipher); };
    services["removeDevices"] = Discard;
    services["listDevices"] = List;
    services["deviceStates"] = States;
    services["showDevice"] = Show;
    services["changeDevice"] = Change;
    services["refreshDevices"] = Refresh;
    services["deviceStatus"] = Status;
    services["upgradeDevices"] = [timeScale](Handling& handling) { Upgrade(handling, timeScale); };
    services["capabilities"] = Capabilities;
    services["onlineUsers"] = OnlineUsers;
    services["guards"] = Guards;
    services["changeGuards"] = ChangeGuards;
    services["synchroniseGuards"] = SynchroniseState;
    services["sendApp"] = [timeScale](Handling& handling) { SendApp(handling, timeScale); };
    services["listApps"] = Apps;
    services["manageApp"] = ManageApp;
    services["cancelApps"] = CancelApps;
    services["showPart"] = ShowPart;
    services["changePart"] = [timeScale](Handling& handling) { ChangePart(handling, timeScale); };
    services["showRule"] = ShowRule;
}

} // namespace nexwire::simulator
