#pragma once

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <keel/GuidUtil.h>
#include <keel/Log.h>

namespace test {

/// Sends the log to a file of its own, errors and infos, as long as it lives.
class LogCapture {
public:
    explicit LogCapture(bool redact = true)
        : path_(std::filesystem::temp_directory_path() / ("nexwire-" + Keel::GuidUtil::CreateGuid() + ".log"))
    {
        Keel::details::LogConfig config;
        config.level = Keel::details::LogLevel::Info;
        config.console = false;
        config.file = path_.string();
        config.redact = redact;
        EXPECT_TRUE(Log().Configure(config));
    }
    ~LogCapture()
    {
        Keel::details::LogConfig quiet;
        quiet.console = false;
        Log().Configure(quiet);
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::string Text() const
    {
        std::ostringstream text;
        text << std::ifstream(path_, std::ios::binary).rdbuf();
        return text.str();
    }

    /// What has been logged since the last call, without time, thread and place: "INFO text" or "ERROR text".
    std::vector<std::string> NewLines()
    {
        const std::string text = Text();
        std::vector<std::string> lines;
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

    /// How often `part` was logged.
    std::size_t Count(const std::string& part) const
    {
        const std::string text = Text();
        std::size_t count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
            ++count;
        }
        return count;
    }

private:
    static Keel::details::CLog& Log() { return Keel::CSingleton<Keel::details::CLog>::Instance(); }

    std::filesystem::path path_;
    std::size_t read_ = 0;
};

} // namespace test
