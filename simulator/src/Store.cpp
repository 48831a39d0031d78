#include "src/Store.h"

#include <sqlite3.h>

#include <algorithm>

namespace nexwire::simulator {
namespace {

constexpr int kApplicationId = 0x4e585750; // Marks a database file as ours.
constexpr int kLayout = 1;
constexpr std::size_t kMostStatements = 256;

// Field names come from resource descriptions, never from a request; quoting keeps odd ones harmless all the same.
std::string Extract(const std::string& document, const std::string& field)
{
    std::string path = "$";
    std::size_t begin = 0;
    while (begin <= field.size()) {
        const std::size_t dot = std::min(field.find('.', begin), field.size());
        path += ".\"" + field.substr(begin, dot - begin) + "\"";
        begin = dot + 1;
    }
    std::string quoted;
    for (const char c : path) {
        quoted += c;
        if (c == '\'') {
            quoted += c;
        }
    }
    return "json_extract(" + document + ",'" + quoted + "')";
}

std::string Holds(const Condition& condition)
{
    const std::string field = Extract("body", condition.field);
    switch (condition.test) {
    case Test::kEquals:
        return field + "=?";
    case Test::kContains:
        return "instr(lower(" + field + "),lower(?))>0";
    case Test::kStartsWith:
        return "instr(lower(" + field + "),lower(?))=1";
    case Test::kAtLeast:
        return field + ">=?";
    case Test::kAtMost:
        return field + "<=?";
    case Test::kOneOf:
        return field + " IN (SELECT value FROM json_each(?))";
    case Test::kHasElement:
        break;
    }
    const std::size_t inner = condition.element.rfind("[]");
    if (inner != std::string::npos) {
        return "EXISTS(SELECT 1 FROM json_each(coalesce(" + field + ",'[]')) AS e, json_each(coalesce(" +
               Extract("e.value", condition.element.substr(0, inner)) +
               ",'[]')) AS i WHERE i.value IN (SELECT value FROM json_each(?)))";
    }
    const std::string part = condition.element.empty() ? "e.value" : Extract("e.value", condition.element);
    return "EXISTS(SELECT 1 FROM json_each(coalesce(" + field + ",'[]')) AS e WHERE " + part +
           " IN (SELECT value FROM json_each(?)))";
}

std::string Where(const Selection& selection)
{
    std::string sql = " FROM documents WHERE collection=?";
    const char* joint = " AND (";
    for (const Condition& condition : selection.conditions) {
        sql += joint + Holds(condition);
        joint = selection.any ? " OR " : ") AND (";
    }
    return selection.conditions.empty() ? sql : sql + ")";
}

} // namespace

// A cached statement for one use: bound in order, reset at the end.
class Store::Statement {
public:
    Statement(Store& store, const std::string& sql) : store_(store), statement_(store.Prepare(sql)) {}
    ~Statement()
    {
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
    }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& Bind(std::string_view text)
    {
        Check(sqlite3_bind_text64(statement_, ++bound_, text.empty() ? "" : text.data(), text.size(), SQLITE_TRANSIENT,
                                  SQLITE_UTF8));
        return *this;
    }
    Statement& Bind(const StoreValue& value)
    {
        if (const auto* integer = std::get_if<std::int64_t>(&value)) {
            Check(sqlite3_bind_int64(statement_, ++bound_, *integer));
        } else if (const auto* real = std::get_if<double>(&value)) {
            Check(sqlite3_bind_double(statement_, ++bound_, *real));
        } else {
            Bind(std::string_view(std::get<std::string>(value)));
        }
        return *this;
    }
    Statement& Bind(const Selection& selection)
    {
        Bind(std::string_view(selection.collection));
        for (const Condition& condition : selection.conditions) {
            Bind(condition.value);
        }
        return *this;
    }
    bool Step()
    {
        const int result = sqlite3_step(statement_);
        if (result != SQLITE_ROW && result != SQLITE_DONE) {
            store_.Fail("database");
        }
        return result == SQLITE_ROW;
    }
    std::string Text(int column)
    {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
        return text == nullptr ? std::string()
                               : std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)));
    }
    StoreRow Row()
    {
        StoreRow row;
        for (int column = 0; column < sqlite3_column_count(statement_); ++column) {
            switch (sqlite3_column_type(statement_, column)) {
            case SQLITE_FLOAT:
                row.emplace_back(sqlite3_column_double(statement_, column));
                break;
            case SQLITE_TEXT:
                row.emplace_back(Text(column));
                break;
            default:
                row.emplace_back(Integer(column));
            }
        }
        return row;
    }
    std::int64_t Integer(int column) { return sqlite3_column_int64(statement_, column); }

