#include <string>

#include <keel/Error.h>

#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/LastExchange.h"

#ifdef _WIN32
#define CLIENT_API __declspec(dllexport)
#else
#define CLIENT_API __attribute__((visibility("default")))
#endif

/// Leaves something with the thread, and answers whether it finds it again and nothing of another thread's.
extern "C" CLIENT_API bool UseTheLibrary(int number)
{
    const std::string text(100, static_cast<char>('a' + number % 26));
    const bool fresh = Keel::Error::GetLastError().text.empty();
    Keel::Error::SetLastError({Keel::Error::kKeelModule, number, text});
    const bool kept = Keel::Error::GetLastError().text == text;
    protocol::AccessGroupQueryResponseListData groups;
    // There is no transport.
    const bool refused = !nexwire::CAccessGroupComm::queryAccessGroups(groups);
    return fresh && kept && refused && !nexwire::LastExchange().sent;
}
