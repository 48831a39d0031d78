// Visitors: from an appointment over its permission on devices to the record of the visit.

#include <algorithm>
#include <limits>

#include "src/Register.h"
#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kAppointments = "appointments";
constexpr const char* kGroups = "visitorGroups";
constexpr const char* kSettings = "_visitorSettings";
constexpr double kSendMs = 1000.0;

enum State : std::int64_t { kWaiting = 0, kArrived = 1, kLeft = 2, kExpired = 3 };
enum Download : std::int64_t { kNothing = 0, kQueued = 1, kSending = 2, kSent = 3, kFailed = 4 };

Json Settings(Handling& handling)
{
    Json settings = handling.Load(kSettings, "basic");
    return settings.IsObject() ? std::move(settings)
                               : handling.Fill(*handling.description.FindCollection(kSettings)->defaults);
}

/// Devices that the groups of an appointment lead to.
std::vector<std::string> DevicesOf(Handling& handling, const Json& appointment)
{
    std::vector<std::string> devices;
    for (const Json& group : Elements(Member(appointment, "accessGroupGuidList"))) {
        const Json found = handling.Load(kGroups, AsText(&group));
        for (const Json& point : Elements(Member(found, "accessPointList"))) {
            const std::string device(AsText(Member(point, "deviceGuid")));
            if (std::find(devices.begin(), devices.end(), device) == devices.end()) {
                devices.push_back(device);
            }
        }
    }
    return devices;
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
            const bool failed = std::any_of(devices.begin(), devices.end(), [&](const std::string& device) {
                return OutOfReach(handling, device) != Reason::kNone;
            });
            next = passed < sendMs / 2 ? download : passed < sendMs ? kSending : failed ? kFailed : kSent;
        }
        const bool expired = AsInt(Member(appointment, "appointmentState")) == kWaiting &&
                             AsText(Member(appointment, "visitEndTime")) < now;
        if (next != download || expired) {
            Fields fields(appointment, handling.Memory());
            fields.Number("downloadState", next);
            if (expired) {
                fields.Number("appointmentState", kExpired);
            }
            handling.Save(kAppointments, guid, appointment);
        }
    });
}

void StartDownload(Handling& handling, Json& appointment)
{
    Fields(appointment, handling.Memory())
        .Number("downloadState", DevicesOf(handling, appointment).empty() ? kNothing : kQueued)
        .Number("_sentMs", handling.nowMs);
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
    ForEach(
        handling, "appointmentList", handling.data, "addAppointmentResultList", [&](const Json& element, Json& result) {
            Fields(result, memory).Text("visitorName", AsText(AtPath(element, "visitor.visitorName")));
            Check(handling, element);
            const std::string guid = NewGuid();
            Json appointment = Copy(element, memory);
            Json& visitor = *Member(appointment, "visitor");
            if (AsText(Member(visitor, "visitorGuid")).empty()) {
                Fields(visitor, memory).Text("visitorGuid", NewGuid());
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
            Fields(appointment, memory)
                .Text("appointmentGuid", guid)
                .Text("visitCode", code)
                .Number("appointmentState", kWaiting)
                .Number("downloadState", kNothing)
                .Text("createTime", IsoTime(handling.nowMs));
            if (AsBool(Member(settings, "autoDownload"), true)) {
                StartDownload(handling, appointment);
            }
            handling.Save(kAppointments, guid, appointment);
            Fields(result, memory).Text("appointmentGuid", guid).Same("visitorGuid", visitor).Text("visitCode", code);
        });
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
        Fields(appointment, handling.Memory())
            .Text(after == kArrived ? "arriveTime" : "leaveTime", IsoTime(handling.nowMs));
    }
    handling.Save(kAppointments, guid, appointment);
}

void Send(Handling& handling)
{
    const bool takesOff = AsInt(Member(*handling.body, "operateType")) == 1;
    for (const Json& each : Elements(Member(*handling.body, "appointmentGuidList"))) {
        Json appointment = handling.Need(*handling.description.FindCollection(kAppointments), AsText(&each));
        if (takesOff) {
            Fields(appointment, handling.Memory()).Number("downloadState", kNothing);
        } else {
            StartDownload(handling, appointment);
        }
        handling.Save(kAppointments, AsText(&each), appointment);
    }
}

// ---- Records ----

Json Record(Handling& handling, const std::string& guid, const Json& appointment)
{
    const auto first = [&](const char* key, const char* otherwise) {
        const std::string_view text = AsText(Member(appointment, key));
        return text.empty() ? AsText(Member(appointment, otherwise)) : text;
    };
    const std::int64_t state = AsInt(Member(appointment, "appointmentState"));
    const bool late = state == kArrived && AsText(Member(appointment, "visitEndTime")) < IsoTime(handling.nowMs);
    constexpr std::int64_t kOverdue = 3;
    return Fields(handling.Memory())
        .Text("recordGuid", guid)
        .Same("appointmentGuid", appointment)
        .Same("visitor", appointment)
        .Same("receptionistGuid", appointment)
        .Same("receptionistName", appointment)
        .Same("downloadState", appointment)
        .Same("accessGroupGuidList", appointment)
        .Text("beginTime", first("arriveTime", "visitBeginTime"))
        .Text("endTime", first("leaveTime", "visitEndTime"))
        .Number("visitState", late                ? kOverdue
                              : state == kArrived ? 1
                              : state == kLeft    ? 2
                                                  : 0)
        .Take();
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
    Fields(handling.data, handling.Memory())
        .Number("totalNum", total)
        .Value("queryVisitorRecordResultList", std::move(list));
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
        if (const Reason reason = OutOfReach(handling, device); reason != Reason::kNone) {
            errors.PushBack(Fields(memory)
                                .Text("deviceGuid", device)
                                .Text("deviceName", AsText(Member(handling.Load("devices", device), "name")))
                                .Number("errorCode", static_cast<int>(reason))
                                .Text("errorMsg", ReasonText(reason))
                                .Text("errorTime", IsoTime(AsInt(Member(appointment, "_sentMs"))))
                                .Take(),
                            memory);
        }
    }
    SetMember(handling.data, "visitorErrorRecordResponse",
              Fields(memory)
                  .Text("recordGuid", guid)
                  .Text("visitorName", AsText(AtPath(appointment, "visitor.visitorName")))
                  .Value("errorRecordList", std::move(errors))
                  .Take(),
              memory);
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
}

} // namespace nexwire::simulator
