#include "src/AttendanceCalculation.h"

#include <algorithm>

#include "src/Clock.h"
#include "src/Fields.h"

namespace nexwire::simulator {
namespace {

std::string Text(const Json& object, std::string_view member)
{
    return std::string(AsText(Member(object, member)));
}

int Number(const Json& object, std::string_view member, int otherwise = 0)
{
    return static_cast<int>(AsInt(Member(object, member), otherwise));
}

bool IsFrom(const Json& arrangement, int day, int& first)
{
    int last = 0;
    const std::string end = Text(arrangement, "endDate");
    return ParseDate(Text(arrangement, "startDate"), first) && day >= first &&
           (end.empty() || (ParseDate(end, last) && day <= last));
}

/// A time of day behind another one; before it, it is of the next day.
int Behind(const Json& period, const char* member, int earliest, int otherwise)
{
    const int time = ParseTime(Text(period, member));
    return time < 0 ? otherwise : time < earliest ? time + kDayMinutes : time;
}

std::string TimeOrNothing(int minute)
{
    return minute < 0 ? std::string() : PrintTime(minute);
}

/// A day out of its periods.
struct DaySum {
    PeriodOutcome sum;

    void Add(const PeriodOutcome& each)
    {
        sum.late += each.late;
        sum.early += each.early;
        sum.absence += each.absence;
        sum.work += each.work;
        sum.leave += each.leave;
        sum.overtime += each.overtime;
        sum.startClock = sum.startClock < 0 ? each.startClock : sum.startClock;
        sum.endClock = std::max(sum.endClock, each.endClock);
    }

