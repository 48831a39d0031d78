#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "src/Codes.h"
#include "src/Json.h"
#include "src/Store.h"

namespace nexwire::simulator {

/// One embedded resource file.
struct ResourceFile {
    std::string_view name;
    std::string_view text;
};

/// All embedded files, in order of name.
const std::vector<ResourceFile>& EmbeddedResources();

/// A kind of document. See README.md for the members of a resource file.
struct Collection {
    std::string name;
    std::string key;                              ///< Member that holds the document's GUID.
    std::vector<std::vector<std::string>> unique; ///< Members that no two documents share, together.
    const Json* defaults = nullptr;               ///< Members a new document starts with, or null.
    const Json* seed = nullptr;                   ///< Documents of a fresh database, or null.
};

/// A condition whose value comes with the request.
struct FilterRule {
    std::string field;
    std::string element;
    Test test = Test::kEquals;
    const Json* value = nullptr; ///< Template of the value; empty text, empty list and nothing mean "no condition".
    const Json* any = nullptr;   ///< Values that mean "no condition" as well, or null.
    const Json* given = nullptr; ///< Template; the rule counts only when it is true.
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

/// Documents elsewhere that hold a document's key: its removal is refused, a query tells it as "isUsed".
struct UseRule {
    std::string collection;
    std::string field;
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
    std::string by;
    std::string take;
};

enum class Operation { kReply, kCreate, kQuery, kGet, kModify, kRemove, kCount, kKeep, kRecall, kService };

struct Resource {
    std::string name;
    std::string module;
    std::string verb;
    std::string path;
    std::string root;            ///< Empty: the body is not looked at.
    const Json* given = nullptr; ///< Members that the root object must have for this resource to be meant, or null.
    const Json* body = nullptr;  ///< Shape of the root object, or null.
    Operation operation = Operation::kReply;
    std::string service;
    std::string before; ///< Service that runs first, for all resources of a file.
    const Collection* collection = nullptr;
    const Json* key = nullptr;      ///< Template of the document's key.
    const Json* items = nullptr;    ///< Template of a list: the operation runs once per element, with results.
    const Json* itemBody = nullptr; ///< Shape of an element; what does not fit is a result, not a refusal.
    std::vector<std::string> by;    ///< Members that identify a document instead of its key.
    const Json* with = nullptr;     ///< Template of members added to what is stored.
    std::vector<ListRule> lists;
    std::vector<MarkRule> marks;
    std::vector<RefuseRule> refusals;
    std::vector<UseRule> uses;
    std::vector<TouchRule> touches;
    std::vector<JoinRule> joins;
    std::vector<FilterRule> filters;
    bool anyFilter = false; ///< One filter is enough.
    std::string orderBy;
    bool descending = false;
    const Json* pageSize = nullptr;
    const Json* pageNumber = nullptr;
    const Json* offset = nullptr;
    std::string countBy;
    bool replace = false;           ///< Creating what exists replaces it.
    bool merge = false;             ///< Keeping changes only the members sent.
    const Json* fallback = nullptr; ///< What a recall answers when nothing is kept.
    const Json* reach = nullptr;    ///< Template of a list of devices that are told, with results.
    const Json* answer = nullptr;   ///< Template of the envelope's data.
    /// Collections that placeholders of the path must exist in.
    std::vector<std::pair<std::string, const Collection*>> checked;
};

/// What the resource files say, with the routes built from it. Immutable once loaded; safe to read from any thread.
class Description {
public:
    /// @throws std::runtime_error naming the file and resource that are wrong.
    explicit Description(const std::vector<ResourceFile>& files);
    ~Description();

    struct Route {
        /// Those that share path and verb and are told apart by their root or members; empty: nothing takes it.
        std::vector<const Resource*> resources;
        bool pathKnown = false; ///< The path exists, for another verb.
        std::map<std::string, std::string, std::less<>> placeholders;
    };
    Route Find(std::string_view verb, std::string_view path) const;

    const Collection* FindCollection(std::string_view name) const;
    const std::vector<std::unique_ptr<Resource>>& Resources() const { return resources_; }
    const std::map<std::string, Collection, std::less<>>& Collections() const { return collections_; }
    /// A top-level member of any file that belongs to a service, or null.
    const Json* Data(std::string_view name) const;

private:
    struct Node;
    void LoadCollections(const Json& file);
    void LoadResource(const Json& entry, const Json& file);
    void AddRoute(Resource& resource);
    static const std::vector<const Resource*>* Walk(const Node& node, const std::vector<std::string_view>& segments,
                                                    std::size_t at, std::string_view verb, Route& route);

    std::vector<Document> documents_;
    std::map<std::string, Collection, std::less<>> collections_;
    std::map<std::string, const Json*, std::less<>> data_;
    std::vector<std::unique_ptr<Resource>> resources_;
    std::unique_ptr<Node> routes_;
};

} // namespace nexwire::simulator
