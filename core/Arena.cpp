#include "core/Arena.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace nexwire::core {

void* Arena::AllocateFromNextChunk(std::size_t size)
{
    const std::size_t next = chunks_.empty() ? 0 : current_ + 1;
    std::size_t found = next;
    while (found < chunks_.size() && chunks_[found].size < size) {
        ++found;
    }
    if (found == chunks_.size()) {
        const std::size_t grown = chunks_.empty() ? kFirstChunk : std::min(chunks_.back().size * 2, kLargestStep);
        Chunk chunk;
        chunk.size = std::max(grown, size);
        chunk.memory.reset(static_cast<char*>(std::malloc(chunk.size)));
        if (!chunk.memory) {
            return nullptr;
        }
        try {
            chunks_.push_back(std::move(chunk));
        } catch (...) {
            return nullptr;
        }
    }
    std::swap(chunks_[next], chunks_[found]);
    current_ = next;
    char* const memory = chunks_[current_].memory.get();
    next_ = memory + size;
    left_ = chunks_[current_].size - size;
    return memory;
}

Arena::Mark Arena::Position() const
{
    return {current_, chunks_.empty() ? 0 : chunks_[current_].size - left_};
}

void Arena::GoBack(const Mark& mark)
{
    if (chunks_.empty()) {
        return;
    }
    current_ = mark.chunk;
    next_ = chunks_[current_].memory.get() + mark.used;
    left_ = chunks_[current_].size - mark.used;
}

void Arena::Trim(std::size_t keepBytes)
{
    std::size_t kept = 0;
    const auto tooMuch = [&](const Chunk& chunk) {
        if (chunk.size > keepBytes - kept) {
            return true;
        }
        kept += chunk.size;
        return false;
    };
    chunks_.erase(std::remove_if(chunks_.begin(), chunks_.end(), tooMuch), chunks_.end());
    current_ = 0;
    next_ = chunks_.empty() ? nullptr : chunks_.front().memory.get();
    left_ = chunks_.empty() ? 0 : chunks_.front().size;
}

bool Arena::Owns(const void* memory) const
{
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    for (std::size_t i = std::min(current_ + 1, chunks_.size()); i-- > 0;) {
        const auto begin = reinterpret_cast<std::uintptr_t>(chunks_[i].memory.get());
        if (address >= begin && address - begin < chunks_[i].size) {
            return true;
        }
    }
    return false;
}

} // namespace nexwire::core
