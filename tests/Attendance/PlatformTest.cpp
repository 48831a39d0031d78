#include <gtest/gtest.h>

#include <numeric>

#include <keel/Error.h>

#include "nexwire/Attendance/Arrange.h"
#include "nexwire/Attendance/Calculation.h"
#include "nexwire/Attendance/Handle.h"
#include "nexwire/Attendance/Record.h"
#include "nexwire/Attendance/Setting.h"
#include "nexwire/Attendance/Shift.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Statistics/Statistics.h"
#include "support/AtPlatform.h"
#include "support/TempFolder.h"

// The library against the local platform; what comes out was worked out by hand.

namespace {

using namespace nexwire;

const std::string kOffices = "0A000000000000000000000000000003";
const std::string kLaboratory = "0A000000000000000000000000000004"; // Below the offices.

/// In the order of their numbers the persons belong to production, offices and laboratory by turns.
std::string Person(int number)
{
    return "9E00000000000000000000000000000" + std::to_string(number);
}

class AttendancePlatform : public test::AtPlatform {
protected:
    AttendancePlatform() : AtPlatform(1772323200000) {}

    static std::string AddPeriod(const protocol::AddPeriod& period)
    {
        protocol::PeriodConfigResultData result;
        EXPECT_TRUE(PeriodConfigComm::addPeriodInfo(result, period));
        return result.periodConfigResult.periodID;
    }

    static std::string AddRest(const std::string& from, const std::string& until)
    {
        protocol::AddRestPeriod rest;
        rest.startTime = from;
        rest.endTime = until;
        protocol::RestPeriodConfigResultData result;
        EXPECT_TRUE(PeriodConfigComm::addRestPeriodInfo(result, rest));
        return result.restPeriodConfigResult.restPeriodID;
    }

    static std::string AddShift(const std::string& name, const std::string& unit, int days, const std::string& period)
    {
        protocol::ShiftInfo shift;
        shift.shiftName = name;
        shift.cycleUnit = unit;
        for (int day = 1; day <= days; ++day) {
            protocol::ShiftDay& each = shift.shiftDayList.emplace_back();
            each.dayNo = day;
            each.periodIDList = {period};
        }
        protocol::ShiftResult result;
        EXPECT_TRUE(ShiftComm::addShiftRequest(result, shift));
        return result.shiftID;
    }

    /// 09:00 to 18:00 with an hour of rest, Monday to Friday; 5 minutes late pass.
    static std::string AddOffice()
    {
        protocol::AddPeriod period;
        period.periodName = "Day";
        period.startTime = "09:00";
        period.endTime = "18:00";
        period.startClockBegin = "07:00";
        period.endClockBegin = "12:30";
        period.lateAllowDuration = 5;
        period.restPeriodIDList = {AddRest("12:00", "13:00")};
        return AddShift("Office", "week", 5, AddPeriod(period));
    }

    static bool ArrangePerson(int person, const std::string& shift, const std::string& from)
    {
        protocol::Arrange arrange;
        arrange.shiftID = shift;
        arrange.startDate = from;
        return ArrangeComm::setPersonnelArrange(arrange, Person(person));
    }

    protocol::FileImportReturn Import(const std::string& csv, bool calculate = false)
    {
        TempFolder folder;
        protocol::ImportAttendanceFiles order;
        const auto progress = std::make_shared<int>(0);
        EXPECT_TRUE(FileImportEventCommAtt::requestUploadByAttendance(progress, order.uploadGuid,
                                                                      folder.Write("records.csv", csv)));
        EXPECT_EQ(*progress, 100);
        order.calculate = calculate;
        protocol::FileImportReturnData result;
        EXPECT_TRUE(FileImportEventCommAtt::requestImportFileByAttendance(result, order));
        return result.fileImportReturn;
    }

