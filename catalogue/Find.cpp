#include "catalogue/Find.h"

#include <algorithm>
#include <map>

#include <keel/StringUtil.h>

namespace nexwire::catalogue {
namespace {

/// A name as typed, taken apart.
struct Wanted {
    std::string name;
    std::vector<std::string> arguments; ///< By structure or by name.
};

std::string Trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

Wanted TakeApart(const std::string& text)
{
    Wanted wanted;
    const std::size_t open = text.find('(');
    wanted.name = Trimmed(text.substr(0, open));
    if (open == std::string::npos) {
        return wanted;
    }
    std::size_t at = open + 1;
    const std::size_t close = std::min(text.find(')', at), text.size());
    while (at < close) {
        const std::size_t end = std::min(text.find(',', at), close);
        const std::string argument = Trimmed(text.substr(at, end - at));
        if (!argument.empty()) {
            wanted.arguments.push_back(argument);
        }
        at = end + 1;
    }
    return wanted;
}

/// What brackets can call an argument: its structure, or its name where it has none.
std::string InBrackets(const Argument& argument)
{
    return NeedsName(argument.type->shape) ? argument.name : argument.type->name();
}

bool Matches(const Function& function, const Wanted& wanted, bool exactCase)
{
    const auto same = [&](const std::string& text) {
        return exactCase ? text == wanted.name : LowerCase(text) == LowerCase(wanted.name);
    };
    const std::vector<Argument>& all = function.Arguments();
    return (same(function.Name()) || same(function.Member()) || same(function.ClassName())) &&
           std::all_of(wanted.arguments.begin(), wanted.arguments.end(), [&](const std::string& argument) {
               return std::any_of(all.begin(), all.end(),
                                  [&](const Argument& each) { return InBrackets(each) == argument; });
           });
}

/// Of those that fit, the one whose every argument was named, if there is one.
void PreferComplete(std::vector<const Function*>& found, const Wanted& wanted)
{
    for (const Function* function : found) {
        const std::vector<Argument>& all = function->Arguments();
        if (!wanted.arguments.empty() &&
            std::equal(all.begin(), all.end(), wanted.arguments.begin(), wanted.arguments.end(),
                       [](const Argument& each, const std::string& name) { return InBrackets(each) == name; })) {
            found = {function};
            return;
        }
    }
}

std::string NameWith(const Function& function, bool everyArgument)
{
    std::string inside;
    for (const Argument& argument : function.Arguments()) {
        if (everyArgument || !NeedsName(argument.type->shape)) {
            inside += (inside.empty() ? "" : ", ") + InBrackets(argument);
        }
    }
    return function.Name() + "(" + inside + ")";
}

std::size_t Distance(const std::string& left, const std::string& right)
{
    std::vector<std::size_t> row(right.size() + 1);
    for (std::size_t j = 0; j <= right.size(); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (left[i - 1] == right[j - 1] ? 0U : 1U)});
            diagonal = above;
        }
    }
    return row[right.size()];
}

bool TakesBody(const Argument& argument)
{
    return argument.input() && !NeedsName(argument.type->shape);
}

/// Sets the call's arguments. False with the reason when something does not fit or is missing.
/// What a wrong name may have meant, and what is missing beside it.
std::string Alternatives(const Function& function, const std::string& name, const Given& given)
{
    std::vector<std::string> names;
    std::string missing;
    for (const Argument& argument : function.Arguments()) {
        if (argument.input()) {
            names.push_back(argument.name);
        }
        const bool there = std::any_of(given.values.begin(), given.values.end(), [&](const auto& value) {
            const std::size_t index = function.ArgumentNamed(value.first);
            return index != Function::kNoArgument && function.Arguments()[index].name == argument.name;
        });
        if (!there && argument.required() && !(given.hasBody && TakesBody(argument))) {
            missing += (missing.empty() ? "" : ", ") + argument.name;
        }
    }
    std::string text;
    for (const std::string& close : Closest(name, names)) {
        text += (text.empty() ? "; did you mean " : ", ") + close;
    }
    if (text.empty()) {
        for (const std::string& each : names) {
            text += (text.empty() ? "; it takes " : ", ") + each;
        }
    }
    return text + (missing.empty() ? "" : "; not given: " + missing);
}

