#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "src/Codes.h"
#include "src/Json.h"
#include "src/Store.h"
#include "src/Wire.h"

namespace nexwire::simulator {

/// One embedded resource file.
struct ResourceFile {
    std::string name;
    std::string text;
};

/// All embedded files, in order of name.
const std::vector<ResourceFile>& EmbeddedResources();

/// A text of a body that must be there, by dotted path through objects and lists.
using DottedPath = std::string;

/// A text that is the key of a document elsewhere; "{name}" as its path is an identifier of the request's path.
struct Reference {
    DottedPath path;
    std::string collection;
};

/// Documents elsewhere that hold a document's key.
struct UseRule {
    std::string collection;
    std::string field;
};

/// A kind of document. See README.md for the members of a resource file.
struct Collection {
    std::string name;
    std::string key;                              ///< Member that holds the document's GUID.
    std::vector<std::vector<std::string>> unique; ///< Members that no two documents share, together.
    std::vector<DottedPath> need;
    std::vector<Reference> references;
    std::vector<UseRule> uses; ///< Its removal is refused while one of them holds it, a query tells it as "isUsed".
    const Json* defaults = nullptr; ///< Members a new document starts with, or null.
    std::vector<const Json*> seeds; ///< Lists of documents of a fresh database.
    std::string stamp;              ///< Member that receives the time of a change; empty: none.
    std::string time;               ///< Member that "beginTime" and "endTime" bound.
    std::string orderBy;
    bool descending = false;
    const WireStructure* element = nullptr; ///< What a query answers, once a function says so.
    const WireStructure* source = nullptr;  ///< What it is made from.
    std::set<std::string> parents;          ///< Segments of paths below which new ones are sent.

    /// Whether documents have a member of that name, as far as the library's structures tell.
    const WireMember* Find(std::string_view member) const;
};

/// A condition whose value comes with the request.
struct FilterRule {
    std::string field;
    std::string element;
    Test test = Test::kEquals;
    const Json* value = nullptr; ///< Template of the value; empty text, empty list and nothing mean "no condition".
};

/// A list of the body that is added to, or removed from, a list of the document.
struct ListRule {
    std::string from;
    std::string target;
    bool remove = false;
    std::vector<std::string> by; ///< Members that tell elements apart.
};

/// Members to set when one of the keys was sent (always, without keys).
struct MarkRule {
    std::vector<std::string> when;
    const Json* values = nullptr;
};

/// Refuses when the document has these values and one of the keys was sent.
struct RefuseRule {
    std::vector<std::string> when;
    const Json* has = nullptr;
    Reason reason = Reason::kNone;
};

/// Documents elsewhere that hold a document's key and change with it; they are named "touched".
struct TouchRule {
    UseRule where;
    const Json* has = nullptr; ///< Only those with one of these values, or null.
    const Json* values = nullptr;
};

/// A member that is looked up in the document that another member names.
struct JoinRule {
    std::string member;
    std::string collection;
    std::string take;
    std::string by;
};

/// What a request does.
enum class Role { kReply, kAdd, kFind, kGet, kModify, kRemove, kCount, kKeep, kRecall, kService };

/// An entry of a resource file: what requests of an endpoint do.
struct Action {
    Role role = Role::kReply;
    std::string service;
    const Json* plan = nullptr; ///< For a service: what the file says about it.
    std::string planName;
    const Collection* collection = nullptr;
    const Json* given = nullptr; ///< Values that the root must have for this entry to be meant, or null.
    const Json* key = nullptr;   ///< Template of the document's key.
    std::string items;           ///< Member of the body with the elements to work on.
    bool noItems = false;
    std::vector<std::string> by; ///< Members that identify a document instead of its key.
    const Json* set = nullptr;   ///< Template of members added to what is stored.
    std::vector<DottedPath> need;
    std::vector<Reference> references;
    std::vector<ListRule> lists;
    std::vector<MarkRule> marks;
    std::vector<RefuseRule> refusals;
    std::vector<TouchRule> touches;
    std::vector<JoinRule> joins;
    std::vector<FilterRule> filters;
    bool any = false;     ///< One filter is enough.
    bool narrow = true;   ///< By what the body and the documents have in common.
    bool replace = false; ///< Creating what exists replaces it.
    bool merge = false;   ///< Keeping changes only the members sent.
    std::string countBy;
    const Json* reach = nullptr;  ///< Template of a list of devices that are told, with results.
    const Json* answer = nullptr; ///< Members of the envelope's data by dotted path.
};

/// What shares verb, path and root: one thing on the wire.
struct Endpoint {
    std::string verb;
    std::string path;
    std::string root;   ///< Empty: the body is not looked at.
    std::string before; ///< Service that runs first.
    int category = 0;   ///< Number of its codes.
    const WireStructure* body = nullptr;
    const WireStructure* result = nullptr;
    std::vector<const WireFunction*> functions;
    std::map<std::string, std::size_t, std::less<>> names; ///< Of identifiers of the path: their place.
    std::vector<std::string> parents;                      ///< Of each identifier: the segment before it.
    bool endsWithIdentifier = false;
    std::optional<std::size_t> device;            ///< Which identifier is a device of the platform.
    std::vector<std::unique_ptr<Action>> actions; ///< With conditions first; without any it keeps state or samples.

