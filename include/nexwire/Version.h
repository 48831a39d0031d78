#pragma once

/// The version that a program is compiled with; the build takes its own from here.
#define NEXWIRE_VERSION_MAJOR 0
#define NEXWIRE_VERSION_MINOR 1
#define NEXWIRE_VERSION_PATCH 0

/// For comparisons: `#if NEXWIRE_VERSION_NUMBER >= 102` is 0.1.2 or newer. Two digits each.
#define NEXWIRE_VERSION_NUMBER (NEXWIRE_VERSION_MAJOR * 10000 + NEXWIRE_VERSION_MINOR * 100 + NEXWIRE_VERSION_PATCH)
