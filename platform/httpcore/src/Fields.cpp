#include "httpcore/Fields.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "keel/StringUtil.h"

namespace httpcore {

using Keel::StringUtil::LowerCase;

bool IsToken(const std::string& text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || (LowerCase(c) >= 'a' && LowerCase(c) <= 'z') ||
               (c != '\0' && std::strchr("!#$%&'*+-.^_`|~", c) != nullptr);
    });
}

bool SameName(const std::string& left, const std::string& right)
{
    // Mostly they are written alike.
    return left == right || std::equal(left.begin(), left.end(), right.begin(), right.end(),
                                       [](char a, char b) { return LowerCase(a) == LowerCase(b); });
}

bool NameLess::operator()(const std::string& left, const std::string& right) const
{
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char a, char b) { return LowerCase(a) < LowerCase(b); });
}

// libcurl reads "Name;" as a field without value, and "Name:" as a field to leave out.
void FieldList::Add(const std::string& name, const std::string& value)
{
    Append(value.find_first_not_of(' ') == std::string::npos ? name + ';' : name + ": " + value);
}

void FieldList::LeaveOut(const std::string& name)
{
    Append(name + ':');
}

void FieldList::Append(const std::string& line)
{
    curl_slist* const grown = curl_slist_append(list_, line.c_str());
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    list_ = grown;
}

} // namespace httpcore
