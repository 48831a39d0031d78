#include <algorithm>
#include <array>

#include "src/Clock.h"
#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kJobs = "_jobs";
constexpr double kUsualMs = 500.0; // What one element takes.

enum State { kWaiting, kRunning, kDone, kFailed, kStopped, kStates };

// Words by which a vocabulary tells what a state means.
constexpr std::array<std::array<const char*, 5>, kStates> kWords = {{
    {"wait", "not start", "not yet", "queue", "ready"},
    {"running", "ing", "progress", "under way", "run"},
    {"success", "done", "finish", "complete", "sent"},
    {"fail", "error", "refused", "failed", "wrong"},
    {"stop", "cancel", "abort", "pause", "suspend"},
}};

bool Mentions(const WireValue& value, const char* word)
{
    const std::string& text = value.meaning.empty() ? value.text : value.meaning;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (BeginsWith(std::string_view(text).substr(at), word)) {
            return true;
        }
    }
    return false;
}

Json StateValue(Handling& handling, const WireMember& member, State state)
{
    for (const char* word : kWords[state]) {
        for (const WireValue& value : member.values) {
            if (Mentions(value, word)) {
                return member.kind == WireKind::kText ? MakeText(value.text, handling.Memory()) : Json(value.number);
            }
        }
    }
    const Json* states = Member(*handling.action->plan, "states");
    if (states != nullptr && states->IsArray() && states->Size() == kStates) {
        return Copy((*states)[static_cast<rapidjson::SizeType>(state)], handling.Memory());
    }
    return member.IsNumber() ? Json(static_cast<int>(state) + 1) : MakeText(kWords[state][0], handling.Memory());
}

bool IsIdentifier(std::string_view key)
{
    return EndsWith(key, "guid") || EndsWith(key, "id");
}

/// A job at one moment.
struct View {
    Json job;
    std::int64_t total = 0;
    std::int64_t through = 0;
    std::int64_t failed = 0;
    int percent = 0;
    State state = kRunning;
    double elapsedMs = 0;
    double itemMs = 1; ///< What one element takes.
};

State StateOf(const View& view, std::int64_t index)
{
    const Json& item = (*Member(view.job, "items"))[static_cast<rapidjson::SizeType>(index)];
    if (index < view.through) {
        return AsInt(Member(item, "code")) == 0 ? kDone : kFailed;
    }
    return view.state == kStopped ? kStopped : index == view.through ? kRunning : kWaiting;
}

View Look(Handling& handling, const std::string& key)
{
    View view;
    view.job = handling.Load(kJobs, key);
    const Json* stopped = Member(view.job, "stoppedMs");
    const std::int64_t until = stopped == nullptr ? handling.nowMs : AsInt(stopped);
    const Json& items = *Member(view.job, "items");
    view.total = items.Size();
    view.elapsedMs = static_cast<double>(std::max<std::int64_t>(until - AsInt(Member(view.job, "startedMs")), 0));
    view.itemMs = Member(view.job, "itemMs")->GetDouble();
    const double elements = view.elapsedMs / view.itemMs;
    view.through = elements >= static_cast<double>(view.total) ? view.total : static_cast<std::int64_t>(elements);
    for (std::int64_t i = 0; i < view.through; ++i) {
        view.failed += AsInt(Member(items[static_cast<rapidjson::SizeType>(i)], "code")) == 0 ? 0 : 1;
    }
    view.percent = view.total == 0 ? 100 : PercentOf(view.elapsedMs, static_cast<double>(view.total) * view.itemMs);
    view.state = view.through == view.total ? (view.failed > 0 ? kFailed : kDone)
                 : stopped != nullptr       ? kStopped
                                            : kRunning;
    return view;
}

Json FillIn(Handling& handling, const WireStructure& structure, const View& view, std::int64_t index);

// One member of the answer, for the whole job or for one of its elements.
Json Value(Handling& handling, const WireMember& member, const View& view, std::int64_t index)
{
    Allocator& memory = handling.Memory();
    const bool whole = index < 0;
    const Json* item = whole ? nullptr : &(*Member(view.job, "items"))[static_cast<rapidjson::SizeType>(index)];
    const State state = whole ? view.state : StateOf(view, index);
    const std::int64_t code = whole ? 0 : state == kFailed ? AsInt(Member(*item, "code")) : 0;
    const std::string& key = member.key;
    if (member.kind == WireKind::kStructList && member.structure != nullptr) {
        Json list(rapidjson::kArrayType);
        for (std::int64_t i = 0; whole && i < view.total; ++i) {
            if (BeginsWith(key, "fail") && StateOf(view, i) != kFailed) {
                continue;
            }
            list.PushBack(FillIn(handling, *member.structure, view, i), memory);
        }
        return list;
    }
    if (member.kind == WireKind::kStruct && member.structure != nullptr) {
        return FillIn(handling, *member.structure, view, index);
    }
    if (member.IsList()) {
        return Json(rapidjson::kArrayType);
    }
    if (EndsWith(key, "state") || EndsWith(key, "status")) {
        return StateValue(handling, member, state);
    }
    if (member.IsNumber()) {
        const double ofItem = view.elapsedMs - static_cast<double>(index) * view.itemMs;
        return BeginsWith(key, "success")                             ? Json(view.through - view.failed)
               : BeginsWith(key, "fail")                              ? Json(view.failed)
               : BeginsWith(key, "total") || Same(key, "count")       ? Json(view.total)
               : BeginsWith(key, "finish") || BeginsWith(key, "hand") ? Json(view.through)
               : EndsWith(key, "progress") || EndsWith(key, "percent")
                   ? Json(whole ? view.percent : PercentOf(ofItem, view.itemMs))
                   : Json(EndsWith(key, "code") || Same(key, "result") ? code : 0);
    }
    if (member.kind == WireKind::kBool) {
        const bool over = state == kDone || state == kFailed || state == kStopped;
        return Json(Same(key, "success") || Same(key, "isSuccess") ? state == kDone : over);
    }
    const Json* own = item == nullptr ? nullptr : Member(*item, key);
    if (own != nullptr && own->IsString()) {
        return Copy(*own, memory);
    }
    if (IsIdentifier(key)) {
        return MakeText(AsText(Member(whole ? view.job : *item, "guid")), memory);
    }
    return MakeText(code == 0 ? "" : ReasonText(static_cast<Reason>(code)), memory);
}

