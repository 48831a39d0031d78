#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "nexwire/JSONStruct.h"

// What the variants need in headers. `table` is the library's own way and needs nothing more.

#define SET_API NEXWIRE_API

// ---- outline: everything a structure has is defined in the source ----

#define OUTLINE(T)                                                                                                     \
    T();                                                                                                               \
    ~T() override;                                                                                                     \
    T(const T&);                                                                                                       \
    T(T&&) noexcept;                                                                                                   \
    T& operator=(const T&);                                                                                            \
    T& operator=(T&&) noexcept;                                                                                        \
    NEXWIRE_JSON

#ifdef VARIANT_INLINE
// ---- inline: the table stands in the structure ----

#include "core/FieldTable.h"

#define INLINE(T, root, ...)                                                                                           \
    NEXWIRE_OFFSETS_BEGIN                                                                                              \
    const ::nexwire::core::FieldTable& Fields() const override                                                         \
    {                                                                                                                  \
        using Self = T;                                                                                                \
        static constexpr ::nexwire::core::Field list[] = {__VA_ARGS__};                                                \
        static constexpr std::size_t count = sizeof(list) / sizeof(list[0]);                                           \
        static_assert(::nexwire::core::CoversAllMembers<T>(list, count), "list every member once, in order");          \
        static constexpr ::nexwire::core::FieldTable table = {#T, root, list, count};                                  \
        return table;                                                                                                  \
    }                                                                                                                  \
    NEXWIRE_OFFSETS_END

template <class T>
struct InlineOperations {
    using List = std::vector<T>;
    static constexpr nexwire::core::StructOps value = {
        nullptr,
        [](void* object) -> protocol::IJSONStruct* { return static_cast<T*>(object); },
        [](void* list) { static_cast<List*>(list)->clear(); },
        [](void* list, std::size_t count) { static_cast<List*>(list)->reserve(count); },
        [](void* list) -> protocol::IJSONStruct* { return &static_cast<List*>(list)->emplace_back(); },
        [](const void* list) { return static_cast<const List*>(list)->size(); },
        [](const void* list, std::size_t index) -> const protocol::IJSONStruct* {
            return &(*static_cast<const List*>(list))[index];
        },
    };
};

#define INLINE_OPERATIONS(T)                                                                                           \
    template <>                                                                                                        \
    struct nexwire::core::StructOpsOf<T> : InlineOperations<T> {                                                       \
    };
#endif

// ---- operations: a table that names the operations of each member instead of a kind ----

struct OperationTable;

struct SET_API OperationBase : public virtual protocol::SerializationIgnoreItemFeatures {
    virtual ~OperationBase() = default;
    virtual void Parse(const cJSON* node);
    virtual cJSON* ToJson() const;
    virtual const OperationTable& Table() const = 0;
    std::uint64_t present = 0;

protected:
    OperationBase() = default;
    OperationBase(const OperationBase&) = default;
    OperationBase& operator=(const OperationBase&) = default;
    OperationBase(OperationBase&&) = default;
    OperationBase& operator=(OperationBase&& other) noexcept
    {
        SerializationIgnoreItemFeatures::operator=(std::move(other));
        present = other.present;
        return *this;
    }
};

#define OPERATIONS                                                                                                     \
    NEXWIRE_HIDDEN static const OperationTable kTable;                                                                 \
    const OperationTable& Table() const override;

// ---- expanded: calls of cJSON, member by member ----

struct SET_API ExpandedBase : public virtual protocol::SerializationIgnoreItemFeatures {
    virtual ~ExpandedBase() = default;
    virtual void Parse(const cJSON* node) = 0;
    virtual cJSON* ToJson() const = 0;
    virtual const char* RootName() const = 0;
    std::uint64_t present = 0;

protected:
    ExpandedBase() = default;
    ExpandedBase(const ExpandedBase&) = default;
    ExpandedBase& operator=(const ExpandedBase&) = default;
    ExpandedBase(ExpandedBase&&) = default;
    ExpandedBase& operator=(ExpandedBase&& other) noexcept
    {
        SerializationIgnoreItemFeatures::operator=(std::move(other));
        present = other.present;
        return *this;
    }
};

#define EXPANDED                                                                                                       \
    void Parse(const cJSON* node) override;                                                                            \
    cJSON* ToJson() const override;                                                                                    \
    const char* RootName() const override;
