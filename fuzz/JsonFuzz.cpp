// The quick ways of reading and printing JSON against cJSON's own: whatever they accept, they make the same of it.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include <cjson/cJSON.h>

#include "core/Arena.h"
#include "core/JsonReader.h"
#include "core/JsonWriter.h"

namespace {

using Tree = std::unique_ptr<cJSON, decltype(&cJSON_Delete)>;

std::string Printed(const cJSON* tree)
{
    const std::unique_ptr<char, decltype(&cJSON_free)> text(cJSON_Print(tree), &cJSON_free);
    return text ? text.get() : "";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static nexwire::core::Arena arena;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const char* end = nullptr;
    const Tree expected(cJSON_ParseWithLengthOpts(text.data(), text.size(), &end, 0), &cJSON_Delete);
    const auto mark = arena.Position();
    if (const nexwire::core::TapeEntry* const quick = nexwire::core::ReadPlainJson(arena, text)) {
        nexwire::core::TapeCursor tape(arena, quick);
        if (!expected || Printed(tape.Tree(tape.Next())) != Printed(expected.get())) {
            std::abort();
        }
    }
    std::string formatted;
    if (expected && nexwire::core::AppendFormatted(formatted, *expected) && formatted != Printed(expected.get())) {
        // Real numbers may have more digits.
        const Tree again(cJSON_Parse(formatted.c_str()), &cJSON_Delete);
        if (!again || Printed(again.get()) != Printed(expected.get())) {
            std::abort();
        }
    }
    arena.GoBack(mark);
    return 0;
}
