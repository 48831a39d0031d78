#include <algorithm>

#include "src/Clock.h"
#include "src/Equipment.h"
#include "src/Fields.h"
#include "src/Rules.h"
#include "src/Services.h"

// What parts of devices do when they are told to. Alarm output 1 of a device is wired to its input 1, and of a panel to
// zone 1, so that switching it on provokes an alarm.

namespace nexwire::simulator {
namespace {

constexpr std::string_view kPanelCode = "1234";
constexpr std::int64_t kMostPresets = 300;

std::string NameOf(const Json& part)
{
    return std::string(AsText(Member(part, "name")));
}

void Save(Handling& handling, const Part& part, const Json& document)
{
    handling.Save(part.collection, AsText(Member(document, part.key)), document);
}

/// The part of that number; null when the device has none.
Json Numbered(Handling& handling, const Part& part, const std::string& device, std::int64_t number)
{
    return handling.Load(part.collection, PartGuid(part, device, number));
}

// ---- Outputs, relays ----

/// @param state     0 or 1.
/// @param duration  s; 0: it stays.
void Switch(Handling& handling, const Part& part, Json document, std::int64_t state, std::int64_t duration)
{
    document.RemoveMember("_untilMs");
    Fields(document, handling.Memory()).Number("state", state).Text("_changeTime", IsoTime(handling.nowMs));
    if (duration > 0) {
        Fields(document, handling.Memory()).Number("_untilMs", handling.nowMs + duration * 1000);
    }
    Save(handling, part, document);
}

void AlarmAtZone(Handling& handling, const std::string& device)
{
    const Part& zones = PartOf("zones");
    Json zone = Numbered(handling, zones, device, 1);
    const Json partition =
        zone.IsNull() ? Json() : Numbered(handling, PartOf("partitions"), device, AsInt(Member(zone, "partitionNo")));
    const bool leaving = !partition.IsNull() && AsInt(Member(partition, "_armedMs")) > handling.nowMs;
    if (zone.IsNull() || !AsBool(Member(zone, "_armed")) || AsBool(Member(zone, "_bypassed")) || leaving) {
        return;
    }
    Fields(zone, handling.Memory()).Flag("_alarm", true).Text("_changeTime", IsoTime(handling.nowMs));
    Save(handling, zones, zone);
    Raise(handling,
          {"zone", "zone", device, std::string(AsText(Member(zone, "zoneGuid"))), NameOf(zone), handling.nowMs});
}

void ControlOutput(Handling& handling)
{
    const Part& part = PartOf("alarmOutputs");
    const std::string& device = handling.identifiers[0];
    NeedReach(handling, device);
    Json output = NeedPart(handling, part, device, handling.identifiers[1]);
    const bool on = AsInt(Member(*handling.body, "action")) == 1;
    const std::int64_t asked = AsInt(Member(*handling.body, "duration"));
    const bool wired = AsInt(Member(output, part.number)) == 1;
    const std::int64_t own = AsInt(Member(output, "duration"));
    Switch(handling, part, std::move(output), on ? 1 : 0, !on ? 0 : asked > 0 ? asked : own);
    const Part& inputs = PartOf("alarmInputs");
    Json input = wired ? Numbered(handling, inputs, device, 1) : Json();
    if (!input.IsNull()) {
        const std::string guid(AsText(Member(input, inputs.key)));
        Fields(input, handling.Memory()).Number("state", on ? 1 : 0);
        Save(handling, inputs, input);
        if (on) {
            Raise(handling, {"alarmInput", "alarmInput", device, guid, NameOf(input), handling.nowMs});
        } else {
            EndAlarms(handling, guid);
        }
    }
    if (wired && on) {
        AlarmAtZone(handling, device);
    }
}

void OutputStatus(Handling& handling)
{
    const Part& part = PartOf("alarmOutputs");
    handling.Define(
        "doc", ShownPart(handling, part, NeedPart(handling, part, handling.identifiers[0], handling.identifiers[1])));
    Compose(handling);
}

Json Shown(Handling& handling, const Part& part, const std::string& device)
{
    Json list(rapidjson::kArrayType);
    EachPart(handling, part, device, [&](const std::string&, Json& document) {
        list.PushBack(ShownPart(handling, part, std::move(document)), handling.Memory());
    });
    return list;
}

Json OutputsOf(Handling& handling, const std::string& guid)
{
    const Json device = handling.Load(kDevices, guid);
    return Fields(handling.Memory())
        .Text("deviceGuid", guid)
        .Text("deviceName", NameOf(device))
        .Value("alarmOutputList", Shown(handling, PartOf("alarmOutputs"), guid))
        .Take();
}

void Outputs(Handling& handling)
{
    if (!handling.identifiers.empty()) {
        handling.data = OutputsOf(handling, handling.identifiers[0]);
        return;
    }
    Json list(rapidjson::kArrayType);
    handling.Each({kDevices}, [&](const std::string& guid, Json&) {
        Json outputs = OutputsOf(handling, guid);
        if (!Elements(Member(outputs, "alarmOutputList")).Empty()) {
            list.PushBack(outputs, handling.Memory());
        }
    });
    handling.Define("doc", Fields(handling.Memory()).Value("alarmOutputParamList", std::move(list)).Take());
    Compose(handling);
}

// ---- Partitions, zones ----

/// Runs an order for each part that a list of numbers names, all of them when it is empty.
void Order(Handling& handling, const char* collection, const char* list, const std::function<Reason(Json& part)>& order)
{
    const Part& part = PartOf(collection);
    const std::string& device = handling.identifiers[0];
    NeedReach(handling, device);
    std::vector<std::int64_t> numbers;
    for (const Json& number : Elements(Member(*handling.body, list))) {
        numbers.push_back(AsInt(&number));
    }
    if (numbers.empty()) {
        EachPart(handling, part, device,
                 [&](const std::string&, Json& each) { numbers.push_back(AsInt(Member(each, part.number))); });
    }
    Json results(rapidjson::kArrayType);
    for (const std::int64_t number : numbers) {
        Json document = Numbered(handling, part, device, number);
        const Reason reason = document.IsNull() ? Reason::kUnknownGuid : order(document);
        if (reason == Reason::kNone) {
            Save(handling, part, document);
        }
        results.PushBack(Fields(handling.Memory())
                             .Number("no", number)
                             .Number("resultCode", static_cast<int>(reason))
                             .Text("resultMsg", ReasonText(reason))
                             .Take(),
                         handling.Memory());
    }
    handling.Define("doc", Fields(handling.Memory()).Value("resultList", std::move(results)).Take());
    Compose(handling);
}

void ClearZone(Handling& handling, Json& zone)
{
    Fields(zone, handling.Memory()).Flag("_alarm", false);
    EndAlarms(handling, AsText(Member(zone, "zoneGuid")));
}

void ControlPartitions(Handling& handling, double timeScale)
{
    const std::string action(AsText(Member(*handling.body, "action")));
    const std::string_view code = AsText(Member(*handling.body, "operatorPwd"));
    const bool arms = action.compare(0, 3, "arm") == 0;
    Order(handling, "partitions", "partitionNoList", [&](Json& partition) {
        if (!code.empty() && code != kPanelCode) {
            return Reason::kWrongPassword;
        }
        const std::string now = IsoTime(handling.nowMs);
        if (action != "clearAlarm") {
            const double leave =
                action == "arm" ? static_cast<double>(AsInt(Member(partition, "exitDelay"))) * 1000.0 / timeScale : 0.0;
            Fields(partition, handling.Memory())
                .Text("_arm", !arms             ? "disarmed"
                              : action == "arm" ? "armed"
                                                : "armed" + action.substr(3))
                .Number("_armedMs", arms ? handling.nowMs + static_cast<std::int64_t>(leave) : 0)
                .Text("_changeTime", now);
        }
        const Part& zones = PartOf("zones");
        EachPart(handling, zones, handling.identifiers[0], [&](const std::string&, Json& zone) {
            if (AsInt(Member(zone, "partitionNo")) != AsInt(Member(partition, "partitionNo"))) {
                return;
            }
            if (action != "clearAlarm") {
                Fields(zone, handling.Memory())
                    .Flag("_armed", arms && !AsBool(Member(zone, "_bypassed")))
                    .Text("_changeTime", now);
            }
            if (!arms) {
                ClearZone(handling, zone);
            }
            Save(handling, zones, zone);
        });
        return Reason::kNone;
    });
}

void ControlZones(Handling& handling)
{
    const std::string action(AsText(Member(*handling.body, "action")));
    Order(handling, "zones", "zoneNoList", [&](Json& zone) {
        Fields fields(zone, handling.Memory());
        fields.Text("_changeTime", IsoTime(handling.nowMs));
        if (action == "clearAlarm") {
            ClearZone(handling, zone);
        } else if (action == "bypass" || action == "bypassRestore") {
            if (action == "bypass" && AsBool(Member(zone, "_armed"))) {
                return Reason::kInUse; // An armed zone is not left out.
            }
            fields.Flag("_bypassed", action == "bypass");
        } else {
            fields.Flag("_armed", action == "arm");
        }
        return Reason::kNone;
    });
}

void ControlRelays(Handling& handling)
{
    Order(handling, "relays", "relayNoList", [&](Json& relay) {
        Switch(handling, PartOf("relays"), Copy(relay, handling.Memory()), AsInt(Member(*handling.body, "action")),
               AsInt(Member(*handling.body, "duration")));
        relay = handling.Load("relays", AsText(Member(relay, "relayGuid")));
        return Reason::kNone;
    });
}

/// A list of what the parts of a device are at the moment.
Service Statuses(const char* collection, const char* member, const char* list)
{
    return [=](Handling& handling) {
        Json all = Shown(handling, PartOf(collection), handling.identifiers[0]);
        if (*member != '\0') {
            Json inner(rapidjson::kArrayType);
            for (Json& each : all.GetArray()) {
                inner.PushBack(*Member(each, member), handling.Memory());
            }
            all = std::move(inner);
        }
        handling.Define("doc", Fields(handling.Memory()).Value(list, std::move(all)).Take());
        Compose(handling);
    };
}

void ZonesOfPartition(Handling& handling)
{
    const std::string& device = handling.identifiers[0];
    const Json partition = NeedPart(handling, PartOf("partitions"), device, handling.identifiers[1]);
    const std::int64_t number = AsInt(Member(partition, "partitionNo"));
    Json list(rapidjson::kArrayType);
    EachPart(handling, PartOf("zones"), device, [&](const std::string&, Json& zone) {
        if (AsInt(Member(zone, "partitionNo")) == number) {
            list.PushBack(ShownPart(handling, PartOf("zones"), std::move(zone)), handling.Memory());
        }
    });
    handling.Define(
        "doc", Fields(handling.Memory()).Number("partitionNo", number).Value("zoneInfoList", std::move(list)).Take());
    Compose(handling);
}

void ChannelOfZone(Handling& handling)
{
    const Json zone = NeedPart(handling, PartOf("zones"), handling.identifiers[0], handling.identifiers[1]);
    Json channel = handling.Load("channels", AsText(Member(zone, "relatedChannelGuid")));
    Fields doc(handling.Memory());
    doc.Same("zoneNo", zone);
    if (!channel.IsNull()) {
        const Json shown = ShownPart(handling, PartOf("channels"), Copy(channel, handling.Memory()));
        doc.Same("channelGuid", shown).Text("channelName", NameOf(channel)).Same("channelNo", shown);
        doc.Same("onlineState", shown);
    }
    handling.Define("doc", doc.Take());
    Compose(handling);
}

// ---- Channels ----

void Channels(Handling& handling)
{
    const Json& body = *handling.body;
    const auto wanted = Elements(Member(body, "channelNoList"));
    const Json shown = Shown(handling, PartOf("channels"), handling.identifiers[0]);
    Json list(rapidjson::kArrayType);
    for (const Json& channel : shown.GetArray()) {
        const auto is = [&](const char* member) {
            const std::int64_t value = AsInt(Member(body, member), -1);
            return value < 0 || value == AsInt(Member(channel, member));
        };
        const bool named = wanted.Empty() || std::any_of(wanted.begin(), wanted.end(), [&](const Json& each) {
                               return each == *Member(channel, "channelNo");
                           });
        if (named && is("channelType") && is("onlineState")) {
            list.PushBack(Copy(channel, handling.Memory()), handling.Memory());
        }
    }
    handling.Define("doc", Fields(handling.Memory())
                               .Value("channelInfoList", std::move(list))
                               .Value("deviceInfo", ShownDevice(handling, handling.identifiers[0]))
                               .Take());
    Compose(handling);
}

void Capture(Handling& handling)
{
    const std::string& device = handling.identifiers[0];
    NeedReach(handling, device);
    NeedPart(handling, PartOf("channels"), device, handling.identifiers[1]);
    Answer answer;
    answer.type = "image/png";
    answer.body = Picture(handling.identifiers[1] + IsoTime(handling.nowMs), false);
    handling.bytes = std::move(answer);
}

// ---- Presets ----

constexpr const char* kPresets = "presets";

Json NeedCamera(Handling& handling)
{
    const std::string& device = handling.identifiers[0];
    NeedReach(handling, device);
    Json channel = NeedPart(handling, PartOf("channels"), device, handling.identifiers[1]);
    if (!AsBool(Member(channel, "ptz"))) {
        throw Refusal(Reason::kDeviceRefused, "the camera does not move");
    }
    return channel;
}

Selection PresetsOf(const Handling& handling)
{
    return {kPresets, {{"_channel", Test::kEquals, StoreValue(handling.identifiers[1])}}, "presetNo"};
}

void ListPresets(Handling& handling)
{
    NeedCamera(handling);
    Json list(rapidjson::kArrayType);
    handling.Each(PresetsOf(handling), [&](const std::string&, Json& preset) {
        DropInternals(preset);
        list.PushBack(preset, handling.Memory());
    });
    handling.data = Fields(handling.Memory()).Value("presetInfoList", std::move(list)).Take();
}

/// A number that is taken is taken over, as on a camera; number 0 takes the next that is free.
void SavePreset(Handling& handling)
{
    NeedCamera(handling);
    const Json& body = *handling.body;
    std::int64_t number = AsInt(Member(body, "presetNo"));
    std::string guid(AsText(Member(body, "presetGuid")));
    std::int64_t free = 1;
    handling.Each(PresetsOf(handling), [&](const std::string& key, Json& preset) {
        const std::int64_t taken = AsInt(Member(preset, "presetNo"));
        free += taken == free ? 1 : 0;
        guid = number > 0 && taken == number ? key : guid;
    });
    number = number > 0 ? number : free;
    if (number > kMostPresets) {
        throw Refusal(Reason::kDeviceRefused, "the camera has no free preset");
    }
    guid = guid.empty() ? NewGuid() : guid;
    Json preset = Fields(handling.Memory())
                      .Text("presetGuid", guid)
                      .Number("presetNo", number)
                      .Same("name", body)
                      .Same("cloudP2PNo", body)
                      .Text("_channel", handling.identifiers[1])
                      .Take();
    handling.Save(kPresets, guid, preset);
    DropInternals(preset);
    handling.data = std::move(preset);
}

void ChangePreset(Handling& handling)
{
    NeedCamera(handling);
    Json preset = handling.Need(*handling.description.FindCollection(kPresets), handling.identifiers[2]);
    Fields(preset, handling.Memory()).Same("name", *handling.body).Same("cloudP2PNo", *handling.body);
    handling.Save(kPresets, handling.identifiers[2], preset);
}

void RemovePreset(Handling& handling)
{
    NeedCamera(handling);
    const std::string guid = handling.NeedText(*handling.body, "presetGuid");
    if (!handling.store.Erase(kPresets, guid)) {
        throw Refusal(Reason::kUnknownGuid, "\"" + guid + "\"");
    }
}

} // namespace

void AddControls(Services& services, double timeScale)
{
    services["controlOutput"] = ControlOutput;
    services["outputStatus"] = OutputStatus;
    services["outputs"] = Outputs;
    services["controlPartitions"] = [timeScale](Handling& handling) { ControlPartitions(handling, timeScale); };
    services["controlZones"] = ControlZones;
    services["controlRelays"] = ControlRelays;
    services["partitionStatus"] = Statuses("partitions", "partitionStatus", "partitionStatusList");
    services["zoneStatus"] = Statuses("zones", "zoneStatus", "zoneStatusList");
    services["relayStatus"] = Statuses("relays", "", "relayStatusList");
    services["zonesOfPartition"] = ZonesOfPartition;
    services["channelOfZone"] = ChannelOfZone;
    services["channels"] = Channels;
    services["capture"] = Capture;
    services["listPresets"] = ListPresets;
    services["savePreset"] = SavePreset;
    services["changePreset"] = ChangePreset;
    services["removePreset"] = RemovePreset;
}

} // namespace nexwire::simulator
