#include "src/Equipment.h"

#include <algorithm>

#include "src/Clock.h"
#include "src/Fields.h"
#include "src/Rules.h"

namespace nexwire::simulator {
namespace {

enum TaskState { kTaskStopped = 0, kTaskRunning = 1, kTaskDone = 3 };

/// How many parts devices of a type come with, in the order of `Parts`.
struct Outfit {
    const char* type;
    int counts[12];
};

constexpr Outfit kOutfits[] = {
    {"camera", {1, 1, 1, 1, 0, 0, 0, 1, 0, 0, 0, 0}},
    {"encoder", {4, 4, 2, 1, 0, 0, 0, 1, 0, 0, 0, 0}},
    {"alarmPanel", {0, 0, 1, 0, 2, 8, 2, 0, 0, 0, 0, 0}},
    {"accessController", {0, 2, 2, 0, 0, 0, 0, 0, 2, 4, 0, 0}},
    {"laneController", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0}},
    {"radar", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}},
};

std::string Named(std::string_view device, const char* what, std::int64_t number)
{
    return std::string(device) + " " + what + " " + std::to_string(number);
}

Json Streams(Allocator& memory, std::string_view device, std::int64_t channel)
{
    const struct {
        const char* resolution;
        int rate;
        int bits;
    } kStreams[] = {{"1920x1080", 25, 4096}, {"704x576", 15, 512}};
    Json list(rapidjson::kArrayType);
    for (const auto& each : kStreams) {
        const std::int64_t type = list.Size();
        list.PushBack(Fields(memory)
                          .Number("streamType", type)
                          .Text("codec", "H.264")
                          .Text("resolution", each.resolution)
                          .Number("frameRate", each.rate)
                          .Number("bitRate", each.bits)
                          .Flag("audio", channel == 1)
                          .Text("url", "rtsp://192.0.2.3/" + std::string(device) + "/" + std::to_string(channel) + "/" +
                                           std::to_string(type))
                          .Take(),
                      memory);
    }
    return list;
}

// What is particular to a new part.
void Furnish(Fields& part, const std::string& kind, std::string_view device, std::string_view name, std::int64_t number,
             Allocator& memory)
{
    const bool first = number == 1;
    const auto other = [&](const char* collection, std::int64_t no) {
        return PartGuid(PartOf(collection), device, no);
    };
    if (kind == "channels") {
        part.Text("name", Named(name, "channel", number))
            .Number("channelType", 1)
            .Text("cameraType", first ? "speedDome" : "dome")
            .Number("recordState", 1)
            .Flag("ptz", first)
            .Flag("talk", first)
            .Text("address", "")
            .Value("channelStreamList", Streams(memory, device, number));
    } else if (kind == "alarmInputs") {
        part.Text("name", Named(name, "input", number))
            .Text("sensorType", "normallyOpen")
            .Number("state", 0)
            .Flag("armed", true)
            .Text("groupGuid", "");
    } else if (kind == "alarmOutputs") {
        part.Text("name", Named(name, "output", number)).Number("state", 0).Number("duration", 0).Text("groupGuid", "");
    } else if (kind == "audioInputs") {
        part.Text("name", Named(name, "microphone", number))
            .Text("codec", "G.711A")
            .Number("samplingRate", 8000)
            .Number("volume", 50)
            .Text("relatedChannelGuid", other("channels", number));
    } else if (kind == "partitions") {
        Json zones(rapidjson::kArrayType);
        for (std::int64_t zone = number * 4 - 3; zone <= number * 4; ++zone) {
            zones.PushBack(Json(zone), memory);
        }
        part.Text("name", Named(name, "partition", number))
            .Number("entryDelay", 30)
            .Number("exitDelay", 10)
            .Value("zoneNoList", std::move(zones))
            .Text("_arm", "disarmed");
    } else if (kind == "zones") {
        part.Text("name", Named(name, "zone", number))
            .Number("partitionNo", (number + 3) / 4)
            .Text("zoneType", first ? "instant" : "delayed")
            .Text("detectorType", number % 2 == 1 ? "magneticContact" : "passiveInfrared")
            .Text("relatedChannelGuid", "");
    } else if (kind == "relays") {
        part.Text("name", Named(name, "relay", number)).Number("state", 0);
    } else if (kind == "deviceTasks") {
        part.Text("name", Named(name, "analysis", number))
            .Text("taskType", "behaviour")
            .Text("relatedServer", "")
            .Number("relateChannelNo", 1)
            .Text("endTime", "");
    } else if (kind == "controlPoints") {
        part.Text("objectName", Named(name, "door", number)).Number("objectType", 1);
    } else if (kind == "cardReaders") {
        part.Text("name", Named(name, "reader", number)).Text("doorGuid", other("controlPoints", (number + 1) / 2));
    } else if (kind == "lanes") {
        part.Text("name", Named(name, "lane", number)).Number("direction", 1).Number("barrierState", 2);
    } else {
        part.Text("name", Named(name, "radar", number))
            .Value("range", Json(100.0))
            .Value("angle", Json(90.0))
            .Value("installHeight", Json(4.5))
            .Number("targetNum", 32);
    }
}

