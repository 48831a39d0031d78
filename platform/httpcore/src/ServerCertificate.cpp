#include "httpcore/ServerCertificate.h"

#ifdef _WIN32

#define SECURITY_WIN32
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <memory>
#include <type_traits>

#include <winsock2.h>

#include <windows.h>

#include <schannel.h>
#include <security.h>
#include <wincrypt.h>
#include <ws2tcpip.h>

#include "keel/StringUtil.h"

namespace httpcore {
namespace {

template <auto Close>
struct Closer {
    template <class Handle>
    void operator()(Handle handle) const
    {
        Close(handle);
    }
};
void CloseStore(HCERTSTORE store)
{
    CertCloseStore(store, 0);
}
using Certificate = std::unique_ptr<const CERT_CONTEXT, Closer<CertFreeCertificateContext>>;
using Chain = std::unique_ptr<const CERT_CHAIN_CONTEXT, Closer<CertFreeCertificateChain>>;
using Engine = std::unique_ptr<std::remove_pointer_t<HCERTCHAINENGINE>, Closer<CertFreeCertificateChainEngine>>;
using Store = std::unique_ptr<std::remove_pointer_t<HCERTSTORE>, Closer<CloseStore>>;
using Address = std::unique_ptr<CURLU, Closer<curl_url_cleanup>>;
using Part = std::unique_ptr<char, Closer<curl_free>>;

Certificate Shown(CURL* easy)
{
    curl_tlssessioninfo* session = nullptr;
    PCCERT_CONTEXT certificate = nullptr;
    if (curl_easy_getinfo(easy, CURLINFO_TLS_SSL_PTR, &session) == CURLE_OK && session != nullptr &&
        session->backend == CURLSSLBACKEND_SCHANNEL && session->internals != nullptr &&
        QueryContextAttributesW(static_cast<PCtxtHandle>(session->internals), SECPKG_ATTR_REMOTE_CERT_CONTEXT,
                                &certificate) == SEC_E_OK) {
        return Certificate(certificate);
    }
    return nullptr;
}

/// Host of the transfer's address, in small letters, an address of IPv6 without its brackets.
std::string HostOf(CURL* easy)
{
    char* address = nullptr;
    char* host = nullptr;
    const Address parts(curl_url());
    if (curl_easy_getinfo(easy, CURLINFO_EFFECTIVE_URL, &address) != CURLE_OK || address == nullptr || !parts ||
        curl_url_set(parts.get(), CURLUPART_URL, address, 0) != CURLUE_OK ||
        curl_url_get(parts.get(), CURLUPART_HOST, &host, 0) != CURLUE_OK) {
        return std::string();
    }
    const Part owner(host);
    std::string name = Keel::StringUtil::LowerCase(host);
    if (name.size() > 2 && name.front() == '[') {
        name = name.substr(1, name.size() - 2);
    }
    if (!name.empty() && name.back() == '.') {
        name.pop_back();
    }
    return name;
}

/// The bytes of an address; empty when the host is a name.
std::string AddressBytes(const std::string& host)
{
    char bytes[16];
    if (inet_pton(AF_INET, host.c_str(), bytes) == 1) {
        return std::string(bytes, 4);
    }
    return inet_pton(AF_INET6, host.c_str(), bytes) == 1 ? std::string(bytes, 16) : std::string();
}

/// Whether a name of a certificate is that of the host; for one that is no address it may be "*.example.com".
bool Fits(const wchar_t* wide, const std::string& host, bool isAddress = false)
{
    std::string name;
    for (; *wide != L'\0'; ++wide) {
        if (*wide >= 0x7F) {
            return false;
        }
        name += static_cast<char>(*wide);
    }
    name = Keel::StringUtil::LowerCase(name);
    if (!name.empty() && name.back() == '.') {
        name.pop_back();
    }
    if (isAddress || name.compare(0, 2, "*.") != 0) {
        return name == host;
    }
    // The star is one whole part, and not the last but one.
    const std::size_t dot = host.find('.');
    return dot != std::string::npos && dot > 0 && name.find('.', 2) != std::string::npos &&
           host.compare(dot, std::string::npos, name, 1, std::string::npos) == 0;
}

bool IsOf(const CERT_CONTEXT& certificate, const std::string& host)
{
    const std::string address = AddressBytes(host);
    const PCERT_INFO info = certificate.pCertInfo;
    bool names = false;
    const PCERT_EXTENSION extension = CertFindExtension(szOID_SUBJECT_ALT_NAME2, info->cExtension, info->rgExtension);
    CERT_ALT_NAME_INFO* list = nullptr;
    DWORD size = 0;
    if (extension != nullptr &&
        CryptDecodeObjectEx(X509_ASN_ENCODING, X509_ALTERNATE_NAME, extension->Value.pbData, extension->Value.cbData,
                            CRYPT_DECODE_ALLOC_FLAG, nullptr, &list, &size)) {
        const std::unique_ptr<CERT_ALT_NAME_INFO, Closer<LocalFree>> owner(list);
        for (DWORD i = 0; i < list->cAltEntry; ++i) {
            const CERT_ALT_NAME_ENTRY& entry = list->rgAltEntry[i];
            if (entry.dwAltNameChoice == CERT_ALT_NAME_IP_ADDRESS) {
                names = true;
                const std::string bytes(reinterpret_cast<const char*>(entry.IPAddress.pbData), entry.IPAddress.cbData);
                if (!address.empty() && bytes == address) {
                    return true;
                }
            } else if (entry.dwAltNameChoice == CERT_ALT_NAME_DNS_NAME) {
                names = true;
                if (address.empty() && Fits(entry.pwszDNSName, host)) {
                    return true;
                }
            }
        }
    }
    if (names || (extension != nullptr && list == nullptr)) {
        return false;
    }
    // The old way, for certificates that list no names. One with a zero in it ends somewhere else than it seems to.
    char oid[] = szOID_COMMON_NAME;
    wchar_t common[256] = {};
    const DWORD length = CertGetNameStringW(&certificate, CERT_NAME_ATTR_TYPE, 0, oid, common, 256);
    return length > 1 && std::wcslen(common) + 1 == length && Fits(common, host, !address.empty());
}

/// The certificates of a PEM text; none when there is none.
Store ReadAuthorities(const std::string& text)
{
    static const char begin[] = "-----BEGIN CERTIFICATE-----";
    static const char end[] = "-----END CERTIFICATE-----";
    Store store(CertOpenStore(CERT_STORE_PROV_MEMORY, 0, 0, CERT_STORE_CREATE_NEW_FLAG, nullptr));
    std::size_t count = 0;
    for (std::size_t at = text.find(begin); store && at != std::string::npos; at = text.find(begin, at)) {
        const std::size_t close = text.find(end, at);
        if (close == std::string::npos) {
            return nullptr;
        }
        const std::string block = text.substr(at, close + sizeof end - 1 - at);
        at = close;
        DWORD size = 0;
        const DWORD length = static_cast<DWORD>(block.size());
        if (!CryptStringToBinaryA(block.c_str(), length, CRYPT_STRING_BASE64HEADER, nullptr, &size, nullptr, nullptr)) {
            return nullptr;
        }
        std::string bytes(size, '\0');
        BYTE* const room = reinterpret_cast<BYTE*>(&bytes[0]);
        if (!CryptStringToBinaryA(block.c_str(), length, CRYPT_STRING_BASE64HEADER, room, &size, nullptr, nullptr) ||
            !CertAddEncodedCertificateToStore(store.get(), X509_ASN_ENCODING, room, size, CERT_STORE_ADD_ALWAYS,
                                              nullptr)) {
            return nullptr;
        }
        ++count;
    }
    return count > 0 ? std::move(store) : nullptr;
}

/// Trusts what is in the store and nothing else.
Engine TrustOnly(HCERTSTORE store)
{
    CERT_CHAIN_ENGINE_CONFIG config = {};
    config.cbSize = sizeof config;
    config.hExclusiveRoot = store;
    config.dwExclusiveFlags = CERT_CHAIN_EXCLUSIVE_ENABLE_CA_FLAG;
    HCERTCHAINENGINE engine = nullptr;
    if (!CertCreateCertificateChainEngine(&config, &engine)) {
        // Windows 7 does not know the flags.
        config.cbSize = offsetof(CERT_CHAIN_ENGINE_CONFIG, dwExclusiveFlags);
        if (!CertCreateCertificateChainEngine(&config, &engine)) {
            return nullptr;
        }
    }
    return Engine(engine);
}

/// Whether the key may be used to serve, where the certificate says what it may be used for; a chain is judged without.
bool KeyServes(const CERT_CONTEXT& certificate)
{
    BYTE usage[2] = {};
    return !CertGetIntendedKeyUsage(X509_ASN_ENCODING, certificate.pCertInfo, usage, sizeof usage) ||
           (usage[0] &
            (CERT_DIGITAL_SIGNATURE_KEY_USAGE | CERT_KEY_ENCIPHERMENT_KEY_USAGE | CERT_KEY_AGREEMENT_KEY_USAGE)) != 0;
}

CertificateFault FaultOf(DWORD status, const CERT_CONTEXT& certificate)
{
    if ((status & (CERT_TRUST_IS_UNTRUSTED_ROOT | CERT_TRUST_IS_PARTIAL_CHAIN | CERT_TRUST_IS_NOT_SIGNATURE_VALID)) !=
        0) {
        return CertificateFault::Untrusted;
    }
    if ((status & CERT_TRUST_IS_NOT_TIME_VALID) != 0) {
        return CertVerifyTimeValidity(nullptr, certificate.pCertInfo) < 0 ? CertificateFault::NotYetValid
                                                                          : CertificateFault::Expired;
    }
    return (status & CERT_TRUST_IS_NOT_VALID_FOR_USAGE) != 0 ? CertificateFault::WrongPurpose
                                                             : CertificateFault::Untrusted;
}

} // namespace

bool OnSchannel()
{
    static const bool schannel = [] {
        const char* const name = curl_version_info(CURLVERSION_NOW)->ssl_version;
        return name != nullptr && std::strncmp(name, "Schannel", 8) == 0;
    }();
    return schannel;
}

CertificateFault JudgeServer(CURL* easy, const std::string* authorities, std::string& words)
{
    const Certificate certificate = Shown(easy);
    if (!certificate) {
        words = "the server shows no certificate";
        return CertificateFault::Untrusted;
    }
    Store store;
    Engine engine;
    if (authorities != nullptr) {
        store = ReadAuthorities(*authorities);
        engine = store ? TrustOnly(store.get()) : nullptr;
        if (!engine) {
            words = "it holds no certificates in PEM";
            return CertificateFault::BadAuthorities;
        }
    }
    char serving[] = szOID_PKIX_KP_SERVER_AUTH;
    LPSTR usages[] = {serving};
    CERT_CHAIN_PARA wanted = {};
    wanted.cbSize = sizeof wanted;
    wanted.RequestedUsage.dwType = USAGE_MATCH_TYPE_OR;
    wanted.RequestedUsage.Usage.cUsageIdentifier = 1;
    wanted.RequestedUsage.Usage.rgpszUsageIdentifier = usages;
    PCCERT_CHAIN_CONTEXT built = nullptr;
    // Who names the authorities asks nobody else for certificates.
    const DWORD flags = authorities != nullptr ? CERT_CHAIN_CACHE_ONLY_URL_RETRIEVAL : 0;
    if (!CertGetCertificateChain(engine.get(), certificate.get(), nullptr, certificate->hCertStore, &wanted, flags,
                                 nullptr, &built)) {
        words = "its chain cannot be built";
        return CertificateFault::Untrusted;
    }
    const Chain chain(built);
    const DWORD status = chain->TrustStatus.dwErrorStatus & ~static_cast<DWORD>(CERT_TRUST_IS_NOT_TIME_NESTED);
    if (status != 0) {
        char number[32];
        std::snprintf(number, sizeof number, "trust status 0x%lx", static_cast<unsigned long>(status));
        words = number;
        return FaultOf(status, *certificate);
    }
    if (!KeyServes(*certificate)) {
        words = "its key is for something else";
        return CertificateFault::WrongPurpose;
    }
    const std::string host = HostOf(easy);
    if (host.empty() || !IsOf(*certificate, host)) {
        words = "it is not for " + host;
        return CertificateFault::OtherName;
    }
    return CertificateFault::None;
}

} // namespace httpcore

#else

namespace httpcore {

bool OnSchannel()
{
    return false;
}

// Nobody asks.
CertificateFault JudgeServer(CURL*, const std::string*, std::string&)
{
    return CertificateFault::Untrusted;
}

} // namespace httpcore

#endif
