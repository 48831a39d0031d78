#include "keel/PrivateFile.h"

#include <cerrno>
#include <filesystem>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace Keel {
namespace {

bool Open(const std::filesystem::path& path, bool make)
{
#ifdef _WIN32
    int file = -1;
    const int flags = _O_WRONLY | _O_BINARY | _O_NOINHERIT | (make ? _O_CREAT | _O_EXCL : _O_APPEND);
    const bool opened = _wsopen_s(&file, path.c_str(), flags, _SH_DENYNO, _S_IREAD | _S_IWRITE) == 0;
    if (opened) {
        _close(file);
    }
    return opened;
#else
    const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC | (make ? O_CREAT | O_EXCL : O_APPEND), S_IRUSR | S_IWUSR);
    if (file >= 0) {
        close(file);
    }
    return file >= 0;
#endif
}

} // namespace

bool MakePrivateFile(const std::string& file)
{
    const std::filesystem::path path = std::filesystem::u8path(file);
    return Open(path, true) || (errno == EEXIST && Open(path, false));
}

} // namespace Keel