    const char* Status() const
    {
        return sum.absence > 0                  ? "absence"
               : sum.late > 0 && sum.early > 0  ? "lateAndEarly"
               : sum.late > 0                   ? "late"
               : sum.early > 0                  ? "early"
               : sum.leave > 0 && sum.work == 0 ? "vocation"
                                                : "normal";
    }
};

} // namespace

Calculation::Calculation(Handling& handling)
    : handling_(handling), memory_(handling.Memory()), rule_(handling.Load("basicRule", "/")),
      overtime_(handling.Load("overtimeConfig", "/"))
{
    handling_.Each({"holidays"}, [&](const std::string&, Json& document) {
        Holiday holiday{0, 0, AsBool(Member(document, "repeatYearly")), Number(document, "overtimeLevel", 3)};
        if (ParseDate(Text(document, "startDate"), holiday.first)) {
            holiday.last = holiday.first;
            ParseDate(Text(document, "endDate"), holiday.last);
            holidays_.push_back(holiday);
        }
    });
    handling_.Each({"arrangements", {}, "startDate", true}, [&](const std::string&, Json& document) {
        arrangements_[Text(document, "owner")].push_back(std::move(document));
    });
    handling_.Each({"temporaryArrangements"},
                   [&](const std::string& owner, Json& document) { temporary_[owner] = std::move(document); });
    handling_.Each({"clockRecords"}, [&](const std::string& code, Json& document) {
        for (const Json& minute : Elements(Member(document, "minutes"))) {
            clocks_[code].push_back(minute.GetInt());
        }
    });
    handling_.Each({"handleInfos"}, [&](const std::string& id, Json& document) {
        Correction correction{id, Text(document, "handleType"), {}, {}};
        if (ParseMoment(Text(document, "startTime"), correction.minutes.begin)) {
            correction.minutes.end = correction.minutes.begin;
            ParseMoment(Text(document, "endTime"), correction.minutes.end);
            const Json leave = handling_.Load("subTypes", AsText(Member(document, "subTypeID")));
            correction.name = leave.IsObject() ? Text(leave, "subTypeName") : correction.type;
            corrections_[Text(document, "personnelID")].push_back(std::move(correction));
        }
    });
}

std::vector<std::string> Calculation::Chain(const std::string& org)
{
    const auto [found, fresh] = chains_.try_emplace(org);
    if (fresh) {
        for (std::string at = org; !at.empty();) {
            found->second.push_back(at);
            const Json organisation = handling_.Load("organizations", at);
            at = Text(organisation, "parOrgGuid");
        }
    }
    return found->second;
}

std::vector<std::string> Calculation::Owners(const Json& person)
{
    std::vector<std::string> owners = {Text(person, "personnelGuid")};
    const std::vector<std::string> above = Chain(Text(person, "orgGuid"));
    owners.insert(owners.end(), above.begin(), above.end());
    return owners;
}

bool Calculation::IsArranged(const Json& person)
{
    const std::vector<std::string> owners = Owners(person);
    return std::any_of(owners.begin(), owners.end(), [&](const std::string& owner) {
        return arrangements_.count(owner) != 0 || temporary_.count(owner) != 0;
    });
}

const Calculation::Holiday* Calculation::HolidayOn(int day) const
{
    const std::string date = PrintDate(day).substr(5);
    for (const Holiday& each : holidays_) {
        const bool yearly =
            each.yearly && date >= PrintDate(each.first).substr(5) && date <= PrintDate(each.last).substr(5);
        if (yearly || (day >= each.first && day <= each.last)) {
            return &each;
        }
    }
    return nullptr;
}

// ---- From arrangement to periods ----

void Calculation::AddPeriods(DayPlan& plan, const Json* ids)
{
    for (const Json& id : Elements(ids)) {
        Json period = handling_.Load("periods", AsText(&id));
        if (period.IsObject()) {
            plan.periods.push_back(std::move(period));
        }
    }
}

void Calculation::FollowShift(DayPlan& plan, const std::string& shiftID, int day, int begin)
{
    const Json shift = handling_.Load("shifts", shiftID);
    if (!shift.IsObject()) {
        return;
    }
    plan.shiftName = Text(shift, "shiftName");
    const std::string unit = Text(shift, "cycleUnit");
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

DayPlan Calculation::PlanOf(const Json& person, int day)
{
    DayPlan plan;
    const std::vector<std::string> owners = Owners(person);
    // What stands above the person's own organisation counts when it says so.
    const auto reaches = [&](std::size_t i, const Json& document) {
        return i < 2 || AsBool(Member(document, "includeChildOrg"));
    };
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const auto own = temporary_.find(owners[i]);
        for (const Json& single :
             Elements(own == temporary_.end() || !reaches(i, own->second) ? nullptr
                                                                          : Member(own->second, "tempShiftList"))) {
            if (AsText(Member(single, "date")) == PrintDate(day)) {
                plan.arranged = plan.temporary = true;
                const std::string shift = Text(single, "shiftID");
                if (shift.empty()) {
                    AddPeriods(plan, Member(single, "periodIDList"));
                } else {
                    FollowShift(plan, shift, day, day);
                }
                return plan;
            }
        }
    }
    for (std::size_t i = 0; i < owners.size(); ++i) {
        for (const Json& document : arrangements_[owners[i]]) {
            const Json& arrange = *Member(document, "arrange");
            int first = 0;
            if (!reaches(i, document) || !IsFrom(arrange, day, first)) {
                continue;
            }
            plan.arranged = true;
            plan.needClock = AsBool(Member(arrange, "needClock"), true);
            const std::string shiftID = Text(arrange, "shiftID");
            const Json shift = handling_.Load("shifts", shiftID);
            if (HolidayOn(day) == nullptr || !AsBool(Member(shift, "holidayFree"), true)) {
                FollowShift(plan, shiftID, day, first);
            }
            return plan;
        }
    }
    return plan;
}

WorkPeriod Calculation::Stretch(const Json& period, bool needClock)
{
    WorkPeriod stretch;
    Span& work = stretch.work;
    work.begin = std::max(0, ParseTime(Text(period, "startTime")));
    work.end = Behind(period, "endTime", work.begin + 1, work.begin);
    const int opens = ParseTime(Text(period, "startClockBegin"));
    // What opens late in the evening opens on the day before.
    stretch.startWindow.begin = opens < 0 ? work.begin - 60 : opens > work.begin ? opens - kDayMinutes : opens;
    stretch.startWindow.end = Behind(period, "startClockEnd", work.begin, work.end);
    stretch.endWindow.begin = Behind(period, "endClockBegin", work.begin, work.begin);
    stretch.endWindow.end = Behind(period, "endClockEnd", work.end, work.end + 240);
    stretch.needStart = needClock && AsBool(Member(period, "needStartClock"), true);
    stretch.needEnd = needClock && AsBool(Member(period, "needEndClock"), true);
    stretch.lateAllowed = Number(period, "lateAllowDuration");
    stretch.earlyAllowed = Number(period, "earlyAllowDuration");
    stretch.flexible = Number(period, "flexibleDuration");
    const auto limit = [&](const char* own) {
        const int minutes = Number(period, own);
        return minutes > 0 ? minutes : Number(rule_, own, 60);
    };
    stretch.lateToAbsence = limit("lateToAbsenceDuration");
    stretch.earlyToAbsence = limit("earlyToAbsenceDuration");
    for (const Json& id : Elements(Member(period, "restPeriodIDList"))) {
        const Json rest = handling_.Load("restPeriods", AsText(&id));
        if (rest.IsObject() && Number(rest, "deductMode") != 2) {
            const int begin = Behind(rest, "startTime", work.begin, 0);
            stretch.rests.push_back({begin, Behind(rest, "endTime", begin, begin)});
        }
    }
    return stretch;
}

// ---- From records to results ----

OvertimeTerms Calculation::Terms(const char* dayType, int day) const
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
    const Holiday* const holiday = HolidayOn(day);
    terms.level = holiday != nullptr ? holiday->level : terms.level;
    return terms;
}

