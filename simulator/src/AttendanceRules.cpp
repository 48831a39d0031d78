#include "src/AttendanceRules.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace nexwire::simulator {
namespace {

bool Digits(const std::string& text, std::size_t at, std::size_t count, int& value)
{
    value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (i >= text.size() || text[i] < '0' || text[i] > '9') {
            return false;
        }
        value = value * 10 + (text[i] - '0');
    }
    return true;
}

/// Days from 1970-01-01 of a day of the Gregorian calendar; years begin in March, so that leap days end one.
int DaysFromCivil(int year, int month, int day)
{
    year -= month <= 2 ? 1 : 0;
    const int era = year / 400;
    const int yearOfEra = year - era * 400;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

int Shared(const std::vector<Span>& spans, Span with)
{
    int minutes = 0;
    for (const Span& span : spans) {
        minutes += Overlap(span, with);
    }
    return minutes;
}

std::string Trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\"");
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(" \t\r\"") - first + 1);
}

std::vector<std::string> Columns(const std::string& line, const std::string& separator)
{
    std::vector<std::string> columns;
    std::size_t at = 0;
    for (std::size_t next; (next = line.find(separator, at)) != std::string::npos; at = next + separator.size()) {
        columns.push_back(Trimmed(line.substr(at, next - at)));
    }
    columns.push_back(Trimmed(line.substr(at)));
    return columns;
}

} // namespace

int Overlap(Span one, Span other)
{
    return std::max(0, std::min(one.end, other.end) - std::max(one.begin, other.begin));
}

PeriodOutcome Assess(const WorkPeriod& period, const std::vector<int>& clocks, const std::vector<Span>& leaves,
                     const MissingClock& missing, const OvertimeTerms& overtime)
{
    PeriodOutcome outcome;
    const auto inside = [](Span window, int clock) { return clock >= window.begin && clock <= window.end; };
    for (const int clock : clocks) {
        if (outcome.startClock < 0 && inside(period.startWindow, clock)) {
            outcome.startClock = clock;
        }
    }
    for (const int clock : clocks) {
        if (inside(period.endWindow, clock) && clock > outcome.startClock) {
            outcome.endClock = clock;
        }
    }
    // Rests within leave belong to the leave.
    const int rests = Shared(period.rests, period.work);
    int restsInLeave = 0;
    for (const Span& rest : period.rests) {
        restsInLeave += std::min(rest.Length(), Shared(leaves, rest));
    }
    const int leave = Shared(leaves, period.work);
    outcome.leave = std::max(0, leave - restsInLeave);
    outcome.rest = rests - restsInLeave;
    outcome.expected = std::max(0, period.work.Length() - rests - outcome.leave);

    // Who is on leave at one end is not expected there.
    const auto onLeave = [&](int minute) {
        return std::any_of(leaves.begin(), leaves.end(),
                           [&](const Span& span) { return span.begin <= minute && minute < span.end; });
    };
    Span due = period.work;
    for (const Span& span : leaves) {
        if (span.begin <= due.begin && span.end > due.begin) {
            due.begin = span.end;
        }
        if (span.end >= due.end && span.begin < due.end) {
            due.end = std::max(due.begin, span.begin);
        }
    }
    const bool leaveAtStart = onLeave(period.work.begin);
    const bool leaveAtEnd = onLeave(period.work.end - 1);
    if (due.Length() == 0) {
        outcome.startStatus = outcome.endStatus = "vocation";
        outcome.rest = 0;
        return outcome;
    }

    const bool noStart = outcome.startClock < 0 && period.needStart && !leaveAtStart;
    const bool noEnd = outcome.endClock < 0 && period.needEnd && !leaveAtEnd;
    bool absent = noStart && noEnd;
    outcome.startStatus = leaveAtStart ? "vocation" : "normal";
    outcome.endStatus = leaveAtEnd ? "vocation" : "normal";
    int startedAt = due.begin;
    if (noStart) {
        outcome.startStatus = missing.start == "normal" ? "noClock" : missing.start;
        absent = absent || missing.start == "absence";
        outcome.late = missing.start == "late" ? missing.startDuration : 0;
    } else if (outcome.startClock > due.begin) {
        startedAt = outcome.startClock;
        const int late = outcome.startClock - due.begin;
        // Coming later is made up for by leaving later.
        const int made = std::min({period.flexible, late, std::max(0, outcome.endClock - due.end)});
        if (late - made > period.lateAllowed) {
            outcome.late = late - made;
            outcome.startStatus = "late";
        }
        if (period.lateToAbsence > 0 && outcome.late >= period.lateToAbsence) {
            absent = true;
            outcome.startStatus = "absence";
        }
    }
    int endedAt = due.end;
    if (noEnd) {
        outcome.endStatus = missing.end == "normal" ? "noClock" : missing.end;
        absent = absent || missing.end == "absence";
        outcome.early = missing.end == "early" ? missing.endDuration : 0;
    } else if (outcome.endClock >= 0 && outcome.endClock < due.end) {
        endedAt = outcome.endClock;
        const int early = due.end - outcome.endClock;
        if (early > period.earlyAllowed) {
            outcome.early = early;
            outcome.endStatus = "early";
        }
        if (period.earlyToAbsence > 0 && outcome.early >= period.earlyToAbsence) {
            absent = true;
            outcome.endStatus = "absence";
        }
    }
    if (absent) {
        outcome.absence = outcome.expected;
        outcome.late = outcome.early = 0;
        outcome.startStatus = outcome.startStatus == "vocation" ? "vocation" : "absence";
        outcome.endStatus = outcome.endStatus == "vocation" ? "vocation" : "absence";
        return outcome;
    }
    if (period.flexible > 0 && outcome.endClock > due.end) {
        endedAt = std::min(outcome.endClock, due.end + std::min(period.flexible, std::max(0, startedAt - due.begin)));
    }
    const Span worked{startedAt, endedAt};
    outcome.work = std::max(0, worked.Length() - Shared(period.rests, worked) - Shared(leaves, worked));
    if (overtime.enabled && outcome.endClock >= 0) {
        const int extra = outcome.endClock - endedAt - overtime.startAfter;
        if (extra > 0 && extra >= overtime.least) {
            outcome.overtime = overtime.most > 0 ? std::min(extra, overtime.most) : extra;
        }
    }
    return outcome;
}