private:
    void Check(int result)
    {
        if (result != SQLITE_OK) {
            store_.Fail("database");
        }
    }
    Store& store_;
    sqlite3_stmt* statement_;
    int bound_ = 0;
};

void Store::Close::operator()(sqlite3* database) const
{
    sqlite3_close_v2(database);
}

void Store::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

Store::Store() = default;
Store::~Store() = default;

void Store::Fail(const std::string& what) const
{
    throw StoreError(what + ": " + (database_ ? sqlite3_errmsg(database_.get()) : "out of memory"));
}

void Store::Execute(const char* sql)
{
    if (sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        Fail("database");
    }
}

sqlite3_stmt* Store::Prepare(const std::string& sql)
{
    const auto found = statements_.find(sql);
    if (found != statements_.end()) {
        return found->second.get();
    }
    if (statements_.size() >= kMostStatements) {
        statements_.clear();
    }
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database_.get(), sql.c_str(), static_cast<int>(sql.size()), &statement, nullptr) !=
        SQLITE_OK) {
        Fail("database");
    }
    return statements_.emplace(sql, statement).first->second.get();
}

void Store::Open(const std::string& path)
{
    sqlite3* database = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int result = sqlite3_open_v2(path.empty() ? ":memory:" : path.c_str(), &database, flags, nullptr);
    database_.reset(database);
    if (result != SQLITE_OK) {
        Fail("cannot open database \"" + path + "\"");
    }
    try {
        sqlite3_busy_timeout(database, 500);
        Execute("PRAGMA locking_mode=EXCLUSIVE");
        Execute("BEGIN EXCLUSIVE"); // Takes the lock now rather than at the first request.
        int application = 0;
        int layout = 0;
        int tables = 0;
        {
            Statement row(*this, "SELECT application_id FROM pragma_application_id");
            application = row.Step() ? static_cast<int>(row.Integer(0)) : 0;
            Statement version(*this, "SELECT user_version FROM pragma_user_version");
            layout = version.Step() ? static_cast<int>(version.Integer(0)) : 0;
            Statement count(*this, "SELECT count(*) FROM sqlite_master");
            tables = count.Step() ? static_cast<int>(count.Integer(0)) : 0;
        }
        if (tables == 0) {
            Execute("CREATE TABLE documents(place INTEGER PRIMARY KEY AUTOINCREMENT, collection TEXT NOT NULL,"
                    " name TEXT NOT NULL, body TEXT NOT NULL, UNIQUE(collection, name))");
            Execute(("PRAGMA application_id=" + std::to_string(kApplicationId)).c_str());
            Execute(("PRAGMA user_version=" + std::to_string(kLayout)).c_str());
        } else if (application != kApplicationId) {
            throw StoreError("it belongs to another program");
        } else if (layout != kLayout) {
            throw StoreError("its layout is " + std::to_string(layout) + ", this program reads " +
                             std::to_string(kLayout));
        }
        Execute("COMMIT");
        statements_.clear();
        Execute("PRAGMA journal_mode=WAL");
        Execute("PRAGMA synchronous=NORMAL");
    } catch (const StoreError& error) {
        const bool held = sqlite3_errcode(database) == SQLITE_BUSY;
        throw StoreError("cannot use database \"" + path + "\": " + error.what() +
                         (held ? "; another process works with it: one platform a file" : ""));
    }
}

Store::Transaction::Transaction(Store& store) : store_(store), lock_(store.mutex_)
{
    store_.Execute("BEGIN");
}