std::int64_t CountOf(Handling& handling, const char* collection, const std::string& device)
{
    return handling.store.Count({collection, {{"deviceGuid", Test::kEquals, StoreValue(device)}}});
}

Json Zone(Handling& handling, const Json& zone)
{
    return Fields(handling.Memory())
        .Same("zoneNo", zone)
        .Flag("armed", AsBool(Member(zone, "_armed")))
        .Flag("bypassed", AsBool(Member(zone, "_bypassed")))
        .Flag("alarm", AsBool(Member(zone, "_alarm")))
        .Flag("fault", false)
        .Flag("tamper", false)
        .Number("battery", 100)
        .Text("changeTime", AsText(Member(zone, "_changeTime")))
        .Take();
}

Json Partition(Handling& handling, const Json& partition, const std::string& device)
{
    const bool leaving = AsInt(Member(partition, "_armedMs")) > handling.nowMs;
    bool alarm = false;
    EachPart(handling, PartOf("zones"), device, [&](const std::string&, Json& zone) {
        alarm = alarm || (AsInt(Member(zone, "partitionNo")) == AsInt(Member(partition, "partitionNo")) &&
                          AsBool(Member(zone, "_alarm")));
    });
    return Fields(handling.Memory())
        .Same("partitionNo", partition)
        .Text("armState", leaving ? "arming" : AsText(Member(partition, "_arm")))
        .Flag("alarm", alarm)
        .Flag("fault", false)
        .Text("changeTime", AsText(Member(partition, "_changeTime")))
        .Take();
}

Json Rule(Handling& handling, const std::string& task)
{
    Json points(rapidjson::kArrayType);
    for (const double x : {0.2, 0.8}) {
        points.PushBack(Fields(handling.Memory()).Value("x", Json(x)).Value("y", Json(0.5)).Take(), handling.Memory());
    }
    return Fields(handling.Memory())
        .Text("ruleGuid", "CD" + task.substr(2))
        .Text("name", "Line at the entrance")
        .Number("ruleNo", 1)
        .Text("ruleType", "lineCrossing")
        .Flag("enable", true)
        .Number("sensitivity", 50)
        .Number("duration", 0)
        .Value("pointList", std::move(points))
        .Take();
}

} // namespace

const std::vector<Part>& Parts()
{
    static const std::vector<Part> parts = {
        {"channels", "C1", "channelGuid", "channelNo", "channelInfo"},
        {"alarmInputs", "C2", "alarmInputGuid", "alarmInputNo", "alarmInputInfo"},
        {"alarmOutputs", "C3", "alarmOutputGuid", "alarmOutputNo", "alarmOutputAttr"},
        {"audioInputs", "C4", "audioInputGuid", "audioInputNo", "audioInput"},
        {"partitions", "C5", "partitionGuid", "partitionNo", "partitionInfo"},
        {"zones", "C6", "zoneGuid", "zoneNo", "zoneInfo"},
        {"relays", "C7", "relayGuid", "relayNo", "relayStatus"},
        {"deviceTasks", "C8", "taskGuid", "_no", "taskInfo"},
        {"controlPoints", "D0", "objectGuid", "objectNo", "controlPoint"},
        {"cardReaders", "CA", "readerGuid", "readerNo", "cardReaderInfo"},
        {"lanes", "C9", "laneControllerGuid", "laneControllerNo", "laneControllerInfo"},
        {"radars", "CB", "radarGuid", "radarNo", "radarAttr"},
    };
    return parts;
}

