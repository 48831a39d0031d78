#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "loopback/RawServer.h"
#include "nexwire/host/CallScope.h"
#include "nexwire/host/FaultExecutor.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include "nexwire/host/MakeExecutor.h"
#include "nexwire/host/ObservingExecutor.h"
#include "nexwire/host/RetryingExecutor.h"
#include "nexwire/host/TokenExecutor.h"
#include <keel/Error.h>

namespace {

using namespace nexwire;
using namespace nexwire::host;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using nexwire::loopback::RawServer;
using nexwire::loopback::Reply;

/// Answers by a function and remembers what it was asked.
class Scripted : public IRequestExecutor {
public:
    struct Log {
        std::function<bool(RspInfos&, const RequestParams&)> answer = [](RspInfos& response, const RequestParams&) {
            response.body = R"({"code":"0-0"})";
            return true;
        };
        std::mutex mutex;
        std::vector<RequestParams> asked;
    };

    explicit Scripted(Log& log) : log_(log) {}
    bool Execute(RspInfos& response, const RequestParams& request, int) override
    {
        {
            const std::lock_guard<std::mutex> lock(log_.mutex);
            log_.asked.push_back(request);
        }
        return log_.answer(response, request);
    }

private:
    Log& log_;
};

bool FailWith(std::int32_t category, std::int32_t number)
{
    Keel::Error::ErrorCode code;
    code.category = category;
    code.number = number;
    code.text = "scripted";
    Keel::Error::SetLastError(code);
    return false;
}

bool FailWith(HostError error)
{
    return FailWith(kHostErrorCategory, static_cast<std::int32_t>(error));
}

void ExpectError(HostError error)
{
    EXPECT_EQ(Keel::Error::GetLastError().category, kHostErrorCategory);
    EXPECT_EQ(Keel::Error::GetLastError().number, static_cast<std::int32_t>(error));
}

std::int64_t MsSince(Clock::time_point start)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
}

// ---- Scopes ----

TEST(CallScopes, GiveWhatIsLeftAndNeverMoreThanTheOuterOne)
{
    Scripted::Log log;
    ScopedExecutor executor(std::make_unique<Scripted>(log));
    RspInfos response;
    RequestParams request("/a", 0);
    request.headers["SID"] = "own";
    executor.Execute(response, request, 1);
    EXPECT_EQ(log.asked.back().timeoutMs, 40000);
    {
        CallScope outer("import", 1000);
        outer.Header("SID", "outer");
        outer.Header("X", "1");
        CallScope inner("page", 50000);
        inner.Header("SID", "inner");
        EXPECT_EQ(inner.Name(), "import/page");
        executor.Execute(response, request, 1);
        EXPECT_LE(log.asked.back().timeoutMs, 1000);
        EXPECT_GT(log.asked.back().timeoutMs, 500);
        EXPECT_EQ(log.asked.back().headers.at("SID"), "inner");
        EXPECT_EQ(log.asked.back().headers.at("X"), "1");
        request.timeoutMs = 7;
        executor.Execute(response, request, 1);
        EXPECT_EQ(log.asked.back().timeoutMs, 7) << "its own time, where that is less";
        const std::size_t before = log.asked.size();
        CallScope late({}, 1);
        std::this_thread::sleep_for(3ms);
        EXPECT_FALSE(executor.Execute(response, request, 1));
        ExpectError(HostError::DeadlinePassed);
        EXPECT_EQ(log.asked.size(), before);
    }
    EXPECT_EQ(CallScope::Current(), nullptr);
    EXPECT_TRUE(executor.Execute(response, request, 1));
    EXPECT_EQ(log.asked.back().headers.at("SID"), "own");
}

