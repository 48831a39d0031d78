#include "src/Rules.h"

#include "src/Clock.h"

#include <algorithm>
#include <unordered_map>

namespace nexwire::simulator {
namespace {

bool AnySent(const std::vector<std::string>& keys, const Json& source)
{
    return keys.empty() || std::any_of(keys.begin(), keys.end(),
                                       [&](const std::string& key) { return Member(source, key) != nullptr; });
}

std::string Identity(const Json& element, const std::vector<std::string>& by)
{
    if (by.empty()) {
        return PrintJson(element);
    }
    std::string identity;
    for (const std::string& field : by) {
        identity += AsText(Member(element, field));
        identity += '\x1f';
    }
    return identity;
}

void ApplyList(Handling& handling, const ListRule& rule, const Json& source, Json& document)
{
    const Json* changes = Member(source, rule.from);
    Allocator& memory = handling.Memory();
    if (Json* target = Member(document, rule.target); target == nullptr || !target->IsArray()) {
        SetMember(document, rule.target, Json(rapidjson::kArrayType), memory);
    }
    if (changes == nullptr || !changes->IsArray()) {
        return;
    }
    Json& target = *Member(document, rule.target);
    std::unordered_map<std::string, const Json*> changed;
    std::vector<std::string> order;
    for (const Json& change : changes->GetArray()) {
        std::string identity = Identity(change, rule.by);
        if (changed.insert_or_assign(identity, &change).second) {
            order.push_back(std::move(identity));
        }
    }
    Json kept(rapidjson::kArrayType);
    for (Json& element : target.GetArray()) {
        const auto found = changed.find(Identity(element, rule.by));
        if (found == changed.end()) {
            kept.PushBack(element, memory);
        } else if (!rule.remove) {
            kept.PushBack(Copy(*found->second, memory), memory);
            found->second = nullptr; // Stands already.
        }
    }
    if (!rule.remove) {
        for (const std::string& identity : order) {
            if (const Json* change = changed[identity]) {
                kept.PushBack(Copy(*change, memory), memory);
            }
        }
    }
    target = kept;
}

void Merge(Handling& handling, const Json& source, Json& document)
{
    for (const auto& member : source.GetObject()) {
        const std::string_view name = AsText(&member.name);
        const auto& lists = handling.action->lists;
        const bool isChange =
            std::any_of(lists.begin(), lists.end(), [&](const ListRule& r) { return r.from == name; });
        // Of two equal keys the first counts, here as everywhere else.
        if (!isChange && Member(source, name) == &member.value) {
            SetMember(document, name, Copy(member.value, handling.Memory()), handling.Memory());
        }
    }
}

// Calls `each` with everything that a dotted path leads to, through the elements of lists on the way; with null where
// the last member of an object that is there is missing.
void Walk(const Json& value, std::string_view path, const std::string& where,
          const std::function<void(const Json*, const std::string&)>& each)
{
    if (value.IsArray() && !path.empty()) {
        rapidjson::SizeType index = 0;
        for (const Json& element : value.GetArray()) {
            Walk(element, path, where + "[" + std::to_string(index++) + "]", each);
        }
        return;
    }
    if (path.empty()) {
        each(&value, where);
        return;
    }
    const std::size_t dot = path.find('.');
    const std::string_view name = path.substr(0, dot);
    const std::string place = where + "." + std::string(name);
    const std::string_view rest = dot == std::string_view::npos ? std::string_view() : path.substr(dot + 1);
    const Json* member = Member(value, name);
    if (member != nullptr) {
        Walk(*member, rest, place, each);
    } else if (rest.empty()) {
        each(nullptr, place);
    }
}

void CheckNeeds(const std::vector<DottedPath>& paths, const Json& source, const std::string& where, bool whole)
{
    for (const DottedPath& path : paths) {
        Walk(source, path, where, [&](const Json* value, const std::string& place) {
            if (value == nullptr ? whole || path.find('.') != std::string::npos : AsText(value, "-").empty()) {
                throw Refusal(Reason::kMissingField, place);
            }
        });
    }
}

void CheckReferences(Handling& handling, const std::vector<Reference>& references, const Json& source,
                     const std::string& where)
{
    const auto check = [&](std::string_view text, const std::string& collection, const std::string& place) {
        if (!text.empty() && !handling.store.Has(collection, text)) {
            throw Refusal(collection == kDevices ? Reason::kUnknownDevice : Reason::kUnknownGuid,
                          place + " \"" + std::string(text) + "\"");
        }
    };
    for (const Reference& reference : references) {
        if (reference.path.front() == '{') {
            const std::string name = reference.path.substr(1, reference.path.size() - 2);
            check(handling.Identifier(name), reference.collection, name);
            continue;
        }
        Walk(source, reference.path, where, [&](const Json* value, const std::string& place) {
            check(AsText(value), reference.collection, place);
            for (const Json& element : Elements(value)) {
                check(AsText(&element), reference.collection, place);
            }
        });
    }
}

} // namespace

void DropInternals(Json& document)
{
    if (!document.IsObject()) {
        return;
    }
    for (auto member = document.MemberBegin(); member != document.MemberEnd();) {
        const std::string_view name = AsText(&member->name);
        member = !name.empty() && name.front() == '_' ? document.EraseMember(member) : member + 1;
    }
}

std::optional<StoreValue> ToStoreValue(const Json& value)
{
    if (value.IsString()) {
        return StoreValue(std::string(AsText(&value)));
    }
    if (value.IsBool()) {
        return StoreValue(std::int64_t{value.GetBool() ? 1 : 0});
    }
    if (value.IsInt64()) {
        return StoreValue(value.GetInt64());
    }
    if (value.IsNumber()) {
        return StoreValue(value.GetDouble());
    }
    return std::nullopt;
}

void CheckBody(Handling& handling)
{
    const Json nothing(rapidjson::kObjectType);
    const Json& body = handling.body == nullptr ? nothing : *handling.body;
    CheckNeeds(handling.action->need, body, handling.endpoint.root, true);
    CheckReferences(handling, handling.action->references, body, handling.endpoint.root);
}

void CheckElement(Handling& handling, const Json& source, bool whole)
{
    const Collection& collection = *handling.action->collection;
    CheckNeeds(collection.need, source, handling.endpoint.root, whole);
    CheckReferences(handling, collection.references, source, handling.endpoint.root);
}

void CheckRefusals(Handling& handling, const Json& source, const Json& document)
{
    for (const RefuseRule& rule : handling.action->refusals) {
        bool holds = AnySent(rule.when, source);
        for (const auto& member : rule.has->GetObject()) {
            const Json* value = Member(document, AsText(&member.name));
            holds = holds && value != nullptr && *value == member.value;
        }
        if (holds) {
            throw Refusal(rule.reason, {});
        }
    }
}

void CheckUnique(Handling& handling, std::string_view key, const Json& document)
{
    const Collection& collection = *handling.action->collection;
    for (const auto& fields : collection.unique) {
        Selection same{collection.name};
        std::string what;
        for (const std::string& field : fields) {
            const Json* value = AtPath(document, field);
            const auto compared = value == nullptr ? std::nullopt : ToStoreValue(*value);
            if (!compared || AsText(value, "-").empty()) {
                same.conditions.clear();
                break;
            }
            same.conditions.push_back({field, Test::kEquals, *compared});
            what += (what.empty() ? "" : ", ") + field + " " + PrintJson(*value);
        }
        if (same.conditions.empty()) {
            continue;
        }
        bool taken = false;
        handling.store.Select(same,
                              [&](const std::string& other, const std::string&) { taken = taken || other != key; });
        if (taken) {
            throw Refusal(Reason::kDuplicate, what);
        }
    }
}

Condition HoldsText(const std::string& field, std::string_view text)
{
    const std::size_t list = field.find("[]");
    if (list == std::string::npos) {
        return {field, Test::kEquals, StoreValue(std::string(text))};
    }
    Document texts(rapidjson::kArrayType);
    texts.PushBack(MakeText(text, texts.GetAllocator()), texts.GetAllocator());
    return {field.substr(0, list), Test::kHasElement, StoreValue(PrintJson(texts)),
            field.substr(std::min(list + 3, field.size()))};
}

bool Used(Handling& handling, const std::string& key)
{
    const auto& uses = handling.action->collection->uses;
    return std::any_of(uses.begin(), uses.end(), [&](const UseRule& use) {
        return handling.store.Count({use.collection, {HoldsText(use.field, key)}}) > 0;
    });
}

void Apply(Handling& handling, const Json& source, Json& document)
{
    Merge(handling, source, document);
    if (handling.action->set != nullptr) {
        const Json more = handling.Fill(*handling.action->set);
        Merge(handling, more, document);
    }
    for (const ListRule& rule : handling.action->lists) {
        ApplyList(handling, rule, source, document);
    }
    for (const MarkRule& mark : handling.action->marks) {
        if (AnySent(mark.when, source)) {
            const Json values = handling.Fill(*mark.values);
            Merge(handling, values, document);
        }
    }
    const std::string& stamp = handling.action->collection->stamp;
    if (!stamp.empty()) {
        const WireMember* member = handling.action->collection->Find(stamp);
        const bool text = member != nullptr && member->kind == WireKind::kText;
        SetMember(document, stamp, text ? MakeText(IsoTime(handling.nowMs), handling.Memory()) : Json(handling.nowMs),
                  handling.Memory());
    }
}

void Touch(Handling& handling, const std::string& key)
{
    Json touched(rapidjson::kArrayType);
    for (const TouchRule& rule : handling.action->touches) {
        Selection selection{rule.where.collection, {HoldsText(rule.where.field, key)}};
        if (rule.has != nullptr) {
            for (const auto& member : rule.has->GetObject()) {
                selection.conditions.push_back(
                    {std::string(AsText(&member.name)), Test::kOneOf, StoreValue(PrintJson(member.value))});
            }
        }
        handling.Each(selection, [&](const std::string& other, Json& document) {
            const Json values = handling.Fill(*rule.values);
            for (const auto& member : values.GetObject()) {
                SetMember(document, AsText(&member.name), Copy(member.value, handling.Memory()), handling.Memory());
            }
            handling.Save(rule.where.collection, other, document);
            touched.PushBack(MakeText(other, handling.Memory()), handling.Memory());
        });
    }
    handling.Define("touched", std::move(touched));
}

void Present(Handling& handling, const std::string& key, Json& document)
{
    DropInternals(document);
    for (const JoinRule& join : handling.action->joins) {
        const Json other = handling.Load(join.collection, AsText(AtPath(document, join.by)));
        const Json* value = Member(other, join.take);
        if (value != nullptr) {
            SetMember(document, join.member, Copy(*value, handling.Memory()), handling.Memory());
        }
    }
    if (!handling.action->collection->uses.empty()) {
        SetMember(document, "isUsed", Json(Used(handling, key)), handling.Memory());
    }
}

Reason OutOfReach(Handling& handling, std::string_view guid)
{
    const Json device = handling.Load(kDevices, guid);
    const bool restarting = AsInt(Member(device, "_backMs")) > handling.nowMs;
    return device.IsNull()                                    ? Reason::kUnknownDevice
           : AsBool(Member(device, "_offline")) || restarting ? Reason::kDeviceOffline
                                                              : Reason::kNone;
}

Reason Unwilling(Handling& handling, std::string_view guid)
{
    const Reason reason = OutOfReach(handling, guid);
    const bool refusing = reason == Reason::kNone && AsBool(Member(handling.Load(kDevices, guid), "_refusing"));
    return refusing ? Reason::kDeviceRefused : reason;
}

void Reach(Handling& handling)
{
    const Json devices = handling.Fill(*handling.action->reach);
    Json results(rapidjson::kArrayType);
    if (devices.IsArray()) {
        for (const Json& guid : devices.GetArray()) {
            const Reason reason = Unwilling(handling, AsText(&guid));
            results.PushBack(
                MakeResult(handling, AsText(&guid), reason, reason == Reason::kNone ? kSuccess : ReasonText(reason)),
                handling.Memory());
        }
    }
    handling.Define("results", std::move(results));
}

Json MakeResult(Handling& handling, std::string_view guid, Reason reason, std::string_view message)
{
    Allocator& memory = handling.Memory();
    const int number = static_cast<int>(reason);
    const int category = number == 0 ? 0 : handling.endpoint.category;
    Json result(rapidjson::kObjectType);
    SetMember(result, "guid", MakeText(guid, memory), memory);
    SetMember(result, "code", Json(number), memory);
    SetMember(result, "codeText", MakeText(std::to_string(category) + "-" + std::to_string(number), memory), memory);
    SetMember(result, "msg", MakeText(message, memory), memory);
    return result;
}

const Json* Items(Handling& handling)
{
    if (handling.body != nullptr && handling.body->IsArray()) {
        return handling.body;
    }
    const std::string& name = handling.action->items;
    if (name.empty()) {
        return nullptr;
    }
    const Json* items = handling.body == nullptr ? nullptr : AtPath(*handling.body, name);
    if (items == nullptr || !items->IsArray()) {
        throw Refusal(Reason::kMissingField, handling.endpoint.root + "." + name);
    }
    return items;
}

} // namespace nexwire::simulator
