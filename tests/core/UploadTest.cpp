#include <gtest/gtest.h>

#include <keel/FileSlice.h>

#include "core/Upload.h"
#include "support/StubExecutor.h"
#include "support/TempFolder.h"

namespace {

using namespace nexwire;

constexpr std::size_t kSlice = Keel::FileUtil::CFileSlice::kDefaultSliceBytes;
const std::string kBoundary = "-----------------------------7e231b2b250806";

struct Part {
    std::string disposition;
    std::string type;
    std::string bytes;
};

/// Takes a multipart body apart; strict, so that what it takes any server takes.
std::vector<Part> Parts(const std::string& body)
{
    std::vector<Part> parts;
    const std::string delimiter = "--" + kBoundary;
    EXPECT_EQ(body.substr(body.size() - delimiter.size() - 4), delimiter + "--\r\n");
    std::size_t at = 0;
    while (body.compare(at, delimiter.size() + 2, delimiter + "\r\n") == 0) {
        at += delimiter.size() + 2;
        Part part;
        for (std::size_t end = body.find("\r\n", at); end != at; end = body.find("\r\n", at)) {
            const std::string line = body.substr(at, end - at);
            (line.find("Content-Disposition: ") == 0 ? part.disposition : part.type) = line.substr(line.find(": ") + 2);
            at = end + 2;
        }
        const std::size_t end = body.find("\r\n" + delimiter, at += 2);
        part.bytes = body.substr(at, end - at);
        parts.push_back(part);
        at = end + 2;
    }
    return parts;
}

class Uploads : public testing::Test {
protected:
    bool Send(const Upload& upload, std::string* guid = nullptr)
    {
        return UploadInSlices("/up", upload, guid, file, progress, answer);
    }

    TempFolder folder;
    test::Library library;
    std::string file;
    std::shared_ptr<std::int32_t> progress = std::make_shared<std::int32_t>(7);
    std::string answer = "before";
    std::vector<std::int32_t> seen; ///< The counter when each request came.
};

TEST_F(Uploads, SlicesArriveWholeInOrderAndAreCounted)
{
    std::string content(2 * kSlice + 100, 'x');
    for (std::size_t i = 0; i < content.size(); ++i) {
        content[i] = static_cast<char>(i * 31 % 251);
    }
#ifdef _WIN32 // It has no such names.
    file = folder.Write("a 'b'\xC3\xA9.csv", content);
    const std::string name = "a 'b'\xC3\xA9.csv";
#else
    file = folder.Write("a \"b\"\r\n\xC3\xA9.csv", content);
    const std::string name = "a %22b%22%0D%0A\xC3\xA9.csv";
#endif
    library.wire.handler = [&](RspInfos& response, const RequestParams&) {
        seen.push_back(*progress);
        response.body = "answer " + std::to_string(seen.size());
        return true;
    };
    Upload upload{"text/csv", true, true};
    std::string guid;
    ASSERT_TRUE(Send(upload, &guid));
    ASSERT_EQ(library.wire.requests.size(), 4u);
    std::string received;
    for (std::size_t i = 0; i < 4; ++i) {
        const RequestParams& request = library.wire.requests[i];
        EXPECT_EQ(request.url, "/up");
        EXPECT_EQ(request.method, 1);
        EXPECT_EQ(request.params.at("Content-Type"), "multipart/form-data; boundary=" + kBoundary);
        EXPECT_EQ(request.headers.at("query"), "uploadGuid=" + guid);
        const std::vector<Part> parts = Parts(request.body);
        ASSERT_EQ(parts.size(), i < 3 ? 2u : 1u);
        EXPECT_EQ(parts[0].disposition, "form-data; name=\"index\"");
        EXPECT_EQ(parts[0].bytes, i < 3 ? std::to_string(i + 1) : "-1");
        if (i < 3) {
            EXPECT_EQ(parts[1].disposition, "form-data; name=\"file\"; filename=\"" + name + "\"");
            EXPECT_EQ(parts[1].type, "text/csv");
            received += parts[1].bytes;
        }
    }
    EXPECT_TRUE(received == content);
    EXPECT_EQ(guid.size(), 32u);
    EXPECT_EQ(seen, (std::vector<std::int32_t>{7, 49, 99, 99}));
    EXPECT_EQ(*progress, 100);
    EXPECT_EQ(answer, "answer 4");
}

TEST_F(Uploads, WithoutAnIdentifierTheSizeIsTold)
{
    file = folder.Write("map.jpg", std::string(kSlice, 'j'));
    progress.reset();
    ASSERT_TRUE(Send({"image/jpeg"}));
    ASSERT_EQ(library.wire.requests.size(), 1u) << "a file of exactly one slice";
    EXPECT_EQ(library.wire.Last().headers.at("query"), "totalBytes=1048576");
    EXPECT_EQ(Parts(library.wire.Last().body).size(), 1u);
}

TEST_F(Uploads, AnEmptyOrMissingFileIsNotSent)
{
    std::string guid = "before";
    for (const std::string& name : {folder.Write("empty.csv", ""), folder.File("missing.csv"), std::string()}) {
        file = name;
        EXPECT_FALSE(Send({"text/csv"}, &guid));
    }
    EXPECT_TRUE(library.wire.requests.empty());
    EXPECT_EQ(guid, "before");
    EXPECT_EQ(*progress, 7);
}

TEST_F(Uploads, AFailedSliceEndsItWithTheServersWord)
{
    file = folder.Write("a.csv", std::string(5 * kSlice, 'x'));
    library.wire.handler = [&](RspInfos& response, const RequestParams&) {
        seen.push_back(*progress);
        if (seen.size() < 3) {
            return true;
        }
        Keel::Error::SetLastError({7, 28, "transport"});
        response.body = R"({"code":"4-31","msg":"no room"})";
        return false;
    };
    EXPECT_FALSE(Send({"text/csv"}));
    EXPECT_EQ(seen.size(), 3u);
    EXPECT_EQ(*progress, 40);
    EXPECT_EQ(answer, "before");
    EXPECT_EQ(Keel::Error::GetLastError().number, 31);
}

TEST_F(Uploads, AFileThatShrinksOnTheWayFails)
{
    file = folder.Write("a.csv", std::string(3 * kSlice, 'x'));
    library.wire.handler = [&](RspInfos&, const RequestParams&) {
        std::filesystem::resize_file(std::filesystem::u8path(file), kSlice);
        return true;
    };
    EXPECT_FALSE(Send({"text/csv", false, true}));
    EXPECT_LT(*progress, 100);
    EXPECT_EQ(Keel::Error::GetLastError().number, Keel::FileUtil::kFileShrank);
}

} // namespace