    protocol::CalculateStatus Calculate(const std::string& from, const std::string& until,
                                        const std::vector<std::string>& persons = {})
    {
        protocol::ManualCalcCondition condition;
        condition.startDate = from;
        condition.endDate = until;
        condition.personnelIDList = persons;
        protocol::ManualResultData result;
        EXPECT_TRUE(CalculateComm::manualCalculate(result, condition));
        calculated_ = result.manualResult.personTotal;
        now += 10000;
        protocol::CalculateStatusData status;
        EXPECT_TRUE(CalculateComm::queryCalculateStatus(status));
        EXPECT_EQ(status.calculateStatus.taskID, result.manualResult.taskID);
        return status.calculateStatus;
    }

    static protocol::StatisticsCalcData Rows(const protocol::StatisticsCalcCondition& condition = {})
    {
        protocol::StatisticsCalcDataData result;
        EXPECT_TRUE(CalculateComm::queryCalculate(result, condition));
        return result.statisticsCalcData;
    }

    static protocol::MonthDetail Month(int person)
    {
        protocol::MonthCondition condition;
        condition.month = "2026-03";
        condition.personnelID = Person(person);
        protocol::MonthDetail month;
        EXPECT_TRUE(AttendanceHandleComm::getMonthDetail(month, condition));
        return month;
    }

    static std::string Correct(int person, const std::string& type, const std::string& from, const std::string& until,
                               const std::string& kind = {})
    {
        protocol::AddHandleInfos corrections;
        protocol::HandleDataInbound& one = corrections.handleDataList.emplace_back();
        one.personnelID = Person(person);
        one.handleType = type;
        one.startTime = from;
        one.endTime = until;
        one.subTypeID = kind;
        protocol::AddHandleResult result;
        EXPECT_TRUE(AttendanceHandleComm::addHandleInfos(result, corrections));
        EXPECT_EQ(result.handleResultList.size(), 1u);
        return result.handleResultList.empty() ? "" : result.handleResultList.front().handleID;
    }

