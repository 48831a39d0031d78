#include "keel/Redact.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <unordered_map>

#include "keel/Encrypt.h"
#include "keel/StringUtil.h"

namespace Keel {
namespace {

constexpr std::size_t kMaxKeyLength = 256; ///< Longer texts are not taken for keys.
constexpr std::string_view kMask = "***";
constexpr std::string_view kPlurals[] = {"", "s", "list", "lists"};
constexpr int kMaxOpened = 3; ///< Base64 in JSON in Base64, so often.

/// What the name of a value says about it.
enum class Secrecy {
    None,
    Texts, ///< A text, or a list of texts. A number under such a name counts something.
    All    ///< Whatever it is, except true, false and null.
};

// Words that make a secret of a name which ends with one of them, digits and plurals aside. Lower case.
constexpr std::string_view kEndings[] = {"password", "passwd", "pwd",    "passphrase", "passcode",  "pass",
                                         "token",    "secret", "ticket", "jwt",        "privatekey"};
// Of these, the ones that do so anywhere in a name, for texts.
constexpr std::string_view kAnywhere[] = {"password", "passwd", "pwd", "passphrase", "passcode"};
// Unless the name ends like this: what is said about a password is no password.
constexpr std::string_view kAbout[] = {"level",    "strength", "type",     "len",    "length",   "count",    "num",
                                       "number",   "times",    "time",     "days",   "date",     "expire",   "expired",
                                       "expiry",   "enable",   "enabled",  "status", "state",    "mode",     "policy",
                                       "rule",     "min",      "max",      "flag",   "error",    "limit",    "period",
                                       "interval", "validity", "encoding", "format", "required", "supported"};
// Names that end with "pass" and mean a way or an outcome.
constexpr std::string_view kNoPassword[] = {"bypass", "compass", "overpass", "underpass", "ispass", "antipass"};
// Texts of devices that may travel as Base64.
constexpr std::string_view kCarriers[] = {"inbuffer", "outbuffer", "condbuffer", "statusbuffer"};

bool IsOneOf(char c, std::string_view set)
{
    return set.find(c) != std::string_view::npos;
}

template <std::size_t size>
bool Holds(const std::string_view (&list)[size], std::string_view text)
{
    return std::find(std::begin(list), std::end(list), text) != std::end(list);
}

bool EndsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

template <std::size_t size>
bool EndsWithOne(std::string_view text, const std::string_view (&ends)[size])
{
    return std::any_of(std::begin(ends), std::end(ends), [&](std::string_view end) { return EndsWith(text, end); });
}

/// What the words of a name say, lower case and without fillers.
Secrecy JudgeWords(std::string_view name)
{
    for (const std::string_view plural : kPlurals) {
        if (!EndsWith(name, plural)) {
            continue;
        }
        std::string_view stem = name.substr(0, name.size() - plural.size());
        while (!stem.empty() && stem.back() >= '0' && stem.back() <= '9') {
            stem.remove_suffix(1);
        }
        if (EndsWithOne(stem, kEndings) && !EndsWithOne(stem, kNoPassword)) {
            return Secrecy::All;
        }
    }
    const bool named = std::any_of(std::begin(kAnywhere), std::end(kAnywhere),
                                   [name](std::string_view word) { return name.find(word) != std::string_view::npos; });
    return named && !EndsWithOne(name, kAbout) &&
                   !(EndsWith(name, "s") && EndsWithOne(name.substr(0, name.size() - 1), kAbout))
               ? Secrecy::Texts
               : Secrecy::None;
}

/// Writes the lower-case key without fillers to `normalised`, which has room for it, and gives its length.
std::size_t Normalise(std::string_view key, char* normalised)
{
    std::size_t length = 0;
    for (const char c : key) {
        if (c != '_' && c != '-') {
            normalised[length++] = StringUtil::LowerCase(c);
        }
    }
    return length;
}

// Escaping. A text in JSON escaped n times over writes its quotes after 2^n - 1 backslashes: 0, 1, 3, 7... That count
// names the level of a quote here. Inside a text of level b, a quote that belongs to the content has 2b+1 backslashes,
// and every backslash of the content takes 2(b+1) characters, so the closing quote is the one whose run of backslashes
// is b modulo 2(b+1). A quote that is neither closes an outer text: the inner one was cut off.
enum class Quote { Closing, Content, Outer };

Quote QuoteAt(std::size_t run, std::size_t level)
{
    const std::size_t rest = run % (2 * (level + 1));
    if (rest == level) {
        return Quote::Closing;
    }
    return rest == 2 * level + 1 ? Quote::Content : Quote::Outer;
}

void AppendUtf8(std::string& text, std::uint32_t code)
{
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    if (code < 0x800) {
        text += static_cast<char>(0xC0U | code >> 6U);
    } else {
        text += static_cast<char>(0xE0U | code >> 12U);
        text += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
    }
    text += static_cast<char>(0x80U | (code & 0x3FU));
}

/// Quotes that are spelled "\u0022" as "\"", at every level of escaping; false when there is none. One level out, n
/// backslashes before such a letter stand for 2n - 1 before a quote.
bool PlainQuotes(const std::string& text, std::string& plain)
{
    static const std::string spelled = "u0022";
    std::size_t copied = 0;
    for (std::size_t at = text.find(spelled); at != std::string::npos; at = text.find(spelled, at + 1)) {
        std::size_t run = 0;
        while (run < at - copied && text[at - run - 1] == '\\') {
            ++run;
        }
        if (run != 0 && (run & (run - 1)) == 0) { // Level by level the run doubles.
            plain.append(text, copied, at - copied).append(run - 1, '\\').append(1, '"');
            copied = at + spelled.size();
        }
    }
    if (copied == 0) {
        return false;
    }
    plain.append(text, copied, std::string::npos);
    return true;
}

/// Finds things in a text. Every search goes forward from `at`.
class Scanner {
public:
    explicit Scanner(const std::string& text) : text_(text) {}

