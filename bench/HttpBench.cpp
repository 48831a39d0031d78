// The HTTP executor beside a bare libcurl loop with a kept handle: both ask the same server on loopback, turn by turn
// in one run. With 64 threads the peer has a handle for each.

#include <array>
#include <ctime>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include <benchmark/benchmark.h>

#include "BarePost.h"
#include "Crowd.h"
#include "Turns.h"
#include "loopback/RawServer.h"
#include "nexwire/host/HttpRequestExecutor.h"

namespace {

constexpr const char* kPath = "/7730/v1/accessController/accessGroups";
constexpr std::size_t kSmall = 100;
constexpr std::size_t kUsual = 2000;
constexpr std::size_t kLarge = std::size_t{1} << 20;

/// Answers with so many bytes.
nexwire::loopback::RawServer& Server(std::size_t size)
{
    static std::map<std::size_t, nexwire::loopback::RawServer*> servers;
    nexwire::loopback::RawServer*& server = servers[size];
    if (server == nullptr) {
        server = new nexwire::loopback::RawServer;
        server->SetKeeping(false);
        server->SetDefault(nexwire::loopback::Reply::Json(std::string(size, 'x')));
    }
    return *server;
}

nexwire::host::HttpRequestExecutor& Executor(std::size_t size)
{
    static std::map<std::size_t, nexwire::host::HttpRequestExecutor*> executors;
    nexwire::host::HttpRequestExecutor*& executor = executors[size];
    if (executor == nullptr) {
        nexwire::host::HttpExecutorOptions options;
        options.baseAddress = Server(size).Base();
        executor = new nexwire::host::HttpRequestExecutor(options);
    }
    return *executor;
}

/// Requests of 100 bytes.
void Http(benchmark::State& state, std::size_t size)
{
    static std::mutex making;
    std::unique_lock<std::mutex> lock(making);
    nexwire::host::HttpRequestExecutor& executor = Executor(size);
    const std::string base = Server(size).Base();
    lock.unlock();
    const std::string body(kSmall, 'y');
    bench::BarePost bare;
    const auto viaExecutor = [&] {
        nexwire::RequestParams request(kPath, 2);
        request.body = body;
        nexwire::RspInfos response;
        return executor.Execute(response, request, 1) && response.body.size() == size;
    };
    const auto viaBare = [&] { return bare.Run(base + kPath, body) && bare.Answer().size() == size; };

    bool good = true;
    for (int i = 0; i < 50; ++i) {
        good = viaExecutor() && viaBare() && good;
    }
    bench::Turns turns;
    for (auto _ : state) {
        good = turns.Take(viaExecutor, viaBare) && good;
    }
    if (!good) {
        state.SkipWithError("an exchange failed");
    }
    bench::Report(state, turns.Own() * 1e6, turns.Ratio(), 0.97, "us|bare libcurl");
}

/// Seconds of processor time, the server's included.
double ProcessorTime()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void Http64(benchmark::State& state, double (*seconds)())
{
    nexwire::host::HttpExecutorOptions options;
    options.baseAddress = Server(kUsual).Base();
    options.maxIdleConnections = bench::Crowd::kThreads;
    nexwire::host::HttpRequestExecutor executor(options);
    std::array<bench::BarePost, bench::Crowd::kThreads> handles;
    const bench::Crowd::Step viaExecutor = [&](std::size_t) {
        const nexwire::RequestParams request(kPath, 2);
        nexwire::RspInfos response;
        return executor.Execute(response, request, 1) && response.body.size() == kUsual;
    };
    const bench::Crowd::Step viaBare = [&](std::size_t i) {
        return handles[i].Run(options.baseAddress + kPath, {}) && handles[i].Answer().size() == kUsual;
    };

    bench::Crowd crowd;
    bool good = crowd.Run(viaExecutor) && crowd.Run(viaBare);
    bench::Turns turns(seconds);
    for (auto _ : state) {
        good = turns.Take([&] { return crowd.Run(viaExecutor); }, [&] { return crowd.Run(viaBare); }) && good;
    }
    if (!good) {
        state.SkipWithError("an exchange failed");
    }
    constexpr double kCalls = static_cast<double>(bench::Crowd::kThreads) * bench::Crowd::kCallsEach;
    bench::Report(state, turns.Own() * 1e6 / kCalls, turns.Ratio(), 0.9, "us|libcurl handles");
}

BENCHMARK_CAPTURE(Http, small, kSmall)->Name("HTTP executor, 100 bytes, threads: 1")->Threads(1)->UseRealTime();
BENCHMARK_CAPTURE(Http, small, kSmall)->Name("HTTP executor, 100 bytes, threads: 2")->Threads(2)->UseRealTime();
BENCHMARK_CAPTURE(Http, large, kLarge)->Name("HTTP executor, 1 MiB, threads: 1")->Threads(1)->UseRealTime();
BENCHMARK_CAPTURE(Http, large, kLarge)->Name("HTTP executor, 1 MiB, threads: 2")->Threads(2)->UseRealTime();
BENCHMARK_CAPTURE(Http64, clock, &bench::Clock)->Name("HTTP executor, threads: 64")->Iterations(16)->UseRealTime();
BENCHMARK_CAPTURE(Http64, processor, &ProcessorTime)
    ->Name("HTTP executor, threads: 64, processor")
    ->Iterations(16)
    ->UseRealTime();

} // namespace

BENCHMARK_MAIN();