    int calculated_ = -1;
};

/// A week of the office: in time, late, early, absent, late and early, and work on Saturday.
const char* const kWeek = "number,name,time\n"
                          "001001,Ada,2026-03-02 08:55\n001001,Ada,2026-03-02 18:00\n"
                          "001001,Ada,2026-03-03 09:20\n001001,Ada,2026-03-03 18:00\n"
                          "001001,Ada,2026-03-04 09:00\n001001,Ada,2026-03-04 17:30\n"
                          "001001,Ada,2026-03-06 09:10\n001001,Ada,2026-03-06 17:15\n"
                          "001001,Ada,2026-03-07 10:00\n001001,Ada,2026-03-07 14:00\n";

TEST_F(AttendancePlatform, BadLinesAreNamedAndTheRestIsTaken)
{
    // Two slices; what is wrong stands in the first, across the border and at the end.
    std::string csv = "number,name,time\n";
    std::int32_t lines = 1;
    const auto add = [&](const std::string& line) {
        csv += line + "\n";
        return ++lines;
    };
    std::vector<std::int32_t> bad = {add("001001,Ada,yesterday")};
    while (csv.size() < (1u << 20u) - 20) {
        add("001001,\"Winter, Ada\",2026-03-02 08:55");
    }
    bad.push_back(add("999999,Nobody,2026-03-02 08:55:30"));
    while (csv.size() < (9u << 17u)) {
        add("001002,,2026-03-03T09:05:59");
    }
    bad.push_back(add("001003;Clara;2026-03-03 09:05"));
    const protocol::FileImportReturn result = Import(csv);
    EXPECT_EQ(result.total, lines - 1);
    EXPECT_EQ(result.failed, 3);
    EXPECT_EQ(result.succeeded, lines - 4);
    ASSERT_EQ(result.fileImportFailureList.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(result.fileImportFailureList[i].lineNo, bad[i]);
        EXPECT_FALSE(result.fileImportFailureList[i].reason.empty());
    }
    EXPECT_EQ(result.fileImportFailureList[1].text, "999999,Nobody,2026-03-02 08:55:30");
}

TEST_F(AttendancePlatform, AnUploadThatStoppedIsNotImported)
{
    TempFolder folder;
    protocol::ImportAttendanceFiles order;
    const auto progress = std::make_shared<int>(0);
    const std::string file = folder.Write("records.csv", std::string(2u << 20u, ' ') + "\n001001,,2026-03-02 08:55\n");
    failIn = 2;
    EXPECT_FALSE(FileImportEventCommAtt::requestUploadByAttendance(progress, order.uploadGuid, file));
    EXPECT_EQ(*progress, 49);
    protocol::FileImportReturnData result;
    EXPECT_FALSE(FileImportEventCommAtt::requestImportFileByAttendance(result, order));
    EXPECT_EQ(Keel::Error::GetLastError().number, 20);
    ASSERT_TRUE(FileImportEventCommAtt::requestUploadByAttendance(progress, order.uploadGuid, file));
    ASSERT_TRUE(FileImportEventCommAtt::requestImportFileByAttendance(result, order));
    EXPECT_EQ(result.fileImportReturn.succeeded, 1) << "a new attempt begins anew";
}

TEST_F(AttendancePlatform, AWeekComesOutAsByHandAndAddsUp)
{
    ASSERT_TRUE(ArrangePerson(1, AddOffice(), "2026-03-01"));
    EXPECT_EQ(Import(kWeek).succeeded, 10);
    EXPECT_EQ(Calculate("2026-03-02", "2026-03-08").status, 2);
    EXPECT_EQ(calculated_, 1) << "nobody else is arranged";

    const protocol::StatisticsCalcData rows = Rows();
    ASSERT_EQ(rows.statisticsCalcList.size(), 7u);
    const struct {
        const char *date, *start, *end, *shift, *detail;
        int late, early, expected, absence, work;
    } week[] = {
        {"2026-03-02", "normal", "normal", "Office", "08:55 18:00", 0, 0, 480, 0, 480},
        {"2026-03-03", "late", "normal", "Office", "09:20 18:00", 20, 0, 480, 0, 460},
        {"2026-03-04", "normal", "early", "Office", "09:00 17:30", 0, 30, 480, 0, 450},
        {"2026-03-05", "absence", "absence", "Office", "", 0, 0, 480, 480, 0},
        {"2026-03-06", "late", "early", "Office", "09:10 17:15", 10, 45, 480, 0, 425},
        {"2026-03-07", "rest", "rest", "Office", "", 0, 0, 0, 0, 0},
        {"2026-03-08", "rest", "rest", "Office", "", 0, 0, 0, 0, 0},
    };
    for (std::size_t i = 0; i < 7; ++i) {
        const protocol::StatisticsCalc& row = rows.statisticsCalcList[i];
        SCOPED_TRACE(week[i].date);
        EXPECT_EQ(row.attendenceDate, week[i].date);
        EXPECT_EQ(row.startWorkStatus, week[i].start);
        EXPECT_EQ(row.endWorkStatus, week[i].end);
        EXPECT_EQ(row.shiftName, week[i].shift);
        EXPECT_EQ(row.detail, week[i].detail);
        EXPECT_EQ(row.lateDuration, week[i].late);
        EXPECT_EQ(row.earlyDuration, week[i].early);
        EXPECT_EQ(row.attendanceDuration, week[i].expected);
        EXPECT_EQ(row.absenceDuration, week[i].absence);
        EXPECT_EQ(row.workDuration, week[i].work);
        EXPECT_EQ(row.personnelName, "Ada Winter");
        EXPECT_EQ(row.orgName, "Production");
    }

    const protocol::MonthDetail month = Month(1);
    EXPECT_EQ(month.personnelName, "Ada Winter");
    ASSERT_EQ(month.dayDetailList.size(), 7u);
    EXPECT_EQ(month.dayDetailList[4].status, "lateAndEarly");
    EXPECT_EQ(month.dayDetailList[5].dayType, "weekend");
    EXPECT_EQ(month.workDayTotal, 5);
    EXPECT_EQ(month.attendDayTotal, 4);
    EXPECT_EQ(month.lateTotal, 2);
    EXPECT_EQ(month.earlyTotal, 2);
    EXPECT_EQ(month.absenceTotal, 1);
    EXPECT_EQ(month.lateDuration, 30);
    EXPECT_EQ(month.earlyDuration, 75);
    EXPECT_EQ(month.absenceDuration, 480);
    EXPECT_EQ(month.workDuration, 1815);
    const auto sum = [&](std::int32_t protocol::DayDetail::*member) {
        return std::accumulate(month.dayDetailList.begin(), month.dayDetailList.end(), 0,
                               [&](int total, const protocol::DayDetail& day) { return total + day.*member; });
    };
    EXPECT_EQ(sum(&protocol::DayDetail::workDuration), month.workDuration);
    EXPECT_EQ(sum(&protocol::DayDetail::lateDuration), month.lateDuration);

    // Pages, days and states narrow.
    protocol::StatisticsCalcCondition condition;
    condition.pageSize = 3;
    condition.pageNo = 3;
    EXPECT_EQ(Rows(condition).total, 7);
    EXPECT_EQ(Rows(condition).statisticsCalcList.size(), 1u);
    condition = {};
    condition.startDate = "2026-03-03";
    condition.endDate = "2026-03-05";
    EXPECT_EQ(Rows(condition).total, 3);
    condition = {};
    condition.statusList = {"late", "absence"};
    EXPECT_EQ(Rows(condition).total, 3);
    condition = {};
    condition.orgIDList = {kOffices};
    EXPECT_EQ(Rows(condition).total, 0);
    protocol::DetailCondition days;
    days.statusList = {"rest"};
    protocol::HandleDetail page;
    ASSERT_TRUE(AttendanceHandleComm::getPageDetail(page, days));
    ASSERT_EQ(page.total, 2);
    EXPECT_EQ(page.personDayDetailList[1].dayDetail.date, "2026-03-08");
}

TEST_F(AttendancePlatform, CorrectionsHolidaysAndRulesChangeWhatComesOut)
{
    ASSERT_TRUE(ArrangePerson(1, AddOffice(), "2026-03-01"));
    Import(kWeek, true); // Calculates what changes.
    EXPECT_EQ(Month(1).absenceDuration, 480);

    protocol::VacateMainType main;
    main.mainTypeName = "Leave";
    ASSERT_TRUE(VacateConfigComm::addMainInfo(main));
    protocol::VacateSubTypeInfo kind;
    kind.mainTypeID = main.mainTypeID;
    kind.subTypeName = "Holidays";
    ASSERT_TRUE(VacateConfigComm::addSubInfo(kind));
    protocol::VacateMainContainsVacateSubInfoData kinds;
    ASSERT_TRUE(VacateConfigComm::getSubInfo(kinds, {}));
    ASSERT_EQ(kinds.vacateMainContainsVacateSubInfoList.size(), 1u);
    EXPECT_EQ(kinds.vacateMainContainsVacateSubInfoList[0].mainTypeName, "Leave");
    ASSERT_EQ(kinds.vacateMainContainsVacateSubInfoList[0].vacateSubInfoList.size(), 1u);
    const std::string subType = kinds.vacateMainContainsVacateSubInfoList[0].vacateSubInfoList[0].subTypeID;

    const std::string leave = Correct(1, "vocation", "2026-03-05T09:00:00+00:00", "2026-03-05T18:00:00+00:00", subType);
    Correct(1, "clock", "2026-03-04T18:02:00+00:00", "");
    protocol::HandleData handled;
    ASSERT_TRUE(AttendanceHandleComm::getHandleInfo(handled, leave));
    EXPECT_EQ(handled.personnelName, "Ada Winter");
    EXPECT_EQ(handled.subTypeName, "Holidays");
    protocol::GetHandleCondition thatDay;
    thatDay.startDate = thatDay.endDate = "2026-03-04";
    protocol::HandleInfos found;
    ASSERT_TRUE(AttendanceHandleComm::getHandleInfos(found, thatDay));
    EXPECT_EQ(found.total, 1) << "the last day counts whole";

    protocol::Holiday holiday;
    holiday.holidayName = "Founding day";
    holiday.startDate = holiday.endDate = "2020-03-06";
    holiday.repeatYearly = true;
    protocol::HolidayResult added;
    ASSERT_TRUE(HolidayConfigComm::addInfo(added, holiday));
    protocol::HolidayInfoReslultData one;
    ASSERT_TRUE(HolidayConfigComm::getInfo(one, "/" + added.holidayID));
    EXPECT_EQ(one.holidayInfo.holidayName, "Founding day");

    protocol::OvertimeConfig overtime;
    protocol::OvertimeRule& weekend = overtime.overtimeRuleList.emplace_back();
    weekend.dayType = "weekend";
    weekend.level = 2;
    ASSERT_TRUE(OvertimeConfigComm::setInfo(overtime));
    protocol::BasicRule rule;
    rule.lateToAbsenceDuration = 20;
    rule.WriteOnly({"lateToAbsenceDuration"});
    ASSERT_TRUE(BasicConfigComm::setInfo(rule));
    protocol::BasicRuleResult kept;
    ASSERT_TRUE(BasicConfigComm::getInfo(kept));
    EXPECT_EQ(kept.basicRule.lateToAbsenceDuration, 20);
    EXPECT_EQ(kept.basicRule.earlyToAbsenceDuration, 60) << "what is in force without being set";

    EXPECT_EQ(Calculate("2026-03-02", "2026-03-08").progress, 100);
    const protocol::StatisticsCalcData rows = Rows();
    ASSERT_GE(rows.statisticsCalcList.size(), 7u);
    const auto row = [&](const std::string& date) {
        for (const protocol::StatisticsCalc& each : rows.statisticsCalcList) {
            if (each.attendenceDate == date) {
                return each;
            }
        }
        ADD_FAILURE() << date;
        return protocol::StatisticsCalc();
    };
    EXPECT_EQ(row("2026-03-03").startWorkStatus, "absence") << "20 minutes late are absence now";
    EXPECT_EQ(row("2026-03-04").workDuration, 480);
    EXPECT_EQ(row("2026-03-05").vocationDuartion, 480);
    EXPECT_EQ(row("2026-03-05").vocationName, "Holidays");
    EXPECT_EQ(row("2026-03-05").absenceDuration, 0);
    EXPECT_EQ(row("2026-03-06").startWorkStatus, "rest");
    EXPECT_EQ(row("2026-03-07").level2Duartion, 240);
    const protocol::MonthDetail month = Month(1);
    EXPECT_EQ(month.overtimeDuration, 240);
    EXPECT_EQ(month.vocationDuration, 480);
    for (const protocol::DayDetail& day : month.dayDetailList) {
        EXPECT_EQ(day.handleIDList.size(), day.date == "2026-03-04" || day.date == "2026-03-05" ? 1u : 0u) << day.date;
        EXPECT_EQ(day.dayType == "holiday", day.date == "2026-03-06");
    }
}

TEST_F(AttendancePlatform, NightsBelongToTheDayTheyBeginOn)
{
    protocol::AddPeriod night;
    night.startTime = "22:00";
    night.endTime = "06:00";
    night.startClockBegin = "20:00";
    night.startClockEnd = "02:00";
    night.endClockBegin = "03:00";
    night.endClockEnd = "10:00";
    night.restPeriodIDList = {AddRest("01:00", "01:30")};
    ASSERT_TRUE(ArrangePerson(2, AddShift("Night", "day", 1, AddPeriod(night)), "2026-03-02"));
    Import("number,name,time\n001002,,2026-03-02 21:50\n001002,,2026-03-03 06:05\n"
           "001002,,2026-03-03 22:30\n001002,,2026-03-04 05:30\n");
    Calculate("2026-03-02", "2026-03-04");
    const protocol::StatisticsCalcData rows = Rows();
    ASSERT_EQ(rows.statisticsCalcList.size(), 3u);
    EXPECT_EQ(rows.statisticsCalcList[0].detail, "21:50 06:05");
    EXPECT_EQ(rows.statisticsCalcList[0].workDuration, 450);
    EXPECT_EQ(rows.statisticsCalcList[0].restDuartion, 30);
    EXPECT_EQ(rows.statisticsCalcList[1].lateDuration, 30);
    EXPECT_EQ(rows.statisticsCalcList[1].earlyDuration, 30);
    EXPECT_EQ(rows.statisticsCalcList[1].workDuration, 390);
    EXPECT_EQ(rows.statisticsCalcList[2].absenceDuration, 450);
    EXPECT_EQ(Month(2).workDuration, 840);
}

TEST_F(AttendancePlatform, ArrangementsReachDownAndTheNearestCounts)
{
    const std::string office = AddOffice();
    protocol::AddPeriod period;
    period.startTime = "13:00";
    period.endTime = "17:00";
    const std::string afternoon = AddPeriod(period);
    const std::string late = AddShift("Late", "week", 7, afternoon);

    protocol::DepartArrange depart;
    depart.includeChildOrg = true;
    depart.arrange.shiftID = office;
    depart.arrange.startDate = "2026-03-01";
    ASSERT_TRUE(ArrangeComm::setOrgArrange(depart, kOffices));
    ASSERT_TRUE(ArrangePerson(3, late, "2026-03-04"));
    protocol::TempArrange days;
    days.tempShiftList.resize(2);
    days.tempShiftList[0].date = "2026-03-05"; // Free.
    days.tempShiftList[1].date = "2026-03-06";
    days.tempShiftList[1].periodIDList = {afternoon};
    ASSERT_TRUE(ArrangeComm::setPersonnelTmpArrange(days, Person(3)));
    days.tempShiftList.erase(days.tempShiftList.begin());
    days.tempShiftList[0].periodIDList.clear();
    days.tempShiftList[0].shiftID = office;
    ASSERT_TRUE(ArrangeComm::setPersonnelTmpArrange(days, Person(3)));

    protocol::PersonnelTempArrangeResponse single;
    ASSERT_TRUE(ArrangeComm::getPersonnelTmpArrange(single, {}, Person(3)));
    EXPECT_EQ(single.personnelName, "Clara Holm");
    ASSERT_EQ(single.tempShiftList.size(), 2u) << "a day replaces itself, others stay";
    EXPECT_EQ(single.tempShiftList[1].shiftID, office);
    protocol::PersonnelArrangeResponse own;
    ASSERT_TRUE(ArrangeComm::getPersonnelArrange(own, {}, Person(6)));
    EXPECT_TRUE(own.inherited);
    EXPECT_EQ(own.orgName, "Laboratory");
    ASSERT_EQ(own.arrangeList.size(), 1u);
    EXPECT_EQ(own.arrangeList[0].shiftID, office);

    EXPECT_EQ(Calculate("2026-03-03", "2026-03-06", {Person(3), Person(1)}).status, 2);
    EXPECT_EQ(calculated_, 2);
    protocol::StatisticsCalcCondition condition;
    condition.personnelIDList = {Person(3)};
    const protocol::StatisticsCalcData rows = Rows(condition);
    ASSERT_EQ(rows.statisticsCalcList.size(), 4u);
    const int expected[] = {480, 240, 0, 480};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(rows.statisticsCalcList[i].attendanceDuration, expected[i]) << i;
    }
    condition.personnelIDList = {Person(1)};
    EXPECT_EQ(Rows(condition).statisticsCalcList[0].shiftName, "") << "production is not arranged";
    condition = {};
    condition.orgIDList = {kOffices};
    EXPECT_EQ(Rows(condition).total, 4) << "with what stands below";