const Part& PartOf(std::string_view collection)
{
    const auto found =
        std::find_if(Parts().begin(), Parts().end(), [&](const Part& part) { return collection == part.collection; });
    if (found == Parts().end()) {
        throw std::logic_error("devices have no " + std::string(collection));
    }
    return *found;
}

std::string PartGuid(const Part& part, std::string_view device, std::int64_t number)
{
    const std::string digits = std::to_string(10000 + number).substr(1);
    return part.prefix + std::string(device.size() < 6 ? device : device.substr(6)) + digits;
}

void Equip(Store::Transaction& store, const Json& device)
{
    const std::string_view type = AsText(Member(device, "deviceType"));
    const auto outfit =
        std::find_if(std::begin(kOutfits), std::end(kOutfits), [&](const Outfit& each) { return type == each.type; });
    if (outfit == std::end(kOutfits)) {
        return;
    }
    const std::string guid(AsText(Member(device, "deviceGuid")));
    for (std::size_t i = 0; i < Parts().size(); ++i) {
        const Part& part = Parts()[i];
        if (store.Count({part.collection, {{"deviceGuid", Test::kEquals, StoreValue(guid)}}}) > 0) {
            continue;
        }
        for (std::int64_t number = 1; number <= outfit->counts[i]; ++number) {
            Document scratch;
            const std::string key = PartGuid(part, guid, number);
            Fields fields(scratch.GetAllocator());
            fields.Text(part.key, key).Text("deviceGuid", guid).Number(part.number, number);
            Furnish(fields, part.collection, guid, AsText(Member(device, "name")), number, scratch.GetAllocator());
            store.Write(part.collection, key, PrintJson(fields.Take()));
        }
    }
}

Json ShownDevice(Handling& handling, const std::string& guid)
{
    Allocator& memory = handling.Memory();
    const Json device = handling.Need(*handling.description.FindCollection(kDevices), guid);
    const bool away = OutOfReach(handling, guid) != Reason::kNone;
    const auto text = [&](const char* key, const char* otherwise) { return AsText(Member(device, key), otherwise); };
    Fields basic(memory);
    basic.Text("mLongStrGuid", guid).Text("name", text("name", "")).Text("deviceType", text("deviceType", ""));
    basic.Text("protocolType", text("protocolType", "sdk")).Text("address", text("address", ""));
    basic.Number("port", AsInt(Member(device, "port"), 8000)).Text("username", text("username", "admin"));
    basic.Text("password", "").Text("serialNo", text("serialNo", "")).Text("model", text("model", ""));
    const bool upgrading = AsInt(Member(device, "_backMs")) > handling.nowMs;
    basic.Text("softwareVersion", text(upgrading ? "_oldVersion" : "softwareVersion", kFirstVersion));
    basic.Text("groupGuid", text("groupGuid", ""));
    const Json* kept = Member(device, "_extInfo");
    Json ext = kept == nullptr ? Json(rapidjson::kObjectType) : Copy(*kept, memory);
    Fields(ext, memory).Text("streamKey", "");
    Fields capacity(memory);
    for (const auto& [member, collection] :
         {std::make_pair("channelNum", "channels"), std::make_pair("alarmInputNum", "alarmInputs"),
          std::make_pair("alarmOutputNum", "alarmOutputs"), std::make_pair("audioInputNum", "audioInputs"),
          std::make_pair("doorNum", "controlPoints"), std::make_pair("readerNum", "cardReaders"),
          std::make_pair("zoneNum", "zones"), std::make_pair("partitionNum", "partitions"),
          std::make_pair("relayNum", "relays")}) {
        capacity.Number(member, CountOf(handling, collection, guid));
    }
    capacity.Flag("intercom", CountOf(handling, "audioInputs", guid) > 0).Flag("cloudP2P", false);
    return Fields(memory)
        .Text("deviceGuid", guid)
        .Value("deviceBasicInfo", basic.Take())
        .Value("deviceExtInfo", std::move(ext))
        .Value("deviceCapacity", capacity.Take())
        .Number("onlineState", away ? 0 : 1)
        .Number("errorCode", away ? AsInt(Member(device, "_error"), static_cast<int>(Reason::kDeviceOffline)) : 0)
        .Number("securityLevel", 3)
        .Text("addedTime", text("addedTime", "2024-01-01T00:00:00+00:00"))
        .Text("refreshTime", text("refreshTime", "2024-01-01T00:00:00+00:00"))
        .Take();
}

