#pragma once

#include <regex>
#include <string>

#include <gmock/gmock.h>

namespace test {

// GoogleTest's own expressions have no sets on Windows.

/// The whole text is of this form, an ECMAScript expression.
MATCHER_P(IsOfForm, form, "is of the form " + std::string(form))
{
    (void)result_listener;
    return std::regex_match(std::string(arg), std::regex(form));
}

/// A part of the text is of this form.
MATCHER_P(HasPart, form, "has a part of the form " + std::string(form))
{
    (void)result_listener;
    return std::regex_search(std::string(arg), std::regex(form));
}

} // namespace test