TEST(CallScopes, ATokenEndsItsCallsAndNoOthers)
{
    RawServer server;
    server.SetDefault(Reply().Hang());
    HttpExecutorOptions options;
    options.baseAddress = server.Base();
    ScopedExecutor executor(std::make_unique<HttpRequestExecutor>(options));
    std::atomic<int> ended{0};
    CancelToken first;
    CancelToken second;
    const auto call = [&](const CancelToken& token) {
        CallScope outer("outer", 0, token);
        CallScope inner; // The outer token holds for inner scopes.
        RspInfos response;
        EXPECT_FALSE(executor.Execute(response, RequestParams("/silent", 0), 1));
        ExpectError(HostError::Aborted);
        ++ended;
    };
    std::thread one([&] { call(first); });
    std::thread other([&] { call(second); });
    std::this_thread::sleep_for(100ms);
    const Clock::time_point start = Clock::now();
    first.Cancel();
    one.join();
    EXPECT_LT(MsSince(start), 200);
    EXPECT_EQ(ended, 1);
    second.Cancel();
    other.join();
    const CallScope scope({}, 0, first);
    RspInfos response;
    EXPECT_FALSE(executor.Execute(response, RequestParams("/silent", 0), 1)) << "nothing begins any more";
    ExpectError(HostError::Aborted);
}

// NEXWIRE_CANCELLATIONS: how often; a long run under a sanitizer takes 10000.
TEST(CallScopes, CancellingAtAnyMomentLosesNoCall)
{
    RawServer server;
    server.SetDefault(Reply().Hang());
    HttpExecutorOptions options;
    options.baseAddress = server.Base();
    auto executor = std::make_unique<ScopedExecutor>(std::make_unique<HttpRequestExecutor>(options));
    const char* const wanted = std::getenv("NEXWIRE_CANCELLATIONS");
    const int times = wanted == nullptr ? 300 : std::atoi(wanted);
    // One call on either side that nobody cancels until the end.
    CancelToken bystander;
    std::atomic<bool> stayed{true};
    std::thread beside([&] {
        const CallScope scope({}, 0, bystander);
        RspInfos response;
        EXPECT_FALSE(executor->Execute(response, RequestParams("/beside", 0), 1));
        ExpectError(HostError::Aborted);
        stayed = bystander.Cancelled();
    });
    std::vector<std::int64_t> late;
    for (int i = 0; i < times; ++i) {
        CancelToken token;
        Clock::time_point pulled;
        std::thread puller([&] {
            std::this_thread::sleep_for(std::chrono::microseconds(i * 7 % 900));
            pulled = Clock::now();
            token.Cancel();
        });
        const CallScope scope({}, 5000, token);
        RspInfos response;
        EXPECT_FALSE(executor->Execute(response, RequestParams("/silent", 0), 1));
        const Clock::time_point returned = Clock::now();
        ExpectError(HostError::Aborted);
        puller.join();
        late.push_back(std::chrono::duration_cast<std::chrono::microseconds>(returned - pulled).count());
    }
    EXPECT_TRUE(stayed);
    bystander.Cancel();
    beside.join();
    EXPECT_TRUE(stayed) << "it ended on its own";
    std::sort(late.begin(), late.end());
    EXPECT_LT(late[late.size() / 2], 10000) << "us; a busy machine may take longer now and then";
    EXPECT_LT(late.back(), 2000000);
    for (const int percent : {50, 99, 100}) {
        RecordProperty("us_" + std::to_string(percent),
                       std::to_string(late[(late.size() - 1) * static_cast<std::size_t>(percent) / 100]));
    }
    executor.reset();
    EXPECT_TRUE(server.WaitForOpen(0)) << "a connection is left";
}

// ---- Repetition ----

RetryOptions Quick()
{
    RetryOptions options;
    options.firstDelayMs = 1;
    options.maxDelayMs = 2;
    return options;
}

