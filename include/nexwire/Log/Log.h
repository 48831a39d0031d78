#pragma once

#include "protocol/Log/Log.h"

// The platform's log of what was done by whom. All functions block until the answer is there and may be called from any
// thread. Those with a result return true when the answer was a readable envelope, whatever its code, and leave the
// result untouched otherwise; those without one return true when an answer came, whatever it says.

namespace nexwire {

/// Searches the log.
class NEXWIRE_API CSearchFilterLogsComm {
public:
    /// A page of the entries that meet the condition.
    static bool request(protocol::LogFilterConditionSupportedData& result, const protocol::LogCodition& condition);
    /// Opens an enciphered text of the log: the plain text, or `ciphertext` itself when the platform cannot decipher it
    /// or cannot be reached. Empty when memory ran out.
    static std::string decryption(const std::string& ciphertext);
};

/// Writes to the log.
class NEXWIRE_API CLogComm {
public:
    static bool request(const protocol::Log& entry);
    /// @param body  the whole body as it goes out, even an empty one; neither checked nor wrapped.
    static bool request(const std::string& body);
};

/// Has the log saved on the server; the result names the file and what the log holds.
class NEXWIRE_API CLogBackupComm {
public:
    static bool request(protocol::LogFilterConditionSupportedData& result);
};

} // namespace nexwire
