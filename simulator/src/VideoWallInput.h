#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "src/Json.h"

namespace nexwire::simulator {

/// Why the video wall service refuses. The thousands are the module of the envelope.
enum class WallCode {
    // The request itself.
    kNotJson = 1001,
    kMissingKey = 1002, ///< Missing or of another type.
    kUnknownPath = 1003,
    kWrongVerb = 1004,
    kInternal = 1005,
    // Decoders.
    kUnknownDevice = 2001,
    kDuplicateDevice = 2002,
    kBadCredentials = 2003, ///< Not Base64, or not an account of the decoder.
    kUnreachable = 2004,
    kDeviceBusy = 2005, ///< A running polling task shows cameras on it.
    kBadAddress = 2006,
    // Outputs.
    kUnknownOutput = 3001,
    kNoSuchCell = 3002,
    kCellTaken = 3003,
    kNotBound = 3004,
    kUnknownResolution = 3005,
    // Windows.
    kUnknownWindow = 4001,
    kOutsideWall = 4002, ///< The window covers cells that none of the decoder's outputs is bound to.
    kTooManyWindows = 4003,
    kUnknownSubWindow = 4004,
    kBadScreenNumber = 4005,
    kNothingPlays = 4006,
    kNoStream = 4007, ///< No address, or an encrypted stream without its key.
    // Polling tasks.
    kUnknownTask = 5001,
    kDuplicateTask = 5002,
    kEmptyTask = 5003,
    kUnknownCamera = 5004,
    kNotRunning = 5005,
    kWindowBusy = 5006, ///< Another running task drives the window.
    kBadPollingTime = 5007,
    kUnknownSwitch = 5008,
};

std::string_view WallText(WallCode code);

class WallRefusal : public std::runtime_error {
public:
    explicit WallRefusal(WallCode code, std::string_view detail = {});
    WallCode Code() const { return code_; }

private:
    WallCode code_;
};

/// An object of a request; reading what is not there refuses it.
class WallInput {
public:
    explicit WallInput(const Json& object) : object_(&object) {}

    bool Has(std::string_view key) const { return Member(*object_, key) != nullptr; }
    std::string Text(std::string_view key) const;
    int Int(std::string_view key) const;
    bool Bool(std::string_view key) const;
    WallInput Object(std::string_view key) const;
    std::vector<WallInput> List(std::string_view key) const;

private:
    const Json& Need(std::string_view key, bool (Json::*is)() const, const char* type) const;

    const Json* object_;
};

} // namespace nexwire::simulator
