#include "src/AttendanceRules.h"

#include <algorithm>
#include <cstdio>

#include "src/Clock.h"

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

constexpr std::int64_t kDayMs = 86400000;

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
    const std::size_t first = text.find_first_not_of(" \t\r");
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// Quotes keep separators together and do not belong to the text.
std::vector<std::string> Columns(const std::string& line, const std::string& separator)
{
    std::vector<std::string> columns(1);
    bool quoted = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == '"') {
            quoted = !quoted;
        } else if (!quoted && line.compare(at, separator.size(), separator) == 0) {
            columns.emplace_back();
            at += separator.size() - 1;
        } else {
            columns.back() += line[at];
        }
    }
    std::transform(columns.begin(), columns.end(), columns.begin(), Trimmed);
    return columns;
}

} // namespace

int Overlap(Span one, Span other)
{
    return std::max(0, std::min(one.end, other.end) - std::max(one.begin, other.begin));
}

namespace {

/// Works out one period, step by step.
class Assessment {
public:
    Assessment(const WorkPeriod& period, const std::vector<Span>& leaves, const MissingClock& missing)
        : period_(period), leaves_(leaves), missing_(missing), due_(period.work)
    {
    }

    /// The first record in the window of the start, and the last one behind it in that of the end.
    void Take(const std::vector<int>& clocks)
    {
        for (const int clock : clocks) {
            if (out_.startClock < 0 && clock >= period_.startWindow.begin && clock <= period_.startWindow.end) {
                out_.startClock = clock;
            }
        }
        for (const int clock : clocks) {
            if (clock >= period_.endWindow.begin && clock <= period_.endWindow.end && clock > out_.startClock) {
                out_.endClock = clock;
            }
        }
    }

    /// Rests within leave belong to the leave, and who is on leave at one end is not expected there.
    void Expect()
    {
        const int rests = Shared(period_.rests, period_.work);
        int restsInLeave = 0;
        for (const Span& rest : period_.rests) {
            restsInLeave += std::min(rest.Length(), Shared(leaves_, rest));
        }
        out_.leave = std::max(0, Shared(leaves_, period_.work) - restsInLeave);
        out_.rest = rests - restsInLeave;
        out_.expected = std::max(0, period_.work.Length() - rests - out_.leave);
        for (const Span& span : leaves_) {
            if (span.begin <= due_.begin && span.end > due_.begin) {
                due_.begin = span.end;
            }
            if (span.end >= due_.end && span.begin < due_.end) {
                due_.end = std::max(due_.begin, span.begin);
            }
        }
        out_.startStatus = due_.begin > period_.work.begin ? "vocation" : "normal";
        out_.endStatus = due_.end < period_.work.end ? "vocation" : "normal";
    }

    /// @return false when it was missed as a whole.
    bool Judge()
    {
        const bool noStart = out_.startClock < 0 && period_.needStart && out_.startStatus != "vocation";
        const bool noEnd = out_.endClock < 0 && period_.needEnd && out_.endStatus != "vocation";
        worked_ = due_;
        bool absent = noStart && noEnd;
        if (noStart) {
            out_.startStatus = missing_.start == "normal" ? "noClock" : missing_.start;
            out_.late = missing_.start == "late" ? missing_.startDuration : 0;
            absent = absent || missing_.start == "absence";
        } else if (out_.startClock > due_.begin) {
            worked_.begin = out_.startClock;
            const int late = out_.startClock - due_.begin;
            // Coming later is made up for by leaving later.
            const int made = std::min({period_.flexible, late, std::max(0, out_.endClock - due_.end)});
            absent = Missed(late - made, period_.lateAllowed, period_.lateToAbsence, out_.late) || absent;
            out_.startStatus = out_.late > 0 ? "late" : out_.startStatus;
        }
        if (noEnd) {
            out_.endStatus = missing_.end == "normal" ? "noClock" : missing_.end;
            out_.early = missing_.end == "early" ? missing_.endDuration : 0;
            absent = absent || missing_.end == "absence";
        } else if (out_.endClock >= 0 && out_.endClock < due_.end) {
            worked_.end = out_.endClock;
            absent =
                Missed(due_.end - out_.endClock, period_.earlyAllowed, period_.earlyToAbsence, out_.early) || absent;
            out_.endStatus = out_.early > 0 ? "early" : out_.endStatus;
        }
        if (absent) {
            out_.absence = out_.expected;
            out_.late = out_.early = 0;
            out_.startStatus = out_.startStatus == "vocation" ? "vocation" : "absence";
            out_.endStatus = out_.endStatus == "vocation" ? "vocation" : "absence";
        }
        return !absent;
    }

