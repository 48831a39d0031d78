#include <algorithm>
#include <array>

#include "src/Clock.h"
#include "src/Fields.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

enum LogType { kSignIn = 1, kOperation = 2, kConfiguration = 3, kDevice = 4, kAlarm = 5, kSystem = 6 };
enum LogResult { kDone = 1, kFailed = 2 };

constexpr std::int64_t kUsualPage = 50;
constexpr std::int64_t kMostPerPage = 1000;
constexpr const char* kClient = "127.0.0.1";
constexpr const char* kColumns = "guid,time,user,address,type,module,operation,resource,resourceName,result,content";

struct Entry {
    std::int64_t timeMs = 0;
    std::string user;
    std::string address;
    std::int64_t type = kOperation;
    std::string module;
    std::string operation;
    std::string resource;
    std::string resourceName;
    std::int64_t result = kDone;
    std::string content;
};

void Write(Store::Transaction& transaction, const Entry& entry)
{
    transaction.Run(std::string("INSERT INTO logs(") + kColumns + ") VALUES(?,?,?,?,?,?,?,?,?,?,?)",
                    {NewGuid(), entry.timeMs, entry.user, entry.address, entry.type, entry.module, entry.operation,
                     entry.resource, entry.resourceName, entry.result, entry.content});
}

/// The conditions of a search as SQL.
struct Where {
    std::string sql = "1";
    std::vector<StoreValue> values;

    void And(const std::string& test, StoreValue value)
    {
        sql += " AND " + test;
        values.push_back(std::move(value));
    }
    void OneOf(const char* column, const Json* list)
    {
        const auto elements = Elements(list);
        if (elements.Empty()) {
            return;
        }
        std::string places;
        for (const Json& element : elements) {
            places += places.empty() ? "?" : ",?";
            values.push_back(element.IsString() ? StoreValue(std::string(AsText(&element)))
                                                : StoreValue(AsInt(&element)));
        }
        sql += std::string(" AND ") + column + " IN (" + places + ")";
    }
    void Bound(const char* test, const Json& body, const char* member)
    {
        const std::string_view text = AsText(Member(body, member));
        if (text.empty()) {
            return;
        }
        const std::optional<std::int64_t> ms = FromIsoTime(text);
        if (!ms) {
            throw Refusal(Reason::kOutOfRange, "\"" + std::string(member) + "\" is no time");
        }
        And(test, *ms);
    }
};

Where Narrowed(const Json& body)
{
    Where where;
    where.Bound("time>=?", body, "beginTime");
    where.Bound("time<?+1000", body, "endTime");
    where.OneOf("user", Member(body, "userNameList"));
    where.OneOf("type", Member(body, "logTypeList"));
    where.OneOf("module", Member(body, "moduleList"));
    if (const std::int64_t result = AsInt(Member(body, "logResult")); result != 0) {
        where.And("result=?", result);
    }
    if (const std::string_view keyword = AsText(Member(body, "keyword")); !keyword.empty()) {
        where.And("instr(lower(content),lower(?))>0", std::string(keyword));
    }
    return where;
}

std::string_view Text(const StoreValue& value)
{
    const auto* text = std::get_if<std::string>(&value);
    return text == nullptr ? std::string_view() : std::string_view(*text);
}

std::int64_t Number(const StoreValue& value)
{
    const auto* number = std::get_if<std::int64_t>(&value);
    return number == nullptr ? 0 : *number;
}

std::int64_t One(Store::Transaction& store, const std::string& sql, const std::vector<StoreValue>& values = {})
{
    std::int64_t number = 0;
    store.Run(sql, values, [&](const StoreRow& row) { number = Number(row.front()); });
    return number;
}

/// The different values of an indexed column, without reading every entry.
Json Choices(Handling& handling, const std::string& column)
{
    Json list(rapidjson::kArrayType);
    handling.store.Run(
        "WITH RECURSIVE choices(value) AS (SELECT min(" + column + ") FROM logs UNION ALL SELECT (SELECT min(" +
            column + ") FROM logs WHERE " + column +
            ">value) FROM choices WHERE value IS NOT NULL) SELECT value FROM choices WHERE value IS NOT NULL",
        {}, [&](const StoreRow& row) {
            const bool text = std::holds_alternative<std::string>(row.front());
            list.PushBack(text ? MakeText(Text(row.front()), handling.Memory()) : Json(Number(row.front())),
                          handling.Memory());
        });
    return list;
}

