#include "nexwire/Framework/Encryption.h"

#include <new>

#include <keel/Error.h>

#include "Application/Framework/DefaultEncryption.h"
#include "core/ConfigManager.h"
#include "core/Log.h"
#include "core/Pipeline.h"

namespace nexwire {

bool CEncryptionComm::request(protocol::CiphertextListData& result, const protocol::EncryptionInfo& info,
                              const std::string& sid)
{
    return Exchange(Write("/7730/v1/internal/framework/encryption", info).HeaderUnlessEmpty("SID", sid), result);
}

bool CDecryptionComm::request(protocol::PlaintextListData& result, const protocol::DecryptionInfo& info,
                              const std::string& sid)
{
    return Exchange(Write("/7730/v1/internal/framework/decryption", info).HeaderUnlessEmpty("SID", sid), result);
}

IEncryption* MakeDefaultEncryption()
{
    return new (std::nothrow) CDefaultComponentEncryption;
}

bool CDefaultComponentEncryption::Encrypt(std::vector<std::string>& ciphertexts,
                                          const std::vector<std::string>& plaintexts, const std::string& sid)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        ciphertexts.clear();
        protocol::EncryptionInfo info;
        info.plaintextList = plaintexts;
        protocol::CiphertextListData result;
        if (!CEncryptionComm::request(result, info, sid)) {
            const Keel::Error::ErrorCode error = Keel::Error::GetLastError();
            NEXWIRE_LOG_ERROR_OF(function, "Failed to CEncryptionComm::request. [error-%d-%d]", error.category,
                                 error.number);
            return false;
        }
        for (protocol::Ciphertext& element : result.ciphertextList) {
            ciphertexts.push_back(std::move(element.ciphertext));
        }
        return true;
    });
}

bool CDefaultComponentEncryption::Decrypt(std::vector<std::string>& plaintexts,
                                          const std::vector<std::string>& ciphertexts, const std::string& sid)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        plaintexts.clear();
        protocol::DecryptionInfo info;
        info.ciphertextList = ciphertexts;
        protocol::PlaintextListData result;
        if (!CDecryptionComm::request(result, info, sid)) {
            const Keel::Error::ErrorCode error = Keel::Error::GetLastError();
            NEXWIRE_LOG_ERROR_OF(function, "Failed to CDecryptionComm::request. [error-%d-%d]", error.category,
                                 error.number);
            return false;
        }
        for (protocol::Plaintext& element : result.plaintextList) {
            plaintexts.push_back(std::move(element.plaintext));
        }
        return true;
    });
}

std::string CSearchFilterLogsComm::decryption(const std::string& ciphertext)
{
    protocol::DecryptionInfo info;
    info.ciphertextList.push_back(ciphertext);
    protocol::PlaintextListData result;
    if (CDecryptionComm::request(result, info, std::string()) && !result.plaintextList.empty() &&
        !result.plaintextList.front().plaintext.empty()) {
        return std::move(result.plaintextList.front().plaintext);
    }
    return ciphertext;
}

} // namespace nexwire
