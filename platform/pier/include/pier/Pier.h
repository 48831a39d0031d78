#pragma once

#include <stddef.h>
#include <stdint.h>

/// Files under UTF-8 paths, binary, of any size. Every function may be called from any thread; one handle must not be
/// used by two threads at once. Nothing throws. On failure the reason is in `Pier_GetLastError` of the same thread.

#ifdef __cplusplus
extern "C" {
#endif

/// An open file.
typedef struct Pier_File Pier_File;

/// What to open a file for; values are combined with |. One of read and write is needed.
enum Pier_OpenFlags {
    PIER_OPEN_READ = 1,
    PIER_OPEN_WRITE = 2,
    PIER_OPEN_CREATE = 4,    ///< Create the file when there is none; needs write.
    PIER_OPEN_TRUNCATE = 8,  ///< Make an existing file empty; needs write.
    PIER_OPEN_EXCLUSIVE = 16 ///< With create: fail when the name exists, be it a link that leads nowhere.
};

/// Opens a file at its beginning.
///
/// @param path   UTF-8, ended by NUL.
/// @param flags  values of `Pier_OpenFlags`.
/// @return the handle, to be closed with `Pier_CloseFile`; null on failure.
Pier_File* Pier_OpenFile(const char* path, int flags);

/// Reads up to `size` bytes from where the file stands.
///
/// @return bytes read, less than `size` only at the end of the file (0 when there already); -1 on failure.
int64_t Pier_ReadFile(Pier_File* file, void* data, size_t size);

/// Writes `size` bytes where the file stands; short writes are carried on.
///
/// @return bytes written: `size`, or fewer when the rest failed (disk full), with the reason as last error; -1 when
///         nothing could be written.
int64_t Pier_WriteFile(Pier_File* file, const void* data, size_t size);

/// Closes the file. The handle is gone in every case.
///
/// @return 0, or -1 when the handle is null or the system reports that bytes written before are lost.
int Pier_CloseFile(Pier_File* file);

/// Deletes a file, never a directory. A symbolic link goes itself, its target stays.
///
/// @return 0, or -1 when nothing was deleted.
int Pier_DeleteFile(const char* path);

/// Gives a file another name in the same file system, replacing a file of that name in one step.
///
/// @return 0, or -1, and both names are as before.
int Pier_RenameFile(const char* from, const char* to);

/// The operating system's code of the last failure on this thread: `errno` on POSIX, `GetLastError` on Windows.
/// `std::system_category().message` has its text. Successful calls leave it as it is; 0 when none failed.
int Pier_GetLastError(void);

#ifdef __cplusplus
}
#endif