void Calculation::Run(const Json& person, int first, int last)
{
    const std::string org = Text(person, "orgGuid");
    const std::vector<std::string> chain = Chain(org);
    const Json organisation = handling_.Load("organizations", org);
    Json above(rapidjson::kArrayType);
    for (const std::string& each : chain) {
        above.PushBack(MakeText(each, memory_), memory_);
    }
    const Json head = Fields(memory_)
                          .Text("personnelID", Text(person, "personnelGuid"))
                          .Text("personnelCode", Text(person, "personnelNo"))
                          .Text("personnelName", Text(person, "personnelName"))
                          .Text("orgName", Text(organisation, "name"))
                          .Text("orgID", org)
                          .Value("orgIDList", std::move(above))
                          .Take();
    for (int day = first; day <= last; ++day) {
        Day(head, person, day);
    }
}

void Calculation::Day(const Json& head, const Json& person, int day)
{
    const std::string id = Text(head, "personnelID");
    const int midnight = day * kDayMinutes;
    std::vector<int> clocks;
    const auto take = [&](int minute) {
        if (minute >= midnight - kDayMinutes && minute < midnight + 2 * kDayMinutes) {
            clocks.push_back(minute - midnight);
        }
    };
    const std::vector<int>& recorded = clocks_[Text(head, "personnelCode")];
    std::for_each(recorded.begin(), recorded.end(), take);
    std::vector<Span> leaves;
    std::string leaveName;
    Json handled(rapidjson::kArrayType);
    for (const Correction& each : corrections_[id]) {
        const Span span{each.minutes.begin - midnight, each.minutes.end - midnight};
        if (each.type == "clock") {
            take(each.minutes.begin);
        } else if ((each.type == "vocation" || each.type == "businessTrip") &&
                   Overlap(span, {0, 2 * kDayMinutes}) > 0) {
            leaves.push_back(span);
            leaveName = each.name;
        }
        if (span.begin < kDayMinutes && std::max(span.end, span.begin + 1) > 0) {
            handled.PushBack(MakeText(each.id, memory_), memory_);
        }
    }
    std::sort(clocks.begin(), clocks.end());

    const DayPlan plan = PlanOf(person, day);
    const char* const dayType = HolidayOn(day) != nullptr ? "holiday" : WeekDay(day) > 5 ? "weekend" : "workday";
    const OvertimeTerms terms = Terms(dayType, day);
    const MissingClock missing{
        std::string(AsText(Member(rule_, "noStartClockStatus"), "absence")), Number(rule_, "noStartClockDuration", 60),
        std::string(AsText(Member(rule_, "noEndClockStatus"), "absence")), Number(rule_, "noEndClockDuration", 60)};
    DaySum total;
    const std::string key = id + "/" + PrintDate(day);
    int rows = 0;
    const auto save = [&](const Json& period, const PeriodOutcome& outcome, int level) {
        total.Add(outcome);
        Json row = Row(head, plan, period, outcome, level, leaveName);
        SetMember(row, "attendenceDate", MakeText(PrintDate(day), memory_), memory_);
        handling_.Save(kRows, key + "/" + std::to_string(rows++), row);
    };
    for (const Json& period : plan.periods) {
        save(period, Assess(Stretch(period, plan.needClock), clocks, leaves, missing, terms), terms.level);
    }
    if (plan.periods.empty()) {
        PeriodOutcome outcome;
        outcome.startStatus = outcome.endStatus = "rest";
        const auto begin = std::lower_bound(clocks.begin(), clocks.end(), 0);
        const auto end = std::lower_bound(clocks.begin(), clocks.end(), kDayMinutes);
        if (end - begin > 1 && (terms.enabled || AsBool(Member(rule_, "weekendAsOvertime")))) {
            outcome.startClock = *begin;
            outcome.endClock = *(end - 1);
            outcome.overtime = outcome.endClock - outcome.startClock;
        }
        save(Json(rapidjson::kObjectType), outcome, terms.enabled ? terms.level : 2);
    }
    while (handling_.store.Erase(kRows, key + "/" + std::to_string(rows))) {
        ++rows;
    }

    const PeriodOutcome& sum = total.sum;
    const char* const status = plan.periods.empty() ? "rest" : total.Status();
    Json detail = Fields(memory_)
                      .Text("date", PrintDate(day))
                      .Text("dayType", dayType)
                      .Text("shiftName", plan.shiftName)
                      .Text("status", status)
                      .Text("startClock", TimeOrNothing(sum.startClock))
                      .Text("endClock", TimeOrNothing(sum.endClock))
                      .Number("lateDuration", sum.late)
                      .Number("earlyDuration", sum.early)
                      .Number("absenceDuration", sum.absence)
                      .Number("workDuration", sum.work)
                      .Number("overtimeDuration", sum.overtime)
                      .Number("vocationDuration", sum.leave)
                      .Value("handleIDList", std::move(handled))
                      .Take();
    Json document = Copy(head, memory_);
    Fields(document, memory_).Text("date", PrintDate(day)).Text("status", status).Value("dayDetail", std::move(detail));
    handling_.Save(kDays, key, document);
}

