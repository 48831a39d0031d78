#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

namespace nexwire::core {

/// Bump allocator of one thread: chunks in the order they were taken, a position in the current one.
class Arena {
public:
    struct Mark {
        std::size_t chunk = 0;
        std::size_t used = 0;
    };

    /// Aligned for any type; null when memory ran out.
    void* Allocate(std::size_t size)
    {
        size = (size + kAlign - 1) / kAlign * kAlign;
        if (size <= left_) {
            void* const memory = next_;
            next_ += size;
            left_ -= size;
            return memory;
        }
        return AllocateFromNextChunk(size);
    }

    /// The same, or std::bad_alloc.
    void* Obtain(std::size_t size)
    {
        void* const memory = Allocate(size);
        if (memory == nullptr) {
            throw std::bad_alloc();
        }
        return memory;
    }

    Mark Position() const;
    /// Gives back everything allocated after `mark`.
    void GoBack(const Mark& mark);
    /// Returns chunks that together would be more than `keepBytes`. Nothing may be in use.
    void Trim(std::size_t keepBytes);
    bool Owns(const void* memory) const;

    std::size_t scopes = 0; ///< Conversions under way on its thread, one within another.

private:
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };
    struct Chunk {
        std::unique_ptr<char, Free> memory;
        std::size_t size = 0;
    };
    static constexpr std::size_t kAlign = alignof(std::max_align_t);
    static constexpr std::size_t kFirstChunk = std::size_t{64} << 10;
    static constexpr std::size_t kLargestStep = std::size_t{8} << 20;

    void* AllocateFromNextChunk(std::size_t size);

    std::vector<Chunk> chunks_;
    std::size_t current_ = 0;
    char* next_ = nullptr;
    std::size_t left_ = 0;
};

} // namespace nexwire::core
