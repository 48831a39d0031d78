#include <algorithm>
#include <cmath>
#include <set>

#include <keel/StringUtil.h>

#include "src/Services.h"

namespace nexwire::simulator {
namespace {

/// What a group is doing, "accessGroupState".
enum GroupState {
    kGroupNew = 0,         ///< Never downloaded, or taken off its devices.
    kGroupChanged = 1,     ///< Changed and not downloaded since.
    kGroupDownloading = 2, ///< On its way.
    kGroupDownloaded = 3,  ///< On all its devices.
    kGroupFailed = 4,      ///< At least one person did not reach one device.
    kGroupStopped = 5,     ///< Stopped half way.
};

/// What a device, a person or a credential is doing in a download, "downloadState" and its relatives.
enum DownloadState {
    kNothing = 0, ///< There is nothing to send.
    kWaiting = 1,
    kSending = 2,
    kSent = 3,
    kFailed = 4,
    kStopped = 5,
    kAny = -1, ///< Only in conditions.
};

/// "downloadMode" of an order: everything (any other value), or only who is not on the device yet.
constexpr std::int64_t kOnlyChanges = 1;

/// What a controller takes for one person.
constexpr double kMillisecondsPerPerson = 400.0;

constexpr const char* kGroups = "accessGroups";
constexpr const char* kDownloads = "downloads"; // One per group: its latest order.
constexpr const char* kHoldings = "holdings";   // Who is on which device through which group.
constexpr const char* kDevices = "devices";
constexpr const char* kPersons = "persons";

std::string HoldingKey(std::string_view device, std::string_view group, std::string_view person)
{
    return std::string(device) + "/" + std::string(group) + "/" + std::string(person);
}

Condition Equals(const char* field, std::string_view value)
{
    return {field, Test::kEquals, StoreValue(std::string(value))};
}

rapidjson::SizeType SizeOf(const Json& object, const char* list)
{
    const Json* found = Member(object, list);
    return found != nullptr && found->IsArray() ? found->Size() : 0;
}

// How many persons of the current attempt a device is through with, at most all of them.
std::int64_t Through(const Json& download, const Json& device, std::int64_t nowMs)
{
    const std::int64_t pending = SizeOf(device, "persons");
    const Json* stopped = Member(download, "stoppedMs");
    const std::int64_t until = stopped == nullptr ? nowMs : std::min(nowMs, AsInt(stopped));
    const std::int64_t elapsed = std::max<std::int64_t>(until - AsInt(Member(device, "startedMs")), 0);
    const Json* step = Member(download, "stepMs");
    const double perPerson = step == nullptr ? kMillisecondsPerPerson : step->GetDouble();
    const double through = std::floor(static_cast<double>(elapsed) / perPerson);
    return through >= static_cast<double>(pending) ? pending : static_cast<std::int64_t>(through);
}

int PersonState(const Json& download, const Json& device, std::int64_t index, std::int64_t through)
{
    if (index < through) {
        return AsInt(Member(device, "error")) == 0 ? kSent : kFailed;
    }
    if (Member(download, "stoppedMs") != nullptr) {
        return kStopped;
    }
    return index == through ? kSending : kWaiting;
}

struct DeviceView {
    std::int64_t total = 0;
    std::int64_t through = 0; ///< Persons of earlier attempts included.
    int state = kNothing;
    int progress = 0;
};

DeviceView View(const Json& download, const Json& device, std::int64_t nowMs)
{
    DeviceView view;
    const std::int64_t finished = SizeOf(device, "finished");
    const std::int64_t pending = SizeOf(device, "persons");
    const std::int64_t through = Through(download, device, nowMs);
    view.total = finished + pending;
    view.through = finished + through;
    if (through < pending) {
        view.state = Member(download, "stoppedMs") != nullptr ? kStopped : kSending;
    } else {
        view.state = pending > 0 && AsInt(Member(device, "error")) != 0 ? kFailed : kSent;
    }
    view.progress = view.total == 0 ? 100 : static_cast<int>(view.through * 100 / view.total);
    if (const Json* reported = Member(device, "reported")) {
        view.state = static_cast<int>(AsInt(Member(*reported, "downloadState")));
        view.progress = static_cast<int>(AsInt(Member(*reported, "deviceProgress")));
        view.through = view.total * view.progress / 100;
    }
    return view;
}

bool Running(const Json& download)
{
    return AsBool(Member(download, "running"));
}

void SetGroupState(Handling& handling, std::string_view group, int state)
{
    Json document = handling.Load(kGroups, group);
    if (document.IsObject()) {
        SetMember(document, "accessGroupState", Json(state), handling.Memory());
        handling.Save(kGroups, group, document);
    }
}

// Puts what has arrived since the last look on the device, or takes it off.
void Carry(Handling& handling, const Json& download, Json& device, std::int64_t through)
{
    const std::int64_t carried = AsInt(Member(device, "carried"));
    SetMember(device, "carried", Json(through), handling.Memory());
    if (AsInt(Member(device, "error")) != 0) {
        return;
    }
    const std::string_view group = AsText(Member(download, "groupGuid"));
    const std::string_view deviceGuid = AsText(Member(device, "deviceGuid"));
    const Json* persons = Member(device, "persons");
    for (std::int64_t i = carried; i < through; ++i) {
        const Json& person = (*persons)[static_cast<rapidjson::SizeType>(i)];
        const std::string key = HoldingKey(deviceGuid, group, AsText(Member(person, "personnelGuid")));
        if (AsBool(Member(download, "deleteGroup"))) {
            handling.store.Erase(kHoldings, key);
            continue;
        }
        const std::int64_t at =
            AsInt(Member(device, "startedMs")) +
            static_cast<std::int64_t>(Member(download, "stepMs")->GetDouble() * static_cast<double>(i + 1));
        Json holding = Copy(person, handling.Memory());
        SetMember(holding, "deviceGuid", MakeText(deviceGuid, handling.Memory()), handling.Memory());
        SetMember(holding, "groupGuid", MakeText(group, handling.Memory()), handling.Memory());
        SetMember(holding, "secheduleGuid", Copy(*Member(download, "secheduleGuid"), handling.Memory()),
                  handling.Memory());
        SetMember(holding, "downloadTime", Json(at), handling.Memory());
        handling.Save(kHoldings, key, holding);
    }
}

// Brings every running download up to date with the clock.
void Settle(Handling& handling)
{
    handling.Each({kDownloads, {{"running", Test::kEquals, StoreValue(std::int64_t{1})}}},
                  [&](const std::string& group, Json& download) {
                      bool complete = true;
                      bool failed = false;
                      for (Json& device : Member(download, "devices")->GetArray()) {
                          const std::int64_t through = Through(download, device, handling.nowMs);
                          if (through > AsInt(Member(device, "carried"))) {
                              Carry(handling, download, device, through);
                          }
                          const DeviceView view = View(download, device, handling.nowMs);
                          complete = complete && (view.state == kSent || view.state == kFailed);
                          failed = failed || view.state == kFailed;
                      }
                      if (complete) {
                          SetMember(download, "running", Json(false), handling.Memory());
                          const bool taken = AsBool(Member(download, "deleteGroup"));
                          SetGroupState(handling, group, failed ? kGroupFailed : taken ? kGroupNew : kGroupDownloaded);
                      }
                      handling.Save(kDownloads, group, download);
                  });
}

// Why this device does not take anything, 0 when it does.
int DeviceError(const Json& device, std::int64_t attempt)
{
    if (AsBool(Member(device, "_offline"))) {
        return static_cast<int>(Reason::kDeviceOffline);
    }
    const std::int64_t failures = AsBool(Member(device, "_refusing")) ? -1 : AsInt(Member(device, "_failDownloads"));
    return failures < 0 || attempt <= failures ? static_cast<int>(Reason::kDeviceRefused) : 0;
}

void StartDevice(Handling& handling, Json& entry, std::int64_t attempt)
{
    const Json device = handling.Load(kDevices, AsText(Member(entry, "deviceGuid")));
    Allocator& memory = handling.Memory();
    SetMember(entry, "attempt", Json(attempt), memory);
    SetMember(entry, "error", Json(device.IsObject() ? DeviceError(device, attempt) : 0), memory);
    SetMember(entry, "startedMs", Json(handling.nowMs), memory);
    SetMember(entry, "carried", Json(0), memory);
    entry.RemoveMember("reported");
}

// The devices of a group's objects; with `held` also those that still hold somebody of it.
std::vector<std::string> DevicesOf(Handling& handling, const Json& group, std::string_view guid, bool held)
{
    std::vector<std::string> devices;
    const auto add = [&](std::string_view device) {
        if (std::find(devices.begin(), devices.end(), device) == devices.end()) {
            devices.emplace_back(device);
        }
    };
    if (const Json* objects = Member(group, "objectResList")) {
        for (const Json& object : objects->GetArray()) {
            add(AsText(Member(object, "deviceGuid")));
        }
    }
    if (held) {
        handling.Each({kHoldings, {Equals("groupGuid", guid)}},
                      [&](const std::string&, Json& holding) { add(AsText(Member(holding, "deviceGuid"))); });
    }
    return devices;
}

// Who is on the device through the group and does not belong there any more goes without a word.
void DropLeavers(Handling& handling, const Json& group, std::string_view guid)
{
    std::set<std::string> members;
    for (const std::string& device : DevicesOf(handling, group, guid, false)) {
        for (const Json& person : Member(group, "personnelResList")->GetArray()) {
            members.insert(HoldingKey(device, guid, AsText(Member(person, "personnelGuid"))));
        }
    }
    handling.store.Select({kHoldings, {Equals("groupGuid", guid)}}, [&](const std::string& key, const std::string&) {
        if (members.count(key) == 0) {
            handling.store.Erase(kHoldings, key);
        }
    });
}

void StartGroup(Handling& handling, const Json& order, double stepMs)
{
    Allocator& memory = handling.Memory();
    const std::string guid(AsText(Member(order, "accessgroupGuid")));
    const bool take = AsBool(Member(order, "deleteGroup"));
    const bool onlyChanges = !take && AsInt(Member(order, "downloadMode")) == kOnlyChanges;
    const Json group = handling.Need(*handling.description.FindCollection(kGroups), guid);
    const Json previous = handling.Load(kDownloads, guid);
    if (previous.IsObject() && Running(previous)) {
        throw Refusal(Reason::kDownloadRunning, "\"" + guid + "\"");
    }
    const std::vector<std::string> devices = DevicesOf(handling, group, guid, take);
    if (devices.empty() || (!take && SizeOf(group, "personnelResList") == 0)) {
        throw Refusal(Reason::kNothingToDownload, "\"" + guid + "\"");
    }
    if (!take) {
        DropLeavers(handling, group, guid);
    }
    const std::string_view schedule = AsText(Member(group, "secheduleGuid"));
    Json entries(rapidjson::kArrayType);
    for (const std::string& device : devices) {
        Json persons(rapidjson::kArrayType);
        Json finished(rapidjson::kArrayType);
        for (const Json& person : Member(group, "personnelResList")->GetArray()) {
            const Json held =
                onlyChanges
                    ? handling.Load(kHoldings, HoldingKey(device, guid, AsText(Member(person, "personnelGuid"))))
                    : Json();
            const bool there = held.IsObject() && AsText(Member(held, "secheduleGuid")) == schedule;
            (there ? finished : persons).PushBack(Copy(person, memory), memory);
        }
        Json entry(rapidjson::kObjectType);
        SetMember(entry, "deviceGuid", MakeText(device, memory), memory);
        SetMember(entry, "persons", std::move(persons), memory);
        SetMember(entry, "finished", std::move(finished), memory);
        StartDevice(handling, entry, 1);
        entries.PushBack(entry, memory);
    }
    Json download(rapidjson::kObjectType);
    SetMember(download, "groupGuid", MakeText(guid, memory), memory);
    SetMember(download, "sessionID", MakeText(NewGuid(), memory), memory);
    SetMember(download, "deleteGroup", Json(take), memory);
    SetMember(download, "secheduleGuid", MakeText(schedule, memory), memory);
    SetMember(download, "stepMs", Json(stepMs), memory);
    SetMember(download, "running", Json(true), memory);
    SetMember(download, "devices", std::move(entries), memory);
    handling.Save(kDownloads, guid, download);
    SetGroupState(handling, guid, kGroupDownloading);
}

void Start(Handling& handling, double stepMs)
{
    const Json& orders = *Member(*handling.body, "accessGroupDownList");
    if (orders.Empty()) {
        throw Refusal(Reason::kNothingToDownload, "accessGroupDownList is empty");
    }
    for (const Json& order : orders.GetArray()) {
        StartGroup(handling, order, stepMs);
    }
}

Json NeedDownload(Handling& handling, const std::string& group)
{
    handling.Need(*handling.description.FindCollection(kGroups), group);
    Json download = handling.Load(kDownloads, group);
    if (!download.IsObject()) {
        throw Refusal(Reason::kNoDownload, "\"" + group + "\"");
    }
    return download;
}

void Stop(Handling& handling)
{
    const std::string group = std::string(handling.Identifier("1"));
    Json download = NeedDownload(handling, group);
    if (!Running(download)) {
        throw Refusal(Reason::kNoDownload, "\"" + group + "\"");
    }
    SetMember(download, "stoppedMs", Json(handling.nowMs), handling.Memory());
    SetMember(download, "running", Json(false), handling.Memory());
    handling.Save(kDownloads, group, download);
    SetGroupState(handling, group, kGroupStopped);
}

// Sends once more what failed or was stopped.
void Repeat(Handling& handling)
{
    const std::string group = std::string(handling.Identifier("1"));
    Json download = NeedDownload(handling, group);
    if (Running(download)) {
        throw Refusal(Reason::kDownloadRunning, "\"" + group + "\"");
    }
    Allocator& memory = handling.Memory();
    bool anything = false;
    for (Json& device : Member(download, "devices")->GetArray()) {
        const std::int64_t through =
            AsInt(Member(device, "error")) == 0 ? Through(download, device, handling.nowMs) : 0;
        const Json persons = Copy(*Member(device, "persons"), memory);
        Json again(rapidjson::kArrayType);
        for (rapidjson::SizeType i = 0; i < persons.Size(); ++i) {
            const bool done = static_cast<std::int64_t>(i) < through;
            (done ? *Member(device, "finished") : again).PushBack(Copy(persons[i], memory), memory);
        }
        anything = anything || !again.Empty();
        SetMember(device, "persons", std::move(again), memory);
        StartDevice(handling, device, AsInt(Member(device, "attempt")) + 1);
    }
    if (!anything) {
        throw Refusal(Reason::kNothingFailed, "\"" + group + "\"");
    }
    download.RemoveMember("stoppedMs");
    SetMember(download, "running", Json(true), memory);
    handling.Save(kDownloads, group, download);
    SetGroupState(handling, group, kGroupDownloading);
}

void Progress(Handling& handling)
{
    const std::string guid = std::string(handling.Identifier("1"));
    const Json group = handling.Need(*handling.description.FindCollection(kGroups), guid);
    const Json download = handling.Load(kDownloads, guid);
    Allocator& memory = handling.Memory();
    Json list(rapidjson::kArrayType);
    std::int64_t total = 0;
    std::int64_t through = 0;
    if (download.IsObject()) {
        for (const Json& device : Member(download, "devices")->GetArray()) {
            const DeviceView view = View(download, device, handling.nowMs);
            total += view.total;
            through += view.through;
            Json entry(rapidjson::kObjectType);
            SetMember(entry, "deviceGuid", Copy(*Member(device, "deviceGuid"), memory), memory);
            SetMember(entry, "deviceProgress", Json(view.progress), memory);
            SetMember(entry, "downloadState", Json(view.state), memory);
            list.PushBack(entry, memory);
        }
    }
    const std::int64_t progress = !download.IsObject() ? 0 : total == 0 ? 100 : through * 100 / total;
    SetMember(handling.data, "groupProgress", Json(progress), memory);
    SetMember(handling.data, "accessGroupState", Copy(*Member(group, "accessGroupState"), memory), memory);
    SetMember(handling.data, "deviceDownloadProgressList", std::move(list), memory);
}

std::string Lower(std::string_view text)
{
    return Keel::StringUtil::LowerCase(std::string(text));
}

struct Filter {
    std::string name;
    std::string_view guid;
    std::string_view session;
    std::int64_t state = kAny;