TEST(Retrying, RepeatsWhatIsSafeAndNothingElse)
{
    const struct {
        std::int32_t category, number, method;
        std::size_t asked;
    } cases[] = {
        {kHostErrorCategory, static_cast<std::int32_t>(HostError::ConnectFailed), 1, 4},
        {kHostErrorCategory, static_cast<std::int32_t>(HostError::ResolveFailed), 3, 4},
        {kHostErrorCategory, static_cast<std::int32_t>(HostError::AnswerIncomplete), 0, 4},
        {kHostErrorCategory, static_cast<std::int32_t>(HostError::AnswerIncomplete), 1, 1},
        {kHostErrorCategory, static_cast<std::int32_t>(HostError::NotRepeated), 2, 4},
        {kHostErrorCategory, static_cast<std::int32_t>(HostError::NotRepeated), 3, 1},
        {kHostErrorCategory, static_cast<std::int32_t>(HostError::TlsFailed), 0, 1},
        {kHostErrorCategory, static_cast<std::int32_t>(HostError::Aborted), 0, 1},
        {kHostErrorCategory, static_cast<std::int32_t>(HostError::DeadlinePassed), 0, 1},
        {kHttpStatusCategory, 503, 2, 4},
        {kHttpStatusCategory, 503, 1, 1},
        {kHttpStatusCategory, 404, 0, 1},
        {kHttpStatusCategory, 500, 0, 1},
        {7, 28, 0, 1},
    };
    for (const auto& each : cases) {
        Scripted::Log log;
        log.answer = [&](RspInfos&, const RequestParams&) { return FailWith(each.category, each.number); };
        RetryingExecutor executor(std::make_unique<Scripted>(log), Quick());
        RspInfos response;
        EXPECT_FALSE(executor.Execute(response, RequestParams("/a", each.method), 1));
        EXPECT_EQ(log.asked.size(), each.asked) << each.category << "-" << each.number << " method " << each.method;
        EXPECT_EQ(Keel::Error::GetLastError().number, each.number);
        EXPECT_EQ(Keel::Error::GetLastError().text, each.asked > 1 ? "scripted (tried 4 times)" : "scripted");
    }
    Scripted::Log log;
    log.answer = [&](RspInfos&, const RequestParams&) { return FailWith(HostError::AnswerIncomplete); };
    RetryOptions named = Quick();
    named.methods = {3};
    RetryingExecutor executor(std::make_unique<Scripted>(log), named);
    RspInfos response;
    executor.Execute(response, RequestParams("/a", 0), 1);
    EXPECT_EQ(log.asked.size(), 1u);
    executor.Execute(response, RequestParams("/a", 3), 1);
    EXPECT_EQ(log.asked.size(), 5u) << "what the caller names";
}

TEST(Retrying, StaysWithinTimeAndBudgetAndHeedsTheServer)
{
    Scripted::Log log;
    int failures = 2;
    std::string after;
    log.answer = [&](RspInfos& response, const RequestParams&) {
        response.headers = {{"retry-after", after}};
        return failures-- <= 0 || FailWith(kHttpStatusCategory, 503);
    };
    RetryingExecutor executor(std::make_unique<Scripted>(log), Quick());
    RspInfos response;
    RequestParams request("/a", 0);
    request.timeoutMs = 3000;
    EXPECT_TRUE(executor.Execute(response, request, 1));
    EXPECT_EQ(log.asked.size(), 3u);
    EXPECT_LE(log.asked[2].timeoutMs, log.asked[1].timeoutMs) << "each attempt gets what is left";

    failures = 1;
    after = "1";
    Clock::time_point start = Clock::now();
    EXPECT_TRUE(executor.Execute(response, request, 1));
    EXPECT_GE(MsSince(start), 1000);

    failures = 1;
    after = "60"; // Behind the time of the request: not waited for.
    start = Clock::now();
    EXPECT_FALSE(executor.Execute(response, request, 1));
    EXPECT_LT(MsSince(start), 900);

    after = "Thu, 31 Dec 2037 23:55:55 GMT";
    failures = 1;
    EXPECT_FALSE(executor.Execute(response, request, 1));
    after = "Sun, 06 Nov 1994 08:49:37 GMT";
    failures = 1;
    EXPECT_TRUE(executor.Execute(response, request, 1));

    after.clear();
    failures = 1000000;
    log.asked.clear();
    for (int i = 0; i < 100; ++i) {
        executor.Execute(response, request, 1);
    }
    EXPECT_LE(log.asked.size(), 100u + 10u + 20u) << "repetitions are a share of the calls";
}

