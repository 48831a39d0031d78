#include "keel/CodePage.h"

#ifdef _WIN32
#include <climits>

#include <windows.h>
#else
#include <clocale>
#include <cstring>

#include <langinfo.h>
#include <locale.h>

#include "ConvertText.h"
#endif

namespace Keel {
namespace {

#ifdef _WIN32

std::string Convert(UINT from, UINT to, const std::string& text)
{
    if (text.empty() || text.size() > INT_MAX) {
        return text;
    }
    const int size = static_cast<int>(text.size());
    const int wideSize = MultiByteToWideChar(from, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(wideSize), L'\0');
    MultiByteToWideChar(from, 0, text.data(), size, &wide[0], wideSize);
    const int outSize = WideCharToMultiByte(to, 0, wide.data(), wideSize, nullptr, 0, nullptr, nullptr);
    std::string converted(static_cast<std::size_t>(outSize), '\0');
    WideCharToMultiByte(to, 0, wide.data(), wideSize, &converted[0], outSize, nullptr, nullptr);
    return converted;
}

#else

bool IsAscii(const char* codeset)
{
    return std::strcmp(codeset, "ANSI_X3.4-1968") == 0 || std::strcmp(codeset, "US-ASCII") == 0 ||
           std::strcmp(codeset, "646") == 0 || *codeset == '\0';
}

/// Character set of the locale that the environment names, whether or not the process has adopted it.
std::string EnvironmentCodeset()
{
    std::string codeset;
    const locale_t environment = newlocale(LC_CTYPE_MASK, "", static_cast<locale_t>(nullptr));
    if (environment != static_cast<locale_t>(nullptr)) {
        codeset = nl_langinfo_l(CODESET, environment);
        freelocale(environment);
    }
    return codeset;
}

/// Character set of local texts, "UTF-8" where they pass unchanged.
std::string LocalCodeset()
{
    std::string codeset = nl_langinfo(CODESET);
    if (IsAscii(codeset.c_str())) {
        static const std::string environment = EnvironmentCodeset();
        codeset = environment;
    }
    return IsAscii(codeset.c_str()) ? "UTF-8" : codeset;
}

#endif

} // namespace

std::string UTF8ToLocal(const std::string& text)
{
#ifdef _WIN32
    return Convert(CP_UTF8, CP_ACP, text);
#else
    const std::string local = LocalCodeset();
    std::string converted;
    if (local == "UTF-8" || !details::ConvertText("UTF-8", local.c_str(), text, "?", converted)) {
        return text;
    }
    return converted;
#endif
}

std::string LocalToUTF8(const std::string& text)
{
#ifdef _WIN32
    return Convert(CP_ACP, CP_UTF8, text);
#else
    const std::string local = LocalCodeset();
    std::string converted;
    if (local == "UTF-8" || !details::ConvertText(local.c_str(), "UTF-8", text, "\xEF\xBF\xBD", converted)) {
        return text;
    }
    return converted;
#endif
}

} // namespace Keel
