#pragma once

#include <chrono>
#include <cstdint>
#include <ostream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "loopback/RawServer.h"
#include "nexwire/host/HostError.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include <keel/Error.h>

namespace host_test {

using namespace std::chrono_literals;
using namespace nexwire::loopback;
using nexwire::RequestParams;
using nexwire::RspInfos;
using nexwire::host::HostError;
using nexwire::host::HttpExecutorOptions;
using nexwire::host::HttpRequestExecutor;
using nexwire::host::kHostErrorCategory;
using nexwire::host::kHttpStatusCategory;

/// What one call came back with.
struct Outcome {
    bool answered = false;
    RspInfos response;
    Keel::Error::ErrorCode error; ///< No error when the call did not set one.
    std::chrono::milliseconds took{0};
};

inline Outcome Call(nexwire::IRequestExecutor& executor, const RequestParams& request)
{
    Keel::Error::SetLastError({});
    Outcome outcome;
    outcome.response.headers["stale"] = "stale";
    outcome.response.body = "stale";
    const auto begin = std::chrono::steady_clock::now();
    outcome.answered = executor.Execute(outcome.response, request, 1);
    outcome.took = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
    outcome.error = Keel::Error::GetLastError();
    return outcome;
}

inline RequestParams Request(std::int32_t method, const std::string& path, const std::string& body = {},
                             std::int32_t timeoutMs = 10000)
{
    RequestParams request(path, method, body);
    request.timeoutMs = timeoutMs;
    return request;
}

inline HttpExecutorOptions At(const std::string& base)
{
    HttpExecutorOptions options;
    options.baseAddress = base;
    return options;
}

inline HttpExecutorOptions At(std::uint16_t port)
{
    return At("http://127.0.0.1:" + std::to_string(port));
}

inline void ExpectAnswer(const Outcome& outcome, const std::string& body)
{
    EXPECT_TRUE(outcome.answered) << outcome.error.text;
    EXPECT_EQ(outcome.response.body, body);
    EXPECT_EQ(outcome.error.category, 0) << outcome.error.text;
}

/// A failure without an answer: the error, a part of its text, and nothing left in the response.
inline void ExpectFailure(const Outcome& outcome, HostError error, const std::string& part = {})
{
    EXPECT_FALSE(outcome.answered);
    EXPECT_EQ(outcome.error.category, kHostErrorCategory) << outcome.error.text;
    EXPECT_EQ(outcome.error.number, static_cast<std::int32_t>(error)) << outcome.error.text;
    EXPECT_THAT(outcome.error.text, testing::HasSubstr(part));
    EXPECT_TRUE(outcome.response.headers.empty());
    EXPECT_EQ(outcome.response.body, "");
}

} // namespace host_test
