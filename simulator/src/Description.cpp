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

FilterRule MakeFilter(const Json& entry)
{
    static constexpr std::pair<std::string_view, Test> kTests[] = {
        {"equals", Test::kEquals},         {"contains", Test::kContains}, {"startsWith", Test::kStartsWith},
        {"oneOf", Test::kOneOf},           {"atLeast", Test::kAtLeast},   {"atMost", Test::kAtMost},
        {"hasElement", Test::kHasElement},
    };
    OnlyMembers(entry, {"if", "field", "element", "any", "equals", "contains", "startsWith", "oneOf", "atLeast",
                        "atMost", "hasElement"});
    FilterRule rule;
    rule.field = NeedText(entry, "field");
    rule.element = AsText(Member(entry, "element"));
    rule.any = Member(entry, "any");
    rule.given = Member(entry, "if");
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

Operation MakeOperation(const std::string& name)
{
    static constexpr std::pair<std::string_view, Operation> kOperations[] = {
        {"reply", Operation::kReply},     {"create", Operation::kCreate}, {"query", Operation::kQuery},
        {"get", Operation::kGet},         {"modify", Operation::kModify}, {"remove", Operation::kRemove},
        {"count", Operation::kCount},     {"keep", Operation::kKeep},     {"recall", Operation::kRecall},
        {"service", Operation::kService},
    };
    for (const auto& [known, operation] : kOperations) {
        if (known == name) {
            return operation;
        }
    }
    throw std::runtime_error("unknown operation \"" + name + "\"");
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

} // namespace

struct Description::Node {
    std::map<std::string, std::unique_ptr<Node>, std::less<>> literals;
    std::unique_ptr<Node> placeholder;
    std::map<std::string, std::vector<const Resource*>, std::less<>> verbs;
};

Description::Description(const std::vector<ResourceFile>& files) : routes_(std::make_unique<Node>())
{
    documents_.reserve(files.size());
    std::string where;
    try {
        for (const ResourceFile& file : files) {
            where = file.name;
            documents_.push_back(ParseOwn(file.text));
            LoadCollections(documents_.back());
        }
        for (std::size_t i = 0; i < files.size(); ++i) {
            const Json& file = documents_[i];
            for (const auto& member : file.GetObject()) {
                const std::string_view name = AsText(&member.name);
                if (name == "resources") {
                    for (const Json& entry : member.value.GetArray()) {
                        where = std::string(files[i].name) + ", " + std::string(AsText(Member(entry, "verb"))) + " " +
                                std::string(AsText(Member(entry, "path")));
                        LoadResource(entry, file);
                    }
                } else if (name != "module" && name != "collections" && name != "before" && name != "about") {
                    data_[std::string(name)] = &member.value;
                }
            }
        }
    } catch (const std::exception& error) {
        throw std::runtime_error("resource file " + where + ": " + error.what());
    }
}

Description::~Description() = default;

void Description::LoadCollections(const Json& file)
{
    const Json* collections = Member(file, "collections");
    if (collections == nullptr) {
        return;
    }
    for (const auto& member : collections->GetObject()) {
        OnlyMembers(member.value, {"key", "unique", "defaults", "seed"});
        Collection collection;
        collection.name = AsText(&member.name);
        collection.key = NeedText(member.value, "key");
        ForEach(Member(member.value, "unique"),
                [&](const Json& fields) { collection.unique.push_back(Texts(&fields)); });
        collection.defaults = Member(member.value, "defaults");
        collection.seed = Member(member.value, "seed");
        ForEach(collection.seed, [&](const Json& document) { NeedText(document, collection.key); });
        if (!collections_.emplace(collection.name, collection).second) {
            throw std::runtime_error("collection \"" + collection.name + "\" is there twice");
        }
    }
}

void Description::LoadResource(const Json& entry, const Json& file)
{
    OnlyMembers(entry, {"about",  "path",    "verb",       "root",  "body",    "do",        "service", "collection",
                        "key",    "items",   "by",         "with",  "lists",   "marks",     "refuse",  "usedBy",
                        "filter", "orderBy", "descending", "page",  "countBy", "replace",   "merge",   "default",
                        "reach",  "if",      "itemBody",   "touch", "join",    "anyFilter", "answer"});
    auto resource = std::make_unique<Resource>();
    resource->module = NeedText(file, "module");
    if (ModuleCategory(resource->module) == 0) {
        throw std::runtime_error("unknown module \"" + resource->module + "\"");
    }
    resource->before = AsText(Member(file, "before"));
    resource->path = NeedText(entry, "path");
    resource->verb = NeedText(entry, "verb");
    resource->root = AsText(Member(entry, "root"));
    resource->given = Member(entry, "if");
    resource->body = Member(entry, "body");
    resource->itemBody = Member(entry, "itemBody");
    resource->service = AsText(Member(entry, "service"));
    resource->operation = resource->service.empty() ? MakeOperation(NeedText(entry, "do")) : Operation::kService;
    if (const Json* collection = Member(entry, "collection")) {
        resource->collection = FindCollection(AsText(collection));
        if (resource->collection == nullptr) {
            throw std::runtime_error("unknown collection");
        }
    } else if (resource->operation != Operation::kReply && resource->operation != Operation::kService) {
        throw std::runtime_error("missing \"collection\"");
    }
    resource->key = Member(entry, "key");
    resource->items = Member(entry, "items");
    resource->by = Texts(Member(entry, "by"));
    resource->with = Member(entry, "with");
    ForEach(Member(entry, "lists"), [&](const Json& rule) {
        OnlyMembers(rule, {"from", "addTo", "removeFrom", "by"});
        ListRule list;
        list.from = NeedText(rule, "from");
        list.remove = Member(rule, "removeFrom") != nullptr;
        list.target = NeedText(rule, list.remove ? "removeFrom" : "addTo");
        list.by = Texts(Member(rule, "by"));
        resource->lists.push_back(std::move(list));
    });
    ForEach(Member(entry, "marks"), [&](const Json& rule) {
        OnlyMembers(rule, {"when", "set"});
        resource->marks.push_back({Texts(Member(rule, "when")), Member(rule, "set")});
        if (resource->marks.back().values == nullptr) {
            throw std::runtime_error("a mark sets nothing");
        }
    });
    ForEach(Member(entry, "refuse"), [&](const Json& rule) {
        OnlyMembers(rule, {"when", "has", "reason"});
        const Reason reason = ReasonByName(NeedText(rule, "reason"));
        resource->refusals.push_back({Texts(Member(rule, "when")), Member(rule, "has"), reason});
        if (reason == Reason::kNone || resource->refusals.back().has == nullptr) {
            throw std::runtime_error("a refusal without \"has\" or with an unknown reason");
        }
    });
    ForEach(Member(entry, "usedBy"), [&](const Json& rule) {
        OnlyMembers(rule, {"collection", "field"});
        resource->uses.push_back({NeedText(rule, "collection"), NeedText(rule, "field")});
        if (FindCollection(resource->uses.back().collection) == nullptr) {
            throw std::runtime_error("unknown collection in \"usedBy\"");
        }
    });
    ForEach(Member(entry, "touch"), [&](const Json& rule) {
        OnlyMembers(rule, {"collection", "field", "has", "set"});
        resource->touches.push_back(
            {{NeedText(rule, "collection"), NeedText(rule, "field")}, Member(rule, "has"), Member(rule, "set")});
        if (resource->touches.back().values == nullptr) {
            throw std::runtime_error("a touch sets nothing");
        }
    });
    ForEach(Member(entry, "join"), [&](const Json& rule) {
        OnlyMembers(rule, {"member", "collection", "by", "take"});
        resource->joins.push_back(
            {NeedText(rule, "member"), NeedText(rule, "collection"), NeedText(rule, "by"), NeedText(rule, "take")});
    });
    resource->anyFilter = AsBool(Member(entry, "anyFilter"));
    ForEach(Member(entry, "filter"), [&](const Json& rule) { resource->filters.push_back(MakeFilter(rule)); });
    resource->orderBy = AsText(Member(entry, "orderBy"));
    resource->descending = AsBool(Member(entry, "descending"));
    if (const Json* page = Member(entry, "page")) {
        OnlyMembers(*page, {"size", "number", "offset"});
        resource->pageSize = Member(*page, "size");
        resource->pageNumber = Member(*page, "number");
        resource->offset = Member(*page, "offset");
    }
    resource->countBy = AsText(Member(entry, "countBy"));
    resource->replace = AsBool(Member(entry, "replace"));
    resource->merge = AsBool(Member(entry, "merge"));
    resource->fallback = Member(entry, "default");
    resource->reach = Member(entry, "reach");
    resource->answer = Member(entry, "answer");
    AddRoute(*resource);
    resources_.push_back(std::move(resource));
}

void Description::AddRoute(Resource& resource)
{
    if (resource.path.front() != '/') {
        throw std::runtime_error("a path begins with a slash");
    }
    Node* node = routes_.get();
    for (const std::string_view segment : Segments(resource.path)) {
        std::unique_ptr<Node>* next = nullptr;
        if (segment.size() > 2 && segment.front() == '{' && segment.back() == '}') {
            const std::string_view inside = segment.substr(1, segment.size() - 2);
            const std::size_t colon = inside.find(':');
            if (colon != std::string_view::npos) {
                const Collection* collection = FindCollection(inside.substr(colon + 1));
                if (collection == nullptr) {
                    throw std::runtime_error("unknown collection in the path");
                }
                resource.checked.emplace_back(inside.substr(0, colon), collection);
            }
            next = &node->placeholder;
        } else {
            next = &node->literals[std::string(segment)];
        }
        if (*next == nullptr) {
            *next = std::make_unique<Node>();
        }
        node = next->get();
    }
    auto& same = node->verbs[resource.verb];
    for (const Resource* other : same) {
        if (other->root == resource.root && other->given == nullptr) {
            throw std::runtime_error("another resource has this path, verb and root");
        }
    }
    same.push_back(&resource);
}

const std::vector<const Resource*>* Description::Walk(const Node& node, const std::vector<std::string_view>& segments,
                                                      std::size_t at, std::string_view verb, Route& route)
{
    if (at == segments.size()) {
        route.pathKnown = route.pathKnown || !node.verbs.empty();
        const auto found = node.verbs.find(verb);
        return found == node.verbs.end() ? nullptr : &found->second;
    }
    const auto literal = node.literals.find(segments[at]);
    if (literal != node.literals.end()) {
        if (const auto* resources = Walk(*literal->second, segments, at + 1, verb, route)) {
            return resources;
        }
    }
    if (node.placeholder != nullptr && !segments[at].empty()) {
        return Walk(*node.placeholder, segments, at + 1, verb, route);
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
    if (const auto* resources = Walk(*routes_, segments, 0, verb, route)) {
        route.resources = *resources;
        const std::vector<std::string_view> pattern = Segments(resources->front()->path);
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            if (pattern[i].size() > 2 && pattern[i].front() == '{') {
                const std::string_view inside = pattern[i].substr(1, pattern[i].size() - 2);
                route.placeholders[std::string(inside.substr(0, inside.find(':')))] = segments[i];
            }
        }
    }
    return route;
}

const Collection* Description::FindCollection(std::string_view name) const
{
    const auto found = collections_.find(name);
    return found == collections_.end() ? nullptr : &found->second;
}

const Json* Description::Data(std::string_view name) const
{
    const auto found = data_.find(name);
    return found == data_.end() ? nullptr : found->second;
}

} // namespace nexwire::simulator
