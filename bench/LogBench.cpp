// A page of 50 out of a log of 100,000 entries: `CSearchFilterLogsComm` over HTTP to the local platform, beside the
// same page and total asked of SQLite itself, on a copy of the same file; turn by turn in one run. More than 50 ms is
// an error.

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include "AtServer.h"
#include "Turns.h"
#include "nexwire/Log/Log.h"
#include "simulator/Platform.h"

namespace {

using namespace nexwire;

constexpr int kEntries = 100000;
constexpr std::int64_t kFirstMs = 1767225600000; // 2026-01-01 00:00:00 UTC; an entry each minute.
constexpr double kMostUs = 50000.0;

void Check(int result, sqlite3* database)
{
    if (result != SQLITE_OK && result != SQLITE_ROW && result != SQLITE_DONE) {
        throw std::runtime_error(sqlite3_errmsg(database));
    }
}

struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};

std::unique_ptr<sqlite3, Close> OpenFile(const std::string& path)
{
    sqlite3* database = nullptr;
    const int result = sqlite3_open(path.c_str(), &database);
    std::unique_ptr<sqlite3, Close> opened(database);
    Check(result, database);
    return opened;
}

/// A search, as the platform's condition and as what stands behind WHERE.
struct Search {
    const char* name;
    void (*condition)(protocol::LogCodition&);
    const char* where;
    int page;
};

const Search kSearches[] = {
    {"newest", [](protocol::LogCodition&) {}, "1", 1},
    {"a month of one type, page 40",
     [](protocol::LogCodition& condition) {
         condition.beginTime = "2026-02-01T00:00:00+00:00";
         condition.endTime = "2026-02-28T23:59:59+00:00";
         condition.logTypeList = {3};
     },
     "time>=1769904000000 AND time<1772323200000 AND type=3", 40},
    {"a word anywhere", [](protocol::LogCodition& condition) { condition.keyword = "DOOR 77"; },
     "content LIKE '%door 77%'", 1},
};

/// The platform with a full log, the library pointed at it, and a copy of its file for the peer.
class Site {
public:
    static Site& Instance()
    {
        static Site site;
        return site;
    }

    sqlite3* Copy() { return copy_.get(); }

private:
    Site() : file_((std::filesystem::temp_directory_path() / "nexwire-log-bench.db").string())
    {
        Remove();
        simulator::Options options;
        options.databasePath = file_;
        Start(options); // Makes the tables.
        platform_.reset();
        Fill();
        std::filesystem::copy_file(file_, file_ + ".copy");
        copy_ = OpenFile(file_ + ".copy");
        Start(options);
        library_ = std::make_unique<bench::AtServer>("http://127.0.0.1:" + std::to_string(platform_->Port()));
    }
    ~Site()
    {
        library_.reset();
        platform_.reset();
        copy_.reset();
        Remove();
    }

    void Start(const simulator::Options& options)
    {
        platform_ = std::make_unique<simulator::Platform>(options);
        std::string error;
        if (!platform_->Start(error)) {
            throw std::runtime_error(error);
        }
    }

    void Fill() const
    {
        const std::unique_ptr<sqlite3, Close> database = OpenFile(file_);
        const std::string sql =
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i<" + std::to_string(kEntries - 1) +
            ") INSERT INTO logs(guid,time,user,address,type,module,operation,resource,resourceName,result,content)"
            " SELECT printf('%032X',i)," +
            std::to_string(kFirstMs) +
            "+i*60000,'user '||(i%20),'192.0.2.'||(i%250),1+i%6,'module '||(i%9),'operation '||(i%40),"
            "printf('D%031d',i%300),'Door '||(i%300),1+(i%10=0),'Door '||(i%300)||' was opened by user '||(i%20)"
            "||' at the console, request '||i FROM n";
        Check(sqlite3_exec(database.get(), sql.c_str(), nullptr, nullptr, nullptr), database.get());
    }

    void Remove() const
    {
        for (const char* end : {"", "-wal", "-shm", ".copy", ".copy-wal", ".copy-shm"}) {
            std::filesystem::remove(file_ + end);
        }
    }

