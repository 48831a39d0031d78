// A page of calculated attendance into its rows, beside nlohmann/json that reads the same text and copies the same
// members into the same structures; turn by turn in one run, both behind an executor that answers from memory.

#include <string>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include "Turns.h"
#include "nexwire/Attendance/Calculation.h"
#include "nexwire/Nexwire.h"

namespace protocol {

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(StatisticsCalc, personnelID, personnelCode, personnelName, orgName, attendenceDate,
                                   shiftName, periodID, periodName, startWorkStatus, endWorkStatus, lateDuration,
                                   earlyDuration, attendanceDuration, absenceDuration, workDuration, restDuartion,
                                   vocationName, vocationDuartion, level1Duartion, level2Duartion, level3Duartion,
                                   detail)

} // namespace protocol

namespace {

std::string MakePage(std::size_t rows)
{
    std::string list;
    const auto key = [&](const char* name) { list += (list.back() == '{' ? "\"" : ",\"") + std::string(name) + "\":"; };
    const auto text = [&](const char* name, const std::string& value) {
        key(name);
        list += '"' + value + '"';
    };
    const auto number = [&](const char* name, int value) {
        key(name);
        list += std::to_string(value);
    };
    for (std::size_t i = 0; i < rows; ++i) {
        const int row = static_cast<int>(i);
        const std::string digits = std::to_string(100000 + i / 31);
        list += i == 0 ? "{" : ",{";
        text("personnelID", "9E00000000000000000000000000" + digits.substr(2));
        text("personnelCode", digits);
        text("personnelName", "Grace Liu " + digits);
        text("orgName", "Offices");
        text("attendenceDate", "2026-03-" + std::to_string(10 + i % 20));
        text("shiftName", "Office, weekdays");
        text("periodID", "51000000000000000000000000000001");
        text("periodName", "Day");
        text("startWorkStatus", i % 9 == 0 ? "late" : "normal");
        text("endWorkStatus", "normal");
        number("lateDuration", i % 9 == 0 ? row % 60 : 0);
        number("earlyDuration", 0);
        number("attendanceDuration", 480);
        number("absenceDuration", 0);
        number("workDuration", 480 - row % 60);
        number("restDuartion", 60);
        text("vocationName", "");
        number("vocationDuartion", 0);
        number("level1Duartion", row % 30);
        number("level2Duartion", 0);
        number("level3Duartion", 0);
        text("detail", "08:55 18:12");
        list += '}';
    }
    const std::string count = std::to_string(rows);
    return R"({"code":"0-0","msg":"success","data":{"statisticsCalcData":{"total":)" + count + R"(,"pageSize":)" +
           count + R"(,"pageNo":1,"statisticsCalcList":[)" + list + "]}}}";
}

class FromMemory : public nexwire::IRequestExecutor {
public:
    explicit FromMemory(const std::string& page) : page_(page) {}

    bool Execute(nexwire::RspInfos& response, const nexwire::RequestParams&, int) override
    {
        response.body = page_;
        return true;
    }

private:
    const std::string& page_;
};

bool ReadWithNlohmann(const std::string& text, protocol::StatisticsCalcDataData& result)
{
    nexwire::RspInfos response;
    response.body = text;
    const nlohmann::json document = nlohmann::json::parse(response.body);
    if (document.at("code").get_ref<const std::string&>() != "0-0") {
        return false;
    }
    const nlohmann::json& page = document.at("data").at("statisticsCalcData");
    page.at("total").get_to(result.statisticsCalcData.total);
    page.at("pageSize").get_to(result.statisticsCalcData.pageSize);
    page.at("pageNo").get_to(result.statisticsCalcData.pageNo);
    page.at("statisticsCalcList").get_to(result.statisticsCalcData.statisticsCalcList);
    return true;
}

template <class Reader>
bool Reads(std::size_t rows, const Reader& reader)
{
    protocol::StatisticsCalcDataData result;
    const bool good = reader(result) && result.statisticsCalcData.statisticsCalcList.size() == rows &&
                      result.statisticsCalcData.statisticsCalcList.back().detail == "08:55 18:12";
    benchmark::DoNotOptimize(result);
    return good;
}

void CalculationPage(benchmark::State& state)
{
    const auto rows = static_cast<std::size_t>(state.range(0));
    const std::string page = MakePage(rows);
    nexwire::NexwireInitParams params;
    params.executor = new FromMemory(page);
    nexwire::NexwireInit(params);
    const auto own = [&] {
        return Reads(rows, [](auto& result) { return nexwire::CalculateComm::queryCalculate(result, {}); });
    };
    const auto peer = [&] { return Reads(rows, [&](auto& result) { return ReadWithNlohmann(page, result); }); };
    bench::Turns turns;
    bool good = true;
    for (auto _ : state) {
        good = turns.Take(own, peer) && good;
    }
    nexwire::NexwireUnInit();
    if (!good) {
        state.SkipWithError("read something else");
        return;
    }
    bench::Report(state, turns.Own() * 1000, turns.Ratio(), 2.0, "ms|nlohmann");
}

BENCHMARK(CalculationPage)->Name("attendance page, rows")->Arg(1000)->Arg(100000)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