TEST(Retrying, WaitsDoubleUpToTheirCap)
{
    Scripted::Log log;
    std::vector<Clock::time_point> when;
    log.answer = [&](RspInfos&, const RequestParams&) {
        when.push_back(Clock::now());
        return FailWith(HostError::ConnectFailed);
    };
    RetryOptions options;
    options.firstDelayMs = 20;
    options.maxDelayMs = 50;
    options.random = [] { return 1.0; };
    RetryingExecutor executor(std::make_unique<Scripted>(log), options);
    RspInfos response;
    executor.Execute(response, RequestParams("/a", 1), 1);
    ASSERT_EQ(when.size(), 4u);
    EXPECT_GE(when[1] - when[0], 20ms);
    EXPECT_GE(when[2] - when[1], 40ms);
    EXPECT_GE(when[3] - when[2], 50ms);
    EXPECT_LT(when[3] - when[0], 1000ms);
}

TEST(Retrying, ACancelledScopeEndsTheWaitAndADelay)
{
    Scripted::Log log;
    log.answer = [](RspInfos&, const RequestParams&) { return FailWith(HostError::ConnectFailed); };
    RetryOptions options;
    options.firstDelayMs = options.maxDelayMs = 20000;
    options.random = [] { return 1.0; };
    FaultRule delay;
    delay.fault = FaultRule::Fault::Delay;
    delay.delayMs = 20000;
    std::unique_ptr<IRequestExecutor> waiting[2];
    waiting[0] = std::make_unique<RetryingExecutor>(std::make_unique<Scripted>(log), options);
    waiting[1] = std::make_unique<FaultExecutor>(nullptr, std::vector<FaultRule>{delay});
    for (const auto& executor : waiting) {
        CancelToken token;
        std::thread puller([&] {
            std::this_thread::sleep_for(50ms);
            token.Cancel();
        });
        const CallScope scope({}, 0, token);
        RspInfos response;
        const Clock::time_point start = Clock::now();
        EXPECT_FALSE(executor->Execute(response, RequestParams("/a", 0), 1));
        EXPECT_LT(MsSince(start), 2000);
        ExpectError(HostError::Aborted);
        puller.join();
    }
}

// ---- Counting ----

