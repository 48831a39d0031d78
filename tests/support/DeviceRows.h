#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "nexwire/ParseJSONUtil.h"
#include "protocol/PassThrough.h"
#include "support/StubExecutor.h"

// Rows of a device command table, checked for what reaches the executor and what comes of the answer:
//
//   test::CheckDeviceRows({
//       DEVICE_GET(AcsParamConfig, getNFCConfigRequest, NFCCfg, test::kExternal, 2223, "nFCCfg", "enable"),
//       DEVICE_SET(AcsParamConfig, setNFCConfigRequest, nfc, test::kExternal, 4141, "nFCCfg", "\"readTimeout\":\t900"),
//   });
//
// Members with more arguments go in as lambdas through DeviceGetRow and DeviceSetRow.

namespace test {

const std::string kExternal = "/7730/v1/deviceManagement/devices/";
const std::string kInternal = "/7730/v1/internal/deviceManagement/devices/";

struct DeviceRow {
    struct Outcome {
        bool success;
        bool filled;    ///< The member named by `key` was in the answer.
        bool untouched; ///< The output is as it was before.
    };

    std::string name;
    std::string prefix; ///< Of the path.
    int command;
    std::string condition;
    std::function<Outcome(const std::string& deviceGuid)> call;
    std::string root;
    std::string key;      ///< Gets: a member of the structure.
    std::string fragment; ///< Sets: text that the input must hold.
    std::string input;    ///< Sets: the whole input.
};

/// A get with `call(output, deviceGuid)`.
template <class Structure, class Call>
DeviceRow DeviceGetRow(std::string name, Call call, std::string prefix, int command, std::string root, std::string key,
                       std::string condition = "")
{
    const auto run = [call, root, key](const std::string& deviceGuid) {
        Structure output;
        const std::string before = protocol::SerializeRequest(output);
        const bool success = call(output, deviceGuid);
        return DeviceRow::Outcome{success, output.IsPresent(key),
                                  !output.IsPresent(key) && protocol::SerializeRequest(output) == before};
    };
    return {std::move(name),
            std::move(prefix),
            command,
            std::move(condition),
            run,
            std::move(root),
            std::move(key),
            "",
            ""};
}

/// A set with `call(input, deviceGuid)`.
template <class Structure, class Call>
DeviceRow DeviceSetRow(std::string name, Call call, Structure input, std::string prefix, int command, std::string root,
                       std::string fragment, std::string condition = "")
{
    std::string text = protocol::SerializeRequest(input);
    const auto run = [call, input](const std::string& deviceGuid) {
        return DeviceRow::Outcome{call(input, deviceGuid), false, true};
    };
    return {std::move(name),     std::move(prefix), command, std::move(condition), run, std::move(root), "",
            std::move(fragment), std::move(text)};
}

#define DEVICE_GET(Class, function, Structure, ...)                                                                    \
    test::DeviceGetRow<protocol::Structure>(#Class "::" #function, &nexwire::Class::function, __VA_ARGS__)
#define DEVICE_SET(Class, function, input, ...)                                                                        \
    test::DeviceSetRow(#Class "::" #function, &nexwire::Class::function, input, __VA_ARGS__)

/// An envelope that carries a device's answer.
inline std::string DeviceAnswer(const std::string& outBuffer)
{
    std::string escaped;
    for (const char c : outBuffer) {
        if (c == '"' || c == '\\') {
            escaped += '\\';
        }
        escaped += c;
    }
    return R"({"code":"0-0","msg":"","data":{"dagPassThroughRsp":{"outBuffer":")" + escaped +
           R"(","statusBuffer":""}}})";
}

inline void CheckDeviceRow(Wire& wire, const DeviceRow& row, const std::string& deviceGuid)
{
    const std::size_t sent = wire.requests.size();
    const DeviceRow::Outcome outcome = row.call(deviceGuid);
    EXPECT_TRUE(outcome.success);
    ASSERT_EQ(wire.requests.size(), sent + 1);
    const nexwire::RequestParams& request = wire.Last();
    EXPECT_EQ(request.url, row.prefix + deviceGuid + "/dagPassThrough");
    EXPECT_EQ(request.method, 2);
    EXPECT_EQ(request.timeoutMs, 40000);
    EXPECT_TRUE(request.headers.empty() && request.params.empty());

    protocol::DagPassThroughReq body;
    ASSERT_TRUE(protocol::TParseJSONStr(body, request.body)) << request.body;
    EXPECT_EQ(body.command, row.command);
    EXPECT_EQ(body.condBuffer, row.condition);
    EXPECT_EQ(body.inBuffer, row.input);
    if (row.key.empty()) {
        EXPECT_EQ(body.inBuffer.find("{\n\t\"" + row.root + "\":\t{\n\t\t\""), 0U) << body.inBuffer;
        EXPECT_NE(body.inBuffer.find(row.fragment), std::string::npos) << body.inBuffer;
    } else {
        EXPECT_TRUE(outcome.filled) << "not read: " << row.key;
    }
}

/// Checks every row with hostile identifiers, and every get with answers that do not hold its structure.
inline void CheckDeviceRows(const std::vector<DeviceRow>& rows)
{
    Library library;
    for (const DeviceRow& row : rows) {
        SCOPED_TRACE(row.name);
        library.wire.otherwise = DeviceAnswer("{\"" + row.root + "\":{\"" + row.key + "\":null}}");
        for (const std::string& id : HostileIds()) {
            CheckDeviceRow(library.wire, row, id);
        }
        if (row.key.empty()) {
            continue;
        }
        for (const std::string& outBuffer :
             {std::string(), std::string("{}"), "{\"X" + row.root + "\":{\"" + row.key + "\":null}}",
              "{\"" + row.root + "\":{\"" + row.key + "\":null}", "{\"" + row.key + "\":null}"}) {
            library.wire.otherwise = DeviceAnswer(outBuffer);
            const DeviceRow::Outcome outcome = row.call("d");
            EXPECT_FALSE(outcome.success) << outBuffer;
            EXPECT_TRUE(outcome.untouched) << outBuffer;
        }
    }
}

} // namespace test
