#pragma once

#include <string>

#include <log4cxx/spi/location/locationinfo.h>

#include "keel/Export.h"
#include "keel/Singleton.h"

namespace Keel {
namespace details {

/// The process-wide logger on log4cxx. Safe from any thread.
class KEEL_API CLog {
public:
    CLog();
    ~CLog();
    CLog(const CLog&) = delete;
    CLog& operator=(const CLog&) = delete;

    /// Logs a finished message under a logger name (empty: the root logger) with the place it comes from.
    void Error(const std::string& name, const std::string& message, const log4cxx::spi::LocationInfo& where);
    void Info(const std::string& name, const std::string& message, const log4cxx::spi::LocationInfo& where);

    /// Whether a message of that level would be written; ask before formatting one.
    bool IsErrorEnabled(const std::string& name) const;
    bool IsInfoEnabled(const std::string& name) const;
};

} // namespace details

extern template class KEEL_API CSingleton<details::CLog>;

} // namespace Keel
