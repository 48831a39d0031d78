#include <algorithm>
#include <map>

#include "src/AttendanceRules.h"
#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kArrangements = "arrangements";
constexpr const char* kRecords = "clockRecords";
constexpr const char* kResults = "calcResults";
constexpr const char* kPersons = "persons";
constexpr int kMostDays = 366;

std::string Text(const Json* value)
{
    return std::string(AsText(value));
}

int Number(const Json& object, std::string_view member, int otherwise = 0)
{
    return static_cast<int>(AsInt(Member(object, member), otherwise));
}

bool Holds(const Json* list, std::string_view text)
{
    const auto elements = Elements(list);
    return std::any_of(elements.begin(), elements.end(), [&](const Json& each) { return AsText(&each) == text; });
}

/// Days that the body names.
void Days(const Json& body, int& first, int& last)
{
    if (!ParseDate(Text(Member(body, "startDate")), first) || !ParseDate(Text(Member(body, "endDate")), last) ||
        last < first || last - first >= kMostDays) {
        throw Refusal(Reason::kOutOfRange, "startDate and endDate: up to 366 days");
    }
}

// ---- Arrangements: one document per person or organisation ----

std::string Owner(const Handling& handling)
{
    return handling.request.path.find("/organizations") != std::string::npos ? "org/" : "person/";
}

bool Temporary(const Handling& handling)
{
    return handling.request.path.find("tmp/") != std::string::npos;
}

void Arrange(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const bool temporary = Temporary(handling);
    const char* const list = temporary ? "tempShiftList" : "arrangeList";
    const char* const day = temporary ? "date" : "startDate";
    const Json* const nested = Member(*handling.body, "arrange");
    Json added(rapidjson::kArrayType);
    if (temporary) {
        added = Copy(*Member(*handling.body, list), memory);
    } else {
        added.PushBack(Copy(nested != nullptr ? *nested : *handling.body, memory), memory);
    }
    for (const Json& each : added.GetArray()) {
        const std::string shift = Text(Member(each, "shiftID"));
        int ignored = 0;
        if (!shift.empty()) {
            handling.Need(*handling.description.FindCollection("shifts"), shift);
        } else if (!temporary) {
            throw Refusal(Reason::kMissingField, "shiftID");
        }
        if (!ParseDate(Text(Member(each, day)), ignored)) {
            throw Refusal(Reason::kOutOfRange, day);
        }
    }
    std::vector<std::string> owners;
    if (!handling.identifiers.empty()) {
        owners.push_back(handling.identifiers.back());
    }
    for (const Json& person : Elements(Member(*handling.body, "personnelIDList"))) {
        owners.push_back(Text(&person));
    }
    for (const std::string& owner : owners) {
        const std::string key = Owner(handling) + owner;
        Json document = handling.Load(kArrangements, key);
        if (!document.IsObject()) {
            document = Json(rapidjson::kObjectType);
        }
        Json kept(rapidjson::kArrayType);
        for (const Json& each : Elements(Member(document, list))) {
            const auto fresh = added.GetArray();
            if (std::none_of(fresh.begin(), fresh.end(), [&](const Json& other) {
                    return AsText(Member(other, day)) == AsText(Member(each, day));
                })) {
                kept.PushBack(Copy(each, memory), memory);
            }
        }
        for (const Json& each : added.GetArray()) {
            kept.PushBack(Copy(each, memory), memory);
        }
        SetMember(document, list, std::move(kept), memory);
        handling.Save(kArrangements, key, document);
    }
}

void ReadArrangement(Handling& handling)
{
    const std::string owner = handling.identifiers.back();
    Json document = handling.Load(kArrangements, Owner(handling) + owner);
    handling.Define("doc", document.IsObject() ? std::move(document) : Json(rapidjson::kObjectType));
    Compose(handling);
}

// ---- From arrangement to periods ----

struct Plan {
    std::string shiftName;
    std::vector<Json> periods;
    bool holiday = false;
};

