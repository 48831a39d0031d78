#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "nexwire/Export.h"

struct cJSON;

namespace nexwire::core {
struct FieldTable;
} // namespace nexwire::core

/// Structures that cross the wire: plain members, mapped to JSON keys by a table beside them.
///
/// A structure belongs to whoever holds it; use one from several threads only as you would a `std::string`.
/// Texts are UTF-8. A NUL inside a text ends it on the wire.
namespace protocol {

/// Root of all structures.
class NEXWIRE_API IJSONStruct {
public:
    /// Fills the members from a JSON object; null changes nothing. Lists are emptied first. A missing key leaves its
    /// member as it is; a mistyped text becomes empty, a mistyped list stays empty, anything else mistyped keeps its
    /// value. Keys match exactly and the first of two equal keys wins.
    virtual void Parse(const cJSON* node) = 0;

    /// A new JSON object of the members in declaration order, owned by the caller; null when memory ran out.
    virtual cJSON* ToJson() const = 0;

protected:
    IJSONStruct() = default;
    IJSONStruct(const IJSONStruct& other);
    IJSONStruct(IJSONStruct&&) noexcept = default;
    IJSONStruct& operator=(const IJSONStruct& other);
    IJSONStruct& operator=(IJSONStruct&&) noexcept = default;
    ~IJSONStruct() = default;

    /// For a structure with a `Parse` of its own: notes a key that was found, for `PresentKeys` and `IsPresent`.
    void NotePresent(std::string_view key);
    /// Forgets what was noted; the first step of such a `Parse`.
    void ClearPresent();

    // The two below are the library's. No friend: with one, this destructor would count as within everybody's reach.

    /// One bit per member, set when the last parse found its key: a set of texts in every element of a list
    /// would double the time of reading it.
    std::uint64_t present_[2] = {0, 0};
    /// What was noted by name; null in every structure that has a table.
    std::unique_ptr<std::unordered_set<std::string>> noted_;
};

/// Which members of a structure are written; for partial updates. Each structure obeys its own filter only: an
/// element of a list has one of its own.
class NEXWIRE_API SerializationIgnoreItemFeatures {
public:
    enum : std::int32_t {
        kLeaveOut = 0, ///< Members whose keys are listed are left out.
        kOnly = 1,     ///< Only members whose keys are listed are written.
    };

    /// Writes only the members with these keys.
    void WriteOnly(std::vector<std::string> keys);
    /// Writes all members but those with these keys. An empty list writes everything, as a new structure does.
    void LeaveOut(std::vector<std::string> keys);
    /// Any other mode than the two named ones writes everything.
    void SetFilter(std::int32_t mode, std::vector<std::string> keys);

    std::int32_t FilterMode() const { return mode_; }
    const std::vector<std::string>& FilterKeys() const { return keys_; }

    /// Whether the filter withholds a member. A member with an empty key is never withheld.
    bool IsLeftOut(std::string_view key) const;

private:
    std::int32_t mode_ = kLeaveOut;
    std::vector<std::string> keys_;
};

/// Base of what the client sends. A structure of a host's own overrides `Parse`, `ToJson` and `RootName`.
class NEXWIRE_API IInboundData : public IJSONStruct, public virtual SerializationIgnoreItemFeatures {
public:
    void Parse(const cJSON* node) override;
    cJSON* ToJson() const override;
    /// Key under which the structure is sent.
    virtual const char* RootName() const;
    virtual ~IInboundData() = default;
    /// For derived structures that can tell whether they are complete; the base answers true.
    virtual bool Check(std::int32_t argument);
    /// Members and their keys; none in a structure of a host's own.
    virtual const ::nexwire::core::FieldTable& Fields() const;

    /// Keys of the members that the last `Parse` found.
    std::unordered_set<std::string> PresentKeys() const;
    bool IsPresent(std::string_view key) const;

protected:
    IInboundData() = default;
    IInboundData(const IInboundData&) = default;
    IInboundData(IInboundData&&) = default;
    IInboundData& operator=(const IInboundData&) = default;
    IInboundData& operator=(IInboundData&& other) noexcept;
};

/// Base of what the server returns. A structure of a host's own overrides `Parse` and `ToJson`.
class NEXWIRE_API IReturnData : public IJSONStruct, public virtual SerializationIgnoreItemFeatures {
public:
    void Parse(const cJSON* node) override;
    cJSON* ToJson() const override;
    virtual ~IReturnData() = default;
    /// Members and their keys; none in a structure of a host's own.
    virtual const ::nexwire::core::FieldTable& Fields() const;

    /// Keys of the members that the last `Parse` found.
    std::unordered_set<std::string> PresentKeys() const;
    bool IsPresent(std::string_view key) const;

protected:
    IReturnData() = default;
    IReturnData(const IReturnData&) = default;
    IReturnData(IReturnData&&) = default;
    IReturnData& operator=(const IReturnData&) = default;
    IReturnData& operator=(IReturnData&& other) noexcept;
};

} // namespace protocol

#if defined(__GNUC__) && !defined(_WIN32)
#define NEXWIRE_HIDDEN __attribute__((visibility("hidden")))
#else
#define NEXWIRE_HIDDEN
#endif

/// Last line of every structure; its table stands in the module's .cpp. The table is the library's own: a class inside
/// the structure is not exported with it.
#define NEXWIRE_JSON                                                                                                   \
    struct NEXWIRE_HIDDEN Table {                                                                                      \
        static const ::nexwire::core::FieldTable kFields;                                                              \
    };                                                                                                                 \
    const ::nexwire::core::FieldTable& Fields() const override;
