#pragma once

#include <memory>
#include <string>
#include <vector>

#include "keel/Export.h"

namespace Keel {

/// Replaces the values of secret keys in texts that contain JSON.
///
/// A key is a quoted text followed by a colon, at any place of the text and at any level of escaping (JSON carried as
/// a text inside JSON). Keys match whatever their case, with or without `_` and `-` between words, and also with `s`,
/// `List` or `Lists` at their end: `access_token` is `accessToken`, `cardNoList` is `cardNo`. The value becomes "***",
/// quoted as the key is: texts, numbers, objects; an array becomes ["***"]; true, false and null stay. A value that is
/// cut off is replaced as far as it goes. What was JSON stays JSON.
///
/// Time is linear in the length of the text; a text without a quote character costs one search.
/// Immutable after construction, so one object serves any number of threads.
class KEEL_API CRedactor {
public:
    /// The built-in keys and `extraKeys`; empty ones are ignored.
    explicit CRedactor(const std::vector<std::string>& extraKeys = {});
    ~CRedactor();
    CRedactor(const CRedactor&) = delete;
    CRedactor& operator=(const CRedactor&) = delete;

    /// The text with its secrets replaced.
    std::string Redact(const std::string& text) const;

    /// True when something was replaced: `redacted` is the new text. False leaves `redacted` as it was.
    bool Redact(const std::string& text, std::string& redacted) const;

    /// The built-in keys: passwords, tokens and session identifiers, card numbers, key material, plain texts handed to
    /// encryption, biometric templates.
    static const std::vector<std::string>& BuiltInKeys();

private:
    struct Keys;
    std::unique_ptr<const Keys> m_keys;
};

} // namespace Keel
