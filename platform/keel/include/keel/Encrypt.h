#pragma once

#include <string>

#include "keel/Export.h"

namespace Keel::Encrypt {

/// Base64 with the standard alphabet, padded, without line breaks. Any bytes, NUL included.
KEEL_API std::string Base64Encode(const std::string& bytes);

/// Reads what `Base64Encode` writes. False, and `bytes` untouched, when `text` is anything else: a foreign character,
/// white space, missing or misplaced padding, unused bits that are not zero.
KEEL_API bool Base64Decode(const std::string& text, std::string& bytes);

} // namespace Keel::Encrypt