class Calculation {
public:
    explicit Calculation(Handling& handling) : handling_(handling)
    {
        // Settings are kept under their own paths.
        rule_ = Setting("basic", "basicRule");
        overtime_ = Setting("overtime", "overtimeConfig");
        handling_.Each({"holidays"}, [&](const std::string&, Json& document) {
            holidays_.push_back(Copy(document, handling_.Memory()));
        });
        handling_.Each({"clockRecords"}, [&](const std::string&, Json& document) {
            clocks_[Text(Member(document, "personnelCode"))].push_back(Number(document, "day") * 1440 +
                                                                       Number(document, "minute"));
        });
        for (auto& person : clocks_) {
            std::sort(person.second.begin(), person.second.end());
        }
        handling_.Each({"handleInfos"}, [&](const std::string&, Json& document) { TakeCorrection(document); });
    }

    bool IsArranged(const std::string& person, const std::string& org)
    {
        return handling_.store.Has(kArrangements, "person/" + person) ||
               (!org.empty() && handling_.store.Has(kArrangements, "org/" + org));
    }

    void Person(const Json& person, int first, int last)
    {
        const std::string id = Text(Member(person, "personnelGuid"));
        for (int day = first; day <= last; ++day) {
            handling_.store.Erase(kResults, Key(id, day, 0));
            for (int i = 1; handling_.store.Erase(kResults, Key(id, day, i)); ++i) {
            }
            Day(person, id, day);
        }
    }

private:
    static std::string Key(const std::string& person, int day, int period)
    {
        return person + "/" + PrintDate(day) + "/" + std::to_string(period);
    }

    Json Setting(const char* path, const char* root)
    {
        // Kept like everything that has no entry: by path, under its root.
        const Json kept = handling_.Load("_kept", std::string("/7730/v1/attendance/setting/") + path);
        const Json* const value = kept.IsObject() ? Member(kept, root) : nullptr;
        return value != nullptr ? Copy(*value, handling_.Memory()) : Json(rapidjson::kObjectType);
    }

    void TakeCorrection(const Json& document)
    {
        const std::string person = Text(Member(document, "personnelID"));
        const std::string type = Text(Member(document, "handleType"));
        const std::string begin = Text(Member(document, "startTime"));
        const std::string end = Text(Member(document, "endTime"));
        int day = 0;
        int until = 0;
        if (begin.size() < 16 || !ParseDate(begin, day)) {
            return;
        }
        const int minute = day * 1440 + std::max(0, ParseTime(begin.substr(11)));
        if (type == "clock") {
            corrections_[person].push_back(minute);
        } else if ((type == "vocation" || type == "businessTrip") && end.size() >= 16 && ParseDate(end, until)) {
            leaves_[person].push_back({{minute, until * 1440 + std::max(0, ParseTime(end.substr(11)))},
                                       type == "vocation" ? Text(Member(document, "subTypeName")) : "businessTrip"});
        }
    }

    bool IsHoliday(int day, int& level)
    {
        for (const Json& holiday : holidays_) {
            int first = 0;
            int last = 0;
            const std::string begin = Text(Member(holiday, "startDate"));
            const std::string end = Text(Member(holiday, "endDate"));
            if (!ParseDate(begin, first) || !ParseDate(end.empty() ? begin : end, last)) {
                continue;
            }
            const std::string date = PrintDate(day).substr(5);
            const bool yearly =
                AsBool(Member(holiday, "repeatYearly")) && date >= begin.substr(5) && date <= PrintDate(last).substr(5);
            if (yearly || (day >= first && day <= last)) {
                level = Number(holiday, "overtimeLevel", 3);
                return true;
            }
        }
        return false;
    }

    void AddPeriods(Plan& plan, const Json* ids)
    {
        for (const Json& id : Elements(ids)) {
            Json period = handling_.Load("periods", AsText(&id));
            if (period.IsObject()) {
                plan.periods.push_back(std::move(period));
            }
        }
    }

    void FromShift(Plan& plan, const std::string& shiftID, int day, int begin, bool holiday)
    {
        const Json shift = handling_.Load("shifts", shiftID);
        if (!shift.IsObject() || (holiday && AsBool(Member(shift, "holidayFree")))) {
            return;
        }
        plan.shiftName = Text(Member(shift, "shiftName"));
        const std::string unit = Text(Member(shift, "cycleUnit"));
        const int cycle = std::max(1, Number(shift, "cycleCount", 1));
        const int dayNo = unit == "day"     ? (day - begin) % cycle + 1
                          : unit == "month" ? std::stoi(PrintDate(day).substr(8))
                                            : (day - begin + WeekDay(begin) - 1) / 7 % cycle * 7 + WeekDay(day);
        for (const Json& each : Elements(Member(shift, "shiftDayList"))) {
            if (Number(each, "dayNo") == dayNo) {
                AddPeriods(plan, Member(each, "periodIDList"));
            }
        }
    }

