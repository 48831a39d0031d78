#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include <curl/curl.h>

#include "httpcore/AnswerReader.h"
#include "httpcore/ServerCertificate.h"

namespace httpcore {

/// Most bytes of a line of the head that libcurl takes.
constexpr std::size_t kLongestLine = std::size_t{100} << 10;

/// How a transfer ended.
enum class Ending {
    Answered,    ///< A whole answer is here.
    Ended,       ///< The caller ended it.
    Late,        ///< A time-out of libcurl's passed.
    HeadTooLong, ///< The head is longer than `kLargestHeader`, or a line of it than `kLongestLine`.
    BodyTooLong, ///< The body is longer than the caller's limit.
    NoMemory,
    Malformed,  ///< What came is not an answer of HTTP/1, or can be read in two ways; `Connection::Why` says which.
    Incomplete, ///< The connection ended before the answer did.
    Lost,       ///< A kept connection ended after the request went out; it may have been carried out.
    Failed      ///< Anything else; `Connection::Code` says what.
};

/// Whom a connection over TLS trusts, and as whom it appears. Files by UTF-8 path.
struct TlsSettings {
    bool verifyPeer = true;            ///< False: any certificate, of any host.
    std::string caFile;                ///< PEM; the only authorities to trust. Empty: those of the system.
    std::string clientCertificateFile; ///< PEM; on Schannel PKCS#12, with the key.
    std::string clientKeyFile;         ///< PEM; not on Schannel.
    std::string clientKeyPassphrase;
};

/// Initialises libcurl once a process; false when it cannot be. It is never cleaned up: other users of the process may
/// still be at work.
bool StartLibcurl();

/// One handle of libcurl with the connection that it keeps, for exchanges one after the other with one server. A
/// request is sent once: libcurl's own repetitions are only let through when not a byte of it had been sent, or once
/// where the caller allows it. Used by one thread at a time, except for `Wake`.
class Connection {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    /// Makes the handles and sets what is the same for every request: HTTP/1.1 over http and https (TLS 1.2 at least),
    /// no proxy of the environment, no redirects, no signals. False when libcurl does not take it.
    ///
    /// @param overTls  the server speaks TLS: the end of its connections has to be watched.
    bool Open(bool overTls);

    /// Sets what the server is judged by. Without it, libcurl judges by the authorities of the system.
    bool SetTls(const TlsSettings& settings);

    template <class Value>
    bool Set(CURLoption option, Value value)
    {
        return curl_easy_setopt(easy_, option, value) == CURLE_OK;
    }
    /// A text that is empty leaves the option alone.
    bool SetText(CURLoption option, const std::string& text) { return text.empty() || Set(option, text.c_str()); }

    /// Verb and body of the next request. The body is not copied and must outlive the transfer; null: there is none,
    /// and no length is declared.
    bool SetMethod(const std::string& verb, const std::string* body);

    /// One transfer, to its end. `wait` is asked before every wait how many milliseconds it may take at most; a
    /// negative answer ends the transfer. What it throws passes through.
    ///
    /// @param repeatOnce  send again when a kept connection ends under the request.
    Ending Run(const AnswerInto& into, bool repeatOnce, const std::function<int()>& wait);

    /// Ends the wait of a transfer; from any thread.
    void Wake() const { curl_multi_wakeup(multi_); }

    /// Whether the kept connection can carry another request: it is open, and nothing has arrived on it since the last
    /// answer. What came unasked would be taken for the answer to the next request. True when no connection is kept.
    bool IsClean();

    // Of the last transfer, or the one that runs:
    const AnswerReader& Answer() const { return answer_; }
    bool Keepable() const { return keepable_; } ///< May carry another request.
    bool LostKept() const { return lost_; }     ///< A kept connection ended under it, repeated or not.
    bool Started() const { return started_; }   ///< A connection stood for the request.
    std::chrono::steady_clock::time_point StartedAt() const { return startedAt_; }
    std::uint64_t SentBytes() const; ///< Of the body.
    CURLcode Code() const { return code_; }
    /// What is wrong with the server's certificate, when `Code` says that something is.
    CertificateFault Fault() const;
    long Info(CURLINFO info) const; ///< A number of libcurl's; 0 when it has none.
    /// Why it is malformed, or libcurl's words for the failure, on one line.
    std::string Why() const;
    CURL* Easy() const { return easy_; }

private:
    static std::size_t OnLine(char* line, std::size_t, std::size_t size, void* self) noexcept;
    static std::size_t OnBody(char* bytes, std::size_t, std::size_t size, void* self) noexcept;
    static int OnSocket(void* self, curl_socket_t, curlsocktype) noexcept;
    static int OnStart(void* self, char*, char*, int, int) noexcept;
    static int OnDebug(CURL*, curl_infotype type, char* text, std::size_t size, void* self) noexcept;

    bool MayAttempt();
    bool Trusts();
    CURLcode Transfer(const std::function<int()>& wait, bool& ended);
    Ending Judge(bool ended);
    void NoteKept();

    CURL* easy_ = nullptr;
    CURLM* multi_ = nullptr; ///< Owns the connection; unlike an easy handle alone it can be woken from outside.
    curl_socket_t socket_ = CURL_SOCKET_BAD; ///< Of the kept connection.
    std::string postVerb_;                   ///< What is set already for a request with a body,
    long postPiece_ = 0;                     ///< unless this is 0.
    AnswerReader answer_;
    CURLcode code_ = CURLE_OK;
    bool watchesEnd_ = false; ///< `saidGoodbye_` counts.
    bool mayRepeat_ = false;
    bool keepable_ = false;
    bool connected_ = false; ///< A connection was made for the transfer.
    bool started_ = false;
    bool lost_ = false;
    bool repeated_ = false;
    bool refused_ = false;     ///< The repetition.
    bool saidGoodbye_ = false; ///< The TLS connection was closed with its alert.
    bool judges_ = false;      ///< Certificates are judged here, not by libcurl.
    bool hasAuthorities_ = false;
    std::string authorities_; ///< Content of the file.
    CertificateFault fault_ = CertificateFault::None;
    std::string faultWords_;
    std::chrono::steady_clock::time_point startedAt_;
    char words_[CURL_ERROR_SIZE] = {};
};

} // namespace httpcore