Store::Transaction::~Transaction()
{
    if (!done_) {
        sqlite3_exec(store_.database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void Store::Transaction::Commit()
{
    store_.Execute("COMMIT");
    done_ = true;
    if (!touched_.empty()) {
        const std::lock_guard<std::mutex> lock(store_.changesMutex_);
        ++store_.moment_;
        for (const std::string& collection : touched_) {
            store_.changes_[collection] = store_.moment_;
        }
    }
}

void Store::Transaction::Touch(std::string_view collection)
{
    if (std::find(touched_.begin(), touched_.end(), collection) == touched_.end()) {
        touched_.emplace_back(collection);
    }
}

std::vector<std::string> Store::ChangedSince(std::uint64_t& moment) const
{
    const std::lock_guard<std::mutex> lock(changesMutex_);
    std::vector<std::string> changed;
    for (const auto& [collection, when] : changes_) {
        if (when > moment) {
            changed.push_back(collection);
        }
    }
    moment = moment_;
    return changed;
}

bool Store::Transaction::Insert(std::string_view collection, std::string_view key, std::string_view document)
{
    Statement insert(store_, "INSERT OR IGNORE INTO documents(collection,name,body) VALUES(?,?,?)");
    insert.Bind(collection).Bind(key).Bind(document).Step();
    Touch(collection);
    return sqlite3_changes(store_.database_.get()) > 0;
}

std::optional<std::string> Store::Transaction::Read(std::string_view collection, std::string_view key)
{
    Statement read(store_, "SELECT body FROM documents WHERE collection=? AND name=?");
    if (!read.Bind(collection).Bind(key).Step()) {
        return std::nullopt;
    }
    return read.Text(0);
}

bool Store::Transaction::Has(std::string_view collection, std::string_view key)
{
    Statement read(store_, "SELECT 1 FROM documents WHERE collection=? AND name=?");
    return read.Bind(collection).Bind(key).Step();
}

void Store::Transaction::Write(std::string_view collection, std::string_view key, std::string_view document)
{
    Statement write(store_, "INSERT INTO documents(collection,name,body) VALUES(?,?,?)"
                            " ON CONFLICT(collection,name) DO UPDATE SET body=excluded.body");
    write.Bind(collection).Bind(key).Bind(document).Step();
    Touch(collection);
}

bool Store::Transaction::Erase(std::string_view collection, std::string_view key)
{
    Statement erase(store_, "DELETE FROM documents WHERE collection=? AND name=?");
    erase.Bind(collection).Bind(key).Step();
    Touch(collection);
    return sqlite3_changes(store_.database_.get()) > 0;
}

std::int64_t Store::Transaction::Count(const Selection& selection)
{
    Statement count(store_, "SELECT count(*)" + Where(selection));
    count.Bind(selection).Step();
    return count.Integer(0);
}

void Store::Transaction::Select(const Selection& selection,
                                const std::function<void(const std::string&, const std::string&)>& each)
{
    std::string sql = "SELECT name,body" + Where(selection) + " ORDER BY ";
    if (!selection.orderBy.empty()) {
        sql += Extract("body", selection.orderBy) + (selection.descending ? " DESC," : ",");
    }
    sql += selection.descending ? "place DESC LIMIT ? OFFSET ?" : "place LIMIT ? OFFSET ?";
    std::vector<std::pair<std::string, std::string>> rows;
    {
        Statement select(store_, sql);
        select.Bind(selection).Bind(StoreValue(selection.limit)).Bind(StoreValue(selection.offset));
        while (select.Step()) {
            rows.emplace_back(select.Text(0), select.Text(1));
        }
    }
    for (const auto& [name, body] : rows) {
        each(name, body);
    }
}

void Store::Transaction::Run(const std::string& sql, const std::vector<StoreValue>& values,
                             const std::function<void(const StoreRow&)>& each)
{
    Statement statement(store_, sql);
    for (const StoreValue& value : values) {
        statement.Bind(value);
    }
    while (statement.Step()) {
        if (each) {
            each(statement.Row());
        }
    }
}

} // namespace nexwire::simulator