    Plan PlanOf(const std::string& person, const std::string& org, int day)
    {
        Plan plan;
        int level = 0;
        plan.holiday = IsHoliday(day, level);
        const std::string date = PrintDate(day);
        std::vector<Json> owners;
        owners.push_back(handling_.Load(kArrangements, "person/" + person));
        owners.push_back(org.empty() ? Json() : handling_.Load(kArrangements, "org/" + org));
        for (const Json& owner : owners) {
            for (const Json& single : Elements(Member(owner, "tempShiftList"))) {
                if (AsText(Member(single, "date")) == date) {
                    const std::string shift = Text(Member(single, "shiftID"));
                    shift.empty() ? AddPeriods(plan, Member(single, "periodIDList"))
                                  : FromShift(plan, shift, day, day, false);
                    return plan;
                }
            }
        }
        for (const Json& owner : owners) {
            for (const Json& each : Elements(Member(owner, "arrangeList"))) {
                int first = 0;
                int last = 0;
                const std::string end = Text(Member(each, "endDate"));
                if (ParseDate(Text(Member(each, "startDate")), first) && day >= first &&
                    (end.empty() || (ParseDate(end, last) && day <= last))) {
                    FromShift(plan, Text(Member(each, "shiftID")), day, first, plan.holiday);
                    return plan;
                }
            }
        }
        return plan;
    }

    /// A time of day behind another one; before it, it is of the next day.
    static int Behind(const Json& period, const char* member, int earliest, int otherwise)
    {
        const int time = ParseTime(Text(Member(period, member)));
        return time < 0 ? otherwise : time < earliest ? time + 1440 : time;
    }

    WorkPeriod Stretch(const Json& period)
    {
        WorkPeriod stretch;
        stretch.work.begin = std::max(0, ParseTime(Text(Member(period, "startTime"))));
        stretch.work.end = Behind(period, "endTime", stretch.work.begin + 1, stretch.work.begin);
        const int opens = ParseTime(Text(Member(period, "startClockBegin")));
        // What begins late in the evening before counts as the day before.
        stretch.startWindow.begin = opens < 0                    ? stretch.work.begin - 60
                                    : opens > stretch.work.begin ? opens - 1440
                                                                 : opens;
        stretch.startWindow.end = Behind(period, "startClockEnd", stretch.work.begin, stretch.work.end);
        stretch.endWindow.begin = Behind(period, "endClockBegin", stretch.work.begin, stretch.work.begin);
        stretch.endWindow.end = Behind(period, "endClockEnd", stretch.work.end, stretch.work.end + 240);
        stretch.needStart = AsBool(Member(period, "needStartClock"), true);
        stretch.needEnd = AsBool(Member(period, "needEndClock"), true);
        stretch.lateAllowed = Number(period, "lateAllowDuration");
        stretch.earlyAllowed = Number(period, "earlyAllowDuration");
        stretch.flexible = Number(period, "flexibleDuration");
        const auto limit = [&](const char* own) {
            const int minutes = Number(period, own);
            return minutes > 0 ? minutes : Number(rule_, own);
        };
        stretch.lateToAbsence = limit("lateToAbsenceDuration");
        stretch.earlyToAbsence = limit("earlyToAbsenceDuration");
        for (const Json& id : Elements(Member(period, "restPeriodIDList"))) {
            const Json rest = handling_.Load("restPeriods", AsText(&id));
            if (rest.IsObject() && Number(rest, "deductMode") != 2) {
                const int begin = Behind(rest, "startTime", stretch.work.begin, 0);
                stretch.rests.push_back({begin, Behind(rest, "endTime", begin, begin)});
            }
        }
        return stretch;
    }

    OvertimeTerms Terms(const char* dayType)
    {
        OvertimeTerms terms;
        terms.startAfter = Number(overtime_, "startAfter");
        for (const Json& rule : Elements(Member(overtime_, "overtimeRuleList"))) {
            if (AsText(Member(rule, "dayType")) == dayType) {
                terms.enabled = AsBool(Member(rule, "enabled"), true);
                terms.level = Number(rule, "level", 1);
                terms.least = Number(rule, "leastDuration");
                terms.most = Number(rule, "mostDuration");
            }
        }
        return terms;
    }

