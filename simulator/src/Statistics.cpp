#include <algorithm>

#include "src/AttendanceRules.h"
#include "src/Rules.h"
#include "src/Services.h"

// Figures that nobody counted: the same question gets the same answer, and sums are the sums of their parts.

namespace nexwire::simulator {
namespace {

constexpr int kMostSteps = 1000;

/// A number from 0 to `below` - 1 that belongs to a text.
int Drawn(const std::string& seed, int below)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : seed) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    return static_cast<int>((hash >> 8) % static_cast<std::uint32_t>(below));
}

struct Step {
    std::string begin;
    std::string end;
};

/// The span of the question in steps of its unit.
std::vector<Step> Steps(const Json& query, std::string_view unit)
{
    int first = 0;
    int last = 0;
    const std::string begin(AsText(Member(query, "startTime")));
    const std::string end(AsText(Member(query, "endTime")));
    if (!ParseDate(begin, first) || !ParseDate(end, last) || last < first) {
        throw Refusal(Reason::kOutOfRange, "startTime and endTime");
    }
    const int minutes = unit == "hour" ? 60 : unit == "week" ? 7 * 1440 : unit == "month" ? 30 * 1440 : 1440;
    const int until = last * 1440 + std::max(0, end.size() >= 16 ? ParseTime(end.substr(11)) : 1440);
    const auto print = [](int minute) {
        return PrintDate(minute / 1440) + "T" + PrintTime(minute % 1440) + ":00+00:00";
    };
    std::vector<Step> steps;
    int at = first * 1440 + std::max(0, begin.size() >= 16 ? ParseTime(begin.substr(11)) : 0);
    for (; at < until; at += minutes) {
        if (steps.size() == kMostSteps) {
            throw Refusal(Reason::kOutOfRange, "up to 1000 values");
        }
        steps.push_back({print(at), print(std::min(at + minutes, until))});
    }
    return steps;
}

class Object {
public:
    explicit Object(Allocator& memory) : memory_(memory), value_(rapidjson::kObjectType) {}

    Object& Text(const char* key, std::string_view text) { return Set(key, MakeText(text, memory_)); }
    Object& Number(const char* key, int number) { return Set(key, Json(number)); }
    Object& Set(const char* key, Json value)
    {
        SetMember(value_, key, std::move(value), memory_);
        return *this;
    }
    Json Take() { return std::move(value_); }

private:
    Allocator& memory_;
    Json value_;
};

void People(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const Json* const asked = Member(*handling.body, "peopleCountingQuery");
    const Json& query = asked != nullptr ? *asked : *handling.body;
    const std::vector<Step> steps = Steps(query, AsText(Member(query, "reportType"), "day"));
    std::vector<std::string> channels;
    for (const Json& channel : Elements(Member(query, "channelGuidList"))) {
        channels.emplace_back(AsText(&channel));
    }
    if (channels.empty()) {
        channels = {"C0000000000000000000000000000001", "C0000000000000000000000000000002"};
    }
    Json list(rapidjson::kArrayType);
    for (const std::string& channel : channels) {
        int entered = 0;
        int left = 0;
        int passed = 0;
        Json values(rapidjson::kArrayType);
        for (const Step& step : steps) {
            const int in = Drawn(channel + step.begin + "in", 400);
            const int out = Drawn(channel + step.begin + "out", 400);
            const int by = Drawn(channel + step.begin + "by", 900);
            values.PushBack(Object(memory)
                                .Text("startTime", step.begin)
                                .Text("endTime", step.end)
                                .Number("enterNum", in)
                                .Number("exitNum", out)
                                .Number("passNum", by)
                                .Take(),
                            memory);
            entered += in;
            left += out;
            passed += by;
        }
        list.PushBack(Object(memory)
                          .Text("channelGuid", channel)
                          .Text("channelName",
                                "Entrance " + channel.substr(channel.size() - std::min<std::size_t>(2, channel.size())))
                          .Number("enterTotal", entered)
                          .Number("exitTotal", left)
                          .Number("passTotal", passed)
                          .Set("peopleCountingValueList", std::move(values))
                          .Take(),
                      memory);
    }
    SetMember(handling.data, "peopleCountingDataList", std::move(list), memory);
}

void Alarms(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const Json* const asked = Member(*handling.body, "dSAlarmLogQuery");
    const Json& query = asked != nullptr ? *asked : *handling.body;
    const std::string_view group = AsText(Member(query, "groupBy"), "time");
    std::vector<std::pair<std::string, std::string>> groups;
    if (group == "time") {
        for (const Step& step : Steps(query, AsText(Member(query, "timeUnit"), "day"))) {
            groups.emplace_back(step.begin, step.begin);
        }
    } else {
        for (int i = 1; i <= 5; ++i) {
            groups.emplace_back(std::to_string(i), std::string(group) + " " + std::to_string(i));
        }
    }
    const std::string span =
        std::string(AsText(Member(query, "startTime"))) + std::string(AsText(Member(query, "endTime")));
    std::vector<std::pair<int, std::size_t>> order;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        order.emplace_back(Drawn(span + groups[i].first, 120), i);
    }
    const auto top = static_cast<std::size_t>(AsInt(Member(query, "top")));
    if (top > 0) {
        std::sort(order.rbegin(), order.rend());
        order.resize(std::min(top, order.size()));
    }
    int total = 0;
    Json list(rapidjson::kArrayType);
    for (const auto& each : order) {
        total += each.first;
        list.PushBack(Object(memory)
                          .Text("groupKey", groups[each.second].first)
                          .Text("groupName", groups[each.second].second)
                          .Number("alarmNum", each.first)
                          .Number("handledNum", each.first * 3 / 4)
                          .Take(),
                      memory);
    }
    SetMember(handling.data, "dSAlarmLogResultData",
              Object(memory).Number("total", total).Set("dSAlarmLogResultList", std::move(list)).Take(), memory);
}

void Heat(Handling& handling)
{
    constexpr int kWidth = 16;
    constexpr int kHeight = 9;
    Allocator& memory = handling.Memory();
    const Json* const asked = Member(*handling.body, "heatMapQuery");
    const Json& query = asked != nullptr ? *asked : *handling.body;
    const std::string channel(AsText(Member(query, "channelGuid")));
    Json fields(rapidjson::kArrayType);
    for (int i = 0; i < kWidth * kHeight; ++i) {
        fields.PushBack(Json(Drawn(channel + std::to_string(i), 256)), memory);
    }
    Json values(rapidjson::kArrayType);
    for (const Step& step : Steps(query, AsText(Member(query, "timeUnit"), "hour"))) {
        values.PushBack(Object(memory)
                            .Text("startTime", step.begin)
                            .Text("endTime", step.end)
                            .Number("value", Drawn(channel + step.begin, 500))
                            .Take(),
                        memory);
    }
    SetMember(handling.data, "dsHeatMapResultData",
              Object(memory)
                  .Text("channelGuid", channel)
                  .Number("width", kWidth)
                  .Number("height", kHeight)
                  .Set("fieldList", std::move(fields))
                  .Set("dsHeatMapValueList", std::move(values))
                  .Take(),
              memory);
}

} // namespace

void AddStatistics(Services& services)
{
    services["statistics.people"] = People;
    services["statistics.alarms"] = Alarms;
    services["statistics.heat"] = Heat;
}

} // namespace nexwire::simulator
