#pragma once

/// NEXWIRE_API marks what libnexwire exports. Building the library defines NEXWIRE_BUILDING; linking the objects
/// into something else without a shared library in between defines NEXWIRE_STATIC.
#if defined(_WIN32) && !defined(NEXWIRE_STATIC)
#if defined(NEXWIRE_BUILDING)
#define NEXWIRE_API __declspec(dllexport)
#else
#define NEXWIRE_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define NEXWIRE_API __attribute__((visibility("default")))
#else
#define NEXWIRE_API
#endif

/// The whole signature of the function around it, for log entries.
#if defined(_MSC_VER)
#define NEXWIRE_FUNCTION __FUNCSIG__
#else
#define NEXWIRE_FUNCTION __PRETTY_FUNCTION__
#endif
