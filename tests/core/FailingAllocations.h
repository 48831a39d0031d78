#pragma once

#include <cstddef>
#include <cstdlib>

namespace test {

/// Allocations of this thread until one fails; negative while none is to fail.
extern thread_local long g_left;
/// Whether one did.
extern thread_local bool g_failed;

#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define TEST_OWN_MALLOC 1
/// While it is set, every allocation of this thread fails, the system's own included.
extern thread_local bool g_mallocFails;
#endif

/// malloc for libraries that take one, failing as operator new of this program does.
void* FailingMalloc(std::size_t size);

} // namespace test
