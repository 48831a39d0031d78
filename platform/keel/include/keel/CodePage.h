#pragma once

#include <string>

#include "keel/Export.h"

namespace Keel {

// The local code page is the ANSI code page on Windows. Elsewhere it is the character set of the process's locale, or,
// when the process has set none, of the locale that the environment names. Where that is UTF-8 or plain ASCII, both
// functions give back the text unchanged, byte for byte, because names on such a system are byte strings that are
// UTF-8 by custom.
//
// Both are safe from any thread, as long as no thread changes the locale, and pass NUL bytes.

/// UTF-8 to the local code page. A character that the code page lacks becomes "?", and so does every byte that is not
/// valid UTF-8; the rest of the text is converted.
KEEL_API std::string UTF8ToLocal(const std::string& text);

/// The local code page to UTF-8. Every byte that the code page does not define becomes U+FFFD.
KEEL_API std::string LocalToUTF8(const std::string& text);

} // namespace Keel
