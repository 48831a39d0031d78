#pragma once

#include <cstddef>
#include <forward_list>
#include <string>

#include <cjson/cJSON.h>

#include "core/Arena.h"
#include "core/JsonReader.h"
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

/// Lasts for one conversion and gives back as a whole what was taken from the thread's arena meanwhile: the trees
/// that `Parse` made and, where the host switched the arena on, every cJSON allocation of the thread.
class ConversionScope {
public:
    ConversionScope();
    ~ConversionScope();
    ConversionScope(const ConversionScope&) = delete;
    ConversionScope& operator=(const ConversionScope&) = delete;

    /// Reads what is wanted of a text of which nothing but white space may follow the value. The tree lives until the
    /// scope ends or parses again. Null on failure; `errorPosition` then points into the text, at what could not be
    /// read. cJSON's own error position is shared by all threads and never read.
    /// @throws std::bad_alloc, AnswerTooCostly
    const cJSON* Parse(const std::string& text, const char*& errorPosition, const Wanted& wanted = kEverything);

    /// The tree of a structure with that table, under the key `root` if there is one. It refers to the structure's
    /// texts and lives until the scope ends. Null when a structure of the host's own makes none.
    /// @throws std::bad_alloc
    const cJSON* Write(const protocol::IJSONStruct& structure, const FieldTable& table, const char* root = nullptr);

    /// Memory until the scope ends.
    /// @throws std::bad_alloc
    void* Allocate(std::size_t size);
    /// Place for a tree of cJSON's, which is deleted when the scope ends.
    /// @throws std::bad_alloc
    JsonTree& Adopt() { return adopted_.emplace_front(); }

private:
    Arena& arena_;
    Arena::Mark mark_;
    JsonTree lenient_; ///< What only cJSON's parser could read.
    std::forward_list<JsonTree> adopted_;
};

/// The indented form with tabs and newlines; empty when memory ran out.
std::string PrintFormatted(const cJSON* root);

} // namespace nexwire::core
