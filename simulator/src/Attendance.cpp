#include <algorithm>
#include <map>
#include <set>

#include "src/AttendanceCalculation.h"
#include "src/Clock.h"
#include "src/Fields.h"
#include "src/Register.h"
#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kArrangements = "arrangements";
constexpr const char* kRecords = "clockRecords";
constexpr const char* kPersons = "persons";
constexpr const char* kOrganisations = "organizations";
constexpr const char* kTask = "attendanceTask"; // The last calculation.
constexpr int kMostDays = 366;
constexpr double kMsPerDay = 5.0; // What a person's day takes.

std::string Text(const Json& object, std::string_view member)
{
    return std::string(AsText(Member(object, member)));
}

bool Holds(const Json* list, const std::vector<std::string>& any)
{
    const auto elements = Elements(list);
    return std::any_of(elements.begin(), elements.end(),
                       [&](const Json& each) { return std::find(any.begin(), any.end(), AsText(&each)) != any.end(); });
}

/// Days that the body names.
void Days(const Json& body, int& first, int& last)
{
    if (!ParseDate(Text(body, "startDate"), first) || !ParseDate(Text(body, "endDate"), last) || last < first ||
        last - first >= kMostDays) {
        throw Refusal(Reason::kOutOfRange, "startDate and endDate: up to 366 days");
    }
}

// ---- Arrangements ----

void NeedDate(const Json& object, const char* member)
{
    int day = 0;
    if (!ParseDate(Text(object, member), day)) {
        throw Refusal(Reason::kOutOfRange, member);
    }
}

/// Takes the arrangements of an organisation's persons away.
void ForgetPersonal(Handling& handling, const std::string& org)
{
    handling.Each({kPersons, {{"orgGuid", Test::kEquals, StoreValue(org)}}}, [&](const std::string& person, Json&) {
        handling.Each({kArrangements, {{"owner", Test::kEquals, StoreValue(person)}}},
                      [&](const std::string& key, Json&) { handling.store.Erase(kArrangements, key); });
    });
}

/// Each arrangement is a document of its own, by owner and first day.
void Arrange(Handling& handling)
{
    const Json* const inner = Member(*handling.body, "arrange");
    NeedDate(inner != nullptr ? *inner : *handling.body, "startDate");
    if (AsBool(Member(*handling.body, "overridePersonal"))) {
        const std::string org = handling.identifiers.back();
        const bool below = AsBool(Member(*handling.body, "includeChildOrg"));
        for (const std::string& each : below ? Register(handling).Subtree(org) : std::vector<std::string>{org}) {
            ForgetPersonal(handling, each);
        }
    }
    Add(handling);
}

/// Single days, a document an owner.
void ArrangeDays(Handling& handling)
{
    for (const Json& single : Elements(Member(*handling.body, "tempShiftList"))) {
        NeedDate(single, "date");
    }
    Keep(handling);
}

/// An owner's arrangements; without any those of the organisation above.
void ReadArrangement(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const std::string owner = handling.identifiers.back();
    const Json person = handling.Load(kPersons, owner);
    const std::string org = person.IsObject() ? Text(person, "orgGuid") : owner;
    const Json unit = handling.Load(kOrganisations, org);
    Json list(rapidjson::kArrayType);
    std::string at = owner;
    bool inherited = false;
    while (true) {
        handling.Each({kArrangements, {{"owner", Test::kEquals, StoreValue(at)}}, "startDate"},
                      [&](const std::string&, Json& each) {
                          if (at == owner || at == org || AsBool(Member(each, "includeChildOrg"))) {
                              list.PushBack(*Member(each, "arrange"), memory);
                          }
                      });
        inherited = at != owner;
        const Json above = handling.Load(kOrganisations, at);
        at = at == owner && person.IsObject() ? org : Text(above, "parOrgGuid");
        if (!list.Empty() || at.empty()) {
            break;
        }
    }
    const Json own = handling.Load("temporaryArrangements", owner);
    Json document(rapidjson::kObjectType);
    Fields(document, memory)
        .Text("personnelName", Text(person, "personnelName"))
        .Text("orgName", Text(unit, "name"))
        .Flag("inherited", inherited && !list.Empty())
        .Value("arrangeList", std::move(list))
        .Same("tempShiftList", own);
    handling.Define("doc", std::move(document));
    Compose(handling);
}

