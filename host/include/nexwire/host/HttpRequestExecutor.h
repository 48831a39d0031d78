#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "nexwire/IRequestExecutor.h"

namespace nexwire::host {

/// How to reach the platform. Everything but `baseAddress` has a working default.
struct HttpExecutorOptions {
    /// Scheme (http or https), host, and optionally port and a path prefix: "https://platform.example:8443/gateway".
    /// No user, query or fragment. The path of each request is put behind it as it is.
    std::string baseAddress;

    /// Verb per method code of the request. A code that is not listed is refused. HEAD and CONNECT are not possible.
    std::map<std::int32_t, std::string> verbs{{0, "GET"}, {1, "PUT"}, {2, "POST"}, {3, "DELETE"}};

    /// Sent with every request; a field of the same name in the request wins.
    std::map<std::string, std::string> extraHeaders;
    std::string userAgent = "nexwire"; ///< Value of "User-Agent"; empty sends none.

    /// PEM file of the certificate authorities to trust. When given, only these are trusted; when empty, those of the
    /// system.
    std::string caFile;
    /// PEM file of the certificate we show the server; empty shows none. Where libcurl uses the TLS of Windows: a
    /// PKCS#12 file with certificate and key.
    std::string clientCertificateFile;
    /// PEM file of its key; empty: the key is in the certificate file. Not with the TLS of Windows.
    std::string clientKeyFile;
    std::string clientKeyPassphrase; ///< Opens the key; never appears in an error text.
    /// False accepts any server certificate, for any host name: for a bench on a trusted wire only.
    bool verifyPeer = true;

    /// Proxy address such as "http://proxy.example:3128". Empty: direct, whatever the environment says.
    std::string proxy;

    /// Milliseconds to find and reach the server, TLS included; at least 1. The time of the request still bounds the
    /// whole.
    std::int32_t connectTimeoutMs = 10000;

    /// Longest answer body accepted, in bytes; at least 1. The body is kept in memory.
    std::uint64_t maxResponseBytes = std::uint64_t{256} << 20;

    /// How many requests marked as slow ("RequstType" is "slowThread") may run at once; at least 1. Others wait, on
    /// their own time.
    std::size_t slowLaneSize = 2;

    /// Connections kept open between requests; 0 keeps none. Any number may be in use at once.
    std::size_t maxIdleConnections = 8;
    std::int32_t maxIdleSeconds = 60; ///< A connection unused for longer is not used again; at least 1.

    /// Sends the request's "query" field behind the path, after a question mark, instead of as a header field.
    bool queryInUrl = false;

    /// True: an answer with a body is an answer whatever its HTTP status. For platforms that report the failures of
    /// their envelope through the status, too. See `HttpRequestExecutor::Execute`.
    bool anyStatusIsAnswer = false;
};

/// The transport over HTTP/1.1 on libcurl. Safe from any number of threads; it starts none of its own.
///
/// Connections are kept and used again, one request at a time on each; no lock is held while a request runs. A kept
/// connection on which anything arrived after its last answer is dropped, so that stray bytes answer nothing.
///
/// A request is sent once. It is repeated on a new connection only when a kept connection turns out dead and not one
/// byte of the request was handed to it. When a kept connection dies after that and before an answer, method code 0 is
/// repeated once; anything else fails with `HostError::NotRepeated`: whether the platform carried the request out is
/// unknown, and only the caller can decide what that means. For five minutes after such a loss no connection is kept.
///
/// An answer counts when it is whole: a head that ends early, a body short of its declared length, and a TLS connection
/// cut without its closing alert where that alone ends the body, are failures. So is a head that two readers may take
/// in two ways (different lengths, a transfer encoding other than "chunked", lines without CR).
class HttpRequestExecutor : public IRequestExecutor {
public:
    /// Checks the options and reads no network. See `Valid`.
    explicit HttpRequestExecutor(const HttpExecutorOptions& options);

    /// Ends what is in flight and waits for those calls to return. No call may start once destruction has begun.
    ~HttpRequestExecutor() override;

    HttpRequestExecutor(const HttpRequestExecutor&) = delete;
    HttpRequestExecutor& operator=(const HttpRequestExecutor&) = delete;

    /// Whether the options can be worked with. If not, every call fails with `HostError::BadOptions`.
    bool Valid() const;

    /// What is wrong with the options, for an engineer; empty when they are good.
    const std::string& Problem() const;

    /// Sends the request and waits for the whole answer.
    ///
    /// The path is sent byte for byte: nothing is encoded, resolved or tidied. A path that would ask for something
    /// else than it says is refused before a connection is made: one that does not begin with a slash, or holds a
    /// control character, a space, '#', '?', a backslash, or a segment "." or ".." (also percent-encoded, between
    /// encoded slashes, or with ";" and anything behind it). Bytes above 0x7F and percent signs pass as they are.
    /// Entries of both maps travel as header fields (`params` wins over `headers`, and both over `extraHeaders`); names
    /// that are not tokens, names that frame the message ("Host", "Content-Length" and the like) and values with
    /// control characters are refused. A body is sent with any verb, as "application/json" unless the maps say
    /// otherwise; PUT and POST without body declare a length of 0. A body that goes out as JSON and is not UTF-8 is
    /// refused.
    ///
    /// `timeoutMs` bounds the call from entry to return, waiting for the slow lane included; 0 or less means 40000.
    /// Redirects are not followed.
    ///
    /// @param response  replaced. Holds header fields (of the final answer; the last of equal names) and body when an
    ///                  answer was received in full, whatever its status; otherwise it is empty.
    /// @return true for a complete answer with a status of 2xx (or, with `anyStatusIsAnswer`, any status when there
    ///         is a body). False otherwise, with the reason as last error: category `kHttpStatusCategory` and the
    ///         status, or category `kHostErrorCategory` and a `HostError`. A failed status still leaves its body in
    ///         `response`, for callers that read an envelope from it. Success does not touch the last error.
    bool Execute(RspInfos& response, const RequestParams& request, int flag) override;

    /// Ends every call in flight or waiting with `HostError::Aborted`, and refuses new ones in the same way until
    /// `Resume`, so that a client can quit at once. From any thread; returns without waiting.
    void Abort();

    /// Accepts calls again after `Abort`.
    void Resume();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace nexwire::host
