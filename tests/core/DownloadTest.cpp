#include <gtest/gtest.h>

#include <filesystem>

#ifdef __linux__
#include <csignal>
#include <sys/resource.h>
#endif

#include "core/Download.h"
#include "nexwire/ElectronicMap/EmapElement.h"
#include "nexwire/LibraryErrors.h"
#include "support/StubExecutor.h"
#include "support/TempFolder.h"

namespace {

using namespace nexwire;

constexpr std::size_t kChunk = 10485760;

/// A server with one file that answers ranges of it, or something else.
class Downloads : public testing::Test {
protected:
    Downloads()
    {
        file = folder.Write("map.jpg", "before");
        library.wire.handler = [this](RspInfos& response, const RequestParams& request) {
            return Answer(response, request.headers.at("Range"));
        };
    }

    bool Answer(RspInfos& response, const std::string& asked)
    {
        const std::size_t first = std::stoul(asked.substr(asked.find('=') + 1));
        const std::size_t last = std::min(content.size(), first + std::min(atMost, kChunk)) - 1;
        response.body = content.substr(first, last - first + 1);
        response.headers["content-range"] =
            "bytes " + std::to_string(first) + "-" + std::to_string(last) + "/" + std::to_string(content.size());
        if (library.wire.requests.size() == lieAt) {
            lie(response);
        }
        return true;
    }

    void Fill(std::size_t size)
    {
        content.resize(size);
        for (std::size_t i = 0; i < size; ++i) {
            content[i] = static_cast<char>(i * 31 % 251);
        }
    }

    bool Get() { return DownloadByRanges(Path("/maps/", id, "/pictures"), file); }

    std::vector<std::string> Asked() const
    {
        std::vector<std::string> ranges;
        for (const RequestParams& request : library.wire.requests) {
            ranges.push_back(request.headers.at("Range"));
        }
        return ranges;
    }

    /// Nothing is left behind beside the target, and it holds that.
    void ExpectTarget(const std::string& held)
    {
        EXPECT_TRUE(folder.Read("map.jpg") == held);
        const std::filesystem::directory_iterator all(std::filesystem::u8path(file).parent_path());
        EXPECT_EQ(std::distance(begin(all), end(all)), 1);
    }

    static void ExpectError(DownloadError error)
    {
        EXPECT_EQ(Keel::Error::GetLastError().category, kDownloadCategory);
        EXPECT_EQ(Keel::Error::GetLastError().number, static_cast<std::int32_t>(error));
    }

