#pragma once

#include <string>

namespace nexwire {
namespace host {

/// `text` with the values of secret JSON keys replaced, as in the log.
std::string WithoutSecrets(const std::string& text);

/// Whether the header field of that name carries a credential.
bool IsSecretField(const std::string& name);

} // namespace host
} // namespace nexwire