    protocol::QueryArrangeCondition march;
    march.startDate = "2026-03-02";
    march.endDate = "2026-03-06";
    protocol::ArrangeStatusResponseData status;
    ASSERT_TRUE(ArrangeComm::getArrangeStatus(status, march));
    ASSERT_EQ(status.arrangeStatusResponse.total, 4);
    for (const protocol::ArrangeStatus& each : status.arrangeStatusResponse.arrangeStatusList) {
        const bool arranged = each.orgID == kOffices || each.orgID == kLaboratory;
        EXPECT_EQ(each.personTotal, each.orgName == "Example Works" ? 0 : 8);
        EXPECT_EQ(each.arrangedTotal, arranged ? 8 : 0) << each.orgName;
        EXPECT_EQ(each.temporaryTotal, each.orgID == kLaboratory ? 1 : 0);
    }

    // What began last counts; what is in use stays.
    depart.arrange.shiftID = late;
    depart.arrange.startDate = "2026-03-09";
    ASSERT_TRUE(ArrangeComm::setOrgArrange(depart, kLaboratory));
    ASSERT_TRUE(ArrangeComm::getPersonnelArrange(own, {}, Person(3)));
    EXPECT_FALSE(own.inherited);
    depart.overridePersonal = true;
    ASSERT_TRUE(ArrangeComm::setOrgArrange(depart, kOffices));
    ASSERT_TRUE(ArrangeComm::getPersonnelArrange(own, {}, Person(3)));
    EXPECT_TRUE(own.inherited) << "the person's own is taken away";
    Calculate("2026-03-09", "2026-03-09", {Person(3)});
    condition.orgIDList.clear();
    condition.startDate = "2026-03-09";
    EXPECT_EQ(Rows(condition).statisticsCalcList.at(0).shiftName, "Late");
    protocol::ShiftResultListData shifts;
    protocol::ShiftList doomed;
    doomed.shiftIDList = {late};
    ASSERT_TRUE(ShiftComm::removeByIdRequest(shifts, doomed));
    EXPECT_NE(shifts.shiftResultList.at(0).resultCode, 0);
    protocol::PeriodConfigDeleteResultData periods;
    protocol::PeriodConfigDelete doomedPeriods;
    doomedPeriods.periodIDList = {afternoon};
    ASSERT_TRUE(PeriodConfigComm::deletePeriodInfo(periods, doomedPeriods));
    EXPECT_NE(periods.periodConfigDeleteResultList.at(0).resultCode, 0);

