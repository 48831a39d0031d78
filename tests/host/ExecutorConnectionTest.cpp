#include <atomic>
#include <future>
#include <memory>
#include <set>
#include <thread>

#include "HostTestKit.h"

namespace host_test {
namespace {

using std::chrono::steady_clock;

RequestParams Slow(const std::string& path, std::int32_t timeoutMs = 10000)
{
    RequestParams request = Request(2, path, "", timeoutMs);
    request.headers["RequstType"] = "slowThread";
    return request;
}

std::future<Outcome> Background(HttpRequestExecutor& executor, const RequestParams& request)
{
    return std::async(std::launch::async, [&executor, request] { return Call(executor, request); });
}

TEST(ExecutorConnection, EightThreadsGetTheirOwnAnswersOnFewConnections)
{
    RawServer server;
    server.SetHandler([](const RawRequest& request) { return Reply::Json(request.target + request.body); });
    HttpRequestExecutor executor(At(server.Base()));
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < 50; ++i) {
                const std::string path = "/t" + std::to_string(t) + "/" + std::to_string(i);
                const Outcome outcome = Call(executor, Request(i % 4, path, i % 3 == 0 ? "" : "{\"i\":1}"));
                wrong += !outcome.answered || outcome.response.body != path + (i % 3 == 0 ? "" : "{\"i\":1}");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_LE(server.Connections(), 8U);
    std::set<std::string> targets;
    for (const RawRequest& request : server.Requests()) {
        EXPECT_TRUE(targets.insert(request.target).second) << request.target << " was sent twice";
    }
    EXPECT_EQ(targets.size(), 400U);
}

TEST(ExecutorConnection, NoMoreThanTheAskedNumberIsKept)
{
    for (const std::size_t kept : {0U, 1U, 2U}) {
        RawServer server;
        server.SetDefault(Reply().Wait(50ms).Send(Reply::HttpBytes(200, "{}")));
        HttpExecutorOptions options = At(server.Base());
        options.maxIdleConnections = kept;
        HttpRequestExecutor executor(options);
        std::vector<std::future<Outcome>> calls;
        for (int i = 0; i < 4; ++i) {
            calls.push_back(Background(executor, Request(0, "/p")));
        }
        for (std::future<Outcome>& call : calls) {
            ExpectAnswer(call.get(), "{}");
        }
        EXPECT_TRUE(server.WaitForOpen(kept)) << kept;
    }
}

// libcurl by itself would send the request a second time on a new connection.
TEST(ExecutorConnection, RequestThatAKeptConnectionSwallowedIsNotRepeated)
{
    for (const bool reset : {false, true}) {
        for (const std::int32_t method : {1, 2, 3}) {
            for (const std::size_t length : {std::size_t{0}, std::size_t{20}, std::size_t{300000}}) {
                SCOPED_TRACE("method " + std::to_string(method) + ", body of " + std::to_string(length) +
                             (reset ? ", reset" : ", closed"));
                RawServer server;
                HttpRequestExecutor executor(At(server.Base()));
                ExpectAnswer(Call(executor, Request(0, "/first")), "{}");
                server.Enqueue(reset ? Reply().Reset() : Reply().Close());
                ExpectFailure(Call(executor, Request(method, "/once", std::string(length, 'x'))),
                              HostError::NotRepeated, "whether it was carried out is unknown");
                ExpectAnswer(Call(executor, Request(0, "/last")), "{}");
                const std::vector<RawRequest> requests = server.Requests();
                ASSERT_EQ(requests.size(), 3U);
                EXPECT_EQ(requests[1].target, "/once");
                EXPECT_EQ(requests[1].connection, 0U) << "the kept connection was used";
                EXPECT_EQ(requests[2].target, "/last");
                EXPECT_EQ(requests[2].connection, 1U) << "no connection was made in between";
            }
        }
    }
}

TEST(ExecutorConnection, ReadThatAKeptConnectionSwallowedIsRepeatedOnce)
{
    for (const bool reset : {false, true}) {
        SCOPED_TRACE(reset ? "reset" : "closed");
        RawServer server;
        HttpRequestExecutor executor(At(server.Base()));
        const Reply ending = reset ? Reply().Reset() : Reply().Close();
        ExpectAnswer(Call(executor, Request(0, "/first")), "{}");
        server.Enqueue(ending);
        ExpectAnswer(Call(executor, Request(0, "/again", "{\"page\":1}")), "{}");
        std::vector<RawRequest> requests = server.Requests();
        ASSERT_EQ(requests.size(), 3U);
        EXPECT_EQ(requests[2].body, requests[1].body);
        EXPECT_EQ(requests[2].connection, 1U);

        HttpRequestExecutor other(At(server.Base()));
        ExpectAnswer(Call(other, Request(0, "/first")), "{}");
        server.Enqueue(ending);
        server.Enqueue(ending);
        ExpectFailure(Call(other, Request(0, "/twice")), HostError::AnswerIncomplete);
        EXPECT_EQ(server.Requests().size(), 6U);
    }
}

// Between the answer and the end of the connection there is a moment in which it looks alive.
TEST(ExecutorConnection, ServerThatClosesBehindEveryAnswerCostsOneCallAtMost)
{
    RawServer server;
    server.SetDefault(Reply().Send(Reply::HttpBytes(200, "{}")).Close());
    HttpRequestExecutor executor(At(server.Base()));
    int failed = 0;
    for (int i = 0; i < 1000; ++i) {
        failed += !Call(executor, Request(1, "/p", "{}")).answered;
    }
    EXPECT_LE(failed, 1);
    EXPECT_LE(server.Requests().size(), 1000U) << "nothing is sent twice";
}

TEST(ExecutorConnection, AfterALossNoConnectionIsKeptForAWhile)
{
    RawServer server;
    HttpRequestExecutor executor(At(server.Base()));
    ExpectAnswer(Call(executor, Request(1, "/p")), "{}");
    server.Enqueue(Reply().Close());
    ExpectFailure(Call(executor, Request(1, "/p")), HostError::NotRepeated);
    for (int i = 0; i < 3; ++i) {
        ExpectAnswer(Call(executor, Request(1, "/p")), "{}");
    }
    EXPECT_EQ(server.Connections(), 4U);
    EXPECT_TRUE(server.WaitForOpen(0));
}

TEST(ExecutorConnection, ConnectionThatDiedOrSpokeWhileIdleIsReplaced)
{
    const std::string stray = Reply::HttpBytes(200, "stray");
    const std::pair<const char*, Reply> endings[] = {
        {"closed", Reply::Http(200, "{}").Close()},
        {"reset", Reply::Http(200, "{}").Reset()},
        {"said goodbye", Reply::Http(200, "{}").Wait(20ms).Send(Reply::HttpBytes(408, "idle too long")).Close()},
        {"spoke unasked", Reply::Http(200, "{}").Wait(20ms).Send(stray)},
        {"answered twice", Reply().Send(Reply::HttpBytes(200, "{}") + stray)},
        {"answered twice in chunks",
         Reply().Send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n{}\r\n0\r\n\r\n" + stray)},
    };
    for (const auto& [what, ending] : endings) {
        SCOPED_TRACE(what);
        RawServer server;
        HttpRequestExecutor executor(At(server.Base()));
        server.Enqueue(ending);
        ExpectAnswer(Call(executor, Request(0, "/first")), "{}");
        std::this_thread::sleep_for(50ms); // For the end to arrive here.
        ExpectAnswer(Call(executor, Request(1, "/second", "{}")), "{}");
        ExpectAnswer(Call(executor, Request(1, "/third", "{}")), "{}");
        const std::vector<RawRequest> requests = server.Requests();
        ASSERT_EQ(requests.size(), 3U);
        EXPECT_EQ(requests[2].connection, requests[1].connection);
    }
}

TEST(ExecutorConnection, BytesBehindAnAnswerWithoutBodyAnswerNothingElse)
{
    for (const std::string head : {"HTTP/1.1 204 No Content\r\n\r\n", "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n"}) {
        RawServer server;
        HttpRequestExecutor executor(At(server.Base()));
        server.Enqueue(Reply().Send(head + Reply::HttpBytes(200, "stray")));
        ExpectAnswer(Call(executor, Request(0, "/first")), "");
        ExpectAnswer(Call(executor, Request(0, "/second")), "{}");
        EXPECT_EQ(server.Requests().size(), 2U);
    }
}

TEST(ExecutorConnection, AbortEndsWhatIsInFlightAndHoldsUntilResume)
{
    RawServer server;
    server.SetDefault(Reply().Hang());
    HttpExecutorOptions options = At(server.Base());
    options.slowLaneSize = 1;
    HttpRequestExecutor executor(options);
    std::vector<std::future<Outcome>> calls;
    calls.push_back(Background(executor, Request(0, "/a")));
    calls.push_back(Background(executor, Request(1, "/b", "{}")));
    calls.push_back(Background(executor, Slow("/c")));
    ASSERT_TRUE(server.WaitForRequests(3));
    calls.push_back(Background(executor, Slow("/waits")));
    std::this_thread::sleep_for(20ms);

    const auto begin = steady_clock::now();
    executor.Abort();
    for (std::future<Outcome>& call : calls) {
        ExpectFailure(call.get(), HostError::Aborted);
    }
    EXPECT_LT(steady_clock::now() - begin, 200ms);
    EXPECT_EQ(server.Requests().size(), 3U) << "the waiting one was never sent";
    EXPECT_TRUE(server.WaitForOpen(0));

    ExpectFailure(Call(executor, Request(0, "/refused")), HostError::Aborted, "not sent");
    EXPECT_EQ(server.Requests().size(), 3U);
    executor.Resume();
    server.SetDefault(Reply::Json("{}"));
    ExpectAnswer(Call(executor, Request(0, "/again")), "{}");
    ExpectAnswer(Call(executor, Slow("/again")), "{}");
}

TEST(ExecutorConnection, AbortReachesACallThatIsStillConnecting)
{
    const DeafListener deaf;
    if (!deaf.Works()) {
        GTEST_SKIP() << "this system refuses where it should be silent";
    }
    HttpRequestExecutor executor(At(deaf.Port()));
    std::future<Outcome> call = Background(executor, Request(0, "/p"));
    std::this_thread::sleep_for(50ms);
    const auto begin = steady_clock::now();
    executor.Abort();
    ExpectFailure(call.get(), HostError::Aborted);
    EXPECT_LT(steady_clock::now() - begin, 200ms);
}

TEST(ExecutorConnection, AbortAndResumeWhileThreadsCall)
{
    RawServer server;
    HttpRequestExecutor executor(At(server.Base()));
    std::atomic<bool> stop{false};
    std::atomic<int> answered{0};
    std::atomic<int> other{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            while (!stop) {
                const Outcome outcome = Call(executor, t == 0 ? Slow("/s") : Request(2, "/p", "{}"));
                if (outcome.answered) {
                    ++answered;
                } else if (outcome.error.number != static_cast<std::int32_t>(HostError::Aborted)) {
                    ++other;
                }
            }
        });
    }
    for (int i = 0; i < 50 || (i < 5000 && answered == 0); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2 + i / 20)); // Until a call fits between two.
        executor.Abort();
        executor.Resume();
    }
    stop = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_GT(answered, 0);
    EXPECT_EQ(other, 0);
}

