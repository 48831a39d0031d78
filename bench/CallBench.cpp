// One small call through an executor that answers from memory, beside the same work written by hand on cJSON.

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <cjson/cJSON.h>
#include <keel/Error.h>

#include "Turns.h"
#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/Nexwire.h"

namespace {

using protocol::AccessGroupQueryResponse;
using protocol::AccessGroupQueryResponseData;

const std::string kGroup = "7f3c9a52b1e84d06a4c7000000000001";
const std::string kAnswer =
    R"({"code":"0-0","msg":"","data":{"accessGroupQueryResponse":{"accessGroupGuid":"7f3c9a52b1e84d06a4c7000000000001",)"
    R"("name":"Laboratory","secheduleGuid":"1b4e28ba2fa111d2883f0016d3cca427","description":"Second floor, day shift",)"
    R"("accessGroupState":2,"personnelResList":[)"
    R"({"personnelGuid":"5d0cf6ab2b8a4f0f9f7c0a9b1d2e3f01","personnelNo":"P0000017","personnelName":"王小明"},)"
    R"({"personnelGuid":"5d0cf6ab2b8a4f0f9f7c0a9b1d2e3f02","personnelNo":"P0000018","personnelName":"A. Lindqvist"}],)"
    R"("objectResList":[{"deviceGuid":"c7a1d0e2f3b94c58a6d7e8f901234567","objectGuid":"0f1e2d3c4b5a69788796a5b4c3d2e1f0",)"
    R"("objectGroupGuid":"","objectName":"Door 1","objectNo":1,"objectType":1}]}}})";

class MemoryExecutor : public nexwire::IRequestExecutor {
public:
    bool Execute(nexwire::RspInfos& response, const nexwire::RequestParams& request, int) override
    {
        response.body = kAnswer;
        return !request.url.empty();
    }
};

MemoryExecutor* g_executor = nullptr; // Owned by the library.

// ---- By hand ----

void Take(const cJSON* object, const char* key, std::string& out)
{
    const cJSON* const node = cJSON_GetObjectItemCaseSensitive(object, key);
    if (cJSON_IsString(node) != 0) {
        out = node->valuestring;
    }
}

void Take(const cJSON* object, const char* key, std::int32_t& out)
{
    const cJSON* const node = cJSON_GetObjectItemCaseSensitive(object, key);
    if (cJSON_IsNumber(node) != 0) {
        out = node->valueint;
    }
}

bool GetAccessGroupByHand(AccessGroupQueryResponseData& result, const std::string& guid)
{
    nexwire::RequestParams request("/7730/v1/accessController/accessGroups/" + guid, 2);
    nexwire::RspInfos response;
    nexwire::IRequestExecutor& executor = *g_executor;
    if (!executor.Execute(response, request, 1)) {
        return false;
    }
    const std::unique_ptr<cJSON, decltype(&cJSON_Delete)> root(
        cJSON_ParseWithLength(response.body.data(), response.body.size()), &cJSON_Delete);
    if (root == nullptr) {
        return false;
    }
    std::string code;
    std::string message;
    Take(root.get(), "code", code);
    Take(root.get(), "msg", message);
    Keel::Error::ErrorCode error;
    const std::size_t dash = code.find('-');
    if (dash != std::string::npos) {
        error.category = static_cast<std::int32_t>(std::strtol(code.c_str(), nullptr, 10));
        error.number = static_cast<std::int32_t>(std::strtol(code.c_str() + dash + 1, nullptr, 10));
    }
    benchmark::DoNotOptimize(error);
    benchmark::DoNotOptimize(message);

    const cJSON* const data = cJSON_GetObjectItemCaseSensitive(root.get(), "data");
    const cJSON* const node = cJSON_GetObjectItemCaseSensitive(data, "accessGroupQueryResponse");
    AccessGroupQueryResponseData fresh;
    AccessGroupQueryResponse& group = fresh.accessGroupQueryResponse;
    Take(node, "accessGroupGuid", group.accessGroupGuid);
    Take(node, "name", group.name);
    Take(node, "secheduleGuid", group.secheduleGuid);
    Take(node, "description", group.description);
    Take(node, "accessGroupState", group.accessGroupState);
    const cJSON* element = nullptr;
    cJSON_ArrayForEach(element, cJSON_GetObjectItemCaseSensitive(node, "personnelResList"))
    {
        protocol::PersonnelRes& person = group.personnelResList.emplace_back();
        Take(element, "personnelGuid", person.personnelGuid);
        Take(element, "personnelNo", person.personnelNo);
        Take(element, "personnelName", person.personnelName);
    }
    cJSON_ArrayForEach(element, cJSON_GetObjectItemCaseSensitive(node, "objectResList"))
    {
        protocol::ObjectRes& object = group.objectResList.emplace_back();
        Take(element, "deviceGuid", object.deviceGuid);
        Take(element, "objectGuid", object.objectGuid);
        Take(element, "objectGroupGuid", object.objectGroupGuid);
        Take(element, "objectName", object.objectName);
        Take(element, "objectNo", object.objectNo);
        Take(element, "objectType", object.objectType);
    }
    result = std::move(fresh);
    return true;
}

// ---- Runs ----

constexpr int kCallsATurn = 100;

template <bool (*Call)(AccessGroupQueryResponseData&, const std::string&)>
void Run(benchmark::State& state)
{
    AccessGroupQueryResponseData checked;
    if (!Call(checked, kGroup) || checked.accessGroupQueryResponse.personnelResList.size() != 2 ||
        checked.accessGroupQueryResponse.objectResList.at(0).objectNo != 1) {
        state.SkipWithError("read something else");
        return;
    }
    for (auto _ : state) {
        AccessGroupQueryResponseData result;
        benchmark::DoNotOptimize(Call(result, kGroup));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}

template <bool (*Call)(AccessGroupQueryResponseData&, const std::string&)>
bool RunMany()
{
    bool good = true;
    for (int i = 0; i < kCallsATurn; ++i) {
        AccessGroupQueryResponseData result;
        good = Call(result, kGroup) && good;
    }
    return good;
}

/// One thread beside the work by hand.
void ByTurns(benchmark::State& state)
{
    bench::Turns turns;
    bool good = true;
    for (auto _ : state) {
        good =
            turns.Take(&RunMany<&nexwire::CAccessGroupComm::getAccessGroup>, &RunMany<&GetAccessGroupByHand>) && good;
    }
    if (!good) {
        state.SkipWithError("a call failed");
    }
    bench::Report(state, turns.Own() * 1e6 / kCallsATurn, 1 / turns.Ratio(), -0.35, "us|cJSON by hand");
}

/// What the machine itself gives a second thread: work that shares nothing.
void Machine(benchmark::State& state)
{
    for (auto _ : state) {
        std::uint64_t sum = 1;
        for (int i = 0; i < 1000; ++i) {
            sum = sum * 6364136223846793005U + 1442695040888963407U;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations());
}

template <class Function>
void Register(const char* name, Function function)
{
    for (const int threads : {1, 2, 4}) {
        benchmark::RegisterBenchmark(name, function)->Threads(threads)->UseRealTime();
    }
}

} // namespace

int main(int argc, char** argv)
{
    nexwire::NexwireInitParams params;
    params.executor = g_executor = new MemoryExecutor;
    if (!nexwire::NexwireInit(params)) {
        return 1;
    }
    benchmark::RegisterBenchmark("small call, share of the time by hand", ByTurns)->UseRealTime();
    Register("call/nexwire", Run<&nexwire::CAccessGroupComm::getAccessGroup>);
    Register("call/by hand", Run<&GetAccessGroupByHand>);
    Register("call/machine", Machine);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    nexwire::NexwireUnInit();
    return 0;
}