    void Day(const Json& person, const std::string& id, int day)
    {
        const std::string code = Text(Member(person, "personnelNo"));
        const Plan plan = PlanOf(id, Text(Member(person, "orgGuid")), day);
        std::vector<int> clocks;
        const auto take = [&](const std::vector<int>& minutes) {
            for (const int minute : minutes) {
                if (minute >= (day - 1) * 1440 && minute < (day + 2) * 1440) {
                    clocks.push_back(minute - day * 1440);
                }
            }
        };
        take(clocks_[code]);
        take(corrections_[id]);
        std::sort(clocks.begin(), clocks.end());
        std::vector<Span> leaves;
        std::string leaveName;
        for (const auto& leave : leaves_[id]) {
            const Span span{leave.first.begin - day * 1440, leave.first.end - day * 1440};
            if (Overlap(span, {0, 2880}) > 0) {
                leaves.push_back(span);
                leaveName = leave.second;
            }
        }
        const char* const dayType = plan.holiday ? "holiday" : WeekDay(day) > 5 ? "weekend" : "workday";
        const OvertimeTerms terms = Terms(dayType);
        MissingClock missing;
        missing.start = std::string(AsText(Member(rule_, "noStartClockStatus"), "absence"));
        missing.startDuration = Number(rule_, "noStartClockDuration", 60);
        missing.end = std::string(AsText(Member(rule_, "noEndClockStatus"), "absence"));
        missing.endDuration = Number(rule_, "noEndClockDuration", 60);
        int index = 0;
        for (const Json& period : plan.periods) {
            const PeriodOutcome outcome = Assess(Stretch(period), clocks, leaves, missing, terms);
            Save(person, id, day, index++, plan, &period, outcome, terms.level, leaveName, dayType);
        }
        if (plan.periods.empty()) {
            PeriodOutcome outcome;
            outcome.startStatus = outcome.endStatus = "rest";
            std::vector<int> today;
            std::copy_if(clocks.begin(), clocks.end(), std::back_inserter(today),
                         [](int minute) { return minute >= 0 && minute < 1440; });
            if (today.size() > 1 && (terms.enabled || AsBool(Member(rule_, "weekendAsOvertime")))) {
                outcome.startClock = today.front();
                outcome.endClock = today.back();
                outcome.overtime = outcome.endClock - outcome.startClock;
            }
            Save(person, id, day, 0, plan, nullptr, outcome, terms.enabled ? terms.level : 2, leaveName, dayType);
        }
    }

    void Save(const Json& person, const std::string& id, int day, int index, const Plan& plan, const Json* period,
              const PeriodOutcome& outcome, int level, const std::string& leaveName, const char* dayType)
    {
        Allocator& memory = handling_.Memory();
        Json row(rapidjson::kObjectType);
        const auto text = [&](const char* key, std::string_view value) {
            SetMember(row, key, MakeText(value, memory), memory);
        };
        const auto number = [&](const char* key, int value) { SetMember(row, key, Json(value), memory); };
        text("personnelID", id);
        text("personnelCode", AsText(Member(person, "personnelNo")));
        text("personnelName", AsText(Member(person, "personnelName")));
        text("orgName", AsText(Member(person, "orgName")));
        text("attendenceDate", PrintDate(day));
        text("shiftName", plan.shiftName);
        text("periodID", period != nullptr ? AsText(Member(*period, "periodID")) : "");
        text("periodName", period != nullptr ? AsText(Member(*period, "periodName")) : "");
        text("startWorkStatus", outcome.startStatus);
        text("endWorkStatus", outcome.endStatus);
        number("lateDuration", outcome.late);
        number("earlyDuration", outcome.early);
        number("attendanceDuration", outcome.expected);
        number("absenceDuration", outcome.absence);
        number("workDuration", outcome.work);
        number("restDuartion", outcome.rest);
        text("vocationName", outcome.leave > 0 ? leaveName : "");
        number("vocationDuartion", outcome.leave);
        for (int each = 1; each <= 3; ++each) {
            number(("level" + std::to_string(each) + "Duartion").c_str(), each == level ? outcome.overtime : 0);
        }
        std::string detail = outcome.startClock >= 0 ? PrintTime(outcome.startClock) : "";
        if (outcome.endClock >= 0) {
            detail += (detail.empty() ? "" : " ") + PrintTime(outcome.endClock);
        }
        text("detail", detail);
        text("_dayType", dayType);
        number("_startClock", outcome.startClock);
        number("_endClock", outcome.endClock);
        handling_.Save(kResults, Key(id, day, index), row);
    }

