#pragma once

#include <cstddef>

namespace test {

/// Allocations of this thread until one fails; negative while none is to fail.
extern thread_local long g_left;
/// Whether one did.
extern thread_local bool g_failed;

/// malloc for libraries that take one, failing as operator new of this program does.
void* FailingMalloc(std::size_t size);

} // namespace test
