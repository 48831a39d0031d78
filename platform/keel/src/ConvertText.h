#pragma once

#include <string>

namespace Keel {
namespace details {

#ifndef _WIN32
/// `text` from one character set to another, both as iconv names them. `unknown` stands for each
/// thing that cannot be converted: a character of UTF-8 that the target lacks, or a byte of the source that is not
/// valid. False when iconv does not know one of the sets.
bool ConvertText(const char* from, const char* to, const std::string& text, const std::string& unknown,
                 std::string& converted);
#endif

} // namespace details
} // namespace Keel