    Handling& handling_;
    Json rule_;
    Json overtime_;
    std::vector<Json> holidays_;
    std::map<std::string, std::vector<int>> clocks_;      ///< By number of the person; minutes since 1970.
    std::map<std::string, std::vector<int>> corrections_; ///< By identifier of the person.
    std::map<std::string, std::vector<std::pair<Span, std::string>>> leaves_;
};

void Calculate(Handling& handling)
{
    int first = 0;
    int last = 0;
    Days(*handling.body, first, last);
    const Json* const people = Member(*handling.body, "personnelIDList");
    const Json* const orgs = Member(*handling.body, "orgIDList");
    const bool all = Elements(people).Empty() && Elements(orgs).Empty();
    Calculation calculation(handling);
    int count = 0;
    handling.Each({kPersons}, [&](const std::string& id, Json& person) {
        const std::string org = Text(Member(person, "orgGuid"));
        if (Holds(people, id) || (!org.empty() && Holds(orgs, org)) || (all && calculation.IsArranged(id, org))) {
            calculation.Person(person, first, last);
            ++count;
        }
    });
    Allocator& memory = handling.Memory();
    Json task(rapidjson::kObjectType);
    const std::string id = NewGuid();
    SetMember(task, "taskID", MakeText(id, memory), memory);
    SetMember(task, "personTotal", Json(count), memory);
    SetMember(task, "status", Json(2), memory);
    SetMember(task, "progress", Json(100), memory);
    handling.Save("_calculation", "last", task);
    handling.Define("doc", std::move(task));
    Compose(handling);
}

void Status(Handling& handling)
{
    Json task = handling.Load("_calculation", "last");
    handling.Define("doc", task.IsObject() ? std::move(task) : Json(rapidjson::kObjectType));
    Compose(handling);
}

/// The results that the body asks for.
Selection Asked(const Handling& handling)
{
    Selection selection{kResults};
    const auto bound = [&](const char* member, Test test) {
        const std::string date = Text(Member(*handling.body, member));
        if (!date.empty()) {
            selection.conditions.push_back({"attendenceDate", test, date});
        }
    };
    bound("startDate", Test::kAtLeast);
    bound("endDate", Test::kAtMost);
    const Json* const people = Member(*handling.body, "personnelIDList");
    if (!Elements(people).Empty()) {
        selection.conditions.push_back({"personnelID", Test::kOneOf, PrintJson(*people)});
    }
    const std::string name = Text(Member(*handling.body, "personnelName"));
    if (!name.empty()) {
        selection.conditions.push_back({"personnelName", Test::kContains, name});
    }
    return selection;
}

void Results(Handling& handling)
{
    Selection selection = Asked(handling);
    const std::int64_t total = handling.store.Count(selection);
    Page(handling, selection);
    Json docs(rapidjson::kArrayType);
    handling.Each(selection, [&](const std::string&, Json& document) {
        docs.PushBack(Copy(document, handling.Memory()), handling.Memory());
    });
    handling.Define("docs", std::move(docs));
    handling.Define("total", Json(total));
    Compose(handling);
}

// ---- Days and months ----

/// A day of a person out of its periods.
class DayDetail {
public:
    void Take(const Json& row)
    {
        if (rows_++ == 0) {
            startStatus_ = Text(Member(row, "startWorkStatus"));
            startClock_ = Number(row, "_startClock", -1);
        }
        endStatus_ = Text(Member(row, "endWorkStatus"));
        endClock_ = Number(row, "_endClock", -1);
        shiftName_ = Text(Member(row, "shiftName"));
        dayType_ = Text(Member(row, "_dayType"));
        late += Number(row, "lateDuration");
        early += Number(row, "earlyDuration");
        absence += Number(row, "absenceDuration");
        work += Number(row, "workDuration");
        leave += Number(row, "vocationDuartion");
        for (const char* level : {"level1Duartion", "level2Duartion", "level3Duartion"}) {
            overtime += Number(row, level);
        }
    }

