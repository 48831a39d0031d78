#pragma once

#include <cstddef>
#include <string>

#include <cjson/cJSON.h>

namespace nexwire {
namespace core {

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
    void Reset();

private:
    cJSON* root_;
};

/// Lasts for one conversion. Where the host switched the arena on, every cJSON allocation of this thread comes from
/// it until the scope ends and is given back as a whole; otherwise it does nothing.
class ConversionScope {
public:
    ConversionScope();
    ~ConversionScope();
    ConversionScope(const ConversionScope&) = delete;
    ConversionScope& operator=(const ConversionScope&) = delete;

private:
    std::size_t chunk_ = 0;
    std::size_t used_ = 0;
};

/// Parses text of which nothing but white space may follow the value. Null on failure; `errorPosition` then points
/// into the text, at what could not be read. cJSON's own error position is shared by all threads and never read.
cJSON* ParseStrictly(const std::string& text, const char*& errorPosition);

/// The indented form with tabs and newlines; empty when memory ran out.
std::string PrintFormatted(const cJSON* root);

} // namespace core
} // namespace nexwire
