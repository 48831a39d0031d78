#include "keel/Log.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <mutex>
#include <shared_mutex>
#include <system_error>
#include <thread>

#include "keel/Error.h"
#include "keel/PrivateFile.h"
#include "keel/Redact.h"
#include "keel/SingletonImpl.h"
#include "keel/StringUtil.h"

#include "LogOutput.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace Keel {
namespace details {
namespace {

constexpr std::int32_t kMaxBackups = 12;

/// Where messages go, as one configuration has it.
class Sink {
public:
    explicit Sink(const LogConfig& config) : console_(config.console), maxMessageBytes_(config.maxMessageBytes)
    {
        if (config.redact) {
            redactor_ = std::make_unique<CRedactor>(config.extraSecretKeys);
        }
        output_ = OpenLogOutput(config);
    }
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    void Write(LogLevel level, const std::string& name, const std::string& message,
               const log4cxx::spi::LocationInfo& where)
    {
        output_->Write(level, name.empty() ? "root" : name, Shown(message), where);
    }

    /// Writes by itself, when what else writes is going or gone.
    void WriteLate(const std::string& message)
    {
        if (console_) {
            const std::string line = "ERROR " + Shown(message) + "\n";
            std::fwrite(line.data(), 1, line.size(), stderr);
        }
    }

    void Close() { output_.reset(); }

private:
    /// The message as it may be read: not longer than the cap, without secrets, on one line.
    std::string Shown(const std::string& message) const
    {
        std::string shown;
        if (message.size() > maxMessageBytes_) {
            auto end = static_cast<std::size_t>(maxMessageBytes_);
            while (end > 0 && (static_cast<unsigned char>(message[end]) & 0xC0U) == 0x80U) {
                --end; // Not within a character.
            }
            // What the cut leaves of a secret is replaced as well.
            const std::string part(message, 0, end);
            shown = redactor_ ? redactor_->Redact(part) : part;
            shown += "... [" + std::to_string(message.size() - end) + " of " + std::to_string(message.size()) +
                     " bytes left out]";
        } else if (!redactor_ || !redactor_->Redact(message, shown)) {
            return StringUtil::SingleLine(message);
        }
        return StringUtil::SingleLine(shown);
    }

    bool console_;
    std::uint64_t maxMessageBytes_;
    std::unique_ptr<CRedactor> redactor_;
    std::unique_ptr<LogOutput> output_;
};

/// Shared by the threads that log, exclusive while the configuration changes and at exit. Who waits for exclusive use
/// goes first: the standard's and Boost's shared mutexes may keep process exit waiting for as long as others log.
class Turnstile {
public:
    void lock()
    {
        ++waiting_;
        mutex_.lock();
        --waiting_;
    }
    void unlock() { mutex_.unlock(); }
    void lock_shared()
    {
        while (waiting_ != 0) {
            std::this_thread::yield();
        }
        mutex_.lock_shared();
    }
    void unlock_shared() { mutex_.unlock_shared(); }

private:
    std::atomic<int> waiting_{0};
    std::shared_mutex mutex_;
};

/// Whether the process ends and the system has killed all threads but this one, which on Windows comes before the
/// libraries' static objects go. A lock that one of them held is never released.
bool OthersAreKilled()
{
#ifdef _WIN32
    using Ends = BOOLEAN(WINAPI*)();
    const FARPROC ends = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlDllShutdownInProgress");
    return ends != nullptr && reinterpret_cast<Ends>(reinterpret_cast<void*>(ends))() != FALSE;
#else
    return false;
#endif
}

/// The one logger behind every `CLog`. It is never destroyed, so that a late caller finds it whole.
class Logger {
public:
    static Logger& Get()
    {
        static Logger& logger = *new Logger;
        // Made after everything that writing needs, so it ends before all that.
        static const AtExit atExit(logger);
        return logger;
    }

    LogLevel Level() const { return level_.load(std::memory_order_relaxed); }