    std::string Status() const
    {
        return startStatus_ == "rest"   ? "rest"
               : absence > 0            ? "absence"
               : late > 0 && early > 0  ? "lateAndEarly"
               : late > 0               ? "late"
               : early > 0              ? "early"
               : leave > 0 && work == 0 ? "vocation"
                                        : "normal";
    }

    Json Write(const std::string& date, Allocator& memory) const
    {
        Json day(rapidjson::kObjectType);
        const auto text = [&](const char* key, const std::string& value) {
            SetMember(day, key, MakeText(value, memory), memory);
        };
        text("date", date);
        text("dayType", dayType_);
        text("shiftName", shiftName_);
        text("status", Status());
        text("startClock", startClock_ < 0 ? "" : PrintTime(startClock_));
        text("endClock", endClock_ < 0 ? "" : PrintTime(endClock_));
        Durations(day, memory);
        SetMember(day, "handleIDList", Json(rapidjson::kArrayType), memory);
        return day;
    }

    void Durations(Json& object, Allocator& memory) const
    {
        SetMember(object, "lateDuration", Json(late), memory);
        SetMember(object, "earlyDuration", Json(early), memory);
        SetMember(object, "absenceDuration", Json(absence), memory);
        SetMember(object, "workDuration", Json(work), memory);
        SetMember(object, "overtimeDuration", Json(overtime), memory);
        SetMember(object, "vocationDuration", Json(leave), memory);
    }

    void Add(const DayDetail& other)
    {
        late += other.late;
        early += other.early;
        absence += other.absence;
        work += other.work;
        overtime += other.overtime;
        leave += other.leave;
    }

    int late = 0;
    int early = 0;
    int absence = 0;
    int work = 0;
    int overtime = 0;
    int leave = 0;

private:
    int rows_ = 0;
    std::string startStatus_;
    std::string endStatus_;
    std::string shiftName_;
    std::string dayType_ = "workday";
    int startClock_ = -1;
    int endClock_ = -1;
};

struct PersonDay {
    DayDetail detail;
    std::string code;
    std::string name;
    std::string org;
};

/// By date, then by person.
std::map<std::pair<std::string, std::string>, PersonDay> PersonDays(Handling& handling, const Selection& selection)
{
    std::map<std::pair<std::string, std::string>, PersonDay> days;
    handling.Each(selection, [&](const std::string&, Json& row) {
        PersonDay& day = days[{Text(Member(row, "attendenceDate")), Text(Member(row, "personnelID"))}];
        day.detail.Take(row);
        day.code = Text(Member(row, "personnelCode"));
        day.name = Text(Member(row, "personnelName"));
        day.org = Text(Member(row, "orgName"));
    });
    return days;
}

void Month(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const std::string month = handling.NeedText(*handling.body, "month");
    const std::string person = handling.NeedText(*handling.body, "personnelID");
    Selection selection{kResults};
    selection.conditions.push_back({"personnelID", Test::kEquals, person});
    selection.conditions.push_back({"attendenceDate", Test::kStartsWith, month + "-"});
    DayDetail sum;
    int expected = 0;
    int attended = 0;
    std::map<std::string, int> states;
    std::string name;
    Json days(rapidjson::kArrayType);
    for (const auto& day : PersonDays(handling, selection)) {
        const DayDetail& detail = day.second.detail;
        const std::string status = detail.Status();
        name = day.second.name;
        expected += status != "rest" ? 1 : 0;
        attended += status != "rest" && detail.work > 0 ? 1 : 0;
        states["late"] += detail.late > 0 ? 1 : 0;
        states["early"] += detail.early > 0 ? 1 : 0;
        states["absence"] += detail.absence > 0 ? 1 : 0;
        sum.Add(detail);
        days.PushBack(detail.Write(day.first.first, memory), memory);
    }
    Json& data = handling.data;
    SetMember(data, "month", MakeText(month, memory), memory);
    SetMember(data, "personnelID", MakeText(person, memory), memory);
    SetMember(data, "personnelName", MakeText(name, memory), memory);
    SetMember(data, "workDayTotal", Json(expected), memory);
    SetMember(data, "attendDayTotal", Json(attended), memory);
    SetMember(data, "lateTotal", Json(states["late"]), memory);
    SetMember(data, "earlyTotal", Json(states["early"]), memory);
    SetMember(data, "absenceTotal", Json(states["absence"]), memory);
    sum.Durations(data, memory);
    SetMember(data, "dayDetailList", std::move(days), memory);
}

