#ifdef _WIN32

#include <windows.h>

namespace {

/// Keeps the library that this is part of to the end of the process. A thread that used it may end after FreeLibrary,
/// and what it kept here is taken down by code of the library.
bool StayLoaded()
{
    HMODULE module = nullptr;
    return GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                              reinterpret_cast<LPCWSTR>(reinterpret_cast<void*>(&StayLoaded)), &module) != 0;
}

[[maybe_unused]] const bool g_stays = StayLoaded();

} // namespace

#endif
