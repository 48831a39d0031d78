#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/Description.h"
#include "src/Json.h"
#include "src/Store.h"

namespace nexwire::simulator {

struct Request {
    std::string verb;
    std::string path;                                        ///< Without a query.
    std::string query;                                       ///< Behind the question mark.
    std::map<std::string, std::string, std::less<>> headers; ///< Names in lower case.
    std::string body;
};

/// What happens to an answer on its way.
enum class Damage {
    kNone,
    kDrip,        ///< It comes in pieces.
    kTorn,        ///< Its body ends half way.
    kResetBefore, ///< The connection is reset in its place.
    kResetAfter,  ///< The connection is reset behind it.
};

/// What a connection goes on sending behind an answer's head, asked every 50 ms; false ends the connection.
using Stream = std::function<bool(std::string& out)>;

struct Answer {
    unsigned status = 200;
    std::string code;
    std::string body; ///< The envelope, or bytes.
    std::string type = "application/json; charset=utf-8";
    std::string range{};   ///< Content-Range, when a part of the bytes was asked for.
    std::string message{}; ///< Of the envelope.
    std::string fields{};  ///< Further header fields, each with its line end.
    Stream stream{};       ///< In place of a body.
    std::int64_t delayMs = 0;
    Damage damage = Damage::kNone;
    std::string fault{}; ///< The rule that did this; empty without one.
};

/// What one request works with. Lives for one handler inside one transaction.
class Handling {
public:
    Handling(const Description& description, const Endpoint& endpoint, const Request& request,
             Store::Transaction& transaction);

    const Description& description;
    const Endpoint& endpoint;
    const Request& request;
    Store::Transaction& store;
    const Action* action = nullptr; ///< Null: state is kept, or a sample answered.
    std::vector<std::string> identifiers;
    const Json* body = nullptr; ///< The root's value, or null without one.
    std::int64_t nowMs = 0;
    Document scratch;            ///< Owns everything built on the way.
    Json data;                   ///< The envelope's data; an object.
    std::optional<Answer> bytes; ///< Set when the answer is no envelope.
    std::int64_t delayMs = 0;    ///< How much slower a device makes the answer.

    Allocator& Memory() { return scratch.GetAllocator(); }

    /// Fills a template: a text that is "$name" or "$name.member" stands for the value of that name, "{x}" inside a
    /// text for an identifier of the path, {"$each": list, "as": template} for a list made from another one. Members
    /// whose value names nothing are left out.
    Json Fill(const Json& pattern);
    /// As `Fill`, for a text; empty when it is none.
    std::string FillText(const Json* pattern);

    /// Gives templates a value to refer to; it must live as long as the handling.
    void Name(std::string_view name, const Json& value) { names_[std::string(name)] = &value; }
    /// The same for a value that the handling keeps.
    void Define(std::string_view name, Json value);
    /// What a name or "name.member" stands for, or null.
    const Json* Named(std::string_view expression) const;

    /// An identifier of the path by its name or place ("1"); empty when there is none.
    std::string_view Identifier(std::string_view name) const;

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
    std::map<std::string, const Json*, std::less<>> names_;
    std::vector<std::unique_ptr<Json>> held_;
};

using Service = std::function<void(Handling&)>;

/// The envelope of a refusal that no endpoint stands for.
Answer RefuseOutright(unsigned status, Reason reason, std::string_view detail);
/// The same with a code of one's own, status 200.
Answer RefuseWith(std::string code, std::string message);

/// What one request came to.
struct Outcome {
    const Endpoint& endpoint;
    const Request& request;
    const std::vector<std::string>& identifiers; ///< Of the path.
    const std::string& code;                     ///< Of the envelope.
    std::int64_t nowMs;
};

/// Is told of every outcome, inside the transaction of the request, or in one of its own when that was undone.
using Notice = std::function<void(Store::Transaction& store, const Outcome& outcome)>;

/// Executes what the library's document and the resource files say. Safe from any thread; requests run one at a time.
class Engine {
public:
    /// @throws std::runtime_error when an entry names a service that is not there.
    Engine(const Description& description, Store& store, std::function<std::int64_t()> now,
           std::map<std::string, Service, std::less<>> services, Notice notice = {});

    /// Writes the seed documents into collections that have never been seeded.
    void Seed();

    Answer Handle(const Request& request);

private:
    void Run(Handling& handling);
    void Act(Handling& handling);
    void NoteRefused(const Outcome& outcome) noexcept;

    const Description& description_;
    Store& store_;
    std::function<std::int64_t()> now_;
    std::map<std::string, Service, std::less<>> services_;
    Notice notice_;
};

/// 32 upper-case hexadecimal digits.
std::string NewGuid();

/// Collections and members that begin with this are the platform's own and never travel.
void DropInternals(Json& document);

// ---- What an action does to documents (Roles.cpp) ----

void Add(Handling& handling);
void Find(Handling& handling);
void Get(Handling& handling);
void Modify(Handling& handling);
void Remove(Handling& handling);
void Count(Handling& handling);
void Keep(Handling& handling);
void Recall(Handling& handling);
/// For endpoints without an entry: writes are kept under path and identifiers, reads answer them or a sample.
void KeepOrSample(Handling& handling);

/// The conditions that the body, the path and the entry's filters lay down (Conditions.cpp).
Selection Narrowed(Handling& handling);
/// What the body says about pages: how many documents, and which number or offset.
void Page(const Handling& handling, Selection& selection);

/// Fills the envelope's data by the result's structure from what the action defined: doc, docs, results, guid, guids,
/// total; then by what the body and the path say (Answers.cpp).
void Compose(Handling& handling);
/// A value of a structure as it might be.
Json Sample(Handling& handling, const WireStructure& structure);
/// A structure as a fresh device has it: the first word of a vocabulary, the least of a range, nothing otherwise.
Json Fresh(Handling& handling, const WireStructure& structure);
/// Sets what a dotted path names inside `object`, making objects on the way.
void SetAtPath(Handling& handling, Json& object, std::string_view dotted, Json value);

} // namespace nexwire::simulator
