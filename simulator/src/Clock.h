#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace nexwire::simulator {

/// A moment in UTC, in the parts that people write.
struct CivilTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, millisecond = 0;
};

/// @param ms  since 1970 UTC, not before.
CivilTime ToCivil(std::int64_t ms);

/// "2026-03-01T08:00:00+00:00".
std::string IsoTime(std::int64_t ms);
/// Milliseconds since 1970 UTC of such a text, whatever its offset; nothing when it is none.
std::optional<std::int64_t> FromIsoTime(std::string_view text);

/// Whole percents of some work, 0 to 100.
/// @param done,whole  in one unit; `whole` above 0.
int PercentOf(double done, double whole);

} // namespace nexwire::simulator
