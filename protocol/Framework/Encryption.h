#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// Texts to encrypt.
struct NEXWIRE_API EncryptionInfo : IInboundData {
    std::vector<std::string> plaintextList;
    NEXWIRE_JSON
};

/// Texts to decrypt.
struct NEXWIRE_API DecryptionInfo : IInboundData {
    std::vector<std::string> ciphertextList;
    NEXWIRE_JSON
};

/// One encrypted text with its source.
struct NEXWIRE_API Ciphertext : IReturnData {
    std::string plaintext;
    std::string ciphertext;
    NEXWIRE_JSON
};

struct NEXWIRE_API CiphertextListData : IReturnData {
    std::vector<Ciphertext> ciphertextList; ///< In the order of the request; may be shorter.
    NEXWIRE_JSON
};

/// One decrypted text with its source.
struct NEXWIRE_API Plaintext : IReturnData {
    std::string ciphertext;
    std::string plaintext; ///< Empty when the platform could not decrypt.
    NEXWIRE_JSON
};

struct NEXWIRE_API PlaintextListData : IReturnData {
    std::vector<Plaintext> plaintextList; ///< In the order of the request; may be shorter.
    NEXWIRE_JSON
};

} // namespace protocol
