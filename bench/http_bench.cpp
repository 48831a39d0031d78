// The HTTP executor beside a bare libcurl loop with a kept handle: both ask the same server on loopback, turn by turn
// in one run. `ratio` is the bare loop's median over the executor's. With 64 threads the peer is a handle for each.

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include "NullServer.h"
#include "nexwire/host/HttpRequestExecutor.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kPath = "/7730/v1/accessController/accessGroups";
constexpr std::size_t kBodySize = 2000;

/// The least that libcurl needs for one request after another: what they share is set once, target and body each time.
class BareLoop {
public:
    explicit BareLoop(const std::string& base) : base_(base), easy_(curl_easy_init())
    {
        fields_ = curl_slist_append(fields_, "Content-Type: application/json");
        curl_easy_setopt(easy_, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(easy_, CURLOPT_PROXY, "");
        curl_easy_setopt(easy_, CURLOPT_TIMEOUT_MS, 40000L);
        curl_easy_setopt(easy_, CURLOPT_HTTPHEADER, fields_);
        curl_easy_setopt(easy_, CURLOPT_POST, 1L);
        curl_easy_setopt(easy_, CURLOPT_WRITEFUNCTION, &BareLoop::Take);
        curl_easy_setopt(easy_, CURLOPT_WRITEDATA, &body_);
    }
    ~BareLoop()
    {
        curl_easy_cleanup(easy_);
        curl_slist_free_all(fields_);
    }
    BareLoop(const BareLoop&) = delete;
    BareLoop& operator=(const BareLoop&) = delete;

    bool Run(const std::string& path, const std::string& body, std::size_t expected)
    {
        curl_easy_setopt(easy_, CURLOPT_URL, (base_ + path).c_str());
        curl_easy_setopt(easy_, CURLOPT_POSTFIELDS, body.data());
        curl_easy_setopt(easy_, CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
        body_.clear();
        long status = 0;
        return curl_easy_perform(easy_) == CURLE_OK &&
               curl_easy_getinfo(easy_, CURLINFO_RESPONSE_CODE, &status) == CURLE_OK && status == 200 &&
               body_.size() == expected;
    }

private:
    static std::size_t Take(char* data, std::size_t size, std::size_t count, void* body)
    {
        static_cast<std::string*>(body)->append(data, size * count);
        return size * count;
    }

    const std::string base_;
    CURL* const easy_;
    curl_slist* fields_ = nullptr;
    std::string body_;
};

bench::NullServer& Server()
{
    static bench::NullServer* const server = [] {
        auto* const made = new bench::NullServer;
        made->AnswerWith(std::string(kBodySize, 'x'));
        return made;
    }();
    return *server;
}

nexwire::host::HttpRequestExecutor& Executor()
{
    static nexwire::host::HttpRequestExecutor* const executor = [] {
        nexwire::host::HttpExecutorOptions options;
        options.baseAddress = "http://127.0.0.1:" + Server().Port();
        return new nexwire::host::HttpRequestExecutor(options);
    }();
    return *executor;
}

template <class Step>
void Timed(std::vector<double>& times, bool& good, const Step& step)
{
    const Clock::time_point start = Clock::now();
    good = step() && good;
    times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
}

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void Http(benchmark::State& state)
{
    nexwire::host::HttpRequestExecutor& executor = Executor();
    BareLoop bare("http://127.0.0.1:" + Server().Port());
    const auto viaExecutor = [&] {
        const nexwire::RequestParams request(kPath, 2);
        nexwire::RspInfos response;
        return executor.Execute(response, request, 1) && response.body.size() == kBodySize;
    };
    const auto viaBare = [&] { return bare.Run(kPath, std::string(), kBodySize); };

    bool good = true;
    for (int i = 0; i < 50; ++i) {
        good = viaExecutor() && viaBare() && good;
    }
    std::vector<double> own;
    std::vector<double> peer;
    for (auto _ : state) {
        // Who goes first has the colder caches; they take turns at that, too.
        if (own.size() % 2 == 0) {
            Timed(own, good, viaExecutor);
            Timed(peer, good, viaBare);
        } else {
            Timed(peer, good, viaBare);
            Timed(own, good, viaExecutor);
        }
    }
    if (!good) {
        state.SkipWithError("an exchange failed");
    }
    const auto average = benchmark::Counter::kAvgThreads;
    const double ownMedian = Median(own);
    const double peerMedian = Median(peer);
    state.counters["own_us"] = benchmark::Counter(ownMedian, average);
    state.counters["peer_us"] = benchmark::Counter(peerMedian, average);
    state.counters["ratio"] = benchmark::Counter(peerMedian / ownMedian, average);
}

constexpr std::size_t kCrowd = 64;
constexpr int kCallsEach = 10; // Short turns: whatever else the machine does meets both alike.
constexpr int kTurns = 16;

/// Threads that stay and do the same step at the same time, each with its number.
class Crowd {
public:
    using Step = std::function<bool(std::size_t)>;

    Crowd()
    {
        for (std::size_t i = 0; i < kCrowd; ++i) {
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

    /// Microseconds for a call: on the clock, or of processor time, the server's included.
    double Run(const Step& step, bool processor, bool& good)
    {
        const Clock::time_point start = Clock::now();
        const std::clock_t used = std::clock();
        Start(&step);
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [this] { return busy_ == 0; });
        good = good && good_;
        const double us = processor ? static_cast<double>(std::clock() - used) * 1e6 / CLOCKS_PER_SEC
                                    : std::chrono::duration<double, std::micro>(Clock::now() - start).count();
        return us / (kCrowd * kCallsEach);
    }

private:
    void Start(const Step* step)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        step_ = step;
        busy_ = kCrowd;
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

void Http64(benchmark::State& state, bool processor)
{
    nexwire::host::HttpExecutorOptions options;
    options.baseAddress = "http://127.0.0.1:" + Server().Port();
    options.maxIdleConnections = kCrowd;
    nexwire::host::HttpRequestExecutor executor(options);
    std::vector<std::unique_ptr<BareLoop>> handles;
    for (std::size_t i = 0; i < kCrowd; ++i) {
        handles.push_back(std::make_unique<BareLoop>(options.baseAddress));
    }
    const Crowd::Step viaExecutor = [&](std::size_t) {
        const nexwire::RequestParams request(kPath, 2);
        nexwire::RspInfos response;
        return executor.Execute(response, request, 1) && response.body.size() == kBodySize;
    };
    const Crowd::Step viaBare = [&](std::size_t i) { return handles[i]->Run(kPath, std::string(), kBodySize); };

    Crowd crowd;
    bool good = true;
    crowd.Run(viaExecutor, processor, good);
    crowd.Run(viaBare, processor, good);
    std::vector<double> own;
    std::vector<double> ratios;
    for (auto _ : state) {
        const bool first = own.size() % 2 == 0;
        const double before = first ? 0.0 : crowd.Run(viaBare, processor, good);
        own.push_back(crowd.Run(viaExecutor, processor, good));
        ratios.push_back((first ? crowd.Run(viaBare, processor, good) : before) / own.back());
    }
    if (!good) {
        state.SkipWithError("an exchange failed");
    }
    state.counters["turn_own"] = Median(own);
    state.counters["turn_ratio"] = Median(ratios);
    state.counters["turn_bar"] = 0.9;
    state.SetLabel("us|libcurl handles");
}

} // namespace

int main(int argc, char** argv)
{
    curl_global_init(CURL_GLOBAL_DEFAULT);
    for (const int threads : {1, 2}) {
        benchmark::RegisterBenchmark("http", Http)->Threads(threads)->UseRealTime()->Unit(benchmark::kMicrosecond);
    }
    benchmark::RegisterBenchmark("HTTP executor, threads: 64", Http64, false)->Iterations(kTurns)->UseRealTime();
    benchmark::RegisterBenchmark("HTTP executor, threads: 64, processor", Http64, true)
        ->Iterations(kTurns)
        ->UseRealTime();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
