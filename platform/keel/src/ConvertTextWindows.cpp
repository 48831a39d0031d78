#ifdef _WIN32

#include "ConvertText.h"

#include <algorithm>
#include <climits>

#include <windows.h>

#include "Utf8.h"

namespace Keel::details {
namespace {

const UINT kGb18030 = 54936; ///< Has every character, and refuses to be asked which it lacks.

/// Converts and appends all of it, or nothing.
bool Append(CodeSet from, CodeSet to, const char* text, std::size_t left, std::string& converted)
{
    if (left > INT_MAX / 4) {
        return false;
    }
    const int size = static_cast<int>(left);
    const int wideSize = MultiByteToWideChar(from, MB_ERR_INVALID_CHARS, text, size, nullptr, 0);
    if (wideSize <= 0) {
        return false;
    }
    std::wstring wide(static_cast<std::size_t>(wideSize), L'\0');
    MultiByteToWideChar(from, MB_ERR_INVALID_CHARS, text, size, &wide[0], wideSize);
    const bool complete = to == kUtf8 || to == kGb18030;
    const DWORD flags = complete ? 0 : WC_NO_BEST_FIT_CHARS;
    BOOL lacked = FALSE;
    BOOL* const asked = complete ? nullptr : &lacked;
    const int outSize = WideCharToMultiByte(to, flags, wide.data(), wideSize, nullptr, 0, nullptr, asked);
    if (outSize <= 0 || lacked) {
        return false;
    }
    const std::size_t before = converted.size();
    converted.resize(before + static_cast<std::size_t>(outSize));
    WideCharToMultiByte(to, flags, wide.data(), wideSize, &converted[before], outSize, nullptr, nullptr);
    return true;
}

/// Length of the character at `text` if it is a valid one.
std::size_t Length(CodeSet from, const char* text, std::size_t left)
{
    if (from == kUtf8) {
        return std::max<std::size_t>(Utf8Length(text, left), 1);
    }
    if (from == kGb18030 && left > 3 && text[1] >= '0' && text[1] <= '9' && (*text & 0x80) != 0) {
        return 4;
    }
    return left > 1 && IsDBCSLeadByteEx(from, static_cast<BYTE>(*text)) ? 2 : 1;
}

} // namespace

bool ConvertText(CodeSet from, CodeSet to, const std::string& text, const std::string& unknown, std::string& converted)
{
    if (!IsValidCodePage(from) || !IsValidCodePage(to)) {
        return false;
    }
    converted.clear();
    if (text.empty() || Append(from, to, text.data(), text.size(), converted)) {
        return true;
    }
    // Something in it cannot be converted. A whole character of UTF-8 is one `unknown`, a stray byte as well.
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = Length(from, &text[at], text.size() - at);
        if (Append(from, to, &text[at], length, converted)) {
            at += length;
        } else {
            converted += unknown;
            at += from == kUtf8 ? length : 1;
        }
    }
    return true;
}

} // namespace Keel::details

#endif