bool Fill(Call& call, const Given& given, std::string& error)
{
    const std::vector<Argument>& arguments = call.function().Arguments();
    std::vector<bool> set(arguments.size(), false);
    for (const auto& value : given.values) {
        const std::size_t index = call.function().ArgumentNamed(value.first);
        if (index != Function::kNoArgument) {
            if (set[index]) {
                error = "'" + value.first + "' is given twice";
                return false;
            }
            set[index] = true;
        }
        if (!call.Set(value.first, value.second, error)) {
            if (index == Function::kNoArgument) {
                error += Alternatives(call.function(), value.first, given);
            }
            return false;
        }
    }
    if (given.hasBody) {
        std::size_t fits = arguments.size();
        std::string reason = "it takes no body, or its structures are all given";
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            if (TakesBody(arguments[i]) && !set[i]) {
                if (call.Set(i, given.body, reason)) {
                    if (fits != arguments.size()) {
                        error = "the body fits '" + arguments[fits].name + "' and '" + arguments[i].name +
                                "'; give them by name";
                        return false;
                    }
                    fits = i;
                }
            }
        }
        if (fits == arguments.size()) {
            error = reason;
            return false;
        }
        set[fits] = true;
    }
    std::string missing;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (!set[i] && arguments[i].required()) {
            missing += (missing.empty() ? "" : ", ") + arguments[i].name;
        }
    }
    if (!missing.empty()) {
        error = "not given: " + missing;
        return false;
    }
    return true;
}

} // namespace

std::string LowerCase(const std::string& text)
{
    return Keel::StringUtil::LowerCase(text);
}

std::vector<const Function*> Find(const std::string& name)
{
    const Wanted wanted = TakeApart(name);
    std::vector<const Function*> found;
    for (const bool exactCase : {true, false}) {
        for (const Function& function : All()) {
            if (Matches(function, wanted, exactCase)) {
                found.push_back(&function);
            }
        }
        if (!found.empty()) {
            break;
        }
    }
    PreferComplete(found, wanted);
    return found;
}

std::string UniqueName(const Function& function)
{
    // All are asked for whenever all are listed.
    static const std::map<const Function*, std::string> names = [] {
        std::map<std::string, int> counts;
        for (const Function& each : All()) {
            ++counts[each.Name()];
            ++counts[NameWith(each, false)];
        }
        std::map<const Function*, std::string> all;
        for (const Function& each : All()) {
            const std::string shorter = NameWith(each, false);
            // Structures that another overload has, too, choose both.
            const bool chooses = counts[shorter] == 1 && Find(shorter).size() == 1;
            all[&each] = counts[each.Name()] == 1 ? each.Name() : chooses ? shorter : NameWith(each, true);
        }
        return all;
    }();
    return names.at(&function);
}

std::vector<std::string> Similar(const std::string& name)
{
    const std::string wanted = LowerCase(TakeApart(name).name);
    std::vector<std::pair<std::size_t, std::string>> close;
    for (const Function& function : All()) {
        const std::string full = LowerCase(function.Name());
        const std::size_t distance =
            full.find(wanted) != std::string::npos
                ? 0
                : std::min({Distance(wanted, full), Distance(wanted, LowerCase(function.Member())),
                            Distance(wanted, LowerCase(function.ClassName()))});
        if (distance <= wanted.size() / 3) {
            close.emplace_back(distance, function.Name());
        }
    }
    std::sort(close.begin(), close.end());
    close.erase(std::unique(close.begin(), close.end()), close.end());
    std::vector<std::string> names;
    for (std::size_t i = 0; i < close.size() && i < 5; ++i) {
        names.push_back(close[i].second);
    }
    return names;
}

std::vector<std::string> Closest(const std::string& name, const std::vector<std::string>& candidates)
{
    const std::string wanted = LowerCase(name);
    std::vector<std::pair<std::size_t, std::string>> close;
    for (const std::string& candidate : candidates) {
        const std::size_t distance = Distance(wanted, LowerCase(candidate));
        if (distance <= std::max<std::size_t>(wanted.size() / 3, 1)) {
            close.emplace_back(distance, candidate);
        }
    }
    std::sort(close.begin(), close.end());
    std::vector<std::string> names;
    for (std::size_t i = 0; i < close.size() && i < 3; ++i) {
        names.push_back(close[i].second);
    }
    return names;
}

std::string SearchText(const Function& function)
{
    return LowerCase(function.Module() + " " + function.Signature());
}

std::unique_ptr<Call> Prepare(const std::vector<const Function*>& candidates, const Given& given, std::string& error)
{
    std::unique_ptr<Call> fitting;
    std::string several;
    std::string reasons;
    for (const Function* candidate : candidates) {
        auto call = std::make_unique<Call>(*candidate);
        std::string reason;
        if (!Fill(*call, given, reason)) {
            reasons += candidates.size() == 1 ? reason : "\n  " + UniqueName(*candidate) + ": " + reason;
            continue;
        }
        several += "\n  " + UniqueName(*candidate);
        if (fitting) {
            continue;
        }
        fitting = std::move(call);
    }
    if (several.find('\n', 1) != std::string::npos) {
        error = "what is given fits more than one function; name one of" + several;
        return nullptr;
    }
    if (!fitting) {
        error = candidates.size() == 1 ? reasons : "what is given fits none of" + reasons;
    }
    return fitting;
}

} // namespace nexwire::catalogue
