#include "src/Expectations.h"

#include <algorithm>
#include <limits>

#include "src/Faults.h"
#include "src/Fields.h"
#include "src/Problem.h"
#include "src/Query.h"

namespace nexwire::simulator {
namespace {

constexpr std::int64_t kAnyNumber = std::numeric_limits<std::int64_t>::max();

/// Where a value is not what was wanted; empty when it is. Objects may have more members than wanted.
std::string Difference(const Json& wanted, const Json* value, const std::string& where)
{
    if (value == nullptr) {
        return where + " is not there";
    }
    if (wanted.IsObject() && value->IsObject()) {
        for (const auto& member : wanted.GetObject()) {
            const std::string key(AsText(&member.name));
            const std::string found =
                Difference(member.value, Member(*value, key), where.empty() ? key : where + "." + key);
            if (!found.empty()) {
                return found;
            }
        }
        return {};
    }
    if (wanted.IsArray() && value->IsArray() && wanted.Size() == value->Size()) {
        for (rapidjson::SizeType i = 0; i < wanted.Size(); ++i) {
            const std::string found = Difference(wanted[i], &(*value)[i], where + "[" + std::to_string(i) + "]");
            if (!found.empty()) {
                return found;
            }
        }
        return {};
    }
    return wanted == *value ? std::string() : where + " is " + PrintJson(*value) + ", not " + PrintJson(wanted);
}

std::string BodyDifference(const std::string& wanted, std::string_view body)
{
    if (wanted.empty()) {
        return {};
    }
    Document sent;
    std::string error;
    if (!ParseJson(sent, body, error) || !sent.IsObject()) {
        return "there is no such body";
    }
    const Document pattern = ParseOwn(wanted);
    // Members may be named with or without the root around them.
    const bool inside = sent.MemberCount() == 1 && sent.MemberBegin()->value.IsObject() &&
                        Member(pattern, AsText(&sent.MemberBegin()->name)) == nullptr;
    return Difference(pattern, inside ? &sent.MemberBegin()->value : &sent, {});
}

/// How much two names have in common, 0 to 1.
double Likeness(std::string_view left, std::string_view right)
{
    std::size_t head = 0;
    while (head < left.size() && head < right.size() && Same(left.substr(head, 1), right.substr(head, 1))) {
        ++head;
    }
    std::size_t tail = 0;
    while (head + tail < left.size() && head + tail < right.size() &&
           Same(left.substr(left.size() - tail - 1, 1), right.substr(right.size() - tail - 1, 1))) {
        ++tail;
    }
    return static_cast<double>(head + tail) /
           static_cast<double>(std::max({left.size(), right.size(), std::size_t{1}}));
}

} // namespace

Expectations::Wanted Expectations::Read(const Json& json, std::int64_t after)
{
    if (!json.IsObject()) {
        throw Problem(400, "an expectation is an object");
    }
    for (const auto& member : json.GetObject()) {
        const std::string_view key = AsText(&member.name);
        const bool text = key == "function" || key == "path";
        const bool number = key == "times" || key == "atLeast" || key == "atMost";
        if ((!text && !number && key != "body") || (text && !member.value.IsString()) ||
            (number && AsInt(&member.value, -1) < 0) || (key == "body" && !member.value.IsObject())) {
            throw Problem(400,
                          "an expectation has no such member or it is of another type: \"" + std::string(key) + "\"");
        }
    }
    Wanted wanted;
    wanted.function = AsText(Member(json, "function"));
    wanted.path = AsText(Member(json, "path"));
    if (wanted.function.empty() && wanted.path.empty()) {
        throw Problem(400, "an expectation names a function or a path");
    }
    const Json* body = Member(json, "body");
    wanted.body = body == nullptr ? std::string() : PrintJson(*body);
    const Json* times = Member(json, "times");
    const Json* atMost = Member(json, "atMost");
    wanted.least = AsInt(times, AsInt(Member(json, "atLeast"), atMost == nullptr ? 1 : 0));
    wanted.most = AsInt(times, AsInt(atMost, kAnyNumber));
    wanted.after = after;
    return wanted;
}

void Expectations::Add(const Json& json, std::int64_t after)
{
    std::vector<Wanted> more;
    if (json.IsArray()) {
        for (const Json& each : json.GetArray()) {
            more.push_back(Read(each, after));
        }
    } else {
        more.push_back(Read(json, after));
    }
    const std::lock_guard<std::mutex> lock(mutex_);
    std::move(more.begin(), more.end(), std::back_inserter(wanted_));
    idle_ = wanted_.empty();
}

void Expectations::Clear()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    wanted_.clear();
    idle_ = true;
}