    std::string file_;
    std::unique_ptr<simulator::Platform> platform_;
    std::unique_ptr<bench::AtServer> library_;
    std::unique_ptr<sqlite3, Close> copy_;
};

/// The peer: kept statements, the page into the same structure.
class BareQuery {
public:
    explicit BareQuery(const Search& search) : database_(Site::Instance().Copy())
    {
        const std::string from = std::string(" FROM logs WHERE ") + search.where;
        page_ =
            Prepare("SELECT guid,time,user,address,type,module,operation,resource,resourceName,result,content" + from +
                    " ORDER BY time DESC,place DESC LIMIT 50 OFFSET " + std::to_string((search.page - 1) * 50));
        count_ = Prepare("SELECT count(*)" + from);
    }
    ~BareQuery()
    {
        sqlite3_finalize(page_);
        sqlite3_finalize(count_);
    }
    BareQuery(const BareQuery&) = delete;
    BareQuery& operator=(const BareQuery&) = delete;

    void Run(protocol::LogFilterConditionSupported& result)
    {
        while (sqlite3_step(page_) == SQLITE_ROW) {
            protocol::LogInfo& entry = result.logInfoList.emplace_back();
            entry.logGuid = Text(0);
            entry.logTime = std::to_string(sqlite3_column_int64(page_, 1));
            entry.userName = Text(2);
            entry.clientAddress = Text(3);
            entry.logType = sqlite3_column_int(page_, 4);
            entry.moduleName = Text(5);
            entry.operation = Text(6);
            entry.resourceGuid = Text(7);
            entry.resourceName = Text(8);
            entry.logResult = sqlite3_column_int(page_, 9);
            entry.content = Text(10);
        }
        sqlite3_reset(page_);
        sqlite3_step(count_);
        result.total = sqlite3_column_int(count_, 0);
        sqlite3_reset(count_);
    }

private:
    sqlite3_stmt* Prepare(const std::string& sql)
    {
        sqlite3_stmt* statement = nullptr;
        Check(sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr), database_);
        return statement;
    }
    const char* Text(int column) { return reinterpret_cast<const char*>(sqlite3_column_text(page_, column)); }

    sqlite3* database_;
    sqlite3_stmt* page_ = nullptr;
    sqlite3_stmt* count_ = nullptr;
};

void LogPage(benchmark::State& state)
{
    const Search& search = kSearches[state.range(0)];
    BareQuery bare(search);
    protocol::LogCodition condition;
    search.condition(condition);
    condition.pageNo = search.page;
    bench::Turns turns;
    bool good = true;
    for (auto _ : state) {
        protocol::LogFilterConditionSupportedData page;
        protocol::LogFilterConditionSupported same;
        good = turns.Take([&] { return CSearchFilterLogsComm::request(page, condition); },
                          [&] {
                              bare.Run(same);
                              return true;
                          }) &&
               good;
        const protocol::LogFilterConditionSupported& found = page.logFilterConditionSupported;
        good = good && found.total == same.total && found.logInfoList.size() == 50 && same.logInfoList.size() == 50 &&
               found.logInfoList.back().logGuid == same.logInfoList.back().logGuid;
    }
    // The best of each: whatever else the machine does takes time, and of a call between two threads more than of a
    // query.
    const double best = turns.BestOwn() * 1e6;
    if (!good || best > kMostUs) {
        state.SkipWithError(good ? "more than 50 ms" : "found something else");
        return;
    }
    bench::Report(state, best, turns.BestPeer() * 1e6 / best, 1.0 / 3.0, "us|bare SQLite query");
}

[[maybe_unused]] const bool kRegistered = [] {
    for (std::int64_t i = 0; i < std::int64_t{std::size(kSearches)}; ++i) {
        const std::string name = std::string("page of the log, ") + kSearches[i].name;
        benchmark::RegisterBenchmark(name.c_str(), LogPage)->Arg(i)->Iterations(40)->UseRealTime();
    }
    return true;
}();

} // namespace

BENCHMARK_MAIN();
