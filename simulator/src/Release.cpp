#include <algorithm>

#include "src/Base64.h"
#include "src/Clock.h"
#include "src/Drawing.h"
#include "src/Fields.h"
#include "src/Rules.h"
#include "src/Services.h"

// Release servers, the terminals that show what they send, and the materials that it is made of.

namespace nexwire::simulator {
namespace {

constexpr const char* kTerminals = "releaseTerminals";
constexpr const char* kMaterials = "materials";
constexpr const char* kOrders = "_releaseOrders"; // What is to be sent to a server, by its GUID.
constexpr const char* kWork = "_releaseWork";     // What its terminals are taking, by its GUID and what it is.
constexpr const char* kFiles = "releaseFiles";
constexpr const char* kLogs = "releaseLogs";

constexpr double kTerminalMs = 1500.0;       // A terminal's answer to anything.
constexpr double kSilenceMs = 1200.0;        // Until one that does not answer is given up.
constexpr double kBytesPerMs = 8.0 * 1024.0; // Of a terminal's connection.
constexpr double kUpgradeBytes = 24000.0 * kBytesPerMs / 8.0;

std::string ServerOf(const Handling& handling)
{
    return std::string(handling.Identifier("1"));
}

Selection Of(const char* collection, std::string_view server)
{
    return {collection, {{"deviceGuid", Test::kEquals, StoreValue(std::string(server))}}};
}

bool Contains(const Json* list, std::string_view text)
{
    const auto elements = Elements(list);
    return std::any_of(elements.begin(), elements.end(), [&](const Json& each) { return AsText(&each) == text; });
}

void Note(Handling& handling, std::string_view server, std::string_view kind, std::string_view object,
          std::string_view description)
{
    Json entry(rapidjson::kObjectType);
    Fields(entry, handling.Memory())
        .Text("deviceGuid", server)
        .Text("logTime", IsoTime(handling.nowMs))
        .Text("majorType", "operation")
        .Text("minorType", kind)
        .Text("userName", SignedIn(handling.store))
        .Text("remoteAddress", "127.0.0.1")
        .Text("objectName", object)
        .Text("description", description);
    handling.Save(kLogs, NewGuid(), entry);
}

/// The terminals of a server. One that was registered just now brings its own, the last of which is switched off.
std::vector<Json> Terminals(Handling& handling, std::string_view server)
{
    std::vector<Json> terminals;
    const auto read = [&] {
        handling.Each(Of(kTerminals, server),
                      [&](const std::string&, Json& terminal) { terminals.push_back(std::move(terminal)); });
    };
    read();
    if (terminals.empty()) {
        for (const char* name : {"Entrance hall", "Waiting room", "Stairwell"}) {
            const std::string guid = NewGuid();
            Json terminal(rapidjson::kObjectType);
            Fields(terminal, handling.Memory())
                .Text("terminalGuid", guid)
                .Text("deviceGuid", server)
                .Text("terminalName", name)
                .Number("width", 1920)
                .Number("height", 1080)
                .Text("version", "V3.0.0")
                .Flag("_offline", std::string_view(name) == "Stairwell");
            handling.Save(kTerminals, guid, terminal);
        }
        read();
    }
    return terminals;
}

/// Why something cannot go to a server; `kNone` when it can.
Reason NoServer(Handling& handling, std::string_view guid)
{
    const Json device = handling.Load(kDevices, guid);
    return device.IsNull()                                           ? Reason::kUnknownDevice
           : AsText(Member(device, "deviceType")) != "publishServer" ? Reason::kDeviceRefused
                                                                     : OutOfReach(handling, guid);
}

std::string NeedServer(Handling& handling)
{
    const std::string server = ServerOf(handling);
    if (const Reason reason = NoServer(handling, server); reason != Reason::kNone) {
        throw Refusal(reason, "\"" + server + "\"");
    }
    return server;
}

// ---- Materials ----

/// What a file of a material weighs. Refuses what is not Base64, and a material without what it needs.
void Weigh(Handling& handling, Json& material)
{
    const std::string_view kind = AsText(Member(material, "materialType"));
    const bool file = kind != "text" && kind != "webPage";
    const std::string_view data = AsText(Member(material, "fileData"));
    if (AsText(Member(material, file ? "fileData" : "content")).empty()) {
        throw Refusal(Reason::kMissingField, file ? "fileData" : "content");
    }
    std::string bytes;
    if (!data.empty() && !FromBase64(data, bytes)) {
        throw Refusal(Reason::kWrongType, "fileData is not Base64");
    }
    Fields(material, handling.Memory())
        .Number("fileSize", static_cast<std::int64_t>(bytes.size()))
        .Text("modifyTime", IsoTime(handling.nowMs));
}

void KeepMaterial(Handling& handling, void (*change)(Handling&))
{
    change(handling);
    const std::string guid(AsText(handling.Named("guid")));
    Json material = handling.Load(kMaterials, guid);
    Weigh(handling, material);
    handling.Save(kMaterials, guid, material);
    Compose(handling);
}

void QueryMaterials(Handling& handling)
{
    Find(handling);
    if (!AsBool(Member(*handling.body, "withData"))) {
        Json bare = Copy(*handling.Named("docs"), handling.Memory());
        for (Json& material : bare.GetArray()) {
            Fields(material, handling.Memory()).Text("fileData", "");
        }
        handling.Define("docs", std::move(bare));
    }
    Compose(handling);
}

void RemoveMaterial(Handling& handling)
{
    handling.Each({kTerminals}, [&](const std::string&, Json& terminal) {
        if (Contains(Member(terminal, "_playing"), handling.identifiers.back())) {
            throw Refusal(Reason::kInUse, AsText(Member(terminal, "terminalName")));
        }
    });
    Remove(handling);
    Compose(handling);
}

// ---- What goes to terminals ----

/// First step of a release: what each of the servers is to send.
void CacheRelease(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const Json& order = *handling.body;
    const Json* items = Member(order, "itemList");
    const bool clear = AsText(Member(order, "publishMode")) == "clear";
    if (!clear && Elements(items).Empty()) {
        throw Refusal(Reason::kMissingField, "itemList");
    }
    std::int64_t size = 0;
    for (const Json& item : Elements(items)) {
        const Json material =
            handling.Need(*handling.description.FindCollection(kMaterials), AsText(Member(item, "materialGuid")));
        size += AsInt(Member(material, "fileSize"));
    }
    const Json* wanted = Member(order, "terminalGuidList");
    rapidjson::SizeType found = 0;
    Json results(rapidjson::kArrayType);
    const std::string release = NewGuid();
    for (const Json& server : Elements(Member(order, "deviceGuidList"))) {
        const Reason reason = NoServer(handling, AsText(&server));
        if (reason == Reason::kNone) {
            for (const Json& terminal : Terminals(handling, AsText(&server))) {
                found += Contains(wanted, AsText(Member(terminal, "terminalGuid"))) ? 1 : 0;
            }
            Json kept = Copy(order, memory);
            Fields(kept, memory).Number("totalSize", size).Text("publishGuid", release);
            handling.Save(kOrders, AsText(&server), kept);
        }
        results.PushBack(
            MakeResult(handling, AsText(&server), reason, reason == Reason::kNone ? kSuccess : ReasonText(reason)),
            memory);
    }
    if (results.Empty()) {
        throw Refusal(Reason::kMissingField, "deviceGuidList");
    }
    if (found < Elements(wanted).Size()) {
        throw Refusal(Reason::kUnknownGuid, "terminalGuidList");
    }
    handling.Define("results", std::move(results));
    Compose(handling);
    Fields(handling.data, memory).Text("publishGuid", release).Number("totalSize", size);
}

bool IsUpgrade(const Handling& handling)
{
    return EndsWith(handling.request.path, "/terminalUpgrade");
}

std::string WorkKey(const Handling& handling)
{
    return ServerOf(handling) + (IsUpgrade(handling) ? "/upgrade" : "/release");
}

/// Where one terminal of a server is with what it was sent.
struct Stage {
    const char* state;
    int percent; ///< Its own.
    bool over;
};

Stage Look(const Json& work, const Json& terminal, std::int64_t nowMs)
{
    const Json* stopped = Member(work, "stoppedMs");
    const auto elapsed =
        static_cast<double>((stopped == nullptr ? nowMs : AsInt(stopped)) - AsInt(Member(work, "startedMs")));
    const double whole = AsDouble(Member(terminal, "ms"));
    const bool fails = AsInt(Member(terminal, "code")) != 0;
    if (elapsed >= whole) {
        return {fails ? "failed" : "done", fails ? 0 : 100, true};
    }
    const int percent = fails ? 0 : PercentOf(elapsed, whole);
    return stopped != nullptr ? Stage{"stopped", percent, true}
                              : Stage{fails || elapsed <= 0 ? "waiting" : "running", percent, false};
}

void Begin(Handling& handling, double timeScale)
{
    Allocator& memory = handling.Memory();
    const std::string server = NeedServer(handling);
    const bool upgrade = IsUpgrade(handling);
    const Json order = upgrade ? Copy(*handling.body, memory) : handling.Load(kOrders, server);
    if (order.IsNull()) {
        throw Refusal(Reason::kUnknownGuid, "nothing is to be released to \"" + server + "\"");
    }
    const std::vector<Json> terminals = Terminals(handling, server);
    const Json before = handling.Load(kWork, WorkKey(handling));
    for (const Json& terminal : Elements(before.IsNull() ? nullptr : Member(before, "terminals"))) {
        if (!Look(before, terminal, handling.nowMs).over) {
            throw Refusal(Reason::kInUse, "the terminals are busy");
        }
    }
    const Json* wanted = Member(order, "terminalGuidList");
    const double bytes = upgrade ? kUpgradeBytes : static_cast<double>(AsInt(Member(order, "totalSize")));
    Json taking(rapidjson::kArrayType);
    for (const Json& terminal : terminals) {
        const std::string_view guid = AsText(Member(terminal, "terminalGuid"));
        if (!Elements(wanted).Empty() && !Contains(wanted, guid)) {
            continue;
        }
        const bool silent = AsBool(Member(terminal, "_offline"));
        const bool there = upgrade && !AsBool(Member(order, "force")) &&
                           AsText(Member(terminal, "version")) == AsText(Member(order, "version"));
        const double slower = 1.0 + 0.4 * static_cast<double>(taking.Size());
        const double ms = silent ? kSilenceMs : there ? 1.0 : (kTerminalMs + bytes / kBytesPerMs) * slower;
        Json one(rapidjson::kObjectType);
        Fields(one, memory)
            .Text("guid", guid)
            .Same("terminalName", terminal)
            .Number("code", silent ? static_cast<int>(Reason::kDeviceOffline) : 0)
            .Value("ms", Json(std::max(ms / timeScale, 1e-3)));
        taking.PushBack(one, memory);
    }
    if (taking.Size() < Elements(wanted).Size()) {
        throw Refusal(Reason::kUnknownGuid, "terminalGuidList");
    }
    Json work(rapidjson::kObjectType);
    Fields(work, memory)
        .Number("startedMs", handling.nowMs)
        .Value("order", Copy(order, memory))
        .Value("terminals", std::move(taking));
    handling.Save(kWork, WorkKey(handling), work);
    Note(handling, server, upgrade ? "terminalUpgrade" : "release", AsText(Member(order, upgrade ? "version" : "name")),
         upgrade ? "Terminals take new firmware" : "Terminals take a release");
}

/// What is different with a terminal that has taken everything.
void Settle(Handling& handling, const Json& order, std::string_view guid)
{
    Allocator& memory = handling.Memory();
    Json terminal = handling.Load(kTerminals, guid);
    if (terminal.IsNull()) {
        return;
    }
    if (IsUpgrade(handling)) {
        Fields(terminal, memory).Same("version", order);
    } else {
        Json playing(rapidjson::kArrayType);
        const bool clear = AsText(Member(order, "publishMode")) == "clear";
        for (const Json& item : Elements(clear ? nullptr : Member(order, "itemList"))) {
            playing.PushBack(MakeText(AsText(Member(item, "materialGuid")), memory), memory);
        }
        Fields(terminal, memory).Value("_playing", std::move(playing));
    }
    handling.Save(kTerminals, guid, terminal);
}

void Progress(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Json work = handling.Load(kWork, WorkKey(handling));
    if (work.IsNull()) {
        throw Refusal(Reason::kUnknownGuid, "nothing is sent to \"" + ServerOf(handling) + "\"");
    }
    std::int64_t sum = 0;
    bool failed = false;
    bool over = true;
    bool settled = false;
    Json list(rapidjson::kArrayType);
    for (Json& terminal : Member(work, "terminals")->GetArray()) {
        const Stage stage = Look(work, terminal, handling.nowMs);
        const std::string_view state = stage.state;
        Json one(rapidjson::kObjectType);
        Fields(one, memory)
            .Value("terminalGuid", Copy(*Member(terminal, "guid"), memory))
            .Same("terminalName", terminal)
            .Number("progress", stage.percent)
            .Text("state", state)
            .Number("errorCode", state == "failed" ? AsInt(Member(terminal, "code")) : 0);
        list.PushBack(one, memory);
        sum += stage.over && state != "stopped" ? 100 : stage.percent;
        failed = failed || state == "failed";
        over = over && stage.over;
        if (state == "done" && !AsBool(Member(terminal, "settled"))) {
            Settle(handling, *Member(work, "order"), AsText(Member(terminal, "guid")));
            SetMember(terminal, "settled", Json(true), memory);
            settled = true;
        }
    }
    if (settled) {
        handling.Save(kWork, WorkKey(handling), work);
    }
    const std::int64_t count = std::max<std::int64_t>(list.Size(), 1);
    Fields(handling.data, memory)
        .Number("progress", list.Empty() ? 100 : sum / count)
        .Text("state", !over                                  ? "running"
                       : Member(work, "stoppedMs") != nullptr ? "stopped"
                       : failed                               ? "failed"
                                                              : "done")
        .Value("terminalProgressList", std::move(list));
}

void Cancel(Handling& handling)
{
    Progress(handling); // What has been taken by now stays.
    Json work = handling.Load(kWork, WorkKey(handling));
    if (AsText(Member(handling.data, "state")) == "running") {
        Fields(work, handling.Memory()).Number("stoppedMs", handling.nowMs);
        handling.Save(kWork, WorkKey(handling), work);
        Note(handling, ServerOf(handling), "cancel", "", "Terminals were told to stop");
    }
    handling.data.RemoveAllMembers();
}

void ScreenShot(Handling& handling)
{
    const std::string server = NeedServer(handling);
    const std::string_view guid = AsText(Member(*handling.body, "terminalGuid"));
    for (const Json& terminal : Terminals(handling, server)) {
        if (AsText(Member(terminal, "terminalGuid")) != guid) {
            continue;
        }
        if (AsBool(Member(terminal, "_offline"))) {
            throw Refusal(Reason::kDeviceOffline, AsText(Member(terminal, "terminalName")));
        }
        std::vector<std::string> playing;
        for (const Json& material : Elements(Member(terminal, "_playing"))) {
            playing.emplace_back(AsText(&material));
        }
        const auto pixels = [&](const char* side) {
            const std::int64_t asked = AsInt(Member(*handling.body, side));
            return static_cast<int>(asked > 0 ? asked : AsInt(Member(terminal, side), 1));
        };
        const Drawing picture = DrawScreen(playing, pixels("width"), pixels("height"));
        const bool png = AsText(Member(*handling.body, "pictureFormat")) == "png";
        Fields(handling.data, handling.Memory()).Text("screenShot", ToBase64(png ? picture.Png() : picture.Jpeg()));
        return;
    }
    throw Refusal(Reason::kUnknownGuid, "\"" + std::string(guid) + "\"");
}

/// Keeps the key that all devices share and tells which of them did not hear of it.
void ShareKey(Handling& handling)
{
    Keep(handling);
    Json missed(rapidjson::kArrayType);
    handling.Each({kDevices}, [&](const std::string& key, Json&) {
        if (OutOfReach(handling, key) == Reason::kDeviceOffline) {
            missed.PushBack(MakeResult(handling, key, Reason::kDeviceOffline, ReasonText(Reason::kDeviceOffline)),
                            handling.Memory());
        }
    });
    handling.Define("results", std::move(missed));
    Compose(handling);
    Fields(handling.data, handling.Memory()).Text("status", kSuccess);
}

/// Whether a device stands at an address already.
void Exists(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const std::string address = handling.NeedText(*handling.body, "address");
    const std::int64_t port = AsInt(Member(*handling.body, "port"));
    std::string found;
    handling.Each({kDevices, {{"address", Test::kEquals, StoreValue(address)}}},
                  [&](const std::string& key, Json& device) {
                      found = AsInt(Member(device, "port"), port) == port ? key : found;
                  });
    Json result(rapidjson::kObjectType);
    Fields(result, memory)
        .Flag("existed", !found.empty())
        .Number("existedType", found.empty() ? 0 : 1)
        .Text("deviceGuid", found);
    Fields(handling.data, memory).Value("deviceExistedResult", std::move(result));
}

/// Back to how the device left the factory.
void Restore(Handling& handling, const std::string& server)
{
    for (const char* collection : {kParameters, kDeviceTexts}) {
        std::vector<std::string> keys;
        handling.store.Select({collection}, [&](const std::string& key, const std::string&) {
            if (BeginsWith(key, server)) {
                keys.push_back(key);
            }
        });
        for (const std::string& key : keys) {
            handling.store.Erase(collection, key);
        }
    }
    handling.Each(Of(kTerminals, server), [&](const std::string& key, Json& terminal) {
        terminal.RemoveMember("_playing");
        handling.Save(kTerminals, key, terminal);
    });
    handling.store.Erase(kOrders, server);
}

} // namespace

std::int64_t TerminalCount(Handling& handling)
{
    return static_cast<std::int64_t>(Terminals(handling, handling.Identifier("1")).size());
}

std::string AskReleaseServer(Handling& handling, std::int64_t command, const std::string&, const std::string& input)
{
    enum : std::int64_t { kReboot = 2221, kRestore = 2222, kUpgrade = 9202, kUpload = 9241, kDownload = 9242 };
    const std::string server = ServerOf(handling);
    Document parsed(&handling.Memory());
    std::string error;
    const bool given = ParseJson(parsed, input, error) && parsed.IsObject() && parsed.MemberCount() == 1;
    const Json* order = given ? &parsed.MemberBegin()->value : nullptr;
    const auto text = [&](const char* member) {
        return std::string(AsText(order == nullptr ? nullptr : Member(*order, member)));
    };
    const std::string file = text("fileName");
    const std::string key = server + "/" + file;
    switch (command) {
    case kRestore:
        Restore(handling, server);
        Note(handling, server, "restoreDefault", "", "Back to the settings of the factory");
        break;
    case kReboot:
        Note(handling, server, "reboot", "", "Started anew");
        break;
    case kUpgrade:
        if (text("packagePath").empty()) {
            throw Refusal(Reason::kMissingField, "packagePath");
        }
        Note(handling, server, "upgrade", text("version"), "Took the package " + text("packagePath"));
        break;
    case kUpload:
        if (file.empty()) {
            throw Refusal(Reason::kMissingField, "fileName");
        }
        if (handling.store.Has(kFiles, key) && !AsBool(Member(*order, "overwrite"))) {
            throw Refusal(Reason::kDuplicate, file);
        }
        handling.Save(kFiles, key, *order);
        Note(handling, server, "upload", file, "Took a file");
        break;
    case kDownload:
        if (!handling.store.Has(kFiles, key)) {
            throw Refusal(Reason::kUnknownGuid, file);
        }
        Note(handling, server, "download", file, "Gave a file");
        break;
    default:
        break;
    }
    return {};
}

void EachRelease(Handling& handling, const WorkSink& each)
{
    handling.Each({kWork}, [&](const std::string& key, Json& work) {
        for (const Json& terminal : Elements(Member(work, "terminals"))) {
            const Stage stage = Look(work, terminal, handling.nowMs);
            each({key, key.substr(key.find('/') + 1), std::string(AsText(Member(terminal, "guid"))), stage.state,
                  stage.percent, 100, stage.percent});
        }
    });
}

void AddRelease(Services& services, double timeScale)
{
    services["release.addMaterial"] = [](Handling& handling) { KeepMaterial(handling, Add); };
    services["release.modifyMaterial"] = [](Handling& handling) { KeepMaterial(handling, Modify); };
    services["release.queryMaterial"] = QueryMaterials;
    services["release.removeMaterial"] = RemoveMaterial;
    services["release.cache"] = CacheRelease;
    services["release.begin"] = [timeScale](Handling& handling) { Begin(handling, timeScale); };
    services["release.progress"] = Progress;
    services["release.cancel"] = Cancel;
    services["release.screenShot"] = ScreenShot;
    services["release.shareKey"] = ShareKey;
    services["release.exists"] = Exists;
}

} // namespace nexwire::simulator
