#pragma once

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "core/FieldTable.h"
#include "core/JsonTree.h"
#include "nexwire/ParseJSONUtil.h"
#include "protocol/PassThrough/PassThrough.h"
#include "support/Filled.h"
#include "support/StubExecutor.h"

// One row per request function: what reaches the executor for it, and what comes of the answer. JSON is compared in
// the library's own layout, so rows may be written without white space.

namespace test {

inline const std::string kExternal = "/7730/v1/deviceManagement/devices/*/dagPassThrough";
inline const std::string kInternal = "/7730/v1/internal/deviceManagement/devices/*/dagPassThrough";

/// JSON as the library lays it out; "" for what is not JSON.
inline std::string Formatted(const std::string& json)
{
    const nexwire::core::JsonTree tree(cJSON_Parse(json.c_str()));
    return nexwire::core::PrintFormatted(tree.get());
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

struct RequestVector {
    std::string name;
    std::string path;                                ///< "*" stands for the identifier.
    int code;                                        ///< Method code, or the number of a device's command.
    std::string body;                                ///< What the platform receives, or the device; "" for nothing.
    std::string answer;                              ///< What the result is read from; "" for no result.
    std::function<bool(const std::string& id)> call; ///< Runs the function with an identifier.
    std::function<std::string()> held;               ///< What the last calls left in the result.
    std::string condition;                           ///< Beside a device's command.
};

/// For functions without a structure to send or to fill.
struct None {};

/// A row for `call(input, output, id)`, whose input is read from the row's body.
template <class Input, class Output, class Call>
RequestVector Row(std::string name, std::string path, int code, std::string body, std::string answer, Call call,
                  std::string condition = "")
{
    const auto output = std::make_shared<Output>();
    const auto run = [output, call, body](const std::string& id) {
        Input input;
        if constexpr (!std::is_same_v<Input, None>) {
            EXPECT_TRUE(protocol::TParseJSONStr(input, With(body, id))) << body;
        }
        return call(input, *output, id);
    };
    const auto held = [output]() -> std::string {
        if constexpr (std::is_same_v<Output, None>) {
            return "";
        } else if constexpr (std::is_base_of_v<protocol::IInboundData, Output>) {
            return protocol::SerializeRequest(*output);
        } else {
            return protocol::StructureToJSON(*output);
        }
    };
    return {std::move(name),     std::move(path), code, std::move(body), std::move(answer), run, held,
            std::move(condition)};
}

/// A structure with a value in every member, under its root name; `key` must be in it.
template <class Structure>
std::string Sample(const std::string& root, const std::string& key)
{
    int counter = 0;
    const nexwire::core::JsonTree tree(cJSON_CreateObject());
    cJSON_AddItemToObject(tree.get(), root.c_str(), Filled(Structure::kFields, counter, 0));
    std::string text = nexwire::core::PrintFormatted(tree.get());
    EXPECT_NE(text.find('"' + key + "\":"), std::string::npos) << root << " has no " << key;
    return text;
}

#define DEVICE_GET(Class, function, Structure, path, command, root, key)                                               \
    test::Row<test::None, protocol::Structure>(                                                                        \
        #Class "::" #function " " #Structure, path, command, "", test::Sample<protocol::Structure>(root, key),         \
        [](auto&, auto& output, auto& id) { return nexwire::Class::function(output, id); })
#define DEVICE_SET(Class, function, Structure, path, command, root, key)                                               \
    test::Row<protocol::Structure, test::None>(                                                                        \
        #Class "::" #function " " #Structure, path, command, test::Sample<protocol::Structure>(root, key), "",         \
        [](auto& input, auto&, auto& id) { return nexwire::Class::function(input, id); })

/// The platform's envelope around a device's answer.
inline std::string DeviceAnswer(const std::string& outBuffer, const std::string& statusBuffer = "")
{
    protocol::DagPassThroughRspData data;
    data.dagPassThroughRsp.outBuffer = outBuffer;
    data.dagPassThroughRsp.statusBuffer = statusBuffer;
    return R"({"code":"0-0","msg":"","data":)" + protocol::StructureToJSON(data) + "}";
}

/// Runs a row and checks all of its request but the body.
inline nexwire::RequestParams Sent(Wire& wire, const RequestVector& row, int method, const std::string& id)
{
    wire.requests.clear();
    EXPECT_TRUE(row.call(id));
    EXPECT_EQ(wire.requests.size(), 1u);
    nexwire::RequestParams request = wire.requests.empty() ? nexwire::RequestParams("", -1) : wire.Last();
    EXPECT_EQ(request.url, With(row.path, id));
    EXPECT_EQ(request.method, method);
    EXPECT_EQ(request.timeoutMs, 40000);
    EXPECT_TRUE(request.headers.empty() && request.params.empty());
    return request;
}

/// Requests of the platform, with every hostile identifier.
inline void CheckRequests(const std::vector<RequestVector>& rows)
{
    for (const RequestVector& row : rows) {
        EXPECT_FALSE(row.call("id")) << row.name << " before the library's start";
        Library library;
        for (const std::string& id : HostileIds()) {
            SCOPED_TRACE(row.name + " with \"" + id + "\"");
            EXPECT_EQ(Sent(library.wire, row, row.code, id).body, Formatted(With(row.body, id)));
        }
    }
}

/// Commands of devices: what they send, and what answers fill or leave alone.
inline void CheckDeviceCommands(const std::vector<RequestVector>& rows)
{
    for (const RequestVector& row : rows) {
        const bool set = row.answer.empty();
        const std::string before = row.held();
        Library library;
        // A set asks no more of the device's text than that it came.
        for (const std::string& text : {std::string(), std::string("null"), row.answer + "x",
                                        row.answer.substr(0, row.answer.size() / 2), std::string(R"({"X":{}})")}) {
            SCOPED_TRACE(row.name + " answered " + text);
            library.wire.AnswerWith(DeviceAnswer(text));
            EXPECT_EQ(row.call("id"), set);
            EXPECT_EQ(row.held(), before);
        }
        library.wire.AnswerWith("<html>");
        library.wire.Fail();
        EXPECT_FALSE(row.call("id") || row.call("id")) << row.name;
        EXPECT_EQ(row.held(), before) << row.name;

        library.wire.otherwise = DeviceAnswer(row.answer);
        for (const std::string& id : HostileIds()) {
            SCOPED_TRACE(row.name + " with \"" + id + "\"");
            protocol::DagPassThroughReq request;
            EXPECT_TRUE(protocol::TParseJSONStr(request, Sent(library.wire, row, 2, id).body));
            EXPECT_EQ(request.command, row.code);
            EXPECT_EQ(request.condBuffer, row.condition);
            EXPECT_EQ(request.inBuffer, Formatted(row.body));
            EXPECT_EQ(row.held(), Formatted(row.answer));
        }
    }
}

} // namespace test
