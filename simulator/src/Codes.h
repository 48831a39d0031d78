#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace nexwire::simulator {

/// Why something was refused: the number behind the hyphen of an envelope code. The number before it names the
/// module (see `ModuleCategory`).
enum class Reason {
    kNone = 0,
    // The request itself.
    kUnknownPath = 1,
    kWrongVerb = 2,
    kMalformedHttp = 3,
    kBodyTooLarge = 4,
    kNotJson = 5,
    kMissingRoot = 6,
    kMissingField = 7,
    kWrongType = 8,
    kUnknownField = 9,
    kOutOfRange = 10,
    kForeignPage = 11,
    kNoToken = 12,
    // What it talks about.
    kUnknownGuid = 20,
    kUnknownDevice = 21,
    kDuplicate = 22,
    kInUse = 23,
    // Access groups.
    kDownloadRunning = 30,
    kNothingToDownload = 31,
    kNothingFailed = 32,
    kNoDownload = 33,
    kScheduleConflict = 34,
    // Devices.
    kDeviceOffline = 40,
    kUnknownCommand = 41,
    kUnknownBatch = 42,
    kDeviceRefused = 43,
    // Users.
    kWrongPassword = 50,
    // The platform itself.
    kInternal = 90,
};

/// Text of a reason, the first part of an envelope's "msg".
std::string_view ReasonText(Reason reason);

/// The reason that a resource description names ("unknownGuid" for `kUnknownGuid`); `kNone` when there is none.
Reason ReasonByName(std::string_view name);

/// The number before the hyphen for a module name of a resource description; 0 when there is no such module.
int ModuleCategory(std::string_view module);

/// Thrown by whatever handles a request to answer it with a code instead of data.
class Refusal : public std::runtime_error {
public:
    Refusal(Reason reason, std::string_view detail);
    Reason Why() const { return reason_; }

private:
    Reason reason_;
};

} // namespace nexwire::simulator
