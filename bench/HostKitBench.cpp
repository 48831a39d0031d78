// A call through all executors of the host kit beside the same call through none; turn by turn, the transport answers
// from memory.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Turns.h"
#include "nexwire/host/CallScope.h"
#include "nexwire/host/FaultExecutor.h"
#include "nexwire/host/ObservingExecutor.h"
#include "nexwire/host/RetryingExecutor.h"
#include "nexwire/host/TokenExecutor.h"

namespace {

using namespace nexwire;

constexpr double kMostUs = 1.5;
constexpr int kCalls = 2000;

class FromMemory : public IRequestExecutor {
public:
    bool Execute(RspInfos& response, const RequestParams&, int) override
    {
        response.body = R"({"code":"0-0","msg":"success","data":{}})";
        return true;
    }
};

double MicrosecondsPerCall(IRequestExecutor& executor, const RequestParams& request, bool& good)
{
    const double start = bench::Clock();
    for (int i = 0; i < kCalls; ++i) {
        RspInfos response;
        good = executor.Execute(response, request, 1) && good;
        benchmark::DoNotOptimize(response);
    }
    return (bench::Clock() - start) * 1e6 / kCalls;
}

void AllParts(benchmark::State& state)
{
    host::FaultRule none;
    none.path = "/never/asked/for";
    std::unique_ptr<IRequestExecutor> made =
        std::make_unique<host::FaultExecutor>(std::make_unique<FromMemory>(), std::vector<host::FaultRule>{none});
    made = std::make_unique<host::RetryingExecutor>(std::move(made));
    host::TokenOptions token;
    token.endedCategory = 1;
    token.endedNumber = 17;
    token.renew = [](const std::string&) { return std::string("A0B1C2D3E4F5"); };
    made = std::make_unique<host::TokenExecutor>(std::move(made), token);
    made = std::make_unique<host::ObservingExecutor>(std::move(made));
    host::ScopedExecutor kit(std::move(made));
    FromMemory bare;
    const RequestParams request("/7730/v1/accessController/accessGroups/8C1F0F6E2B8A4F0F9F7C0A9B1D2E3F40", 2,
                                R"({"query":{"name":"x"}})");
    // The best of each: what else the machine does only takes time.
    double own = 1e9;
    double alone = 1e9;
    bool good = true;
    for (auto _ : state) {
        const host::CallScope scope("bench", 3600000);
        own = std::min(own, MicrosecondsPerCall(kit, request, good));
        alone = std::min(alone, MicrosecondsPerCall(bare, request, good));
    }
    if (!good) {
        state.SkipWithError("a call failed");
        return;
    }
    bench::Report(state, own, kMostUs / std::max(own - alone, 1e-3), 1.0, "us|1.5 us more");
}

BENCHMARK(AllParts)->Name("call through the whole host kit")->UseRealTime();

} // namespace

BENCHMARK_MAIN();
