#include "FailingAllocations.h"

#include <cstdlib>
#include <new>

namespace test {

thread_local long g_left = -1;
thread_local bool g_failed = false;

void* FailingMalloc(std::size_t size)
{
    if (g_left >= 0 && g_left-- == 0) {
        g_failed = true;
        return nullptr;
    }
    return std::malloc(size == 0 ? 1 : size);
}

#ifdef TEST_OWN_MALLOC
thread_local bool g_mallocFails = false;
#endif

} // namespace test

#ifdef TEST_OWN_MALLOC
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);

void* malloc(std::size_t size) noexcept
{
    return test::g_mallocFails ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    return test::g_mallocFails ? nullptr : __libc_calloc(count, size);
}
}
#endif

void* operator new(std::size_t size)
{
    if (void* const memory = test::FailingMalloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return test::FailingMalloc(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