Json Calculation::Row(const Json& head, const DayPlan& plan, const Json& period, const PeriodOutcome& outcome,
                      int level, const std::string& leaveName)
{
    Json row = Copy(head, memory_);
    const std::string start = TimeOrNothing(outcome.startClock);
    const std::string end = TimeOrNothing(outcome.endClock);
    Json states(rapidjson::kArrayType);
    states.PushBack(MakeText(outcome.startStatus, memory_), memory_)
        .PushBack(MakeText(outcome.endStatus, memory_), memory_);
    Fields(row, memory_)
        .Text("shiftName", plan.shiftName)
        .Text("periodID", Text(period, "periodID"))
        .Text("periodName", Text(period, "periodName"))
        .Text("startWorkStatus", outcome.startStatus)
        .Text("endWorkStatus", outcome.endStatus)
        .Number("lateDuration", outcome.late)
        .Number("earlyDuration", outcome.early)
        .Number("attendanceDuration", outcome.expected)
        .Number("absenceDuration", outcome.absence)
        .Number("workDuration", outcome.work)
        .Number("restDuartion", outcome.rest)
        .Text("vocationName", outcome.leave > 0 ? leaveName : "")
        .Number("vocationDuartion", outcome.leave)
        .Number("level1Duartion", level == 1 ? outcome.overtime : 0)
        .Number("level2Duartion", level == 2 ? outcome.overtime : 0)
        .Number("level3Duartion", level == 3 ? outcome.overtime : 0)
        .Text("detail", start + (start.empty() || end.empty() ? "" : " ") + end)
        .Value("statusList", std::move(states));
    return row;
}

} // namespace nexwire::simulator
