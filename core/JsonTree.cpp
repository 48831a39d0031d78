#include "core/JsonTree.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "nexwire/ConversionArena.h"

namespace nexwire {
namespace core {
namespace {

constexpr std::size_t kAlign = alignof(std::max_align_t);
constexpr std::size_t kFirstChunk = std::size_t{256} << 10;
constexpr std::size_t kLargestStep = std::size_t{64} << 20;

// Written once before the first conversion, read by every thread after it.
bool g_arenaInUse = false;
std::size_t g_keepBytes = 0;

struct Release {
    void operator()(char* memory) const { std::free(memory); }
};

/// Bump allocator of one thread: chunks in the order they were taken, a position in the current one.
struct Arena {
    struct Chunk {
        std::unique_ptr<char, Release> memory;
        std::size_t size = 0;
    };
    std::vector<Chunk> chunks;
    std::size_t current = 0;
    std::size_t used = 0;
    int depth = 0;

    void* Allocate(std::size_t size)
    {
        size = (size + kAlign - 1) / kAlign * kAlign;
        if (current < chunks.size() && size <= chunks[current].size - used) {
            void* memory = chunks[current].memory.get() + used;
            used += size;
            return memory;
        }
        return AllocateFromNext(size);
    }

    void* AllocateFromNext(std::size_t size)
    {
        std::size_t next = chunks.empty() ? 0 : current + 1;
        if (next < chunks.size() && chunks[next].size < size) {
            chunks.resize(next);
        }
        if (next >= chunks.size()) {
            const std::size_t grown = chunks.empty() ? kFirstChunk : std::min(chunks.back().size * 2, kLargestStep);
            const std::size_t wanted = std::max(grown, size);
            Chunk chunk;
            chunk.memory.reset(static_cast<char*>(std::malloc(wanted)));
            if (!chunk.memory) {
                return nullptr;
            }
            chunk.size = wanted;
            try {
                chunks.push_back(std::move(chunk));
            } catch (...) {
                return nullptr;
            }
            next = chunks.size() - 1;
        }
        current = next;
        used = size;
        return chunks[current].memory.get();
    }

    bool Owns(const void* memory) const
    {
        const auto address = reinterpret_cast<std::uintptr_t>(memory);
        for (std::size_t i = current + 1; i-- > 0;) {
            const auto begin = reinterpret_cast<std::uintptr_t>(chunks[i].memory.get());
            if (address >= begin && address - begin < chunks[i].size) {
                return true;
            }
        }
        return false;
    }

    void Trim()
    {
        std::size_t kept = 0;
        std::size_t count = 0;
        while (count < chunks.size() && kept + chunks[count].size <= g_keepBytes) {
            kept += chunks[count].size;
            ++count;
        }
        chunks.resize(count);
    }
};

Arena& ThreadArena()
{
    static thread_local Arena arena;
    return arena;
}

void* AllocateHook(std::size_t size)
{
    Arena& arena = ThreadArena();
    return arena.depth > 0 ? arena.Allocate(size) : std::malloc(size);
}

void FreeHook(void* memory)
{
    const Arena& arena = ThreadArena();
    if (arena.depth == 0 || arena.chunks.empty() || !arena.Owns(memory)) {
        std::free(memory);
    }
}

} // namespace

ConversionScope::ConversionScope()
{
    if (g_arenaInUse) {
        Arena& arena = ThreadArena();
        ++arena.depth;
        chunk_ = arena.current;
        used_ = arena.used;
    }
}

ConversionScope::~ConversionScope()
{
    if (g_arenaInUse) {
        Arena& arena = ThreadArena();
        arena.current = chunk_;
        arena.used = used_;
        if (--arena.depth == 0) {
            arena.Trim();
        }
    }
}

void JsonTree::Reset()
{
    // In the arena the scope gives everything back at once; walking the tree would be wasted.
    if (root_ != nullptr && !(g_arenaInUse && ThreadArena().depth > 0)) {
        cJSON_Delete(root_);
    }
    root_ = nullptr;
}

cJSON* ParseStrictly(const std::string& text, const char*& errorPosition)
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

std::string PrintFormatted(const cJSON* root)
{
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
    core::g_arenaInUse = true;
}

} // namespace nexwire
