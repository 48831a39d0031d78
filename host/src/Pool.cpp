#include "nexwire/host/Pool.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

namespace nexwire::host {

struct Pool::State {
    PoolOptions options;
    mutable std::mutex mutex;
    std::condition_variable changed; ///< Work came, room came, or the end.
    std::deque<Task> waiting;
    std::list<CancelToken> running;
    bool ending = false;
    std::vector<std::thread> threads;

    void Run()
    {
        std::unique_lock<std::mutex> lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return ending || !waiting.empty(); });
            if (ending) {
                return;
            }
            Task task = std::move(waiting.front());
            waiting.pop_front();
            const auto own = running.insert(running.end(), task.token);
            lock.unlock();
            changed.notify_all();
            if (task.token.Cancelled()) {
                task.refuse("cancelled before it began");
            } else {
                const CallScope scope({}, options.deadlineMs, task.token);
                task.run();
            }
            task = Task(); // What it holds goes before the lock is taken.
            lock.lock();
            running.erase(own);
        }
    }
};

Pool::Pool(const PoolOptions& options) : state_(new State)
{
    state_->options = options;
    state_->options.queue = std::max<std::size_t>(options.queue, 1);
    for (std::size_t i = 0; i < std::max<std::size_t>(options.threads, 1); ++i) {
        state_->threads.emplace_back([this] { state_->Run(); });
    }
}

Pool::~Pool()
{
    std::deque<Task> left;
    std::list<CancelToken> running;
    {
        const std::lock_guard<std::mutex> lock(state_->mutex);
        state_->ending = true;
        left.swap(state_->waiting);
        running = state_->running;
    }
    state_->changed.notify_all();
    for (CancelToken& token : running) {
        token.Cancel();
    }
    for (const Task& task : left) {
        task.refuse("the pool ended");
    }
    for (std::thread& thread : state_->threads) {
        thread.join();
    }
}

std::size_t Pool::Pending() const
{
    const std::lock_guard<std::mutex> lock(state_->mutex);
    return state_->waiting.size() + state_->running.size();
}

void Pool::Take(Task task)
{
    std::unique_lock<std::mutex> lock(state_->mutex);
    const auto room = [this] { return state_->ending || state_->waiting.size() < state_->options.queue; };
    if (state_->options.waitWhenFull) {
        state_->changed.wait(lock, room);
    }
    if (!room() || state_->ending) {
        const char* const why = state_->ending ? "the pool ended" : "the pool is full";
        lock.unlock();
        task.refuse(why);
        return;
    }
    state_->waiting.push_back(std::move(task));
    lock.unlock();
    state_->changed.notify_all();
}

void Pool::Post(std::function<void()> function)
{
    if (state_->options.post) {
        state_->options.post(std::move(function));
    } else {
        function();
    }
}

} // namespace nexwire::host
