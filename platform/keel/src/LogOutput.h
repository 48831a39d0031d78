#pragma once

#include <memory>
#include <string>

#include "keel/Log.h"

namespace Keel::details {

/// Where finished messages are written to: console, file, both or neither. By log4cxx (LogOutputLog4cxx.cpp), or by a
/// few lines of our own where there is none (LogOutputPlain.cpp); the build takes one of the two.
class LogOutput {
public:
    LogOutput() = default;
    /// Closes the file.
    virtual ~LogOutput() = default;
    LogOutput(const LogOutput&) = delete;
    LogOutput& operator=(const LogOutput&) = delete;

    /// @param message  one line of UTF-8. Safe from any thread.
    virtual void Write(LogLevel level, const std::string& name, const std::string& message,
                       const log4cxx::spi::LocationInfo& where) = 0;
};

/// @param config  whose file is there and can be written to.
std::unique_ptr<LogOutput> OpenLogOutput(const LogConfig& config);

/// Makes every static object that writing needs, so that they outlive those made afterwards.
void WarmUpLogOutput();

} // namespace Keel::details
