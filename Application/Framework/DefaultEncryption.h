#pragma once

#include "nexwire/IEncryption.h"

namespace nexwire {

/// The encryption of hosts that bring none: asks the platform's two services. Has no state. Its members stand with
/// the requests they send.
class CDefaultComponentEncryption : public IEncryption {
public:
    bool Encrypt(std::vector<std::string>& ciphertexts, const std::vector<std::string>& plaintexts,
                 const std::string& sid) override;
    bool Decrypt(std::vector<std::string>& plaintexts, const std::vector<std::string>& ciphertexts,
                 const std::string& sid) override;
};

} // namespace nexwire
