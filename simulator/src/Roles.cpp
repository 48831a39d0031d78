#include <algorithm>
#include <map>

#include "src/Rules.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kKept = "_kept"; // Bodies that no entry stands for, by path.

// The document that several members identify together: its key, empty when there is none.
std::string KeyBy(Handling& handling, const Json& source)
{
    Json full = Copy(source, handling.Memory());
    Apply(handling, source, full);
    Selection same{handling.action->collection->name};
    for (const std::string& field : handling.action->by) {
        const Json* value = Member(full, field);
        std::optional<StoreValue> compared = value == nullptr ? std::nullopt : ToStoreValue(*value);
        if (!compared && !handling.Identifier(field).empty()) {
            compared = StoreValue(std::string(handling.Identifier(field)));
        }
        if (!compared) {
            throw Refusal(Reason::kMissingField, field);
        }
        same.conditions.push_back({field, Test::kEquals, *compared});
    }
    std::string key;
    handling.store.Select(same, [&](const std::string& found, const std::string&) { key = found; });
    return key;
}

// What names the document that a body or an element is about; empty when nothing does.
std::string NamedKey(Handling& handling, const Json& source, bool element)
{
    const Action& action = *handling.action;
    if (action.key != nullptr) {
        return handling.FillText(action.key);
    }
    if (source.IsString()) {
        return std::string(AsText(&source));
    }
    if (!element && handling.endpoint.endsWithIdentifier) {
        return handling.identifiers.back();
    }
    for (const std::string_view member : {std::string_view(action.collection->key), std::string_view("guid")}) {
        const std::string_view text = AsText(Member(source, member));
        if (!text.empty()) {
            return std::string(text);
        }
    }
    return element || handling.identifiers.empty() || action.role == Role::kAdd ? std::string()
                                                                                : handling.identifiers.back();
}

std::string LocateOrRefuse(Handling& handling, const Json& source, bool element)
{
    const Action& action = *handling.action;
    std::string named = NamedKey(handling, source, element);
    const std::string key = action.by.empty() ? named : source.IsObject() ? KeyBy(handling, source) : std::string();
    if (!key.empty() && handling.store.Has(action.collection->name, key)) {
        return key;
    }
    for (const std::string& field : action.by) {
        const Json* value = Member(source, field);
        named += value == nullptr ? "" : (named.empty() ? "" : ", ") + std::string(AsText(value));
    }
    throw Refusal(action.collection->name == kDevices ? Reason::kUnknownDevice : Reason::kUnknownGuid,
                  "\"" + named + "\"");
}

// Runs `one` for the body, or once per element with a result for each. `one` returns the key and the document it worked
// on.
using One = std::function<std::pair<std::string, Json>(const Json& source, bool element)>;

void ForItems(Handling& handling, const One& one)
{
    Allocator& memory = handling.Memory();
    const Json nothing(rapidjson::kObjectType);
    const Json* items = Items(handling);
    if (items == nullptr) {
        auto [key, document] = one(handling.body == nullptr ? nothing : *handling.body, false);
        DropInternals(document);
        handling.Define("guid", MakeText(key, memory));
        handling.Define("doc", std::move(document));
        return;
    }
    Json docs(rapidjson::kArrayType);
    Json guids(rapidjson::kArrayType);
    Json results(rapidjson::kArrayType);
    for (const Json& item : items->GetArray()) {
        handling.Name("item", item);
        Json result;
        try {
            auto [key, document] = one(item, true);
            DropInternals(document);
            guids.PushBack(MakeText(key, memory), memory);
            result = MakeResult(handling, key, Reason::kNone, kSuccess);
            SetMember(result, "doc", Copy(document, memory), memory);
            docs.PushBack(document, memory);
        } catch (const Refusal& refusal) {
            result = MakeResult(handling, NamedKey(handling, item, true), refusal.Why(), refusal.what());
        }
        SetMember(result, "item", Copy(item, memory), memory);
        results.PushBack(result, memory);
    }
    // Nobody would hear of an element that was refused.
    if (handling.endpoint.result == nullptr) {
        for (const Json& result : results.GetArray()) {
            if (const std::int64_t code = AsInt(Member(result, "code"))) {
                const std::string_view what = AsText(Member(result, "msg"));
                const std::string_view reason = ReasonText(static_cast<Reason>(code));
                throw Refusal(static_cast<Reason>(code),
                              what.size() > reason.size() + 2 ? what.substr(reason.size() + 2) : std::string_view());
            }
        }
    }
    handling.Define("docs", std::move(docs));
    handling.Define("guids", std::move(guids));
    handling.Define("results", std::move(results));
}

const Json& ObjectOf(const Json& source)
{
    static const Json nothing(rapidjson::kObjectType);
    if (!source.IsObject() && !source.IsString()) {
        throw Refusal(Reason::kWrongType, "an element is neither an object nor a text");
    }
    return source.IsObject() ? source : nothing; // A plain identifier changes nothing by itself.
}

