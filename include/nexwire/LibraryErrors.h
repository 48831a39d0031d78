#pragma once

#include <cstdint>

namespace nexwire {

/// Category of the last error after a download that ended for reasons of its own; the number is a `DownloadError`.
constexpr std::int32_t kDownloadCategory = 9110;
/// Category of the last error after a device refused a request to its HTTP interface; the number is the device's status
/// code, the text what it says of it.
constexpr std::int32_t kDeviceStatusCategory = 9111;
/// Category of the last error after an answer that the library would not read; the number is an `AnswerError`.
constexpr std::int32_t kAnswerCategory = 9112;

/// Why an answer was not read.
enum class AnswerError : std::int32_t {
    TooCostly = 1, ///< Reading it takes more memory than `SetAnswerMemoryLimit` allows.
};

/// Why a download ended, when not by a failed request.
enum class DownloadError : std::int32_t {
    TargetNotWritable = 1, ///< The file cannot be made or replaced; the text has the system's words.
    WriteFailed = 2,       ///< A write failed in every attempt, as on a full disk.
    RangeUnreadable = 3,   ///< An answer without "Content-Range", or with one that is not "bytes FIRST-LAST/TOTAL".
    RangeWrong = 4,        ///< The range is not the one asked for, or not what the answer holds.
    TotalChanged = 5,      ///< The file has another size than the answer before said.
};

} // namespace nexwire
