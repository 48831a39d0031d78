#include <algorithm>
#include <charconv>
#include <cmath>

#include "src/Clock.h"
#include "src/Fields.h"
#include "src/Services.h"

// Security radars: zones that are armed in subsystems, and what a radar learns of the ground once a zone has changed.

namespace nexwire::simulator {
namespace {

constexpr const char* kRadars = "radarStates";
constexpr double kArmingMs = 3000.0;
constexpr double kLandformsMs = 20000.0;
constexpr double kEnvironmentMs = 60000.0;
constexpr std::int64_t kMostZones = 16;

enum : std::int64_t {
    kZones = 10003,
    kSetZone = 10004,
    kArm = 10006,
    kDisarm = 10007,
    kSubSystems = 10008,
    kMarks = 10009,
    kSetMarks = 10010,
    kLandforms = 10013,
    kLinkage = 10016,
    kSetLinkage = 10017,
    kEnvironment = 10018,
    kLearning = 10023,
};

[[noreturn]] void RefuseInput(const std::string& why)
{
    throw Refusal(Reason::kDeviceRefused, why);
}

class Radar {
public:
    Radar(Handling& handling, double timeScale)
        : handling_(handling), memory_(handling.Memory()), timeScale_(timeScale), guid_(handling.Identifier("1")),
          state_(handling.Load(kRadars, guid_))
    {
        if (state_.IsNull()) {
            state_ = Copy(*handling.description.FindCollection(kRadars)->defaults, memory_);
        }
    }

    std::string Answer(std::int64_t command, const std::string& condition, const std::string& input)
    {
        switch (command) {
        case kZones:
            return Wrapped("zoneListData", "zoneList", Zones());
        case kSetZone:
            SetZone(NumberOf(condition), Parsed(input));
            break;
        case kArm:
        case kDisarm:
            Arm(condition, command == kArm);
            break;
        case kSubSystems:
            return Wrapped("subSysListData", "subSysList", SubSystems());
        case kMarks:
            return Wrapped("virtualSceneryMarkCfgData", "virtualSceneryMarkCfg", Copy(State("marks"), memory_));
        case kSetMarks:
            Merge(State("marks"), Parsed(input).MemberBegin()->value);
            Changed();
            break;
        case kLandforms:
            return Wrapped("landformsLearningDataRe", "landformsLearning", Landforms(NumberOf(condition)));
        case kLinkage:
            return Wrapped("videoLinkageDataRe", "videoLinkage", Copy(Link(NumberOf(condition)), memory_));
        case kSetLinkage:
            SetLinkage(NumberOf(condition), Parsed(input));
            break;
        case kEnvironment:
            return Wrapped("environmentLearningDataRe", "environmentLearning", Environment());
        case kLearning:
            return Wrapped("learningStatusData", "learningStatus", Learning());
        default:
            throw Refusal(Reason::kUnknownCommand, std::to_string(command));
        }
        handling_.Save(kRadars, guid_, state_);
        return {};
    }

private:
    Json& State(const char* part) { return *Member(state_, part); }

    std::string Wrapped(const char* root, const char* member, Json value)
    {
        Json inner(rapidjson::kObjectType);
        SetMember(inner, member, std::move(value), memory_);
        Json document(rapidjson::kObjectType);
        SetMember(document, root, std::move(inner), memory_);
        return PrintJson(document);
    }

    /// The channel has held it against its structure already.
    Json Parsed(const std::string& input) { return handling_.Parse(input); }

    void Merge(Json& object, const Json& changes)
    {
        for (const auto& member : changes.GetObject()) {
            SetMember(object, AsText(&member.name), Copy(member.value, memory_), memory_);
        }
    }

    static std::int64_t NumberOf(const std::string& condition)
    {
        std::int64_t number = 0;
        const auto parsed = std::from_chars(condition.data(), condition.data() + condition.size(), number);
        if (parsed.ec != std::errc() || parsed.ptr != condition.data() + condition.size() || number < 1 ||
            number > kMostZones) {
            RefuseInput("there is no number \"" + condition + "\"");
        }
        return number;
    }

    static Json* Numbered(Json& list, const char* member, std::int64_t number)
    {
        for (Json& each : list.GetArray()) {
            if (AsInt(Member(each, member)) == number) {
                return &each;
            }
        }
        return nullptr;
    }

    Json* FindZone(std::int64_t number)
    {
        for (Json& zone : State("zones").GetArray()) {
            if (AsInt(AtPath(zone, "zoneIn.zoneNo")) == number) {
                return &zone;
            }
        }
        return nullptr;
    }