// Remembers below what a document was made, so that queries of the same path find it.
void AddParents(Handling& handling, Json& document)
{
    const Endpoint& endpoint = handling.endpoint;
    for (std::size_t i = 0; i < handling.identifiers.size(); ++i) {
        SetMember(document, "_" + endpoint.parents[i], MakeText(handling.identifiers[i], handling.Memory()),
                  handling.Memory());
    }
    for (const auto& [name, place] : endpoint.names) {
        if (Member(document, name) == nullptr && handling.action->collection->Find(name) != nullptr) {
            SetMember(document, name, MakeText(handling.identifiers[place], handling.Memory()), handling.Memory());
        }
    }
}

} // namespace

void Add(Handling& handling)
{
    const Action& action = *handling.action;
    const Collection& collection = *action.collection;
    ForItems(handling, [&](const Json& source, bool element) {
        const Json& object = ObjectOf(source);
        CheckElement(handling, object, true);
        Json document =
            collection.defaults == nullptr ? Json(rapidjson::kObjectType) : handling.Fill(*collection.defaults);
        Apply(handling, object, document);
        AddParents(handling, document);
        std::string key = action.by.empty() ? NamedKey(handling, source, element) : KeyBy(handling, object);
        if (key.empty()) {
            key = NewGuid();
        } else if (!action.replace && handling.store.Has(collection.name, key)) {
            throw Refusal(Reason::kDuplicate, "\"" + key + "\"");
        }
        SetMember(document, collection.key, MakeText(key, handling.Memory()), handling.Memory());
        CheckUnique(handling, key, document);
        handling.Save(collection.name, key, document);
        return std::make_pair(key, std::move(document));
    });
}

void Find(Handling& handling)
{
    Selection selection = Narrowed(handling);
    Page(handling, selection);
    Json docs(rapidjson::kArrayType);
    Json guids(rapidjson::kArrayType);
    handling.Each(selection, [&](const std::string& key, Json& document) {
        Present(handling, key, document);
        docs.PushBack(document, handling.Memory());
        guids.PushBack(MakeText(key, handling.Memory()), handling.Memory());
    });
    const std::int64_t total = selection.limit >= 0 ? handling.store.Count(selection) : std::int64_t{docs.Size()};
    handling.Define("total", Json(total));
    handling.Define("docs", std::move(docs));
    handling.Define("guids", std::move(guids));
}

void Get(Handling& handling)
{
    ForItems(handling, [&](const Json& source, bool element) {
        const std::string key = LocateOrRefuse(handling, source, element);
        Json document = handling.Need(*handling.action->collection, key);
        Present(handling, key, document);
        return std::make_pair(key, std::move(document));
    });
}

void Modify(Handling& handling)
{
    const Collection& collection = *handling.action->collection;
    ForItems(handling, [&](const Json& source, bool element) {
        const Json& object = ObjectOf(source);
        const std::string key = LocateOrRefuse(handling, source, element);
        CheckElement(handling, object, false);
        Json document = handling.Need(collection, key);
        CheckRefusals(handling, object, document);
        Apply(handling, object, document);
        SetMember(document, collection.key, MakeText(key, handling.Memory()), handling.Memory());
        CheckUnique(handling, key, document);
        handling.Save(collection.name, key, document);
        Touch(handling, key);
        return std::make_pair(key, std::move(document));
    });
}

void Remove(Handling& handling)
{
    const Action& action = *handling.action;
    const Collection& collection = *action.collection;
    const auto removeOne = [&](const std::string& key) {
        Json document = handling.Need(collection, key);
        CheckRefusals(handling, Json(rapidjson::kObjectType), document);
        if (Used(handling, key)) {
            throw Refusal(Reason::kInUse, "\"" + key + "\"");
        }
        handling.store.Erase(collection.name, key);
        Touch(handling, key);
        return document;
    };
    const bool one = handling.body == nullptr || handling.endpoint.endsWithIdentifier ||
                     Member(*handling.body, collection.key) != nullptr || Member(*handling.body, "guid") != nullptr;
    if (Items(handling) != nullptr || action.key != nullptr || !action.by.empty() || one) {
        ForItems(handling, [&](const Json& source, bool element) {
            const std::string key = LocateOrRefuse(handling, source, element);
            return std::make_pair(key, removeOne(key));
        });
        return;
    }
    const Selection selection = Narrowed(handling);
    std::vector<std::string> keys;
    if (!selection.conditions.empty()) { // Without a condition nothing is meant, not everything.
        handling.store.Select(selection, [&](const std::string& key, const std::string&) { keys.push_back(key); });
    }
    Json guids(rapidjson::kArrayType);
    for (const std::string& key : keys) {
        removeOne(key);
        guids.PushBack(MakeText(key, handling.Memory()), handling.Memory());
    }
    handling.Define("guids", std::move(guids));
}