    EXPECT_FALSE(ArrangePerson(3, "no such shift", "2026-03-01"));
    EXPECT_FALSE(ArrangePerson(3, late, "tomorrow"));
}

TEST_F(AttendancePlatform, ACalculationTakesTime)
{
    protocol::CalculateStatusData status;
    ASSERT_TRUE(CalculateComm::queryCalculateStatus(status));
    EXPECT_EQ(status.calculateStatus.status, 0);
    protocol::ManualCalcCondition condition;
    condition.startDate = "2026-03-01";
    condition.endDate = "2026-03-31";
    condition.personnelIDList = {Person(1), Person(2)};
    protocol::ManualResultData result;
    ASSERT_TRUE(CalculateComm::manualCalculate(result, condition));
    int last = -1;
    for (int i = 0; status.calculateStatus.status != 2 && i < 100; ++i) {
        ASSERT_TRUE(CalculateComm::queryCalculateStatus(status));
        EXPECT_EQ(status.calculateStatus.status, status.calculateStatus.progress == 100 ? 2 : 1);
        EXPECT_EQ(status.calculateStatus.finishTime.empty(), status.calculateStatus.status == 1);
        EXPECT_GT(status.calculateStatus.progress, last);
        last = status.calculateStatus.progress;
        now += 31;
    }
    EXPECT_EQ(last, 100);
    condition.endDate = "2026-02-28";
    EXPECT_FALSE(CalculateComm::manualCalculate(result, condition));
}

