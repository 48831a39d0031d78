#pragma once

#include <cstddef>
#include <forward_list>
#include <optional>
#include <string>

#include <cjson/cJSON.h>

#include "core/JsonReader.h"
#include "core/Tape.h"
#include "nexwire/JSONStruct.h"

namespace nexwire::core {

/// Owns a cJSON tree. Only trees made inside the current `ConversionScope` of the thread go in here.
class JsonTree {
public:
    explicit JsonTree(cJSON* root = nullptr) : root_(root) {}
    ~JsonTree() { Reset(); }
    JsonTree(const JsonTree&) = delete;
    JsonTree& operator=(const JsonTree&) = delete;

    cJSON* get() const { return root_; }
    cJSON* Release()
    {
        cJSON* root = root_;
        root_ = nullptr;
        return root;
    }
    void Reset(cJSON* root = nullptr);

private:
    cJSON* root_;
};

/// Gives back in the end what was taken from the thread's arena meanwhile.
class ArenaScope {
public:
    ArenaScope();
    ~ArenaScope();
    ArenaScope(const ArenaScope&) = delete;
    ArenaScope& operator=(const ArenaScope&) = delete;

    /// Memory until the scope ends.
    /// @throws std::bad_alloc
    void* Allocate(std::size_t size) { return arena_.Obtain(size); }

    /// Reads what is wanted of a tree. The tape lives until the scope ends.
    /// @throws std::bad_alloc, AnswerTooCostly
    TapeCursor Read(const cJSON& root, Wanted wanted) { return {arena_, ReadTree(arena_, root, wanted)}; }

protected:
    Arena& arena_;

private:
    Arena::Mark mark_;
};

/// Lasts for one conversion. Where the host switched the arena on, every cJSON allocation of the thread goes there,
/// too.
class ConversionScope : public ArenaScope {
public:
    ConversionScope();
    ~ConversionScope();

    /// Reads what is wanted of a text of which nothing but white space may follow the value. The tape refers to the
    /// text and lives until the scope ends or parses again. None on failure; `errorPosition` then points into the text,
    /// at what could not be read. cJSON's own error position is shared by all threads and never read.
    /// @throws std::bad_alloc, AnswerTooCostly
    std::optional<TapeCursor> Parse(const std::string& text, const char*& errorPosition, Wanted wanted = kEverything);

    /// The tree of a structure, whose `TableOf` is `table`, under the key `root` if there is one. It refers to the
    /// structure's texts and lives until the scope ends. Null when a structure of the host's own makes none.
    /// @throws std::bad_alloc
    const cJSON* Write(const protocol::IJSONStruct& structure, const FieldTable* table, const char* root = nullptr);

    /// Place for a tree of cJSON's, which is deleted when the scope ends.
    /// @throws std::bad_alloc
    JsonTree& Adopt() { return adopted_.emplace_front(); }

private:
    const bool hooked_;               ///< Whether cJSON's allocations go to the arena.
    Arena* outerHookArena_ = nullptr; ///< Where they went before.
    JsonTree lenient_;                ///< What only cJSON's parser could read.
    std::forward_list<JsonTree> adopted_;
};

/// The table that says all of a structure; null for a structure of the host's own, which may be anything.
const FieldTable* TableOf(const protocol::IJSONStruct& structure);

/// What a structure reads of a value.
Wanted WantedBy(const protocol::IJSONStruct& structure);

/// Has a structure read the value `value` of a tape, from which `wanted`, which is what it reads, was taken.
void Hand(protocol::IJSONStruct& structure, Wanted wanted, const TapeEntry& value, TapeCursor& tape);

/// The indented form with tabs and newlines; empty when memory ran out.
std::string PrintFormatted(const cJSON* root);

} // namespace nexwire::core
