#pragma once

#include <keel/Log.h>
#include <keel/StringUtil.h>

#include "nexwire/Export.h"

// NEXWIRE_LOG_ERROR(format, ...) and NEXWIRE_LOG_INFO(format, ...): printf formats, the place of the call, the
// unnamed logger. Arguments are looked at only when the level is on. Within a lambda or a helper the text belongs to
// the function around it: take NEXWIRE_FUNCTION there and hand it to NEXWIRE_LOG_ERROR_OF or NEXWIRE_LOG_INFO_OF.

#define NEXWIRE_LOG(level, function, ...)                                                                              \
    do {                                                                                                               \
        auto& nexwireLog = ::Keel::CSingleton<::Keel::details::CLog>::Instance();                                      \
        if (nexwireLog.Is##level##Enabled(std::string())) {                                                            \
            nexwireLog.level(std::string(), ::Keel::StringUtil::FormatString(__VA_ARGS__),                             \
                             ::log4cxx::spi::LocationInfo(__FILE__,                                                    \
                                                          ::log4cxx::spi::LocationInfo::calcShortFileName(__FILE__),   \
                                                          function, __LINE__));                                        \
        }                                                                                                              \
    } while (false)

#define NEXWIRE_LOG_ERROR(...) NEXWIRE_LOG(Error, NEXWIRE_FUNCTION, __VA_ARGS__)
#define NEXWIRE_LOG_INFO(...) NEXWIRE_LOG(Info, NEXWIRE_FUNCTION, __VA_ARGS__)
#define NEXWIRE_LOG_ERROR_OF(function, ...) NEXWIRE_LOG(Error, function, __VA_ARGS__)
#define NEXWIRE_LOG_INFO_OF(function, ...) NEXWIRE_LOG(Info, function, __VA_ARGS__)