TEST_F(AttendancePlatform, StatisticsAddUpAndStayTheSame)
{
    protocol::PeopleCountingQueryData people;
    people.peopleCountingQuery.channelGuidList = {"c1", "c2"};
    people.peopleCountingQuery.startTime = "2026-03-02T00:00:00+00:00";
    people.peopleCountingQuery.endTime = "2026-03-09T00:00:00+00:00";
    protocol::PeopleCountingDataData counted;
    protocol::PeopleCountingDataData again;
    ASSERT_TRUE(CDataStatisticsComm::peopleCountingRequest(counted, people));
    ASSERT_TRUE(CDataStatisticsComm::peopleCountingRequest(again, people));
    ASSERT_EQ(counted.peopleCountingDataList.size(), 2u);
    for (const protocol::PeopleCountingData& channel : counted.peopleCountingDataList) {
        ASSERT_EQ(channel.peopleCountingValueList.size(), 7u);
        int entered = 0;
        for (const protocol::PeopleCountingValue& value : channel.peopleCountingValueList) {
            entered += value.enterNum;
        }
        EXPECT_EQ(channel.enterTotal, entered);
        EXPECT_GT(entered, 0);
    }
    EXPECT_EQ(again.peopleCountingDataList[1].exitTotal, counted.peopleCountingDataList[1].exitTotal);

    protocol::DSAlarmLogQueryData alarms;
    alarms.dSAlarmLogQuery.startTime = people.peopleCountingQuery.startTime;
    alarms.dSAlarmLogQuery.endTime = people.peopleCountingQuery.endTime;
    for (const std::int32_t top : {0, 3}) {
        alarms.dSAlarmLogQuery.top = top;
        protocol::DSAlarmLogResultDataData result;
        ASSERT_TRUE(CDataStatisticsComm::DSAlarmLogRequest(result, alarms));
        const std::vector<protocol::DSAlarmLogResult>& groups = result.dSAlarmLogResultData.dSAlarmLogResultList;
        ASSERT_EQ(groups.size(), top == 0 ? 7u : 3u);
        int total = 0;
        for (const protocol::DSAlarmLogResult& group : groups) {
            total += group.alarmNum;
            EXPECT_LE(group.handledNum, group.alarmNum);
            EXPECT_TRUE(top == 0 || group.alarmNum <= groups[0].alarmNum);
        }
        EXPECT_EQ(result.dSAlarmLogResultData.total, total);
    }

    protocol::HeatMapQueryData heat;
    heat.heatMapQuery.channelGuid = "c1";
    heat.heatMapQuery.startTime = "2026-03-02T00:00:00+00:00";
    heat.heatMapQuery.endTime = "2026-03-03T00:00:00+00:00";
    protocol::DsHeatMapResultDataData map;
    ASSERT_TRUE(CDataStatisticsComm::HeatMapRequest(map, heat));
    const protocol::DsHeatMapResultData& fields = map.dsHeatMapResultData;
    EXPECT_EQ(fields.fieldList.size(), static_cast<std::size_t>(fields.width * fields.height));
    EXPECT_EQ(fields.dsHeatMapValueList.size(), 24u);
    heat.heatMapQuery.endTime = "2026-03-01T00:00:00+00:00";
    EXPECT_TRUE(CDataStatisticsComm::HeatMapRequest(map, heat)) << "a refusal is no failure here";
    EXPECT_NE(LastExchange().number, 0);
}

} // namespace
