#include <cstdlib>
#include <thread>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TempFolder.h"
#include <keel/Error.h>
#include <keel/Log.h>
#include <keel/StringUtil.h>

namespace {

using namespace Keel;
using details::CLog;
using details::LogConfig;
using details::LogLevel;
using testing::HasSubstr;
using testing::Not;

CLog& Log()
{
    return CSingleton<CLog>::Instance();
}

/// Destroyed after everything that main and the logger have made.
struct SpeaksLate {
    ~SpeaksLate()
    {
        if (speaks) {
            Log().Error("", "late {\"password\":\"hunter2\"} 中文", LOG4CXX_LOCATION);
            Log().Info("", "late info", LOG4CXX_LOCATION);
            Log().Configure(LogConfig());
        }
    }
    bool speaks = false;
} s_late;

/// Runs in a new process, so the logger is as at start-up, and what goes to stderr can be seen.
class LogProcess : public testing::Test {
protected:
    void SetUp() override { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST_F(LogProcess, UnconfiguredErrorsGoToStderrAndNothingElse)
{
    const auto run = [] {
        Log().Info("", "an info", LOG4CXX_LOCATION);
        Log().Error("", "an error 中文 {\"token\":\"hunter2\"}", LOG4CXX_LOCATION);
        std::exit(Log().IsErrorEnabled("") && !Log().IsInfoEnabled("") ? 0 : 1);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0),
                testing::AllOf(HasSubstr("ERROR"), HasSubstr("root an error 中文 {\"token\":\"***\"} ["),
                               HasSubstr("LogTest.cpp:"), Not(HasSubstr("an info")), Not(HasSubstr("hunter2"))));
}

TEST_F(LogProcess, ErrorsOfStaticDestructorsStillCome)
{
    const auto run = [] {
        s_late.speaks = true;
        LogConfig config;
        config.level = LogLevel::Info;
        Log().Configure(config);
        Log().Error("", "early", LOG4CXX_LOCATION);
        std::exit(0);
    };
#ifdef _WIN32
    // A program's end before those of its DLLs, so the log is still whole.
    const auto info = HasSubstr("late info");
#else
    const auto info = Not(HasSubstr("late info"));
#endif
    EXPECT_EXIT(run(), testing::ExitedWithCode(0),
                testing::AllOf(HasSubstr("early"), HasSubstr("late {\"password\":\"***\"} 中文"), info,
                               Not(HasSubstr("hunter2"))));
}

TEST_F(LogProcess, ThreadsThatLogOnWhileTheProcessExits)
{
    const auto run = [] {
        LogConfig config;
        config.level = LogLevel::Info;
        config.console = false;
        const TempFolder folder;
        config.file = folder.File("log");
        Log().Configure(config);
        for (int i = 0; i < 4; ++i) {
            std::thread([] {
                for (;;) {
                    Log().Info("worker", "busy", LOG4CXX_LOCATION);
                }
            }).detach();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        folder.Remove(); // The file lives on until it is closed.
        std::exit(0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

class LogFile : public testing::Test {
protected:
    LogFile()
    {
        config_.level = LogLevel::Info;
        config_.console = false;
        config_.file = folder_.File("门禁.log");
    }
    ~LogFile() override { Log().Configure(LogConfig()); }

    std::vector<std::string> Lines(const std::string& name = "门禁.log") const
    {
        std::vector<std::string> lines = StringUtil::SplitString(folder_.Read(name), "\n");
        lines.pop_back();
        return lines;
    }

    TempFolder folder_;
    LogConfig config_;
};

TEST_F(LogFile, LevelsGateWhatIsWritten)
{
    const struct {
        LogLevel level;
        bool error, info;
    } rows[] = {{LogLevel::Off, false, false}, {LogLevel::Error, true, false}, {LogLevel::Info, true, true}};
    for (const auto& row : rows) {
        config_.level = row.level;
        config_.file = folder_.File(std::to_string(static_cast<int>(row.level)));
        ASSERT_TRUE(Log().Configure(config_));
        EXPECT_EQ(Log().IsErrorEnabled("a"), row.error);
        EXPECT_EQ(Log().IsInfoEnabled("a"), row.info);
        Log().Error("a", "e", LOG4CXX_LOCATION);
        Log().Info("a", "i", LOG4CXX_LOCATION);
        EXPECT_EQ(Lines(std::to_string(static_cast<int>(row.level))).size(), std::size_t{row.error} + row.info);
    }
    config_.file.clear();
    ASSERT_TRUE(Log().Configure(config_));
    EXPECT_FALSE(Log().IsErrorEnabled("")) << "there is nowhere to write to";
}

TEST_F(LogFile, ALineHasLevelNameMessageAndPlace)
{
    ASSERT_TRUE(Log().Configure(config_));
    Log().Info("some.name", "门禁 \xFF%s %m",
               log4cxx::spi::LocationInfo("dir/File.cpp", "File.cpp", "bool f(int)", 42));
    Log().Error("", "plain", log4cxx::spi::LocationInfo());
    const std::vector<std::string> lines = Lines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines[0],
                testing::AllOf(HasSubstr(" INFO "), HasSubstr("] some.name 门禁 ?%s %m ["), HasSubstr("File.cpp:42")));
    EXPECT_THAT(lines[1], testing::AllOf(HasSubstr(" ERROR "), HasSubstr("] root plain [")));
}

TEST_F(LogFile, SecretsAreReplacedUnlessSwitchedOff)
{
    const std::string message = R"([body - {"data":"{\"superPassword\":\"hunter2\",\"doorBadge\":\"sesame\"}"}])";
    ASSERT_TRUE(Log().Configure(config_));
    Log().Error("", message, LOG4CXX_LOCATION);
    config_.extraSecretKeys = {"doorBadge"};
    ASSERT_TRUE(Log().Configure(config_));
    Log().Info("", message, LOG4CXX_LOCATION);
    config_.redact = false;
    ASSERT_TRUE(Log().Configure(config_));
    Log().Info("", message, LOG4CXX_LOCATION);

    const std::vector<std::string> lines = Lines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_THAT(lines[0], HasSubstr(R"({"data":"{\"superPassword\":\"***\",\"doorBadge\":\"sesame\"}"})"));
    EXPECT_THAT(lines[1], HasSubstr(R"({"data":"{\"superPassword\":\"***\",\"doorBadge\":\"***\"}"})"));
    EXPECT_THAT(lines[2], HasSubstr(message));
}

// Otherwise a server could write entries of its own, or move the cursor of whoever reads the log.
TEST_F(LogFile, AMessageIsOneLineWithoutControlCharacters)
{
    ASSERT_TRUE(Log().Configure(config_));
    Log().Error("", "a\n2024-05-01 12:00:00.000 ERROR forged\r\tb\x1B[2Jc\x7F\xC2\x9B\xE2\x80\xA8\xE2\x80\xAE\\n门",
                LOG4CXX_LOCATION);
    const std::vector<std::string> lines = Lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines[0],
                HasSubstr(R"(a\n2024-05-01 12:00:00.000 ERROR forged\r\tb\x1B[2Jc\x7F\u009B\u2028\u202E\n门 [)"));
}

TEST_F(LogFile, AMessageIsCutAtTheCapWithoutItsSecrets)
{
    config_.maxMessageBytes = 100;
    ASSERT_TRUE(Log().Configure(config_));
    Log().Error("", std::string(100, 'x'), LOG4CXX_LOCATION);
    Log().Error("", std::string(99, 'x') + "门yy", LOG4CXX_LOCATION);
    Log().Error("", std::string(85, 'x') + "\"token\":\"hunter2 and more\"", LOG4CXX_LOCATION);
    config_.maxMessageBytes = details::LogConfig().maxMessageBytes;
    ASSERT_TRUE(Log().Configure(config_));
    Log().Error("", std::string(5U << 20U, 'x'), LOG4CXX_LOCATION);
    const std::vector<std::string> lines = Lines();
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_THAT(lines[0], HasSubstr(std::string(100, 'x') + " ["));
    EXPECT_THAT(lines[1], HasSubstr("root " + std::string(99, 'x') + "... [5 of 104 bytes left out] ["));
    EXPECT_THAT(lines[2], HasSubstr("x\"token\":\"***... ["));
    EXPECT_THAT(lines[2], Not(HasSubstr("hunt")));
    EXPECT_THAT(lines[3], HasSubstr("x... [4194304 of 5242880 bytes left out]"));
    EXPECT_LT(lines[3].size(), (1U << 20U) + 500);
}

#ifndef _WIN32
TEST_F(LogFile, FilesAreForTheirOwnerOnlyAndNoLinkIsFollowed)
{
    const mode_t former = umask(0);
    config_.maxFileBytes = 200;
    EXPECT_TRUE(Log().Configure(config_));
    for (int i = 0; i < 10; ++i) {
        Log().Info("", std::string(150, 'x'), LOG4CXX_LOCATION);
    }
    umask(former);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
        EXPECT_EQ(entry.status().permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write)
            << entry.path();
        ++files;
    }
    EXPECT_GE(files, 3U);

    LogConfig linked = config_;
    linked.file = folder_.File("link.log");
    std::filesystem::create_symlink(folder_.File("elsewhere"), linked.file);
    EXPECT_FALSE(Log().Configure(linked));
    EXPECT_FALSE(std::filesystem::exists(folder_.File("elsewhere")));
}
#endif

TEST_F(LogFile, RollsOverAndKeepsSoManyBackups)
{
    config_.file = folder_.File("100%i %d.log"); // Not a pattern.
    config_.maxFileBytes = 2000;
    config_.maxBackups = 2;
    ASSERT_TRUE(Log().Configure(config_));
    for (int i = 0; i < 200; ++i) {
        Log().Info("", "message " + std::to_string(i), LOG4CXX_LOCATION);
    }
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
        EXPECT_LT(entry.file_size(), 3000U);
        ++files;
    }
    EXPECT_EQ(files, 3U);
    EXPECT_THAT(Lines("100%i %d.log").back(), HasSubstr("message 199 "));
    EXPECT_FALSE(Lines("100%i %d.log.1").empty());
    EXPECT_FALSE(Lines("100%i %d.log.2").empty());
}

TEST_F(LogFile, AFailedConfigurationLeavesTheFormer)
{
    ASSERT_TRUE(Log().Configure(config_));
    LogConfig unwritable = config_;
    unwritable.file = folder_.File("missing/folder/log");
    LogConfig empty = config_;
    empty.maxFileBytes = 0;
    LogConfig many = config_;
    many.maxBackups = 13;
    LogConfig none = config_;
    none.maxBackups = 0;
    LogConfig unknown = config_;
    unknown.level = static_cast<LogLevel>(9);
    LogConfig mute = config_;
    mute.maxMessageBytes = 0;
    for (const LogConfig& config : {unwritable, empty, many, none, unknown, mute}) {
        Error::SetLastError(Error::ErrorCode());
        EXPECT_FALSE(Log().Configure(config));
        EXPECT_EQ(Error::GetLastError().category, Error::kKeelModule);
        EXPECT_EQ(Error::GetLastError().number, details::kLogNotConfigured);
        Log().Info("", "still here", LOG4CXX_LOCATION);
    }
    EXPECT_EQ(Lines().size(), 6U);
}

TEST_F(LogFile, ThreadsDoNotMixTheirLines)
{
    ASSERT_TRUE(Log().Configure(config_));
    constexpr int kThreads = 8;
    constexpr int kMessages = 200;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([t] {
            const std::string body(300, static_cast<char>('a' + t));
            for (int i = 0; i < kMessages; ++i) {
                Log().Info("", "<" + body + ">{\"token\":\"hunter2\"}", LOG4CXX_LOCATION);
            }
        });
    }
    for (int i = 0; i < 20; ++i) { // The same file opened anew must not lose a line.
        EXPECT_TRUE(Log().Configure(config_));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const std::vector<std::string> lines = Lines();
    EXPECT_EQ(lines.size(), std::size_t{kThreads * kMessages});
    for (const std::string& line : lines) {
        const std::size_t begin = line.find('<');
        ASSERT_NE(begin, std::string::npos) << line;
        ASSERT_EQ(line.substr(begin + 1, 300), std::string(300, line[begin + 1]));
        ASSERT_THAT(line.substr(begin + 301), testing::StartsWith(">{\"token\":\"***\"} ["));
    }
}

} // namespace
