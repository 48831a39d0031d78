#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "keel/Export.h"

namespace Keel::FileUtil {

/// Numbers of the errors that `CFileSlice` stores as last error, with module `Keel::Error::kKeelModule`.
enum FileError : std::int32_t {
    kFileNotOpen = 101,    ///< No file is open.
    kFileOpenFailed = 102, ///< The file does not exist or may not be read.
    kFileNotRegular = 103, ///< A folder, pipe or device.
    kFileShrank = 104,     ///< The file has become shorter since it was opened.
    kFileReadFailed = 105, ///< The system reported a read error.
    kFileBadSlice = 106,   ///< Slice size 0, or an index beyond the last slice.
};

/// What `CFileSlice::ReadNext` found.
enum class SliceResult : std::int32_t {
    Slice,  ///< The next slice.
    End,    ///< All slices have been read.
    Failed, ///< The last error says why.
};

/// Reads a file in slices of equal size, the last one being what remains. Binary; files of any length.
///
/// The size is taken once, at `Open`: bytes appended later are not read, and a file that has become shorter fails with
/// `kFileShrank`. One object serves one thread at a time.
class KEEL_API CFileSlice {
public:
    static constexpr std::size_t kDefaultSliceBytes = 1024U * 1024U;

    CFileSlice();
    ~CFileSlice();
    CFileSlice(CFileSlice&& other) noexcept;
    CFileSlice& operator=(CFileSlice&& other) noexcept;

    /// Opens a file for reading and closes the one that was open. `path` is UTF-8 and is brought to what the system
    /// wants here: do not convert it before. False with the last error set; then no file is open.
    bool Open(const std::string& path, std::size_t sliceBytes = kDefaultSliceBytes);

    void Close();
    bool IsOpen() const;

    /// Bytes of the file; 0 when none is open.
    std::uint64_t FileSize() const;
    /// Bytes of every slice but the last; 0 when no file is open.
    std::size_t SliceSize() const;
    /// Number of slices; 0 for an empty file.
    std::uint64_t SliceCount() const;

    /// Reads slice `index`, counted from 0, and makes it the one before the next. False leaves `slice` untouched, with
    /// the last error set.
    bool ReadSlice(std::uint64_t index, std::string& slice);

    /// Reads the next slice; the first after `Open` is slice 0. Unless the result is `Slice`, `slice` is untouched;
    /// after `Failed` the same slice is next again.
    SliceResult ReadNext(std::string& slice);

    /// The same without a copy: the slice goes behind the first `at` bytes of `text`, in place of what stood there. A
    /// text that is used again for the next slice keeps its memory. Unless the result is `Slice`, what stands behind
    /// these bytes is not defined.
    SliceResult ReadNextBehind(std::string& text, std::size_t at);

private:
    struct Impl;
    bool ReadBehind(std::uint64_t index, std::string& text, std::size_t at);
    std::unique_ptr<Impl> impl_;
};

} // namespace Keel::FileUtil
