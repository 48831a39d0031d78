#pragma once

#include <memory>
#include <string>

#include <keel/Error.h>

#include "nexwire/JSONStruct.h"

namespace protocol {

/// The envelope of every answer: {"code": "0-0", "msg": "...", "data": {...}}.
class NEXWIRE_API ReturnData {
public:
    /// @param data  the structure that "data" is read into; may be empty.
    explicit ReturnData(std::shared_ptr<IJSONStruct> data = nullptr);

    /// Reads an envelope. Missing members are no error. False when `body` is empty or is not one JSON value followed
    /// by nothing but white space; the latter is logged.
    bool Parse(const std::string& body);

    Keel::Error::ErrorCode code;       ///< From "code"; {0, 0, ""} is success and what a missing code reads as.
    std::string msg;                   ///< The server's message.
    std::shared_ptr<IJSONStruct> data; ///< Filled from "data".
    bool coded = false;                ///< Whether there was a readable "code".
};

/// Reads "category-number". Anything but two pieces joined by one hyphen is logged and reads as no error; a piece
/// that holds no number reads as 0.
NEXWIRE_API Keel::Error::ErrorCode Str2ErrorCode(const std::string& code);

} // namespace protocol
