#include <cstdlib>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>
#include <keel/Error.h>
#include <keel/FileSlice.h>

#include "loopback/RawServer.h"
#include "nexwire/DeviceManagement/EventImport.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/host/HostError.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include "support/TempFolder.h"

namespace {

using namespace nexwire;
using namespace std::chrono_literals;
using nexwire::loopback::RawRequest;
using nexwire::loopback::RawServer;
using nexwire::loopback::Reply;

constexpr std::size_t kSlice = Keel::FileUtil::CFileSlice::kDefaultSliceBytes;
const std::string kDone = R"({"code":"0-0","msg":"taken"})";

[[maybe_unused]] std::string Bytes(const std::string& name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// An upload of four slices through the ready-made transport to a real socket.
class EventUpload : public testing::Test {
protected:
    EventUpload()
    {
        host::HttpExecutorOptions options;
        options.baseAddress = server.Base();
        NexwireInitParams params;
        params.executor = new host::HttpRequestExecutor(options);
        NexwireInit(params);
        server.SetDefault(Reply::Json(kDone));
        for (std::size_t i = 0; content.size() < 3 * kSlice + 1000; ++i) {
            content += std::to_string(i) + ",door forced\r\n";
        }
        file = folder.Write("events.csv", content);
        Keel::Error::SetLastError({});
    }
    ~EventUpload() override { NexwireUnInit(); }

    bool Send() { return FileImportEventComm::requestUpload(progress, uploadGuid, file, answer); }

    RawServer server;
    TempFolder folder;
    std::string content;
    std::string file;
    std::shared_ptr<int> progress = std::make_shared<int>(0);
    std::string uploadGuid = "before";
    std::string answer = "before";
};

TEST_F(EventUpload, ArrivesInSlicesUnderOneIdentifier)
{
    ASSERT_TRUE(Send()) << Keel::Error::GetLastError().text;
    const std::vector<RawRequest> requests = server.Requests();
    ASSERT_EQ(requests.size(), 4U);
    std::string arrived;
    for (const RawRequest& request : requests) {
        EXPECT_EQ(request.target, "/7730/v1/deviceManagement/uploadFile");
        EXPECT_EQ(request.Value("query"), "uploadGuid=" + uploadGuid);
        EXPECT_EQ(request.Value("Content-Type"),
                  "multipart/form-data; boundary=-----------------------------7e231b2b250806");
        EXPECT_NE(request.body.find("Content-Type: text/csv\r\n"), std::string::npos);
        const std::size_t begin = request.body.find("\r\n\r\n") + 4;
        arrived += request.body.substr(begin, request.body.rfind("\r\n-----------------------------") - begin);
    }
    EXPECT_TRUE(arrived == content);
    EXPECT_EQ(uploadGuid.size(), 32U);
    EXPECT_EQ(answer, kDone);
    EXPECT_EQ(*progress, 100);
    EXPECT_EQ(LastExchange().message, "taken");
}

#ifdef NEXWIRE_MULTIPART_READER
TEST_F(EventUpload, AMultipartParserOfOthersReadsEverySlice)
{
    file = folder.Write("door \"1\".csv", content);
    ASSERT_TRUE(Send());
    std::string bodies;
    for (const RawRequest& request : server.Requests()) {
        bodies += " '" + folder.Write("body" + std::to_string(bodies.size()), request.body) + "'";
    }
    const std::string read = folder.Write("read", "");
    const std::string parts = folder.Write("parts", "");
    const std::string command = std::string(NEXWIRE_MULTIPART_READER) + " '" +
                                server.Requests().front().Value("Content-Type") + "' '" + read + "'" + bodies + " > '" +
                                parts + "'";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    EXPECT_TRUE(Bytes(read) == content);
    const std::string part = "file door %221%22.csv text/csv\n";
    EXPECT_EQ(Bytes(parts), part + part + part + part);
}
#endif

TEST_F(EventUpload, ARefusedThirdSliceEndsItWithTheServersWord)
{
    server.Enqueue(Reply::Json(kDone));
    server.Enqueue(Reply::Json(kDone));
    server.Enqueue(Reply::Http(507, R"({"code":"12-34","msg":"no room"})"));
    EXPECT_FALSE(Send());
    EXPECT_EQ(server.Requests().size(), 3U);
    EXPECT_EQ(*progress, static_cast<int>(2 * kSlice * 100 / content.size()));
    EXPECT_EQ(Keel::Error::GetLastError().category, 12);
    EXPECT_EQ(Keel::Error::GetLastError().number, 34);
    EXPECT_EQ(uploadGuid, "before");
    EXPECT_EQ(answer, "before");
}

TEST_F(EventUpload, ABrokenConnectionEndsItWithTheTransportsWord)
{
    server.Enqueue(Reply::Json(kDone));
    server.Enqueue(Reply().Send("HTTP/1.1 200 OK\r\n").Reset());
    EXPECT_FALSE(Send());
    EXPECT_EQ(server.Requests().size(), 2U);
    EXPECT_EQ(Keel::Error::GetLastError().category, host::kHostErrorCategory);
}

TEST_F(EventUpload, ALateAnswerIsWaitedFor)
{
    server.Enqueue(Reply().Wait(300ms).Send(Reply::HttpBytes(200, kDone)));
    EXPECT_TRUE(Send());
}

TEST_F(EventUpload, AnUnreadableLastAnswerIsNone)
{
    server.SetDefault(Reply::Http(200, "<html>"));
    EXPECT_FALSE(Send());
    EXPECT_EQ(answer, "before");
}

TEST_F(EventUpload, AnEmptyFileIsNotSent)
{
    file = folder.Write("empty.csv", "");
    EXPECT_FALSE(Send());
    EXPECT_TRUE(server.Requests().empty());
    EXPECT_EQ(*progress, 0);
}

} // namespace
