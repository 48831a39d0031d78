#include "nexwire/host/Pool.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

namespace nexwire {
namespace host {

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

Pool::Pool(const PoolOptions& options) : m_state(new State)
{
    m_state->options = options;
    m_state->options.queue = std::max<std::size_t>(options.queue, 1);
    for (std::size_t i = 0; i < std::max<std::size_t>(options.threads, 1); ++i) {
        m_state->threads.emplace_back([this] { m_state->Run(); });
    }
}

Pool::~Pool()
{
    std::deque<Task> left;
    std::list<CancelToken> running;
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        m_state->ending = true;
        left.swap(m_state->waiting);
        running = m_state->running;
    }
    m_state->changed.notify_all();
    for (CancelToken& token : running) {
        token.Cancel();
    }
    for (const Task& task : left) {
        task.refuse("the pool ended");
    }
    for (std::thread& thread : m_state->threads) {
        thread.join();
    }
}

std::size_t Pool::Pending() const
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->waiting.size() + m_state->running.size();
}

void Pool::Take(Task task)
{
    std::unique_lock<std::mutex> lock(m_state->mutex);
    const auto room = [this] { return m_state->ending || m_state->waiting.size() < m_state->options.queue; };
    if (m_state->options.waitWhenFull) {
        m_state->changed.wait(lock, room);
    }
    if (!room() || m_state->ending) {
        const char* const why = m_state->ending ? "the pool ended" : "the pool is full";
        lock.unlock();
        task.refuse(why);
        return;
    }
    m_state->waiting.push_back(std::move(task));
    lock.unlock();
    m_state->changed.notify_all();
}

void Pool::Post(std::function<void()> function)
{
    if (m_state->options.post) {
        m_state->options.post(std::move(function));
    } else {
        function();
    }
}

} // namespace host
} // namespace nexwire
