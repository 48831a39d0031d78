#include "tools/demo/ChapterBase.h"

#include <keel/Error.h>

#include "nexwire/LastExchange.h"

namespace nexwire::demo {

std::string WhyNot()
{
    const ExchangeRecord& exchange = LastExchange();
    const std::string& error = Keel::Error::GetLastError().text;
    return error.empty() && exchange.parsed ? exchange.message : error;
}

bool ChapterBase::Done(bool success, const std::string& what)
{
    if (success) {
        screen_.Result(what);
    } else {
        screen_.Wrong(what + " failed: " + WhyNot());
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

} // namespace nexwire::demo
