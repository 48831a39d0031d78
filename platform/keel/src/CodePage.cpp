#include "keel/CodePage.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <clocale>
#include <cstring>

#include <langinfo.h>
#include <locale.h>
#endif

#include "ConvertText.h"

namespace Keel {
namespace {

#ifdef _WIN32

UINT LocalCodeset()
{
    return GetACP();
}

bool IsUtf8(UINT codeset)
{
    return codeset == details::kUtf8;
}

details::CodeSet Name(UINT codeset)
{
    return codeset;
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

bool IsUtf8(const std::string& codeset)
{
    return codeset == details::kUtf8;
}

details::CodeSet Name(const std::string& codeset)
{
    return codeset.c_str();
}

#endif

} // namespace

std::string UTF8ToLocal(const std::string& text)
{
    const auto local = LocalCodeset();
    std::string converted;
    if (IsUtf8(local) || !details::ConvertText(details::kUtf8, Name(local), text, "?", converted)) {
        return text;
    }
    return converted;
}

std::string LocalToUTF8(const std::string& text)
{
    const auto local = LocalCodeset();
    std::string converted;
    if (IsUtf8(local) || !details::ConvertText(Name(local), details::kUtf8, text, "\xEF\xBF\xBD", converted)) {
        return text;
    }
    return converted;
}

} // namespace Keel
