// Visitors: from an appointment over its permission on devices to the record of the visit.

#include <algorithm>
#include <limits>

#include "src/Register.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kAppointments = "appointments";
constexpr const char* kGroups = "visitorGroups";
constexpr const char* kSettings = "_visitorSettings";
constexpr double kSendMs = 1000.0;

enum State : std::int64_t { kWaiting = 0, kArrived = 1, kLeft = 2, kExpired = 3 };
enum Download : std::int64_t { kNothing = 0, kQueued = 1, kSending = 2, kSent = 3, kFailed = 4 };

void Put(Handling& handling, Json& object, const char* key, std::string_view text)
{
    SetMember(object, key, MakeText(text, handling.Memory()), handling.Memory());
}

void Put(Handling& handling, Json& object, const char* key, std::int64_t number)
{
    SetMember(object, key, Json(number), handling.Memory());
}

Json Settings(Handling& handling)
{
    Json settings = handling.Load(kSettings, "basic");
    if (!settings.IsObject() && handling.endpoint.result != nullptr) {
        settings = handling.Fill(*handling.description.FindCollection(kSettings)->defaults);
    } else if (!settings.IsObject()) {
        settings.SetObject();
    }
    return settings;
}

/// Devices that the groups of an appointment lead to.
std::vector<std::string> DevicesOf(Handling& handling, const Json& appointment)
{
    std::vector<std::string> devices;
    for (const Json& group : Elements(Member(appointment, "accessGroupGuidList"))) {
        const Json found = handling.Load(kGroups, AsText(&group));
        for (const Json& point : Elements(found.IsObject() ? Member(found, "accessPointList") : nullptr)) {
            const std::string device(AsText(Member(point, "deviceGuid")));
            if (std::find(devices.begin(), devices.end(), device) == devices.end()) {
                devices.push_back(device);
            }
        }
    }
    return devices;
}

bool IsOffline(Handling& handling, const std::string& device)
{
    const Json found = handling.Load("devices", device);
    return !found.IsObject() || AsBool(Member(found, "_offline"));
}

// Time passes: permissions reach devices, appointments expire.
void Settle(Handling& handling, double timeScale)
{
    const std::string now = IsoTime(handling.nowMs);
    const auto sendMs = static_cast<std::int64_t>(kSendMs / timeScale);
    handling.Each({kAppointments}, [&](const std::string& guid, Json& appointment) {
        const std::int64_t download = AsInt(Member(appointment, "downloadState"));
        const std::int64_t passed = handling.nowMs - AsInt(Member(appointment, "_sentMs"));
        std::int64_t next = download;
        if (download == kQueued || download == kSending) {
            const auto devices = DevicesOf(handling, appointment);
            const bool failed = std::any_of(devices.begin(), devices.end(),
                                            [&](const std::string& device) { return IsOffline(handling, device); });
            next = passed < sendMs / 2 ? download : passed < sendMs ? kSending : failed ? kFailed : kSent;
        }
        const bool expired = AsInt(Member(appointment, "appointmentState")) == kWaiting &&
                             AsText(Member(appointment, "visitEndTime")) < now;
        if (next != download || expired) {
            Put(handling, appointment, "downloadState", next);
            if (expired) {
                Put(handling, appointment, "appointmentState", kExpired);
            }
            handling.Save(kAppointments, guid, appointment);
        }
    });
}

void StartDownload(Handling& handling, Json& appointment)
{
    Put(handling, appointment, "downloadState", DevicesOf(handling, appointment).empty() ? kNothing : kQueued);
    Put(handling, appointment, "_sentMs", handling.nowMs);
}

void Check(Handling& handling, const Json& appointment)
{
    const std::string_view begin = AsText(Member(appointment, "visitBeginTime"));
    const std::string_view end = AsText(Member(appointment, "visitEndTime"));
    if (AsText(AtPath(appointment, "visitor.visitorName")).empty()) {
        throw Refusal(Reason::kMissingField, "visitor.visitorName");
    }
    if (begin.empty() || end.empty() || end <= begin) {
        throw Refusal(Reason::kOutOfRange, "the visit must end after its begin");
    }
    const std::string_view host = AsText(Member(appointment, "receptionistGuid"));
    if (!host.empty() && !handling.store.Has("persons", host)) {
        throw Refusal(Reason::kUnknownGuid, "\"" + std::string(host) + "\"");
    }
    for (const Json& group : Elements(Member(appointment, "accessGroupGuidList"))) {
        handling.Need(*handling.description.FindCollection(kGroups), AsText(&group));
    }
}

