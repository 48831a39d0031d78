// Any text through the redaction: a planted secret never comes out.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <keel/Redact.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Keel::CRedactor redactor;
    const std::string text(reinterpret_cast<const char*>(data), size);
    (void)redactor.Redact(text);
    // Behind a line of its own, as log messages stand, whatever came before it must not shield the secret.
    if (text.find("Pl4nted") == std::string::npos && text.find('"') == std::string::npos &&
        text.find('\\') == std::string::npos) {
        const std::string planted = redactor.Redact(text + "\n{\"password\" : \"Pl4nted-S3cret\"}");
        if (planted.find("Pl4nted-S3cret") != std::string::npos) {
            std::abort();
        }
    }
    return 0;
}
