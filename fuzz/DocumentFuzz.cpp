// Any text as a path-addressed document, and any text as a path.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <velaproto/RapidJsonProto.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t cut = text.find('\n');
    const std::string path = text.substr(0, cut);
    proto::CRapidJsonProto document;
    if (cut != std::string::npos && document.Load(text.substr(cut + 1))) {
        const std::string written = document.ToString();
        proto::CRapidJsonProto again;
        if (!again.Load(written) || again.ToString() != written) {
            std::abort();
        }
    }
    std::string value = "kept";
    document.Get(path, value);
    int number = 0;
    document.Get(path, number);
    document.ArraySize(path);
    if (document.Set(path, 7) && (!document.Get(path, number) || number != 7)) {
        // "-" names the element behind the last, so what was set there is not found there.
        if (path.find('-') == std::string::npos) {
            std::abort();
        }
    }
    return 0;
}
