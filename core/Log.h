#pragma once

#include <keel/Log.h>
#include <keel/StringUtil.h>

// NEXWIRE_LOG_ERROR(format, ...) and NEXWIRE_LOG_INFO(format, ...): printf formats, the place of the call, the
// unnamed logger. Arguments are looked at only when the level is on.

#if defined(_MSC_VER)
#define NEXWIRE_FUNCTION __FUNCSIG__
#else
#define NEXWIRE_FUNCTION __PRETTY_FUNCTION__
#endif

#define NEXWIRE_LOG(level, ...)                                                                                        \
    do {                                                                                                               \
        auto& nexwireLog = ::Keel::CSingleton<::Keel::details::CLog>::Instance();                                      \
        if (nexwireLog.Is##level##Enabled(std::string())) {                                                            \
            nexwireLog.level(std::string(), ::Keel::StringUtil::FormatString(__VA_ARGS__),                             \
                             ::log4cxx::spi::LocationInfo(__FILE__,                                                    \
                                                          ::log4cxx::spi::LocationInfo::calcShortFileName(__FILE__),   \
                                                          NEXWIRE_FUNCTION, __LINE__));                                \
        }                                                                                                              \
    } while (false)

#define NEXWIRE_LOG_ERROR(...) NEXWIRE_LOG(Error, __VA_ARGS__)
#define NEXWIRE_LOG_INFO(...) NEXWIRE_LOG(Info, __VA_ARGS__)