TEST(ExecutorConnection, DestructionEndsAndAwaitsCallsInFlight)
{
    RawServer server;
    server.SetDefault(Reply().Hang());
    auto executor = std::make_unique<HttpRequestExecutor>(At(server.Base()));
    std::vector<std::future<Outcome>> calls;
    for (int i = 0; i < 3; ++i) {
        calls.push_back(Background(*executor, Request(0, "/p")));
    }
    ASSERT_TRUE(server.WaitForRequests(3));
    const auto begin = steady_clock::now();
    executor.reset();
    EXPECT_LT(steady_clock::now() - begin, 200ms);
    for (std::future<Outcome>& call : calls) {
        ExpectFailure(call.get(), HostError::Aborted);
    }
}

TEST(ExecutorConnection, SlowLaneIsNarrowAndLeavesRoomForOthers)
{
    RawServer server;
    server.SetHandler([](const RawRequest& request) {
        return request.target == "/slow" ? Reply().Wait(150ms).Send(Reply::HttpBytes(200, "slow")) : Reply::Json("{}");
    });
    HttpRequestExecutor executor(At(server.Base()));
    const auto begin = steady_clock::now();
    std::vector<std::future<Outcome>> calls;
    for (int i = 0; i < 4; ++i) {
        calls.push_back(Background(executor, Slow("/slow")));
    }
    ASSERT_TRUE(server.WaitForRequests(2));
    const Outcome quick = Call(executor, Request(2, "/quick"));
    ExpectAnswer(quick, "{}");
    EXPECT_LT(quick.took, 140ms);
    const Outcome impatient = Call(executor, Slow("/slow", 30));
    ExpectFailure(impatient, HostError::DeadlinePassed, "no place in the slow lane within 30 ms");
    EXPECT_LT(impatient.took, 140ms);
    EXPECT_EQ(server.Requests().size(), 3U) << "two slow ones and the quick one";
    for (std::future<Outcome>& call : calls) {
        ExpectAnswer(call.get(), "slow");
    }
    EXPECT_GE(steady_clock::now() - begin, 290ms) << "two after two";
    EXPECT_EQ(server.Requests().size(), 5U);
}

TEST(ExecutorConnection, WaitingForTheSlowLaneCountsAgainstTheDeadline)
{
    RawServer server;
    server.Enqueue(Reply().Wait(150ms).Send(Reply::HttpBytes(200, "slow")));
    server.Enqueue(Reply().Hang());
    HttpExecutorOptions options = At(server.Base());
    options.slowLaneSize = 1;
    HttpRequestExecutor executor(options);
    std::future<Outcome> first = Background(executor, Slow("/a"));
    ASSERT_TRUE(server.WaitForRequests(1));
    const Outcome second = Call(executor, Slow("/b", 300));
    ExpectFailure(second, HostError::DeadlinePassed, "within 300 ms");
    EXPECT_GE(second.took, 290ms);
    EXPECT_LT(second.took, 420ms);
    ExpectAnswer(first.get(), "slow");
}

} // namespace
} // namespace host_test
