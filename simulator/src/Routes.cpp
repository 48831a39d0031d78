// From paths to endpoints and back.

#include "src/Routes.h"

#include <algorithm>
#include <stdexcept>

namespace nexwire::simulator {
namespace {

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

} // namespace

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

} // namespace nexwire::simulator
