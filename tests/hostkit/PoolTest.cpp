#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "nexwire/host/Pages.h"
#include "nexwire/host/Pool.h"
#include "protocol/Attendance/Calculation.h"

namespace {

using namespace nexwire::host;
using namespace std::chrono_literals;

/// Runs until its scope is cancelled.
void UntilCancelled()
{
    while (!IsCancelled()) {
        std::this_thread::sleep_for(1ms);
    }
}

TEST(Pools, RunWorkAndHandOutWhatItGaveOrThrew)
{
    Pool pool({});
    std::vector<Pool::Work<int>> all;
    for (int i = 0; i < 100; ++i) {
        all.push_back(pool.Submit([i] { return i * i; }));
    }
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(all[static_cast<std::size_t>(i)].future.get(), i * i);
    }
    auto thrown = pool.Submit([]() -> int { throw std::out_of_range("far"); });
    EXPECT_THROW(thrown.future.get(), std::out_of_range);
    std::thread::id ran;
    pool.Submit([&] { ran = std::this_thread::get_id(); }).future.get();
    EXPECT_NE(ran, std::this_thread::get_id());
}

TEST(Pools, AFullQueueRefusesOrWaits)
{
    for (const bool wait : {false, true}) {
        PoolOptions options;
        options.threads = 1;
        options.queue = 2;
        options.waitWhenFull = wait;
        Pool pool(options);
        std::atomic<bool> begun{false};
        auto running = pool.Submit([&] {
            begun = true;
            UntilCancelled();
        });
        while (!begun) {
            std::this_thread::sleep_for(1ms);
        }
        EXPECT_EQ(pool.Pending(), 1u);
        auto second = pool.Submit([] { return 2; });
        auto third = pool.Submit([] { return 3; });
        std::thread ending;
        if (wait) {
            ending = std::thread([&] {
                std::this_thread::sleep_for(20ms);
                running.token.Cancel();
            });
        }
        auto fourth = pool.Submit([] { return 4; });
        if (wait) {
            EXPECT_EQ(fourth.future.get(), 4);
            ending.join();
        } else {
            EXPECT_THROW(fourth.future.get(), PoolRefused);
            running.token.Cancel();
        }
        EXPECT_EQ(second.future.get() + third.future.get(), 5);
        third = pool.Submit([] { return 0; });
        third.future.get();
    }
}

TEST(Pools, TheEndCancelsWhatRunsAndRefusesWhatWaits)
{
    std::future<void> ran;
    std::future<void> waited;
    {
        PoolOptions options;
        options.threads = 1;
        Pool pool(options);
        std::atomic<bool> begun{false};
        ran = pool.Submit([&] {
                      begun = true;
                      UntilCancelled();
                  })
                  .future;
        while (!begun) {
            std::this_thread::sleep_for(1ms);
        }
        waited = pool.Submit([] {}).future;
    }
    EXPECT_NO_THROW(ran.get());
    EXPECT_THROW(waited.get(), PoolRefused);
}

