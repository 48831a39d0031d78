#pragma once

#include <cstdint>
#include <string>

#include "keel/Export.h"

namespace Keel::Error {

/// Module number of the errors that Keel itself reports.
constexpr std::int32_t kKeelModule = 900;

/// An error as two integers and a text. {0, 0, ""} is no error.
struct KEEL_API ErrorCode {
    std::int32_t category = 0; ///< Module that reports the error.
    std::int32_t number = 0;   ///< Code within the module; 0 is success.
    std::string text;          ///< Text for an engineer, may be empty.
};

/// Stores the last error of the calling thread. The JSON text becomes the object of the same three values.
KEEL_API void SetLastError(const ErrorCode& code);

/// The last error of the calling thread; no error when none was stored. Other threads neither see nor change it.
KEEL_API ErrorCode GetLastError();

/// Stores message, module and code as the last error of the calling thread, and as its JSON text. Bytes of `message`
/// that are not valid UTF-8 stand as U+FFFD in the JSON text.
KEEL_API void SetLastErrorJson(const std::string& message, std::int32_t module, std::int32_t code);

/// JSON text of the last error of the calling thread: {"code":…,"module":…,"msg":"…"}; empty when none was stored.
KEEL_API std::string GetLastErrorJson();

} // namespace Keel::Error
