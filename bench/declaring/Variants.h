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
        static constexpr ::nexwire::core::FieldTable table = {#T, root, list, count,                                   \
                                                              ::nexwire::core::MakeOps<T>(nullptr)};                   \
        return table;                                                                                                  \
    }                                                                                                                  \
    NEXWIRE_OFFSETS_END

template <class T>
struct InlineOperations {
    static constexpr nexwire::core::StructOps value = nexwire::core::MakeOps<T>(nullptr);
};

#define INLINE_OPERATIONS(T)                                                                                           \
    template <>                                                                                                        \
    struct nexwire::core::MemberKind<T> {                                                                              \
        static constexpr Kind kind = Kind::Struct;                                                                     \
        static constexpr const StructOps* ops = &InlineOperations<T>::value;                                           \
    };                                                                                                                 \
    template <>                                                                                                        \
    struct nexwire::core::MemberKind<std::vector<T>> {                                                                 \
        static constexpr Kind kind = Kind::StructList;                                                                 \
        static constexpr const StructOps* ops = &InlineOperations<T>::value;                                           \
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
