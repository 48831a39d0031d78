#pragma once

#include <string>

#include <cjson/cJSON.h>

#include "core/FieldLayout.h"

namespace test {

/// A JSON object with a distinct value under every key, two levels deep.
inline cJSON* Filled(const nexwire::core::FieldTable& table, int& counter, int depth)
{
    using nexwire::core::Kind;
    cJSON* object = cJSON_CreateObject();
    for (const nexwire::core::Field& field : table) {
        ++counter;
        cJSON* value = nullptr;
        switch (field.kind) {
        case Kind::Text:
            value = cJSON_CreateString((std::string("text \xE9\x97\xA8 ") + std::to_string(counter)).c_str());
            break;
        case Kind::Int:
        case Kind::Int64:
            value = cJSON_CreateNumber(counter);
            break;
        case Kind::Real:
            value = cJSON_CreateNumber(counter + 0.25);
            break;
        case Kind::Bool:
            value = cJSON_CreateBool(counter % 2);
            break;
        case Kind::Struct:
            value = depth > 4 ? cJSON_CreateObject() : Filled(*field.ops->fields, counter, depth + 1);
            break;
        case Kind::TextList:
            value = cJSON_CreateArray();
            cJSON_AddItemToArray(value, cJSON_CreateString(std::to_string(counter).c_str()));
            break;
        case Kind::IntList:
            value = cJSON_CreateIntArray(&counter, 1);
            break;
        case Kind::StructList:
            value = cJSON_CreateArray();
            for (int i = 0; i < 2 && depth < 4; ++i) {
                cJSON_AddItemToArray(value, Filled(*field.ops->fields, counter, depth + 1));
            }
            break;
        }
        cJSON_AddItemToObject(object, field.key, value);
    }
    return object;
}

} // namespace test