void PageOfDays(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Selection page;
    Page(handling, page);
    std::int64_t total = 0;
    Json list(rapidjson::kArrayType);
    const Json* const states = Member(*handling.body, "statusList");
    for (const auto& day : PersonDays(handling, Asked(handling))) {
        if (!Elements(states).Empty() && !Holds(states, day.second.detail.Status())) {
            continue;
        }
        if (total >= page.offset && (page.limit < 0 || total < page.offset + page.limit)) {
            Json element(rapidjson::kObjectType);
            SetMember(element, "personnelID", MakeText(day.first.second, memory), memory);
            SetMember(element, "personnelCode", MakeText(day.second.code, memory), memory);
            SetMember(element, "personnelName", MakeText(day.second.name, memory), memory);
            SetMember(element, "orgName", MakeText(day.second.org, memory), memory);
            SetMember(element, "dayDetail", day.second.detail.Write(day.first.first, memory), memory);
            list.PushBack(element, memory);
        }
        ++total;
    }
    SetMember(handling.data, "total", Json(total), memory);
    SetMember(handling.data, "pageNo", Json(Number(*handling.body, "pageNo", 1)), memory);
    SetMember(handling.data, "pageSize", Json(Number(*handling.body, "pageSize")), memory);
    SetMember(handling.data, "personDayDetailList", std::move(list), memory);
}

// ---- Records from files ----

void Import(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const std::string upload = handling.NeedText(*handling.body, "uploadGuid");
    std::string file;
    if (!ReadFile(handling, "clockFiles", upload, file)) {
        throw Refusal(Reason::kUnknownGuid, "\"" + upload + "\"");
    }
    std::map<std::string, bool> known;
    handling.Each({kPersons},
                  [&](const std::string&, Json& person) { known[Text(Member(person, "personnelNo"))] = true; });
    int total = 0;
    int failed = 0;
    Json failures(rapidjson::kArrayType);
    for (ClockLine& line : ReadClockLines(file, Text(Member(*handling.body, "separator")),
                                          AsBool(Member(*handling.body, "skipFirstLine"), true))) {
        ++total;
        if (line.fault.empty() && known.count(line.code) == 0) {
            line.fault = "nobody has the number \"" + line.code + "\"";
        }
        if (!line.fault.empty()) {
            ++failed;
            Json failure(rapidjson::kObjectType);
            SetMember(failure, "lineNo", Json(line.number), memory);
            SetMember(failure, "text", MakeText(line.text, memory), memory);
            SetMember(failure, "reason", MakeText(line.fault, memory), memory);
            failures.PushBack(failure, memory);
            continue;
        }
        Json record(rapidjson::kObjectType);
        SetMember(record, "personnelCode", MakeText(line.code, memory), memory);
        SetMember(record, "day", Json(line.day), memory);
        SetMember(record, "minute", Json(line.minute), memory);
        handling.Save(kRecords, line.code + "/" + std::to_string(line.day * 1440 + line.minute), record);
    }
    Json result(rapidjson::kObjectType);
    SetMember(result, "total", Json(total), memory);
    SetMember(result, "succeeded", Json(total - failed), memory);
    SetMember(result, "failed", Json(failed), memory);
    SetMember(result, "fileImportFailureList", std::move(failures), memory);
    SetMember(handling.data, "fileImportReturn", std::move(result), memory);
}

} // namespace

void AddAttendance(Services& services)
{
    services["attendance.arrange"] = Arrange;
    services["attendance.arrangement"] = ReadArrangement;
    services["attendance.calculate"] = Calculate;
    services["attendance.status"] = Status;
    services["attendance.results"] = Results;
    services["attendance.month"] = Month;
    services["attendance.days"] = PageOfDays;
    services["attendance.import"] = Import;
}

} // namespace nexwire::simulator
