#include "httpcore/AnswerReader.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <limits>
#include <utility>

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
    into_ = into;
    body_.Begin(*into.body);
}

bool AnswerReader::Fail(Fault fault, const char* why)
{
    fault_ = fault;
    why_ = why;
    return false;
}

bool AnswerReader::TakeLine(const char* line, std::size_t size) noexcept
{
    received_ += size;
    headBytes_ += size;
    if (headBytes_ > kLargestHeader) {
        return Fail(Fault::HeadTooLong);
    }
    if (final_) {
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
        if (!inHead_) {
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
    status_ = (line[9] - '0') * 100 + (line[10] - '0') * 10 + (line[11] - '0');
    if (status_ == 101) {
        return Fail(Fault::Malformed, "it changes to a protocol that nobody asked for");
    }
    // An interim answer may have come before: only the final one counts.
    if (into_.fields != nullptr) {
        into_.fields->clear();
    }
    lastValue_ = nullptr;
    old_ = line[7] == '0';
    chunked_ = declares_ = lastFrames_ = false;
    inHead_ = true;
    return true;
}

bool AnswerReader::TakeField(const char* line, std::size_t size)
{
    const char* const end = line + size;
    if (*line == ' ' || *line == '\t') {
        if (lastFrames_) {
            return Fail(Fault::Malformed, "the field that says where its body ends goes on in a second line");
        }
        if (lastValue_ != nullptr) {
            *lastValue_ += ' ' + Trimmed(line, end);
        }
        return true;
    }
    const char* const colon = std::find(line, end, ':');
    if (colon == end) {
        lastValue_ = nullptr;
        return true;
    }
    std::string name = Trimmed(line, colon);
    std::string value = Trimmed(colon + 1, end);
    const bool length = SameName(name, "Content-Length");
    const bool transfer = SameName(name, "Transfer-Encoding");
    lastFrames_ = length || transfer;
    if (lastFrames_ && colon != line + name.size()) {
        return Fail(Fault::Malformed, "there is a blank before a colon of its head");
    }
    if (length && !TakeLength(value)) {
        return false;
    }
    if (transfer) {
        if (chunked_ || !SameName(value, "chunked")) {
            return Fail(Fault::Malformed, "its transfer encoding is not the one that is allowed, \"chunked\" once");
        }
        chunked_ = true;
    }
    if (into_.fields != nullptr) {
        lastValue_ = &into_.fields->insert_or_assign(std::move(name), std::move(value)).first->second;
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
    if (declares_ && length != declared_) {
        return Fail(Fault::Malformed, "it has two different Content-Length values");
    }
    declares_ = true;
    declared_ = length;
    return true;
}

bool AnswerReader::EndHead()
{
    inHead_ = false;
    if (status_ < 200) {
        return true;
    }
    final_ = true;
    // Chunks win over a length and over HTTP/1.0, but somebody on the way may have seen it the other way round.
    ambiguous_ = chunked_ && (declares_ || old_);
    declares_ = declares_ && !chunked_;
    if (!declares_ || NoBody()) {
        return true;
    }
    if (declared_ > into_.bodyLimit) {
        return Fail(Fault::BodyTooLong);
    }
    body_.Declare(declared_);
    return true;
}

bool AnswerReader::TakeBody(const char* bytes, std::size_t size) noexcept
{
    received_ += size;
    if (size > into_.bodyLimit - body_.Size()) {
        return Fail(Fault::BodyTooLong);
    }
    try {
        body_.Append(bytes, size);
        return true;
    } catch (const std::exception&) {
        return Fail(Fault::NoMemory);
    }
}

bool AnswerReader::Finish() noexcept
{
    try {
        body_.Finish();
        return true;
    } catch (const std::exception&) {
        return Fail(Fault::NoMemory);
    }
}

} // namespace httpcore
