#pragma once

/// KEEL_API marks what libkeel exports.
#if defined(_WIN32) && !defined(KEEL_STATIC)
#if defined(KEEL_BUILDING)
#define KEEL_API __declspec(dllexport)
#else
#define KEEL_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KEEL_API __attribute__((visibility("default")))
#else
#define KEEL_API
#endif
