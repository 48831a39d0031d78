#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "src/Description.h"
#include "src/Json.h"
#include "src/Store.h"

namespace nexwire::simulator {

/// What one request works with. Lives for one handler inside one transaction.
class Call {
public:
    Call(const Description& description, const Resource& resource, Store::Transaction& transaction);

    const Description& description;
    const Resource& resource;
    Store::Transaction& store;
    std::map<std::string, std::string, std::less<>> placeholders;
    std::map<std::string, std::string, std::less<>> headers; ///< Names in lower case.
    const Json* body = nullptr;                              ///< The root object, or null without one.
    std::int64_t nowMs = 0;
    Document scratch; ///< Owns everything built during the call.
    Json data;        ///< The envelope's data; an object.

    Allocator& Memory() { return scratch.GetAllocator(); }

    /// Fills a template: a text that is "$name" or "$name.member" stands for the value of that name, "{x}" inside a
    /// text for a placeholder of the path, {"$each": list, "as": template} for a list made from another one.
    /// Names: body, doc, docs, it, results, guid, guids, total, now item and what `Name` added. Members whose value
    /// names nothing are left out.
    Json Fill(const Json& pattern);
    /// As `Fill`, for a text; empty when it is none.
    std::string FillText(const Json* pattern);

    /// Gives templates a value to refer to; it must live as long as the call.
    void Name(std::string_view name, const Json& value) { names_[std::string(name)] = &value; }
    /// The same for a value that the call keeps.
    void Define(std::string_view name, Json value);

    /// Reads a document; refuses when there is none.
    Json Need(const Collection& collection, std::string_view key);
    /// Reads a stored document; null when there is none.
    Json Load(std::string_view collection, std::string_view key);
    Json Parse(std::string_view document);
    void Save(std::string_view collection, std::string_view key, const Json& document);
    void Each(const Selection& selection, const std::function<void(const std::string& key, Json& document)>& each);

    /// Throws the refusal when a required member of the body is missing or of another type.
    std::string NeedText(const Json& object, std::string_view member);

private:
    const Json* Lookup(std::string_view expression);

    std::map<std::string, const Json*, std::less<>> names_;
    std::vector<std::unique_ptr<Json>> held_;
};

using Service = std::function<void(Call&)>;

struct Request {
    std::string verb;
    std::string path; ///< Without a query.
    std::map<std::string, std::string, std::less<>> headers;
    std::string body;
};

struct Answer {
    unsigned status = 200;
    std::string code;
    std::string body; ///< The envelope.
};

/// The envelope of a refusal that no resource stands for.
Answer RefuseOutright(unsigned status, Reason reason, std::string_view detail);

/// Executes what the resource files say. Safe from any thread; requests run one at a time.
class Engine {
public:
    /// @throws std::runtime_error when a resource names a service that is not there.
    Engine(const Description& description, Store& store, std::function<std::int64_t()> now,
           std::map<std::string, Service, std::less<>> services);

    /// Writes the seed documents into collections that have never been seeded.
    void Seed();

    Answer Handle(const Request& request);

private:
    void Run(Call& call);
    void Operate(Call& call);
    void Create(Call& call);
    void Query(Call& call);
    void Get(Call& call);
    void Modify(Call& call);
    void Remove(Call& call);
    void Count(Call& call);
    void Keep(Call& call);
    void Recall(Call& call);

    const Description& description_;
    Store& store_;
    std::function<std::int64_t()> now_;
    std::map<std::string, Service, std::less<>> services_;
};

/// 32 upper-case hexadecimal digits.
std::string NewGuid();

} // namespace nexwire::simulator
