#pragma once

#include <cstdint>
#include <string>

#include "catalogue/Types.h"

namespace nexwire::tools {

/// One object of JSON, put together member by member.
class JsonObject {
public:
    JsonObject& Json(const char* key, const std::string& json)
    {
        text_ += (text_.empty() ? "\"" : ",\"") + std::string(key) + "\":" + json;
        return *this;
    }
    JsonObject& Text(const char* key, const std::string& value) { return Json(key, catalogue::WriteText(value)); }
    JsonObject& Number(const char* key, std::int64_t value) { return Json(key, std::to_string(value)); }
    JsonObject& Bool(const char* key, bool value) { return Json(key, value ? "true" : "false"); }

    std::string Done() const { return "{" + text_ + "}"; }

private:
    std::string text_;
};

/// The JSON of several values as one array.
template <class Values, class ToJson>
std::string JsonArray(const Values& values, const ToJson& toJson)
{
    std::string text;
    for (const auto& value : values) {
        text += (text.empty() ? "" : ",") + toJson(value);
    }
    return "[" + text + "]";
}

} // namespace nexwire::tools
