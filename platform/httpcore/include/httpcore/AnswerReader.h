#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "httpcore/BodyBuffer.h"

namespace httpcore {

/// Most bytes of header fields of one answer; some versions of libcurl draw a line at 300 KiB.
constexpr std::uint64_t kLargestHeader = std::uint64_t{256} << 10;

/// Where an answer goes and what it may be.
struct AnswerInto {
    std::string* body = nullptr; ///< Not null.
    std::map<std::string, std::string>* fields =
        nullptr; ///< Of the final answer, the last of equal names; may be null.
    std::uint64_t bodyLimit = 0;
    bool headOnly = false; ///< The request was a HEAD.
};

/// Takes an answer line by line and judges what libcurl lets pass: two readers must not be able to read one answer in
/// two ways, and its end must be known.
class AnswerReader {
public:
    enum class Fault { None, HeadTooLong, BodyTooLong, NoMemory, Malformed };

    void Begin(const AnswerInto& into);

    /// One line of the head or trailer, line end included. False: the transfer must end, see `GetFault`.
    bool TakeLine(const char* line, std::size_t size) noexcept;
    bool TakeBody(const char* bytes, std::size_t size) noexcept;

    /// The transfer has ended well: the body goes to where it belongs.
    bool Finish() noexcept;

    Fault GetFault() const { return fault_; }
    const char* Why() const { return why_; } ///< What is malformed.

    bool Started() const { return received_ != 0; }
    bool HeadEnded() const { return final_; } ///< That of the final answer.
    int Status() const { return final_ ? status_ : 0; }
    std::uint64_t Received() const { return received_; } ///< Bytes, header fields included.
    bool DeclaresLength() const { return declares_ || NoBody(); }
    std::uint64_t DeclaredLength() const { return declares_ ? declared_ : 0; }
    /// Whether all of it is here for sure, wherever the connection stands.
    bool Whole() const { return final_ && (NoBody() || (!chunked_ && declares_ && body_.Size() == declared_)); }
    /// Whether only the end of the connection ends the body.
    bool EndsWithConnection() const { return final_ && !NoBody() && !chunked_ && !declares_; }
    /// Whether the connection stands where the next answer begins.
    bool Keepable() const { return !ambiguous_ && !EndsWithConnection(); }

private:
    bool Fail(Fault fault, const char* why = "");
    bool TakeStatusLine(const char* line, std::size_t size);
    bool TakeField(const char* line, std::size_t size);
    bool TakeLength(const std::string& value);
    bool EndHead();
    bool NoBody() const { return into_.headOnly || status_ == 204 || status_ == 304; }

    AnswerInto into_;
    BodyBuffer body_;
    Fault fault_ = Fault::None;
    const char* why_ = "";
    std::uint64_t received_ = 0;
    std::uint64_t headBytes_ = 0;
    int status_ = 0;
    bool inHead_ = false; ///< Between a status line and the blank line after it.
    bool final_ = false;
    bool old_ = false; ///< HTTP/1.0
    bool chunked_ = false;
    bool declares_ = false;
    bool ambiguous_ = false;
    bool lastFrames_ = false; ///< The last field says where the body ends.
    std::uint64_t declared_ = 0;
    std::string* lastValue_ = nullptr; ///< Where a continuation line goes.
};

} // namespace httpcore
