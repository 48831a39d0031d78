#include "src/Clock.h"

#include <algorithm>
#include <cstdio>

namespace nexwire::simulator {
namespace {

constexpr std::int64_t kDayMs = 86400000;

std::int64_t DaysOf(int year, int month, int day)
{
    const std::int64_t shifted = month <= 2 ? year - 1 : year;
    const std::int64_t era = shifted / 400;
    const std::int64_t yearOfEra = shifted - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

} // namespace

CivilTime ToCivil(std::int64_t ms)
{
    // Counted from 1 March of year 0: gmtime is not safe from several threads, and its safe forms differ by system.
    const std::int64_t days = ms / kDayMs + 719468;
    const std::int64_t ofDay = ms % kDayMs;
    const std::int64_t era = days / 146097;
    const std::int64_t dayOfEra = days - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shifted = (5 * dayOfYear + 2) / 153;
    const std::int64_t month = shifted < 10 ? shifted + 3 : shifted - 9;
    CivilTime civil;
    civil.year = static_cast<int>(yearOfEra + era * 400 + (month <= 2 ? 1 : 0));
    civil.month = static_cast<int>(month);
    civil.day = static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1);
    civil.hour = static_cast<int>(ofDay / 3600000);
    civil.minute = static_cast<int>(ofDay / 60000 % 60);
    civil.second = static_cast<int>(ofDay / 1000 % 60);
    civil.millisecond = static_cast<int>(ofDay % 1000);
    return civil;
}

std::string IsoTime(std::int64_t ms)
{
    const CivilTime at = ToCivil(ms);
    char text[96];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d+00:00", at.year, at.month, at.day, at.hour,
                  at.minute, at.second);
    return text;
}

std::optional<std::int64_t> FromIsoTime(std::string_view text)
{
    CivilTime at;
    char sign = '+';
    int hours = 0;
    int minutes = 0;
    int end = 0;
    const std::string whole(text);
    if (std::sscanf(whole.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d%c%2d:%2d%n", &at.year, &at.month, &at.day, &at.hour,
                    &at.minute, &at.second, &sign, &hours, &minutes, &end) != 9 ||
        static_cast<std::size_t>(end) != whole.size() || (sign != '+' && sign != '-') || at.month < 1 ||
        at.month > 12 || at.day < 1 || at.day > 31 || at.hour < 0 || at.hour > 23 || at.minute < 0 || at.minute > 59 ||
        at.second < 0 || at.second > 60 || hours < 0 || minutes < 0) {
        return std::nullopt;
    }
    const std::int64_t offset = (hours * 60 + minutes) * 60000LL;
    return DaysOf(at.year, at.month, at.day) * kDayMs + at.hour * 3600000LL + at.minute * 60000LL + at.second * 1000LL +
           (sign == '-' ? offset : -offset);
}

int PercentOf(double done, double whole)
{
    // Divided last: a share has no exact form, and times 100 it falls short of a whole number where the processor keeps
    // more digits than a double has.
    return static_cast<int>(std::clamp(done * 100.0 / whole, 0.0, 100.0));
}

} // namespace nexwire::simulator
