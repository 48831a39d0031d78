// Any structure from any text: what was read and written once reads back as the same.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <keel/Log.h>

#include "catalogue/Structures.h"
#include "nexwire/ParseJSONUtil.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    Keel::details::LogConfig quiet;
    quiet.level = Keel::details::LogLevel::Off;
    Keel::CSingleton<Keel::details::CLog>::Instance().Configure(quiet);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2) {
        return 0;
    }
    const auto& structures = nexwire::catalogue::Structures();
    const auto& info = structures[static_cast<std::size_t>(data[0] | data[1] << 8) % structures.size()];
    if (!info.inbound) {
        return 0;
    }
    const auto first = info.makeInbound();
    if (!protocol::TParseJSONStrWithoutRoot(*first, std::string(reinterpret_cast<const char*>(data + 2), size - 2))) {
        return 0;
    }
    const std::string written = protocol::SerializeRequest(*first);
    const auto second = info.makeInbound();
    if (!protocol::TParseJSONStr(*second, written) || protocol::SerializeRequest(*second) != written) {
        std::abort();
    }
    return 0;
}
