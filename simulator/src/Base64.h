#pragma once

#include <string>
#include <string_view>

#include <keel/Encrypt.h>

namespace nexwire::simulator {

inline std::string ToBase64(std::string_view bytes)
{
    return Keel::Encrypt::Base64Encode(std::string(bytes));
}

/// False when the text is empty or not canonical Base64.
inline bool FromBase64(std::string_view text, std::string& bytes)
{
    return !text.empty() && Keel::Encrypt::Base64Decode(std::string(text), bytes);
}

} // namespace nexwire::simulator