/// How far each organisation is arranged on the days asked for.
void ArrangeStatus(Handling& handling)
{
    Allocator& memory = handling.Memory();
    int first = 0;
    int last = 0;
    Days(*handling.body, first, last);
    Calculation calculation(handling);
    const std::string name = Text(*handling.body, "personnelName");
    struct Counts {
        int persons = 0, arranged = 0, temporary = 0;
    };
    std::map<std::string, Counts> counts;
    handling.Each({kPersons}, [&](const std::string&, Json& person) {
        if (Text(person, "personnelName").find(name) == std::string::npos) {
            return;
        }
        Counts& of = counts[Text(person, "orgGuid")];
        bool arranged = true;
        bool temporary = false;
        for (int day = first; day <= last; ++day) {
            const DayPlan plan = calculation.PlanOf(person, day);
            arranged = arranged && plan.arranged;
            temporary = temporary || plan.temporary;
        }
        ++of.persons;
        of.arranged += arranged ? 1 : 0;
        of.temporary += temporary ? 1 : 0;
    });
    Selection page{kOrganisations};
    Page(handling, page);
    Json docs(rapidjson::kArrayType);
    handling.Each(page, [&](const std::string& org, Json& organisation) {
        const Counts& of = counts[org];
        docs.PushBack(Fields(memory)
                          .Text("orgID", org)
                          .Text("orgName", Text(organisation, "name"))
                          .Number("personTotal", of.persons)
                          .Number("arrangedTotal", of.arranged)
                          .Number("temporaryTotal", of.temporary)
                          .Take(),
                      memory);
    });
    handling.Define("docs", std::move(docs));
    handling.Define("total", Json(handling.store.Count({kOrganisations})));
    Compose(handling);
}

// ---- Kinds of leave ----

void LeaveTypes(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const std::string wanted = Text(*handling.body, "mainTypeID");
    Json list(rapidjson::kArrayType);
    handling.Each({"mainTypes"}, [&](const std::string& id, Json& main) {
        if (!wanted.empty() && wanted != id) {
            return;
        }
        Json below(rapidjson::kArrayType);
        handling.Each({"subTypes", {{"mainTypeID", Test::kEquals, StoreValue(id)}}},
                      [&](const std::string&, Json& each) { below.PushBack(each, memory); });
        Fields(main, memory).Value("vacateSubInfoList", std::move(below));
        list.PushBack(main, memory);
    });
    handling.Define("docs", std::move(list));
    Compose(handling);
}

// ---- Calculation ----

void Calculate(Handling& handling, double timeScale)
{
    int first = 0;
    int last = 0;
    Days(*handling.body, first, last);
    const Json* const people = Member(*handling.body, "personnelIDList");
    const Json* const orgs = Member(*handling.body, "orgIDList");
    const bool all = Elements(people).Empty() && Elements(orgs).Empty();
    Calculation calculation(handling);
    std::int64_t count = 0;
    handling.Each({kPersons}, [&](const std::string& id, Json& person) {
        if (Holds(people, {id}) || Holds(orgs, calculation.Chain(Text(person, "orgGuid"))) ||
            (all && calculation.IsArranged(person))) {
            calculation.Run(person, first, last);
            ++count;
        }
    });
    const double takes = static_cast<double>(count * (last - first + 1)) * kMsPerDay / timeScale;
    Json task = Fields(handling.Memory())
                    .Text("taskID", NewGuid())
                    .Number("personTotal", count)
                    .Number("startMs", handling.nowMs)
                    .Number("finishMs", handling.nowMs + static_cast<std::int64_t>(takes))
                    .Take();
    handling.Save(kTask, "/", task);
    handling.Define("doc", std::move(task));
    Compose(handling);
}

void Status(Handling& handling)
{
    Json task = handling.Load(kTask, "/");
    if (task.IsObject()) {
        const std::int64_t start = AsInt(Member(task, "startMs"));
        const std::int64_t finish = AsInt(Member(task, "finishMs"));
        const bool done = handling.nowMs >= finish;
        Fields(task, handling.Memory())
            .Number("status", done ? 2 : 1)
            .Number("progress", done ? 100 : (handling.nowMs - start) * 100 / (finish - start))
            .Text("startTime", IsoTime(start))
            .Text("finishTime", done ? IsoTime(finish) : "");
    }
    handling.Define("doc", task.IsObject() ? std::move(task) : Json(rapidjson::kObjectType));
    Compose(handling);
}

void Month(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const Json& body = *handling.body;
    const std::string month = handling.NeedText(body, "month");
    const std::string org = Text(body, "orgID");
    Selection selection{Calculation::kDays, {{"date", Test::kStartsWith, StoreValue(month + "-")}}, "date"};
    if (org.empty()) {
        selection.conditions.push_back(
            {"personnelID", Test::kEquals, StoreValue(handling.NeedText(body, "personnelID"))});
    } else {
        selection.conditions.push_back(
            {"orgIDList", Test::kHasElement, StoreValue("[" + PrintJson(*Member(body, "orgID")) + "]")});
    }
    std::map<std::string, std::int64_t> sums;
    std::string name;
    Json days(rapidjson::kArrayType);
    handling.Each(selection, [&](const std::string&, Json& day) {
        Json& detail = *Member(day, "dayDetail");
        name = org.empty() ? Text(day, "personnelName") : std::string();
        const bool expected = Text(day, "status") != "rest";
        sums["workDayTotal"] += expected ? 1 : 0;
        sums["attendDayTotal"] += expected && AsInt(Member(detail, "workDuration")) > 0 ? 1 : 0;
        for (const char* what : {"late", "early", "absence", "work", "overtime", "vocation"}) {
            const std::int64_t minutes = AsInt(Member(detail, std::string(what) + "Duration"));
            sums[std::string(what) + "Duration"] += minutes;
            sums[std::string(what) + "Total"] += minutes > 0 ? 1 : 0;
        }
        days.PushBack(detail, memory);
    });
    Json document(rapidjson::kObjectType);
    Fields fields(document, memory);
    for (const auto& [member, sum] : sums) {
        fields.Number(member, sum);
    }
    fields.Text("personnelName", name).Value("dayDetailList", std::move(days));
    handling.Define("doc", std::move(document));
    Compose(handling);
}