Json EntryOf(Handling& handling, const StoreRow& row)
{
    return Fields(handling.Memory())
        .Text("logGuid", Text(row[0]))
        .Text("logTime", IsoTime(Number(row[1])))
        .Text("userName", Text(row[2]))
        .Text("clientAddress", Text(row[3]))
        .Number("logType", Number(row[4]))
        .Text("moduleName", Text(row[5]))
        .Text("operation", Text(row[6]))
        .Text("resourceGuid", Text(row[7]))
        .Text("resourceName", Text(row[8]))
        .Number("logResult", Number(row[9]))
        .Text("content", Text(row[10]))
        .Take();
}

/// A page, and what the log can be narrowed by.
void Report(Handling& handling, const Json& body, std::string_view backupPath)
{
    const Where where = Narrowed(body);
    const std::int64_t size = std::clamp<std::int64_t>(AsInt(Member(body, "pageSize"), kUsualPage), 1, kMostPerPage);
    const std::int64_t page = std::max<std::int64_t>(AsInt(Member(body, "pageNo"), 1), 1);
    const std::string order = AsBool(Member(body, "ascending")) ? "time,place" : "time DESC,place DESC";
    std::vector<StoreValue> values = where.values;
    values.emplace_back(size);
    values.emplace_back((page - 1) * size);
    Json list(rapidjson::kArrayType);
    handling.store.Run(std::string("SELECT ") + kColumns + " FROM logs WHERE place IN (SELECT place FROM logs WHERE " +
                           where.sql + " ORDER BY " + order + " LIMIT ? OFFSET ?) ORDER BY " + order,
                       values, [&](const StoreRow& row) { list.PushBack(EntryOf(handling, row), handling.Memory()); });
    const std::int64_t earliest = One(handling.store, "SELECT min(time) FROM logs");
    const std::int64_t latest = One(handling.store, "SELECT max(time) FROM logs");
    Json found = Fields(handling.Memory())
                     .Number("total", One(handling.store, "SELECT count(*) FROM logs WHERE " + where.sql, where.values))
                     .Number("pageNo", page)
                     .Value("logInfoList", std::move(list))
                     .Value("userNameList", Choices(handling, "user"))
                     .Value("logTypeList", Choices(handling, "type"))
                     .Value("moduleList", Choices(handling, "module"))
                     .Text("earliestTime", latest == 0 ? "" : IsoTime(earliest))
                     .Text("latestTime", latest == 0 ? "" : IsoTime(latest))
                     .Text("backupPath", backupPath)
                     .Take();
    handling.data = Fields(handling.Memory()).Value("logFilterConditionSupported", std::move(found)).Take();
}

void Append(Handling& handling)
{
    const Json& body = *handling.body;
    const auto text = [&](const char* member) { return std::string(AsText(Member(body, member))); };
    Entry entry;
    entry.timeMs = handling.nowMs;
    if (const std::string time = text("logTime"); !time.empty()) {
        const std::optional<std::int64_t> ms = FromIsoTime(time);
        if (!ms) {
            throw Refusal(Reason::kOutOfRange, "\"logTime\" is no time");
        }
        entry.timeMs = *ms;
    }
    entry.user = text("userName").empty() ? SignedIn(handling.store) : text("userName");
    entry.address = text("clientAddress");
    entry.type = AsInt(Member(body, "logType"), kOperation);
    entry.module = text("moduleName");
    entry.operation = text("operation");
    entry.resource = text("resourceGuid");
    entry.resourceName = text("resourceName");
    entry.result = AsInt(Member(body, "logResult"), kDone);
    entry.content = text("content");
    Write(handling.store, entry);
}

/// Sets the entries aside under a name; the log itself stays.
void Backup(Handling& handling)
{
    const std::string path = "backup/log-" + std::to_string(handling.nowMs) + ".db";
    handling.store.Run("INSERT OR REPLACE INTO logBackups(path,time,entries) SELECT ?,?,count(*) FROM logs",
                       {path, handling.nowMs});
    handling.store.Run(std::string("INSERT INTO logBackupEntries(path,") + kColumns + ") SELECT ?," + kColumns +
                           " FROM logs ORDER BY place",
                       {path});
    Report(handling, Json(rapidjson::kObjectType), path);
}

