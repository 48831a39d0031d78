#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace nexwire::simulator {

// What clock records mean for a stretch of work. Everything is whole minutes from midnight of the day that the stretch
// belongs to; the next day begins at 1440. No store, no JSON: what comes out can be worked out by hand.

constexpr int kDayMinutes = 1440;

struct Span {
    int begin = 0;
    int end = 0;

    int Length() const { return end > begin ? end - begin : 0; }
};

/// Minutes that two spans share.
int Overlap(Span one, Span other);

struct WorkPeriod {
    Span work;
    Span startWindow; ///< Records in it can be the start.
    Span endWindow;
    bool needStart = true;
    bool needEnd = true;
    int lateAllowed = 0;
    int earlyAllowed = 0;
    int lateToAbsence = 0; ///< 0 never.
    int earlyToAbsence = 0;
    int flexible = 0; ///< So late may be made up for by leaving later.
    std::vector<Span> rests;
};

/// What a missing record is taken for.
struct MissingClock {
    std::string start = "absence"; ///< "absence", "late", "normal".
    int startDuration = 0;
    std::string end = "absence"; ///< "absence", "early", "normal".
    int endDuration = 0;
};

struct OvertimeTerms {
    bool enabled = false;
    int level = 1;      ///< 1 to 3.
    int startAfter = 0; ///< Minutes behind the end of work that do not count.
    int least = 0;
    int most = 0; ///< 0 no limit.
};

struct PeriodOutcome {
    std::string startStatus = "normal"; ///< "normal", "late", "absence", "vocation", "noClock".
    std::string endStatus = "normal";   ///< "normal", "early", "absence", "vocation", "noClock".
    int late = 0;
    int early = 0;
    int expected = 0; ///< To be worked, without rests and leave.
    int absence = 0;
    int work = 0;
    int rest = 0;
    int leave = 0;
    int overtime = 0;
    int startClock = -1; ///< -1 none.
    int endClock = -1;
};

/// @param clocks  sorted.
/// @param leaves  spans of leave; they are not expected to be worked.
PeriodOutcome Assess(const WorkPeriod& period, const std::vector<int>& clocks, const std::vector<Span>& leaves,
                     const MissingClock& missing, const OvertimeTerms& overtime);

/// Days from 1970-01-01; false unless the text begins with a date, "YYYY-MM-DD".
bool ParseDate(const std::string& text, int& day);
std::string PrintDate(int day);
/// Minutes from "HH:MM"; -1 for anything else.
int ParseTime(const std::string& text);
std::string PrintTime(int minutes);
/// Minutes from 1970-01-01 00:00 of "YYYY-MM-DD?HH:MM...", as it stands: sites write their own time.
bool ParseMoment(const std::string& text, int& minute);
/// Monday is 1.
int WeekDay(int day);

/// A line of a file of records.
struct ClockLine {
    int number = 0; ///< From 1, the heading included.
    std::string text;
    std::string code;  ///< Number of the person.
    int minute = 0;    ///< From 1970-01-01 00:00.
    std::string fault; ///< What is wrong with the line; empty when it is good.
};

/// Reads "number,name,date time" line by line; empty lines are passed over. What quotes surround may hold separators.
std::vector<ClockLine> ReadClockLines(const std::string& file, const std::string& separator, bool skipFirst);

} // namespace nexwire::simulator
