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

#include <log4cxx/consoleappender.h>
#include <log4cxx/helpers/charsetencoder.h>
#include <log4cxx/helpers/pool.h>
#include <log4cxx/helpers/transcoder.h>
#include <log4cxx/level.h>
#include <log4cxx/patternlayout.h>
#include <log4cxx/rolling/action.h>
#include <log4cxx/rolling/fixedwindowrollingpolicy.h>
#include <log4cxx/rolling/rollingfileappender.h>
#include <log4cxx/rolling/rolloverdescription.h>
#include <log4cxx/rolling/sizebasedtriggeringpolicy.h>
#include <log4cxx/spi/loggingevent.h>

#include "keel/Error.h"
#include "keel/PrivateFile.h"
#include "keel/Redact.h"
#include "keel/SingletonImpl.h"
#include "keel/StringUtil.h"

#include "Utf8Scope.h"

namespace Keel {
namespace details {
namespace {

constexpr std::int32_t kMaxBackups = 12; // What log4cxx's fixed window holds.

log4cxx::LogString LogText(const std::string& utf8)
{
    log4cxx::LogString text;
    log4cxx::helpers::Transcoder::decodeUTF8(utf8, text);
    return text;
}

log4cxx::LayoutPtr NewLayout()
{
    return std::make_shared<log4cxx::PatternLayout>(
        LOG4CXX_STR("%d{yyyy-MM-dd HH:mm:ss.SSS} %-5p [%t] %c %m [%F:%L %M]%n"));
}

/// What a policy does to roll over, and then the new file, for its owner only: log4cxx would make it for everybody.
class RollThenMake : public log4cxx::rolling::Action {
public:
    RollThenMake(log4cxx::rolling::ActionPtr roll, std::string file) : m_roll(std::move(roll)), m_file(std::move(file))
    {
    }

    bool execute(log4cxx::helpers::Pool& pool) const override
    {
        return (m_roll == nullptr || m_roll->execute(pool)) && MakePrivateFile(m_file);
    }

private:
    const log4cxx::rolling::ActionPtr m_roll;
    const std::string m_file;
};

class PrivateRollingPolicy : public log4cxx::rolling::FixedWindowRollingPolicy {
public:
    explicit PrivateRollingPolicy(std::string file) : m_file(std::move(file)) {}

    log4cxx::rolling::RolloverDescriptionPtr rollover(const log4cxx::LogString& activeFile, const bool append,
                                                      log4cxx::helpers::Pool& pool) override
    {
        const log4cxx::rolling::RolloverDescriptionPtr usual =
            FixedWindowRollingPolicy::rollover(activeFile, append, pool);
        if (usual == nullptr) {
            return usual;
        }
        return std::make_shared<log4cxx::rolling::RolloverDescription>(
            usual->getActiveFileName(), usual->getAppend(),
            std::make_shared<RollThenMake>(usual->getSynchronous(), m_file), usual->getAsynchronous());
    }

private:
    const std::string m_file;
};

/// Shifts the full file to `file`.1, that one to `file`.2 and so on.
log4cxx::rolling::RollingPolicyPtr NewPolicy(const LogConfig& config)
{
    std::string pattern;
    for (const char c : config.file) {
        pattern.append(c == '%' ? 2 : 1, c);
    }
    const auto policy = std::make_shared<PrivateRollingPolicy>(config.file);
    policy->setFileNamePattern(LogText(pattern + ".%i"));
    policy->setMinIndex(1);
    policy->setMaxIndex(config.maxBackups);
    log4cxx::helpers::Pool pool;
    policy->activateOptions(pool);

    // Kept for ever: log4cxx 1.0 deletes the private part of such a policy as the smaller part of its base class.
    static std::vector<log4cxx::rolling::RollingPolicyPtr>& kept = *new std::vector<log4cxx::rolling::RollingPolicyPtr>;
    kept.push_back(policy);
    return policy;
}

log4cxx::rolling::TriggeringPolicyPtr NewTrigger(const LogConfig& config)
{
    const auto trigger = std::make_shared<log4cxx::rolling::SizeBasedTriggeringPolicy>();
    trigger->setMaxFileSize(static_cast<std::size_t>(
        std::min<std::uint64_t>(config.maxFileBytes, std::numeric_limits<std::size_t>::max())));
    return trigger;
}

/// Where messages go, as one configuration has it.
class Sink {
public:
    explicit Sink(const LogConfig& config) : m_console(config.console), m_maxMessageBytes(config.maxMessageBytes)
    {
        if (config.redact) {
            m_redactor = std::make_unique<CRedactor>(config.extraSecretKeys);
        }
        if (config.console) {
            m_appenders.push_back(
                std::make_shared<log4cxx::ConsoleAppender>(NewLayout(), log4cxx::ConsoleAppender::getSystemErr()));
        }
        if (!config.file.empty()) {
            const auto file = std::make_shared<log4cxx::rolling::RollingFileAppender>();
            file->setLayout(NewLayout());
            file->setFile(LogText(config.file));
            file->setEncoding(LOG4CXX_STR("UTF-8"));
            file->setRollingPolicy(NewPolicy(config));
            file->setTriggeringPolicy(NewTrigger(config));
            log4cxx::helpers::Pool pool;
            file->activateOptions(pool);
            m_appenders.push_back(file);
        }
    }
    ~Sink() { Close(); }
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    void Write(const log4cxx::LevelPtr& level, const std::string& name, const std::string& message,
               const log4cxx::spi::LocationInfo& where)
    {
        const auto event = std::make_shared<log4cxx::spi::LoggingEvent>(
            name.empty() ? LOG4CXX_STR("root") : LogText(name), level, LogText(Shown(message)), where);
        log4cxx::helpers::Pool pool;
        for (const log4cxx::AppenderPtr& appender : m_appenders) {
            appender->doAppend(event, pool);
        }
    }

