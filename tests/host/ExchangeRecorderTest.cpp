#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <thread>

#include "HostTestKit.h"
#include "nexwire/host/ExchangeRecorder.h"

namespace host_test {
namespace {

using nexwire::IRequestExecutor;
using nexwire::host::RecordingExecutor;
using nexwire::host::ReplayExecutor;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

/// Answers from a function.
class FakeExecutor : public IRequestExecutor {
public:
    using Answer = std::function<bool(RspInfos&, const RequestParams&)>;
    explicit FakeExecutor(Answer answer) : answer_(std::move(answer)) {}
    bool Execute(RspInfos& response, const RequestParams& request, int) override
    {
        response = RspInfos();
        return answer_(response, request);
    }

private:
    Answer answer_;
};

class ExchangeRecorder : public testing::Test {
protected:
    ~ExchangeRecorder() override
    {
        std::error_code ignored;
        fs::remove(file_, ignored);
    }

    std::unique_ptr<RecordingExecutor> Recorder(FakeExecutor::Answer answer)
    {
        return std::make_unique<RecordingExecutor>(std::make_unique<FakeExecutor>(std::move(answer)), file_);
    }

    std::string Text() const
    {
        std::ifstream stream(file_, std::ios::binary);
        std::ostringstream text;
        text << stream.rdbuf();
        return text.str();
    }

    void Write(const std::string& text) const { std::ofstream(file_, std::ios::binary) << text; }

