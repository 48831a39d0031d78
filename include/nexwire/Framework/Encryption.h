#pragma once

#include "protocol/Framework/Encryption.h"

namespace nexwire {

/// Encrypts texts on the platform. Any thread.
class NEXWIRE_API CEncryptionComm {
public:
    /// @param sid  session identifier; an empty one is not sent.
    /// @return true when the envelope parsed; `result` is untouched otherwise.
    static bool request(protocol::CiphertextListData& result, const protocol::EncryptionInfo& info,
                        const std::string& sid);
};

/// Decrypts texts on the platform. Any thread.
class NEXWIRE_API CDecryptionComm {
public:
    /// @param sid  session identifier; an empty one is not sent.
    /// @return true when the envelope parsed; `result` is untouched otherwise.
    static bool request(protocol::PlaintextListData& result, const protocol::DecryptionInfo& info,
                        const std::string& sid);
};

} // namespace nexwire
