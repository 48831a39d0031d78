#pragma once

#include <string>

namespace nexwire {
namespace host {

/// Why the path must not go onto the wire; empty when it may.
std::string RefusePath(const std::string& path);

/// Why the text must not stand behind the question mark of a request line; empty when it may.
std::string RefuseQuery(const std::string& query);

/// Why the pair must not become a header field; empty when it may. Never quotes the value.
std::string RefuseHeader(const std::string& name, const std::string& value);

/// Whether the text is an HTTP token, as verbs and field names are.
bool IsToken(const std::string& text);

/// Whether two field names are the same: the case of ASCII letters does not count.
bool SameName(const std::string& left, const std::string& right);

/// Order of field names; the same names are equal.
struct NameLess {
    bool operator()(const std::string& left, const std::string& right) const;
};

} // namespace host
} // namespace nexwire
