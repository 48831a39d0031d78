#include "src/Description.h"

#include <algorithm>
#include <stdexcept>

#include "src/Entry.h"
#include "src/Routes.h"

namespace nexwire::simulator {
namespace {

constexpr std::pair<std::string_view, Role> kRoles[] = {
    {"reply", Role::kReply}, {"add", Role::kAdd},       {"all", Role::kFind},      {"find", Role::kFind},
    {"get", Role::kGet},     {"modify", Role::kModify}, {"remove", Role::kRemove}, {"count", Role::kCount},
    {"keep", Role::kKeep},   {"recall", Role::kRecall},
};

Role RoleNamed(std::string_view name)
{
    for (const auto& [known, role] : kRoles) {
        if (known == name) {
            return role;
        }
    }
    throw std::runtime_error("unknown role \"" + std::string(name) + "\"");
}

// Names separated by commas that stand outside brackets.
std::vector<std::string> SplitNames(const std::string& names)
{
    std::vector<std::string> all(1);
    int depth = 0;
    for (const char c : names) {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (c == ',' && depth == 0) {
            all.emplace_back();
        } else if (c != ' ' || !all.back().empty()) {
            all.back() += c;
        }
    }
    return all;
}

// The structure of the list, or else of the object, that an answer holds.
const WireStructure* ElementOf(const WireStructure* result)
{
    if (result == nullptr) {
        return nullptr;
    }
    const WireStructure* inner = nullptr;
    for (const WireMember& member : result->members) {
        if (member.kind == WireKind::kStructList) {
            return member.structure;
        }
        if (member.kind == WireKind::kStruct) {
            inner = member.structure;
        }
    }
    return result->members.size() == 1 || inner == nullptr ? ElementOf(inner) : inner;
}

} // namespace

const WireMember* Collection::Find(std::string_view member) const
{
    const WireMember* found = element == nullptr ? nullptr : element->Find(member);
    return found != nullptr || source == nullptr ? found : source->Find(member);
}

Description::Description(std::string_view document, const std::vector<ResourceFile>& files)
    : wire_(document), routes_(std::make_unique<Node>())
{
    AddFunctions();
    documents_.reserve(files.size());
    std::string where;
    try {
        for (const ResourceFile& file : files) {
            where = file.name;
            documents_.push_back(ParseOwn(file.text));
            OnlyMembers(documents_.back(), {"module", "about", "before", "collections", "functions", "jobs", "files",
                                            "commands", "batches", "kestrel", "netsdk", "seeds"});
            LoadCollections(documents_.back());
        }
        for (std::size_t i = 0; i < files.size(); ++i) {
            where = files[i].name;
            ForMembers(Member(documents_[i], "seeds"), [&](const std::string& name, const Json& seed) {
                NeedCollection(name);
                AddSeed(*collections_.find(name)->second, &seed);
            });
        }
        for (std::size_t i = 0; i < files.size(); ++i) {
            where = files[i].name;
            LoadActions(documents_[i], where);
        }
    } catch (const std::exception& error) {
        throw std::runtime_error("resource file " + where + ": " + error.what());
    }
}

Description::~Description() = default;

void Description::AddFunctions()
{
    for (const WireFunction& function : wire_.Functions()) {
        if (function.direct) {
            continue;
        }
        Endpoint& endpoint = EndpointOf(function.verb, function.path, function.root);
        endpoint.functions.push_back(&function);
        if (function.body != nullptr) {
            AddBody(endpoint, *function.body);
        }
        if (endpoint.result == nullptr) {
            endpoint.result = function.result;
        }
    }
}

// Functions that send under one root may have structures of their own: the endpoint takes the members of all.
void Description::AddBody(Endpoint& endpoint, const WireStructure& body)
{
    if (endpoint.body == nullptr || endpoint.body == &body) {
        endpoint.body = &body;
        return;
    }
    auto merged = std::make_unique<WireStructure>(*endpoint.body);
    merged->open = merged->open || body.open;
    for (const WireMember& member : body.members) {
        if (merged->Find(member.key) == nullptr) {
            merged->members.push_back(member);
        }
    }
    endpoint.body = merged.get();
    merged_.push_back(std::move(merged));
}

const Collection& Description::NeedCollection(std::string_view name) const
{
    const Collection* collection = FindCollection(name);
    if (collection == nullptr) {
        throw std::runtime_error("unknown collection \"" + std::string(name) + "\"");
    }
    return *collection;
}

void Description::AddSeed(Collection& collection, const Json* seed)
{
    ForEach(seed, [&](const Json& document) { NeedText(document, collection.key); });
    if (seed != nullptr) {
        collection.seeds.push_back(seed);
    }
}

void Description::LoadCollections(const Json& file)
{
    ForMembers(Member(file, "collections"), [&](const std::string& name, const Json& entry) {
        OnlyMembers(entry, {"key", "unique", "need", "references", "usedBy", "defaults", "seed", "stamp", "time",
                            "orderBy", "add", "all", "find", "get", "modify", "remove", "count", "keep", "recall"});
        auto collection = std::make_unique<Collection>();
        collection->name = name;
        collection->key = NeedText(entry, "key");
        ForEach(Member(entry, "unique"), [&](const Json& fields) { collection->unique.push_back(Texts(&fields)); });
        collection->need = Texts(Member(entry, "need"));
        collection->references = References(Member(entry, "references"));
        ForMembers(Member(entry, "usedBy"), [&](const std::string& other, const Json& field) {
            collection->uses.push_back({other, std::string(AsText(&field))});
        });
        collection->defaults = Member(entry, "defaults");
        AddSeed(*collection, Member(entry, "seed"));
        collection->stamp = AsText(Member(entry, "stamp"));
        collection->time = AsText(Member(entry, "time"));
        collection->orderBy = AsText(Member(entry, "orderBy"));
        if (!collection->orderBy.empty() && collection->orderBy.front() == '-') {
            collection->descending = true;
            collection->orderBy.erase(0, 1);
        }
        if (!collections_.emplace(name, std::move(collection)).second) {
            throw std::runtime_error("collection \"" + name + "\" is there twice");
        }
    });
}

void Description::LoadActions(const Json& file, std::string& where)
{
    const std::string name = where;
    const std::string module(AsText(Member(file, "module")));
    if (!module.empty() && ModuleCategory(module) == 0) {
        throw std::runtime_error("unknown module \"" + module + "\"");
    }
    // What a collection names and what stands for itself are one entry.
    std::map<std::string, std::pair<const Collection*, Role>> roles;
    ForMembers(Member(file, "collections"), [&](const std::string& collection, const Json& entry) {
        for (const auto& [role, value] : kRoles) {
            for (const std::string& function : Texts(Member(entry, role))) {
                roles[function] = {FindCollection(collection), value};
            }
        }
        for (const UseRule& use : FindCollection(collection)->uses) {
            NeedCollection(use.collection);
        }
        for (const Reference& reference : FindCollection(collection)->references) {
            NeedCollection(reference.collection);
        }
    });
    const auto load = [&](const std::string& function, const Json& entry) {
        where = name + ", " + function;
        Action action;
        const auto known = roles.find(function);
        if (known != roles.end()) {
            action.collection = known->second.first;
            action.role = known->second.second;
        }
        if (entry.IsArray()) {
            for (const Json& each : entry.GetArray()) {
                LoadAction(function, each, action, file);
            }
        } else {
            LoadAction(function, entry, action, file);
        }
        roles.erase(function);
    };
    ForMembers(Member(file, "functions"), [&](const std::string& functions, const Json& entry) {
        const std::vector<std::string> each = SplitNames(functions);
        const bool named =
            std::any_of(each.begin(), each.end(), [&](const std::string& one) { return roles.count(one) != 0; });
        for (const std::string& one : named ? each : std::vector<std::string>{functions}) {
            load(one, entry);
        }
    });
    const Json nothing(rapidjson::kObjectType);
    for (const auto& [function, role] : roles) {
        where = name + ", " + function;
        Action action;
        action.collection = role.first;
        action.role = role.second;
        LoadAction(function, nothing, action, file);
    }
    for (const char* kind : {"jobs", "files"}) {
        LoadPlans(file, where = name, kind);
    }
    where = name;
    for (const char* kind : {"commands", "batches", "kestrel", "netsdk"}) {
        ForMembers(Member(file, kind), [&](const std::string& each, const Json& entry) {
            if (!entries_[kind].emplace(each, &entry).second) {
                throw std::runtime_error(std::string(kind) + " \"" + each + "\" are there twice");
            }
        });
    }
}

// Jobs and files: each of their functions runs a service that reads the rest of the entry.
void Description::LoadPlans(const Json& file, std::string& where, const char* kind)
{
    const bool job = std::string_view(kind) == "jobs";
    const std::string base = where;
    ForMembers(Member(file, kind), [&](const std::string& name, const Json& entry) {
        where = base + ", " + name;
        if (job) {
            OnlyMembers(entry,
                        {"start", "progress", "stop", "items", "rows", "itemMs", "fail", "states", "done", "answer"});
        } else {
            OnlyMembers(entry, {"put", "close", "get", "type", "sample", "drawn", "of", "flag"});
        }
        for (const char* part : {"start", "progress", "stop", "put", "close", "get"}) {
            for (const std::string& function : Texts(Member(entry, part))) {
                Action action;
                action.role = Role::kService;
                action.service = std::string(job ? "job." : "file.") + part;
                action.plan = &entry;
                action.planName = name;
                const Json nothing(rapidjson::kObjectType);
                LoadAction(function, nothing, action, file);
            }
        }
    });
    where = base;
}

std::vector<Endpoint*> Description::Named(const std::string& names, const Json& entry)
{
    std::vector<Endpoint*> found;
    const auto add = [&](Endpoint& endpoint) {
        if (std::find(found.begin(), found.end(), &endpoint) == found.end()) {
            found.push_back(&endpoint);
        }
    };
    for (const std::string& name : SplitNames(names)) {
        const std::size_t blank = name.find(" /");
        if (blank != std::string::npos) {
            const std::string verb = name.substr(0, blank);
            const std::string path = name.substr(blank + 1);
            const Json* root = Member(entry, "root");
            if (const std::vector<Endpoint*>* same = root == nullptr ? Below(verb, path) : nullptr) {
                for (Endpoint* each : *same) {
                    add(*each);
                }
                continue;
            }
            Endpoint& endpoint = EndpointOf(verb, path, std::string(AsText(root)));
            if (const Json* body = Member(entry, "body")) {
                const WireStructure* structure = wire_.Find(AsText(body));
                if (structure == nullptr) {
                    throw std::runtime_error("unknown structure in \"body\"");
                }
                AddBody(endpoint, *structure);
            }
            add(endpoint);
            continue;
        }
        const auto functions = wire_.Named(name);
        for (const WireFunction* function : functions) {
            if (!function->direct) {
                add(EndpointOf(function->verb, function->path, function->root));
            }
        }
        if (functions.empty()) {
            throw std::runtime_error("the library has no function \"" + name + "\" that sends");
        }
    }
    return found;
}

void Description::LoadAction(const std::string& names, const Json& entry, Action action, const Json& file)
{
    OnlyMembers(entry, {"about",    "root",    "body",    "result", "do",    "service",    "collection",
                        "key",      "items",   "by",      "set",    "need",  "references", "lists",
                        "listKeys", "marks",   "refuse",  "touch",  "join",  "filter",     "any",
                        "narrow",   "countBy", "replace", "merge",  "reach", "if",         "answer"});
    if (const Json* role = Member(entry, "do")) {
        action.role = RoleNamed(AsText(role));
    }
    if (const Json* collection = Member(entry, "collection")) {
        action.collection = &NeedCollection(AsText(collection));
    }
    if (const Json* service = Member(entry, "service")) {
        action.role = Role::kService;
        action.service = AsText(service);
    }
    if (action.collection == nullptr && action.role != Role::kReply && action.role != Role::kService) {
        throw std::runtime_error("missing \"collection\"");
    }
    LoadRefinements(entry, action);
    for (Endpoint* endpoint : Named(names, entry)) {
        if (const Json* result = Member(entry, "result")) {
            endpoint->result = wire_.Find(AsText(result));
            if (endpoint->result == nullptr) {
                throw std::runtime_error("unknown structure in \"result\"");
            }
        }
        Attach(*endpoint, std::make_unique<Action>(action), file);
    }
}

void Description::Attach(Endpoint& endpoint, std::unique_ptr<Action> action, const Json& file)
{
    for (const auto& other : endpoint.actions) {
        if (other->given == nullptr && action->given == nullptr) {
            throw std::runtime_error("another entry stands for " + endpoint.verb + " " + endpoint.path + " \"" +
                                     endpoint.root + "\"");
        }
    }
    if (const int category = ModuleCategory(AsText(Member(file, "module")))) {
        endpoint.category = category;
    }
    endpoint.before = AsText(Member(file, "before"));
    Complete(endpoint, *action);
    Learn(endpoint, *action);
    const bool last = action->given == nullptr;
    endpoint.actions.insert(last ? endpoint.actions.end() : endpoint.actions.begin(), std::move(action));
}

// The list that an action works through when the file does not name one: the body's only list, beside which no text
// stands. What removes takes identifiers or objects, what adds or changes takes objects.
void Description::Complete(const Endpoint& endpoint, Action& action)
{
    const bool works = action.role == Role::kAdd || action.role == Role::kModify || action.role == Role::kRemove ||
                       action.role == Role::kGet;
    if (!works || action.noItems || !action.items.empty() || endpoint.body == nullptr || action.key != nullptr) {
        return;
    }
    const WireMember* list = nullptr;
    for (const WireMember& member : endpoint.body->members) {
        if (member.kind == WireKind::kText || (member.IsList() && list != nullptr)) {
            return;
        }
        if (member.IsList()) {
            list = &member;
        }
    }
    const bool plain = action.role != Role::kAdd && list != nullptr && list->kind == WireKind::kTextList;
    if (list != nullptr && (plain || list->kind == WireKind::kStructList)) {
        action.items = list->key;
    }
}

// What documents of the collection look like, for conditions that name their members.
void Description::Learn(const Endpoint& endpoint, const Action& action)
{
    if (action.collection == nullptr) {
        return;
    }
    Collection& collection = *collections_.find(action.collection->name)->second;
    if (action.role == Role::kAdd && endpoint.body != nullptr) {
        const WireMember* items = action.items.empty() ? nullptr : endpoint.body->Find(action.items);
        collection.source = items == nullptr ? endpoint.body : items->structure;
        collection.parents.insert(endpoint.parents.begin(), endpoint.parents.end());
    } else if (action.role == Role::kFind && endpoint.result != nullptr && collection.element == nullptr) {
        collection.element = ElementOf(endpoint.result);
    }
}

const Collection* Description::FindCollection(std::string_view name) const
{
    const auto found = collections_.find(name);
    return found == collections_.end() ? nullptr : found->second.get();
}

const std::map<std::string, const Json*, std::less<>>& Description::Entries(std::string_view kind) const
{
    static const std::map<std::string, const Json*, std::less<>> none;
    const auto found = entries_.find(kind);
    return found == entries_.end() ? none : found->second;
}

} // namespace nexwire::simulator