std::string Expectations::Mismatch(const Wanted& wanted, std::string_view path,
                                   const std::vector<const WireFunction*>& functions, std::string_view body,
                                   bool& called)
{
    called = false;
    const bool named =
        wanted.function.empty() || std::any_of(functions.begin(), functions.end(),
                                               [&](const WireFunction* each) { return Names(wanted.function, *each); });
    if (!named) {
        return functions.empty() ? "no function sends this" : "it is " + functions.front()->name;
    }
    if (!wanted.path.empty() && !Fits(wanted.path, path)) {
        return "its path is " + std::string(path);
    }
    called = true;
    return BodyDifference(wanted.body, body);
}

void Expectations::Note(std::string_view path, const std::vector<const WireFunction*>& functions, std::string_view body)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    for (Wanted& wanted : wanted_) {
        bool called = false;
        wanted.seen += Mismatch(wanted, path, functions, body, called).empty() ? 1 : 0;
    }
}

// The call that is most like what was wanted, and what keeps it from being that; null without calls. Where there were
// too many, the last of them.
Json Expectations::Nearest(const Wanted& wanted, const ExchangeText& texts, const ExchangeLog& log, Allocator& memory)
{
    const bool tooOften = wanted.seen > wanted.most;
    std::int64_t nearest = 0;
    std::string reason;
    double best = -1.0;
    for (const KeptExchange& kept : log.After(wanted.after, ExchangeLog::kMostExchanges)) {
        const std::string& path = kept.exchange->served.request.path;
        const auto functions = texts.FunctionsOf(kept);
        bool called = false;
        const std::string why =
            Mismatch(wanted, path, functions, kept.bodies ? *kept.bodies->sent : std::string(), called);
        double score = called ? 2.0 : Likeness(wanted.path, path);
        if (!called && !functions.empty() && !wanted.function.empty()) {
            // With or without the "C".
            const std::string_view name = functions.front()->name;
            score = std::max(Likeness(wanted.function, name), Likeness(wanted.function, name.substr(1)));
        }
        if (why.empty() == tooOften && score >= best) {
            best = score;
            nearest = kept.exchange->id;
            reason = tooOften ? "once more than wanted" : texts.Redacted(why);
        }
    }
    return nearest == 0 ? Json() : Fields(memory).Number("id", nearest).Text("why", reason).Take();
}

Json Expectations::Report(const ExchangeText& texts, const ExchangeLog& log, Allocator& memory) const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    Json list(rapidjson::kArrayType);
    bool met = true;
    for (const Wanted& wanted : wanted_) {
        Fields entry(memory);
        if (!wanted.function.empty()) {
            entry.Text("function", wanted.function);
        }
        if (!wanted.path.empty()) {
            entry.Text("path", wanted.path);
        }
        if (!wanted.body.empty()) {
            entry.Value("body", Opened(texts.Redacted(wanted.body), memory));
        }
        entry.Number("atLeast", wanted.least);
        if (wanted.most != kAnyNumber) {
            entry.Number("atMost", wanted.most);
        }
        entry.Number("seen", wanted.seen).Flag("met", wanted.Met());
        Json nearest = wanted.Met() ? Json() : Nearest(wanted, texts, log, memory);
        if (!nearest.IsNull()) {
            entry.Value("nearest", std::move(nearest));
        }
        met = met && wanted.Met();
        list.PushBack(entry.Take(), memory);
    }
    return Fields(memory).Flag("met", met).Value("expectations", std::move(list)).Take();
}

} // namespace nexwire::simulator