bool ParseDate(const std::string& text, int& day)
{
    static constexpr std::array<int, 12> kLengths = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int year = 0;
    int month = 0;
    int date = 0;
    if (!Digits(text, 0, 4, year) || !Digits(text, 5, 2, month) || !Digits(text, 8, 2, date) || text[4] != '-' ||
        text[7] != '-' || year < 1970 || month < 1 || month > 12 || date < 1 ||
        date > kLengths[static_cast<std::size_t>(month - 1)]) {
        return false;
    }
    day = DaysFromCivil(year, month, date);
    return PrintDate(day) == text.substr(0, 10);
}

std::string PrintDate(int day)
{
    const int shifted = day + 719468;
    const int era = shifted / 146097;
    const int dayOfEra = shifted - era * 146097;
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int monthFromMarch = (5 * dayOfYear + 2) / 153;
    const int month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month,
                  dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    return text;
}

int ParseTime(const std::string& text)
{
    int hour = 0;
    int minute = 0;
    if (!Digits(text, 0, 2, hour) || !Digits(text, 3, 2, minute) || text[2] != ':' || hour > 24 || minute > 59) {
        return -1;
    }
    return hour * 60 + minute;
}

std::string PrintTime(int minutes)
{
    char text[16];
    const int ofDay = ((minutes % 1440) + 1440) % 1440;
    std::snprintf(text, sizeof text, "%02d:%02d", ofDay / 60, ofDay % 60);
    return text;
}

int WeekDay(int day)
{
    return (day + 3) % 7 + 1; // 1970-01-01 was a Thursday.
}

std::vector<ClockLine> ReadClockLines(const std::string& file, const std::string& separator, bool skipFirst)
{
    std::vector<ClockLine> lines;
    std::size_t at = file.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    for (int number = 1; at < file.size(); ++number) {
        const std::size_t end = std::min(file.find('\n', at), file.size());
        ClockLine line;
        line.number = number;
        line.text = file.substr(at, end - at);
        at = end + 1;
        if (!line.text.empty() && line.text.back() == '\r') {
            line.text.pop_back();
        }
        if (Trimmed(line.text).empty() || (skipFirst && number == 1)) {
            continue;
        }
        const std::vector<std::string> columns = Columns(line.text, separator.empty() ? "," : separator);
        if (columns.size() < 3) {
            line.fault = "three columns are needed: number, name, time";
        } else if (columns[0].empty()) {
            line.fault = "no number";
        } else if (!ParseDate(columns[2], line.day) || columns[2].size() < 16 ||
                   (line.minute = ParseTime(columns[2].substr(11))) < 0 || line.minute > 1439) {
            line.fault = "no time: \"" + columns[2] + "\"";
        }
        if (!columns.empty()) {
            line.code = columns[0];
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace nexwire::simulator