void AddAppointments(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const Json settings = Settings(handling);
    Json results(rapidjson::kArrayType);
    for (const Json& element : Elements(Member(*handling.body, "appointmentList"))) {
        Json result(rapidjson::kObjectType);
        Put(handling, result, "visitorName", AsText(AtPath(element, "visitor.visitorName")));
        try {
            Check(handling, element);
            const std::string guid = NewGuid();
            Json appointment = Copy(element, memory);
            Json& visitor = *Member(appointment, "visitor");
            if (AsText(Member(visitor, "visitorGuid")).empty()) {
                Put(handling, visitor, "visitorGuid", NewGuid());
            }
            if (Elements(Member(appointment, "accessGroupGuidList")).Empty()) {
                if (const Json* groups = Member(settings, "defaultAccessGroupGuidList")) {
                    SetMember(appointment, "accessGroupGuidList", Copy(*groups, memory), memory);
                }
            }
            // Six digits that nobody else has: the identifier's own are as good as any.
            std::string code;
            for (const char c : guid) {
                code += static_cast<char>('0' + (c >= 'A' ? c - 'A' + 10 : c - '0') % 10);
            }
            code.resize(static_cast<std::size_t>(AsInt(Member(settings, "codeLength"), 6)));
            Put(handling, appointment, "appointmentGuid", guid);
            Put(handling, appointment, "visitCode", code);
            Put(handling, appointment, "appointmentState", kWaiting);
            Put(handling, appointment, "downloadState", kNothing);
            Put(handling, appointment, "createTime", IsoTime(handling.nowMs));
            if (AsBool(Member(settings, "autoDownload"), true)) {
                StartDownload(handling, appointment);
            }
            handling.Save(kAppointments, guid, appointment);
            Put(handling, result, "appointmentGuid", guid);
            Put(handling, result, "visitorGuid", AsText(Member(visitor, "visitorGuid")));
            Put(handling, result, "visitCode", code);
            Put(handling, result, "resultCode", std::int64_t{0});
        } catch (const Refusal& refusal) {
            Put(handling, result, "resultCode", static_cast<std::int64_t>(refusal.Why()));
            Put(handling, result, "resultMsg", refusal.what());
        }
        results.PushBack(result, memory);
    }
    SetMember(handling.data, "addAppointmentResultList", std::move(results), memory);
}

void Change(Handling& handling)
{
    const std::string& guid = handling.identifiers[0];
    Json appointment = handling.Need(*handling.description.FindCollection(kAppointments), guid);
    const std::int64_t before = AsInt(Member(appointment, "appointmentState"));
    Check(handling, *handling.body);
    for (const auto& member : handling.body->GetObject()) {
        SetMember(appointment, AsText(&member.name), Copy(member.value, handling.Memory()), handling.Memory());
    }
    const std::int64_t after = AsInt(Member(appointment, "appointmentState"));
    if (before != kWaiting && after == kWaiting) {
        throw Refusal(Reason::kOutOfRange, "a visit that has begun does not wait again");
    }
    if (before != after && (after == kArrived || after == kLeft)) {
        Put(handling, appointment, after == kArrived ? "arriveTime" : "leaveTime", IsoTime(handling.nowMs));
    }
    handling.Save(kAppointments, guid, appointment);
}

void Send(Handling& handling)
{
    const bool takesOff = AsInt(Member(*handling.body, "operateType")) == 1;
    for (const Json& each : Elements(Member(*handling.body, "appointmentGuidList"))) {
        Json appointment = handling.Need(*handling.description.FindCollection(kAppointments), AsText(&each));
        if (takesOff) {
            Put(handling, appointment, "downloadState", kNothing);
        } else {
            StartDownload(handling, appointment);
        }
        handling.Save(kAppointments, AsText(&each), appointment);
    }
}

// ---- Records ----

Json Record(Handling& handling, const std::string& guid, const Json& appointment)
{
    Allocator& memory = handling.Memory();
    Json record(rapidjson::kObjectType);
    Put(handling, record, "recordGuid", guid);
    for (const char* const key : {"appointmentGuid", "visitor", "receptionistGuid", "receptionistName", "downloadState",
                                  "accessGroupGuidList"}) {
        if (const Json* value = Member(appointment, key)) {
            SetMember(record, key, Copy(*value, memory), memory);
        }
    }
    const auto first = [&](const char* key, const char* otherwise) {
        const std::string_view text = AsText(Member(appointment, key));
        return text.empty() ? AsText(Member(appointment, otherwise)) : text;
    };
    Put(handling, record, "beginTime", first("arriveTime", "visitBeginTime"));
    Put(handling, record, "endTime", first("leaveTime", "visitEndTime"));
    const std::int64_t state = AsInt(Member(appointment, "appointmentState"));
    const bool late = state == kArrived && AsText(Member(appointment, "visitEndTime")) < IsoTime(handling.nowMs);
    constexpr std::int64_t kOverdue = 3;
    Put(handling, record, "visitState", late ? kOverdue : state == kArrived ? 1 : state == kLeft ? 2 : 0);
    return record;
}

template <class Fits>
void Records(Handling& handling, const Fits& fits, std::int64_t offset, std::int64_t limit)
{
    Json list(rapidjson::kArrayType);
    std::int64_t total = 0;
    handling.Each({kAppointments}, [&](const std::string& guid, Json& appointment) {
        Json record = Record(handling, guid, appointment);
        if (fits(record)) {
            if (total >= offset && total < offset + limit) {
                list.PushBack(record, handling.Memory());
            }
            ++total;
        }
    });
    Put(handling, handling.data, "totalNum", total);
    SetMember(handling.data, "queryVisitorRecordResultList", std::move(list), handling.Memory());
}

