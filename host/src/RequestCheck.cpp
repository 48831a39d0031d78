#include "RequestCheck.h"

#include <array>
#include <cstring>
#include <string_view>

#include <httpcore/Fields.h>

namespace nexwire::host {

using httpcore::IsControl;
using httpcore::IsToken;
using httpcore::SameName;

namespace {

std::string Describe(char c)
{
    if (c == ' ') {
        return "a space";
    }
    if (!IsControl(c)) {
        return std::string("'") + c + "'";
    }
    static const char kHex[] = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    return std::string("control character 0x") + kHex[byte >> 4U] + kHex[byte & 0xFU];
}

/// For each character whether it must not stand in an address.
using Unwanted = std::array<bool, 256>;

/// Control characters, spaces, and these.
constexpr Unwanted MakeUnwanted(std::string_view characters)
{
    Unwanted unwanted{};
    for (std::size_t i = 0; i < unwanted.size(); ++i) {
        const char c = static_cast<char>(i);
        unwanted[i] = c == ' ' || IsControl(c) || characters.find(c) != std::string_view::npos;
    }
    return unwanted;
}

constexpr Unwanted kUnwantedInPath = MakeUnwanted("#?\\");
constexpr Unwanted kUnwantedInQuery = MakeUnwanted("#");

std::string RefuseBytes(const std::string& text, const Unwanted& unwanted, const char* what)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (unwanted[static_cast<unsigned char>(text[i])]) {
            return std::string(what) + " holds " + Describe(text[i]) + " at byte " + std::to_string(i);
        }
    }
    return std::string();
}

// Length of one of the characters at `at`, as itself or percent-encoded; 0 when there is none of them.
std::size_t LengthOf(const char* characters, const std::string& path, std::size_t at)
{
    const bool encoded =
        path[at] == '%' && path.size() - at >= 3 && path.find_first_not_of("0123456789abcdefABCDEF", at + 1) >= at + 3;
    const char c = encoded ? static_cast<char>(std::stoul(path.substr(at + 1, 2), nullptr, 16)) : path[at];
    if (c == '\0' || std::strchr(characters, c) == nullptr) {
        return 0;
    }
    return encoded ? 3 : 1;
}

// End of the segment that begins at `begin`. Some servers take an encoded slash or backslash for a plain slash.
std::size_t EndOfSegment(const std::string& path, std::size_t begin)
{
    while (begin < path.size() && LengthOf("/\\", path, begin) == 0) {
        ++begin;
    }
    return begin;
}

// "." or "..", each dot as itself or encoded, perhaps with parameters behind it, which servers cut off: "..;x=1".
bool IsDotSegment(const std::string& path, std::size_t begin, std::size_t end)
{
    int dots = 0;
    while (begin < end) {
        const std::size_t dot = LengthOf(".", path, begin);
        if (dot == 0) {
            break;
        }
        begin += dot;
        ++dots;
    }
    return (dots == 1 || dots == 2) && (begin == end || LengthOf(";", path, begin) != 0);
}

} // namespace

std::string RefusePath(const std::string& path)
{
    if (path.empty() || path.front() != '/') {
        return "path does not begin with a slash";
    }
    std::string reason = RefuseBytes(path, kUnwantedInPath, "path");
    if (!reason.empty()) {
        return reason;
    }
    // Servers and proxies on the way resolve dot segments, so the request would reach another resource. Most paths hold
    // no dot, as itself or encoded.
    if (path.find('.') == std::string::npos && path.find('%') == std::string::npos) {
        return std::string();
    }
    for (std::size_t begin = 1; begin <= path.size();) {
        const std::size_t end = EndOfSegment(path, begin);
        if (IsDotSegment(path, begin, end)) {
            return "path holds the segment \"" + path.substr(begin, end - begin) + "\"";
        }
        begin = end + (end < path.size() ? LengthOf("/\\", path, end) : 1);
    }
    return std::string();
}

std::string RefuseQuery(const std::string& query)
{
    return RefuseBytes(query, kUnwantedInQuery, "query");
}

std::string RefuseHeader(const std::string& name, const std::string& value)
{
    if (!IsToken(name)) {
        return "a header field name is not an HTTP token";
    }
    for (const char* framing : {"Host", "Content-Length", "Transfer-Encoding", "Connection", "Expect", "TE", "Trailer",
                                "Upgrade", "Proxy-Connection"}) {
        if (SameName(name, framing)) {
            return "header field " + name + " belongs to the transport";
        }
    }
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (IsControl(value[i])) {
            return "value of header field " + name + " holds " + Describe(value[i]) + " at byte " + std::to_string(i);
        }
    }
    return std::string();
}

} // namespace nexwire::host