// ---- Records from files ----

/// Bytes that are no UTF-8 cannot stand in an answer.
std::string Printable(std::string text, bool utf8)
{
    std::replace_if(
        text.begin(), text.end(), [&](char c) { return !utf8 && static_cast<unsigned char>(c) > 127; }, '?');
    return text;
}

void Import(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const Json& body = *handling.body;
    const std::string upload = handling.NeedText(body, "uploadGuid");
    const bool utf8 = Text(body, "encoding") == "UTF-8";
    std::string file;
    if (!ReadFile(handling, "clockFiles", upload, file)) {
        throw Refusal(Reason::kUnknownGuid, "\"" + upload + "\"");
    }
    std::map<std::string, Json> persons;
    handling.Each({kPersons}, [&](const std::string&, Json& person) {
        persons.emplace(Text(person, "personnelNo"), std::move(person));
    });
    std::map<std::string, std::set<int>> taken;
    std::int64_t total = 0;
    Json failures(rapidjson::kArrayType);
    for (ClockLine& line : ReadClockLines(file, Text(body, "separator"), AsBool(Member(body, "skipFirstLine"), true))) {
        ++total;
        if (line.fault.empty() && persons.count(line.code) == 0) {
            line.fault = "nobody has the number \"" + line.code + "\"";
        }
        if (line.fault.empty()) {
            taken[line.code].insert(line.minute);
            continue;
        }
        failures.PushBack(Fields(memory)
                              .Number("lineNo", line.number)
                              .Text("text", Printable(line.text, utf8))
                              .Text("reason", Printable(line.fault, utf8))
                              .Take(),
                          memory);
    }
    for (const auto& [code, fresh] : taken) {
        std::set<int> all = fresh;
        const Json kept = handling.Load(kRecords, code);
        for (const Json& minute : Elements(Member(kept, "minutes"))) {
            all.insert(minute.GetInt());
        }
        Json minutes(rapidjson::kArrayType);
        for (const int minute : all) {
            minutes.PushBack(minute, memory);
        }
        handling.Save(kRecords, code, Fields(memory).Value("minutes", std::move(minutes)).Take());
    }
    if (AsBool(Member(body, "calculate"))) {
        // A night's record may belong to the day before.
        Calculation calculation(handling);
        for (const auto& [code, minutes] : taken) {
            calculation.Run(persons[code], *minutes.begin() / kDayMinutes - 1, *minutes.rbegin() / kDayMinutes);
        }
    }
    const std::int64_t failed = failures.Size();
    handling.Define("doc", Fields(memory)
                               .Number("total", total)
                               .Number("succeeded", total - failed)
                               .Number("failed", failed)
                               .Value("fileImportFailureList", std::move(failures))
                               .Take());
    Compose(handling);
}

} // namespace

void EachCalculation(Handling& handling, const WorkSink& each)
{
    handling.Each({kTask}, [&](const std::string&, Json& task) {
        const std::int64_t start = AsInt(Member(task, "startMs"));
        const std::int64_t finish = AsInt(Member(task, "finishMs"));
        const bool done = handling.nowMs >= finish;
        const std::int64_t percent = done ? 100 : (handling.nowMs - start) * 100 / (finish - start);
        const std::int64_t total = AsInt(Member(task, "personTotal"));
        each({std::string(AsText(Member(task, "taskID"))), "attendance", "", done ? "done" : "running",
              total * percent / 100, total, percent});
    });
}

void AddAttendance(Services& services, double timeScale)
{
    services["attendance.arrange"] = Arrange;
    services["attendance.arrangeDays"] = ArrangeDays;
    services["attendance.arrangement"] = ReadArrangement;
    services["attendance.arrangeStatus"] = ArrangeStatus;
    services["attendance.leaveTypes"] = LeaveTypes;
    services["attendance.calculate"] = [timeScale](Handling& handling) { Calculate(handling, timeScale); };
    services["attendance.status"] = Status;
    services["attendance.month"] = Month;
    services["attendance.import"] = Import;
}

} // namespace nexwire::simulator
