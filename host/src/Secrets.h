#pragma once

#include <string>

namespace nexwire::host {

/// `text` with its secrets replaced, as in the log.
std::string WithoutSecrets(const std::string& text);

/// Whether the header field of that name carries a secret.
bool IsSecretField(const std::string& name);

} // namespace nexwire::host