    Json& NeedZone(std::int64_t number)
    {
        Json* zone = FindZone(number);
        if (zone == nullptr) {
            RefuseInput("there is no zone " + std::to_string(number));
        }
        return *zone;
    }

    bool IsOn(std::int64_t subSystem)
    {
        Json* system = Numbered(State("subSystems"), "subSysNo", subSystem);
        return system != nullptr && Member(*system, "armedMs") != nullptr;
    }

    Json Zones()
    {
        Json list = Copy(State("zones"), memory_);
        for (Json& zone : list.GetArray()) {
            DropInternals(zone);
        }
        return list;
    }

    /// The ground is learned anew.
    void Changed() { Fields(state_, memory_).Number("changedMs", handling_.nowMs); }

    void SetZone(std::int64_t number, const Json& input)
    {
        const Json& sent = input.MemberBegin()->value;
        Json* known = FindZone(number);
        Json zone(rapidjson::kObjectType);
        if (known != nullptr) {
            zone = Copy(*Member(*known, "zoneIn"), memory_);
            if (IsOn(AsInt(Member(zone, "subSysNo")))) {
                throw Refusal(Reason::kInUse, "the zone is armed");
            }
        }
        Merge(zone, sent);
        const bool line = AsText(Member(zone, "zoneType")) == "line";
        const auto corners = Elements(Member(zone, "pointList")).Size();
        if (line ? corners != 2 : corners < 3) {
            RefuseInput(line ? "a line has two ends" : "a zone has three corners at least");
        }
        if (Numbered(State("subSystems"), "subSysNo", AsInt(Member(zone, "subSysNo"))) == nullptr) {
            RefuseInput("there is no subsystem " + std::to_string(AsInt(Member(zone, "subSysNo"))));
        }
        Fields(zone, memory_).Number("zoneNo", number);
        Json entry(rapidjson::kObjectType);
        Fields(entry, memory_).Value("zoneIn", std::move(zone)).Text("status", "idle");
        Fields(entry, memory_).Number("_changedMs", handling_.nowMs);
        if (known != nullptr) {
            *known = std::move(entry);
        } else {
            State("zones").PushBack(entry, memory_);
        }
        Changed();
    }

    void Arm(const std::string& condition, bool on)
    {
        const std::int64_t wanted = condition.empty() ? 0 : NumberOf(condition);
        if (wanted != 0 && Numbered(State("subSystems"), "subSysNo", wanted) == nullptr) {
            RefuseInput("there is no subsystem " + condition);
        }
        for (Json& system : State("subSystems").GetArray()) {
            if (wanted != 0 && AsInt(Member(system, "subSysNo")) != wanted) {
                continue;
            }
            if (!on) {
                system.RemoveMember("armedMs");
            } else if (Member(system, "armedMs") == nullptr) {
                Fields(system, memory_).Number("armedMs", handling_.nowMs);
            }
        }
    }

    Json SubSystems()
    {
        Json list = Copy(State("subSystems"), memory_);
        for (Json& system : list.GetArray()) {
            const Json* since = Member(system, "armedMs");
            const bool arming = since != nullptr && Done(AsInt(since), kArmingMs) < kArmingMs;
            Fields(system, memory_)
                .Text("armStatus", since == nullptr ? "disarmed"
                                   : arming         ? "arming"
                                                    : "armed")
                .Flag("alarm", false);
            system.RemoveMember("armedMs");
        }
        return list;
    }

    /// How much of some work has been done since then, in milliseconds.
    double Done(std::int64_t sinceMs, double wholeMs) const
    {
        return std::clamp(static_cast<double>(handling_.nowMs - sinceMs) * timeScale_, 0.0, wholeMs);
    }

    std::string DoneAt(std::int64_t sinceMs, double wholeMs) const
    {
        return IsoTime(sinceMs + static_cast<std::int64_t>(wholeMs / timeScale_));
    }

    Json Landforms(std::int64_t number)
    {
        const Json& zone = NeedZone(number);
        const Json* since = Member(zone, "_changedMs");
        const double doneMs = since == nullptr ? kLandformsMs : Done(AsInt(since), kLandformsMs);
        const bool done = doneMs >= kLandformsMs;
        const Json* corners = AtPath(zone, "zoneIn.pointList");
        Json answer(rapidjson::kObjectType);
        Fields(answer, memory_)
            .Number("zoneNo", number)
            .Text("status", done ? "done" : "learning")
            .Number("progress", PercentOf(doneMs, kLandformsMs))
            .Text("learnedTime", !done              ? std::string()
                                 : since == nullptr ? std::string(AsText(&State("installedTime")))
                                                    : DoneAt(AsInt(since), kLandformsMs))
            .Value("outlineList", done && corners != nullptr ? Copy(*corners, memory_) : Json(rapidjson::kArrayType));
        return answer;
    }

