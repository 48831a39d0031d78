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

    Fault GetFault() const { return m_fault; }
    const char* Why() const { return m_why; } ///< What is malformed.

    bool Started() const { return m_received != 0; }
    bool HeadEnded() const { return m_final; } ///< That of the final answer.
    int Status() const { return m_final ? m_status : 0; }
    std::uint64_t Received() const { return m_received; } ///< Bytes, header fields included.
    bool DeclaresLength() const { return m_declares || NoBody(); }
    std::uint64_t DeclaredLength() const { return m_declares ? m_declared : 0; }
    /// Whether all of it is here for sure, wherever the connection stands.
    bool Whole() const { return m_final && (NoBody() || (!m_chunked && m_declares && m_body.Size() == m_declared)); }
    /// Whether only the end of the connection ends the body.
    bool EndsWithConnection() const { return m_final && !NoBody() && !m_chunked && !m_declares; }
    /// Whether the connection stands where the next answer begins.
    bool Keepable() const { return !m_ambiguous && !EndsWithConnection(); }

private:
    bool Fail(Fault fault, const char* why = "");
    bool TakeStatusLine(const char* line, std::size_t size);
    bool TakeField(const char* line, std::size_t size);
    bool TakeLength(const std::string& value);
    bool EndHead();
    bool NoBody() const { return m_into.headOnly || m_status == 204 || m_status == 304; }

    AnswerInto m_into;
    BodyBuffer m_body;
    Fault m_fault = Fault::None;
    const char* m_why = "";
    std::uint64_t m_received = 0;
    std::uint64_t m_headBytes = 0;
    int m_status = 0;
    bool m_inHead = false; ///< Between a status line and the blank line after it.
    bool m_final = false;
    bool m_old = false; ///< HTTP/1.0
    bool m_chunked = false;
    bool m_declares = false;
    bool m_ambiguous = false;
    bool m_lastFrames = false; ///< The last field says where the body ends.
    std::uint64_t m_declared = 0;
    std::string* m_lastValue = nullptr; ///< Where a continuation line goes.
};

} // namespace httpcore
