#include <algorithm>

#include "src/AttendanceRules.h"
#include "src/Fields.h"
#include "src/Rules.h"
#include "src/Services.h"

// Figures that nobody counted: the same question gets the same answer, and sums are the sums of their parts.

namespace nexwire::simulator {
namespace {

constexpr std::size_t kMostSteps = 1000;

/// A number from 0 to `below` - 1 that belongs to a text.
int Drawn(const std::string& seed, int below)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : seed) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    return static_cast<int>((hash >> 8) % static_cast<std::uint32_t>(below));
}

std::string Text(const Json& object, std::string_view member)
{
    return std::string(AsText(Member(object, member)));
}

const Json& Query(const Handling& handling, std::string_view member)
{
    const Json* const query = Member(*handling.body, member);
    if (query == nullptr) {
        throw Refusal(Reason::kMissingField, member);
    }
    return *query;
}

struct Step {
    std::string begin;
    std::string end;
};

/// The span of the question in steps of its unit.
std::vector<Step> Steps(const Json& query, std::string_view unit)
{
    int at = 0;
    int until = 0;
    if (!ParseMoment(Text(query, "startTime"), at) || !ParseMoment(Text(query, "endTime"), until) || until < at) {
        throw Refusal(Reason::kOutOfRange, "startTime and endTime");
    }
    const int minutes = unit == "hour"    ? 60
                        : unit == "week"  ? 7 * kDayMinutes
                        : unit == "month" ? 30 * kDayMinutes
                                          : kDayMinutes;
    const auto print = [](int minute) {
        return PrintDate(minute / kDayMinutes) + "T" + PrintTime(minute) + ":00+00:00";
    };
    std::vector<Step> steps;
    for (; at < until; at += minutes) {
        if (steps.size() == kMostSteps) {
            throw Refusal(Reason::kOutOfRange, "up to 1000 values");
        }
        steps.push_back({print(at), print(std::min(at + minutes, until))});
    }
    return steps;
}

void People(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const Json& query = Query(handling, "peopleCountingQuery");
    const std::vector<Step> steps = Steps(query, AsText(Member(query, "reportType"), "day"));
    std::vector<std::string> channels;
    for (const Json& channel : Elements(Member(query, "channelGuidList"))) {
        channels.emplace_back(AsText(&channel));
    }
    if (channels.empty()) {
        channels = {"C0000000000000000000000000000001", "C0000000000000000000000000000002"};
    }
    constexpr struct {
        const char* value;
        const char* total;
        int below;
    } kCounts[] = {{"enterNum", "enterTotal", 400}, {"exitNum", "exitTotal", 400}, {"passNum", "passTotal", 900}};
    Json list(rapidjson::kArrayType);
    for (std::size_t i = 0; i < channels.size(); ++i) {
        Json channel(rapidjson::kObjectType);
        Fields fields(channel, memory);
        fields.Text("channelGuid", channels[i]).Text("channelName", "Entrance " + std::to_string(i + 1));
        Json values(rapidjson::kArrayType);
        for (const Step& step : steps) {
            values.PushBack(Fields(memory).Text("startTime", step.begin).Text("endTime", step.end).Take(), memory);
        }
        for (const auto& count : kCounts) {
            int total = 0;
            for (std::size_t at = 0; at < steps.size(); ++at) {
                const int number = Drawn(channels[i] + steps[at].begin + count.value, count.below);
                Fields(values[static_cast<rapidjson::SizeType>(at)], memory).Number(count.value, number);
                total += number;
            }
            fields.Number(count.total, total);
        }
        fields.Value("peopleCountingValueList", std::move(values));
        list.PushBack(channel, memory);
    }
    SetMember(handling.data, "peopleCountingDataList", std::move(list), memory);
}

void Alarms(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const Json& query = Query(handling, "dSAlarmLogQuery");
    const std::string group(AsText(Member(query, "groupBy"), "time"));
    std::vector<std::pair<std::string, std::string>> groups;
    if (group == "time") {
        for (const Step& step : Steps(query, AsText(Member(query, "timeUnit"), "day"))) {
            groups.emplace_back(step.begin, step.begin);
        }
    } else {
        for (int i = 1; i <= 5; ++i) {
            groups.emplace_back(std::to_string(i), group + " " + std::to_string(i));
        }
    }
    std::vector<std::pair<int, std::size_t>> order;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        order.emplace_back(Drawn(Text(query, "startTime") + Text(query, "endTime") + groups[i].first, 120), i);
    }
    const auto top = static_cast<std::size_t>(AsInt(Member(query, "top")));
    if (top > 0) {
        std::sort(order.rbegin(), order.rend());
        order.resize(std::min(top, order.size()));
    }
    int total = 0;
    Json list(rapidjson::kArrayType);
    for (const auto& [number, at] : order) {
        total += number;
        list.PushBack(Fields(memory)
                          .Text("groupKey", groups[at].first)
                          .Text("groupName", groups[at].second)
                          .Number("alarmNum", number)
                          .Number("handledNum", number * 3 / 4)
                          .Take(),
                      memory);
    }
    Json result = Fields(memory).Number("total", total).Value("dSAlarmLogResultList", std::move(list)).Take();
    SetMember(handling.data, "dSAlarmLogResultData", std::move(result), memory);
}

void Heat(Handling& handling)
{
    constexpr int kWidth = 16;
    constexpr int kHeight = 9;
    Allocator& memory = handling.Memory();
    const Json& query = Query(handling, "heatMapQuery");
    const std::string channel = Text(query, "channelGuid");
    Json fields(rapidjson::kArrayType);
    for (int i = 0; i < kWidth * kHeight; ++i) {
        fields.PushBack(Drawn(channel + std::to_string(i), 256), memory);
    }
    Json values(rapidjson::kArrayType);
    for (const Step& step : Steps(query, AsText(Member(query, "timeUnit"), "hour"))) {
        values.PushBack(Fields(memory)
                            .Text("startTime", step.begin)
                            .Text("endTime", step.end)
                            .Number("value", Drawn(channel + step.begin, 500))
                            .Take(),
                        memory);
    }
    Json result = Fields(memory)
                      .Text("channelGuid", channel)
                      .Number("width", kWidth)
                      .Number("height", kHeight)
                      .Value("fieldList", std::move(fields))
                      .Value("dsHeatMapValueList", std::move(values))
                      .Take();
    SetMember(handling.data, "dsHeatMapResultData", std::move(result), memory);
}

} // namespace

void AddStatistics(Services& services)
{
    services["statistics.people"] = People;
    services["statistics.alarms"] = Alarms;
    services["statistics.heat"] = Heat;
}

} // namespace nexwire::simulator
