#include "core/Upload.h"

#include <algorithm>

#include <keel/FileSlice.h>
#include <keel/GuidUtil.h>

namespace nexwire {
namespace {

constexpr const char* kBoundary = "-----------------------------7e231b2b250806";
constexpr std::size_t kRoomAround = 512; ///< For the boundaries and the part with the number.

/// Other threads may read it while it changes; a plain int is what the interface gives.
void Store(const std::shared_ptr<std::int32_t>& progress, std::uint64_t percent)
{
    if (progress) {
#if defined(__GNUC__)
        __atomic_store_n(progress.get(), static_cast<std::int32_t>(percent), __ATOMIC_RELAXED);
#else
        *static_cast<volatile std::int32_t*>(progress.get()) = static_cast<std::int32_t>(percent);
#endif
    }
}

/// The last part of a path, with what would end a quoted file name percent-encoded, as HTML forms do.
std::string FileName(const std::string& path)
{
    std::string name;
    for (const char c : path.substr(path.find_last_of("/\\") + 1)) {
        if (c == '"') {
            name += "%22";
        } else if (c == '\r') {
            name += "%0D";
        } else if (c == '\n') {
            name += "%0A";
        } else {
            name += c;
        }
    }
    return name;
}

class Slices {
public:
    Slices(const Path& path, const Upload& upload, const std::string& file, const std::string& query)
        : upload_(upload), request_(Write(path).Header("query", query).Multipart().Build()),
          fileHead_(std::string("--") + kBoundary + "\r\nContent-Disposition: form-data; name=\"file\"; filename=\"" +
                    FileName(file) + "\"\r\nContent-Type: " + upload.partType + "\r\n\r\n")
    {
    }

    /// @param slice  null for the closing request.
    bool Send(std::int64_t number, const std::string* slice, RspInfos& answer)
    {
        std::string& body = request_.body;
        body.clear();
        if (upload_.numbered) {
            body.append("--").append(kBoundary).append("\r\nContent-Disposition: form-data; name=\"index\"\r\n\r\n");
            body.append(std::to_string(number)).append("\r\n");
        }
        if (slice != nullptr) {
            // At once: a text that grows holds what it had a second time.
            body.reserve(fileHead_.size() + slice->size() + kRoomAround);
            body.append(fileHead_).append(*slice).append("\r\n");
        }
        body.append("--").append(kBoundary).append("--\r\n");
        answer = RspInfos();
        return core::Execute(answer, request_, true);
    }

private:
    const Upload& upload_;
    RequestParams request_; ///< The same for all slices but for its body.
    std::string fileHead_;
};

} // namespace

bool UploadInSlices(const Path& path, const Upload& upload, std::string* uploadGuid, const std::string& file,
                    const std::shared_ptr<std::int32_t>& progress, std::string& answer) noexcept
{
    return core::Guard([&] {
        Keel::FileUtil::CFileSlice reader;
        std::string slice;
        if (!reader.Open(file) || reader.ReadNext(slice) != Keel::FileUtil::SliceResult::Slice) {
            return false;
        }
        const std::uint64_t size = reader.FileSize();
        const std::uint64_t count = reader.SliceCount();
        std::string query = "totalBytes=" + std::to_string(size);
        if (uploadGuid != nullptr) {
            *uploadGuid = Keel::GuidUtil::CreateGuid();
            query = "uploadGuid=" + *uploadGuid;
        }
        Slices slices(path, upload, file, query);
        std::uint64_t sent = 0;
        RspInfos last;
        for (std::uint64_t number = 1;; ++number) {
            if (!slices.Send(static_cast<std::int64_t>(number), &slice, last)) {
                return false;
            }
            sent += slice.size();
            const bool done = number == count && !upload.closing;
            Store(progress, done ? 100 : std::min<std::uint64_t>(sent * 100 / size, 99));
            if (number == count) {
                break;
            }
            if (reader.ReadNext(slice) != Keel::FileUtil::SliceResult::Slice) {
                return false;
            }
        }
        if (upload.closing) {
            if (!slices.Send(-1, nullptr, last)) {
                return false;
            }
            Store(progress, 100);
        }
        answer = std::move(last.body);
        return true;
    });
}

} // namespace nexwire