    Json& Link(std::int64_t number)
    {
        NeedZone(number);
        Json& links = State("links");
        if (Numbered(links, "zoneNo", number) == nullptr) {
            Json fresh = Fresh(handling_, *handling_.description.Library().Find("VideoLinkage"));
            Fields(fresh, memory_).Number("zoneNo", number).Flag("enable", false);
            links.PushBack(fresh, memory_);
        }
        return *Numbered(links, "zoneNo", number);
    }

    /// The camera, or only its switch.
    void SetLinkage(std::int64_t number, const Json& input)
    {
        Json& link = Link(number);
        Merge(link, input.MemberBegin()->value);
        Fields(link, memory_).Number("zoneNo", number);
        if (AsBool(Member(link, "enable")) && AsText(Member(link, "cameraGuid")).empty()) {
            RefuseInput("no camera looks into zone " + std::to_string(number));
        }
    }

    Json Environment()
    {
        Json answer = Copy(State("environment"), memory_);
        const Json* since = Member(state_, "changedMs");
        const bool done = since != nullptr && Done(AsInt(since), kEnvironmentMs) >= kEnvironmentMs;
        Fields(answer, memory_).Text("lastLearnTime", done ? DoneAt(AsInt(since), kEnvironmentMs) : std::string());
        return answer;
    }

    Json Learning()
    {
        const Json* since = Member(state_, "changedMs");
        const double doneMs = since == nullptr ? 0.0 : Done(AsInt(since), kEnvironmentMs);
        const bool learns = since != nullptr && doneMs < kEnvironmentMs;
        Json answer(rapidjson::kObjectType);
        Fields(answer, memory_)
            .Text("status", since == nullptr ? "idle"
                            : learns         ? "learning"
                                             : "done")
            .Number("progress", PercentOf(doneMs, kEnvironmentMs))
            .Number("remaining",
                    learns ? static_cast<int>(std::ceil((kEnvironmentMs - doneMs) / timeScale_ / 1000)) : 0);
        return answer;
    }

    Handling& handling_;
    Allocator& memory_;
    const double timeScale_;
    const std::string guid_;
    Json state_;
};

} // namespace

DeviceService Radars(double timeScale)
{
    return
        [timeScale](Handling& handling, std::int64_t command, const std::string& condition, const std::string& input) {
            return Radar(handling, timeScale).Answer(command, condition, input);
        };
}

// Three targets that wander to and fro before the radar, a handful of echoes each.
std::string PointCloud(Handling& handling)
{
    constexpr double kPi = 3.14159265358979323846;
    Allocator& memory = handling.Memory();
    const double seconds = static_cast<double>(handling.nowMs % 3600000) / 1000.0;
    const auto number = [](double value) { return Json(std::round(value * 100.0) / 100.0); };
    Json points(rapidjson::kArrayType);
    for (int target = 1; target <= 3; ++target) {
        const double angle = kPi / 3 * std::sin(seconds / 10 + target);
        const double range = 12.0 + 5 * target + 3 * std::sin(seconds / 4 + target);
        for (int echo = 0; echo < 6; ++echo) {
            const double away = range + 0.15 * (echo % 3);
            Json point(rapidjson::kObjectType);
            Fields(point, memory)
                .Value("x", number(away * std::sin(angle)))
                .Value("y", number(away * std::cos(angle)))
                .Value("z", number(0.3 * echo))
                .Value("speed", number(0.75 * std::cos(seconds / 4 + target)))
                .Number("intensity", 220 - 20 * echo)
                .Number("targetNo", target);
            points.PushBack(point, memory);
        }
    }
    Json cloud(rapidjson::kObjectType);
    Fields(cloud, memory)
        .Text("time", IsoTime(handling.nowMs))
        .Number("frameNo", handling.nowMs / 100 % 1000000)
        .Value("pointList", std::move(points));
    Json document(rapidjson::kObjectType);
    SetMember(document, "pointCloudStruct", std::move(cloud), memory);
    return PrintJson(document);
}

} // namespace nexwire::simulator
