#include "httpcore/AnswerReader.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <limits>

#include "httpcore/Fields.h"

namespace httpcore {

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string Trimmed(const char* begin, const char* end)
{
    while (begin < end && (*begin == ' ' || *begin == '\t')) {
        ++begin;
    }
    while (end > begin && (end[-1] == ' ' || end[-1] == '\t')) {
        --end;
    }
    return std::string(begin, end);
}

} // namespace

void AnswerReader::Begin(const AnswerInto& into)
{
    *this = AnswerReader();
    m_into = into;
    m_body.Begin(*into.body);
}

bool AnswerReader::Fail(Fault fault, const char* why)
{
    m_fault = fault;
    m_why = why;
    return false;
}

bool AnswerReader::TakeLine(const char* line, std::size_t size) noexcept
{
    m_received += size;
    m_headBytes += size;
    if (m_headBytes > kLargestHeader) {
        return Fail(Fault::HeadTooLong);
    }
    if (m_final) {
        return true; // A trailer behind the body.
    }
    if (size < 2 || line[size - 1] != '\n' || line[size - 2] != '\r') {
        return Fail(Fault::Malformed, "a line of its head does not end with CR and LF");
    }
    size -= 2;
    if (std::memchr(line, '\r', size) != nullptr || std::memchr(line, '\0', size) != nullptr) {
        return Fail(Fault::Malformed, "a line of its head holds a control character");
    }
    try {
        if (!m_inHead) {
            return TakeStatusLine(line, size);
        }
        return size == 0 ? EndHead() : TakeField(line, size);
    } catch (const std::exception&) {
        return Fail(Fault::NoMemory);
    }
}

bool AnswerReader::TakeStatusLine(const char* line, std::size_t size)
{
    // "HTTP/1.1 200", and a blank before any words.
    if (size < 12 || std::memcmp(line, "HTTP/1.", 7) != 0 || (line[7] != '0' && line[7] != '1') || line[8] != ' ' ||
        line[9] < '1' || !IsDigit(line[9]) || !IsDigit(line[10]) || !IsDigit(line[11]) ||
        (size > 12 && line[12] != ' ')) {
        return Fail(Fault::Malformed, "its status line is not one of HTTP/1.1");
    }
    m_status = (line[9] - '0') * 100 + (line[10] - '0') * 10 + (line[11] - '0');
    if (m_status == 101) {
        return Fail(Fault::Malformed, "it changes to a protocol that nobody asked for");
    }
    // An interim answer may have come before: only the final one counts.
    if (m_into.fields != nullptr) {
        m_into.fields->clear();
    }
    m_lastValue = nullptr;
    m_old = line[7] == '0';
    m_chunked = m_declares = m_lastFrames = false;
    m_inHead = true;
    return true;
}

bool AnswerReader::TakeField(const char* line, std::size_t size)
{
    const char* const end = line + size;
    if (*line == ' ' || *line == '\t') {
        if (m_lastFrames) {
            return Fail(Fault::Malformed, "the field that says where its body ends goes on in a second line");
        }
        if (m_lastValue != nullptr) {
            *m_lastValue += ' ' + Trimmed(line, end);
        }
        return true;
    }
    const char* const colon = std::find(line, end, ':');
    if (colon == end) {
        m_lastValue = nullptr;
        return true;
    }
    const std::string name = Trimmed(line, colon);
    const std::string value = Trimmed(colon + 1, end);
    const bool length = SameName(name, "Content-Length");
    const bool transfer = SameName(name, "Transfer-Encoding");
    m_lastFrames = length || transfer;
    if (m_lastFrames && colon != line + name.size()) {
        return Fail(Fault::Malformed, "there is a blank before a colon of its head");
    }
    if (length && !TakeLength(value)) {
        return false;
    }
    if (transfer) {
        if (m_chunked || !SameName(value, "chunked")) {
            return Fail(Fault::Malformed, "its transfer encoding is not the one that is allowed, \"chunked\" once");
        }
        m_chunked = true;
    }
    if (m_into.fields != nullptr) {
        m_lastValue = &((*m_into.fields)[name] = value);
    }
    return true;
}

bool AnswerReader::TakeLength(const std::string& value)
{
    if (value.empty() || !std::all_of(value.begin(), value.end(), IsDigit)) {
        return Fail(Fault::Malformed, "its Content-Length is not a number");
    }
    std::uint64_t length = 0;
    for (const char c : value) {
        const auto digit = static_cast<std::uint64_t>(c - '0');
        const std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
        length = length > (most - digit) / 10 ? most : length * 10 + digit;
    }
    if (m_declares && length != m_declared) {
        return Fail(Fault::Malformed, "it has two different Content-Length values");
    }
    m_declares = true;
    m_declared = length;
    return true;
}

bool AnswerReader::EndHead()
{
    m_inHead = false;
    if (m_status < 200) {
        return true;
    }
    m_final = true;
    // Chunks win over a length and over HTTP/1.0, but somebody on the way may have seen it the other way round.
    m_ambiguous = m_chunked && (m_declares || m_old);
    m_declares = m_declares && !m_chunked;
    if (!m_declares || NoBody()) {
        return true;
    }
    if (m_declared > m_into.bodyLimit) {
        return Fail(Fault::BodyTooLong);
    }
    m_body.Declare(m_declared);
    return true;
}

bool AnswerReader::TakeBody(const char* bytes, std::size_t size) noexcept
{
    m_received += size;
    if (size > m_into.bodyLimit - m_body.Size()) {
        return Fail(Fault::BodyTooLong);
    }
    try {
        m_body.Append(bytes, size);
        return true;
    } catch (const std::exception&) {
        return Fail(Fault::NoMemory);
    }
}

bool AnswerReader::Finish() noexcept
{
    try {
        m_body.Finish();
        return true;
    } catch (const std::exception&) {
        return Fail(Fault::NoMemory);
    }
}

} // namespace httpcore