/// Requests that carry method code 1 and change nothing, or that run inside others.
bool OnlyReads(const Endpoint& endpoint)
{
    static constexpr std::array<std::string_view, 7> kReaders = {"CEncryptionComm::request",
                                                                 "CDecryptionComm::request",
                                                                 "CGetCurrentUserInfoComm::request",
                                                                 "CGetIsSuperUserComm::request",
                                                                 "CGetComponentIDComm::request",
                                                                 "CTemplateComm::request",
                                                                 "CMainViewRequest::getAllViewWithTeamNo"};
    return !endpoint.Writes() || endpoint.functions.empty() ||
           std::find(kReaders.begin(), kReaders.end(), endpoint.functions.front()->name) != kReaders.end();
}

/// The segment of a path that names the service.
std::string ServiceOf(const std::string& path)
{
    std::string_view rest(path);
    for (const std::string_view skipped : {"/7730", "/Tarvo", "/v1", "/V1", "/internal"}) {
        if (rest.substr(0, skipped.size()) == skipped && rest.substr(skipped.size(), 1) == "/") {
            rest.remove_prefix(skipped.size());
        }
    }
    rest.remove_prefix(std::min<std::size_t>(1, rest.size()));
    return std::string(rest.substr(0, rest.find('/')));
}

LogType TypeOf(const std::string& module, const std::string& function)
{
    if (function == "CSystemServerConfig::request" || module == "topologyManagement") {
        return kConfiguration;
    }
    if (function == "CFrameworkServerReboot::request" || function == "CFrameworkServerClose::request") {
        return kSystem;
    }
    return module == "deviceManagement" ? kDevice : module == "alarm" ? kAlarm : kOperation;
}

} // namespace

void PrepareLog(Store& store)
{
    const std::string columns = " guid TEXT, time INTEGER, user TEXT, address TEXT, type INTEGER, module TEXT,"
                                " operation TEXT, resource TEXT, resourceName TEXT, result INTEGER, content TEXT)";
    Store::Transaction transaction(store);
    for (const std::string& sql :
         {"CREATE TABLE IF NOT EXISTS logs(place INTEGER PRIMARY KEY," + columns,
          "CREATE TABLE IF NOT EXISTS logBackupEntries(place INTEGER PRIMARY KEY, path TEXT," + columns,
          std::string("CREATE TABLE IF NOT EXISTS logBackups(path TEXT PRIMARY KEY, time INTEGER, entries INTEGER)"),
          std::string("CREATE INDEX IF NOT EXISTS logsByTime ON logs(time)"),
          std::string("CREATE INDEX IF NOT EXISTS logsByUser ON logs(user,time)"),
          std::string("CREATE INDEX IF NOT EXISTS logsByType ON logs(type,time)"),
          std::string("CREATE INDEX IF NOT EXISTS logsByModule ON logs(module,time)")}) {
        transaction.Run(sql, {});
    }
    transaction.Commit();
}

void NoteInLog(Store::Transaction& store, const Outcome& outcome)
{
    if (OnlyReads(outcome.endpoint)) {
        return;
    }
    Entry entry;
    entry.module = ServiceOf(outcome.request.path);
    if (entry.module == "log") {
        return;
    }
    entry.timeMs = outcome.nowMs;
    entry.user = SignedIn(store);
    entry.operation = outcome.endpoint.functions.front()->name;
    entry.type = TypeOf(entry.module, entry.operation);
    entry.address = kClient;
    entry.resource = outcome.identifiers.empty() ? "" : outcome.identifiers.back();
    entry.result = outcome.code == "0-0" ? kDone : kFailed;
    entry.content = outcome.request.verb + " " + outcome.request.path + ": " + outcome.code;
    Write(store, entry);
}

void NoteSignIn(Handling& handling, std::string_view user, bool passed, const std::string& content)
{
    Entry entry;
    entry.timeMs = handling.nowMs;
    entry.user = user;
    entry.address = kClient;
    entry.type = kSignIn;
    entry.module = ServiceOf(handling.request.path);
    entry.operation = handling.endpoint.functions.front()->name;
    entry.result = passed ? kDone : kFailed;
    entry.content = content;
    Write(handling.store, entry);
}

void AddLog(Services& services)
{
    services["appendLog"] = Append;
    services["searchLog"] = [](Handling& handling) { Report(handling, *handling.body, ""); };
    services["backupLog"] = Backup;
}

} // namespace nexwire::simulator
