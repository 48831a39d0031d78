#pragma once

#include <string>
#include <vector>

#include "nexwire/Export.h"

namespace nexwire {

/// Protects credentials before they travel and opens them on the way back. A host may bring its own; otherwise
/// the library asks the platform's two services. Implementations must accept concurrent calls.
class NEXWIRE_API IEncryption {
public:
    virtual ~IEncryption();

    /// Encrypts every text of `plaintexts`.
    ///
    /// @param ciphertexts  replaced by one text per plain text, in order; empty on failure.
    /// @param sid          session identifier of the caller, may be empty.
    /// @return false when nothing could be encrypted; the reason is the last error.
    virtual bool Encrypt(std::vector<std::string>& ciphertexts, const std::vector<std::string>& plaintexts,
                         const std::string& sid) = 0;

    /// Decrypts every text of `ciphertexts`; the mirror image of `Encrypt`.
    virtual bool Decrypt(std::vector<std::string>& plaintexts, const std::vector<std::string>& ciphertexts,
                         const std::string& sid) = 0;
};

} // namespace nexwire
