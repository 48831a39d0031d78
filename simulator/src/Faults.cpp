#include "src/Faults.h"

#include <algorithm>

#include "src/Fields.h"
#include "src/Problem.h"
#include "src/Query.h"

namespace nexwire::simulator {
namespace {

constexpr std::string_view kNames[] = {"delay", "drip",  "resetBefore", "resetAfter",
                                       "torn",  "empty", "refuse",      "status"};
constexpr std::int64_t kLongestMs = 10 * 60 * 1000;

Fault FaultNamed(std::string_view name)
{
    const auto* found = std::find(std::begin(kNames), std::end(kNames), name);
    if (found == std::end(kNames)) {
        throw Problem(400, "there is no fault \"" + std::string(name) +
                               "\"; there are delay, drip, resetBefore, resetAfter, torn, empty, refuse, status");
    }
    return static_cast<Fault>(found - std::begin(kNames));
}

void CheckKinds(const Json& rule)
{
    if (!rule.IsObject()) {
        throw Problem(400, "a rule is an object");
    }
    for (const auto& member : rule.GetObject()) {
        const std::string_view key = AsText(&member.name);
        const Json& value = member.value;
        const auto is = [&](std::initializer_list<std::string_view> keys) {
            return std::find(keys.begin(), keys.end(), key) != keys.end();
        };
        const bool right = is({"name", "function", "path", "fault", "code"}) ? value.IsString()
                           : is({"ms", "status", "seed", "times", "struck"}) ? value.IsInt64()
                           : is({"probability"})                             ? value.IsNumber()
                           : is({"enabled", "done"})                         ? value.IsBool()
                                                                             : false;
        if (!right) {
            throw Problem(400, "a rule has no such member or it is of another type: \"" + std::string(key) + "\"");
        }
    }
}

bool GoesOn(const FaultRule& left, const FaultRule& right)
{
    return left.name == right.name && left.fault == right.fault && left.seed == right.seed;
}

} // namespace

bool Names(std::string_view pattern, const WireFunction& function)
{
    const std::string_view name = function.name;
    return Fits(pattern, name) || (name.front() == 'C' && Fits(pattern, name.substr(1)));
}

Faults::Kept Faults::Read(const Json& json, std::size_t number) const
{
    CheckKinds(json);
    Kept kept;
    FaultRule& rule = kept.rule;
    const auto text = [&](const char* key) { return std::string(AsText(Member(json, key))); };
    rule.name = text("name").empty() ? "fault " + std::to_string(number) : text("name");
    rule.function = text("function");
    rule.path = text("path");
    rule.fault = FaultNamed(AsText(Member(json, "fault")));
    rule.ms = AsInt(Member(json, "ms"), rule.fault == Fault::kDelay || rule.fault == Fault::kDrip ? 1000 : 0);
    rule.code = text("code").empty() ? "1-90" : text("code");
    const std::int64_t status = AsInt(Member(json, "status"), rule.status);
    rule.done = AsBool(Member(json, "done"), true);
    rule.probability = AsDouble(Member(json, "probability"), 1.0);
    rule.seed = AsInt(Member(json, "seed"));
    rule.times = AsInt(Member(json, "times"));
    rule.enabled = AsBool(Member(json, "enabled"), true);
    if (rule.ms < 0 || rule.ms > kLongestMs || status < 100 || status > 599 || rule.times < 0 ||
        !(rule.probability >= 0.0 && rule.probability <= 1.0)) {
        throw Problem(400, "rule \"" + rule.name +
                               "\": ms is 0 to 600000, status 100 to 599, probability 0 to 1, times at least 0");
    }
    rule.status = static_cast<unsigned>(status);
    kept.dice.seed(static_cast<std::mt19937::result_type>(rule.seed));
    for (const Kept& known : rules_) {
        if (GoesOn(known.rule, rule)) {
            rule.struck = known.rule.struck;
            kept.dice = known.dice;
        }
    }
    return kept;
}

void Faults::Set(const Json& list)
{
    if (!list.IsArray()) {
        throw Problem(400, "the rules are a list");
    }
    const std::lock_guard<std::mutex> lock(mutex_);
    std::vector<Kept> rules;
    for (const Json& rule : list.GetArray()) {
        rules.push_back(Read(rule, rules.size() + 1));
    }
    rules_ = std::move(rules);
    idle_ = rules_.empty();
}

void Faults::Add(const Json& json)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    Kept rule = Read(json, rules_.size() + 1);
    const auto known =
        std::find_if(rules_.begin(), rules_.end(), [&](const Kept& each) { return each.rule.name == rule.rule.name; });
    if (known != rules_.end()) {
        *known = std::move(rule);
    } else {
        rules_.push_back(std::move(rule));
    }
    idle_ = false;
}

void Faults::Clear()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    rules_.clear();
    idle_ = true;
}

Json Faults::List(Allocator& memory) const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    Json list(rapidjson::kArrayType);
    for (const Kept& kept : rules_) {
        const FaultRule& rule = kept.rule;
        list.PushBack(Fields(memory)
                          .Text("name", rule.name)
                          .Text("function", rule.function)
                          .Text("path", rule.path)
                          .Text("fault", kNames[static_cast<std::size_t>(rule.fault)])
                          .Number("ms", rule.ms)
                          .Text("code", rule.code)
                          .Number("status", rule.status)
                          .Flag("done", rule.done)
                          .Value("probability", Json(rule.probability))
                          .Number("seed", rule.seed)
                          .Number("times", rule.times)
                          .Flag("enabled", rule.enabled)
                          .Number("struck", rule.struck)
                          .Take(),
                      memory);
    }
    return list;
}

std::optional<FaultRule> Faults::Strike(std::string_view path, const std::vector<const WireFunction*>& functions)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    for (Kept& kept : rules_) {
        FaultRule& rule = kept.rule;
        const bool meant =
            rule.enabled && (rule.times == 0 || rule.struck < rule.times) &&
            (rule.path.empty() || Fits(rule.path, path)) &&
            (rule.function.empty() || std::any_of(functions.begin(), functions.end(), [&](const WireFunction* each) {
                 return Names(rule.function, *each);
             }));
        // The dice are thrown for what is meant only, so that a seed gives the same run again.
        if (meant && static_cast<double>(kept.dice()) < rule.probability * 4294967296.0) {
            ++rule.struck;
            return rule;
        }
    }
    return std::nullopt;
}

Answer Spoil(const FaultRule& rule, const std::function<Answer()>& handle,
             const std::function<Answer(const std::string&)>& refuse)
{
    Answer answer;
    if (rule.fault == Fault::kRefuse) {
        answer = refuse(rule.code);
    } else if (rule.fault == Fault::kStatus) {
        answer.status = rule.status;
        answer.type = "text/plain";
    } else if (rule.done) {
        answer = handle();
    }
    answer.fault = rule.name;
    answer.delayMs = std::max(answer.delayMs, rule.ms);
    switch (rule.fault) {
    case Fault::kDrip:
        answer.damage = Damage::kDrip;
        break;
    case Fault::kResetBefore:
        answer.damage = Damage::kResetBefore;
        break;
    case Fault::kResetAfter:
        answer.damage = Damage::kResetAfter;
        break;
    case Fault::kTorn:
        answer.damage = Damage::kTorn;
        break;
    case Fault::kEmpty:
        answer.body.clear();
        break;
    case Fault::kDelay:
    case Fault::kRefuse:
    case Fault::kStatus:
        break;
    }
    return answer;
}

} // namespace nexwire::simulator