    const std::string file_ = testing::TempDir() + "exchanges-" +
                              testing::UnitTest::GetInstance()->current_test_info()->name() + "-" +
                              std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()) + ".jsonl";
};

std::string AllBytes()
{
    std::string bytes;
    for (int i = 0; i < 256; ++i) {
        bytes += static_cast<char>(i);
    }
    return bytes;
}

TEST_F(ExchangeRecorder, WhatWasRecordedComesBackByteForByte)
{
    const std::string bodies[] = {"",
                                  "{\"code\":\"0-0\"}",
                                  AllBytes(),
                                  std::string("a\0b", 3),
                                  "\xf0\x9f\x98\x80\n\"\\",
                                  "\xed\xa0\x80",
                                  std::string(300000, 'x')};
    {
        const auto recorder = Recorder([](RspInfos& response, const RequestParams& request) {
            response.body = request.body;
            response.headers = {{"Content-Type", "x/y"}, {"X-Latin", "\xe4"}, {"base64", "text"}};
            return true;
        });
        for (const std::string& body : bodies) {
            ExpectAnswer(Call(*recorder, Request(2, "/echo", body)), body);
        }
        EXPECT_TRUE(recorder->Good());
    }
    ReplayExecutor replay(file_);
    ASSERT_TRUE(replay.Valid()) << replay.Problem();
    EXPECT_EQ(replay.Size(), std::size(bodies));
    for (auto body = std::rbegin(bodies); body != std::rend(bodies); ++body) {
        const Outcome outcome = Call(replay, Request(2, "/echo", *body));
        ExpectAnswer(outcome, *body);
        EXPECT_EQ(outcome.response.headers.at("X-Latin"), "\xe4");
        EXPECT_EQ(outcome.response.headers.at("base64"), "text");
    }
}

TEST_F(ExchangeRecorder, SecretsStayOutOfTheFileAndStillMatch)
{
    const auto recorder = Recorder([](RspInfos& response, const RequestParams& request) {
        response.headers = {{"set-cookie", "geheim-1"}, {"Server", "open"}};
        response.body = "{\"url\":\"rtsp://u:geheim-11@h\",\"cardNum\":3,\"accessToken\":\"geheim-2\",\"n\":" +
                        std::to_string(request.body.size()) + "}";
        if (request.method == 3) {
            Keel::Error::SetLastError({7, 8, "refused: {\"password\":\"geheim-3\"}"});
        }
        return request.method != 3;
    });
    RequestParams request =
        Request(1, "/login", R"({"user":"open","password":"geheim-4","inBuffer":"{\"password\":\"geheim-5\"}"})");
    request.headers = {{"SID", "geheim-6"},
                       {"RequstType", "slowThread"},
                       {"X-Auth-Token", "geheim-8"},
                       {"Referer", "http://user:geheim-9@h/"}};
    request.params = {{"ticket", "geheim-10"}};
    ASSERT_TRUE(Call(*recorder, request).answered);
    request.method = 3;
    const Outcome failed = Call(*recorder, request);
    EXPECT_FALSE(failed.answered);
    EXPECT_THAT(failed.error.text, HasSubstr("geheim-3")) << "the caller's last error is not the recorder's to change";
    request.method = 1;
    request.body = "\xff{\"password\":\"geheim-7\"}";
    ASSERT_TRUE(Call(*recorder, request).answered);

    EXPECT_THAT(Text(), Not(HasSubstr("geheim")));
    EXPECT_THAT(Text(), HasSubstr("\\\"cardNum\\\":3"));
    EXPECT_THAT(Text(), HasSubstr("slowThread"));
    EXPECT_THAT(Text(), HasSubstr("open"));

    ReplayExecutor replay(file_);
    ASSERT_TRUE(replay.Valid()) << replay.Problem();
    const Outcome second = Call(replay, request);
    EXPECT_THAT(second.response.body, HasSubstr("\"n\":24")) << "the binary body was told from the other one";
    request.method = 3;
    const Outcome again = Call(replay, request);
    EXPECT_FALSE(again.answered);
    EXPECT_EQ(again.error.category, 7);
    EXPECT_EQ(again.error.number, 8);
    EXPECT_EQ(again.error.text, "refused: {\"password\":\"***\"}");
    EXPECT_THAT(again.response.body, HasSubstr("***")) << "a failed exchange keeps its body";
}

TEST_F(ExchangeRecorder, ReplayKeepsTheOrderAndFallsBackToThePath)
{
    int count = 0;
    const auto recorder = Recorder([&count](RspInfos& response, const RequestParams&) {
        response.body = std::to_string(++count);
        return true;
    });
    for (const char* body : {"a", "b", "a", "c"}) {
        Call(*recorder, Request(2, "/p", body));
    }
    Call(*recorder, Request(1, "/p", "a"));

    ReplayExecutor replay(file_);
    ExpectAnswer(Call(replay, Request(2, "/p", "a")), "1");
    ExpectAnswer(Call(replay, Request(2, "/p", "a")), "3");
    ExpectAnswer(Call(replay, Request(2, "/p", "a")), "2");
    ExpectAnswer(Call(replay, Request(2, "/p", "b")), "4");
    ExpectAnswer(Call(replay, Request(1, "/p", "a")), "5");
    ExpectFailure(Call(replay, Request(2, "/p", "a")), HostError::NothingRecorded,
                  "method code 2, path /p: all 4 exchanges");
    ExpectFailure(Call(replay, Request(0, "/p")), HostError::NothingRecorded, "method code 0, path /p: not in");
    ExpectFailure(Call(replay, Request(2, "/q")), HostError::NothingRecorded, "not in");

    ReplayExecutor patient(file_, ReplayExecutor::WhenUsedUp::RepeatLast);
    ExpectAnswer(Call(patient, Request(1, "/p", "a")), "5");
    ExpectAnswer(Call(patient, Request(1, "/p", "z")), "5");
    ExpectFailure(Call(patient, Request(2, "/q")), HostError::NothingRecorded);
}

TEST_F(ExchangeRecorder, LinesOfManyThreadsAreWholeAndRecordingGoesOn)
{
    for (int round = 0; round < 2; ++round) {
        const auto recorder = Recorder([](RspInfos& response, const RequestParams& request) {
            response.body = request.url;
            return true;
        });
        std::vector<std::thread> threads;
        for (int t = 0; t < 8; ++t) {
            threads.emplace_back([&, t] {
                for (int i = 0; i < 25; ++i) {
                    Call(*recorder, Request(2, "/" + std::to_string(t * 25 + i), std::string(5000, 'x')));
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
#ifndef _WIN32
    EXPECT_EQ(fs::status(file_).permissions() & (fs::perms::group_all | fs::perms::others_all), fs::perms::none);
    const std::string link = file_ + ".link";
    fs::create_symlink(file_ + ".elsewhere", link);
    EXPECT_FALSE(RecordingExecutor(nullptr, link).Good());
    EXPECT_FALSE(fs::exists(file_ + ".elsewhere")) << "what somebody else points to is not made";
    fs::remove(link);
#endif
    ReplayExecutor replay(file_);
    ASSERT_TRUE(replay.Valid()) << replay.Problem();
    EXPECT_EQ(replay.Size(), 400U);
    for (int i = 0; i < 200; ++i) {
        const std::string path = "/" + std::to_string(i);
        ExpectAnswer(Call(replay, Request(2, path)), path);
    }
}

TEST_F(ExchangeRecorder, UnusableFilesAreReportedWithTheirLine)
{
    Recorder([](RspInfos&, const RequestParams&) {
        return true;
    })->Execute(*std::make_unique<RspInfos>(), Request(2, "/p"), 1);
    const std::string line = Text();
    const std::pair<std::string, std::string> spoilt[] = {
        {line + "{\"method\":\n" + line, "line 2: not JSON"},
        {line + line + "[]\n", "line 3: not an object"},
        {"{}\n", "line 1: \"method\""},
        {R"({"method":"2","path":"/p","body":"","answered":true,"response":{"headers":{},"body":""}})"
         "\n",
         "line 1: \"method\""},
        {R"({"method":2,"path":"/p","body":"","answered":true})"
         "\n",
         "line 1: \"response\""},
        {R"({"method":2,"path":"/p","body":"","answered":true,"response":{"headers":{},"bodyBase64":"?"}})"
         "\n",
         "line 1: \"response\""},
        {R"({"method":2,"path":"/p","body":"","answered":false,"response":{"headers":{},"body":""},"error":7})"
         "\n",
         "line 1: \"error\""},
        {std::string(100000, '[') + "\n", "line 1: not JSON"},
    };
    for (const auto& [text, part] : spoilt) {
        Write(text);
        ReplayExecutor replay(file_);
        EXPECT_FALSE(replay.Valid());
        EXPECT_THAT(replay.Problem(), HasSubstr(part));
        ExpectFailure(Call(replay, Request(2, "/p")), HostError::FileFailed, part);
    }
    Write(line + "\n" + line + line.substr(0, line.size() / 2));
    ReplayExecutor cut(file_);
    EXPECT_TRUE(cut.Valid()) << cut.Problem();
    EXPECT_EQ(cut.Size(), 2U);

    ReplayExecutor missing(file_ + ".missing");
    ExpectFailure(Call(missing, Request(2, "/p")), HostError::FileFailed, "cannot read");

    // What cannot be recorded still takes place.
    RecordingExecutor nowhere(std::make_unique<FakeExecutor>([](RspInfos& response, const RequestParams&) {
                                  response.body = "{}";
                                  return true;
                              }),
                              file_ + ".missing/x");
    EXPECT_FALSE(nowhere.Good());
    ExpectAnswer(Call(nowhere, Request(2, "/p")), "{}");
}

} // namespace
} // namespace host_test