    TempFolder folder;
    test::Library library;
    const std::string id = "M1";
    std::string file;
    std::string content;
    std::size_t atMost = kChunk; ///< Bytes that the server gives at once.
    std::size_t lieAt = 0;       ///< Which answer is changed, from 1.
    std::function<void(RspInfos&)> lie;
};

TEST_F(Downloads, ChunksAreAskedForUntilTheLastByteIsThere)
{
    Fill(kChunk);
    ASSERT_TRUE(Get());
    EXPECT_EQ(Asked(), (std::vector<std::string>{"bytes=0-10485759"}));
    const RequestParams& request = library.wire.Last();
    EXPECT_EQ(request.url, "/maps/M1/pictures");
    EXPECT_EQ(request.method, 2);
    EXPECT_EQ(request.body, "");
    EXPECT_EQ(request.params.at("Content-Type"), kMultipartType);
    EXPECT_EQ(request.headers.size(), 1u);
    ExpectTarget(content);

    library.wire.requests.clear();
    Fill(kChunk + 1);
    ASSERT_TRUE(Get());
    EXPECT_EQ(Asked(), (std::vector<std::string>{"bytes=0-10485759", "bytes=10485760-20971519"}));
    ExpectTarget(content);
}

TEST_F(Downloads, AServerMayGiveLessAtOnceAsLongAsItSaysSo)
{
    Fill(1000);
    atMost = 400;
    std::filesystem::remove(std::filesystem::u8path(file));
    ASSERT_TRUE(Get());
    EXPECT_EQ(Asked(), (std::vector<std::string>{"bytes=0-10485759", "bytes=400-10486159", "bytes=800-10486559"}));
    ExpectTarget(content);
}

TEST_F(Downloads, AServerThatLiesChangesNothing)
{
    struct Lie {
        const char* range; ///< Null: none.
        std::size_t bytes;
        DownloadError error;
    };
    const Lie lies[] = {
        {nullptr, 300, DownloadError::RangeUnreadable},
        {"", 300, DownloadError::RangeUnreadable},
        {"bytes 400-699", 300, DownloadError::RangeUnreadable},
        {"bytes 400-699/*", 300, DownloadError::RangeUnreadable},
        {"bytes */1000", 300, DownloadError::RangeUnreadable},
        {"items 400-699/1000", 300, DownloadError::RangeUnreadable},
        {"bytes 400-699/1000, 700-799/1000", 300, DownloadError::RangeUnreadable},
        {"bytes 400--699/1000", 300, DownloadError::RangeUnreadable},
        {"bytes 400-699/99999999999999999999", 300, DownloadError::RangeUnreadable},
        {"bytes 699-400/1000", 300, DownloadError::RangeUnreadable},
        {"bytes 400-1000/1000", 601, DownloadError::RangeUnreadable},
        {"bytes 0-299/1000", 300, DownloadError::RangeWrong},
        {"bytes 401-700/1000", 300, DownloadError::RangeWrong},
        {"bytes 400-699/1000", 299, DownloadError::RangeWrong},
        {"bytes 400-699/1000", 301, DownloadError::RangeWrong},
        {"bytes 400-699/1000", 0, DownloadError::RangeWrong},
        {"bytes 400-10486160/10486161", 10485761, DownloadError::RangeWrong},
        {"bytes 400-699/1001", 300, DownloadError::TotalChanged},
        {"bytes 400-699/700", 300, DownloadError::TotalChanged},
    };
    Fill(1000);
    atMost = 400;
    lieAt = 2;
    for (const Lie& told : lies) {
        SCOPED_TRACE(told.range == nullptr ? "none" : told.range);
        library.wire.requests.clear();
        lie = [&told](RspInfos& response) {
            response.body.assign(told.bytes, 'x');
            response.headers.clear();
            if (told.range != nullptr) {
                response.headers["Content-Range"] = told.range;
            }
        };
        EXPECT_FALSE(Get());
        EXPECT_EQ(library.wire.requests.size(), 2u);
        ExpectError(told.error);
        ExpectTarget("before");
    }
}

TEST_F(Downloads, AFailedRequestEndsItWithTheExecutorsError)
{
    Fill(1000);
    atMost = 400;
    library.wire.handler = [this](RspInfos& response, const RequestParams& request) {
        Keel::Error::SetLastError({7, 28, "transport"});
        return library.wire.requests.size() < 3 && Answer(response, request.headers.at("Range"));
    };
    EXPECT_FALSE(Get());
    EXPECT_EQ(library.wire.requests.size(), 3u);
    EXPECT_EQ(Keel::Error::GetLastError().number, 28);
    ExpectTarget("before");
}

TEST_F(Downloads, NothingIsAskedForATargetThatCannotBeWritten)
{
    Fill(10);
    const std::string target = file;
    for (const std::string& name : {std::filesystem::u8path(target).parent_path().u8string(),
                                    folder.File("no/such/folder.jpg"), target + "/inside.jpg"}) {
        file = name;
        EXPECT_FALSE(Get()) << name;
        ExpectError(DownloadError::TargetNotWritable);
    }
    file.clear();
    EXPECT_FALSE(Get());
    EXPECT_TRUE(library.wire.requests.empty());
    file = target;
    ExpectTarget("before");
}

TEST_F(Downloads, WithoutAMapOrAFileNothingIsSent)
{
    EXPECT_FALSE(CEmapElementComm::getMapPicture("", file));
    EXPECT_FALSE(CEmapElementComm::getMapPicture("M1", ""));
    EXPECT_FALSE(CEmapElementComm::putMapPicture("", file));
    EXPECT_FALSE(CEmapElementComm::putMapPicture("M1", ""));
    EXPECT_TRUE(library.wire.requests.empty());
    Fill(10);
    EXPECT_TRUE(CEmapElementComm::getMapPicture("M1", file));
    EXPECT_EQ(library.wire.Last().url, "/7730/v1/electronicMap/maps/M1/pictures");
    ExpectTarget(content);
    library.wire.handler = nullptr;
    EXPECT_TRUE(CEmapElementComm::putMapPicture("M1", file));
    const RequestParams& upload = library.wire.Last();
    EXPECT_EQ(upload.url, "/7730/v1/electronicMap/maps/M1/pictures");
    EXPECT_EQ(upload.method, 1);
    EXPECT_EQ(upload.headers.at("query"), "totalBytes=10");
    EXPECT_NE(upload.body.find("\r\nContent-Type: image/jpeg\r\n\r\n" + content + "\r\n--"), std::string::npos);
}

#ifdef __linux__
/// No file of this process may grow beyond that.
void LimitFiles(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

TEST_F(Downloads, AFailedWriteHasItsRangeAskedForAgainThreeTimes)
{
    Fill(1000);
    atMost = 400;
    LimitFiles(600);
    EXPECT_FALSE(Get());
    LimitFiles(RLIM_INFINITY);
    ExpectError(DownloadError::WriteFailed);
    EXPECT_EQ(Asked(), (std::vector<std::string>{"bytes=0-10485759", "bytes=400-10486159", "bytes=400-10486159",
                                                 "bytes=400-10486159", "bytes=400-10486159"}));
    ExpectTarget("before");
}

TEST_F(Downloads, AWriteThatGoesThroughTheNextTimeLeavesNoGapAndNothingTwice)
{
    Fill(1000);
    atMost = 400;
    LimitFiles(600);
    library.wire.handler = [this](RspInfos& response, const RequestParams& request) {
        if (library.wire.requests.size() == 4) {
            LimitFiles(RLIM_INFINITY);
        }
        return Answer(response, request.headers.at("Range"));
    };
    EXPECT_TRUE(Get());
    LimitFiles(RLIM_INFINITY);
    EXPECT_EQ(library.wire.requests.size(), 5u);
    ExpectTarget(content);
}
#endif

} // namespace
