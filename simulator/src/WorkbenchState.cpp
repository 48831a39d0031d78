#include <algorithm>

#include "src/Equipment.h"
#include "src/Fields.h"
#include "src/Problem.h"
#include "src/Rules.h"
#include "src/Services.h"
#include "src/Workbench.h"

namespace nexwire::simulator {
namespace {

/// What no request asked for is done as if one had.
class Inside {
public:
    Inside(const Description& description, Store& store, std::int64_t nowMs)
        : transaction_(store), handling_(description, endpoint_, request_, transaction_)
    {
        handling_.nowMs = nowMs;
    }

    Handling& operator*() { return handling_; }
    void Commit() { transaction_.Commit(); }

private:
    Endpoint endpoint_;
    Request request_;
    Store::Transaction transaction_;
    Handling handling_;
};

/// The module whose functions work on each collection.
std::map<std::string, std::string, std::less<>> ModulesOf(const Description& description)
{
    std::map<std::string, std::string, std::less<>> modules;
    for (const auto& endpoint : description.Endpoints()) {
        for (const auto& action : endpoint->actions) {
            if (action->collection != nullptr && !endpoint->functions.empty()) {
                modules.emplace(action->collection->name, endpoint->functions.front()->module);
            }
        }
    }
    return modules;
}

void CheckDocument(const Description& description, const std::string& name, const std::string& key,
                   const Json& document)
{
    const Collection* collection = description.FindCollection(name);
    if (!document.IsObject()) {
        throw Problem(400, "a document is an object");
    }
    if (collection != nullptr && AsText(Member(document, collection->key)) != key) {
        throw Problem(400, "\"" + collection->key + "\" of the document is its key, \"" + key + "\"");
    }
}

} // namespace

Json ListCollections(Store& store, const Description& description, Allocator& memory)
{
    std::map<std::string, std::int64_t, std::less<>> counts;
    for (const auto& [name, collection] : description.Collections()) {
        counts[name] = 0;
    }
    {
        Store::Transaction transaction(store);
        transaction.Run("SELECT collection, count(*) FROM documents GROUP BY collection", {}, [&](const StoreRow& row) {
            counts[std::get<std::string>(row[0])] = std::get<std::int64_t>(row[1]);
        });
    }
    counts.erase(std::string(kOwnCollection));
    const auto modules = ModulesOf(description);
    Json list(rapidjson::kArrayType);
    for (const auto& [name, count] : counts) {
        const auto module = modules.find(name);
        list.PushBack(Fields(memory)
                          .Text("collection", name)
                          .Text("module", module == modules.end() ? std::string_view() : module->second)
                          .Number("count", count)
                          .Take(),
                      memory);
    }
    return list;
}

Json ListDocuments(Store& store, std::string_view collection, std::int64_t offset, std::int64_t limit,
                   const std::string& text, Allocator& memory)
{
    const std::string where = " FROM documents WHERE collection=? AND (instr(lower(name),lower(?))>0 OR"
                              " instr(lower(body),lower(?))>0)";
    const std::vector<StoreValue> values = {std::string(collection), text, text};
    std::vector<StoreValue> paged = values;
    paged.emplace_back(limit);
    paged.emplace_back(offset);
    std::int64_t total = 0;
    Json documents(rapidjson::kArrayType);
    Store::Transaction transaction(store);
    transaction.Run("SELECT count(*)" + where, values,
                    [&](const StoreRow& row) { total = std::get<std::int64_t>(row[0]); });
    transaction.Run("SELECT name,body" + where + " ORDER BY place LIMIT ? OFFSET ?", paged, [&](const StoreRow& row) {
        Document parsed(&memory);
        const std::string& body = std::get<std::string>(row[1]);
        std::string error;
        Json document = ParseJson(parsed, body, error) ? Json(std::move(static_cast<Json&>(parsed))) : Json();
        documents.PushBack(
            Fields(memory).Text("key", std::get<std::string>(row[0])).Value("document", std::move(document)).Take(),
            memory);
    });
    return Fields(memory).Number("total", total).Value("documents", std::move(documents)).Take();
}

void WriteDocument(Store& store, const Description& description, const std::string& collection, const std::string& key,
                   const Json& document)
{
    if (collection == kWallCollection) {
        throw Problem(409, "the video wall is changed by its own service");
    }
    CheckDocument(description, collection, key, document);
    Store::Transaction transaction(store);
    transaction.Write(collection, key, PrintJson(document));
    transaction.Commit();
}

void WriteSeed(Store& store, const Description& description, const Json& seed)
{
    if (!seed.IsObject()) {
        throw Problem(400, "a seed is an object with a list of documents per collection");
    }
    {
        Store::Transaction transaction(store);
        for (const auto& member : seed.GetObject()) {
            const std::string name(AsText(&member.name));
            const Collection* collection = description.FindCollection(name);
            if (collection == nullptr || !member.value.IsArray()) {
                throw Problem(400, "\"" + name + "\" is no collection, or not a list");
            }
            for (const Json& document : member.value.GetArray()) {
                const std::string key(AsText(Member(document, collection->key)));
                if (key.empty()) {
                    throw Problem(400, "a document of \"" + name + "\" lacks its key, \"" + collection->key + "\"");
                }
                transaction.Write(name, key, PrintJson(document));
            }
        }
        transaction.Commit();
    }
    EquipDevices(store);
}

void Forget(Store& store)
{
    Store::Transaction transaction(store);
    transaction.Run("DELETE FROM documents WHERE collection<>?", {StoreValue(std::string(kOwnCollection))});
    for (const char* table : {"logs", "logBackupEntries", "logBackups"}) {
        transaction.Run(std::string("DELETE FROM ") + table, {});
    }
    transaction.Commit();
}

// ---- Devices ----

Json ListDevices(const Description& description, Store& store, std::int64_t nowMs, Allocator& memory)
{
    Inside inside(description, store, nowMs);
    Json list(rapidjson::kArrayType);
    (*inside).Each({kDevices}, [&](const std::string& guid, Json& device) {
        Json sources(rapidjson::kArrayType);
        EachAlarmSource(*inside, guid, [&](const Event& source) {
            sources.PushBack(Fields(memory)
                                 .Text("kind", source.sourceType)
                                 .Text("event", source.type)
                                 .Text("guid", source.source)
                                 .Text("name", source.sourceName)
                                 .Take(),
                             memory);
        });
        list.PushBack(Fields(memory)
                          .Text("guid", guid)
                          .Text("name", AsText(Member(device, "name")))
                          .Text("kind", AsText(Member(device, "deviceType")))
                          .Flag("online", OutOfReach(*inside, guid) == Reason::kNone)
                          .Value("switches", Fields(memory)
                                                 .Flag("offline", AsBool(Member(device, "_offline")))
                                                 .Number("slowMs", AsInt(Member(device, "_slowMs")))
                                                 .Flag("refusing", AsBool(Member(device, "_refusing")))
                                                 .Take())
                          .Value("sources", std::move(sources))
                          .Take(),
                      memory);
    });
    return list;
}

void SwitchDevice(Store& store, const std::string& guid, const Json& switches)
{
    constexpr std::int64_t kSlowest = 10 * 60 * 1000;
    if (!switches.IsObject()) {
        throw Problem(400, "the switches are an object");
    }
    Store::Transaction transaction(store);
    const auto text = transaction.Read(kDevices, guid);
    if (!text) {
        throw Problem(404, "no device is \"" + guid + "\"");
    }
    Document device = ParseOwn(*text);
    for (const auto& member : switches.GetObject()) {
        const std::string name(AsText(&member.name));
        const bool slow = name == "slowMs";
        const std::int64_t ms = slow ? AsInt(&member.value, -1) : 0;
        if ((slow && (ms < 0 || ms > kSlowest)) ||
            (!slow && ((name != "offline" && name != "refusing") || !member.value.IsBool()))) {
            throw Problem(400, "the switches are offline and refusing, true or false, and slowMs, 0 to 600000");
        }
        SetMember(device, "_" + name, Copy(member.value, device.GetAllocator()), device.GetAllocator());
    }
    transaction.Write(kDevices, guid, PrintJson(device));
    transaction.Commit();
}

Json ProvokeAlarm(const Description& description, Store& store, std::int64_t nowMs, const std::string& device,
                  const Json& body, Allocator& memory)
{
    Inside inside(description, store, nowMs);
    const std::string wanted(AsText(Member(body, "source")));
    const std::string kind(AsText(Member(body, "event")));
    std::optional<Event> event;
    EachAlarmSource(*inside, device, [&](const Event& source) {
        const bool meant = (wanted.empty() || source.source == wanted) && (kind.empty() || source.type == kind);
        if (meant && !event) {
            event = source;
        }
    });
    if (!event) {
        throw Problem(404, "device \"" + device + "\" has no such source of alarms");
    }
    event->atMs = nowMs;
    const Selection logs{"alarmLogs"};
    const std::int64_t before = (*inside).store.Count(logs);
    Raise(*inside, *event);
    const bool raised = (*inside).store.Count(logs) > before;
    inside.Commit();
    if (!raised) {
        throw Problem(409, "the device is away or not guarded, or the link of the event is switched off");
    }
    return Fields(memory).Text("source", event->source).Text("event", event->type).Take();
}

Json ListWork(const Description& description, Store& store, std::int64_t nowMs, Allocator& memory)
{
    Inside inside(description, store, nowMs);
    Json list(rapidjson::kArrayType);
    EachWork(*inside, [&](const Work& work) {
        list.PushBack(Fields(memory)
                          .Text("job", work.job)
                          .Text("kind", work.kind)
                          .Text("device", work.device)
                          .Text("state", work.state)
                          .Number("done", work.done)
                          .Number("total", work.total)
                          .Number("percent", work.percent)
                          .Take(),
                      memory);
    });
    return list;
}

} // namespace nexwire::simulator
