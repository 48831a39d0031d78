#pragma once

#include <functional>
#include <memory>
#include <string>

#include <cjson/cJSON.h>

#include "core/JsonTree.h"
#include "nexwire/JSONStruct.h"
#include "support/StubExecutor.h"

namespace test {

/// JSON without white space, so that expectations can be written in one line; "" for what is not JSON.
inline std::string Compact(const cJSON* node)
{
    std::string text;
    if (char* const printed = cJSON_PrintUnformatted(node)) {
        text = printed;
        cJSON_free(printed);
    }
    return text;
}

inline std::string Compact(const std::string& json)
{
    const nexwire::core::JsonTree tree(cJSON_Parse(json.c_str()));
    return tree.get() == nullptr ? "" : Compact(tree.get());
}

inline std::string Compact(const protocol::IJSONStruct& structure)
{
    const nexwire::core::JsonTree tree(structure.ToJson());
    return Compact(tree.get());
}

/// A pattern with the identifier in the place of every '*'.
inline std::string With(const std::string& pattern, const std::string& id)
{
    std::string text;
    for (const char c : pattern) {
        c == '*' ? text.append(id) : text.append(1, c);
    }
    return text;
}

/// What one request function is to send, and how what it read can be looked at.
struct Vector {
    std::string name;
    std::string where;                                     ///< Path, or route of a device command.
    int code = 0;                                          ///< Method code, or device command.
    std::string body;                                      ///< Compact; "" for none.
    std::string answer;                                    ///< Compact; what the result is read from, "" for no result.
    std::function<bool(const std::string& id)> call;       ///< Runs the function with an identifier.
    std::function<std::string()> held = [] { return ""; }; ///< Compact form of what the last calls left behind.
};

/// A vector of a function with a result: `call(result, id)`.
template <class Result, class Call>
Vector Reading(std::string name, std::string where, int code, std::string body, std::string answer, Call call)
{
    const auto result = std::make_shared<Result>();
    return {std::move(name),
            std::move(where),
            code,
            std::move(body),
            std::move(answer),
            [result, call](const std::string& id) { return call(*result, id); },
            [result] { return Compact(*result); }};
}

} // namespace test
