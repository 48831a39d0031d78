#include "src/Engine.h"

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid.hpp>

#include <algorithm>
#include <utility>

#include "src/Rules.h"
#include "src/Shape.h"

namespace nexwire::simulator {
namespace {

constexpr std::string_view kSeeded = "_seeded";

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
    answer.message = refusal.what();
    answer.body = Envelope(answer.code, answer.message, nullptr);
    return answer;
}

// Which of the endpoints of a path and verb the body is for. `root` is the value under its root, in `parsed`.
const Endpoint& Choose(const std::vector<const Endpoint*>& endpoints, const std::string& body, Document& parsed,
                       const Json*& root)
{
    const auto bare =
        std::find_if(endpoints.begin(), endpoints.end(), [](const Endpoint* each) { return each->root.empty(); });
    if (bare != endpoints.end() && (endpoints.size() == 1 || body.empty())) {
        return **bare;
    }
    std::string error;
    if (!ParseJson(parsed, body, error)) {
        throw Refusal(Reason::kNotJson, error);
    }
    std::string expected;
    for (const Endpoint* endpoint : endpoints) {
        if (endpoint->root.empty()) {
            continue;
        }
        expected += (expected.empty() ? "\"" : " or \"") + endpoint->root + "\"";
        if (parsed.IsObject() && parsed.MemberCount() == 1) {
            root = Member(parsed, endpoint->root);
            if (root != nullptr) {
                return *endpoint;
            }
        }
    }
    throw Refusal(Reason::kMissingRoot, "expected an object with the one member " + expected);
}

const Action* Meant(const Endpoint& endpoint, const Json* body)
{
    for (const auto& action : endpoint.actions) {
        bool meant = action->given == nullptr || body != nullptr;
        if (action->given != nullptr && body != nullptr) {
            for (const auto& member : action->given->GetObject()) {
                const Json* value = Member(*body, AsText(&member.name));
                meant = meant && value != nullptr && *value == member.value;
            }
        }
        if (meant) {
            return action.get();
        }
    }
    return nullptr;
}

/// The end of an identifier that is too long for a path is the device's serial number, filled up with "$".
void BySerialNumber(Handling& handling, std::string& guid)
{
    if (guid.empty() || guid.back() != '$') {
        return;
    }
    const std::string serial = guid.substr(0, guid.find_last_not_of('$') + 1);
    handling.store.Select({kDevices, {{"serialNo", Test::kEquals, StoreValue(serial)}}},
                          [&](const std::string& key, const std::string&) { guid = key; });
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

Answer RefuseWith(std::string code, std::string message)
{
    Answer answer;
    answer.body = Envelope(code, message, nullptr);
    answer.code = std::move(code);
    answer.message = std::move(message);
    return answer;
}

Engine::Engine(const Description& description, Store& store, std::function<std::int64_t()> now,
               std::map<std::string, Service, std::less<>> services, Notice notice)
    : description_(description), store_(store), now_(std::move(now)), services_(std::move(services)),
      notice_(std::move(notice))
{
    for (const auto& endpoint : description_.Endpoints()) {
        std::vector<std::string> names = {endpoint->before};
        for (const auto& action : endpoint->actions) {
            names.push_back(action->service);
        }
        for (const std::string& name : names) {
            if (!name.empty() && services_.find(name) == services_.end()) {
                throw std::runtime_error("an entry for " + endpoint->path + " names the unknown service \"" + name +
                                         "\"");
            }
        }
    }
}

void Engine::Seed()
{
    Store::Transaction transaction(store_);
    for (const auto& [name, collection] : description_.Collections()) {
        if (collection->seeds.empty() || !transaction.Insert(kSeeded, name, "{}")) {
            continue;
        }
        for (const Json* seed : collection->seeds) {
            for (const Json& document : seed->GetArray()) {
                transaction.Write(name, AsText(Member(document, collection->key)), PrintJson(document));
            }
        }
    }
    transaction.Commit();
}

Answer Engine::Handle(const Request& request)
{
    const Description::Route route = description_.Find(request.verb, request.path);
    if (route.endpoints.empty()) {
        return RefuseOutright(404, route.pathKnown ? Reason::kWrongVerb : Reason::kUnknownPath,
                              request.verb + " " + request.path);
    }
    const Endpoint* endpoint = route.endpoints.front();
    const int category = endpoint->category;
    const std::int64_t nowMs = now_();
    Answer answer;
    try {
        Document parsed;
        const Json* root = nullptr;
        endpoint = &Choose(route.endpoints, request.body, parsed, root);
        Store::Transaction transaction(store_);
        Handling handling(description_, *endpoint, request, transaction);
        handling.identifiers = route.identifiers;
        handling.nowMs = nowMs;
        handling.body = root;
        if (root != nullptr) {
            handling.Name("body", *root);
        }
        handling.Define("now", Json(handling.nowMs));
        Run(handling);
        if (handling.bytes) {
            answer = std::move(*handling.bytes);
        }
        answer.code = "0-0";
        answer.message = kSuccess;
        answer.delayMs = handling.delayMs;
        if (notice_) {
            notice_(transaction, {*endpoint, request, route.identifiers, answer.code, nowMs});
        }
        transaction.Commit();
        if (!handling.bytes) {
            answer.body = Envelope(answer.code, kSuccess, &handling.data);
        }
        return answer;
    } catch (const Refusal& refusal) {
        answer = Refuse(200, category, refusal);
    } catch (const std::exception& error) {
        answer = Refuse(500, category, Refusal(Reason::kInternal, error.what()));
    }
    NoteRefused({*endpoint, request, route.identifiers, answer.code, nowMs});
    return answer;
}

void Engine::NoteRefused(const Outcome& outcome) noexcept
{
    try {
        if (notice_) {
            Store::Transaction transaction(store_);
            notice_(transaction, outcome);
            transaction.Commit();
        }
    } catch (const std::exception&) {
        // The caller has its answer; there is nobody else to tell.
    }
}

void Engine::Run(Handling& handling)
{
    const Endpoint& endpoint = handling.endpoint;
    if (!endpoint.before.empty()) {
        services_.find(endpoint.before)->second(handling);
    }
    handling.action = Meant(endpoint, handling.body);
    const bool adds = handling.action != nullptr && handling.action->role == Role::kAdd;
    if (endpoint.device && !(adds && handling.action->collection->name == kDevices)) {
        std::string& guid = handling.identifiers[*endpoint.device];
        BySerialNumber(handling, guid);
        handling.Define("device", handling.Need(*handling.description.FindCollection(kDevices), guid));
        handling.delayMs = AsInt(Member(*handling.Named("device"), "_slowMs"));
    }
    if (handling.body != nullptr && endpoint.body != nullptr) {
        const bool part = std::any_of(endpoint.functions.begin(), endpoint.functions.end(),
                                      [](const WireFunction* each) { return each->partial; });
        CheckShape(*endpoint.body, *handling.body, endpoint.root,
                   endpoint.verb == "POST" ? Strictness::kCondition
                   : part                  ? Strictness::kPart
                                           : Strictness::kWhole);
    }
    if (handling.action == nullptr) {
        KeepOrSample(handling);
        return;
    }
    CheckBody(handling);
    Act(handling);
    if (handling.action->reach != nullptr) {
        Reach(handling);
    }
    if (handling.action->role != Role::kService) {
        Compose(handling);
    }
    if (handling.action->answer != nullptr) {
        for (const auto& member : handling.action->answer->GetObject()) {
            SetAtPath(handling, handling.data, AsText(&member.name), handling.Fill(member.value));
        }
    }
}

void Engine::Act(Handling& handling)
{
    switch (handling.action->role) {
    case Role::kReply:
        break;
    case Role::kAdd:
        Add(handling);
        break;
    case Role::kFind:
        Find(handling);
        break;
    case Role::kGet:
        Get(handling);
        break;
    case Role::kModify:
        Modify(handling);
        break;
    case Role::kRemove:
        Remove(handling);
        break;
    case Role::kCount:
        Count(handling);
        break;
    case Role::kKeep:
        Keep(handling);
        break;
    case Role::kRecall:
        Recall(handling);
        break;
    case Role::kService:
        services_.find(handling.action->service)->second(handling);
        break;
    }
}

} // namespace nexwire::simulator
