// Typed read of lists. With --arena the library's conversions run in the arena, which is a choice for the whole
// process: compare figures of one process only.

#include <cstdio>
#include <cstring>
#include <map>
#include <memory>

#include <benchmark/benchmark.h>

#include "Peers.h"
#include "Turns.h"
#include "nexwire/ConversionArena.h"
#include "nexwire/HTTPCommonJSONStruct.h"

namespace {

using bench::Person;
using bench::PersonListData;
using bench::PlainPerson;

const std::string& Answer(std::size_t count)
{
    static std::map<std::size_t, std::string> answers;
    std::string& answer = answers[count];
    if (answer.empty()) {
        answer = bench::AnswerWith(count);
        answer.reserve(answer.size() + 64);
    }
    return answer;
}

/// As a request function reads: a fresh result behind the envelope.
bool ReadWithNexwire(const std::string& answer, PersonListData& result)
{
    protocol::ReturnData envelope(std::shared_ptr<protocol::IJSONStruct>(std::shared_ptr<void>(), &result));
    return envelope.Parse(answer) && envelope.code.number == 0;
}

template <class AnyPerson>
bool AsMade(const std::vector<AnyPerson>& persons, std::size_t count)
{
    if (persons.size() != count) {
        return false;
    }
    for (std::size_t i = 0; i < count; i += 1 + count / 100) {
        const PlainPerson made = bench::MakePerson<PlainPerson>(i);
        const AnyPerson& read = persons[i];
        if (read.personGuid != made.personGuid || read.personName != made.personName || read.remark != made.remark ||
            read.fingerprintCount != made.fingerprintCount || read.visitor != made.visitor) {
            return false;
        }
    }
    return true;
}

void Count(benchmark::State& state, std::size_t count)
{
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Answer(count).size()));
}

void Nexwire(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::string& answer = Answer(count);
    PersonListData checked;
    if (!ReadWithNexwire(answer, checked) || !AsMade(checked.personList, count)) {
        state.SkipWithError("read something else");
        return;
    }
    checked = PersonListData();
    for (auto _ : state) {
        PersonListData result;
        benchmark::DoNotOptimize(ReadWithNexwire(answer, result));
        benchmark::ClobberMemory();
    }
    Count(state, count);
}

template <bench::ReadPeer Read>
void Peer(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::string& answer = Answer(count);
    {
        std::vector<PlainPerson> persons;
        if (!Read(answer, persons) || !AsMade(persons, count)) {
            state.SkipWithError("read something else");
            return;
        }
    }
    for (auto _ : state) {
        std::vector<PlainPerson> persons;
        benchmark::DoNotOptimize(Read(answer, persons));
        benchmark::ClobberMemory();
    }
    Count(state, count);
}

/// How much memory a read takes at most, the result included, beside the text.
void Memory(benchmark::State& state)
{
    const std::string& answer = Answer(static_cast<std::size_t>(state.range(0)));
    bench::HeldMemory memory;
    bool good = true;
    for (auto _ : state) {
        good = memory.During([&] {
            PersonListData result;
            return ReadWithNexwire(answer, result);
        }) && good;
    }
    if (!good) {
        state.SkipWithError("read something else");
    }
    bench::Report(state, memory.MiB(), memory.MiB() * (1 << 20) / static_cast<double>(answer.size()), -6,
                  "MiB|the text");
}

template <class Function>
void Register(const std::string& name, Function function)
{
    benchmark::RegisterBenchmark(name.c_str(), function)
        ->Arg(100)
        ->Arg(5000)
        ->Arg(100000)
        ->Unit(benchmark::kMicrosecond);
}

} // namespace

int main(int argc, char** argv)
{
    std::string group = "read/";
    if (argc > 1 && std::strcmp(argv[1], "--arena") == 0) {
        nexwire::UseConversionArena(std::size_t{256} << 20);
        group = "read-arena/";
        argv[1] = argv[0];
        --argc;
        ++argv;
    }
    Register(group + "nexwire", Nexwire);
    const std::string title = group == "read/" ? "memory of a typed read" : "memory of a typed read, arena";
    benchmark::RegisterBenchmark(title.c_str(), Memory)->Arg(100000)->Iterations(1)->UseRealTime();
    Register(group + "nlohmann", Peer<bench::ReadWithNlohmann>);
    Register(group + "rapidjson", Peer<bench::ReadWithRapidJson>);
    Register(group + "simdjson", Peer<bench::ReadWithSimdjson>);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    std::fprintf(stderr, "%zu bytes of JSON per person\n", Answer(5000).size() / 5000);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
