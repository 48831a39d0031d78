#include <gtest/gtest.h>

#include "simulator/src/AttendanceRules.h"

// Cases worked out by hand.

namespace nexwire::simulator {
namespace {

constexpr int At(int hour, int minute)
{
    return hour * 60 + minute;
}

/// 09:00 to 18:00 with a rest from 12:00 to 13:00; 10 minutes late and 5 minutes early pass.
WorkPeriod Office()
{
    WorkPeriod period;
    period.work = {At(9, 0), At(18, 0)};
    period.startWindow = {At(7, 0), At(12, 0)};
    period.endWindow = {At(12, 30), At(23, 0)};
    period.lateAllowed = 10;
    period.earlyAllowed = 5;
    period.lateToAbsence = 60;
    period.earlyToAbsence = 60;
    period.rests = {{At(12, 0), At(13, 0)}};
    return period;
}

struct Case {
    const char* name;
    std::vector<int> clocks;
    std::vector<Span> leaves;
    const char* start;
    const char* end;
    int late, early, expected, absence, work, rest, leave, overtime;
};

TEST(AttendanceRules, AnOfficeDay)
{
    const OvertimeTerms overtime{true, 1, 30, 15, 120};
    const Case cases[] = {
        {"on time", {At(8, 55), At(18, 1)}, {}, "normal", "normal", 0, 0, 480, 0, 480, 60, 0, 0},
        {"the first and the last record count",
         {At(8, 0), At(12, 10), At(12, 50), At(18, 0)},
         {},
         "normal",
         "normal",
         0,
         0,
         480,
         0,
         480,
         60,
         0,
         0},
        {"late within what passes", {At(9, 10), At(18, 0)}, {}, "normal", "normal", 0, 0, 480, 0, 470, 60, 0, 0},
        {"late", {At(9, 11), At(18, 0)}, {}, "late", "normal", 11, 0, 480, 0, 469, 60, 0, 0},
        {"early", {At(9, 0), At(17, 54)}, {}, "normal", "early", 0, 6, 480, 0, 474, 60, 0, 0},
        {"late and early", {At(9, 20), At(17, 30)}, {}, "late", "early", 20, 30, 480, 0, 430, 60, 0, 0},
        {"so late that it is absence", {At(10, 0), At(18, 0)}, {}, "absence", "absence", 0, 0, 480, 480, 0, 60, 0, 0},
        {"so early that it is absence", {At(9, 0), At(17, 0)}, {}, "absence", "absence", 0, 0, 480, 480, 0, 60, 0, 0},
        {"nobody came", {}, {}, "absence", "absence", 0, 0, 480, 480, 0, 60, 0, 0},
        {"no record at the end", {At(9, 0)}, {}, "absence", "absence", 0, 0, 480, 480, 0, 60, 0, 0},
        {"overtime counts behind 18:30", {At(9, 0), At(19, 0)}, {}, "normal", "normal", 0, 0, 480, 0, 480, 60, 0, 30},
        {"too little overtime", {At(9, 0), At(18, 44)}, {}, "normal", "normal", 0, 0, 480, 0, 480, 60, 0, 0},
        {"too much overtime", {At(9, 0), At(22, 0)}, {}, "normal", "normal", 0, 0, 480, 0, 480, 60, 0, 120},
        {"leave in the morning",
         {At(13, 5), At(18, 0)},
         {{At(9, 0), At(13, 0)}},
         "vocation",
         "normal",
         0,
         0,
         300,
         0,
         300,
         0,
         180,
         0},
        {"leave in the afternoon",
         {At(9, 0), At(13, 0)},
         {{At(13, 0), At(18, 0)}},
         "normal",
         "vocation",
         0,
         0,
         180,
         0,
         180,
         60,
         300,
         0},
        {"leave all day", {}, {{At(0, 0), At(24, 0)}}, "vocation", "vocation", 0, 0, 0, 0, 0, 0, 480, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const PeriodOutcome outcome = Assess(Office(), c.clocks, c.leaves, MissingClock(), overtime);
        EXPECT_EQ(outcome.startStatus, c.start);
        EXPECT_EQ(outcome.endStatus, c.end);
        EXPECT_EQ(outcome.late, c.late);
        EXPECT_EQ(outcome.early, c.early);
        EXPECT_EQ(outcome.expected, c.expected);
        EXPECT_EQ(outcome.absence, c.absence);
        EXPECT_EQ(outcome.work, c.work);
        EXPECT_EQ(outcome.rest, c.rest);
        EXPECT_EQ(outcome.leave, c.leave);
        EXPECT_EQ(outcome.overtime, c.overtime);
    }
}

TEST(AttendanceRules, AMissingRecordIsWhatTheRuleSays)
{
    MissingClock missing;
    missing.start = "late";
    missing.startDuration = 45;
    missing.end = "normal";
    const PeriodOutcome noStart = Assess(Office(), {At(18, 0)}, {}, missing, {});
    EXPECT_EQ(noStart.startStatus, "late");
    EXPECT_EQ(noStart.late, 45);
    EXPECT_EQ(noStart.absence, 0);
    const PeriodOutcome noEnd = Assess(Office(), {At(9, 0)}, {}, missing, {});
    EXPECT_EQ(noEnd.endStatus, "noClock");
    EXPECT_EQ(noEnd.work, 480);
}

TEST(AttendanceRules, AShiftOverMidnight)
{
    WorkPeriod night;
    night.work = {At(22, 0), At(30, 0)};
    night.startWindow = {At(20, 0), At(26, 0)};
    night.endWindow = {At(27, 0), At(34, 0)};
    night.rests = {{At(25, 0), At(25, 30)}};
    const PeriodOutcome full = Assess(night, {At(21, 50), At(30, 5)}, {}, MissingClock(), {});
    EXPECT_EQ(full.expected, 450);
    EXPECT_EQ(full.work, 450);
    EXPECT_EQ(full.startStatus, "normal");
    // 00:30 of the next day, and home at 05:00.
    const PeriodOutcome shortened = Assess(night, {At(24, 30), At(29, 0)}, {}, MissingClock(), {});
    EXPECT_EQ(shortened.late, 150);
    EXPECT_EQ(shortened.early, 60);
    EXPECT_EQ(shortened.work, 240);
}

TEST(AttendanceRules, FlexibleTimesAreMadeUpFor)
{
    WorkPeriod period = Office();
    period.flexible = 60;
    period.lateAllowed = 0;
    const PeriodOutcome made = Assess(period, {At(9, 40), At(18, 40)}, {}, MissingClock(), {});
    EXPECT_EQ(made.late, 0);
    EXPECT_EQ(made.work, 480);
    const PeriodOutcome half = Assess(period, {At(9, 40), At(18, 15)}, {}, MissingClock(), {});
    EXPECT_EQ(half.late, 25);
    EXPECT_EQ(half.work, 455);
}

TEST(AttendanceRules, DatesAndTimes)
{
    int day = 0;
    ASSERT_TRUE(ParseDate("1970-01-01", day));
    EXPECT_EQ(day, 0);
    EXPECT_EQ(WeekDay(day), 4) << "a Thursday";
    ASSERT_TRUE(ParseDate("2024-02-29T08:00", day));
    EXPECT_EQ(PrintDate(day + 1), "2024-03-01");
    ASSERT_TRUE(ParseDate("2026-03-02", day));
    EXPECT_EQ(WeekDay(day), 1);
    for (const char* wrong : {"", "2023-02-29", "2024-13-01", "2024-00-10", "2024-04-31", "24-04-01", "2024/04/01"}) {
        EXPECT_FALSE(ParseDate(wrong, day)) << wrong;
    }
    EXPECT_EQ(ParseTime("24:00"), 1440);
    EXPECT_EQ(ParseTime("8:00"), -1);
    EXPECT_EQ(ParseTime("12:60"), -1);
    EXPECT_EQ(PrintTime(1445), "00:05");
    EXPECT_EQ(PrintTime(-30), "23:30");
}

TEST(AttendanceRules, BadLinesOfAFileAreNamedAndTheRestIsRead)
{
    const std::string file = "\xEF\xBB\xBFnumber,name,time\r\n001,\"Winter, Ada\",2026-03-02 08:55:10\r\n\r\n"
                             "002,Ben\n,Clara,2026-03-02 09:00\n003,Dan,2026-02-30 09:00\n004,Eve,2026-03-02 24:00\n"
                             "005,Fay,2026-03-02T17:05";
    const std::vector<ClockLine> lines = ReadClockLines(file, ",", true);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_EQ(lines[0].code, "001");
    EXPECT_EQ(lines[0].minute % kDayMinutes, At(8, 55));
    EXPECT_EQ(lines[0].number, 2);
    for (std::size_t i = 1; i < 5; ++i) {
        EXPECT_FALSE(lines[i].fault.empty()) << lines[i].text;
        EXPECT_EQ(lines[i].number, static_cast<int>(i + 3));
    }
    EXPECT_TRUE(lines[5].fault.empty());
    EXPECT_EQ(lines[5].minute % kDayMinutes, At(17, 5));
}

} // namespace
} // namespace nexwire::simulator
