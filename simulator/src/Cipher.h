#pragma once

#include <string>
#include <string_view>

namespace nexwire::simulator {

/// AES-256-GCM with a random nonce per text; the result is Base64. Safe from any thread.
class Cipher {
public:
    /// @param key  what `NewKey` returned.
    explicit Cipher(const std::string& key);

    std::string Encrypt(std::string_view plaintext) const;
    /// Empty when the text was not encrypted with this key, or was changed.
    std::string Decrypt(std::string_view ciphertext) const;

    /// A fresh random key, as Base64.
    static std::string NewKey();

private:
    std::string key_;
};

} // namespace nexwire::simulator
