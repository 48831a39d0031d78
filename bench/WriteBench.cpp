// Body of a request with many elements.

#include <cstring>

#include <benchmark/benchmark.h>

#include "Peers.h"
#include "nexwire/ConversionArena.h"
#include "nexwire/ParseJSONUtil.h"

namespace {

using bench::Person;
using bench::PlainPerson;

template <class AnyPerson>
std::vector<AnyPerson> Persons(std::size_t count)
{
    std::vector<AnyPerson> persons;
    for (std::size_t i = 0; i < count; ++i) {
        persons.push_back(bench::MakePerson<AnyPerson>(i));
    }
    return persons;
}

void Finish(benchmark::State& state, std::size_t bytes)
{
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void Nexwire(benchmark::State& state)
{
    bench::PersonAddParam param;
    param.personList = Persons<Person>(static_cast<std::size_t>(state.range(0)));
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::string body = protocol::SerializeRequest(param);
        bytes = body.size();
        benchmark::DoNotOptimize(body.data());
    }
    bench::PersonAddParam read;
    if (!protocol::TParseJSONStr(read, protocol::SerializeRequest(param)) ||
        read.personList.size() != param.personList.size() ||
        read.personList.back().personName != param.personList.back().personName) {
        state.SkipWithError("wrote something else");
    }
    Finish(state, bytes);
}

template <std::string (*Write)(const std::vector<PlainPerson>&)>
void Peer(benchmark::State& state)
{
    const std::vector<PlainPerson> persons = Persons<PlainPerson>(static_cast<std::size_t>(state.range(0)));
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::string body = Write(persons);
        bytes = body.size();
        benchmark::DoNotOptimize(body.data());
    }
    Finish(state, bytes);
}

template <class Function>
void Register(const std::string& name, Function function)
{
    benchmark::RegisterBenchmark(name.c_str(), function)->Arg(1000)->Unit(benchmark::kMicrosecond);
}

} // namespace

int main(int argc, char** argv)
{
    std::string group = "write/";
    if (argc > 1 && std::strcmp(argv[1], "--arena") == 0) {
        nexwire::UseConversionArena();
        group = "write-arena/";
        argv[1] = argv[0];
        --argc;
        ++argv;
    }
    Register(group + "nexwire", Nexwire);
    Register(group + "nlohmann", Peer<bench::WriteWithNlohmann>);
    Register(group + "rapidjson", Peer<bench::WriteWithRapidJson>);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