    bool Has(std::size_t at, char c) const { return at < text_.size() && text_[at] == c; }

    /// The next quote, or the end.
    std::size_t NextQuote(std::size_t at) const
    {
        const std::size_t quote = text_.find('"', at);
        return quote == std::string::npos ? text_.size() : quote;
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
            while (at < text_.size() && IsOneOf(text_[at], " \t\r\n")) {
                ++at;
            }
            const std::size_t letter = SkipBackslashes(at);
            if (letter == at || letter == text_.size() || !IsOneOf(text_[letter], "nrt")) {
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
            if (quote == text_.size()) {
                return quote;
            }
            const std::size_t run = RunBefore(quote, from);
            const Quote kind = QuoteAt(run, level);
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
        for (; at < text_.size(); ++at) {
            const char c = text_[at];
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
        while (at < text_.size() && !IsOneOf(text_[at], ",}] \t\r\n\"\\")) {
            ++at;
        }
        return at;
    }

    /// Reads what may be a key and begins at `at`: `close` is its closing quote, `level` counts the backslashes before
    /// that. Escapes of the form \uXXXX are decoded into `decoded`, which `key` then shows. False when it is no key.
    bool ReadKey(std::size_t at, std::string_view& key, std::string& decoded, std::size_t& close,
                 std::size_t& level) const
    {
        const std::size_t begin = at;
        std::size_t copied = at;
        decoded.clear();
        for (std::size_t length = 0; at < text_.size() && length <= kMaxKeyLength; ++length) {
            if (text_[at] != '"' && text_[at] != '\\') {
                ++at;
                continue;
            }
            close = SkipBackslashes(at);
            level = close - at;
            if (Has(close, '"')) {
                key = std::string_view(text_).substr(begin, at - begin);
                if (copied != begin) {
                    key = decoded.append(text_, copied, at - copied);
                }
                return true;
            }
            std::uint32_t code = 0;
            if (!ReadEscape(close, code)) {
                return false;
            }
            AppendUtf8(decoded.append(text_, copied, at - copied), code);
            at = copied = close + 5;
        }
        return false;
    }

    /// Whether "uXXXX" stands at `at`.
    bool ReadEscape(std::size_t at, std::uint32_t& code) const
    {
        if (text_.size() - at < 5 || text_[at] != 'u') {
            return false;
        }
        for (std::size_t i = at + 1; i < at + 5; ++i) {
            const char c = text_[i];
            const bool digit = c >= '0' && c <= '9';
            const bool letter = (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
            if (!digit && !letter) {
                return false;
            }
            code = code << 4U | static_cast<std::uint32_t>(digit ? c - '0' : (c & 0x5F) - 'A' + 10);
        }
        return true;
    }

    /// End of user and password of an address whose authority begins at `at`; `at` when it has none. A slash in a
    /// password counts to it where what stands before cannot be host and port. Moves `at` to where it has looked.
    std::size_t EndOfUser(std::size_t& at) const
    {
        const std::size_t begin = at;
        std::size_t end = begin;
        std::size_t colon = std::string::npos;
        bool host = true; // What stands between colon and slash may be a port.
        for (; at < text_.size(); ++at) {
            std::size_t plain = SkipBackslashes(at);
            const char c = plain < text_.size() ? text_[plain] : '"';
            if (static_cast<unsigned char>(c) <= 0x20 || IsOneOf(c, "\"<>") || (plain != at && IsOneOf(c, "nrt"))) {
                break;
            }
            if (c == '@') {
                end = plain;
            } else if (IsOneOf(c, "/?#")) {
                if ((c != '/' && end != begin) || host || text_[begin] == '[') {
                    break;
                }
            } else if (c == ':' && colon == std::string::npos) {
                colon = plain;
            } else if (colon != std::string::npos && (c < '0' || c > '9')) {
                host = false;
            }
            at = plain;
        }
        return at == text_.size() && end == begin && !host && text_[begin] != '[' ? at : end;
    }

    /// Gathers the Base64 that begins at `at`, slashes perhaps escaped, and gives its end.
    std::size_t ReadBase64(std::size_t at, std::string& base64) const
    {
        for (; at < text_.size(); ++at) {
            const std::size_t letter = SkipBackslashes(at);
            if (Has(letter, '/')) {
                at = letter;
            }
            const char c = text_[at];
            const bool in = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
                            c == '/' || c == '=';
            if (!in) {
                break;
            }
            base64 += c;
        }
        return at;
    }

private:
    /// Backslashes before `at`, none of them before `floor`.
    std::size_t RunBefore(std::size_t at, std::size_t floor) const
    {
        std::size_t run = 0;
        while (at - run > floor && text_[at - run - 1] == '\\') {
            ++run;
        }
        return run;
    }

    const std::string& text_;
};

} // namespace

#if defined(__GNUC__) && !defined(_WIN32)
#define NOT_EXPORTED __attribute__((visibility("hidden"))) // As a part of an exported class it would be, too.
#else
#define NOT_EXPORTED
#endif
struct NOT_EXPORTED CRedactor::Keys {
    std::unordered_map<std::string, Secrecy> keys;
    std::size_t longest = 0;

    void Add(const std::string& key, Secrecy secrecy)
    {
        if (key.size() > kMaxKeyLength) {
            return;
        }
        char buffer[kMaxKeyLength];
        const std::size_t length = Normalise(key, buffer);
        if (length > 0) {
            keys.emplace(std::string(buffer, length), secrecy);
            longest = std::max(longest, length);
        }
    }

    Secrecy SecrecyOf(std::string_view key) const
    {
        char buffer[kMaxKeyLength];
        if (key.size() > sizeof buffer) {
            return Secrecy::None;
        }
        const std::string_view name(buffer, Normalise(key, buffer));
        if (name.size() <= longest + kPlurals[3].size()) {
            for (const std::string_view plural : kPlurals) {
                if (EndsWith(name, plural)) {
                    const auto found = keys.find(std::string(name.substr(0, name.size() - plural.size())));
                    if (found != keys.end()) {
                        return found->second;
                    }
                }
            }
        }
        return JudgeWords(name);
    }

    static bool IsCarrier(std::string_view key)
    {
        char buffer[kMaxKeyLength];
        return key.size() <= sizeof buffer && Holds(kCarriers, std::string_view(buffer, Normalise(key, buffer)));
    }

    bool Redact(const std::string& text, std::string& redacted, int opened) const;
    bool RedactPlain(const std::string& text, std::string& redacted, int opened) const;
    bool RedactBase64(const std::string& base64, std::string& redacted, int opened) const;
};

namespace {

/// Replaces user and password of the addresses in a text.
bool RedactAddresses(const std::string& text, std::string& redacted)
{
    if (text.find('@') == std::string::npos) {
        return false;
    }
    const Scanner scanner(text);
    std::string result;
    std::size_t copied = 0;
    for (std::size_t colon = text.find(':'); colon != std::string::npos; colon = text.find(':', colon + 1)) {
        // "://", slashes perhaps escaped.
        std::size_t begin = scanner.SkipBackslashes(colon + 1);
        if (!scanner.Has(begin, '/')) {
            continue;
        }
        begin = scanner.SkipBackslashes(begin + 1);
        if (!scanner.Has(begin, '/')) {
            continue;
        }
        ++begin;
        std::size_t seen = begin;
        const std::size_t user = scanner.EndOfUser(seen);
        if (user > begin) {
            result.append(text, copied, begin - copied).append(kMask);
            copied = user;
        }
        colon = std::max(user, seen) - 1;
    }
    if (copied == 0) {
        return false;
    }
    result.append(text, copied, std::string::npos);
    if (result == text) {
        return false;
    }
    redacted.swap(result);
    return true;
}

} // namespace

CRedactor::CRedactor(const std::vector<std::string>& extraKeys)
{
    auto keys = std::make_unique<Keys>();
    for (const std::string& key : BuiltInKeys()) {
        keys->Add(key, Secrecy::All);
    }
    for (const std::string& key : PersonalKeys()) {
        keys->Add(key, Secrecy::Texts);
    }
    for (const std::string& key : extraKeys) {
        keys->Add(key, Secrecy::All);
    }
    keys_ = std::move(keys);
}

CRedactor::~CRedactor() = default;

std::string CRedactor::Redact(const std::string& text) const
{
    std::string redacted;
    return Redact(text, redacted) ? redacted : text;
}

bool CRedactor::Redact(const std::string& text, std::string& redacted) const
{
    return keys_->Redact(text, redacted, 0);
}

bool CRedactor::IsSecret(const std::string& name) const
{
    const bool own = name.size() > 2 && (name[0] == 'X' || name[0] == 'x') && name[1] == '-';
    return keys_->SecrecyOf(own ? std::string_view(name).substr(2) : std::string_view(name)) != Secrecy::None;
}

bool CRedactor::Keys::Redact(const std::string& text, std::string& redacted, int opened) const
{
    std::string plain;
    std::string keyed;
    const bool changed = RedactPlain(PlainQuotes(text, plain) ? plain : text, keyed, opened);
    if (RedactAddresses(changed ? keyed : text, redacted)) {
        return true;
    }
    if (changed) {
        redacted.swap(keyed);
    }
    return changed;
}

/// False: it is not Base64, or nothing in it is secret.
bool CRedactor::Keys::RedactBase64(const std::string& base64, std::string& redacted, int opened) const
{
    std::string bytes;
    std::string clean;
    // What was cut off still opens as far as it goes.
    if (opened == kMaxOpened || !Encrypt::Base64Decode(base64.substr(0, base64.size() / 4 * 4), bytes) ||
        !Redact(bytes, clean, opened + 1)) {
        return false;
    }
    redacted = Encrypt::Base64Encode(clean);
    return true;
}

bool CRedactor::Keys::RedactPlain(const std::string& text, std::string& redacted, int opened) const
{
    const Scanner scanner(text);
    std::string result;
    std::size_t copied = 0;
    bool changed = false;
    const auto replace = [&](std::size_t begin, std::size_t end, std::string_view by) {
        if (!changed) {
            result.reserve(text.size());
            changed = true;
        }
        result.append(text, copied, begin - copied).append(by);
        copied = end;
    };
    // The mask as a text of that level.
    const auto masked = [](std::size_t level) {
        const std::string quote = std::string(level, '\\') + '"';
        return quote + std::string(kMask) + quote;
    };

    // Every quote is tried as the opening one of a key, so a text that starts in the middle of JSON is read right.
    std::size_t at = 0;
    std::string decoded;
    std::string base64;
    for (std::size_t open = scanner.NextQuote(at); open < text.size(); open = scanner.NextQuote(at)) {
        std::string_view key;
        std::size_t close = 0;
        std::size_t keyLevel = 0;
        at = open + 1;
        if (!scanner.ReadKey(open + 1, key, decoded, close, keyLevel)) {
            continue;
        }
        const std::size_t colon = scanner.SkipSpace(close + 1);
        if (!scanner.Has(colon, ':')) {
            continue;
        }
        const Secrecy secrecy = SecrecyOf(key);
        if (secrecy == Secrecy::None && !IsCarrier(key)) {
            continue;
        }
        const std::size_t value = scanner.SkipSpace(colon + 1);
        const std::size_t quote = scanner.SkipBackslashes(value);
        const std::size_t level = quote - value;
        if (secrecy == Secrecy::None) {
            base64.clear();
            if (scanner.Has(quote, '"')) {
                const std::size_t end = scanner.ReadBase64(quote + 1, base64);
                std::string clean;
                if (!base64.empty() && RedactBase64(base64, clean, opened)) {
                    replace(quote + 1, end, clean);
                    at = end;
                }
            }
            continue;
        }
        if (scanner.Has(quote, '"')) {
            bool closed = false;
            const std::size_t end = scanner.EndOfContent(quote + 1, level, closed);
            replace(quote + 1, end, kMask);
            at = closed ? end + level + 1 : end;
        } else if (scanner.Has(value, '[')) {
            const std::size_t first = scanner.SkipBackslashes(scanner.SkipSpace(value + 1));
            if (secrecy == Secrecy::All || scanner.Has(first, '"')) {
                at = scanner.EndOfBrackets(value, keyLevel);
                replace(value, at, '[' + masked(keyLevel) + ']');
            }
        } else if (secrecy == Secrecy::All && scanner.Has(value, '{')) {
            at = scanner.EndOfBrackets(value, keyLevel);
            replace(value, at, masked(keyLevel));
        } else if (secrecy == Secrecy::All) {
            at = scanner.EndOfBareValue(value);
            const std::string_view bare = std::string_view(text).substr(value, at - value);
            if (!bare.empty() && bare != "true" && bare != "false" && bare != "null") {
                replace(value, at, masked(keyLevel));
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
        // Codes that open something, beside all passwords
        "pin", "pinCode", "pinNo", "personPin", "verifyCode", "verificationCode", "authCode", "authenticationCode",
        "securityCode", "accessCode", "safetyAnswer", "captcha", "smsCode", "otp", "totp", "cvv", "cvc",
        // Sessions, beside all tokens and tickets
        "SID", "session", "sessionId", "sessionKey", "authorization", "proxyAuthorization", "cookie", "setCookie",
        "credential", "bearer",
        // Cards
        "cardNo", "cardNumber", "cardNumbers", "cardId", "cardCode", "cardSerial", "cardSerialNo", "cardSerialNumber",
        "physicalCardNo", "wiegandCardNo", "bankCardNo",
        // Key material, beside all secrets and private keys
        "streamKey", "secretKey", "encryptKey", "encryptionKey", "decryptKey", "decryptionKey", "aesKey", "desKey",
        "rsaKey", "sharedKey", "preSharedKey", "psk", "masterKey", "symmetricKey", "signKey", "signatureKey", "hmacKey",
        "userKey", "deviceKey", "corvidKey", "generalCorvidKey", "apiKey", "appKey", "accessKey", "accessKeySecret",
        "secretAccessKey", "authKey", "videoKey", "verificationKey", "wifiKey", "salt", "sectorKey", "newSectorKey",
        // What goes into encryption and comes out of decryption
        "plaintext",
        // Biometric templates
        "fingerData", "fingerprintData", "fingerPrintFeature", "fingerFeature", "faceData", "faceFeature", "irisData",
        "irisFeature", "palmData", "palmFeature", "biometricData", "featureData", "eigenvalue"};
    return keys;
}

const std::vector<std::string>& CRedactor::PersonalKeys()
{
    static const std::vector<std::string>& keys = *new std::vector<std::string>{
        "cardNum", // As a number it counts cards.
        // Identity papers
        "idNo", "idNum", "idNumber", "idCard", "idCardNo", "idCardNum", "idCardNumber", "identityNo", "identityNum",
        "identityNumber", "identityCard", "identityCardNo", "identityCardNumber", "citizenId", "citizenIdNo",
        "nationalId", "passportNo", "passportNum", "passportNumber", "certificateNo", "certificateNum",
        "certificateNumber", "certNo", "certNum", "certNumber", "credentialNo", "credentialNum", "credentialNumber",
        "socialSecurityNo", "socialSecurityNumber", "ssn", "driverLicenseNo", "driverLicenseNumber",
        // Telephones
        "phone", "phoneNo", "phoneNum", "phoneNumber", "telephone", "telephoneNo", "telephoneNum", "telephoneNumber",
        "tel", "telNo", "telNum", "telNumber", "mobile", "mobileNo", "mobileNum", "mobileNumber", "mobilePhone",
        "mobilePhoneNo", "mobilePhoneNum", "mobilePhoneNumber", "cellphone", "cellphoneNo", "cellphoneNumber",
        "contactPhone", "contactPhoneNumber", "contactNumber", "linkPhone", "personPhone", "personPhoneNo",
        "visitorPhone", "visitorPhoneNo", "homePhone", "officePhone"};
    return keys;
}

} // namespace Keel
