#pragma once

#include <string>

namespace nexwire::tools {

/// A value as typed: "@env:NAME" and "@file:PATH" (less one line end) stand for what is there, "@@..." for a text that
/// begins with "@". False with a text for the user when it cannot be had.
///
/// @param typed  whether the value itself stood on the command line, where others can read it.
bool Resolve(const std::string& text, std::string& value, bool& typed, std::string& error);

/// Whether a value under that name is a secret, or JSON that holds one.
bool IsSecret(const std::string& name, const std::string& value);

/// Whether a header field of that name carries a credential.
bool IsSecretHeader(const std::string& name);

/// `text` with the values of secret JSON keys replaced.
std::string Redacted(const std::string& text);

} // namespace nexwire::tools
