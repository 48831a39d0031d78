// The HTTP executor beside a bare libcurl loop with a kept handle: both ask the same server on loopback, turn by turn
// in one run. `ratio` is the bare loop's median over the executor's.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
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

} // namespace

int main(int argc, char** argv)
{
    curl_global_init(CURL_GLOBAL_DEFAULT);
    for (const int threads : {1, 2}) {
        benchmark::RegisterBenchmark("http", Http)->Threads(threads)->UseRealTime()->Unit(benchmark::kMicrosecond);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
