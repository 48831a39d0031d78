#pragma once

#include "protocol/Framework/Encryption.h"

// All functions of this file block until the answer is there and may be called from any thread.

namespace nexwire {

/// Encrypts texts on the platform.
class NEXWIRE_API CEncryptionComm {
public:
    /// @param sid  session identifier; an empty one is not sent.
    /// @return true when the envelope parsed; `result` is untouched otherwise.
    static bool request(protocol::CiphertextListData& result, const protocol::EncryptionInfo& info,
                        const std::string& sid);
};

/// Decrypts texts on the platform.
class NEXWIRE_API CDecryptionComm {
public:
    /// @param sid  session identifier; an empty one is not sent.
    /// @return true when the envelope parsed; `result` is untouched otherwise.
    static bool request(protocol::PlaintextListData& result, const protocol::DecryptionInfo& info,
                        const std::string& sid);
};

} // namespace nexwire
