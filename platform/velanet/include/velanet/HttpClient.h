#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// A plain HTTP/1.1 client: one request, one answer, on the caller's thread.
namespace Vela::Net {

/// Why an exchange failed. {0, ""} is no error.
struct Error {
    /// Values of `code`.
    enum : std::int32_t {
        kNone = 0,
        kBadRequest = 1, ///< The request cannot be sent as it is: address, method, header field, length.
        kConnect = 2,    ///< Name not found, connection refused, TLS not established.
        kTimeout = 3,    ///< One of the three time-outs passed.
        kBroken = 4,     ///< The connection ended early, or the answer is not HTTP or can be read in two ways.
        kTooLarge = 5,   ///< The answer is larger than the request allows, or its head than 256 KiB.
        kInternal = 6    ///< Out of memory and the like.
    };

    std::int32_t code = kNone;
    std::string text; ///< For an engineer; says what happened, never what the body was.
};

/// An absolute address, "http://" or "https://". It is kept as it is, checked when it is sent and never re-encoded:
/// an address with blanks, control characters, a user name or a fragment is refused then.
class URL {
public:
    explicit URL(std::string address) : address_(std::move(address)) {}

    const std::string& GetAddress() const { return address_; }

private:
    std::string address_;
};

/// What to send. On the wire stand, in this order: Host, Accept (*/*), the content type and the fields added, in the
/// order they were first given, and Content-Length. Nothing else is added; in particular no Expect, no Cookie and no
/// User-Agent of the client's own.
class CHttpClientRequest {
public:
    /// Each of the three time-outs unless set, in milliseconds.
    static constexpr int kDefaultTimeoutMs = 5000;
    /// Body bytes of an answer unless set.
    static constexpr std::uint64_t kDefaultMaxResponseSize = std::uint64_t{256} << 20;

    CHttpClientRequest(const std::string& method, const URL& url);

    /// The verb, sent as it is; must be an HTTP token.
    void SetMethod(const std::string& method);

    /// The same as adding the field "Content-Type". Without one none is sent.
    void SetContentType(const std::string& contentType);

    /// Adds a field. Content-Type, Content-Length, Host, User-Agent and Accept are single: the last value counts, an
    /// empty Accept leaves it out. Other names may come several times.
    ///
    /// Content-Length reaches the wire once and must be the length of the data, otherwise the request is refused.
    /// Transfer-Encoding and Expect belong to the client and are refused, as are control characters (tabs included)
    /// in values and names that are no tokens.
    void AddHeaderField(const std::string& name, const std::string& value);

    /// The body, any bytes. With data, even empty, Content-Length is sent. Without, the request ends with its header
    /// and no Content-Length is sent (HTTP then takes the length to be 0), unless the field "Content-Length: 0" was
    /// added.
    void SetData(const std::string& data);

    /// Bounds the time from the moment the request is sent to the last byte of the answer, so that a server that
    /// never answers or drips is left after it. Milliseconds; values below 1 stand for the default.
    void SetReceiveTimeout(int milliseconds);

    /// Bounds the time from the moment the connection stands to the moment the system has taken the last byte of the
    /// request, or the answer begins. Milliseconds; values below 1 stand for the default.
    void SetSendTimeout(int milliseconds);

    /// Bounds finding the address of the host, connecting and the TLS handshake together. Milliseconds; values below
    /// 1 stand for the default.
    void SetConnectionTimeout(int milliseconds);

    /// Larger answers are a failure, and no more than this is ever kept of one.
    void SetMaxResponseSize(std::uint64_t bytes);

private:
    friend class HttpClient;

    struct HeaderField {
        std::string name;
        std::string value;
    };

    std::string method_;
    URL url_;
    std::vector<HeaderField> fields_;
    bool hasData_ = false;
    std::string data_;
    int receiveTimeoutMs_ = kDefaultTimeoutMs;
    int sendTimeoutMs_ = kDefaultTimeoutMs;
    int connectionTimeoutMs_ = kDefaultTimeoutMs;
    std::uint64_t maxResponseSize_ = kDefaultMaxResponseSize;
};

/// What came back. A fresh object, and one whose exchange failed, has status 0, no data and an unknown length.
class CHttpClientResponse {
public:
    /// The length when the answer declares none.
    static constexpr std::uint64_t kUnknownLength = ~std::uint64_t{0};

    /// HTTP status, for example 200; 0 without an answer.
    int GetStatusCode() const { return status_; }

    /// The length that the answer declares, 0 for an empty one and for one that can have no body. All ones when it
    /// declares none: a chunked answer or one that ends with the connection, even though a body arrived.
    std::uint64_t GetContentLength() const { return contentLength_; }

    /// Replaces `*data` by the body as it came.
    void GetResponseData(std::string* data) const;

private:
    friend class HttpClient;

    int status_ = 0;
    std::uint64_t contentLength_ = kUnknownLength;
    std::string data_;
};

/// Sends requests. Any number of threads at once: each thread keeps its own few connections for its next calls and
/// closes them when it ends. Threads share only which servers closed a kept connection under a request: connections to
/// those are not kept for some minutes.
class HttpClient {
public:
    /// Performs one exchange and waits for it, at most for the sum of the three time-outs.
    ///
    /// True means that a whole answer arrived, whatever its status: a 404 or 500 is an answer. Redirects are not
    /// followed, no proxy is used, certificates of "https" are verified. A request of which bytes were sent is never
    /// sent a second time; if a kept connection turns out to be closed before, a new one is opened.
    ///
    /// @param response  filled on success, reset on failure; must not be null.
    /// @param error     filled on failure, reset on success; may be null.
    static bool Send(const CHttpClientRequest& request, CHttpClientResponse* response, Error* error) noexcept;

private:
    class Transfer;
};

} // namespace Vela::Net
