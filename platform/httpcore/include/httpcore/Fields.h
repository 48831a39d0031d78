#pragma once

#include <string>
#include <utility>

#include <curl/curl.h>

namespace httpcore {

/// Whether the text is an HTTP token, as verbs and field names are.
bool IsToken(const std::string& text);

/// Whether it is a control character of ASCII.
constexpr bool IsControl(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}

/// Whether two field names are the same: the case of ASCII letters does not count.
bool SameName(const std::string& left, const std::string& right);

/// Order of field names; the same names are equal.
struct NameLess {
    bool operator()(const std::string& left, const std::string& right) const;
};

/// Header fields of a request as libcurl wants them. The members throw std::bad_alloc.
class FieldList {
public:
    FieldList() = default;
    FieldList(const FieldList&) = delete;
    FieldList& operator=(const FieldList&) = delete;
    ~FieldList() { curl_slist_free_all(list_); }

    /// A field; without a value when there is nothing but blanks in it.
    void Add(const std::string& name, const std::string& value);
    /// Keeps libcurl from adding the field on its own.
    void LeaveOut(const std::string& name);

    curl_slist* Get() const { return list_; }
    void Swap(FieldList& other) { std::swap(list_, other.list_); }

private:
    void Append(const std::string& line);

    curl_slist* list_ = nullptr;
};

} // namespace httpcore
