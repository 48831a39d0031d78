// What an entry says beside its role: what is refused, changed, joined and filtered.

#include "src/Entry.h"

namespace nexwire::simulator {
namespace {

FilterRule MakeFilter(const std::string& field, const Json& entry)
{
    static constexpr std::pair<std::string_view, Test> kTests[] = {
        {"equals", Test::kEquals},         {"contains", Test::kContains}, {"startsWith", Test::kStartsWith},
        {"oneOf", Test::kOneOf},           {"atLeast", Test::kAtLeast},   {"atMost", Test::kAtMost},
        {"hasElement", Test::kHasElement},
    };
    FilterRule rule;
    rule.field = field;
    if (!entry.IsObject()) {
        rule.value = &entry;
        return rule;
    }
    OnlyMembers(entry, {"element", "equals", "contains", "startsWith", "oneOf", "atLeast", "atMost", "hasElement"});
    rule.element = AsText(Member(entry, "element"));
    for (const auto& [name, test] : kTests) {
        if (const Json* value = Member(entry, name)) {
            rule.value = value;
            rule.test = test;
        }
    }
    if (rule.value == nullptr) {
        throw std::runtime_error("filter on \"" + rule.field + "\" has no test");
    }
    return rule;
}

} // namespace

void Description::LoadRefinements(const Json& entry, Action& action) const
{
    action.given = Member(entry, "if");
    action.key = Member(entry, "key");
    if (const Json* items = Member(entry, "items")) {
        action.noItems = items->IsBool() && !items->GetBool();
        action.items = AsText(items);
    }
    action.by = Texts(Member(entry, "by"));
    action.set = Member(entry, "set");
    action.need = Texts(Member(entry, "need"));
    action.references = References(Member(entry, "references"));
    for (const Reference& reference : action.references) {
        NeedCollection(reference.collection);
    }
    const Json* keys = Member(entry, "listKeys");
    ForMembers(Member(entry, "lists"), [&](const std::string& from, const Json& target) {
        ListRule rule;
        rule.remove = from.front() == '-';
        rule.from = from.substr(rule.remove ? 1 : 0);
        rule.target = AsText(&target);
        rule.by = keys == nullptr ? std::vector<std::string>() : Texts(Member(*keys, rule.target));
        action.lists.push_back(std::move(rule));
    });
    ForEach(Member(entry, "marks"), [&](const Json& rule) {
        OnlyMembers(rule, {"when", "set"});
        action.marks.push_back({Texts(Member(rule, "when")), Member(rule, "set")});
        if (action.marks.back().values == nullptr) {
            throw std::runtime_error("a mark sets nothing");
        }
    });
    ForEach(Member(entry, "refuse"), [&](const Json& rule) {
        OnlyMembers(rule, {"when", "has", "reason"});
        const Reason reason = ReasonByName(NeedText(rule, "reason"));
        action.refusals.push_back({Texts(Member(rule, "when")), Member(rule, "has"), reason});
        if (reason == Reason::kNone || action.refusals.back().has == nullptr) {
            throw std::runtime_error("a refusal without \"has\" or with an unknown reason");
        }
    });
    ForEach(Member(entry, "touch"), [&](const Json& rule) {
        OnlyMembers(rule, {"collection", "field", "has", "set"});
        action.touches.push_back(
            {{NeedText(rule, "collection"), NeedText(rule, "field")}, Member(rule, "has"), Member(rule, "set")});
        if (action.touches.back().values == nullptr) {
            throw std::runtime_error("a touch sets nothing");
        }
    });
    // "devices.name by deviceGuid", or a list of them
    ForMembers(Member(entry, "join"), [&](const std::string& member, const Json& rule) {
        for (const std::string& text : Texts(&rule)) {
            const std::size_t dot = text.find('.');
            const std::size_t by = text.find(" by ");
            if (dot == std::string::npos || by == std::string::npos || dot > by) {
                throw std::runtime_error("a join reads \"collection.member by member\"");
            }
            action.joins.push_back({member, NeedCollection(text.substr(0, dot)).name,
                                    text.substr(dot + 1, by - dot - 1), text.substr(by + 4)});
        }
    });
    ForMembers(Member(entry, "filter"),
               [&](const std::string& field, const Json& rule) { action.filters.push_back(MakeFilter(field, rule)); });
    action.any = AsBool(Member(entry, "any"));
    action.narrow = AsBool(Member(entry, "narrow"), true);
    action.countBy = AsText(Member(entry, "countBy"));
    action.replace = AsBool(Member(entry, "replace"));
    action.merge = AsBool(Member(entry, "merge"));
    action.reach = Member(entry, "reach");
    action.answer = Member(entry, "answer");
}

} // namespace nexwire::simulator
