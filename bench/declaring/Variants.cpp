#include <algorithm>
#include <cstring>

#include "VariantsInside.h"

bool Add(Tree& object, const char* key, cJSON* item)
{
    if (item == nullptr || cJSON_AddItemToObjectCS(object.get(), key, item) == 0) {
        cJSON_Delete(item);
        return false;
    }
    return true;
}

const MemberOperations kTextOperations = {
    nullptr,
    [](void* member, const cJSON* node) {
        auto& text = *static_cast<std::string*>(member);
        if (cJSON_IsString(node) != 0) {
            text = node->valuestring;
        } else {
            text.clear();
        }
    },
    [](const void* member) { return cJSON_CreateString(static_cast<const std::string*>(member)->c_str()); },
};

const MemberOperations kIntOperations = {
    nullptr,
    [](void* member, const cJSON* node) {
        if (cJSON_IsNumber(node) != 0) {
            *static_cast<std::int32_t*>(member) = node->valueint;
        }
    },
    [](const void* member) { return cJSON_CreateNumber(*static_cast<const std::int32_t*>(member)); },
};

const MemberOperations kBoolOperations = {
    nullptr,
    [](void* member, const cJSON* node) {
        if (cJSON_IsBool(node) != 0) {
            *static_cast<bool*>(member) = cJSON_IsTrue(node) != 0;
        }
    },
    [](const void* member) { return cJSON_CreateBool(*static_cast<const bool*>(member) ? 1 : 0); },
};

const MemberOperations kTextListOperations = {
    [](void* member) { static_cast<std::vector<std::string>*>(member)->clear(); },
    [](void* member, const cJSON* node) {
        const cJSON* element = nullptr;
        cJSON_ArrayForEach(element, node)
        {
            static_cast<std::vector<std::string>*>(member)->emplace_back(
                cJSON_IsString(element) != 0 ? element->valuestring : "");
        }
    },
    [](const void* member) {
        Tree list(cJSON_CreateArray());
        for (const std::string& text : *static_cast<const std::vector<std::string>*>(member)) {
            cJSON* const item = cJSON_CreateString(text.c_str());
            if (cJSON_AddItemToArray(list.get(), item) == 0) {
                cJSON_Delete(item);
                return static_cast<cJSON*>(nullptr);
            }
        }
        return list.release();
    },
};

namespace {

std::size_t Find(const OperationTable& table, std::size_t expected, const char* key)
{
    for (std::size_t tried = 0; tried < table.count; ++tried) {
        const std::size_t i = (expected + tried) % table.count;
        if (std::strcmp(table.fields[i].key, key) == 0) {
            return i;
        }
    }
    return table.count;
}

} // namespace

void OperationBase::Parse(const cJSON* node)
{
    if (node == nullptr) {
        return;
    }
    const OperationTable& table = Table();
    // The structure's one base stands at its start.
    char* const start = reinterpret_cast<char*>(this);
    present = 0;
    for (std::size_t i = 0; i < table.count; ++i) {
        if (table.fields[i].operations->clear != nullptr) {
            table.fields[i].operations->clear(start + table.fields[i].offset);
        }
    }
    std::size_t expected = 0;
    for (const cJSON* child = node->child; child != nullptr; child = child->next) {
        const std::size_t index = Find(table, expected, child->string);
        if (index < table.count && (present >> index & 1U) == 0) {
            present |= std::uint64_t{1} << index;
            table.fields[index].operations->read(start + table.fields[index].offset, child);
            expected = index + 1;
        }
    }
}

cJSON* OperationBase::ToJson() const
{
    const OperationTable& table = Table();
    const char* const start = reinterpret_cast<const char*>(this);
    Tree object(cJSON_CreateObject());
    for (std::size_t i = 0; i < table.count; ++i) {
        const OperationField& field = table.fields[i];
        if (!IsLeftOut(field.key) && !Add(object, field.key, field.operations->write(start + field.offset))) {
            return nullptr;
        }
    }
    return object.release();
}