void Count(Handling& handling)
{
    const std::string& by = handling.action->countBy;
    Allocator& memory = handling.Memory();
    std::map<std::string, std::pair<Json, std::int64_t>> counts;
    std::int64_t total = 0;
    handling.Each(Narrowed(handling), [&](const std::string&, Json& document) {
        ++total;
        if (const Json* value = AtPath(document, by); value != nullptr && !by.empty()) {
            auto& slot = counts[PrintJson(*value)];
            slot.first = Copy(*value, memory);
            ++slot.second;
        }
    });
    Json docs(rapidjson::kArrayType);
    for (auto& [text, slot] : counts) {
        Json entry(rapidjson::kObjectType);
        SetMember(entry, by, std::move(slot.first), memory);
        SetMember(entry, "_count", Json(slot.second), memory);
        docs.PushBack(entry, memory);
    }
    handling.Define("docs", std::move(docs));
    handling.Define("total", Json(total));
}

namespace {

std::string StateKey(Handling& handling)
{
    if (handling.action->key != nullptr) {
        return handling.FillText(handling.action->key);
    }
    std::string key;
    for (const std::string& identifier : handling.identifiers) {
        key += "/" + identifier;
    }
    return key.empty() ? "/" : key;
}

} // namespace

void Keep(Handling& handling)
{
    const Action& action = *handling.action;
    const std::string key = StateKey(handling);
    Json document = action.merge ? handling.Load(action.collection->name, key) : Json();
    if (!document.IsObject()) {
        document = action.collection->defaults != nullptr ? handling.Fill(*action.collection->defaults)
                                                          : Json(rapidjson::kObjectType);
    }
    const Json nothing(rapidjson::kObjectType);
    Apply(handling, handling.body == nullptr ? nothing : *handling.body, document);
    handling.Save(action.collection->name, key, document);
    handling.Define("doc", std::move(document));
}

void Recall(Handling& handling)
{
    const Collection& collection = *handling.action->collection;
    Json document = handling.Load(collection.name, StateKey(handling));
    if (document.IsNull()) {
        document = collection.defaults != nullptr ? handling.Fill(*collection.defaults) : Json(rapidjson::kObjectType);
    }
    DropInternals(document);
    handling.Define("doc", std::move(document));
}

void KeepOrSample(Handling& handling)
{
    const Endpoint& endpoint = handling.endpoint;
    Allocator& memory = handling.Memory();
    const std::string& key = handling.request.path;
    Json kept = handling.Load(kKept, key);
    if (endpoint.verb == "DELETE") {
        handling.store.Erase(kKept, key);
    } else if (endpoint.verb == "PUT" && handling.body != nullptr) {
        // Changes of single members add up.
        if (!kept.IsObject()) {
            kept.SetObject();
        }
        Json* const old = Member(kept, endpoint.root);
        if (old != nullptr && old->IsObject() && handling.body->IsObject()) {
            for (const auto& member : handling.body->GetObject()) {
                SetMember(*old, AsText(&member.name), Copy(member.value, memory), memory);
            }
        } else {
            SetMember(kept, endpoint.root, Copy(*handling.body, memory), memory);
        }
        handling.Save(kKept, key, kept);
    }
    if (endpoint.result == nullptr) {
        return;
    }
    if (!endpoint.Writes() && !kept.IsObject()) {
        handling.data = Sample(handling, *endpoint.result);
        return;
    }
    Json document(rapidjson::kObjectType);
    if (endpoint.Writes()) {
        // One result for each element of the body's only list.
        const Json* list = nullptr;
        for (const WireMember& member : endpoint.body == nullptr ? std::vector<WireMember>() : endpoint.body->members) {
            const Json* value = handling.body == nullptr ? nullptr : Member(*handling.body, member.key);
            list = member.IsList() && value != nullptr && value->IsArray() ? value : list;
        }
        Json results(rapidjson::kArrayType);
        if (list != nullptr) {
            for (const Json& item : list->GetArray()) {
                const std::string_view guid = item.IsString() ? AsText(&item) : AsText(Member(item, "guid"));
                Json result = MakeResult(handling, guid, Reason::kNone, kSuccess);
                SetMember(result, "item", Copy(item, memory), memory);
                results.PushBack(result, memory);
            }
            handling.Define("results", std::move(results));
        }
        handling.Define("guid", MakeText(NewGuid(), memory));
    }
    if (kept.IsObject()) {
        for (const auto& root : kept.GetObject()) {
            if (root.value.IsObject()) {
                for (const auto& member : root.value.GetObject()) {
                    SetMember(document, AsText(&member.name), Copy(member.value, memory), memory);
                }
            }
        }
        for (const auto& root : kept.GetObject()) {
            SetMember(document, AsText(&root.name), Copy(root.value, memory), memory);
        }
    }
    handling.Define("doc", std::move(document));
    Compose(handling);
}

} // namespace nexwire::simulator
