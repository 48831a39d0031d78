#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace nexwire::simulator {

class StoreError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A value that a condition compares with; texts never equal numbers, true and false are 1 and 0.
using StoreValue = std::variant<std::int64_t, double, std::string>;

enum class Test { kEquals, kContains, kStartsWith, kOneOf, kAtLeast, kAtMost, kHasElement };

/// One condition on the documents of a collection.
struct Condition {
    std::string field; ///< Member of the document, dots lead into nested objects.
    Test test = Test::kEquals;
    StoreValue value;      ///< For `kOneOf` and `kHasElement` the text of a JSON list.
    std::string element{}; ///< For `kHasElement`: the member of the list's elements to compare; empty for plain texts,
                           ///< "list[]" for the texts of a list in each of them.
};

using StoreRow = std::vector<StoreValue>; ///< NULL is 0.

struct Selection {
    std::string collection;
    std::vector<Condition> conditions{}; ///< All of them must hold, or one with `any`.
    std::string orderBy{};               ///< Member to sort by; empty keeps the order of creation.
    bool descending = false;
    std::int64_t offset = 0;
    std::int64_t limit = -1; ///< Negative: all.
    bool any = false;
};

/// JSON documents in named collections, kept in SQLite. Everything happens inside a `Transaction`, one at a time.
class Store {
public:
    Store();
    ~Store();
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    /// @param path   database file, created when missing; empty for memory. Held exclusively until destruction.
    /// @throws StoreError  locked, unreadable, or a database of another program or layout.
    void Open(const std::string& path);

    /// Holds the store for one thread; undone unless `Commit` is called.
    class Transaction {
    public:
        explicit Transaction(Store& store);
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        void Commit();

        /// @return false when the collection has a document with this key.
        bool Insert(std::string_view collection, std::string_view key, std::string_view document);
        std::optional<std::string> Read(std::string_view collection, std::string_view key);
        bool Has(std::string_view collection, std::string_view key);
        /// Inserts or replaces; a replaced document keeps its place in the order.
        void Write(std::string_view collection, std::string_view key, std::string_view document);
        bool Erase(std::string_view collection, std::string_view key);
        std::int64_t Count(const Selection& selection); ///< Ignores offset and limit.
        /// Documents in order. Reads all before the first call of `each`, which may write.
        void Select(const Selection& selection,
                    const std::function<void(const std::string& key, const std::string& document)>& each);
        /// A statement over tables of one's own, the values in place of its question marks. Rows are handed over while
        /// the statement runs, so `each` must not write.
        void Run(const std::string& sql, const std::vector<StoreValue>& values,
                 const std::function<void(const StoreRow& row)>& each = {});

    private:
        void Touch(std::string_view collection);

        Store& store_;
        std::unique_lock<std::mutex> lock_;
        std::vector<std::string> touched_;
        bool done_ = false;
    };

    /// Collections that were written to since a moment, which becomes now; 0 is the beginning.
    std::vector<std::string> ChangedSince(std::uint64_t& moment) const;

private:
    class Statement;
    void Execute(const char* sql);
    sqlite3_stmt* Prepare(const std::string& sql);
    [[noreturn]] void Fail(const std::string& what) const;

    struct Close {
        void operator()(sqlite3* database) const;
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    std::mutex mutex_;
    mutable std::mutex changesMutex_;
    std::uint64_t moment_ = 0;
    std::map<std::string, std::uint64_t, std::less<>> changes_; ///< When collections were written to last.
    std::unique_ptr<sqlite3, Close> database_;
    std::map<std::string, std::unique_ptr<sqlite3_stmt, Finalize>, std::less<>> statements_;
};

} // namespace nexwire::simulator
