#include "LogOutput.h"

#include <algorithm>
#include <limits>
#include <vector>

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

#include "keel/PrivateFile.h"

#include "Utf8Scope.h"

namespace Keel::details {
namespace {

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
    RollThenMake(log4cxx::rolling::ActionPtr roll, std::string file) : roll_(std::move(roll)), file_(std::move(file)) {}

    bool execute(log4cxx::helpers::Pool& pool) const override
    {
        return (roll_ == nullptr || roll_->execute(pool)) && MakePrivateFile(file_);
    }

private:
    const log4cxx::rolling::ActionPtr roll_;
    const std::string file_;
};

class PrivateRollingPolicy : public log4cxx::rolling::FixedWindowRollingPolicy {
public:
    explicit PrivateRollingPolicy(std::string file) : file_(std::move(file)) {}

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
            std::make_shared<RollThenMake>(usual->getSynchronous(), file_), usual->getAsynchronous());
    }

private:
    const std::string file_;
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

class Log4cxxOutput : public LogOutput {
public:
    explicit Log4cxxOutput(const LogConfig& config)
    {
        const Utf8Scope utf8;
        if (config.console) {
            appenders_.push_back(
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
            appenders_.push_back(file);
        }
    }
    ~Log4cxxOutput() override
    {
        for (const log4cxx::AppenderPtr& appender : appenders_) {
            appender->close();
        }
    }

    void Write(LogLevel level, const std::string& name, const std::string& message,
               const log4cxx::spi::LocationInfo& where) override
    {
        const Utf8Scope utf8;
        const auto event = std::make_shared<log4cxx::spi::LoggingEvent>(
            LogText(name), level == LogLevel::Error ? log4cxx::Level::getError() : log4cxx::Level::getInfo(),
            LogText(message), where);
        log4cxx::helpers::Pool pool;
        for (const log4cxx::AppenderPtr& appender : appenders_) {
            appender->doAppend(event, pool);
        }
    }

private:
    std::vector<log4cxx::AppenderPtr> appenders_;
};

} // namespace

std::unique_ptr<LogOutput> OpenLogOutput(const LogConfig& config)
{
    return std::make_unique<Log4cxxOutput>(config);
}

void WarmUpLogOutput()
{
    const Utf8Scope utf8;
    const auto event = std::make_shared<log4cxx::spi::LoggingEvent>(LOG4CXX_STR("root"), log4cxx::Level::getError(),
                                                                    LogText("warm-up"), LOG4CXX_LOCATION);
    log4cxx::helpers::Pool pool;
    log4cxx::LogString line;
    NewLayout()->format(line, event, pool);
    log4cxx::helpers::CharsetEncoder::getUTF8Encoder();
    log4cxx::helpers::CharsetEncoder::getDefaultEncoder();
    log4cxx::Level::getInfo();
}

} // namespace Keel::details
