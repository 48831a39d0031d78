#pragma once

#include <string>

#include "loopback/RawServer.h"

namespace host_test {

/// A certificate authority, made anew for each test program, and what it signs. PEM files in a folder of their own.
struct Certificates {
    std::string folder;
    std::string authority; ///< The authority's certificate.
    std::string stranger;  ///< The certificate of an authority that signed nothing here.
    std::string server;    ///< For 127.0.0.1.
    std::string serverKey;
    std::string elsewhere; ///< For elsewhere.example.
    std::string elsewhereKey;
    // For 127.0.0.1, with the server's key, and each with one fault.
    std::string expired;
    std::string early;      ///< Not valid yet.
    std::string forClients; ///< Made for clients only.
    std::string forLists;   ///< With a key for signing lists of what was revoked.
    std::string ofItself;   ///< Signed by itself.
    std::string starred;    ///< Signed by itself, for "*.0.0.1".
    std::string client;
    std::string clientKey;    ///< Opened by `kPassphrase`.
    std::string clientBundle; ///< Both as PKCS#12, opened by the same.

    static constexpr const char* kPassphrase = "open sesame";
    static const Certificates& Get();
};

/// A scripted server over TLS; answers with 200 and the body "secure" unless told otherwise.
class TlsServer : public nexwire::loopback::RawServer {
public:
    /// @param askForClient  refuse clients that show no certificate of the authority.
    /// @param old           speak nothing newer than TLS 1.1.
    TlsServer(const std::string& certificate, const std::string& key, bool askForClient, bool old = false);
};

} // namespace host_test
