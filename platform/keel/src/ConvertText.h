#pragma once

#include <string>

namespace Keel::details {

#ifdef _WIN32
using CodeSet = unsigned int; ///< Number of a code page.
constexpr CodeSet kUtf8 = 65001;
#else
using CodeSet = const char*; ///< As iconv names it.
constexpr CodeSet kUtf8 = "UTF-8";
#endif

/// `text` from one character set to another. `unknown` stands for each thing that cannot be converted: a character of
/// UTF-8 that the target lacks, or a byte of the source that is not valid. No character becomes one that merely looks
/// like it. False when the system does not know one of the sets.
bool ConvertText(CodeSet from, CodeSet to, const std::string& text, const std::string& unknown, std::string& converted);

} // namespace Keel::details
