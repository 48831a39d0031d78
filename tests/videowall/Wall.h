#pragma once

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <keel/Error.h>
#include <keel/Log.h>

#include "nexwire/VideoWall/VideoWall.h"
#include "support/RawServer.h"

namespace wall_test {

using nexwire::CTWDeviceCommon;

/// One line of the log without time, thread and place: "INFO text" or "ERROR text".
using Lines = std::vector<std::string>;

inline Keel::details::CLog& Log()
{
    return Keel::CSingleton<Keel::details::CLog>::Instance();
}

inline void NoLog()
{
    Keel::details::LogConfig config;
    config.level = Keel::details::LogLevel::Off;
    EXPECT_TRUE(Log().Configure(config));
}

/// The log in a file of its own for as long as it lives.
class LogFile {
public:
    explicit LogFile(bool redact)
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        path_ = ::testing::TempDir() + "nexwire-" + info->test_suite_name() + "-" + info->name() + ".log";
        std::filesystem::remove(path_);
        Keel::details::LogConfig config;
        config.level = Keel::details::LogLevel::Info;
        config.console = false;
        config.file = path_;
        config.redact = redact;
        EXPECT_TRUE(Log().Configure(config));
    }
    ~LogFile()
    {
        NoLog();
        std::filesystem::remove(path_);
    }
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    std::string Text() const
    {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// The lines that have come since the last call.
    Lines NewLines()
    {
        const std::string text = Text();
        Lines lines;
        while (read_ < text.size()) {
            const std::size_t end = text.find('\n', read_);
            const std::string line = text.substr(read_, end - read_);
            const std::size_t level = line.find(' ', line.find(' ') + 1) + 1;
            const std::size_t message = line.find(" root ") + 6;
            const std::size_t place = line.rfind(" [", line.rfind(".cpp:"));
            lines.push_back(line.substr(level, line.find(' ', level) - level) + " " +
                            line.substr(message, place - message));
            read_ = end + 1;
        }
        return lines;
    }

private:
    std::string path_;
    std::size_t read_ = 0;
};

/// A scripted service that the library talks to.
class Wall : public ::testing::Test {
protected:
    Wall()
    {
        NoLog();
        CTWDeviceCommon::init("127.0.0.1", std::to_string(server.Port()));
    }

    /// The answer that every request gets from now on.
    void Answer(const std::string& body) { server.SetDefault(test_support::Reply::Json(body)); }

    test_support::RawServer server;
};

/// The last error as "code module message".
inline std::string LastError()
{
    const nexwire::TWErrorInfo error = CTWDeviceCommon::getLastError();
    return std::to_string(error.code) + " " + std::to_string(error.module) + " " + error.message;
}

constexpr char kNetworkError[] = "99999 0 网络异常，请稍后再试。";

} // namespace wall_test