Json ShownPart(Handling& handling, const Part& part, Json document)
{
    Allocator& memory = handling.Memory();
    const std::string kind = part.collection;
    const std::string device(AsText(Member(document, "deviceGuid")));
    const std::string key(AsText(Member(document, part.key)));
    Fields shown(document, memory);
    if (kind == "channels" || kind == "cardReaders" || kind == "lanes" || kind == "radars") {
        shown.Number("onlineState", OutOfReach(handling, device) == Reason::kNone ? 1 : 0);
    }
    if (kind == "channels") {
        Json* kept = Member(document, "_extra");
        Json extra = kept == nullptr ? Json(rapidjson::kObjectType) : Copy(*kept, memory);
        Fields(extra, memory).Same("name", document);
        shown.Value("channelExtra", std::move(extra));
    } else if (kind == "alarmOutputs" || kind == "relays") {
        const Json* until = Member(document, "_untilMs"); // Back by itself.
        const bool back = until != nullptr && AsInt(until) <= handling.nowMs;
        shown.Number("state", back ? 1 - AsInt(Member(document, "state")) : AsInt(Member(document, "state")));
        shown.Text("changeTime", back ? IsoTime(AsInt(until)) : AsText(Member(document, "_changeTime")));
    } else if (kind == "zones") {
        shown.Value("zoneStatus", Zone(handling, document));
    } else if (kind == "partitions") {
        shown.Value("partitionStatus", Partition(handling, document, device));
    } else if (kind == "cardReaders") {
        const std::int64_t number = AsInt(Member(document, "readerNo"));
        shown.Text("cardReaderGuid", key).Number("cardReaderNo", number).Text("readerType", "rs485");
        shown.Number("direction", AsInt(Member(document, "direction"), number % 2 == 1 ? 1 : 2));
    } else if (kind == "deviceTasks") {
        Json rules(rapidjson::kArrayType);
        rules.PushBack(Rule(handling, key), memory);
        shown.Value("taskRuleInfoList", std::move(rules));
        const std::int64_t started = AsInt(Member(document, "_startedMs"));
        const std::int64_t end = AsInt(Member(document, "_endMs"));
        const bool done = handling.nowMs >= end;
        shown.Number("state", started == 0 ? kTaskStopped : done ? kTaskDone : kTaskRunning);
        shown.Number("progress", started == 0 ? 0 : done ? 100 : (handling.nowMs - started) * 100 / (end - started));
        shown.Text("beginTime", started == 0 ? std::string() : IsoTime(started));
    }
    DropInternals(document);
    return document;
}

Json NeedPart(Handling& handling, const Part& part, const std::string& device, const std::string& named)
{
    Json document = handling.Load(part.collection, named);
    if (document.IsNull()) {
        const bool digits = named.size() < 5 && named.find_first_not_of("0123456789") == std::string::npos;
        document =
            handling.Load(part.collection, digits && !named.empty() ? PartGuid(part, device, std::stoi(named)) : "");
    }
    if (document.IsNull() || AsText(Member(document, "deviceGuid")) != device) {
        throw Refusal(Reason::kUnknownGuid, "\"" + named + "\" of device \"" + device + "\"");
    }
    return document;
}

void EachPart(Handling& handling, const Part& part, const std::string& device,
              const std::function<void(const std::string& key, Json& document)>& each)
{
    handling.Each({part.collection, {{"deviceGuid", Test::kEquals, StoreValue(device)}}, part.number}, each);
}

void NeedReach(Handling& handling, std::string_view device)
{
    const Reason reason = Unwilling(handling, device);
    if (reason != Reason::kNone) {
        throw Refusal(reason, "\"" + std::string(device) + "\"");
    }
}

} // namespace nexwire::simulator