TEST(Observing, FoldsIdentifiersAndCountsWhatPasses)
{
    Scripted::Log log;
    ObserveOptions options;
    options.mostPatterns = 3;
    std::vector<std::string> traced;
    options.begin = [&](const ObservedCall& call) { traced.push_back("begin " + call.scope); };
    options.end = [&](const ObservedCall& call) { traced.push_back(call.success ? "end" : "failed"); };
    ObservingExecutor executor(std::make_unique<Scripted>(log), options);
    RspInfos response;
    for (const char* device : {"AC000000000000000000000000000001", "AC000000000000000000000000000002", "17", "a%2Fb"}) {
        const CallScope scope("devices");
        executor.Execute(response, RequestParams(std::string("/7730/v1/devices/") + device + "/state", 2, "four"), 1);
    }
    log.answer = [](RspInfos&, const RequestParams&) { return FailWith(HostError::ConnectFailed); };
    executor.Execute(response, RequestParams("/7730/v1/devices", 0), 1);
    executor.Execute(response, RequestParams("/7730/v1/devices", 1), 1);
    executor.Execute(response, RequestParams("/7730/v1/\"more\"", 1), 1);
    executor.Execute(response, RequestParams("/7730/v1/other", 1), 1);
    const std::vector<CallStatistics> all = executor.Snapshot();
    ASSERT_EQ(all.size(), 4u);
    EXPECT_EQ(all[0].path, "(others)");
    EXPECT_EQ(all[0].latency.Count(), 2u);
    EXPECT_EQ(all[1].failures, 1u);
    EXPECT_EQ(all[3].path, "/7730/v1/devices/*/state");
    EXPECT_EQ(all[3].latency.Count(), 4u);
    EXPECT_EQ(all[3].failures, 0u);
    EXPECT_EQ(all[3].bytesOut, 16u);
    EXPECT_EQ(all[3].bytesIn, 4 * std::string(R"({"code":"0-0"})").size());
    EXPECT_EQ(traced[0], "begin devices");
    EXPECT_EQ(traced[1], "end");
    EXPECT_EQ(traced.back(), "failed");
    for (const auto& [category, number] :
         {std::make_pair(kHttpStatusCategory, 500), {kHostErrorCategory, 3}, {kHostErrorCategory, 4}}) {
        log.answer = [at = category, which = number](RspInfos&, const RequestParams&) { return FailWith(at, which); };
        executor.Execute(response, RequestParams("/7730/v1/devices", 0), 1);
    }
    const std::string text = executor.Prometheus();
    EXPECT_NE(text.find("nexwire_calls_total{path=\"/7730/v1/devices/*/state\",method=\"2\"} 4\n"), std::string::npos);
    EXPECT_NE(text.find("nexwire_call_seconds_bucket{path=\"(others)\",method=\"-1\",le=\"+Inf\"} 2\n"),
              std::string::npos);
    for (const char* reason : {"status", "late", "cancelled", "other"}) {
        EXPECT_NE(text.find(std::string("{path=\"/7730/v1/devices\",method=\"0\",reason=\"") + reason + "\"} 1\n"),
                  std::string::npos)
            << text;
    }
}

TEST(Observing, PercentilesAreAtMostAnEighthTooLong)
{
    LatencyHistogram histogram;
    EXPECT_EQ(histogram.PercentileUs(99), 0u);
    for (std::uint64_t us = 1; us <= 10000; ++us) {
        histogram.Add(us);
    }
    for (const double percent : {1.0, 50.0, 90.0, 99.0, 100.0}) {
        const double exact = percent * 100;
        EXPECT_GE(static_cast<double>(histogram.PercentileUs(percent)), exact);
        EXPECT_LE(static_cast<double>(histogram.PercentileUs(percent)), exact * 1.125 + 1) << percent;
    }
    histogram.Add(~std::uint64_t{0});
    EXPECT_EQ(histogram.Count(), 10001u);
    EXPECT_LE(histogram.Within(5000), 5000u);
    EXPECT_GE(histogram.Within(5000), 4400u);
}

// ---- Sessions ----