    bool Writes() const { return verb == "PUT" || verb == "DELETE"; }
};

/// What the library's document and the resource files say, with the routes built from it. Immutable once loaded; safe
/// to read from any thread.
class Description {
public:
    /// @throws std::runtime_error naming the file and entry that are wrong.
    Description(std::string_view document, const std::vector<ResourceFile>& files);
    ~Description();

    struct Route {
        /// Those that share path and verb and are told apart by their root; empty: nothing takes it.
        std::vector<const Endpoint*> endpoints;
        bool pathKnown = false;               ///< The path exists, for another verb.
        std::vector<std::string> identifiers; ///< Of the path, in order.
    };
    Route Find(std::string_view verb, std::string_view path) const;

    const Wire& Library() const { return wire_; }
    const Collection* FindCollection(std::string_view name) const;
    const std::vector<std::unique_ptr<Endpoint>>& Endpoints() const { return endpoints_; }
    const std::map<std::string, std::unique_ptr<Collection>, std::less<>>& Collections() const { return collections_; }
    /// The members of a kind of entry ("commands", "batches", ...) of all files, by name.
    const std::map<std::string, const Json*, std::less<>>& Entries(std::string_view kind) const;

private:
    struct Node;
    void AddFunctions();
    Endpoint& EndpointOf(const std::string& verb, const std::string& path, const std::string& root);
    const std::vector<Endpoint*>* Below(const std::string& verb, const std::string& path) const;
    void AddBody(Endpoint& endpoint, const WireStructure& body);
    static void AddSeed(Collection& collection, const Json* seed);
    void LoadCollections(const Json& file);
    void LoadActions(const Json& file, std::string& where);
    void LoadPlans(const Json& file, std::string& where, const char* kind);
    void LoadAction(const std::string& names, const Json& entry, Action action, const Json& file);
    void LoadRefinements(const Json& entry, Action& action) const;
    std::vector<Endpoint*> Named(const std::string& names, const Json& entry);
    void Attach(Endpoint& endpoint, std::unique_ptr<Action> action, const Json& file);
    static void Complete(const Endpoint& endpoint, Action& action);
    void Learn(const Endpoint& endpoint, const Action& action);
    const Collection& NeedCollection(std::string_view name) const;
    static const std::vector<Endpoint*>* Walk(const Node& node, const std::vector<std::string_view>& segments,
                                              std::size_t at, std::string_view verb, Route& route);

    Wire wire_;
    std::vector<Document> documents_;
    std::map<std::string, std::unique_ptr<Collection>, std::less<>> collections_;
    std::map<std::string, std::map<std::string, const Json*, std::less<>>, std::less<>> entries_;
    std::vector<std::unique_ptr<Endpoint>> endpoints_;
    std::vector<std::unique_ptr<WireStructure>> merged_;
    std::unique_ptr<Node> routes_;
};

} // namespace nexwire::simulator
