#include "tools/demo/ChapterBase.h"

#include <keel/Error.h>

#include "nexwire/LastExchange.h"

namespace nexwire {
namespace demo {

bool ChapterBase::Done(bool success, const std::string& what)
{
    if (success) {
        screen_.Result(what);
    } else {
        const ExchangeRecord& exchange = LastExchange();
        screen_.Wrong(what + " failed: " + (exchange.parsed ? exchange.message : Keel::Error::GetLastError().text));
    }
    return success;
}

int Load(const int& counter)
{
#if defined(__GNUC__)
    return __atomic_load_n(&counter, __ATOMIC_RELAXED);
#else
    return *static_cast<const volatile int*>(&counter);
#endif
}

} // namespace demo
} // namespace nexwire
