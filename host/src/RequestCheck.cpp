#include "RequestCheck.h"

#include <algorithm>
#include <cstring>

namespace nexwire {
namespace host {

namespace {

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsControl(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}

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

std::string RefuseBytes(const std::string& text, const char* unwanted, const char* what)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ' ' || IsControl(c) || std::strchr(unwanted, c) != nullptr) {
            return std::string(what) + " holds " + Describe(c) + " at byte " + std::to_string(i);
        }
    }
    return std::string();
}

// "." or "..", each dot as itself or as "%2e".
bool IsDotSegment(const std::string& path, std::size_t begin, std::size_t end)
{
    int dots = 0;
    while (begin < end) {
        if (path[begin] == '.') {
            ++begin;
        } else if (end - begin >= 3 && path[begin] == '%' && path[begin + 1] == '2' && Lower(path[begin + 2]) == 'e') {
            begin += 3;
        } else {
            return false;
        }
        ++dots;
    }
    return dots == 1 || dots == 2;
}

} // namespace

bool SameName(const std::string& left, const std::string& right)
{
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(), [](char a, char b) { return Lower(a) == Lower(b); });
}

bool NameLess::operator()(const std::string& left, const std::string& right) const
{
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char a, char b) { return Lower(a) < Lower(b); });
}

bool IsToken(const std::string& text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || (Lower(c) >= 'a' && Lower(c) <= 'z') ||
               (c != '\0' && std::strchr("!#$%&'*+-.^_`|~", c) != nullptr);
    });
}

std::string RefusePath(const std::string& path)
{
    if (path.empty() || path.front() != '/') {
        return "path does not begin with a slash";
    }
    std::string reason = RefuseBytes(path, "#?\\", "path");
    if (!reason.empty()) {
        return reason;
    }
    // Servers and proxies on the way resolve dot segments, so the request would reach another resource.
    for (std::size_t begin = 1; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        if (IsDotSegment(path, begin, end)) {
            return "path holds the segment \"" + path.substr(begin, end - begin) + "\"";
        }
        begin = end + 1;
    }
    return std::string();
}

std::string RefuseQuery(const std::string& query)
{
    return RefuseBytes(query, "#", "query");
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

} // namespace host
} // namespace nexwire