    bool Configure(const LogConfig& config)
    {
        const std::unique_lock<Turnstile> lock(turnstile_);
        if (closed_) {
            return false;
        }
        sink_ = std::make_unique<Sink>(config);
        level_ = config.console || !config.file.empty() ? config.level : LogLevel::Off;
        return true;
    }

    void Write(LogLevel level, const std::string& name, const std::string& message,
               const log4cxx::spi::LocationInfo& where)
    {
        if (level > Level()) {
            return;
        }
        try {
            const std::shared_lock<Turnstile> lock(turnstile_);
            if (!closed_) {
                sink_->Write(level, name, message, where);
            } else if (level == LogLevel::Error) {
                sink_->WriteLate(message);
            }
        } catch (...) { // No memory, disk full. There is nobody to tell, and the caller's work goes on.
        }
    }

private:
    struct AtExit {
        explicit AtExit(Logger& theLogger) : logger(theLogger) {}
        ~AtExit()
        {
            if (OthersAreKilled()) {
                logger.closed_ = true; // Every line is in its file already.
                return;
            }
            const std::unique_lock<Turnstile> lock(logger.turnstile_);
            logger.closed_ = true;
            logger.sink_->Close();
        }
        Logger& logger;
    };

    Logger()
    {
        WarmUpLogOutput();
        sink_ = std::make_unique<Sink>(LogConfig());
    }

    Turnstile turnstile_;
    std::unique_ptr<Sink> sink_;
    bool closed_ = false;
    std::atomic<LogLevel> level_{LogLevel::Error};
};

std::string WhyNot(const LogConfig& config)
{
    if (config.level < LogLevel::Off || config.level > LogLevel::Info) {
        return "unknown level " + std::to_string(static_cast<std::int32_t>(config.level));
    }
    if (config.maxMessageBytes == 0) {
        return "message size 0";
    }
    if (config.file.empty()) {
        return std::string();
    }
    if (config.maxFileBytes == 0) {
        return "file size 0";
    }
    if (config.maxBackups < 1 || config.maxBackups > kMaxBackups) {
        return std::to_string(config.maxBackups) + " backups, not 1 to " + std::to_string(kMaxBackups);
    }
    if (!MakePrivateFile(config.file)) {
        return "cannot write \"" + config.file + "\": " + std::generic_category().message(errno);
    }
    return std::string();
}

} // namespace

CLog::CLog()
{
    Logger::Get();
}

CLog::~CLog() = default;

bool CLog::Configure(const LogConfig& config)
{
    std::string reason = WhyNot(config);
    if (reason.empty()) {
        try {
            if (Logger::Get().Configure(config)) {
                return true;
            }
            reason = "the process is ending";
        } catch (const std::exception& exception) {
            reason = exception.what();
        }
    }
    Error::SetLastError({Error::kKeelModule, kLogNotConfigured, "log: " + reason});
    return false;
}

void CLog::Error(const std::string& name, const std::string& message, const log4cxx::spi::LocationInfo& where)
{
    Logger::Get().Write(LogLevel::Error, name, message, where);
}

void CLog::Info(const std::string& name, const std::string& message, const log4cxx::spi::LocationInfo& where)
{
    Logger::Get().Write(LogLevel::Info, name, message, where);
}

bool CLog::IsErrorEnabled(const std::string&) const
{
    return Logger::Get().Level() >= LogLevel::Error;
}

bool CLog::IsInfoEnabled(const std::string&) const
{
    return Logger::Get().Level() >= LogLevel::Info;
}

} // namespace details

/// The object stays: a thread that runs on during process exit may still hold it.
template <>
struct SingletonEnd<details::CLog> {
    void operator()(details::CLog*) const {}
};

#ifdef _WIN32
template class KEEL_API CSingleton<details::CLog>;
#else
template class CSingleton<details::CLog>; // Exported by its declaration in Log.h.
#endif

} // namespace Keel
