#include "nexwire/Log/Log.h"

#include "core/Pipeline.h"
#include "nexwire/Framework/Encryption.h"

namespace nexwire {

namespace {

constexpr const char* kLogs = "/7730/v1/log/logs";

} // namespace

bool CSearchFilterLogsComm::request(protocol::LogFilterConditionSupportedData& result,
                                    const protocol::LogCodition& condition)
{
    return Exchange(Query(kLogs, condition), result);
}

std::string CSearchFilterLogsComm::decryption(const std::string& ciphertext)
try {
    protocol::DecryptionInfo info;
    info.ciphertextList.push_back(ciphertext);
    protocol::PlaintextListData result;
    if (CDecryptionComm::request(result, info, std::string()) && !result.plaintextList.empty() &&
        !result.plaintextList.front().plaintext.empty()) {
        return std::move(result.plaintextList.front().plaintext);
    }
    return ciphertext;
} catch (...) {
    return std::string();
}

bool CLogComm::request(const protocol::Log& entry)
{
    return ExchangeUnread(Write(kLogs, entry));
}

bool CLogComm::request(const std::string& body)
{
    return ExchangeUnread(Write(kLogs).Text(body));
}

bool CLogBackupComm::request(protocol::LogFilterConditionSupportedData& result)
{
    return Exchange(Query("/7730/v1/log/backup"), result);
}

} // namespace nexwire
