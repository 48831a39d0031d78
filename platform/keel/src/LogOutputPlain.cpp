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

namespace Keel {
namespace details {
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
        : m_console(config.console), m_file(std::filesystem::u8path(config.file)), m_maxFileBytes(config.maxFileBytes),
          m_maxBackups(config.maxBackups)
    {
        if (!m_file.empty()) {
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
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_console) {
            std::fwrite(text.data(), 1, text.size(), stderr);
        }
        if (m_file.empty()) {
            return;
        }
        if (m_written >= m_maxFileBytes) {
            RollOver();
        }
        m_stream.clear(); // A full disk may have room again.
        m_stream.write(text.data(), static_cast<std::streamsize>(text.size()));
        m_stream.flush();
        m_written += text.size();
    }

private:
    void Open()
    {
        m_stream.open(m_file, std::ios::binary | std::ios::app);
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(m_file, error);
        m_written = error ? 0 : size;
    }

    std::filesystem::path Backup(std::int32_t number) const
    {
        std::filesystem::path backup = m_file;
        backup += "." + std::to_string(number);
        return backup;
    }

    void RollOver()
    {
        m_stream.close(); // An open file cannot be renamed everywhere.
        std::error_code ignored;
        std::filesystem::remove(Backup(m_maxBackups), ignored);
        for (std::int32_t number = m_maxBackups; number > 1; --number) {
            std::filesystem::rename(Backup(number - 1), Backup(number), ignored);
        }
        std::filesystem::rename(m_file, Backup(1), ignored);
        MakePrivateFile(m_file.u8string());
        Open();
    }

    const bool m_console;
    const std::filesystem::path m_file;
    const std::uint64_t m_maxFileBytes;
    const std::int32_t m_maxBackups;
    std::mutex m_mutex;
    std::ofstream m_stream;
    std::uint64_t m_written = 0;
};

} // namespace

std::unique_ptr<LogOutput> OpenLogOutput(const LogConfig& config)
{
    return std::make_unique<PlainOutput>(config);
}

void WarmUpLogOutput() {}

} // namespace details
} // namespace Keel
