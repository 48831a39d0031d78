#include "catalogue/Modules.h"
#include "nexwire/Framework/Encryption.h"
#include "nexwire/Log/Log.h"

namespace nexwire {
namespace catalogue {

// clang-format off
NEXWIRE_MODULE(Framework,
    NEXWIRE_OPERATION(CEncryptionComm, request, "sid"),
    NEXWIRE_OPERATION(CDecryptionComm, request, "sid"),
    NEXWIRE_OPERATION(CSearchFilterLogsComm, decryption, "ciphertext"),
)
// clang-format on

} // namespace catalogue
} // namespace nexwire
