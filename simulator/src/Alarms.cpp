#include <algorithm>

#include "src/Clock.h"
#include "src/Equipment.h"
#include "src/Fields.h"
#include "src/Rules.h"
#include "src/Services.h"

// Alarms: they happen by themselves or are provoked, are logged with pictures and handled; what clients do then, and
// the templates for it.

namespace nexwire::simulator {
namespace {

constexpr const char* kLogs = "alarmLogs";
constexpr const char* kPictures = "alarmPictures";
constexpr const char* kLinks = "eventLinks"; ///< One document per resource.
constexpr const char* kTemplates = "eventTemplates";
constexpr const char* kState = "_alarms";
constexpr const char* kStorage = "5A000000000000000000000000000001";
constexpr std::int64_t kMostAtOnce = 200; ///< After a long silence.

// ---- Links ----

Json LinksOf(Handling& handling, std::string_view resource)
{
    Json document = handling.Load(kLinks, resource);
    if (!document.IsObject()) {
        document = Fields(handling.Memory()).Value("linkedEventList", Json(rapidjson::kArrayType)).Take();
    }
    return document;
}

Json* LinkFor(Json& links, const char* member, std::string_view value)
{
    for (Json& link : Member(links, "linkedEventList")->GetArray()) {
        if (AsText(Member(link, member)) == value) {
            return &link;
        }
    }
    return nullptr;
}

std::string NameOfResource(Handling& handling, const std::string& guid)
{
    std::vector<std::string> collections = {kDevices};
    for (const Part& part : Parts()) {
        collections.emplace_back(part.collection);
    }
    for (const std::string& collection : collections) {
        const Json document = handling.Load(collection, guid);
        if (document.IsObject()) {
            const Json* name = Member(document, "name");
            return std::string(AsText(name != nullptr ? name : Member(document, "objectName")));
        }
    }
    throw Refusal(Reason::kUnknownGuid, "\"" + guid + "\"");
}

void ShowLinks(Handling& handling)
{
    const std::string& resource = handling.identifiers[0];
    const std::string name = NameOfResource(handling, resource);
    const auto types = Elements(Member(*handling.body, "eventTypeList"));
    const Json links = LinksOf(handling, resource);
    Json list(rapidjson::kArrayType);
    Json guids(rapidjson::kArrayType);
    for (const Json& link : Elements(Member(links, "linkedEventList"))) {
        if (types.Empty() || std::find(types.begin(), types.end(), *Member(link, "eventType")) != types.end()) {
            guids.PushBack(Copy(*Member(link, "eventGuid"), handling.Memory()), handling.Memory());
            list.PushBack(Copy(link, handling.Memory()), handling.Memory());
        }
    }
    Fields doc(handling.Memory());
    for (const char* kind : {"resource", "channel", "alarmInput"}) {
        doc.Text(std::string(kind) + "Guid", resource).Text(std::string(kind) + "Name", name);
    }
    handling.Define("doc",
                    doc.Value("linkedEventList", std::move(list)).Value("eventGuidList", std::move(guids)).Take());
    Compose(handling);
}

void ChangeLinks(Handling& handling)
{
    const std::string& resource = handling.identifiers[0];
    NameOfResource(handling, resource);
    Json links = LinksOf(handling, resource);
    for (const Json& wanted : Elements(Member(*handling.body, "linkedEventList"))) {
        const std::string guid(AsText(Member(wanted, "eventGuid")));
        const std::string_view type = AsText(Member(wanted, "eventType"));
        // A resource has one event of a type.
        Json* known = guid.empty() ? LinkFor(links, "eventType", type) : LinkFor(links, "eventGuid", guid);
        if (known == nullptr && !guid.empty()) {
            throw Refusal(Reason::kUnknownGuid, "\"" + guid + "\"");
        }
        Json link = Copy(wanted, handling.Memory());
        Fields(link, handling.Memory())
            .Text("eventGuid", known != nullptr ? std::string(AsText(Member(*known, "eventGuid"))) : NewGuid())
            .Text("eventName", type);
        if (known != nullptr) {
            *known = link;
        } else {
            Member(links, "linkedEventList")->PushBack(link, handling.Memory());
        }
    }
    handling.Save(kLinks, resource, links);
}

void RemoveLinks(Handling& handling)
{
    Json links = LinksOf(handling, handling.identifiers[0]);
    Json& list = *Member(links, "linkedEventList");
    Json results(rapidjson::kArrayType);
    for (const Json& guid : Elements(Member(*handling.body, "eventGuidList"))) {
        Json* link = LinkFor(links, "eventGuid", AsText(&guid));
        const Reason reason = link == nullptr ? Reason::kUnknownGuid : Reason::kNone;
        if (link != nullptr) {
            list.Erase(link);
        }
        results.PushBack(Fields(handling.Memory())
                             .Text("guid", AsText(&guid))
                             .Number("resultCode", static_cast<int>(reason))
                             .Text("resultMsg", ReasonText(reason))
                             .Take(),
                         handling.Memory());
    }
    handling.Save(kLinks, handling.identifiers[0], links);
    handling.Define("doc", Fields(handling.Memory()).Value("operationResultList", std::move(results)).Take());
    Compose(handling);
}

// ---- Templates ----

/// The resources whose events follow a template.
Json Followers(Handling& handling, const std::string& guid)
{
    Json resources(rapidjson::kArrayType);
    handling.Each({kLinks}, [&](const std::string& resource, Json& links) {
        if (LinkFor(links, "templateGuid", guid) != nullptr) {
            resources.PushBack(MakeText(resource, handling.Memory()), handling.Memory());
        }
    });
    return resources;
}

void ListTemplates(Handling& handling)
{
    Selection page;
    Page(handling, page);
    const std::string_view keyword = AsText(Member(*handling.body, "keyword"));
    const bool enabledOnly = AsBool(Member(*handling.body, "enabledOnly"));
    std::int64_t total = 0;
    Json list(rapidjson::kArrayType);
    handling.Each({kTemplates}, [&](const std::string& guid, Json& document) {
        if ((enabledOnly && !AsBool(Member(document, "enable"))) ||
            AsText(Member(document, "name")).find(keyword) == std::string_view::npos) {
            return;
        }
        const std::int64_t place = total++;
        if (place >= page.offset && (page.limit < 0 || place < page.offset + page.limit)) {
            list.PushBack(Fields(handling.Memory())
                              .Value("eventTemplate", Copy(document, handling.Memory()))
                              .Number("resourceNum", Followers(handling, guid).Size())
                              .Take(),
                          handling.Memory());
        }
    });
    handling.data =
        Fields(handling.Memory()).Value("templateEventResponseList", std::move(list)).Number("total", total).Take();
}

void ShowTemplate(Handling& handling)
{
    const std::string& guid = handling.identifiers[0];
    Json document = handling.Need(*handling.description.FindCollection(kTemplates), guid);
    handling.Define("doc", Fields(handling.Memory())
                               .Value("eventTemplate", std::move(document))
                               .Value("resourceGuidList", Followers(handling, guid))
                               .Take());
    Compose(handling);
}

Reason PutTemplate(Handling& handling, const Json& wanted, std::string& guid)
{
    bool taken = false;
    handling.Each({kTemplates, {{"name", Test::kEquals, StoreValue(std::string(AsText(Member(wanted, "name"))))}}},
                  [&](const std::string& other, Json&) { taken = taken || other != guid; });
    if (!guid.empty() && !handling.store.Has(kTemplates, guid)) {
        return Reason::kUnknownGuid;
    }
    if (taken) {
        return Reason::kDuplicate;
    }
    guid = guid.empty() ? NewGuid() : guid;
    Json document = Copy(wanted, handling.Memory());
    Fields(document, handling.Memory()).Text("templateGuid", guid);
    handling.Save(kTemplates, guid, document);
    return Reason::kNone;
}

void ChangeTemplates(Handling& handling)
{
    Json results(rapidjson::kArrayType);
    const auto add = [&](std::string_view guid, Reason reason) {
        results.PushBack(Fields(handling.Memory())
                             .Text("templateGuid", guid)
                             .Number("resultCode", static_cast<int>(reason))
                             .Text("resultMsg", ReasonText(reason))
                             .Take(),
                         handling.Memory());
    };
    for (const Json& wanted : Elements(Member(*handling.body, "eventTemplateList"))) {
        std::string guid(AsText(Member(wanted, "templateGuid")));
        const Reason reason = PutTemplate(handling, wanted, guid);
        add(guid, reason);
    }
    for (const Json& each : Elements(Member(*handling.body, "removeGuidList"))) {
        const std::string guid(AsText(&each));
        const bool used = Followers(handling, guid).Size() > 0;
        add(guid, used                                     ? Reason::kInUse
                  : handling.store.Erase(kTemplates, guid) ? Reason::kNone
                                                           : Reason::kUnknownGuid);
    }
    handling.data = Fields(handling.Memory()).Value("templateEventResultList", std::move(results)).Take();
}

// ---- The log ----

void AddPicture(Handling& handling, const std::string& log, const std::string& channel, const std::string& time)
{
    const std::string guid = "F1" + log.substr(2);
    handling.Save(kPictures, guid,
                  Fields(handling.Memory())
                      .Text("pictureGuid", guid)
                      .Text("channelGuid", channel)
                      .Text("captureTime", time)
                      .Text("storageGuid", kStorage)
                      .Text("picUrl", "/alarms/" + guid + ".png")
                      .Number("pictureSize", static_cast<std::int64_t>(Picture(guid, false).size()))
                      .Text("_log", log)
                      .Take());
}

/// The channel that sees what happens at a device: one of its own, else the site's first.
std::string ChannelFor(Handling& handling, const Event& event)
{
    if (std::string_view(event.sourceType) == "channel") {
        return event.source;
    }
    std::string channel;
    for (const auto& conditions :
         {std::vector<Condition>{{"deviceGuid", Test::kEquals, StoreValue(event.device)}}, std::vector<Condition>{}}) {
        Selection first{"channels", conditions};
        first.limit = 1;
        handling.store.Select(
            first, [&](const std::string& key, const std::string&) { channel = channel.empty() ? key : channel; });
    }
    return channel;
}

void Details(Handling& handling)
{
    const Json& body = *handling.body;
    const std::string guid = handling.NeedText(body, "alarmLogGuid");
    Json log = handling.Need(*handling.description.FindCollection(kLogs), guid);
    Allocator& memory = handling.Memory();
    Json pictures(rapidjson::kArrayType);
    if (AsBool(Member(body, "needPicture"), true)) {
        handling.Each({kPictures, {{"_log", Test::kEquals, StoreValue(guid)}}}, [&](const std::string&, Json& picture) {
            DropInternals(picture);
            pictures.PushBack(picture, memory);
        });
    }
    const Json* done = Member(log, "_processing");
    Json processing = done != nullptr && AsBool(Member(body, "needProcessing"), true) ? Copy(*done, memory)
                                                                                      : Json(rapidjson::kArrayType);
    Fields details(memory);
    details.Text(
        "rawEvent",
        PrintJson(Fields(memory).Same("alarmType", log).Same("sourceGuid", log).Same("alarmTime", log).Take()));
    DropInternals(log);
    handling.Define("doc", details.Value("alarmLog", std::move(log))
                               .Value("alarmLogPictureList", std::move(pictures))
                               .Value("alarmProcessingList", std::move(processing))
                               .Take());
    Compose(handling);
}

void Process(Handling& handling)
{
    const Json& body = *handling.body;
    std::string user(AsText(Member(body, "processUser")));
    user = user.empty() ? SignedIn(handling.store) : user;
    Allocator& memory = handling.Memory();
    for (const Json& guid : Elements(Member(body, "alarmLogGuidList"))) {
        Json log = handling.Need(*handling.description.FindCollection(kLogs), AsText(&guid));
        Fields step(memory);
        step.Text("processUser", user).Text("processTime", IsoTime(handling.nowMs)).Same("processState", body);
        Json taken = step.Take();
        for (const auto& member : taken.GetObject()) {
            SetMember(log, AsText(&member.name), Copy(member.value, memory), memory);
        }
        Fields(taken, memory).Same("comment", body);
        if (Member(log, "_processing") == nullptr) {
            SetMember(log, "_processing", Json(rapidjson::kArrayType), memory);
        }
        Member(log, "_processing")->PushBack(taken, memory);
        handling.Save(kLogs, AsText(&guid), log);
    }
}

/// By identifier, or by the place in the storage.
void ShowPicture(Handling& handling)
{
    const Json& body = *handling.body;
    std::string guid(AsText(Member(body, "pictureGuid")));
    if (guid.empty()) {
        const std::string url = handling.NeedText(body, "picUrl");
        handling.Each({kPictures, {{"picUrl", Test::kEquals, StoreValue(url)}}},
                      [&](const std::string& key, Json&) { guid = key; });
    }
    handling.Need(*handling.description.FindCollection(kPictures), guid);
    Answer answer;
    answer.type = "image/png";
    answer.body = Picture(guid, AsBool(Member(body, "thumbnail")));
    handling.bytes = std::move(answer);
}

// ---- By themselves ----

struct Origin {
    const char* collection;
    const char* type;
    const char* sourceType;
    const char* name;
};

constexpr Origin kOrigins[] = {
    {"channels", "motion", "channel", "name"},
    {"alarmInputs", "alarmInput", "alarmInput", "name"},
    {"controlPoints", "doorForced", "door", "objectName"},
    {"zones", "zone", "zone", "name"},
};

/// The alarm of one tick; none where a zone is not armed or a device is away or silent.
void Happen(Handling& handling, std::int64_t sequence, std::int64_t atMs)
{
    const Origin& origin = kOrigins[sequence % 4];
    const std::int64_t count = handling.store.Count({origin.collection});
    if (count == 0) {
        return;
    }
    Selection one{origin.collection};
    one.limit = 1;
    one.offset = sequence * 7 % count;
    handling.Each(one, [&](const std::string& key, Json& part) {
        if (std::string_view(origin.type) == "zone" && !AsBool(Member(part, "_armed"))) {
            return;
        }
        Raise(handling, {origin.type, origin.sourceType, std::string(AsText(Member(part, "deviceGuid"))), key,
                         std::string(AsText(Member(part, origin.name))), atMs});
    });
}

void Settle(Handling& handling, double perMinute)
{
    if (perMinute <= 0.0) {
        return;
    }
    const double stepMs = 60000.0 / perMinute;
    Json state = handling.Load(kState, kState);
    const Json* next = state.IsObject() ? Member(state, "nextMs") : nullptr;
    double nextMs = next == nullptr ? static_cast<double>(handling.nowMs) + stepMs : next->GetDouble();
    std::int64_t sequence = state.IsObject() ? AsInt(Member(state, "sequence")) : 0;
    const auto now = static_cast<double>(handling.nowMs);
    nextMs = std::max(nextMs, now - static_cast<double>(kMostAtOnce) * stepMs);
    for (; nextMs <= now; nextMs += stepMs) {
        Happen(handling, sequence++, static_cast<std::int64_t>(nextMs));
    }
    handling.Save(kState, kState,
                  Fields(handling.Memory()).Value("nextMs", Json(nextMs)).Number("sequence", sequence).Take());
}

} // namespace

void Raise(Handling& handling, const Event& event)
{
    const Json device = handling.Load(kDevices, event.device);
    if (OutOfReach(handling, event.device) != Reason::kNone || AsInt(Member(device, "_guard"), 1) == 0) {
        return;
    }
    Json links = LinksOf(handling, event.source);
    const Json* link = LinkFor(links, "eventType", event.type);
    if (link != nullptr && !AsBool(Member(*link, "enable"), true)) {
        return;
    }
    const std::string guid = NewGuid();
    const std::string channel = ChannelFor(handling, event);
    const std::string time = IsoTime(event.atMs);
    const std::string description = std::string(event.type) + " at " + event.sourceName;
    if (!channel.empty()) {
        AddPicture(handling, guid, channel, time);
    }
    handling.Save(kLogs, guid,
                  Fields(handling.Memory())
                      .Text("alarmLogGuid", guid)
                      .Text("alarmType", event.type)
                      .Number("alarmLevel", link != nullptr ? AsInt(Member(*link, "alarmLevel"), 1) : 2)
                      .Text("alarmTime", time)
                      .Text("endTime", "")
                      .Text("deviceGuid", event.device)
                      .Text("deviceName", AsText(Member(device, "name")))
                      .Text("sourceGuid", event.source)
                      .Text("sourceName", event.sourceName)
                      .Text("sourceType", event.sourceType)
                      .Text("description", description)
                      .Number("processState", 0)
                      .Text("processUser", "")
                      .Text("processTime", "")
                      .Number("pictureNum", channel.empty() ? 0 : 1)
                      .Take());
}

void EachAlarmSource(Handling& handling, const std::string& device, const std::function<void(const Event&)>& each)
{
    for (const Origin& origin : kOrigins) {
        EachPart(handling, PartOf(origin.collection), device, [&](const std::string& key, Json& part) {
            each({origin.type, origin.sourceType, device, key, std::string(AsText(Member(part, origin.name))), 0});
        });
    }
}

void EndAlarms(Handling& handling, std::string_view source)
{
    handling.Each({kLogs,
                   {{"sourceGuid", Test::kEquals, StoreValue(std::string(source))},
                    {"endTime", Test::kEquals, StoreValue(std::string())}}},
                  [&](const std::string& guid, Json& log) {
                      Fields(log, handling.Memory()).Text("endTime", IsoTime(handling.nowMs));
                      handling.Save(kLogs, guid, log);
                  });
}

void AddAlarms(Services& services, double perMinute)
{
    services["settleAlarms"] = [perMinute](Handling& handling) { Settle(handling, perMinute); };
    services["showLinks"] = ShowLinks;
    services["changeLinks"] = ChangeLinks;
    services["removeLinks"] = RemoveLinks;
    services["listTemplates"] = ListTemplates;
    services["showTemplate"] = ShowTemplate;
    services["changeTemplates"] = ChangeTemplates;
    services["alarmDetails"] = Details;
    services["processAlarms"] = Process;
    services["showPicture"] = ShowPicture;
}

} // namespace nexwire::simulator
