#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <keel/Error.h>
#include <keel/Log.h>

#include "loopback/RawServer.h"
#include "nexwire/VideoWall/VideoWall.h"
#include "support/LogCapture.h"

namespace wall_test {

using nexwire::CTWDeviceCommon;

using LogFile = test::LogCapture;
using Lines = std::vector<std::string>;

inline void NoLog()
{
    Keel::details::LogConfig config;
    config.level = Keel::details::LogLevel::Off;
    EXPECT_TRUE(Keel::CSingleton<Keel::details::CLog>::Instance().Configure(config));
}

/// A scripted service that the library talks to.
class Wall : public ::testing::Test {
protected:
    Wall()
    {
        NoLog();
        CTWDeviceCommon::init("127.0.0.1", std::to_string(server.Port()));
    }

    /// The answer that every request gets from now on.
    void Answer(const std::string& body) { server.SetDefault(nexwire::loopback::Reply::Json(body)); }

    nexwire::loopback::RawServer server;
};

/// The last error as "code module message".
inline std::string LastError()
{
    const nexwire::TWErrorInfo error = CTWDeviceCommon::getLastError();
    return std::to_string(error.code) + " " + std::to_string(error.module) + " " + error.message;
}

constexpr char kNetworkError[] = "99999 0 网络异常，请稍后再试。";

} // namespace wall_test
