// Loads 1,000 persons in the background while the thread of the window goes on.
// Shows Pool with `post`: requests run on its threads, results arrive as messages of the window's loop, which is made
// of the standard library only. 0: all persons came and the loop never stopped; 1: not.

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <iostream>
#include <mutex>
#include <string>

#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/Personnel/Person.h"
#include "nexwire/host/MakeExecutor.h"
#include "nexwire/host/Pool.h"

namespace {

namespace host = nexwire::host;
namespace personnel = protocol::personnelcommon;
using namespace std::chrono_literals;

constexpr int kPersons = 1000;
constexpr int kPage = 100;

/// What a window's thread does all day: messages, and a tick for what moves on the screen.
class MessageLoop {
public:
    /// From any thread.
    void Post(std::function<void()> message)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        messages_.push_back(std::move(message));
        woken_.notify_one();
    }

    /// Until `Quit`; `tick` runs every 10 ms.
    void Run(const std::function<void()>& tick)
    {
        auto next = std::chrono::steady_clock::now();
        for (quit_ = false; !quit_;) {
            std::unique_lock<std::mutex> lock(mutex_);
            if (woken_.wait_until(lock, next, [this] { return !messages_.empty(); })) {
                const std::function<void()> message = std::move(messages_.front());
                messages_.pop_front();
                lock.unlock();
                message();
            } else {
                next += 10ms;
                tick();
            }
        }
    }

    /// From the loop's own thread.
    void Quit() { quit_ = true; }

private:
    std::mutex mutex_;
    std::condition_variable woken_;
    std::deque<std::function<void()>> messages_;
    bool quit_ = false;
};

/// Persons who were added; on a thread of the pool.
std::size_t Add(int page)
{
    personnel::AddPersonnel batch;
    for (int i = 0; i < kPage; ++i) {
        personnel::PersonnelInfo person;
        person.basic.name = "Crowd " + std::to_string(page * kPage + i);
        batch.personnelInfoList.push_back(person);
    }
    personnel::PersonnelResultListData results;
    nexwire::AddPersonComm::request(results, batch, "");
    return results.personnelResultList.size();
}

personnel::TotalData Load(int page)
{
    personnel::QueryMultiPersons condition;
    condition.name = "Crowd";
    condition.pageNo = page + 1;
    condition.pageSize = kPage;
    personnel::TotalData result;
    nexwire::FindMultiPersonComm::request(result, condition, "");
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    host::ExecutorOptions parts;
    parts.http.baseAddress = argc > 1 ? argv[1] : "http://127.0.0.1:8080";
    host::FaultRule distance; // The platform of the example is near; most are not.
    distance.method = 2;
    distance.fault = host::FaultRule::Fault::Delay;
    distance.delayMs = 200;
    parts.faults = {distance};
    nexwire::NexwireInitParams params;
    params.executor = host::MakeExecutor(parts).release();
    nexwire::NexwireInit(params);

    MessageLoop loop;
    int ticks = 0;
    std::size_t shown = 0;
    {
        host::PoolOptions how;
        how.threads = 3;
        how.deadlineMs = 30000;
        how.post = [&loop](std::function<void()> message) { loop.Post(std::move(message)); };
        host::Pool pool(how); // Ends before the loop that it posts to.
        int left = kPersons / kPage;
        const auto arrived = [&] {
            if (--left == 0) {
                loop.Quit();
            }
        };
        const auto failed = [&](const std::exception_ptr&) { arrived(); };
        const auto added = [&](std::size_t) { arrived(); };
        for (int page = 0; page < kPersons / kPage; ++page) {
            pool.Submit([page] { return Add(page); }, added, failed);
        }
        loop.Run([] {});

        left = kPersons / kPage;
        const auto show = [&](const personnel::TotalData& persons) { // On this thread: no lock needed.
            shown += persons.personnelInfoList.size();
            std::cout << shown << " persons, " << ticks << " ticks\n";
            arrived();
        };
        for (int page = 0; page < kPersons / kPage; ++page) {
            pool.Submit([page] { return Load(page); }, show, failed);
        }
        loop.Run([&] { ++ticks; });
    }
    nexwire::NexwireUnInit();

    // Ten pages of 200 ms on three threads: a loop that stood still for each would tick a dozen times.
    const bool alive = ticks >= 30;
    std::cout << (alive ? "the window stayed alive\n" : "the window stood still\n");
    return shown == kPersons && alive ? 0 : 1;
}