Json FillIn(Handling& handling, const WireStructure& structure, const View& view, std::int64_t index)
{
    Json object(rapidjson::kObjectType);
    for (const WireMember& member : structure.members) {
        SetMember(object, member.key, Value(handling, member, view, index), handling.Memory());
    }
    return object;
}

std::string Key(const Handling& handling, std::string_view guid)
{
    return handling.action->planName + "/" + std::string(guid);
}

// Identifiers that a body names, its own before those of objects inside it.
void Named(const Json& body, std::vector<std::string>& names)
{
    for (const auto& member : body.GetObject()) {
        const std::string_view text = AsText(&member.value);
        if (!text.empty() && IsIdentifier(AsText(&member.name))) {
            names.emplace_back(text);
        }
    }
    for (const auto& member : body.GetObject()) {
        if (member.value.IsObject()) {
            Named(member.value, names);
        }
    }
}

std::vector<std::string> Candidates(const Handling& handling)
{
    std::vector<std::string> names(handling.identifiers.rbegin(), handling.identifiers.rend());
    if (handling.body != nullptr && handling.body->IsObject()) {
        Named(*handling.body, names);
    }
    return names;
}

// An identifier that the answer hands out and nobody named before.
bool HandsOut(const WireStructure* result, const WireStructure* body)
{
    return result != nullptr &&
           std::any_of(result->members.begin(), result->members.end(), [&](const WireMember& member) {
               return member.kind == WireKind::kStruct ? HandsOut(member.structure, body)
                                                       : member.kind == WireKind::kText && IsIdentifier(member.key) &&
                                                             (body == nullptr || body->Find(member.key) == nullptr);
           });
}

/// Hands over the lines of the file that came last as objects, by the names of its first line; null for one that does
/// not fit.
void Rows(Handling& handling, const std::string& plan, const std::function<void(const Json&)>& each)
{
    const Json* done = Member(*handling.action->plan, "done");
    const Collection* collection =
        done == nullptr ? nullptr : handling.description.FindCollection(AsText(Member(*done, "collection")));
    std::vector<std::string> names;
    for (const std::vector<std::string>& cells : LastTable(handling, plan)) {
        if (names.empty()) {
            names = cells;
            continue;
        }
        Json row = cells.size() == names.size() ? Json(rapidjson::kObjectType) : Json();
        for (std::size_t i = 0; row.IsObject() && i < cells.size(); ++i) {
            const WireMember* member = collection == nullptr ? nullptr : collection->Find(names[i]);
            const bool number = member != nullptr && member->IsNumber();
            SetMember(row, names[i], number ? Json(std::atoi(cells[i].c_str())) : MakeText(cells[i], handling.Memory()),
                      handling.Memory());
        }
        each(row);
    }
}

