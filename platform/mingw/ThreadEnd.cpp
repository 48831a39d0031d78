// Part of every program and library that mingw links: what its run-time libraries need so that the data of a thread end
// well.

#include <cxxabi.h>
#include <windows.h>

namespace {

#if defined(__i386__)
#pragma GCC diagnostic ignored "-Wattributes" // Used for a function of no class, as the run-time library does.
#define THREAD_END_CALL __thiscall
#else
#define THREAD_END_CALL
#endif

void THREAD_END_CALL Nothing(void*) {}

/// The room of a thread's variables and their destructors hang on two keys of the module, and keys end in the order in
/// which they were made. Made by use alone, the room comes first, and destructors work on memory that is free already.
/// Asking for a destructor before any variable is used turns that round.
__attribute__((constructor(101))) void MakeKeyOfDestructors()
{
    abi::__cxa_thread_atexit(&Nothing, nullptr, nullptr);
}

/// A thread may end after FreeLibrary, and its data are taken down by code of the library: it stays.
__attribute__((constructor(102))) void StayLoaded()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(reinterpret_cast<void*>(&Nothing)), &module);
}

} // namespace
