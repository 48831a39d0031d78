#include "keel/FileSlice.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "keel/Error.h"
#ifndef _WIN32
#include "keel/CodePage.h"
#endif

namespace Keel::FileUtil {
namespace {

std::filesystem::path SystemPath(const std::string& path)
{
#ifdef _WIN32
    return std::filesystem::u8path(path);
#else
    return std::filesystem::path(UTF8ToLocal(path));
#endif
}

bool Fail(FileError number, const std::string& path, const std::string& reason)
{
    Error::SetLastError({Error::kKeelModule, number, "cannot read \"" + path + "\": " + reason});
    return false;
}

std::string Reason(int error)
{
    return error != 0 ? std::generic_category().message(error) : std::string("input/output error");
}

} // namespace

struct CFileSlice::Impl {
    std::ifstream stream;
    std::string path;
    std::uint64_t fileSize = 0;
    std::size_t sliceSize = 0;
    std::uint64_t next = 0;

    std::uint64_t SliceCount() const { return fileSize / sliceSize + (fileSize % sliceSize != 0 ? 1 : 0); }
};

CFileSlice::CFileSlice() = default;
CFileSlice::~CFileSlice() = default;
CFileSlice::CFileSlice(CFileSlice&& other) noexcept = default;
CFileSlice& CFileSlice::operator=(CFileSlice&& other) noexcept = default;

bool CFileSlice::Open(const std::string& path, std::size_t sliceBytes)
{
    Close();
    if (sliceBytes == 0) {
        return Fail(kFileBadSlice, path, "slice size 0");
    }
    if (path.find('\0') != std::string::npos) {
        return Fail(kFileOpenFailed, path.substr(0, path.find('\0')), "NUL in the path");
    }
    // Asked before opening: opening a pipe would wait for its writer.
    const std::filesystem::path systemPath = SystemPath(path);
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(systemPath, error);
    if (error) {
        return Fail(kFileOpenFailed, path, error.message());
    }
    if (status.type() != std::filesystem::file_type::regular) {
        return Fail(kFileNotRegular, path, "not a regular file");
    }
    auto impl = std::make_unique<Impl>();
    impl->stream.rdbuf()->pubsetbuf(nullptr, 0); // Slices are large; a buffer would hide that the file shrank.
    errno = 0;
    impl->stream.open(systemPath, std::ios::in | std::ios::binary | std::ios::ate);
    if (!impl->stream) {
        return Fail(kFileOpenFailed, path, Reason(errno));
    }
    const std::streamoff size = impl->stream.tellg();
    if (size < 0) {
        return Fail(kFileReadFailed, path, Reason(errno));
    }
    impl->path = path;
    impl->fileSize = static_cast<std::uint64_t>(size);
    impl->sliceSize = sliceBytes;
    impl_ = std::move(impl);
    return true;
}

void CFileSlice::Close()
{
    impl_.reset();
}

bool CFileSlice::IsOpen() const
{
    return impl_ != nullptr;
}

std::uint64_t CFileSlice::FileSize() const
{
    return impl_ ? impl_->fileSize : 0;
}

std::size_t CFileSlice::SliceSize() const
{
    return impl_ ? impl_->sliceSize : 0;
}

std::uint64_t CFileSlice::SliceCount() const
{
    return impl_ ? impl_->SliceCount() : 0;
}

bool CFileSlice::ReadSlice(std::uint64_t index, std::string& slice)
{
    std::string bytes;
    if (!ReadBehind(index, bytes, 0)) {
        return false;
    }
    slice.swap(bytes);
    return true;
}

bool CFileSlice::ReadBehind(std::uint64_t index, std::string& text, std::size_t at)
{
    if (!impl_) {
        Error::SetLastError({Error::kKeelModule, kFileNotOpen, "no file is open"});
        return false;
    }
    Impl& file = *impl_;
    if (index >= file.SliceCount()) {
        return Fail(kFileBadSlice, file.path,
                    "slice " + std::to_string(index) + " of " + std::to_string(file.SliceCount()));
    }
    const std::uint64_t offset = index * file.sliceSize;
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(file.sliceSize, file.fileSize - offset));

    text.resize(at + wanted);
    file.stream.clear();
    errno = 0;
    file.stream.seekg(static_cast<std::streamoff>(offset));
    file.stream.read(&text[at], static_cast<std::streamsize>(wanted));
    const auto got = static_cast<std::uint64_t>(file.stream.gcount());
    if (got < wanted) {
        if (file.stream.eof()) {
            return Fail(kFileShrank, file.path,
                        "it had " + std::to_string(file.fileSize) + " bytes and now ends before byte " +
                            std::to_string(offset + wanted));
        }
        return Fail(kFileReadFailed, file.path, Reason(errno));
    }
    file.next = index + 1;
    return true;
}

SliceResult CFileSlice::ReadNext(std::string& slice)
{
    if (impl_ && impl_->next == impl_->SliceCount()) {
        return SliceResult::End;
    }
    return ReadSlice(impl_ ? impl_->next : 0, slice) ? SliceResult::Slice : SliceResult::Failed;
}

SliceResult CFileSlice::ReadNextBehind(std::string& text, std::size_t at)
{
    if (impl_ && impl_->next == impl_->SliceCount()) {
        return SliceResult::End;
    }
    return ReadBehind(impl_ ? impl_->next : 0, text, at) ? SliceResult::Slice : SliceResult::Failed;
}

} // namespace Keel::FileUtil
