#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace proto {

/// A JSON document whose values are addressed by paths.
///
/// A path is a JSON pointer ("/windowInfo/rowNum", "/deviceList/0/guid"; "~1" for a slash and "~0" for a tilde within
/// a key); its leading slash may be left out. The empty path is the document itself. Nothing aborts or throws, running
/// out of memory apart: paths that lead nowhere, values of another type and impossible indices give false. All text is
/// valid UTF-8, NUL included, in both directions. An object is not safe to use from two threads at once.
class CRapidJsonProto {
public:
    /// Objects and arrays within one another, the outermost counted.
    static constexpr std::size_t kMaxDepth = 1000;
    /// How many elements a setter may skip, see `Set`.
    static constexpr std::size_t kMaxGap = 1024;

    /// An empty object.
    CRapidJsonProto();
    ~CRapidJsonProto();
    CRapidJsonProto(const CRapidJsonProto&) = delete;
    CRapidJsonProto& operator=(const CRapidJsonProto&) = delete;

    /// Replaces the document by what `text` holds: one JSON value of any kind and nothing after it but white space
    /// (a byte order mark before it is skipped).
    ///
    /// @return false, and the document stays as it is, when the text is anything else, has invalid UTF-8, half of a
    ///         surrogate pair or a number beyond a double, or is nested deeper than `kMaxDepth`.
    bool Load(const std::string& text);

    /// The document as compact text, keys in the order in which they were first set or loaded.
    std::string ToString() const;

    /// Stores a value, replacing any value that is there, and creates the objects and arrays that lead to it. Where
    /// one is missing, or null, a number as the next part of the path makes an array and anything else an object;
    /// in an object that exists a number is a key.
    ///
    /// An index may lie behind the end of the array by `kMaxGap` at most, elements in between become null; "-" stands
    /// for the element after the last.
    ///
    /// @return false, and the document stays as it is, when the path is empty or malformed, leads through a value that
    ///         is neither object nor array or through an array without an index, or is longer than `kMaxDepth` allows;
    ///         when a text or a key is not valid UTF-8, or a key has a NUL; when a number is not finite.
    bool Set(const std::string& path, const std::string& value);
    bool Set(const std::string& path, const char* value);
    bool Set(const std::string& path, std::int32_t value);
    bool Set(const std::string& path, std::int64_t value);
    bool Set(const std::string& path, double value);
    bool Set(const std::string& path, bool value);

    /// Stores an empty array under the same rules.
    bool SetArray(const std::string& path);

    /// Reads a value; false, and `value` stays as it is, when the path leads nowhere or to another type.
    ///
    /// A text is a JSON string only and a bool is true or false only: neither is made from a number, nor a number from
    /// them. The integers take every number without a fraction that fits, 5.0 and 1e3 included. A double takes every
    /// number; beyond 2^53 it may be rounded.
    bool Get(const std::string& path, std::string& value) const;
    bool Get(const std::string& path, std::int32_t& value) const;
    bool Get(const std::string& path, std::int64_t& value) const;
    bool Get(const std::string& path, double& value) const;
    bool Get(const std::string& path, bool& value) const;

    /// Whether a value is there, null included.
    bool Has(const std::string& path) const;

    /// Elements of the array at `path`; 0 when there is none.
    std::size_t ArraySize(const std::string& path) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace proto
