#include "pier/Pier.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>

#ifdef _WIN32
#include <windows.h>
#else
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

thread_local int t_lastError = 0;

// One call moves at most this much, so that its count fits the system's type.
const std::size_t kMaxPiece = 1u << 30;

#ifdef _WIN32

using Native = HANDLE;
const int kBadArgument = ERROR_INVALID_PARAMETER;
const int kNoMemory = ERROR_NOT_ENOUGH_MEMORY;

int SystemError()
{
    return static_cast<int>(GetLastError());
}

// A path as the system takes it; empty, which the system refuses, when it is not valid UTF-8 or memory is short.
class Wide {
public:
    explicit Wide(const char* path)
    {
        const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path, -1, nullptr, 0);
        text_.reset(length > 0 ? new (std::nothrow) wchar_t[static_cast<std::size_t>(length)] : nullptr);
        if (text_) {
            MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, path, -1, text_.get(), length);
        }
    }

    const wchar_t* Get() const { return text_ ? text_.get() : L""; }

private:
    std::unique_ptr<wchar_t[]> text_;
};

bool Open(Native& native, const char* path, int flags)
{
    const DWORD access =
        ((flags & PIER_OPEN_READ) ? GENERIC_READ : 0) | ((flags & PIER_OPEN_WRITE) ? GENERIC_WRITE : 0);
    DWORD how = OPEN_EXISTING;
    if ((flags & PIER_OPEN_CREATE) && (flags & PIER_OPEN_EXCLUSIVE)) {
        how = CREATE_NEW;
    } else if (flags & PIER_OPEN_CREATE) {
        how = (flags & PIER_OPEN_TRUNCATE) ? CREATE_ALWAYS : OPEN_ALWAYS;
    } else if (flags & PIER_OPEN_TRUNCATE) {
        how = TRUNCATE_EXISTING;
    }
    native = CreateFileW(Wide(path).Get(), access, FILE_SHARE_READ, nullptr, how, FILE_ATTRIBUTE_NORMAL, nullptr);
    return native != INVALID_HANDLE_VALUE;
}

int64_t ReadOnce(Native native, void* data, std::size_t size)
{
    DWORD count = 0;
    return ReadFile(native, data, static_cast<DWORD>(size), &count, nullptr) ? int64_t{count} : -1;
}

int64_t WriteOnce(Native native, const void* data, std::size_t size)
{
    DWORD count = 0;
    return WriteFile(native, data, static_cast<DWORD>(size), &count, nullptr) ? int64_t{count} : -1;
}

bool Close(Native native)
{
    return CloseHandle(native) != 0;
}

bool Delete(const char* path)
{
    return DeleteFileW(Wide(path).Get()) != 0;
}

bool Rename(const char* from, const char* to)
{
    return MoveFileExW(Wide(from).Get(), Wide(to).Get(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

#else

using Native = int;
const int kBadArgument = EINVAL;
const int kNoMemory = ENOMEM;

int SystemError()
{
    return errno;
}

template <class Action>
auto Uninterrupted(Action call)
{
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

bool Open(Native& native, const char* path, int flags)
{
    int mode = O_RDONLY;
    if (flags & PIER_OPEN_WRITE) {
        mode = (flags & PIER_OPEN_READ) ? O_RDWR : O_WRONLY;
    }
    mode |= ((flags & PIER_OPEN_CREATE) ? O_CREAT : 0) | ((flags & PIER_OPEN_TRUNCATE) ? O_TRUNC : 0) |
            ((flags & PIER_OPEN_EXCLUSIVE) ? O_EXCL : 0) | O_CLOEXEC;
    native = Uninterrupted([&] { return ::open(path, mode, 0666); });
    return native >= 0;
}

int64_t ReadOnce(Native native, void* data, std::size_t size)
{
    return Uninterrupted([&] { return ::read(native, data, size); });
}

int64_t WriteOnce(Native native, const void* data, std::size_t size)
{
    return Uninterrupted([&] { return ::write(native, data, size); });
}

bool Close(Native native)
{
    // Not repeated when interrupted: the descriptor is gone already and may be somebody else's by now.
    return ::close(native) == 0 || errno == EINTR;
}

bool Delete(const char* path)
{
    return ::unlink(path) == 0;
}

bool Rename(const char* from, const char* to)
{
    return std::rename(from, to) == 0;
}

#endif

bool Fail(int error)
{
    t_lastError = error;
    return false;
}

bool IsPath(const char* path)
{
    return (path != nullptr && *path != '\0') || Fail(kBadArgument);
}

bool AreFlags(int flags)
{
    const int onlyWithWrite = PIER_OPEN_CREATE | PIER_OPEN_TRUNCATE;
    const bool valid = (flags & (PIER_OPEN_READ | PIER_OPEN_WRITE)) != 0 &&
                       ((flags & PIER_OPEN_WRITE) != 0 || (flags & onlyWithWrite) == 0) &&
                       ((flags & PIER_OPEN_CREATE) != 0 || (flags & PIER_OPEN_EXCLUSIVE) == 0);
    return valid || Fail(kBadArgument);
}

// Moves the bytes piece by piece with `once` until all are through, the end of the file is met or a call fails.
template <class Byte, class Once>
int64_t Move(Native native, Byte* data, std::size_t size, Once once)
{
    std::size_t done = 0;
    while (done < size) {
        const int64_t count = once(native, data + done, std::min(size - done, kMaxPiece));
        if (count < 0) {
            Fail(SystemError());
            return done == 0 ? -1 : static_cast<int64_t>(done);
        }
        if (count == 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    return static_cast<int64_t>(done);
}

bool Done(bool success)
{
    return success || Fail(SystemError());
}

} // namespace

struct Pier_File {
    Native native;
};

Pier_File* Pier_OpenFile(const char* path, int flags)
{
    if (!IsPath(path) || !AreFlags(flags)) {
        return nullptr;
    }
    Pier_File* file = new (std::nothrow) Pier_File();
    if (file == nullptr) {
        Fail(kNoMemory);
        return nullptr;
    }
    if (!Done(Open(file->native, path, flags))) {
        delete file;
        return nullptr;
    }
    return file;
}

int64_t Pier_ReadFile(Pier_File* file, void* data, size_t size)
{
    if (file == nullptr || (data == nullptr && size != 0)) {
        Fail(kBadArgument);
        return -1;
    }
    return Move(file->native, static_cast<char*>(data), size, ReadOnce);
}

int64_t Pier_WriteFile(Pier_File* file, const void* data, size_t size)
{
    if (file == nullptr || (data == nullptr && size != 0)) {
        Fail(kBadArgument);
        return -1;
    }
    return Move(file->native, static_cast<const char*>(data), size, WriteOnce);
}

int Pier_CloseFile(Pier_File* file)
{
    if (file == nullptr) {
        Fail(kBadArgument);
        return -1;
    }
    const bool closed = Done(Close(file->native));
    delete file;
    return closed ? 0 : -1;
}

int Pier_DeleteFile(const char* path)
{
    return IsPath(path) && Done(Delete(path)) ? 0 : -1;
}

int Pier_RenameFile(const char* from, const char* to)
{
    return IsPath(from) && IsPath(to) && Done(Rename(from, to)) ? 0 : -1;
}

int Pier_GetLastError(void)
{
    return t_lastError;
}
