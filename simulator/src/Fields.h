#pragma once

#include <utility>

#include "src/Json.h"

namespace nexwire::simulator {

/// Builds or changes an object member by member.
class Fields {
public:
    explicit Fields(Allocator& memory) : memory_(memory), own_(rapidjson::kObjectType), object_(&own_) {}
    Fields(Json& object, Allocator& memory) : memory_(memory), object_(&object) {}

    Fields& Text(std::string_view key, std::string_view text) { return Value(key, MakeText(text, memory_)); }
    Fields& Number(std::string_view key, std::int64_t number) { return Value(key, Json(number)); }
    Fields& Flag(std::string_view key, bool flag) { return Value(key, Json(flag)); }
    Fields& Value(std::string_view key, Json value)
    {
        SetMember(*object_, key, std::move(value), memory_);
        return *this;
    }
    /// As another object has it; nothing where it has not.
    Fields& Same(std::string_view key, const Json& other)
    {
        const Json* value = Member(other, key);
        return value == nullptr ? *this : Value(key, Copy(*value, memory_));
    }
    Json Take() { return std::move(own_); }

private:
    Allocator& memory_;
    Json own_;
    Json* object_;
};

} // namespace nexwire::simulator