    bool Takes(const Json& person, int personState) const
    {
        return (name.empty() || Lower(AsText(Member(person, "personnelName"))).find(name) != std::string::npos) &&
               (guid.empty() || guid == AsText(Member(person, "personnelGuid"))) &&
               (state == kAny || state == personState);
    }
};

struct Detail {
    const Json& device;
    const Json& person;
    int state;
    int error;
};

// Walks the persons that the body's condition names; fills in what both answers share.
Json Details(Handling& handling, const std::function<void(const Detail&)>& each)
{
    const Json& condition = *Member(*handling.body, "DetailsQueryCondition");
    const std::string group = handling.NeedText(condition, "groupGuid");
    const std::string_view wanted = AsText(Member(condition, "deviceGuid"));
    if (!wanted.empty()) {
        handling.Need(*handling.description.FindCollection(kDevices), wanted);
    }
    const Json download = NeedDownload(handling, group);
    Filter filter;
    if (AsBool(Member(*handling.body, "isQuery"))) {
        if (const Json* given = Member(*handling.body, "DetailsFilterCondition")) {
            filter.name = Lower(AsText(Member(*given, "personName")));
            filter.guid = AsText(Member(*given, "personGuid"));
            filter.session = AsText(Member(*given, "sessionID"));
            filter.state = AsInt(Member(*given, "downloadState"), kAny);
        }
    }
    const std::string_view session = AsText(Member(download, "sessionID"));
    if (filter.session.empty() || filter.session == session) {
        for (const Json& device : Member(download, "devices")->GetArray()) {
            if (!wanted.empty() && wanted != AsText(Member(device, "deviceGuid"))) {
                continue;
            }
            const std::int64_t through = Through(download, device, handling.nowMs);
            const int error = static_cast<int>(AsInt(Member(device, "error")));
            for (const Json& person : Member(device, "finished")->GetArray()) {
                if (filter.Takes(person, kSent)) {
                    each({device, person, kSent, 0});
                }
            }
            std::int64_t index = 0;
            for (const Json& person : Member(device, "persons")->GetArray()) {
                const int state = PersonState(download, device, index++, through);
                if (filter.Takes(person, state)) {
                    each({device, person, state, state == kFailed ? error : 0});
                }
            }
        }
    }
    Allocator& memory = handling.Memory();
    Json answer(rapidjson::kObjectType);
    SetMember(answer, "deviceGuid", MakeText(wanted, memory), memory);
    SetMember(answer, "groupGuid", MakeText(group, memory), memory);
    SetMember(answer, "sessionID", MakeText(session, memory), memory);
    return answer;
}

Json DetailEntry(Handling& handling, const Detail& detail)
{
    Allocator& memory = handling.Memory();
    Json entry(rapidjson::kObjectType);
    SetMember(entry, "personGuid", MakeText(AsText(Member(detail.person, "personnelGuid")), memory), memory);
    SetMember(entry, "personNo", MakeText(AsText(Member(detail.person, "personnelNo")), memory), memory);
    SetMember(entry, "personName", MakeText(AsText(Member(detail.person, "personnelName")), memory), memory);
    SetMember(entry, "downloadState", Json(detail.state), memory);
    SetMember(entry, "errorCode", Json(detail.error), memory);
    SetMember(entry, "errorMsg",
              MakeText(detail.error == 0 ? "" : ReasonText(static_cast<Reason>(detail.error)), memory), memory);
    return entry;
}

void DeviceDetails(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Json list(rapidjson::kArrayType);
    int sent = 0;
    int failed = 0;
    Json answer = Details(handling, [&](const Detail& detail) {
        Json entry = DetailEntry(handling, detail);
        SetMember(entry, "objectGuid", MakeText("", memory), memory);
        list.PushBack(entry, memory);
        sent += detail.state == kSent ? 1 : 0;
        failed += detail.state == kFailed ? 1 : 0;
    });
    SetMember(answer, "totalNum", Json(list.Size()), memory);
    SetMember(answer, "successNum", Json(sent), memory);
    SetMember(answer, "failedNum", Json(failed), memory);
    SetMember(answer, "deviceDownloadDetailList", std::move(list), memory);
    SetMember(handling.data, "deviceDownloadDetailsResponse", std::move(answer), memory);
}

void PersonDetails(Handling& handling)
{
    static constexpr std::pair<const char*, const char*> kCredentials[] = {
        {"cards", "cardState"}, {"fingerPrints", "fingerPrintState"}, {"faces", "faceState"}, {"irises", "irisState"}};
    Allocator& memory = handling.Memory();
    Json list(rapidjson::kArrayType);
    Json answer = Details(handling, [&](const Detail& detail) {
        Json entry = DetailEntry(handling, detail);
        const Json person = handling.Load(kPersons, AsText(Member(detail.person, "personnelGuid")));
        for (const auto& [held, state] : kCredentials) {
            const Json* has = Member(person, held);
            const bool any = has != nullptr && (has->IsArray() ? !has->Empty() : AsInt(has) > 0);
            SetMember(entry, state, Json(any ? detail.state : kNothing), memory);
        }
        list.PushBack(entry, memory);
    });
    SetMember(answer, "personStateDetailList", std::move(list), memory);
    SetMember(handling.data, "personStateDetailResponse", std::move(answer), memory);
}

// A device gateway reports how its part went.
void Report(Handling& handling)
{
    const std::string group = handling.NeedText(*handling.body, "accessGroupGuid");
    const std::string device = handling.NeedText(*handling.body, "deviceGuid");
    Json download = NeedDownload(handling, group);
    for (Json& entry : Member(download, "devices")->GetArray()) {
        if (AsText(Member(entry, "deviceGuid")) != device) {
            continue;
        }
        Json reported(rapidjson::kObjectType);
        const std::int64_t progress = AsInt(Member(*handling.body, "deviceProgress"));
        SetMember(reported, "deviceProgress", Json(std::clamp<std::int64_t>(progress, 0, 100)), handling.Memory());
        SetMember(reported, "downloadState", Json(AsInt(Member(*handling.body, "downloadState"))), handling.Memory());
        SetMember(entry, "reported", std::move(reported), handling.Memory());
        handling.Save(kDownloads, group, download);
        return;
    }
    throw Refusal(Reason::kNoDownload, "\"" + device + "\"");
}

// Refuses a plan under which a person would have two schedules at one door.
void Check(Handling& handling)
{
    const std::string_view own = AsText(Member(*handling.body, "accessGroupGuid"));
    if (!own.empty()) {
        handling.Need(*handling.description.FindCollection(kGroups), own);
    }
    std::set<std::string, std::less<>> among;
    if (const Json* list = Member(*handling.body, "accessGroupGuidList")) {
        for (const Json& guid : list->GetArray()) {
            handling.Need(*handling.description.FindCollection(kGroups), AsText(&guid));
            among.emplace(AsText(&guid));
        }
    }
    const std::string_view schedule = AsText(Member(*handling.body, "scheduleGuid"));
    Selection touching{kGroups};
    touching.conditions.push_back({"personnelResList", Test::kHasElement,
                                   StoreValue(PrintJson(*Member(*handling.body, "personGuidList"))), "personnelGuid"});
    touching.conditions.push_back({"objectResList", Test::kHasElement,
                                   StoreValue(PrintJson(*Member(*handling.body, "doorGuidList"))), "objectGuid"});
    handling.Each(touching, [&](const std::string& guid, Json& group) {
        const bool considered = guid != own && (among.empty() || among.count(guid) != 0);
        if (considered && AsText(Member(group, "secheduleGuid")) != schedule) {
            throw Refusal(Reason::kScheduleConflict, "group \"" + std::string(AsText(Member(group, "name"))) + "\"");
        }
    });
}

// Each person on a device once, however many groups brought it there.
void EachHeld(Handling& handling, const std::function<void(const Json& holding)>& each)
{
    std::set<std::string, std::less<>> seen;
    handling.Each({kHoldings, {Equals("deviceGuid", handling.Identifier("1"))}},
                  [&](const std::string&, Json& holding) {
                      if (seen.emplace(AsText(Member(holding, "personnelGuid"))).second) {
                          each(holding);
                      }
                  });
}

Json HeldEntry(Handling& handling, const Json& holding)
{
    Allocator& memory = handling.Memory();
    Json entry(rapidjson::kObjectType);
    SetMember(entry, "personGuid", MakeText(AsText(Member(holding, "personnelGuid")), memory), memory);
    SetMember(entry, "personNo", MakeText(AsText(Member(holding, "personnelNo")), memory), memory);
    SetMember(entry, "personName", MakeText(AsText(Member(holding, "personnelName")), memory), memory);
    SetMember(entry, "downloadTime", Json(AsInt(Member(holding, "downloadTime"))), memory);
    return entry;
}

void HeldPersons(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Json list(rapidjson::kArrayType);
    EachHeld(handling, [&](const Json& holding) { list.PushBack(HeldEntry(handling, holding), memory); });
    Json held(rapidjson::kObjectType);
    SetMember(held, "deviceGuid", MakeText(handling.Identifier("1"), memory), memory);
    SetMember(held, "personList", std::move(list), memory);
    SetMember(handling.data, "downloadedPerson", std::move(held), memory);
}

void HeldCards(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Json list(rapidjson::kArrayType);
    EachHeld(handling, [&](const Json& holding) {
        const Json person = handling.Load(kPersons, AsText(Member(holding, "personnelGuid")));
        if (const Json* cards = Member(person, "cards")) {
            for (const Json& card : cards->GetArray()) {
                Json entry = HeldEntry(handling, holding);
                SetMember(entry, "cardNo", Copy(card, memory), memory);
                list.PushBack(entry, memory);
            }
        }
    });
    SetMember(handling.data, "downloadedCardList", std::move(list), memory);
}

} // namespace

void EachDownload(Handling& handling, const WorkSink& each)
{
    static constexpr const char* kStates[] = {"done", "waiting", "running", "done", "failed", "stopped"};
    handling.Each({kDownloads}, [&](const std::string& group, Json& download) {
        for (const Json& device : Elements(Member(download, "devices"))) {
            const DeviceView view = View(download, device, handling.nowMs);
            each({group, "download", std::string(AsText(Member(device, "deviceGuid"))),
                  kStates[std::clamp(view.state, 0, 5)], view.through, view.total, view.progress});
        }
    });
}

void AddDownloads(Services& services, double timeScale)
{
    const double stepMs = std::max(kMillisecondsPerPerson / timeScale, 1e-6);
    services["settleDownloads"] = Settle;
    services["startDownload"] = [stepMs](Handling& handling) { Start(handling, stepMs); };
    services["stopDownload"] = Stop;
    services["repeatDownload"] = Repeat;
    services["downloadProgress"] = Progress;
    services["deviceDownloadDetails"] = DeviceDetails;
    services["personDownloadDetails"] = PersonDetails;
    services["reportDownload"] = Report;
    services["checkAccessParam"] = Check;
    services["heldPersons"] = HeldPersons;
    services["heldCards"] = HeldCards;
}

} // namespace nexwire::simulator