TEST(Token, IsRenewedOnceForAllThatWait)
{
    Scripted::Log log;
    std::atomic<int> valid{1};
    std::atomic<int> renewals{0};
    log.answer = [&](RspInfos& response, const RequestParams& request) {
        const auto sid = request.headers.find("SID");
        const bool good = sid != request.headers.end() && sid->second == "s" + std::to_string(valid.load());
        response.body = good ? R"({"code":"0-0"})" : R"({"code":"1-17","msg":"session"})";
        return true;
    };
    TokenOptions options;
    options.endedCategory = 1;
    options.endedNumber = 17;
    TokenExecutor* own = nullptr;
    options.renew = [&](const std::string&) {
        std::this_thread::sleep_for(20ms); // The others come meanwhile.
        RspInfos inner;
        EXPECT_TRUE(own->Execute(inner, RequestParams("/login", 1), 1)) << "it may ask the platform itself";
        ++renewals;
        return "s" + std::to_string(valid.load());
    };
    TokenExecutor executor(std::make_unique<Scripted>(log), options);
    own = &executor;
    const auto all = [&] {
        std::vector<std::thread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([&] {
                RspInfos response;
                EXPECT_TRUE(executor.Execute(response, RequestParams("/a", 0), 1));
                EXPECT_EQ(response.body, R"({"code":"0-0"})");
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    };
    all();
    EXPECT_EQ(renewals, 1);
    valid = 2;
    all();
    EXPECT_EQ(renewals, 2);
    RequestParams marked("/a", 0);
    marked.headers["SID"] = "mine";
    RspInfos response;
    EXPECT_TRUE(executor.Execute(response, marked, 1));
    EXPECT_EQ(renewals, 2) << "a session of its own is the caller's matter";
}

TEST(Token, WithoutANewOneThePlatformsAnswerStands)
{
    Scripted::Log log;
    int asked = 0;
    TokenOptions options;
    options.renew = [&](const std::string& ended) {
        ++asked;
        FailWith(HostError::ConnectFailed);
        return ended.empty() && asked > 1 ? std::string("s") : std::string();
    };
    TokenExecutor executor(std::make_unique<Scripted>(log), options);
    RspInfos response;
    EXPECT_FALSE(executor.Execute(response, RequestParams("/a", 0), 1));
    ExpectError(HostError::RequestRefused);
    EXPECT_TRUE(log.asked.empty());
    EXPECT_TRUE(executor.Execute(response, RequestParams("/a", 0), 1));
    log.answer = [](RspInfos&, const RequestParams&) { return FailWith(kHttpStatusCategory, 401); };
    EXPECT_FALSE(executor.Execute(response, RequestParams("/a", 0), 1));
    EXPECT_EQ(Keel::Error::GetLastError().number, 401) << "not what the renewal left";
    EXPECT_EQ(asked, 3);
}

TEST(Token, ThoseThatWaitShareAFailureAndMayLeave)
{
    Scripted::Log log;
    log.answer = [](RspInfos&, const RequestParams&) { return FailWith(kHttpStatusCategory, 401); };
    std::atomic<int> asked{0};
    TokenOptions options;
    options.renew = [&](const std::string& ended) {
        ++asked;
        std::this_thread::sleep_for(ended.empty() ? 0ms : 600ms);
        return ended.empty() ? std::string("s") : std::string();
    };
    TokenExecutor executor(std::make_unique<Scripted>(log), options);
    RspInfos first;
    RequestParams marked("/a", 0);
    EXPECT_FALSE(executor.Execute(first, marked, 1)); // Asks for the first one, and for another in its place.
    EXPECT_EQ(asked, 2);
    const auto call = [&](const CancelToken& token, std::int32_t timeoutMs) {
        const CallScope scope({}, 0, token);
        RspInfos response;
        RequestParams request("/a", 0);
        request.timeoutMs = timeoutMs;
        executor.Execute(response, request, 1);
        return Keel::Error::GetLastError();
    };
    std::thread renewing([&] { EXPECT_EQ(call({}, 40000).number, 401); });
    while (asked != 3) {
        std::this_thread::sleep_for(1ms);
    }
    std::vector<std::thread> waiting;
    for (int i = 0; i < 4; ++i) {
        waiting.emplace_back([&] { EXPECT_EQ(call({}, 40000).number, 401); });
    }
    const Clock::time_point start = Clock::now();
    CancelToken pulled;
    std::thread puller([&] {
        std::this_thread::sleep_for(20ms);
        pulled.Cancel();
    });
    EXPECT_EQ(call(pulled, 40000).number, static_cast<std::int32_t>(HostError::Aborted));
    EXPECT_EQ(call({}, 10).number, static_cast<std::int32_t>(HostError::DeadlinePassed));
    EXPECT_LT(MsSince(start), 500) << "neither waited to the end";
    puller.join();
    renewing.join();
    for (std::thread& thread : waiting) {
        thread.join();
    }
    EXPECT_EQ(asked, 3) << "one renewal, and one failure, for all";
}

TEST(Token, TheRenewalCountsInTheTimeOfTheCall)
{
    Scripted::Log log;
    TokenOptions options;
    options.renew = [&](const std::string&) {
        std::this_thread::sleep_for(30ms);
        return std::string("s");
    };
    TokenExecutor executor(std::make_unique<Scripted>(log), options);
    RspInfos response;
    RequestParams request("/a", 0);
    request.timeoutMs = 5000;
    log.answer = [&](RspInfos&, const RequestParams&) {
        return log.asked.size() > 1 || FailWith(kHttpStatusCategory, 401);
    };
    EXPECT_TRUE(executor.Execute(response, request, 1));
    ASSERT_EQ(log.asked.size(), 2u);
    EXPECT_LE(log.asked[0].timeoutMs, 4970);
    EXPECT_LE(log.asked[1].timeoutMs, 4940);
    request.timeoutMs = 20;
    log.asked.clear();
    EXPECT_FALSE(executor.Execute(response, request, 1));
    ExpectError(HostError::DeadlinePassed);
    EXPECT_EQ(log.asked.size(), 1u);
}

// ---- Faults ----

TEST(Faults, StrikeByRuleAndSeed)
{
    Scripted::Log log;
    log.answer = [](RspInfos& response, const RequestParams&) {
        response.body = "12345678";
        return true;
    };
    FaultRule lost;
    lost.path = "/lost";
    lost.method = 1;
    lost.times = 1;
    FaultRule unsent;
    unsent.path = "/unsent";
    unsent.fault = FaultRule::Fault::Unsent;
    unsent.error = HostError::ConnectFailed;
    FaultRule torn;
    torn.path = "/torn";
    torn.fault = FaultRule::Fault::Torn;
    FaultRule delay;
    delay.path = "/late";
    delay.fault = FaultRule::Fault::Delay;
    delay.delayMs = 30;
    FaultRule answer;
    answer.path = "/late";
    answer.fault = FaultRule::Fault::Answer;
    answer.body = "made up";
    FaultRule seldom;
    seldom.path = "/seldom";
    seldom.fault = FaultRule::Fault::Status;
    seldom.probability = 0.25;
    const std::vector<FaultRule> rules = {lost, unsent, torn, delay, answer, seldom};
    FaultExecutor executor(std::make_unique<Scripted>(log), rules, 7);
    RspInfos response;
    EXPECT_TRUE(executor.Execute(response, RequestParams("/lost", 0), 1)) << "another method";
    EXPECT_FALSE(executor.Execute(response, RequestParams("/lost", 1), 1));
    ExpectError(HostError::AnswerIncomplete);
    EXPECT_TRUE(response.body.empty());
    EXPECT_EQ(log.asked.size(), 2u) << "it was sent";
    EXPECT_TRUE(executor.Execute(response, RequestParams("/lost", 1), 1)) << "once only";
    EXPECT_FALSE(executor.Execute(response, RequestParams("/unsent", 1), 1));
    EXPECT_EQ(log.asked.size(), 3u);
    EXPECT_TRUE(executor.Execute(response, RequestParams("/torn", 1), 1));
    EXPECT_EQ(response.body, "1234");
    const Clock::time_point start = Clock::now();
    EXPECT_TRUE(executor.Execute(response, RequestParams("/late", 1), 1));
    EXPECT_GE(MsSince(start), 29);
    EXPECT_EQ(response.body, "made up");
    RequestParams hasty("/late", 1);
    hasty.timeoutMs = 5;
    EXPECT_FALSE(executor.Execute(response, hasty, 1));
    ExpectError(HostError::DeadlinePassed);
    const auto pattern = [&](std::uint32_t seed) {
        FaultExecutor each(std::make_unique<Scripted>(log), rules, seed);
        std::string drawn;
        for (int i = 0; i < 400; ++i) {
            drawn += each.Execute(response, RequestParams("/seldom", 0), 1) ? '.' : 'x';
        }
        return drawn;
    };
    EXPECT_EQ(pattern(3), pattern(3));
    EXPECT_NE(pattern(3), pattern(4));
    const std::string drawn = pattern(3);
    EXPECT_NEAR(static_cast<double>(std::count(drawn.begin(), drawn.end(), 'x')), 100.0, 40.0);
    EXPECT_EQ(executor.Struck(), (std::vector<std::uint64_t>{1, 1, 1, 2, 2, 0}));
}

// ---- Together ----

TEST(MakeExecutor, PutsThePartsInTheOrderThatWorks)
{
    RawServer server;
    server.SetDefault(Reply::Json(R"({"code":"0-0"})"));
    ExecutorOptions options;
    options.http.baseAddress = server.Base();
    FaultRule twice;
    twice.fault = FaultRule::Fault::Unsent;
    twice.error = HostError::ConnectFailed;
    twice.times = 2;
    options.faults = {twice};
    options.retry = Quick();
    int renewals = 0;
    options.token = TokenOptions();
    options.token->renew = [&](const std::string&) { return "s" + std::to_string(++renewals); };
    options.observe = ObserveOptions();
    ObservingExecutor* observing = nullptr;
    const std::unique_ptr<IRequestExecutor> executor = MakeExecutor(options, &observing);
    ASSERT_NE(observing, nullptr);
    RspInfos response;
    const CallScope scope({}, 5000);
    EXPECT_TRUE(executor->Execute(response, RequestParams("/a", 1), 1)) << Keel::Error::GetLastError().text;
    EXPECT_EQ(renewals, 1);
    ASSERT_EQ(observing->Snapshot().size(), 1u);
    EXPECT_EQ(observing->Snapshot()[0].latency.Count(), 1u) << "the caller's calls, not the attempts";
    EXPECT_EQ(observing->Snapshot()[0].failures, 0u);
}

TEST(MakeExecutor, TellsItsPartsAndEachStepAroundATransportOfTheHosts)
{
    Scripted::Log log;
    ExecutorOptions options;
    FaultRule once;
    once.fault = FaultRule::Fault::Status;
    once.times = 1;
    options.faults = {once};
    options.retry = Quick();
    options.retry->attempts = 2;
    options.token = TokenOptions();
    options.token->renew = [&](const std::string&) { return std::string("s"); };
    std::vector<std::string> steps;
    options.trace = [&](const TraceStep& step) { steps.push_back(step.part + ": " + step.text); };
    const std::unique_ptr<IRequestExecutor> executor = MakeExecutor(std::make_unique<Scripted>(log), options);
    RspInfos response;
    {
        const CallScope scope("import");
        EXPECT_TRUE(executor->Execute(response, RequestParams("/a", 2), 1));
    }
    log.answer = [](RspInfos&, const RequestParams&) { return FailWith(HostError::AnswerIncomplete); };
    EXPECT_FALSE(executor->Execute(response, RequestParams("/b", 1), 1));
    for (std::string& step : steps) { // Waits are drawn, and time passes.
        const std::size_t unit = step.find(" ms");
        if (unit != std::string::npos) {
            const std::size_t number = step.find_last_not_of("0123456789", unit - 1) + 1;
            step.erase(number, unit - number);
        }
    }
    EXPECT_EQ(steps,
              (std::vector<std::string>{
                  "parts: scope > session > retry (at most 2 attempts) > faults (rules: 1) > transport",
                  "call: method code 2, /a, in import", "session: asks for one", "session: is there",
                  "faults: rule 1 strikes", "retry: waits  ms, then attempt 2 of at most 2",
                  "transport: attempt 1, within  ms", "transport: answered, 14 bytes", "call: answered, 14 bytes",
                  "call: method code 1, /b", "transport: attempt 1, within  ms", "transport: scripted [9100-9]",
                  "retry: not tried again: it may have been carried out", "call: scripted [9100-9]"}));
}

} // namespace
