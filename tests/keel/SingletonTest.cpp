#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <keel/SingletonImpl.h>

namespace {

struct Counted {
    Counted()
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(20)); // Time for the others to arrive.
        ++made;
    }
    static std::atomic<int> made;
};
std::atomic<int> Counted::made{0};

struct FailsOnce {
    FailsOnce()
    {
        if (++tries == 1) {
            throw 1;
        }
    }
    static int tries;
};
int FailsOnce::tries = 0;

TEST(Singleton, ManyThreadsMakeOne)
{
    std::vector<Counted*> seen(8);
    std::vector<std::thread> threads;
    for (Counted*& slot : seen) {
        threads.emplace_back([&slot] { slot = &Keel::CSingleton<Counted>::Instance(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(Counted::made, 1);
    for (const Counted* const instance : seen) {
        EXPECT_EQ(instance, seen[0]);
    }
}

TEST(Singleton, AFailedConstructionIsTriedAgain)
{
    EXPECT_THROW(Keel::CSingleton<FailsOnce>::Instance(), int);
    EXPECT_NO_THROW(Keel::CSingleton<FailsOnce>::Instance());
    Keel::CSingleton<FailsOnce>::Instance();
    EXPECT_EQ(FailsOnce::tries, 2);
}

} // namespace
