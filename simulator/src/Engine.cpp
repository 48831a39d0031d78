#include "src/Engine.h"

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid.hpp>

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

#include "src/Shape.h"

namespace nexwire::simulator {
namespace {

constexpr std::string_view kSeeded = "_seeded";
constexpr std::string_view kSuccess = "success";

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

std::string Envelope(std::string_view code, std::string_view message, const Json* data)
{
    Document document(rapidjson::kObjectType);
    Allocator& memory = document.GetAllocator();
    SetMember(document, "code", MakeText(code, memory), memory);
    SetMember(document, "msg", MakeText(message, memory), memory);
    SetMember(document, "data", data == nullptr ? Json(rapidjson::kObjectType) : Copy(*data, memory), memory);
    return PrintJson(document);
}

Answer Refuse(unsigned status, int category, const Refusal& refusal)
{
    Answer answer;
    answer.status = status;
    answer.code = std::to_string(category) + "-" + std::to_string(static_cast<int>(refusal.Why()));
    answer.body = Envelope(answer.code, refusal.what(), nullptr);
    return answer;
}

bool AnySent(const std::vector<std::string>& keys, const Json& source)
{
    return keys.empty() || std::any_of(keys.begin(), keys.end(),
                                       [&](const std::string& key) { return Member(source, key) != nullptr; });
}

// Members that begin with an underscore are the platform's own and never travel.
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

void ApplyList(Call& call, const ListRule& rule, const Json& source, Json& document)
{
    const Json* changes = Member(source, rule.from);
    if (changes == nullptr || !changes->IsArray()) {
        return;
    }
    Allocator& memory = call.Memory();
    if (Json* target = Member(document, rule.target); target == nullptr || !target->IsArray()) {
        SetMember(document, rule.target, Json(rapidjson::kArrayType), memory);
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

void Merge(Call& call, const Json& source, Json& document)
{
    for (const auto& member : source.GetObject()) {
        const std::string_view name = AsText(&member.name);
        const auto& lists = call.resource.lists;
        const bool isChange =
            std::any_of(lists.begin(), lists.end(), [&](const ListRule& r) { return r.from == name; });
        // Of two equal keys the first counts, here as everywhere else.
        if (!isChange && Member(source, name) == &member.value) {
            SetMember(document, name, Copy(member.value, call.Memory()), call.Memory());
        }
    }
}

// Everything that a create or modify does to a document, apart from storing it.
void Apply(Call& call, const Json& source, Json& document)
{
    Merge(call, source, document);
    if (call.resource.with != nullptr) {
        const Json more = call.Fill(*call.resource.with);
        Merge(call, more, document);
    }
    for (const ListRule& rule : call.resource.lists) {
        ApplyList(call, rule, source, document);
    }
    for (const MarkRule& mark : call.resource.marks) {
        if (AnySent(mark.when, source)) {
            const Json values = call.Fill(*mark.values);
            Merge(call, values, document);
        }
    }
}

void CheckRefusals(Call& call, const Json& source, const Json& document)
{
    for (const RefuseRule& rule : call.resource.refusals) {
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

void CheckUnique(Call& call, std::string_view key, const Json& document)
{
    const Collection& collection = *call.resource.collection;
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
        call.store.Select(same, [&](const std::string& other, const std::string&) { taken = taken || other != key; });
        if (taken) {
            throw Refusal(Reason::kDuplicate, what);
        }
    }
}

bool Truth(const Json& value)
{
    return value.IsBool() ? value.GetBool() : value.IsNumber() ? AsInt(&value) != 0 : !AsText(&value).empty();
}

std::vector<Condition> Conditions(Call& call)
{
    std::vector<Condition> conditions;
    for (const FilterRule& rule : call.resource.filters) {
        if (rule.given != nullptr && !Truth(call.Fill(*rule.given))) {
            continue;
        }
        const Json value = call.Fill(*rule.value);
        if (value.IsNull() || AsText(&value, "-").empty() || (value.IsArray() && value.Empty())) {
            continue;
        }
        if (rule.any != nullptr &&
            std::any_of(rule.any->Begin(), rule.any->End(), [&](const Json& any) { return any == value; })) {
            continue;
        }
        if (value.IsArray() || rule.test == Test::kHasElement || rule.test == Test::kOneOf) {
            const std::string list = value.IsArray() ? PrintJson(value) : "[" + PrintJson(value) + "]";
            conditions.push_back({rule.field, rule.test == Test::kHasElement ? rule.test : Test::kOneOf,
                                  StoreValue(list), rule.element});
            continue;
        }
        const auto compared = ToStoreValue(value);
        if (!compared) {
            throw Refusal(Reason::kWrongType, rule.field);
        }
        conditions.push_back({rule.field, rule.test, *compared});
    }
    return conditions;
}

// The document that `by` or `key` names: its key, empty when there is none.
std::string Locate(Call& call, const Json& source)
{
    const Collection& collection = *call.resource.collection;
    if (call.resource.by.empty()) {
        const std::string key = call.FillText(call.resource.key);
        return !key.empty() && call.store.Has(collection.name, key) ? key : std::string();
    }
    Json full(rapidjson::kObjectType);
    Merge(call, source, full);
    if (call.resource.with != nullptr) {
        const Json more = call.Fill(*call.resource.with);
        Merge(call, more, full);
    }
    Selection same{collection.name};
    for (const std::string& field : call.resource.by) {
        const Json* value = Member(full, field);
        const auto compared = value == nullptr ? std::nullopt : ToStoreValue(*value);
        if (!compared) {
            throw Refusal(Reason::kMissingField, field);
        }
        same.conditions.push_back({field, Test::kEquals, *compared});
    }
    std::string key;
    call.store.Select(same, [&](const std::string& found, const std::string&) { key = found; });
    return key;
}

std::string LocateOrRefuse(Call& call, const Json& source)
{
    std::string key = Locate(call, source);
    if (key.empty()) {
        std::string named = source.IsString() ? std::string(AsText(&source)) : call.FillText(call.resource.key);
        for (const std::string& field : call.resource.by) {
            const Json* value = Member(source, field);
            named += value == nullptr ? "" : (named.empty() ? "" : ", ") + std::string(AsText(value));
        }
        throw Refusal(Reason::kUnknownGuid, "\"" + named + "\"");
    }
    return key;
}

Json MakeResult(Call& call, std::string_view guid, Reason reason, std::string_view message)
{
    Allocator& memory = call.Memory();
    const int number = static_cast<int>(reason);
    const int category = number == 0 ? 0 : ModuleCategory(call.resource.module);
    Json result(rapidjson::kObjectType);
    SetMember(result, "guid", MakeText(guid, memory), memory);
    SetMember(result, "code", Json(number), memory);
    SetMember(result, "codeText", MakeText(std::to_string(category) + "-" + std::to_string(number), memory), memory);
    SetMember(result, "msg", MakeText(message, memory), memory);
    return result;
}

// Whether one of the resource's use rules finds the key somewhere.
bool Used(Call& call, const std::string& key)
{
    const auto& uses = call.resource.uses;
    return std::any_of(uses.begin(), uses.end(), [&](const UseRule& use) {
        return call.store.Count({use.collection, {{use.field, Test::kEquals, StoreValue(key)}}}) > 0;
    });
}

// Changes what depends on the document and names it.
void Touch(Call& call, const std::string& key)
{
    Json touched(rapidjson::kArrayType);
    for (const TouchRule& rule : call.resource.touches) {
        Selection selection{rule.where.collection, {{rule.where.field, Test::kEquals, StoreValue(key)}}};
        if (rule.has != nullptr) {
            for (const auto& member : rule.has->GetObject()) {
                selection.conditions.push_back(
                    {std::string(AsText(&member.name)), Test::kOneOf, StoreValue(PrintJson(member.value))});
            }
        }
        call.Each(selection, [&](const std::string& other, Json& document) {
            const Json values = call.Fill(*rule.values);
            for (const auto& member : values.GetObject()) {
                SetMember(document, AsText(&member.name), Copy(member.value, call.Memory()), call.Memory());
            }
            call.Save(rule.where.collection, other, document);
            touched.PushBack(MakeText(other, call.Memory()), call.Memory());
        });
    }
    call.Define("touched", std::move(touched));
}

// What a stored document shows to a caller.
void Present(Call& call, const std::string& key, Json& document)
{
    DropInternals(document);
    for (const JoinRule& join : call.resource.joins) {
        const Json other = call.Load(join.collection, AsText(AtPath(document, join.by)));
        const Json* value = Member(other, join.take);
        if (value != nullptr) {
            SetMember(document, join.member, Copy(*value, call.Memory()), call.Memory());
        }
    }
    if (!call.resource.uses.empty()) {
        SetMember(document, "isUsed", Json(Used(call, key)), call.Memory());
    }
}

// Tells devices of a change: a result for each.
void Reach(Call& call)
{
    const Json devices = call.Fill(*call.resource.reach);
    Json results(rapidjson::kArrayType);
    if (devices.IsArray()) {
        for (const Json& guid : devices.GetArray()) {
            const Json device = call.Load("devices", AsText(&guid));
            const Reason reason = device.IsNull()                      ? Reason::kUnknownDevice
                                  : AsBool(Member(device, "_offline")) ? Reason::kDeviceOffline
                                                                       : Reason::kNone;
            results.PushBack(
                MakeResult(call, AsText(&guid), reason, reason == Reason::kNone ? kSuccess : ReasonText(reason)),
                call.Memory());
        }
    }
    call.Define("results", std::move(results));
}

// Runs `one` for the body, or once per element of `items` with a result for each.
// `one` returns the key and the document it worked on.
void ForItems(Call& call, const std::function<std::pair<std::string, Json>(const Json& source)>& one)
{
    Allocator& memory = call.Memory();
    Json docs(rapidjson::kArrayType);
    Json guids(rapidjson::kArrayType);
    Json results(rapidjson::kArrayType);
    const Json nothing(rapidjson::kObjectType);
    if (call.resource.items == nullptr) {
        auto [key, document] = one(call.body == nullptr ? nothing : *call.body);
        DropInternals(document);
        call.Define("guid", MakeText(key, memory));
        call.Define("doc", std::move(document));
        return;
    }
    const Json items = call.Fill(*call.resource.items);
    if (!items.IsArray()) {
        throw Refusal(Reason::kMissingField, AsText(call.resource.items));
    }
    for (const Json& item : items.GetArray()) {
        call.Name("item", item);
        Json result;
        try {
            if (call.resource.itemBody != nullptr) {
                CheckShape(call, *call.resource.itemBody, item, "item");
            }
            // A plain identifier changes nothing by itself.
            auto [key, document] = one(item.IsString() && call.resource.with != nullptr ? nothing : item);
            DropInternals(document);
            guids.PushBack(MakeText(key, memory), memory);
            result = MakeResult(call, key, Reason::kNone, kSuccess);
            SetMember(result, "doc", Copy(document, memory), memory);
            docs.PushBack(document, memory);
        } catch (const Refusal& refusal) {
            result = MakeResult(call, item.IsString() ? std::string(AsText(&item)) : call.FillText(call.resource.key),
                                refusal.Why(), refusal.what());
        }
        SetMember(result, "item", Copy(item, memory), memory);
        results.PushBack(result, memory);
    }
    call.Define("docs", std::move(docs));
    call.Define("guids", std::move(guids));
    call.Define("results", std::move(results));
}

// Which of the resources of a path and verb the body is for. `root` is the body's root object, in `parsed`.
const Resource& Choose(const std::vector<const Resource*>& resources, const std::string& body, Document& parsed,
                       const Json*& root)
{
    if (resources.size() == 1 && resources.front()->root.empty()) {
        return *resources.front();
    }
    std::string error;
    if (!ParseJson(parsed, body, error)) {
        throw Refusal(Reason::kNotJson, error);
    }
    std::string expected;
    for (const Resource* resource : resources) {
        expected += (expected.empty() ? "\"" : " or \"") + resource->root + "\"";
        if (!parsed.IsObject() || parsed.MemberCount() != 1) {
            continue;
        }
        root = resource->root == "*" ? &parsed.MemberBegin()->value : Member(parsed, resource->root);
        if (root == nullptr) {
            continue;
        }
        bool meant = true;
        if (resource->given != nullptr) {
            for (const auto& member : resource->given->GetObject()) {
                const Json* value = Member(*root, AsText(&member.name));
                meant = meant && value != nullptr && *value == member.value;
            }
        }
        if (meant) {
            return *resource;
        }
    }
    throw Refusal(Reason::kMissingRoot, "expected an object with the one member " + expected);
}

} // namespace

std::string NewGuid()
{
    thread_local boost::uuids::random_generator generate;
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : generate()) {
        text += kDigits[byte >> 4u];
        text += kDigits[byte & 15u];
    }
    return text;
}

Answer RefuseOutright(unsigned status, Reason reason, std::string_view detail)
{
    return Refuse(status, ModuleCategory("platform"), Refusal(reason, detail));
}

Call::Call(const Description& theDescription, const Resource& theResource, Store::Transaction& transaction)
    : description(theDescription), resource(theResource), store(transaction), data(rapidjson::kObjectType)
{
}

void Call::Define(std::string_view name, Json value)
{
    held_.push_back(std::make_unique<Json>(std::move(value)));
    Name(name, *held_.back());
}

const Json* Call::Lookup(std::string_view expression)
{
    const std::size_t dot = expression.find('.');
    const auto found = names_.find(expression.substr(0, dot));
    if (found == names_.end()) {
        return nullptr;
    }
    return dot == std::string_view::npos ? found->second : AtPath(*found->second, expression.substr(dot + 1));
}

Json Call::Fill(const Json& pattern)
{
    if (pattern.IsString()) {
        const std::string_view text = AsText(&pattern);
        if (!text.empty() && text.front() == '$') {
            const Json* value = Lookup(text.substr(1));
            return value == nullptr ? Json() : Copy(*value, Memory());
        }
        std::string filled(text);
        for (const auto& [name, value] : placeholders) {
            const std::string mark = "{" + name + "}";
            for (std::size_t at = filled.find(mark); at != std::string::npos; at = filled.find(mark, at)) {
                filled.replace(at, mark.size(), value);
                at += value.size();
            }
        }
        return MakeText(filled, Memory());
    }
    if (pattern.IsArray()) {
        Json list(rapidjson::kArrayType);
        for (const Json& element : pattern.GetArray()) {
            list.PushBack(Fill(element), Memory());
        }
        return list;
    }
    if (!pattern.IsObject()) {
        return Copy(pattern, Memory());
    }
    if (const Json* each = Member(pattern, "$each")) {
        Json list(rapidjson::kArrayType);
        const Json elements = Fill(*each);
        const Json* as = Member(pattern, "as");
        if (elements.IsArray() && as != nullptr) {
            for (const Json& element : elements.GetArray()) {
                Name("it", element);
                list.PushBack(Fill(*as), Memory());
            }
            names_.erase("it");
        }
        return list;
    }
    Json object(rapidjson::kObjectType);
    for (const auto& member : pattern.GetObject()) {
        Json value = Fill(member.value);
        if (!value.IsNull()) {
            SetMember(object, AsText(&member.name), std::move(value), Memory());
        }
    }
    return object;
}

std::string Call::FillText(const Json* pattern)
{
    if (pattern == nullptr) {
        return {};
    }
    const Json filled = Fill(*pattern);
    return std::string(AsText(&filled));
}

Json Call::Parse(std::string_view document)
{
    Document parsed(&Memory());
    parsed.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag>(document.data(), document.size());
    if (parsed.HasParseError()) {
        throw StoreError("a stored document is not JSON");
    }
    return Json(std::move(static_cast<Json&>(parsed)));
}

Json Call::Load(std::string_view collection, std::string_view key)
{
    const auto document = store.Read(collection, key);
    return document ? Parse(*document) : Json();
}

Json Call::Need(const Collection& collection, std::string_view key)
{
    Json document = Load(collection.name, key);
    if (document.IsNull()) {
        throw Refusal(collection.name == "devices" ? Reason::kUnknownDevice : Reason::kUnknownGuid,
                      "\"" + std::string(key) + "\"");
    }
    return document;
}

void Call::Save(std::string_view collection, std::string_view key, const Json& document)
{
    store.Write(collection, key, PrintJson(document));
}

void Call::Each(const Selection& selection, const std::function<void(const std::string&, Json&)>& each)
{
    store.Select(selection, [&](const std::string& key, const std::string& text) {
        Json document = Parse(text);
        each(key, document);
    });
}

std::string Call::NeedText(const Json& object, std::string_view member)
{
    const Json* value = Member(object, member);
    if (value == nullptr || AsText(value, "-").empty()) {
        throw Refusal(Reason::kMissingField, member);
    }
    if (!value->IsString()) {
        throw Refusal(Reason::kWrongType, member);
    }
    return std::string(AsText(value));
}

Engine::Engine(const Description& description, Store& store, std::function<std::int64_t()> now,
               std::map<std::string, Service, std::less<>> services)
    : description_(description), store_(store), now_(std::move(now)), services_(std::move(services))
{
    for (const auto& resource : description_.Resources()) {
        for (const std::string& name : {resource->service, resource->before}) {
            if (!name.empty() && services_.find(name) == services_.end()) {
                throw std::runtime_error("resource " + resource->path + " names the unknown service \"" + name + "\"");
            }
        }
    }
}

void Engine::Seed()
{
    Store::Transaction transaction(store_);
    for (const auto& [name, collection] : description_.Collections()) {
        if (collection.seed == nullptr || !transaction.Insert(kSeeded, name, "{}")) {
            continue;
        }
        for (const Json& document : collection.seed->GetArray()) {
            transaction.Write(name, AsText(Member(document, collection.key)), PrintJson(document));
        }
    }
    transaction.Commit();
}

Answer Engine::Handle(const Request& request)
{
    const Description::Route route = description_.Find(request.verb, request.path);
    if (route.resources.empty()) {
        return RefuseOutright(404, route.pathKnown ? Reason::kWrongVerb : Reason::kUnknownPath,
                              request.verb + " " + request.path);
    }
    const int category = ModuleCategory(route.resources.front()->module);
    try {
        Document parsed;
        const Json* root = nullptr;
        const Resource& resource = Choose(route.resources, request.body, parsed, root);
        Store::Transaction transaction(store_);
        Call call(description_, resource, transaction);
        call.placeholders = route.placeholders;
        call.headers = request.headers;
        call.nowMs = now_();
        call.body = root;
        if (root != nullptr) {
            call.Name("body", *root);
        }
        call.Define("now", Json(call.nowMs));
        Run(call);
        transaction.Commit();
        Answer answer;
        answer.code = "0-0";
        answer.body = Envelope(answer.code, kSuccess, &call.data);
        return answer;
    } catch (const Refusal& refusal) {
        return Refuse(200, category, refusal);
    } catch (const std::exception& error) {
        return Refuse(500, category, Refusal(Reason::kInternal, error.what()));
    }
}

void Engine::Run(Call& call)
{
    if (!call.resource.before.empty()) {
        services_.find(call.resource.before)->second(call);
    }
    for (const auto& [name, collection] : call.resource.checked) {
        call.Define(name, call.Need(*collection, call.placeholders[name]));
    }
    if (call.resource.body != nullptr && call.body != nullptr) {
        CheckShape(call, *call.resource.body, *call.body, call.resource.root);
    } else if (call.body != nullptr && !call.body->IsObject()) {
        throw Refusal(Reason::kWrongType, call.resource.root + " is not an object");
    }
    Operate(call);
    if (call.resource.reach != nullptr) {
        Reach(call);
    }
    if (call.resource.answer != nullptr) {
        call.data = call.Fill(*call.resource.answer);
    }
}

void Engine::Operate(Call& call)
{
    switch (call.resource.operation) {
    case Operation::kReply:
        break;
    case Operation::kCreate:
        Create(call);
        break;
    case Operation::kQuery:
        Query(call);
        break;
    case Operation::kGet:
        Get(call);
        break;
    case Operation::kModify:
        Modify(call);
        break;
    case Operation::kRemove:
        Remove(call);
        break;
    case Operation::kCount:
        Count(call);
        break;
    case Operation::kKeep:
        Keep(call);
        break;
    case Operation::kRecall:
        Recall(call);
        break;
    case Operation::kService:
        services_.find(call.resource.service)->second(call);
        break;
    }
}

void Engine::Create(Call& call)
{
    const Collection& collection = *call.resource.collection;
    ForItems(call, [&](const Json& source) {
        if (!source.IsObject()) {
            throw Refusal(Reason::kWrongType, "an element is not an object");
        }
        Json document =
            collection.defaults == nullptr ? Json(rapidjson::kObjectType) : Copy(*collection.defaults, call.Memory());
        std::string key;
        if (call.resource.replace && (!call.resource.by.empty() || call.resource.key != nullptr)) {
            key = Locate(call, source);
        }
        Apply(call, source, document);
        if (key.empty()) {
            // A platform names its things itself, unless the description says that the caller does.
            key = call.resource.key == nullptr ? NewGuid() : call.FillText(call.resource.key);
            if (key.empty()) {
                key = NewGuid();
            } else if (call.store.Has(collection.name, key)) {
                throw Refusal(Reason::kDuplicate, "\"" + key + "\"");
            }
        }
        SetMember(document, collection.key, MakeText(key, call.Memory()), call.Memory());
        CheckUnique(call, key, document);
        call.Save(collection.name, key, document);
        return std::make_pair(key, std::move(document));
    });
}

void Engine::Query(Call& call)
{
    Selection selection{
        call.resource.collection->name, Conditions(call), call.resource.orderBy, call.resource.descending, 0, -1,
        call.resource.anyFilter};
    const auto number = [&](const Json* pattern) {
        const Json value = pattern == nullptr ? Json() : call.Fill(*pattern);
        return std::max<std::int64_t>(AsInt(&value), 0);
    };
    const std::int64_t size = std::min<std::int64_t>(number(call.resource.pageSize), 1000000);
    const std::int64_t page = std::min<std::int64_t>(number(call.resource.pageNumber), 1000000);
    if (size > 0) {
        selection.limit = size;
        selection.offset = call.resource.offset != nullptr ? number(call.resource.offset)
                                                           : (std::max<std::int64_t>(page, 1) - 1) * size;
    }
    Json docs(rapidjson::kArrayType);
    call.Each(selection, [&](const std::string& key, Json& document) {
        Present(call, key, document);
        docs.PushBack(document, call.Memory());
    });
    const std::int64_t total = size > 0 ? call.store.Count(selection) : std::int64_t{docs.Size()};
    call.Define("total", Json(total));
    call.Define("docs", std::move(docs));
}

void Engine::Get(Call& call)
{
    const Json nothing(rapidjson::kObjectType);
    const std::string key = LocateOrRefuse(call, call.body == nullptr ? nothing : *call.body);
    Json document = call.Need(*call.resource.collection, key);
    Present(call, key, document);
    call.Define("guid", MakeText(key, call.Memory()));
    call.Define("doc", std::move(document));
}

void Engine::Modify(Call& call)
{
    const Collection& collection = *call.resource.collection;
    ForItems(call, [&](const Json& source) {
        if (!source.IsObject()) {
            throw Refusal(Reason::kWrongType, "an element is not an object");
        }
        const std::string key = LocateOrRefuse(call, source);
        Json document = call.Need(collection, key);
        CheckRefusals(call, source, document);
        Apply(call, source, document);
        SetMember(document, collection.key, MakeText(key, call.Memory()), call.Memory());
        CheckUnique(call, key, document);
        call.Save(collection.name, key, document);
        Touch(call, key);
        return std::make_pair(key, std::move(document));
    });
}

void Engine::Remove(Call& call)
{
    const Collection& collection = *call.resource.collection;
    const auto removeOne = [&](const std::string& key) {
        Json document = call.Need(collection, key);
        const Json nothing(rapidjson::kObjectType);
        CheckRefusals(call, nothing, document);
        if (Used(call, key)) {
            throw Refusal(Reason::kInUse, "\"" + key + "\"");
        }
        call.store.Erase(collection.name, key);
        return document;
    };
    if (call.resource.items != nullptr || call.resource.key != nullptr || !call.resource.by.empty()) {
        ForItems(call, [&](const Json& source) {
            const std::string key = call.resource.key == nullptr && call.resource.by.empty()
                                        ? std::string(AsText(&source))
                                        : LocateOrRefuse(call, source);
            Json document = removeOne(key);
            return std::make_pair(key, std::move(document));
        });
        return;
    }
    Selection selection{collection.name, Conditions(call)};
    selection.any = call.resource.anyFilter;
    std::vector<std::string> keys;
    if (!selection.conditions.empty()) { // Without a condition nothing is meant, not everything.
        call.store.Select(selection, [&](const std::string& key, const std::string&) { keys.push_back(key); });
    }
    Json guids(rapidjson::kArrayType);
    for (const std::string& key : keys) {
        removeOne(key);
        guids.PushBack(MakeText(key, call.Memory()), call.Memory());
    }
    call.Define("guids", std::move(guids));
}

void Engine::Count(Call& call)
{
    std::map<std::string, std::pair<Json, std::int64_t>> counts;
    std::int64_t total = 0;
    call.Each({call.resource.collection->name, Conditions(call)}, [&](const std::string&, Json& document) {
        ++total;
        const Json* value = AtPath(document, call.resource.countBy);
        if (value != nullptr) {
            auto& slot = counts[PrintJson(*value)];
            slot.first = Copy(*value, call.Memory());
            ++slot.second;
        }
    });
    Json docs(rapidjson::kArrayType);
    for (auto& [text, slot] : counts) {
        Json entry(rapidjson::kObjectType);
        SetMember(entry, "value", std::move(slot.first), call.Memory());
        SetMember(entry, "count", Json(slot.second), call.Memory());
        docs.PushBack(entry, call.Memory());
    }
    call.Define("docs", std::move(docs));
    call.Define("total", Json(total));
}

void Engine::Keep(Call& call)
{
    const Collection& collection = *call.resource.collection;
    const std::string key = call.FillText(call.resource.key);
    Json document = call.resource.merge ? call.Load(collection.name, key) : Json();
    if (!document.IsObject()) {
        document = call.resource.merge && call.resource.fallback != nullptr ? call.Fill(*call.resource.fallback)
                                                                            : Json(rapidjson::kObjectType);
    }
    const Json nothing(rapidjson::kObjectType);
    Apply(call, call.body == nullptr ? nothing : *call.body, document);
    call.Save(collection.name, key, document);
    call.Define("doc", std::move(document));
}

void Engine::Recall(Call& call)
{
    Json document = call.Load(call.resource.collection->name, call.FillText(call.resource.key));
    if (document.IsNull() && call.resource.fallback != nullptr) {
        document = call.Fill(*call.resource.fallback);
    }
    if (document.IsNull()) {
        document.SetObject();
    }
    DropInternals(document);
    call.Define("doc", std::move(document));
}

} // namespace nexwire::simulator