void FindRecords(Handling& handling)
{
    const Json& body = *handling.body;
    const auto asked = [&](const char* key) { return AsText(Member(body, key)); };
    const std::int64_t state = AsInt(Member(body, "visitState"), -1);
    const std::int64_t size = std::max<std::int64_t>(AsInt(Member(body, "pageSize"), 100), 1);
    const std::int64_t page = std::max<std::int64_t>(AsInt(Member(body, "pageNo"), 1), 1);
    Records(
        handling,
        [&](const Json& record) {
            const auto holds = [&](const char* key, const char* path) {
                return AsText(AtPath(record, path)).find(asked(key)) != std::string_view::npos;
            };
            const auto is = [&](const char* key, const char* path) {
                return asked(key).empty() || AsText(AtPath(record, path)) == asked(key);
            };
            const std::string_view begin = AsText(Member(record, "beginTime"));
            return holds("visitorName", "visitor.visitorName") && holds("receptionistName", "receptionistName") &&
                   is("phone", "visitor.phone") && is("certificateNo", "visitor.certificateNo") &&
                   is("plateNo", "visitor.plateNo") && (state < 0 || AsInt(Member(record, "visitState")) == state) &&
                   (asked("beginTime").empty() || begin >= asked("beginTime")) &&
                   (asked("endTime").empty() || begin <= asked("endTime"));
        },
        (page - 1) * size, size);
}

void FailedRecords(Handling& handling)
{
    Records(
        handling, [](const Json& record) { return AsInt(Member(record, "downloadState")) == kFailed; }, 0,
        std::numeric_limits<std::int64_t>::max());
}

void ErrorsOfRecord(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const std::string& guid = handling.identifiers[0];
    const Json appointment = handling.Need(*handling.description.FindCollection(kAppointments), guid);
    Json errors(rapidjson::kArrayType);
    for (const std::string& device : AsInt(Member(appointment, "downloadState")) == kFailed
                                         ? DevicesOf(handling, appointment)
                                         : std::vector<std::string>()) {
        if (IsOffline(handling, device)) {
            const Json found = handling.Load("devices", device);
            Json error(rapidjson::kObjectType);
            Put(handling, error, "deviceGuid", device);
            Put(handling, error, "deviceName", AsText(found.IsObject() ? Member(found, "name") : nullptr));
            Put(handling, error, "errorCode", static_cast<std::int64_t>(Reason::kDeviceOffline));
            Put(handling, error, "errorMsg", ReasonText(Reason::kDeviceOffline));
            Put(handling, error, "errorTime", IsoTime(AsInt(Member(appointment, "_sentMs"))));
            errors.PushBack(error, memory);
        }
    }
    Json response(rapidjson::kObjectType);
    Put(handling, response, "recordGuid", guid);
    Put(handling, response, "visitorName", AsText(AtPath(appointment, "visitor.visitorName")));
    SetMember(response, "errorRecordList", std::move(errors), memory);
    SetMember(handling.data, "visitorErrorRecordResponse", std::move(response), memory);
}

/// Groups that an appointment names stay.
void RemoveGroups(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Json results(rapidjson::kArrayType);
    for (const Json& each : Elements(Member(*handling.body, "accessGroupGuidList"))) {
        const std::string list = "[" + PrintJson(each) + "]";
        const bool known = handling.store.Has(kGroups, AsText(&each));
        const bool used =
            handling.store.Count({kAppointments, {{"accessGroupGuidList", Test::kHasElement, StoreValue(list)}}}) > 0;
        const Reason reason = !known ? Reason::kUnknownGuid : used ? Reason::kInUse : Reason::kNone;
        if (reason == Reason::kNone) {
            handling.store.Erase(kGroups, AsText(&each));
        }
        Json result(rapidjson::kObjectType);
        Put(handling, result, "guid", AsText(&each));
        Put(handling, result, "resultCode", static_cast<std::int64_t>(reason));
        Put(handling, result, "resultMsg", ReasonText(reason));
        results.PushBack(result, memory);
    }
    Json result(rapidjson::kObjectType);
    SetMember(result, "accessGroupResultList", std::move(results), memory);
    SetMember(handling.data, "deleteAccessPointGroupResult", std::move(result), memory);
}

} // namespace

void AddVisitors(Services& services, double timeScale)
{
    services["visitors.settle"] = [timeScale](Handling& handling) { Settle(handling, timeScale); };
    services["visitors.add"] = AddAppointments;
    services["visitors.change"] = Change;
    services["visitors.send"] = Send;
    services["visitors.records"] = FindRecords;
    services["visitors.failedRecords"] = FailedRecords;
    services["visitors.errors"] = ErrorsOfRecord;
    services["visitors.removeGroups"] = RemoveGroups;
}

} // namespace nexwire::simulator
