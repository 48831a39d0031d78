#include "core/JsonTree.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>

#include "core/AnswerBudget.h"
#include "core/Guard.h"
#include "core/JsonReader.h"
#include "core/JsonWriter.h"
#include "nexwire/ConversionArena.h"

namespace nexwire {
namespace core {
namespace {

// Written once before the first conversion, read by every thread after it.
bool g_hooksInstalled = false;
// Without the host's leave a thread keeps enough for the everyday answer.
std::size_t g_keepBytes = std::size_t{1} << 20;

/// Where the allocations of cJSON go while a conversion runs on this thread; null: to the heap.
thread_local Arena* t_hookArena = nullptr;

void* AllocateHook(std::size_t size)
{
    Arena* const arena = t_hookArena;
    return arena != nullptr ? arena->Allocate(size) : std::malloc(size);
}

void FreeHook(void* memory)
{
    const Arena* const arena = t_hookArena;
    if (arena == nullptr || !arena->Owns(memory)) {
        std::free(memory);
    }
}

/// The most that cJSON's tree of a text can take: it allocates each node, key and text by itself, and behind each value
/// but the first stands one of these characters.
std::uint64_t LenientCost(const std::string& text)
{
    constexpr std::uint64_t kAllocationOverhead = 16;
    const auto separators =
        std::count_if(text.begin(), text.end(), [](char c) { return c == ',' || c == '[' || c == '{'; });
    return (static_cast<std::uint64_t>(separators) + 1) * (sizeof(cJSON) + 3 * kAllocationOverhead) + text.size();
}

/// cJSON's parser, and a strict end.
cJSON* ParseLeniently(const std::string& text, const char*& errorPosition)
{
    const char* const textEnd = text.data() + text.size();
    const char* end = text.data();
    cJSON* root = cJSON_ParseWithLengthOpts(text.data(), text.size(), &end, 0);
    errorPosition = end;
    if (root == nullptr) {
        return nullptr;
    }
    while (end < textEnd && (*end == ' ' || *end == '\t' || *end == '\r' || *end == '\n')) {
        ++end;
    }
    if (end != textEnd) {
        errorPosition = end;
        JsonTree discarded(root);
        return nullptr;
    }
    return root;
}

} // namespace

ArenaScope::ArenaScope() : arena_(OfThread<Arena>()), mark_(arena_.Position())
{
    ++arena_.scopes;
}

ArenaScope::~ArenaScope()
{
    arena_.GoBack(mark_);
    if (--arena_.scopes == 0) {
        arena_.Trim(g_keepBytes);
    }
}

ConversionScope::ConversionScope() : hooked_(g_hooksInstalled)
{
    if (hooked_) {
        outerHookArena_ = t_hookArena;
        t_hookArena = &arena_;
    }
}

ConversionScope::~ConversionScope()
{
    lenient_.Reset();
    adopted_.clear();
    if (hooked_) {
        t_hookArena = outerHookArena_;
    }
}

std::optional<TapeCursor> ConversionScope::Parse(const std::string& text, const char*& errorPosition, Wanted wanted)
{
    const Arena::Mark before = arena_.Position();
    if (const TapeEntry* const root = ReadPlainJson(arena_, text, wanted)) {
        return TapeCursor(arena_, root);
    }
    arena_.GoBack(before);
    const std::uint64_t cost = LenientCost(text);
    ChargeAnswer(cost);
    lenient_.Reset(ParseLeniently(text, errorPosition));
    if (lenient_.get() == nullptr) {
        // Was it the text or the memory? With some memory at hand the answer is the same only if it was the text.
        constexpr std::uint64_t kProbe = std::uint64_t{1} << 20;
        void* const probe = cJSON_malloc(static_cast<std::size_t>(std::min(cost, kProbe)));
        if (probe == nullptr) {
            throw std::bad_alloc();
        }
        cJSON_free(probe);
        lenient_.Reset(ParseLeniently(text, errorPosition));
    }
    if (lenient_.get() == nullptr) {
        return std::nullopt;
    }
    return Read(*lenient_.get(), wanted);
}

void JsonTree::Reset(cJSON* root)
{
    // In the arena the scope gives everything back at once; walking the tree would be wasted.
    if (root_ != nullptr && t_hookArena == nullptr) {
        cJSON_Delete(root_);
    }
    root_ = root;
}

std::string PrintFormatted(const cJSON* root)
{
    std::string formatted;
    if (root != nullptr && AppendFormatted(formatted, *root)) {
        return formatted;
    }
    char* text = cJSON_Print(root);
    if (text == nullptr) {
        return std::string();
    }
    const std::unique_ptr<char, decltype(&cJSON_free)> owner(text, &cJSON_free);
    return std::string(text);
}

} // namespace core

void UseConversionArena(std::size_t keepBytes)
{
    cJSON_Hooks hooks = {&core::AllocateHook, &core::FreeHook};
    cJSON_InitHooks(&hooks);
    core::g_keepBytes = keepBytes;
    core::g_hooksInstalled = true;
}

} // namespace nexwire
