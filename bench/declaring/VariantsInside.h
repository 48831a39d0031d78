#pragma once

// What the variants need in sources.

#include <cstddef>
#include <memory>
#include <type_traits>

#include <cjson/cJSON.h>

#include "Variants.h"
#include "core/FieldTable.h"

#define OUTLINE_FIELDS(T, root, ...)                                                                                   \
    T::T() = default;                                                                                                  \
    T::~T() = default;                                                                                                 \
    T::T(const T&) = default;                                                                                          \
    T::T(T&&) noexcept = default;                                                                                      \
    T& T::operator=(const T&) = default;                                                                               \
    T& T::operator=(T&&) noexcept = default;                                                                           \
    NEXWIRE_INBOUND_FIELDS(T, root, __VA_ARGS__)

struct DeleteTree {
    void operator()(cJSON* root) const { cJSON_Delete(root); }
};
using Tree = std::unique_ptr<cJSON, DeleteTree>;

/// Takes `item`, whatever comes of it.
bool Add(Tree& object, const char* key, cJSON* item);

/// What is done with a member of one type.
struct MemberOperations {
    void (*clear)(void* member); ///< Null when there is nothing to clear first.
    void (*read)(void* member, const cJSON* node);
    cJSON* (*write)(const void* member);
};

struct OperationField {
    const char* key;
    const MemberOperations* operations;
    std::size_t offset;
};

struct OperationTable {
    const OperationField* fields;
    std::size_t count;
};

extern const MemberOperations kTextOperations;
extern const MemberOperations kIntOperations;
extern const MemberOperations kBoolOperations;
extern const MemberOperations kTextListOperations;

template <class T>
struct OperationsOf {
    static constexpr MemberOperations kOwn = {
        nullptr,
        [](void* member, const cJSON* node) {
            if (cJSON_IsObject(node) != 0) {
                static_cast<T*>(member)->Parse(node);
            }
        },
        [](const void* member) { return static_cast<const T*>(member)->ToJson(); },
    };
    static constexpr const MemberOperations* value = &kOwn;
};
template <class T>
struct OperationsOf<std::vector<T>> {
    static constexpr MemberOperations kOwn = {
        [](void* member) { static_cast<std::vector<T>*>(member)->clear(); },
        [](void* member, const cJSON* node) {
            const cJSON* element = nullptr;
            cJSON_ArrayForEach(element, node)
            {
                static_cast<std::vector<T>*>(member)->emplace_back().Parse(element);
            }
        },
        [](const void* member) {
            Tree list(cJSON_CreateArray());
            for (const T& element : *static_cast<const std::vector<T>*>(member)) {
                cJSON* const item = element.ToJson();
                if (cJSON_AddItemToArray(list.get(), item) == 0) {
                    cJSON_Delete(item);
                    return static_cast<cJSON*>(nullptr);
                }
            }
            return list.release();
        },
    };
    static constexpr const MemberOperations* value = &kOwn;
};
template <const MemberOperations* Operations>
struct FixedOperations {
    static constexpr const MemberOperations* value = Operations;
};
template <>
struct OperationsOf<std::string> : FixedOperations<&kTextOperations> {
};
template <>
struct OperationsOf<std::int32_t> : FixedOperations<&kIntOperations> {
};
template <>
struct OperationsOf<bool> : FixedOperations<&kBoolOperations> {
};
template <>
struct OperationsOf<std::vector<std::string>> : FixedOperations<&kTextListOperations> {
};

#ifdef VARIANT_OPERATIONS
#undef K
#define K(key, member)                                                                                                 \
    OperationField                                                                                                     \
    {                                                                                                                  \
        key, OperationsOf<decltype(Self::member)>::value, offsetof(Self, member)                                       \
    }
#endif

#define OPERATION_FIELDS(T, ...)                                                                                       \
    NEXWIRE_OFFSETS_BEGIN                                                                                              \
    namespace {                                                                                                        \
    struct FieldsOf##T {                                                                                               \
        using Self = T;                                                                                                \
        static constexpr OperationField kList[] = {__VA_ARGS__};                                                       \
    };                                                                                                                 \
    }                                                                                                                  \
    NEXWIRE_OFFSETS_END                                                                                                \
    const OperationTable T::kTable = {FieldsOf##T::kList, sizeof(FieldsOf##T::kList) / sizeof(OperationField)};        \
    const OperationTable& T::Table() const                                                                             \
    {                                                                                                                  \
        return kTable;                                                                                                 \
    }
