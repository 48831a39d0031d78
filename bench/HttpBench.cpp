// The HTTP executor beside a bare libcurl loop with a kept handle: both ask the same server on loopback, turn by turn
// in one run. With 64 threads the peer has a handle for each.

#include <array>
#include <ctime>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "BarePost.h"
#include "Crowd.h"
#include "Turns.h"
#include "loopback/RawServer.h"
#include "nexwire/host/HttpRequestExecutor.h"

namespace {

constexpr const char* kPath = "/7730/v1/accessController/accessGroups";
constexpr std::size_t kBodySize = 2000;

nexwire::loopback::RawServer& Server()
{
    static nexwire::loopback::RawServer* const server = [] {
        auto* const made = new nexwire::loopback::RawServer;
        made->SetKeeping(false);
        made->SetDefault(nexwire::loopback::Reply::Json(std::string(kBodySize, 'x')));
        return made;
    }();
    return *server;
}

nexwire::host::HttpRequestExecutor& Executor()
{
    static nexwire::host::HttpRequestExecutor* const executor = [] {
        nexwire::host::HttpExecutorOptions options;
        options.baseAddress = Server().Base();
        return new nexwire::host::HttpRequestExecutor(options);
    }();
    return *executor;
}

void Http(benchmark::State& state)
{
    nexwire::host::HttpRequestExecutor& executor = Executor();
    const std::string base = Server().Base();
    bench::BarePost bare;
    const auto viaExecutor = [&] {
        const nexwire::RequestParams request(kPath, 2);
        nexwire::RspInfos response;
        return executor.Execute(response, request, 1) && response.body.size() == kBodySize;
    };
    const auto viaBare = [&] { return bare.Run(base + kPath, {}) && bare.Answer().size() == kBodySize; };

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
    bench::Report(state, turns.Own() * 1e6, turns.Ratio(), 0.95, "us|bare libcurl");
}

/// Seconds of processor time, the server's included.
double ProcessorTime()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void Http64(benchmark::State& state, double (*seconds)())
{
    nexwire::host::HttpExecutorOptions options;
    options.baseAddress = Server().Base();
    options.maxIdleConnections = bench::Crowd::kThreads;
    nexwire::host::HttpRequestExecutor executor(options);
    std::array<bench::BarePost, bench::Crowd::kThreads> handles;
    const bench::Crowd::Step viaExecutor = [&](std::size_t) {
        const nexwire::RequestParams request(kPath, 2);
        nexwire::RspInfos response;
        return executor.Execute(response, request, 1) && response.body.size() == kBodySize;
    };
    const bench::Crowd::Step viaBare = [&](std::size_t i) {
        return handles[i].Run(options.baseAddress + kPath, {}) && handles[i].Answer().size() == kBodySize;
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

BENCHMARK(Http)->Name("HTTP executor, threads: 1")->Threads(1)->UseRealTime();
BENCHMARK(Http)->Name("HTTP executor, threads: 2")->Threads(2)->UseRealTime();
BENCHMARK_CAPTURE(Http64, clock, &bench::Clock)->Name("HTTP executor, threads: 64")->Iterations(16)->UseRealTime();
BENCHMARK_CAPTURE(Http64, processor, &ProcessorTime)
    ->Name("HTTP executor, threads: 64, processor")
    ->Iterations(16)
    ->UseRealTime();

} // namespace

BENCHMARK_MAIN();
