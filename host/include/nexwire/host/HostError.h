#pragma once

#include <cstdint>

namespace nexwire::host {

/// Category of `Keel::Error::ErrorCode` for every failure of the host kit except an HTTP status; the number is a
/// `HostError`.
constexpr std::int32_t kHostErrorCategory = 9100;

/// Category for an answer whose HTTP status is not a success; the number is the status (300 to 599).
constexpr std::int32_t kHttpStatusCategory = 9101;

/// What went wrong before or instead of an answer.
enum class HostError : std::int32_t {
    BadOptions = 1,       ///< The executor was built with options it cannot work with.
    RequestRefused = 2,   ///< Path, method code, a header field or the body is unusable; no connection was made.
    Aborted = 3,          ///< `Abort()` ended the call, or it was made between `Abort()` and `Resume()`.
    DeadlinePassed = 4,   ///< No complete answer within the time of the request.
    ResolveFailed = 5,    ///< The name of the server or of the proxy is unknown.
    ConnectFailed = 6,    ///< Nobody accepts connections at the address, or the proxy does not lead there.
    TlsFailed = 7,        ///< Untrusted or expired certificate, other host name, or the server refused ours.
    SendFailed = 8,       ///< The connection broke while the request was being sent.
    AnswerIncomplete = 9, ///< The connection broke before the answer was complete.
    AnswerTooLarge = 10,  ///< The answer is longer than the cap, its header than 256 KiB, or a line there than 100 KiB.
    AnswerMalformed = 11, ///< What came back is not HTTP/1, or can be read in two ways.
    NotRepeated = 12,     ///< A kept connection died after the request went out; it may have been carried out.
    OutOfMemory = 13,     ///< The answer did not fit into memory.
    Internal = 14,        ///< Anything else; the text carries libcurl's words.
    NothingRecorded = 15, ///< The replayed file has no exchange for the request.
    FileFailed = 16,      ///< The file of exchanges cannot be read or written.
};

} // namespace nexwire::host
