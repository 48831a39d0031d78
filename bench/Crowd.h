#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace bench {

/// Threads that stay and do the same step at the same time, each with its number. Short turns: whatever else the
/// machine does meets both sides of a comparison alike.
class Crowd {
public:
    using Step = std::function<bool(std::size_t)>;
    static constexpr std::size_t kThreads = 64;
    static constexpr int kCallsEach = 10;

    Crowd()
    {
        for (std::size_t i = 0; i < kThreads; ++i) {
            threads_.emplace_back([this, i] { Work(i); });
        }
    }
    ~Crowd()
    {
        Start(nullptr);
        for (std::thread& thread : threads_) {
            thread.join();
        }
    }
    Crowd(const Crowd&) = delete;
    Crowd& operator=(const Crowd&) = delete;

    /// All calls of all threads; false when one of them says so.
    bool Run(const Step& step)
    {
        Start(&step);
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [this] { return busy_ == 0; });
        return good_;
    }

private:
    void Start(const Step* step)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        step_ = step;
        busy_ = kThreads;
        good_ = true;
        ++round_;
        changed_.notify_all();
    }

    void Work(std::size_t number)
    {
        std::unique_lock<std::mutex> lock(mutex_);
        for (int seen = 0;;) {
            changed_.wait(lock, [&] { return round_ != seen; });
            seen = round_;
            if (step_ == nullptr) {
                return;
            }
            lock.unlock();
            bool good = true;
            for (int i = 0; i < kCallsEach; ++i) {
                good = (*step_)(number) && good;
            }
            lock.lock();
            good_ = good_ && good;
            if (--busy_ == 0) {
                changed_.notify_all();
            }
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    const Step* step_ = nullptr;
    std::size_t busy_ = 0;
    int round_ = 0;
    bool good_ = true;
    std::vector<std::thread> threads_;
};

} // namespace bench
