#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "nexwire/IEncryption.h"

namespace nexwire::core {

using CipherStep = bool (IEncryption::*)(std::vector<std::string>& output, const std::vector<std::string>& input,
                                         const std::string& sid);

/// Replaces texts by what the library's cipher makes of them, in one call and without a session. False, and the texts
/// untouched, while the library is not initialised or has no cipher, when the cipher fails, and when it gives another
/// number of texts. What the cipher sends leaves no trace in `LastExchange`.
bool Convert(std::initializer_list<std::string*> texts, CipherStep step) noexcept;

} // namespace nexwire::core
