#include "LogOutput.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <sstream>
#include <system_error>
#include <thread>

#include "keel/PrivateFile.h"

namespace Keel::details {
namespace {

std::string LocalTime()
{
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &seconds);
#else
    localtime_r(&seconds, &local);
#endif
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    char date[32];
    std::strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", &local);
    char whole[64];
    std::snprintf(whole, sizeof whole, "%s.%03d", date, static_cast<int>(ms));
    return whole;
}

class PlainOutput : public LogOutput {
public:
    explicit PlainOutput(const LogConfig& config)
        : console_(config.console), file_(std::filesystem::u8path(config.file)), maxFileBytes_(config.maxFileBytes),
          maxBackups_(config.maxBackups)
    {
        if (!file_.empty()) {
            Open();
        }
    }

    void Write(LogLevel level, const std::string& name, const std::string& message,
               const log4cxx::spi::LocationInfo& where) override
    {
        std::ostringstream line;
        line << LocalTime() << (level == LogLevel::Error ? " ERROR [" : " INFO  [") << std::this_thread::get_id()
             << "] " << name << ' ' << message << " [" << where.getFileName() << ':' << where.getLineNumber() << ' '
             << where.getMethodName() << "]\n";
        const std::string text = line.str();
        const std::lock_guard<std::mutex> lock(mutex_);
        if (console_) {
            std::fwrite(text.data(), 1, text.size(), stderr);
        }
        if (file_.empty()) {
            return;
        }
        if (written_ >= maxFileBytes_) {
            RollOver();
        }
        stream_.clear(); // A full disk may have room again.
        stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
        stream_.flush();
        written_ += text.size();
    }

private:
    void Open()
    {
        stream_.open(file_, std::ios::binary | std::ios::app);
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(file_, error);
        written_ = error ? 0 : size;
    }

    std::filesystem::path Backup(std::int32_t number) const
    {
        std::filesystem::path backup = file_;
        backup += "." + std::to_string(number);
        return backup;
    }

    void RollOver()
    {
        stream_.close(); // An open file cannot be renamed everywhere.
        std::error_code ignored;
        std::filesystem::remove(Backup(maxBackups_), ignored);
        for (std::int32_t number = maxBackups_; number > 1; --number) {
            std::filesystem::rename(Backup(number - 1), Backup(number), ignored);
        }
        std::filesystem::rename(file_, Backup(1), ignored);
        MakePrivateFile(file_.u8string());
        Open();
    }

    const bool console_;
    const std::filesystem::path file_;
    const std::uint64_t maxFileBytes_;
    const std::int32_t maxBackups_;
    std::mutex mutex_;
    std::ofstream stream_;
    std::uint64_t written_ = 0;
};

} // namespace

std::unique_ptr<LogOutput> OpenLogOutput(const LogConfig& config)
{
    return std::make_unique<PlainOutput>(config);
}

void WarmUpLogOutput() {}

} // namespace Keel::details