TEST(Pools, ACompletionRunsWhereTheHostWantsIt)
{
    std::mutex mutex;
    std::deque<std::function<void()>> messages; // A window's, say.
    PoolOptions options;
    options.post = [&](std::function<void()> message) {
        const std::lock_guard<std::mutex> lock(mutex);
        messages.push_back(std::move(message));
    };
    Pool pool(options);
    int seen = 0;
    std::thread::id where;
    pool.Submit([] { return std::string("done"); },
                [&](const std::string& text) {
                    seen = text == "done" ? 1 : -1;
                    where = std::this_thread::get_id();
                });
    for (int i = 0; seen == 0 && i < 2000; ++i) {
        std::unique_lock<std::mutex> lock(mutex);
        if (!messages.empty()) {
            const auto message = std::move(messages.front());
            messages.pop_front();
            lock.unlock();
            message();
            continue;
        }
        lock.unlock();
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(where, std::this_thread::get_id());
}

TEST(Pools, ACompletionIsToldOfFailuresToo)
{
    std::mutex mutex;
    std::vector<std::string> told;
    const auto note = [&](const std::string& what) {
        const std::lock_guard<std::mutex> lock(mutex);
        told.push_back(what);
    };
    const auto failed = [&](const std::exception_ptr& why) {
        try {
            std::rethrow_exception(why);
        } catch (const std::exception& error) {
            note(error.what());
        }
    };
    {
        PoolOptions options;
        options.threads = 1;
        Pool pool(options);
        pool.Submit([] { throw std::runtime_error("thrown"); }, [&] { note("wrong"); }, failed);
        pool.Submit([] {}, [&] { note("done"); }, failed);
        while (pool.Pending() != 0) {
            std::this_thread::sleep_for(1ms);
        }
        std::atomic<bool> begun{false};
        const auto work = [&] {
            begun = true;
            UntilCancelled();
        };
        pool.Submit(work, [&] { note("ended"); });
        while (!begun) {
            std::this_thread::sleep_for(1ms);
        }
        pool.Submit([] {}, [&] { note("wrong"); }, failed);
    }
    ASSERT_EQ(told.size(), 4u);
    std::sort(told.begin() + 2, told.end());
    EXPECT_EQ(told, (std::vector<std::string>{"thrown", "done", "ended", "the pool ended"}));
}

// ---- Pages ----

struct Condition {
    std::int32_t pageNo = 1;
    std::int32_t pageSize = 10;
};

struct Batch {
    std::string guid;
    std::vector<int> batchSendDataList{1, 2};
};

TEST(Pages, EndWhereThePlatformEnds)
{
    std::vector<int> seen;
    int left = 25;
    const auto read = [&](std::vector<int>& page, const Condition& asked) {
        page.assign(static_cast<std::size_t>(std::min(left, 10)), asked.pageNo);
        left -= static_cast<int>(page.size());
        return asked.pageNo < 100;
    };
    const auto each = [&](const std::vector<int>& page) {
        seen.insert(seen.end(), page.begin(), page.end());
        return page.size();
    };
    EXPECT_EQ(ForEachPage<std::vector<int>>(Condition(), read, each), PagesEnd::Complete);
    EXPECT_EQ(seen.size(), 25u);
    EXPECT_EQ(seen.back(), 3);
    left = 1 << 30;
    EXPECT_EQ(ForEachPage<std::vector<int>>(Condition(), read, each), PagesEnd::Failed);
    CancelToken token;
    token.Cancel();
    const CallScope scope({}, 0, token);
    EXPECT_EQ(ForEachPage<std::vector<int>>(Condition(), read, each), PagesEnd::Cancelled);
    const CallScope late("late", 1);
    std::this_thread::sleep_for(2ms);
    EXPECT_TRUE(IsLate());
}

TEST(Pages, AreLeftWhereThePlatformDoesNotMove)
{
    int calls = 0;
    const auto same = [&](protocol::StatisticsCalcDataData& page, const Condition& asked) {
        ++calls;
        page.statisticsCalcData.statisticsCalcList.resize(10);
        page.statisticsCalcData.pageNo = std::min(asked.pageNo, 3);
        return true;
    };
    int taken = 0;
    const auto count = [&](const protocol::StatisticsCalcDataData&) {
        ++taken;
        return std::size_t{10};
    };
    EXPECT_EQ(ForEachPage<protocol::StatisticsCalcDataData>(Condition(), same, count), PagesEnd::Stuck);
    EXPECT_EQ(calls, 4);
    EXPECT_EQ(taken, 3) << "the page that is the same is not handed out";
    const auto named = [&](const protocol::StatisticsCalcDataData&) { return PageSeen{10, "first"}; };
    calls = 0;
    EXPECT_EQ(ForEachPage<protocol::StatisticsCalcDataData>(Condition(), same, named), PagesEnd::Stuck);
    EXPECT_EQ(calls, 2) << "it numbers its pages, and they are the same";
    const CallScope scope("late", 30);
    const auto slow = [&](std::vector<int>& page, const Condition&) {
        std::this_thread::sleep_for(20ms);
        page.resize(10);
        return true;
    };
    EXPECT_EQ(ForEachPage<std::vector<int>>(Condition(), slow, [](const auto& page) { return page.size(); }),
              PagesEnd::Late);
}

TEST(Pages, ABatchThatDoesNotMoveIsLeft)
{
    int calls = 0;
    std::size_t sent = 0;
    int empty = 0;
    int finishAt = 4;
    const auto read = [&](bool& finished, std::string& guid, std::vector<int>& items, const Batch& asked) {
        ++calls;
        sent += asked.batchSendDataList.size();
        EXPECT_EQ(asked.guid, calls == 1 ? "" : "b");
        if (calls > empty) {
            items = {calls};
        }
        guid = "b";
        finished = calls == finishAt;
        return true;
    };
    std::vector<int> seen;
    const auto each = [&](const std::vector<int>& items) { seen.insert(seen.end(), items.begin(), items.end()); };
    empty = 2;
    EXPECT_EQ(ForEachBatchPage<int>(Batch(), read, each), PagesEnd::Complete);
    EXPECT_EQ(seen, (std::vector<int>{3, 4}));
    EXPECT_EQ(sent, 2u) << "the order goes out once";
    calls = 0;
    empty = finishAt = 1000000;
    EXPECT_EQ(ForEachBatchPage<int>(Batch(), read, each), PagesEnd::Stuck);
    EXPECT_EQ(calls, 3);

    std::string guids = "aabba";
    const auto turning = [&](bool&, std::string& guid, std::vector<int>& items, const Batch&) {
        guid = guids.substr(0, 1);
        guids.erase(0, 1);
        items = {1};
        return true;
    };
    EXPECT_EQ(ForEachBatchPage<int>(Batch(), turning, each), PagesEnd::Stuck);
    EXPECT_EQ(guids, "") << "an identifier that was given up comes again";
    calls = 0;
    const auto again = [&](bool&, std::string& guid, std::vector<protocol::StatisticsCalc>& items, const Batch&) {
        ++calls;
        guid = "b";
        items.resize(2);
        return true;
    };
    EXPECT_EQ(ForEachBatchPage<protocol::StatisticsCalc>(Batch(), again, [](const auto&) {}), PagesEnd::Stuck);
    EXPECT_EQ(calls, 4) << "three pages that are the same as the one before";
}

} // namespace
