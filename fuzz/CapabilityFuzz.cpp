// Any text as a capability document, XML or JSON, of the kinds that have every sort of member.

#include <cstddef>
#include <cstdint>
#include <string>

#include <abacus/Abacus.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    Abacus::Page page;
    page.Parse(text);
    Abacus::UserRoleCap roles;
    roles.Parse(text);
    Abacus::TerminalManagerCapability terminals;
    terminals.Parse(text);
    Abacus::ResponseStatus status;
    status.Parse(text);
    return 0;
}
