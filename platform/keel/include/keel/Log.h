#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <log4cxx/spi/location/locationinfo.h>

#include "keel/Export.h"
#include "keel/Singleton.h"

namespace Keel {
namespace details {

/// Number of the error that a failed `CLog::Configure` stores as last error, with module `Keel::Error::kKeelModule`.
constexpr std::int32_t kLogNotConfigured = 201;

/// From which level on messages are written.
enum class LogLevel : std::int32_t {
    Off,   ///< Nothing.
    Error, ///< Errors.
    Info,  ///< Errors and notable events.
};

/// Where the log goes. The defaults are what holds before `CLog::Configure`: errors to stderr, no file.
struct KEEL_API LogConfig {
    LogLevel level = LogLevel::Error;
    bool console = true; ///< Write to stderr.
    std::string file;    ///< Path of the log file, UTF-8; empty: no file.
    std::uint64_t maxFileBytes =
        10U * 1024U * 1024U;     ///< Size at which the file is rolled over to `file`.1; at least 1.
    std::int32_t maxBackups = 5; ///< Rolled files kept, 1 to 12.
    /// Longest message written, in bytes before secrets are replaced; at least 1. The rest is left out, and the line
    /// says how much that is.
    std::uint64_t maxMessageBytes = 1024U * 1024U;
    bool redact = true;                       ///< Replace secrets, see `Keel::CRedactor`.
    std::vector<std::string> extraSecretKeys; ///< Keys that count as secret besides the built-in ones.
};

/// The process-wide logger on log4cxx; every object is the same logger. Safe from any thread. Logging never throws: a
/// message that cannot be written (disk full) is dropped.
///
/// Until `Configure` is called, errors go to stderr, infos nowhere, and no file is touched. The appenders are the
/// logger's own; a host's log4cxx configuration is neither read nor changed. When static destruction has closed the
/// appenders at process exit, errors still go to stderr, if the console is on.
///
/// A file that did not exist is made for its owner only, the rolled ones as well.
///
/// Messages are UTF-8 and written as UTF-8. One message is one line, whatever a server sent: control characters in it,
/// line breaks included, are spelled out as `StringUtil::SingleLine` does.
/// "2024-05-01 12:00:00.000 ERROR [thread] name message [file:line function]".
class KEEL_API CLog {
public:
    CLog();
    ~CLog();
    CLog(const CLog&) = delete;
    CLog& operator=(const CLog&) = delete;

    /// Replaces the configuration. False when the log file cannot be opened or a value is out of its range: the last
    /// error says why, and the former configuration stays.
    bool Configure(const LogConfig& config);

    /// Logs a finished message under a logger name (empty: the root logger) with the place it comes from.
    /// Values of secret keys are replaced before the message reaches console or file.
    void Error(const std::string& name, const std::string& message, const log4cxx::spi::LocationInfo& where);
    void Info(const std::string& name, const std::string& message, const log4cxx::spi::LocationInfo& where);

    /// Whether a message of that level would be written; ask before formatting one. One level holds for all names.
    /// Takes no lock.
    bool IsErrorEnabled(const std::string& name) const;
    bool IsInfoEnabled(const std::string& name) const;
};

} // namespace details

#if !(defined(_WIN32) && defined(KEEL_BUILDING)) // There, the exported instantiation must not be declared extern.
extern template class KEEL_API CSingleton<details::CLog>;
#endif

} // namespace Keel
