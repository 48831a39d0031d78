#pragma once

#include <string>
#include <string_view>

namespace nexwire::simulator {

std::string ToBase64(std::string_view bytes);

/// False when the text is empty or not canonical Base64.
bool FromBase64(std::string_view text, std::string& bytes);

} // namespace nexwire::simulator