    /// Writes without log4cxx, which is going or gone.
    void WriteLate(const std::string& message)
    {
        if (m_console) {
            const std::string line = "ERROR " + Shown(message) + "\n";
            std::fwrite(line.data(), 1, line.size(), stderr);
        }
    }

    void Close()
    {
        for (const log4cxx::AppenderPtr& appender : m_appenders) {
            appender->close();
        }
        m_appenders.clear();
    }

private:
    /// The message as it may be read: not longer than the cap, without secrets, on one line.
    std::string Shown(const std::string& message) const
    {
        std::string shown;
        if (message.size() > m_maxMessageBytes) {
            auto end = static_cast<std::size_t>(m_maxMessageBytes);
            while (end > 0 && (static_cast<unsigned char>(message[end]) & 0xC0U) == 0x80U) {
                --end; // Not within a character.
            }
            // What the cut leaves of a secret is replaced as well.
            const std::string part(message, 0, end);
            shown = m_redactor ? m_redactor->Redact(part) : part;
            shown += "... [" + std::to_string(message.size() - end) + " of " + std::to_string(message.size()) +
                     " bytes left out]";
        } else if (!m_redactor || !m_redactor->Redact(message, shown)) {
            return StringUtil::SingleLine(message);
        }
        return StringUtil::SingleLine(shown);
    }

    bool m_console;
    std::uint64_t m_maxMessageBytes;
    std::unique_ptr<CRedactor> m_redactor;
    std::vector<log4cxx::AppenderPtr> m_appenders;
};

/// Shared by the threads that log, exclusive while the configuration changes and at exit. Who waits for exclusive use
/// goes first: the standard's and Boost's shared mutexes may keep process exit waiting for as long as others log.
class Turnstile {
public:
    void lock()
    {
        ++m_waiting;
        m_mutex.lock();
        --m_waiting;
    }
    void unlock() { m_mutex.unlock(); }
    void lock_shared()
    {
        while (m_waiting != 0) {
            std::this_thread::yield();
        }
        m_mutex.lock_shared();
    }
    void unlock_shared() { m_mutex.unlock_shared(); }

private:
    std::atomic<int> m_waiting{0};
    std::shared_mutex m_mutex;
};

/// The one logger behind every `CLog`. It is never destroyed, so that a late caller finds it whole.
class Logger {
public:
    static Logger& Get()
    {
        static Logger& logger = *new Logger;
        // Made after everything of log4cxx that writing needs, so it ends before all that.
        static const AtExit atExit(logger);
        return logger;
    }

    LogLevel Level() const { return m_level.load(std::memory_order_relaxed); }

    bool Configure(const LogConfig& config)
    {
        const std::unique_lock<Turnstile> lock(m_turnstile);
        if (m_closed) {
            return false;
        }
        const Utf8Scope utf8;
        m_sink = std::make_unique<Sink>(config);
        m_level = config.console || !config.file.empty() ? config.level : LogLevel::Off;
        return true;
    }

    void Write(LogLevel level, const std::string& name, const std::string& message,
               const log4cxx::spi::LocationInfo& where)
    {
        if (level > Level()) {
            return;
        }
        try {
            const Utf8Scope utf8;
            const std::shared_lock<Turnstile> lock(m_turnstile);
            if (!m_closed) {
                m_sink->Write(level == LogLevel::Error ? log4cxx::Level::getError() : log4cxx::Level::getInfo(), name,
                              message, where);
            } else if (level == LogLevel::Error) {
                m_sink->WriteLate(message);
            }
        } catch (...) { // No memory, disk full. There is nobody to tell, and the caller's work goes on.
        }
    }

private:
    struct AtExit {
        explicit AtExit(Logger& theLogger) : logger(theLogger) {}
        ~AtExit()
        {
            const std::unique_lock<Turnstile> lock(logger.m_turnstile);
            logger.m_closed = true;
            logger.m_sink->Close();
        }
        Logger& logger;
    };

    Logger()
    {
        const Utf8Scope utf8;
        m_sink = std::make_unique<Sink>(LogConfig());
        const auto event = std::make_shared<log4cxx::spi::LoggingEvent>(LOG4CXX_STR("root"), log4cxx::Level::getError(),
                                                                        LogText("warm-up"), LOG4CXX_LOCATION);
        log4cxx::helpers::Pool pool;
        log4cxx::LogString line;
        NewLayout()->format(line, event, pool);
        log4cxx::helpers::CharsetEncoder::getUTF8Encoder();
        log4cxx::helpers::CharsetEncoder::getDefaultEncoder();
        log4cxx::Level::getInfo();
    }

    Turnstile m_turnstile;
    std::unique_ptr<Sink> m_sink;
    bool m_closed = false;
    std::atomic<LogLevel> m_level{LogLevel::Error};
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
    // log4cxx reports a file it cannot open on stderr only.
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
