#include "src/Description.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>

namespace nexwire::simulator {
namespace {

std::vector<std::string> Texts(const Json* list)
{
    std::vector<std::string> texts;
    if (list == nullptr) {
        return texts;
    }
    if (list->IsString()) {
        texts.emplace_back(AsText(list));
        return texts;
    }
    if (!list->IsArray()) {
        throw std::runtime_error("expected a text or a list of texts");
    }
    for (const Json& text : list->GetArray()) {
        if (!text.IsString()) {
            throw std::runtime_error("expected a list of texts");
        }
        texts.emplace_back(AsText(&text));
    }
    return texts;
}

// A misspelled member would be a rule that silently does not hold.
void OnlyMembers(const Json& object, std::initializer_list<std::string_view> allowed)
{
    if (!object.IsObject()) {
        throw std::runtime_error("expected an object");
    }
    for (const auto& member : object.GetObject()) {
        const std::string_view name = AsText(&member.name);
        if (std::find(allowed.begin(), allowed.end(), name) == allowed.end()) {
            throw std::runtime_error("unknown member \"" + std::string(name) + "\"");
        }
    }
}

std::string NeedText(const Json& object, std::string_view name)
{
    const std::string_view text = AsText(Member(object, name));
    if (text.empty()) {
        throw std::runtime_error("missing \"" + std::string(name) + "\"");
    }
    return std::string(text);
}

template <class Each>
void ForEach(const Json* list, const Each& each)
{
    if (list == nullptr) {
        return;
    }
    if (!list->IsArray()) {
        throw std::runtime_error("expected a list");
    }
    for (const Json& entry : list->GetArray()) {
        each(entry);
    }
}

template <class Each>
void ForMembers(const Json* object, const Each& each)
{
    if (object == nullptr) {
        return;
    }
    if (!object->IsObject()) {
        throw std::runtime_error("expected an object");
    }
    for (const auto& member : object->GetObject()) {
        each(std::string(AsText(&member.name)), member.value);
    }
}

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

std::vector<Reference> References(const Json* entry)
{
    std::vector<Reference> references;
    ForMembers(entry, [&](const std::string& path, const Json& collection) {
        references.push_back({path, std::string(AsText(&collection))});
    });
    return references;
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

std::vector<std::string_view> Segments(std::string_view path)
{
    std::vector<std::string_view> segments;
    while (!path.empty()) {
        path.remove_prefix(1); // The slash.
        const std::size_t slash = path.find('/');
        segments.push_back(path.substr(0, slash));
        path = slash == std::string_view::npos ? std::string_view() : path.substr(slash);
    }
    return segments;
}

/// A segment of a pattern: a text, or an identifier between two texts.
struct Segment {
    std::string_view before;
    std::string_view name;
    std::string_view after;
    bool identifier = false;

    explicit Segment(std::string_view text) : before(text)
    {
        const std::size_t open = text.find('{');
        const std::size_t close = text.find('}');
        if (open != std::string_view::npos && close != std::string_view::npos && close > open) {
            identifier = true;
            before = text.substr(0, open);
            name = text.substr(open + 1, close - open - 1);
            after = text.substr(close + 1);
        }
    }

    bool Fits(std::string_view text) const
    {
        return text.size() > before.size() + after.size() && text.substr(0, before.size()) == before &&
               text.substr(text.size() - after.size()) == after;
    }
    std::string_view Taken(std::string_view text) const
    {
        return text.substr(before.size(), text.size() - before.size() - after.size());
    }
};

// The number of codes under a path: of its first segment that names a module.
int CategoryOf(std::string_view path)
{
    for (const std::string_view segment : Segments(path)) {
        if (const int category = ModuleCategory(segment)) {
            return category;
        }
    }
    return ModuleCategory("system");
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

struct Description::Node {
    std::map<std::string, std::unique_ptr<Node>, std::less<>> literals;
    std::map<std::string, std::unique_ptr<Node>, std::less<>> identifiers; ///< By what stands around them.
    std::map<std::string, std::vector<Endpoint*>, std::less<>> verbs;
};

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
                                            "commands", "batches", "kestrel", "netsdk"});
            LoadCollections(documents_.back());
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

Endpoint& Description::EndpointOf(const std::string& verb, const std::string& path, const std::string& root)
{
    if (path.empty() || path.front() != '/') {
        throw std::runtime_error("a path begins with a slash");
    }
    Node* node = routes_.get();
    Node* above = node;
    std::vector<std::string_view> names;
    std::vector<std::string> parents;
    std::optional<std::size_t> device;
    bool last = false;
    std::string_view previous;
    for (const std::string_view text : Segments(path)) {
        const Segment segment(text);
        last = segment.identifier && segment.before.empty() && segment.after.empty();
        if (segment.identifier) {
            if (!device && (previous == "devices" || segment.before == "devices" || segment.name == "deviceGuid")) {
                device = names.size();
            }
            names.push_back(segment.name);
            parents.emplace_back(segment.before.empty() ? previous : segment.before);
        }
        previous = text;
        std::unique_ptr<Node>& next =
            segment.identifier ? node->identifiers[std::string(segment.before) + "{}" + std::string(segment.after)]
                               : node->literals[std::string(text)];
        if (next == nullptr) {
            next = std::make_unique<Node>();
        }
        above = node;
        node = next.get();
    }
    auto& same = node->verbs[verb];
    const auto found = std::find_if(same.begin(), same.end(), [&](const Endpoint* each) { return each->root == root; });
    const bool fresh = found == same.end();
    if (fresh) {
        endpoints_.push_back(std::make_unique<Endpoint>());
    }
    Endpoint& endpoint = fresh ? *endpoints_.back() : **found;
    if (fresh) {
        endpoint.verb = verb;
        endpoint.path = path;
        endpoint.root = root;
        endpoint.category = CategoryOf(path);
        endpoint.parents = std::move(parents);
        endpoint.endsWithIdentifier = last;
        endpoint.device = device;
        same.push_back(&endpoint);
        // An identifier at the end of a text may be nothing.
        const Segment end(Segments(path).back());
        if (end.identifier && !end.before.empty() && end.after.empty()) {
            std::unique_ptr<Node>& bare = above->literals[std::string(end.before)];
            if (bare == nullptr) {
                bare = std::make_unique<Node>();
            }
            bare->verbs[verb].push_back(&endpoint);
        }
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        endpoint.names.emplace(names[i], i);
        endpoint.names.emplace(std::to_string(i + 1), i);
    }
    return endpoint;
}

// All endpoints of a verb and pattern; null when there are none.
const std::vector<Endpoint*>* Description::Below(const std::string& verb, const std::string& path) const
{
    const Node* node = routes_.get();
    for (const std::string_view text : Segments(path)) {
        const Segment segment(text);
        const auto& children = segment.identifier ? node->identifiers : node->literals;
        const auto next = children.find(
            segment.identifier ? std::string(segment.before) + "{}" + std::string(segment.after) : std::string(text));
        if (next == children.end()) {
            return nullptr;
        }
        node = next->second.get();
    }
    const auto found = node->verbs.find(verb);
    return found == node->verbs.end() ? nullptr : &found->second;
}

const Collection& Description::NeedCollection(std::string_view name) const
{
    const Collection* collection = FindCollection(name);
    if (collection == nullptr) {
        throw std::runtime_error("unknown collection \"" + std::string(name) + "\"");
    }
    return *collection;
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
        collection->seed = Member(entry, "seed");
        ForEach(collection->seed, [&](const Json& document) { NeedText(document, collection->key); });
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
            OnlyMembers(entry, {"put", "close", "get", "type", "sample"});
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
    // "devices.name by deviceGuid"
    ForMembers(Member(entry, "join"), [&](const std::string& member, const Json& rule) {
        const std::string text(AsText(&rule));
        const std::size_t dot = text.find('.');
        const std::size_t by = text.find(" by ");
        if (dot == std::string::npos || by == std::string::npos || dot > by) {
            throw std::runtime_error("a join reads \"collection.member by member\"");
        }
        action.joins.push_back({member, NeedCollection(text.substr(0, dot)).name, text.substr(dot + 1, by - dot - 1),
                                text.substr(by + 4)});
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

const std::vector<Endpoint*>* Description::Walk(const Node& node, const std::vector<std::string_view>& segments,
                                                std::size_t at, std::string_view verb, Route& route)
{
    if (at == segments.size()) {
        route.pathKnown = route.pathKnown || !node.verbs.empty();
        const auto found = node.verbs.find(verb);
        return found == node.verbs.end() ? nullptr : &found->second;
    }
    const auto literal = node.literals.find(segments[at]);
    if (literal != node.literals.end()) {
        if (const auto* endpoints = Walk(*literal->second, segments, at + 1, verb, route)) {
            return endpoints;
        }
    }
    for (const auto& [text, next] : node.identifiers) {
        const Segment segment(text);
        if (!segment.Fits(segments[at])) {
            continue;
        }
        if (const auto* endpoints = Walk(*next, segments, at + 1, verb, route)) {
            return endpoints;
        }
    }
    return nullptr;
}

Description::Route Description::Find(std::string_view verb, std::string_view path) const
{
    Route route;
    if (path.empty() || path.front() != '/') {
        return route;
    }
    const std::vector<std::string_view> segments = Segments(path);
    if (const auto* endpoints = Walk(*routes_, segments, 0, verb, route)) {
        route.endpoints.assign(endpoints->begin(), endpoints->end());
        const std::vector<std::string_view> pattern = Segments(endpoints->front()->path);
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            const Segment segment(pattern[i]);
            if (segment.identifier) {
                route.identifiers.emplace_back(segment.Fits(segments[i]) ? segment.Taken(segments[i]) : "");
            }
        }
    }
    return route;
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