    void Count(const OvertimeTerms& overtime)
    {
        if (period_.flexible > 0 && out_.endClock > due_.end) {
            const int made = std::min(period_.flexible, worked_.begin - due_.begin);
            worked_.end = std::min(out_.endClock, due_.end + made);
        }
        out_.work = std::max(0, worked_.Length() - Shared(period_.rests, worked_) - Shared(leaves_, worked_));
        const int extra = out_.endClock - worked_.end - overtime.startAfter;
        if (overtime.enabled && out_.endClock >= 0 && extra > 0 && extra >= overtime.least) {
            out_.overtime = overtime.most > 0 ? std::min(extra, overtime.most) : extra;
        }
    }

    PeriodOutcome Run(const std::vector<int>& clocks, const OvertimeTerms& overtime)
    {
        Take(clocks);
        Expect();
        if (due_.Length() == 0) {
            out_.startStatus = out_.endStatus = "vocation";
            out_.rest = 0;
            return out_;
        }
        if (Judge()) {
            Count(overtime);
        }
        return out_;
    }

private:
    /// @return whether so much is absence.
    static bool Missed(int minutes, int allowed, int toAbsence, int& counted)
    {
        counted = minutes > allowed ? minutes : 0;
        return toAbsence > 0 && counted >= toAbsence;
    }

    const WorkPeriod& period_;
    const std::vector<Span>& leaves_;
    const MissingClock& missing_;
    Span due_;    ///< What leave leaves of the period.
    Span worked_; ///< What of it was kept.
    PeriodOutcome out_;
};

} // namespace

PeriodOutcome Assess(const WorkPeriod& period, const std::vector<int>& clocks, const std::vector<Span>& leaves,
                     const MissingClock& missing, const OvertimeTerms& overtime)
{
    return Assessment(period, leaves, missing).Run(clocks, overtime);
}

bool ParseDate(const std::string& text, int& day)
{
    const std::string date = text.substr(0, 10);
    const auto ms = FromIsoTime(date + "T00:00:00+00:00");
    if (!ms || *ms < 0 || IsoTime(*ms).substr(0, 10) != date) { // What is no day of its month comes back as another.
        return false;
    }
    day = static_cast<int>(*ms / kDayMs);
    return true;
}

std::string PrintDate(int day)
{
    return IsoTime(day * kDayMs).substr(0, 10);
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
    const int ofDay = ((minutes % kDayMinutes) + kDayMinutes) % kDayMinutes;
    std::snprintf(text, sizeof text, "%02d:%02d", ofDay / 60, ofDay % 60);
    return text;
}

bool ParseMoment(const std::string& text, int& minute)
{
    int day = 0;
    const int ofDay = text.size() < 16 ? -1 : ParseTime(text.substr(11));
    if (ofDay < 0 || ofDay >= kDayMinutes || !ParseDate(text, day)) {
        return false;
    }
    minute = day * kDayMinutes + ofDay;
    return true;
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
        } else if (!ParseMoment(columns[2], line.minute)) {
            line.fault = "no time: \"" + columns[2] + "\"";
        }
        line.code = columns[0];
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace nexwire::simulator