void Start(Handling& handling, double timeScale)
{
    Allocator& memory = handling.Memory();
    const Json& plan = *handling.action->plan;
    const std::vector<std::string> named = Candidates(handling);
    const bool fresh = named.empty() || HandsOut(handling.endpoint.result, handling.endpoint.body);
    const std::string guid = fresh ? NewGuid() : named.front();
    Json items(rapidjson::kArrayType);
    const Json* list = Member(plan, "items") == nullptr || handling.body == nullptr
                           ? nullptr
                           : AtPath(*handling.body, AsText(Member(plan, "items")));
    const Json* fail = Member(plan, "fail");
    const auto put = [&](const Json& element) {
        Json item = element.IsObject() ? Copy(element, memory) : Json(rapidjson::kObjectType);
        std::string own(AsText(&element));
        if (element.IsObject()) {
            std::vector<std::string> names;
            Named(element, names);
            own = names.empty() ? std::string() : names.front();
        }
        SetMember(item, "guid", MakeText(own, memory), memory);
        Reason reason = OutOfReach(handling, own) == Reason::kDeviceOffline ? Reason::kDeviceOffline : Reason::kNone;
        reason = element.IsNull() ? Reason::kWrongType : reason;
        for (const Json& number : Elements(fail)) {
            reason = AsInt(&number) == std::int64_t{items.Size()} + 1 ? Reason::kDeviceRefused : reason;
        }
        SetMember(item, "code", Json(static_cast<int>(reason)), memory);
        items.PushBack(item, memory);
    };
    if (const Json* rows = Member(plan, "rows")) {
        Rows(handling, std::string(AsText(rows)), put);
    } else if (list != nullptr && list->IsArray()) {
        for (const Json& element : list->GetArray()) {
            put(element);
        }
    } else {
        put(MakeText(guid, memory));
    }
    const Json* step = Member(plan, "itemMs");
    Json job(rapidjson::kObjectType);
    SetMember(job, "guid", MakeText(guid, memory), memory);
    SetMember(job, "startedMs", Json(handling.nowMs), memory);
    SetMember(job, "itemMs", Json(std::max((step == nullptr ? kUsualMs : step->GetDouble()) / timeScale, 1e-6)),
              memory);
    SetMember(job, "items", std::move(items), memory);
    for (const std::string& key : {Key(handling, guid), Key(handling, "latest")}) {
        handling.Save(kJobs, key, job);
    }
    handling.Define("guid", MakeText(guid, memory));
    Compose(handling);
    if (const Json* answer = Member(plan, "answer")) {
        handling.data = handling.Fill(*answer);
    }
}

std::string Locate(Handling& handling)
{
    const std::vector<std::string> names = Candidates(handling);
    for (const std::string& name : names) {
        if (handling.store.Has(kJobs, Key(handling, name))) {
            return Key(handling, name);
        }
    }
    if (!names.empty() || !handling.store.Has(kJobs, Key(handling, "latest"))) {
        throw Refusal(Reason::kUnknownGuid, names.empty() ? handling.action->planName : "\"" + names.front() + "\"");
    }
    const Json latest = handling.Load(kJobs, Key(handling, "latest"));
    return Key(handling, AsText(Member(latest, "guid")));
}

void Effect(Handling& handling, View& view, const std::string& key)
{
    const Json* done = Member(*handling.action->plan, "done");
    const std::int64_t settled = AsInt(Member(view.job, "settled"));
    if (done == nullptr || view.through <= settled) {
        return;
    }
    const std::string collection(AsText(Member(*done, "collection")));
    const bool add = AsBool(Member(*done, "add"));
    for (std::int64_t i = settled; i < view.through; ++i) {
        const Json& item = (*Member(view.job, "items"))[static_cast<rapidjson::SizeType>(i)];
        const std::string guid = add ? NewGuid() : std::string(AsText(Member(item, "guid")));
        Json document = add ? Copy(item, handling.Memory()) : handling.Load(collection, guid);
        if (StateOf(view, i) != kDone || !document.IsObject()) {
            continue;
        }
        handling.Name("item", item);
        if (add) {
            document.RemoveMember("guid");
            document.RemoveMember("code");
            SetMember(document, handling.description.FindCollection(collection)->key, MakeText(guid, handling.Memory()),
                      handling.Memory());
        }
        const Json values = handling.Fill(*Member(*done, "set"));
        for (const auto& member : values.GetObject()) {
            SetMember(document, AsText(&member.name), Copy(member.value, handling.Memory()), handling.Memory());
        }
        handling.Save(collection, guid, document);
    }
    SetMember(view.job, "settled", Json(view.through), handling.Memory());
    handling.Save(kJobs, key, view.job);
}

void Progress(Handling& handling)
{
    const std::string key = Locate(handling);
    View view = Look(handling, key);
    Effect(handling, view, key);
    if (handling.endpoint.result != nullptr) {
        handling.data = FillIn(handling, *handling.endpoint.result, view, -1);
    }
}

void Stop(Handling& handling)
{
    const std::string key = Locate(handling);
    View view = Look(handling, key);
    Effect(handling, view, key);
    if (view.state == kRunning) {
        SetMember(view.job, "stoppedMs", Json(handling.nowMs), handling.Memory());
        handling.Save(kJobs, key, view.job);
    }
    Compose(handling);
}

} // namespace

void EachJob(Handling& handling, const WorkSink& each)
{
    static constexpr const char* kNames[kStates] = {"waiting", "running", "done", "failed", "stopped"};
    std::vector<std::string> keys;
    handling.store.Select({kJobs}, [&](const std::string& key, const std::string&) { keys.push_back(key); });
    for (const std::string& key : keys) {
        if (EndsWith(key, "/latest")) {
            continue; // Again, under another name.
        }
        const View view = Look(handling, key);
        each({std::string(AsText(Member(view.job, "guid"))), key.substr(0, key.find('/')), "", kNames[view.state],
              view.through, view.total, view.percent});
    }
}

void AddJobs(Services& services, double timeScale)
{
    services["job.start"] = [timeScale](Handling& handling) { Start(handling, timeScale); };
    services["job.progress"] = Progress;
    services["job.stop"] = Stop;
}

} // namespace nexwire::simulator
