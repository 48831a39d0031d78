#include "keel/Redact.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <unordered_set>

namespace Keel {
namespace {

constexpr std::size_t kMaxKeyLength = 256; ///< Longer texts are not taken for keys.
constexpr std::string_view kMask = "***";
constexpr std::string_view kPlurals[] = {"", "s", "list", "lists"};

bool IsOneOf(char c, std::string_view set)
{
    return set.find(c) != std::string_view::npos;
}

/// Writes the lower-case key without fillers to `normalised`, which has room for it, and gives its length.
std::size_t Normalise(std::string_view key, char* normalised)
{
    std::size_t length = 0;
    for (const char c : key) {
        if (c != '_' && c != '-') {
            normalised[length++] = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    return length;
}

// Escaping. A text in JSON escaped n times over writes its quotes after 2^n - 1 backslashes: 0, 1, 3, 7... That count
// names the level of a quote here. Inside a text of level b, a quote that belongs to the content has 2b+1 backslashes,
// and every backslash of the content takes 2(b+1) characters, so the closing quote is the one whose run of backslashes
// is b modulo 2(b+1). A quote that is neither closes an outer text: the inner one was cut off.
enum class Quote { Closing, Content, Outer };

Quote Judge(std::size_t run, std::size_t level)
{
    const std::size_t rest = run % (2 * (level + 1));
    if (rest == level) {
        return Quote::Closing;
    }
    return rest == 2 * level + 1 ? Quote::Content : Quote::Outer;
}

/// Finds things in a text. Every search goes forward from `at`.
class Scanner {
public:
    explicit Scanner(const std::string& text) : m_text(text) {}

    bool Has(std::size_t at, char c) const { return at < m_text.size() && m_text[at] == c; }

    /// The next quote, or the end.
    std::size_t NextQuote(std::size_t at) const
    {
        const std::size_t quote = m_text.find('"', at);
        return quote == std::string::npos ? m_text.size() : quote;
    }

    std::size_t SkipBackslashes(std::size_t at) const
    {
        while (Has(at, '\\')) {
            ++at;
        }
        return at;
    }

    /// Behind white space, plain or escaped.
    std::size_t SkipSpace(std::size_t at) const
    {
        for (;;) {
            while (at < m_text.size() && IsOneOf(m_text[at], " \t\r\n")) {
                ++at;
            }
            const std::size_t letter = SkipBackslashes(at);
            if (letter == at || letter == m_text.size() || !IsOneOf(m_text[letter], "nrt")) {
                return at;
            }
            at = letter + 1;
        }
    }

    /// End of a text of that level whose content starts at `at`: before the backslashes of its closing quote
    /// (`closed`), before those of the outer quote that cuts it off, or the end.
    std::size_t EndOfContent(std::size_t at, std::size_t level, bool& closed) const
    {
        closed = false;
        for (std::size_t from = at;;) {
            const std::size_t quote = NextQuote(from);
            if (quote == m_text.size()) {
                return quote;
            }
            const std::size_t run = RunBefore(quote, from);
            const Quote kind = Judge(run, level);
            if (kind != Quote::Content) {
                closed = kind == Quote::Closing;
                return quote - (closed ? level : run);
            }
            from = quote + 1;
        }
    }

    /// Behind the array or object that starts at `at`, or where it is cut off.
    std::size_t EndOfBrackets(std::size_t at, std::size_t level) const
    {
        std::size_t depth = 0;
        std::size_t floor = at;
        for (; at < m_text.size(); ++at) {
            const char c = m_text[at];
            if (c == '[' || c == '{') {
                ++depth;
            } else if ((c == ']' || c == '}') && --depth == 0) {
                return at + 1;
            } else if (c == '"') {
                const std::size_t run = RunBefore(at, floor);
                if (run != level) {
                    return at - run;
                }
                bool closed = false;
                const std::size_t end = EndOfContent(at + 1, level, closed);
                if (!closed) {
                    return end;
                }
                at = end + level;
                floor = at + 1;
            }
        }
        return at;
    }

    std::size_t EndOfBareValue(std::size_t at) const
    {
        while (at < m_text.size() && !IsOneOf(m_text[at], ",}] \t\r\n\"\\")) {
            ++at;
        }
        return at;
    }

    /// End of what may be a key: at its closing quote or that one's backslashes; the end when there is none near.
    std::size_t EndOfKey(std::size_t at) const
    {
        const std::size_t limit = std::min(m_text.size(), at + kMaxKeyLength + 1);
        while (at < limit && m_text[at] != '"' && m_text[at] != '\\') {
            ++at;
        }
        return at < limit ? at : m_text.size();
    }

private:
    /// Backslashes before `at`, none of them before `floor`.
    std::size_t RunBefore(std::size_t at, std::size_t floor) const
    {
        std::size_t run = 0;
        while (at - run > floor && m_text[at - run - 1] == '\\') {
            ++run;
        }
        return run;
    }

    const std::string& m_text;
};

} // namespace

struct CRedactor::Keys {
    std::unordered_set<std::string> keys;
    std::size_t longest = 0;
    std::size_t shortest = kMaxKeyLength;

    void Add(const std::string& key)
    {
        if (key.size() > kMaxKeyLength) {
            return;
        }
        char buffer[kMaxKeyLength];
        const std::size_t length = Normalise(key, buffer);
        if (length > 0) {
            keys.emplace(buffer, length);
            longest = std::max(longest, length);
            shortest = std::min(shortest, length);
        }
    }

    bool Contains(std::string_view key) const
    {
        if (key.size() < shortest || key.size() > kMaxKeyLength) {
            return false;
        }
        char buffer[kMaxKeyLength];
        const std::string_view whole(buffer, Normalise(key, buffer));
        if (whole.size() > longest + kPlurals[3].size()) {
            return false;
        }
        for (const std::string_view plural : kPlurals) {
            const std::size_t length = whole.size() - std::min(whole.size(), plural.size());
            if (length >= shortest && whole.substr(length) == plural &&
                keys.count(std::string(whole.substr(0, length))) != 0) {
                return true;
            }
        }
        return false;
    }
};

CRedactor::CRedactor(const std::vector<std::string>& extraKeys)
{
    auto keys = std::make_unique<Keys>();
    for (const std::string& key : BuiltInKeys()) {
        keys->Add(key);
    }
    for (const std::string& key : extraKeys) {
        keys->Add(key);
    }
    m_keys = std::move(keys);
}

CRedactor::~CRedactor() = default;

std::string CRedactor::Redact(const std::string& text) const
{
    std::string redacted;
    return Redact(text, redacted) ? redacted : text;
}

bool CRedactor::Redact(const std::string& text, std::string& redacted) const
{
    const Scanner scanner(text);
    std::string result;
    std::size_t copied = 0;
    bool changed = false;
    const auto replace = [&](std::size_t begin, std::size_t end, std::size_t level, std::string_view before,
                             std::string_view after, bool quoted) {
        if (!changed) {
            result.reserve(text.size());
            changed = true;
        }
        result.append(text, copied, begin - copied).append(before);
        if (quoted) {
            result.append(level, '\\').append(1, '"');
        }
        result.append(kMask);
        if (quoted) {
            result.append(level, '\\').append(1, '"');
        }
        result.append(after);
        copied = end;
    };

    // Every quote is tried as the opening one of a key, so a text that starts in the middle of JSON is read right.
    std::size_t at = 0;
    for (std::size_t open = scanner.NextQuote(at); open < text.size(); open = scanner.NextQuote(at)) {
        const std::size_t keyEnd = scanner.EndOfKey(open + 1);
        const std::size_t close = scanner.SkipBackslashes(keyEnd);
        at = open + 1;
        if (!scanner.Has(close, '"') || !m_keys->Contains(std::string_view(text).substr(open + 1, keyEnd - open - 1))) {
            continue;
        }
        const std::size_t colon = scanner.SkipSpace(close + 1);
        if (!scanner.Has(colon, ':')) {
            continue;
        }
        const std::size_t keyLevel = close - keyEnd;
        const std::size_t value = scanner.SkipSpace(colon + 1);
        const std::size_t quote = scanner.SkipBackslashes(value);
        if (scanner.Has(quote, '"')) {
            const std::size_t level = quote - value;
            bool closed = false;
            const std::size_t end = scanner.EndOfContent(quote + 1, level, closed);
            replace(quote + 1, end, level, "", "", false);
            at = closed ? end + level + 1 : end;
        } else if (scanner.Has(value, '[')) {
            at = scanner.EndOfBrackets(value, keyLevel);
            replace(value, at, keyLevel, "[", "]", true);
        } else if (scanner.Has(value, '{')) {
            at = scanner.EndOfBrackets(value, keyLevel);
            replace(value, at, keyLevel, "", "", true);
        } else {
            at = scanner.EndOfBareValue(value);
            const std::string_view bare = std::string_view(text).substr(value, at - value);
            if (!bare.empty() && bare != "true" && bare != "false" && bare != "null") {
                replace(value, at, keyLevel, "", "", true);
            }
        }
    }
    if (changed) {
        result.append(text, copied, std::string::npos);
        redacted.swap(result);
    }
    return changed;
}

const std::vector<std::string>& CRedactor::BuiltInKeys()
{
    // Never destroyed: the logger redacts to the very end of the process.
    static const std::vector<std::string>& keys = *new std::vector<std::string>{
        // Passwords and codes that open something
        "password", "passwd", "pwd", "passphrase", "passcode", "userPassword", "userPwd", "loginPassword", "loginPwd",
        "adminPassword", "oldPassword", "oldPwd", "originalPassword", "currentPassword", "newPassword", "newPwd",
        "confirmPassword", "confirmPwd", "repeatPassword", "initPassword", "initialPassword", "defaultPassword",
        "resetPassword", "verifyPassword", "checkPassword", "accessPassword", "authPassword", "privPassword",
        "devicePassword", "devicePwd", "devPassword", "devPwd", "channelPassword", "serverPassword", "streamPassword",
        "streamPwd", "videoPassword", "rtspPassword", "superPassword", "superPwd", "stressPassword", "stressPwd",
        "duressPassword", "hijackPassword", "coercePassword", "unlockPassword", "unlockPwd", "doorPassword",
        "openPassword", "openDoorPassword", "openDoorPwd", "keyboardPassword", "keypadPassword", "personPassword",
        "personPwd", "cardPassword", "cardPwd", "visitorPassword", "dynamicPassword", "temporaryPassword",
        "tempPassword", "installerPassword", "operatorPassword", "ftpPassword", "ftpPwd", "mailPassword",
        "emailPassword", "smtpPassword", "proxyPassword", "snmpPassword", "ldapPassword", "dbPassword",
        "databasePassword", "wifiPassword", "wifiPwd", "platformPassword", "encryptPassword", "encryptionPassword",
        "filePassword", "exportPassword", "sipPassword", "intercomPassword", "pin", "pinCode", "personPin",
        "verifyCode", "verificationCode", "authCode", "authenticationCode", "captcha", "smsCode", "otp",
        "safetyAnswer",
        // Sessions and tokens
        "token", "accessToken", "loginToken", "refreshToken", "authToken", "userToken", "sessionToken", "serverToken",
        "clientToken", "csrfToken", "apiToken", "bearerToken", "idToken", "SID", "session", "sessionId", "sessionKey",
        "authorization", "proxyAuthorization", "cookie", "setCookie", "credential",
        // Cards
        "cardNo", "cardNum", "cardNumber", "cardNumbers", "cardId", "cardCode", "cardSerial", "cardSerialNo",
        "cardSerialNumber", "physicalCardNo", "wiegandCardNo", "bankCardNo",
        // Key material
        "streamKey", "secret", "secretKey", "encryptKey", "encryptionKey", "decryptKey", "decryptionKey", "aesKey",
        "desKey", "rsaKey", "privateKey", "sharedKey", "preSharedKey", "psk", "masterKey", "symmetricKey", "signKey",
        "signatureKey", "hmacKey", "userKey", "deviceKey", "corvidKey", "generalCorvidKey", "apiKey", "appKey",
        "appSecret", "clientSecret", "accessKey", "accessKeySecret", "secretAccessKey", "authKey", "videoKey",
        "verificationKey", "wifiKey", "salt", "apnPassword", "sectorKey", "newSectorKey",
        // What goes into encryption and comes out of decryption
        "plaintext",
        // Biometric templates
        "fingerData", "fingerprintData", "fingerPrintFeature", "fingerFeature", "faceData", "faceFeature", "irisData",
        "irisFeature", "palmData", "palmFeature", "biometricData", "featureData", "eigenvalue"};
    return keys;
}

} // namespace Keel
