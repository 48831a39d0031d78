#pragma once

#ifndef _WIN32
#include <locale.h>
#endif

namespace Keel::details {

/// While it lives, the C library takes the texts of this thread for UTF-8, whatever locale the process has. log4cxx
/// turns texts and file names into the locale's character set, and a host that never called setlocale has one without
/// anything beyond ASCII.
class Utf8Scope {
public:
#ifdef _WIN32
    Utf8Scope() {}
#else
    Utf8Scope()
    {
        static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
        if (utf8 != static_cast<locale_t>(nullptr)) {
            former_ = uselocale(utf8);
        }
    }
    ~Utf8Scope()
    {
        if (former_ != static_cast<locale_t>(nullptr)) {
            uselocale(former_);
        }
    }
#endif
    Utf8Scope(const Utf8Scope&) = delete;
    Utf8Scope& operator=(const Utf8Scope&) = delete;

private:
#ifndef _WIN32
    locale_t former_ = static_cast<locale_t>(nullptr);
#endif
};

} // namespace Keel::details
