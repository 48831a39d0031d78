#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

using Use = bool (*)(int);

#ifdef _WIN32
using Library = HMODULE;
Library Load()
{
    return LoadLibraryA(NEXWIRE_LOADED);
}
Use Find(Library library)
{
    return reinterpret_cast<Use>(reinterpret_cast<void*>(GetProcAddress(library, "UseTheLibrary")));
}
void Unload(Library library)
{
    FreeLibrary(library);
}
#else
using Library = void*;
Library Load()
{
    return dlopen(NEXWIRE_LOADED, RTLD_NOW | RTLD_LOCAL);
}
Use Find(Library library)
{
    return reinterpret_cast<Use>(dlsym(library, "UseTheLibrary"));
}
void Unload(Library library)
{
    dlclose(library);
}
#endif

/// Threads that were there before the library and end when told to.
class Threads {
public:
    Threads(int count, const Use& use, std::vector<char>& good)
    {
        for (int i = 0; i < count; ++i) {
            all_.emplace_back([this, i, &use, &good] {
                std::unique_lock<std::mutex> lock(mutex_);
                changed_.wait(lock, [this] { return step_ >= 1; });
                if (step_ > 1) {
                    return;
                }
                lock.unlock();
                good[static_cast<std::size_t>(i)] = use(i);
                lock.lock();
                ++used_;
                changed_.notify_all();
                changed_.wait(lock, [this] { return step_ >= 2; });
            });
        }
    }

    ~Threads() { End(); }
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;

    void UseIt()
    {
        std::unique_lock<std::mutex> lock(mutex_);
        step_ = 1;
        changed_.notify_all();
        changed_.wait(lock, [this] { return used_ == all_.size(); });
    }

    void End()
    {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            step_ = 2;
            changed_.notify_all();
        }
        for (std::thread& thread : all_) {
            thread.join();
        }
        all_.clear();
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    int step_ = 0;
    std::size_t used_ = 0;
    std::vector<std::thread> all_;
};

TEST(Loading, ThreadsOutliveTheLibraryAndItIsLoadedAgain)
{
    constexpr int kThreads = 4;
    for (int round = 0; round < 3; ++round) {
        Use use = nullptr;
        std::vector<char> good(kThreads, 0);
        Threads threads(kThreads, use, good);
        const Library library = Load();
        ASSERT_NE(library, nullptr);
        use = Find(library);
        ASSERT_NE(use, nullptr);
        threads.UseIt();
        Unload(library);
        threads.End();
        EXPECT_EQ(good, std::vector<char>(kThreads, 1)) << "round " << round;
    }
}

} // namespace
