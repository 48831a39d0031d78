#include "core/Upload.h"

#include <algorithm>

#include <keel/FileSlice.h>
#include <keel/GuidUtil.h>

namespace nexwire {
namespace {

constexpr const char* kBoundary = "-----------------------------7e231b2b250806";
constexpr const char* kLastBoundary = "-------------------------------7e231b2b250806--\r\n";
constexpr std::size_t kRoomBehind = 64; ///< For the last boundary.

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

    /// Reads the next slice to where it is sent from, so that there is one in memory and not two.
    bool Read(Keel::FileUtil::CFileSlice& reader, std::int64_t number)
    {
        std::string& body = request_.body;
        const std::string head = NumberPart(number) + fileHead_;
        body.reserve(head.size() + reader.SliceSize() + kRoomBehind);
        if (body.size() < head.size()) {
            body.resize(head.size());
        }
        if (reader.ReadNextBehind(body, head.size()) != Keel::FileUtil::SliceResult::Slice) {
            return false;
        }
        size_ = body.size() - head.size();
        std::copy(head.begin(), head.end(), body.begin());
        body.append("\r\n").append(kLastBoundary);
        return true;
    }

    std::uint64_t Size() const { return size_; } ///< Of the slice that was read last.

    void Close() { request_.body = NumberPart(-1) + kLastBoundary; }

    bool Send(RspInfos& answer)
    {
        answer = RspInfos();
        return core::Execute(answer, request_, true);
    }

private:
    std::string NumberPart(std::int64_t number) const
    {
        return !upload_.numbered
                   ? std::string()
                   : std::string("--") + kBoundary + "\r\nContent-Disposition: form-data; name=\"index\"\r\n\r\n" +
                         std::to_string(number) + "\r\n";
    }

    const Upload& upload_;
    RequestParams request_; ///< The same for all slices but for its body.
    std::string fileHead_;
    std::uint64_t size_ = 0;
};

} // namespace

bool UploadInSlices(const Path& path, const Upload& upload, std::string* uploadGuid, const std::string& file,
                    const std::shared_ptr<std::int32_t>& progress, std::string& answer) noexcept
{
    return core::Guard([&] {
        Keel::FileUtil::CFileSlice reader;
        if (!reader.Open(file) || reader.SliceCount() == 0) {
            return false;
        }
        const std::uint64_t size = reader.FileSize();
        const std::uint64_t count = reader.SliceCount();
        const std::string guid = uploadGuid == nullptr ? std::string() : Keel::GuidUtil::CreateGuid();
        Slices slices(path, upload, file,
                      uploadGuid == nullptr ? "totalBytes=" + std::to_string(size) : "uploadGuid=" + guid);
        std::uint64_t sent = 0;
        RspInfos last;
        for (std::uint64_t number = 1; number <= count; ++number) {
            if (!slices.Read(reader, static_cast<std::int64_t>(number))) {
                return false;
            }
            if (uploadGuid != nullptr && number == 1) {
                *uploadGuid = guid;
            }
            if (!slices.Send(last)) {
                return false;
            }
            sent += slices.Size();
            const bool done = number == count && !upload.closing;
            Store(progress, done ? 100 : std::min<std::uint64_t>(sent * 100 / size, 99));
        }
        if (upload.closing) {
            slices.Close();
            if (!slices.Send(last)) {
                return false;
            }
            Store(progress, 100);
        }
        answer = std::move(last.body);
        return true;
    });
}

} // namespace nexwire
