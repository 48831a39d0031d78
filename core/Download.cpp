#include "core/Download.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <system_error>

#include <keel/Error.h>
#include <keel/GuidUtil.h>
#include <keel/StringUtil.h>
#include <pier/Pier.h>

#include "nexwire/LibraryErrors.h"

namespace nexwire {
namespace {

constexpr std::uint64_t kChunkBytes = 0xA00000;
constexpr int kMoreAttempts = 3;

bool Fail(DownloadError error, const std::string& text)
{
    Keel::Error::ErrorCode code;
    code.category = kDownloadCategory;
    code.number = static_cast<std::int32_t>(error);
    code.text = text;
    Keel::Error::SetLastError(code);
    return false;
}

bool FailBySystem(DownloadError error, const std::string& file)
{
    return Fail(error, file + ": " + std::system_category().message(Pier_GetLastError()));
}

/// A file that takes its name only when it is complete.
class Target {
public:
    explicit Target(const std::string& file)
        : file_(file),
          beside_(file.substr(0, file.find_last_of("/\\") + 1) + "." + Keel::GuidUtil::CreateGuid() + ".part")
    {
    }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;
    ~Target()
    {
        if (handle_ != nullptr) {
            Pier_CloseFile(handle_);
            Pier_DeleteFile(beside_.c_str());
        }
    }

    bool Open()
    {
        if (CanBeWritten()) {
            handle_ = Pier_OpenFile(beside_.c_str(), PIER_OPEN_WRITE | PIER_OPEN_CREATE | PIER_OPEN_EXCLUSIVE);
        }
        return handle_ != nullptr || FailBySystem(DownloadError::TargetNotWritable, file_);
    }

    /// Bytes written; fewer than there are when the system refused the rest.
    std::size_t Write(const char* data, std::size_t size)
    {
        return static_cast<std::size_t>(std::max<std::int64_t>(Pier_WriteFile(handle_, data, size), 0));
    }

    bool Commit()
    {
        const bool closed = Pier_CloseFile(handle_) == 0;
        handle_ = nullptr;
        if (closed && Pier_RenameFile(beside_.c_str(), file_.c_str()) == 0) {
            return true;
        }
        // Before the clean-up, which has errors of its own.
        FailBySystem(closed ? DownloadError::TargetNotWritable : DownloadError::WriteFailed, file_);
        Pier_DeleteFile(beside_.c_str());
        return false;
    }

    const std::string& Name() const { return file_; }

private:
    /// Asked before anything is sent, and without changing what is there.
    bool CanBeWritten() const
    {
        if (Pier_File* const present = Pier_OpenFile(file_.c_str(), PIER_OPEN_WRITE)) {
            Pier_CloseFile(present);
            return true;
        }
        Pier_File* const made = Pier_OpenFile(file_.c_str(), PIER_OPEN_WRITE | PIER_OPEN_CREATE | PIER_OPEN_EXCLUSIVE);
        if (made == nullptr) {
            return false;
        }
        Pier_CloseFile(made);
        return Pier_DeleteFile(file_.c_str()) == 0;
    }

    std::string file_;
    std::string beside_;
    Pier_File* handle_ = nullptr;
};

struct Range {
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    std::uint64_t total = 0;
};

/// Takes a number and what must follow it off the front of a text.
bool Take(std::string_view& text, std::uint64_t& number, std::string_view follows)
{
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc()) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    if (text.substr(0, follows.size()) != follows) {
        return false;
    }
    text.remove_prefix(follows.size());
    return true;
}

/// "bytes 0-10485759/25000000". A total that the server does not know ("*") is of no use here.
bool ParseRange(const std::string& field, Range& range)
{
    const std::string text = Keel::StringUtil::LowerCase(Keel::StringUtil::StringTrim(field));
    constexpr std::string_view kUnit = "bytes ";
    std::string_view rest = text;
    if (rest.substr(0, kUnit.size()) != kUnit) {
        return false;
    }
    rest.remove_prefix(kUnit.size());
    return Take(rest, range.first, "-") && Take(rest, range.last, "/") && Take(rest, range.total, "") && rest.empty() &&
           range.first <= range.last && range.last < range.total;
}

class Download {
public:
    Download(const Path& path, const std::string& file) : path_(path), target_(file) {}

    bool Run()
    {
        if (!target_.Open()) {
            return false;
        }
        do {
            if (!Next()) {
                return false;
            }
        } while (received_ < total_);
        return target_.Commit();
    }

private:
    /// Fetches one range and writes it. What one attempt wrote, the next leaves out.
    bool Next()
    {
        std::size_t written = 0;
        for (int attempt = 0; attempt <= kMoreAttempts; ++attempt) {
            std::string body;
            if (!Fetch(body)) {
                return false;
            }
            if (body.size() < written) {
                return Fail(DownloadError::RangeWrong, target_.Name() + ": the range came shorter the second time");
            }
            written += target_.Write(body.data() + written, body.size() - written);
            if (written == body.size()) {
                received_ += written;
                return true;
            }
        }
        return FailBySystem(DownloadError::WriteFailed, target_.Name());
    }

    bool Fetch(std::string& body)
    {
        const std::uint64_t last = received_ + kChunkBytes - 1;
        const std::string asked = "bytes=" + std::to_string(received_) + "-" + std::to_string(last);
        std::string field;
        if (!ExchangeForBytes(Query(path_).Header("Range", asked).Multipart(), body, "Content-Range", field)) {
            return false;
        }
        Range range;
        const std::string said = target_.Name() + ": asked for " + asked + ", got \"" + field + "\"";
        if (!ParseRange(field, range)) {
            return Fail(DownloadError::RangeUnreadable, said);
        }
        if (range.first != received_ || range.last > last || body.size() != range.last - range.first + 1) {
            return Fail(DownloadError::RangeWrong, said + " with " + std::to_string(body.size()) + " bytes");
        }
        if (total_ != 0 && range.total != total_) {
            return Fail(DownloadError::TotalChanged, said + ", before of " + std::to_string(total_));
        }
        total_ = range.total;
        return true;
    }

    const Path& path_;
    Target target_;
    std::uint64_t received_ = 0;
    std::uint64_t total_ = 0; ///< 0 before the first answer.
};

} // namespace

bool DownloadByRanges(const Path& path, const std::string& file) noexcept
{
    return core::Guard([&] { return !file.empty() && Download(path, file).Run(); });
}

} // namespace nexwire
