#include "protocol/Framework/Encryption.h"

#include "core/FieldTable.h"

namespace protocol {

NEXWIRE_INBOUND_FIELDS(EncryptionInfo, "encryptionInfo", F(plaintextList))
NEXWIRE_INBOUND_FIELDS(DecryptionInfo, "decryptionInfo", F(ciphertextList))
NEXWIRE_RETURN_FIELDS(Ciphertext, F(plaintext), F(ciphertext))
NEXWIRE_RETURN_FIELDS(CiphertextListData, F(ciphertextList))
NEXWIRE_RETURN_FIELDS(Plaintext, F(ciphertext), F(plaintext))
NEXWIRE_RETURN_FIELDS(PlaintextListData, F(plaintextList))

} // namespace protocol
