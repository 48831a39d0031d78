#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/Console.h"

// The commands. Each answers with an exit code, see Console.h.

namespace nexwire::tools {

struct ListOptions {
    std::vector<std::string> words;
    bool namesOnly = false; ///< One unique name a line.
    bool json = false;
};
int List(const ListOptions& options, const Style& style);

struct DescribeOptions {
    std::string function;
    bool argumentsOnly = false; ///< Names of what can be given, one a line.
    bool json = false;
};
int Describe(const DescribeOptions& options, const Style& style);

/// Says that nobody has that name, and who has one like it.
int UnknownFunction(const std::string& name);
/// The same as a text.
std::string UnknownFunctionText(const std::string& name);

/// Writes the OpenAPI document, or the reference page, to a file; "-" is standard output.
int OpenApi(const std::string& file);
int Reference(const std::string& file);

struct CallOptions {
    std::string function;
    std::vector<std::string> values; ///< "name=value".
    std::string body;                ///< File, "-" for standard input, empty for none.
    std::string server;              ///< Empty: a local platform within the process.
    std::string database;            ///< Of that platform.
    bool dryRun = false;
    bool compact = false;
    bool pages = false;               ///< All pages from the one asked for, element by element.
    bool follow = false;              ///< Again and again until the progress says that it is over.
    bool json = false;                ///< Everything as one object on standard output.
    bool merge = false;               ///< Read structures that are given in part, and change only that.
    bool quiet = false;               ///< Nothing on standard error unless something went wrong.
    bool verbose = false;             ///< The exchanges, too.
    bool trace = false;               ///< The steps of each exchange: attempts, waits, times.
    std::vector<std::string> headers; ///< "name=value".
    std::int32_t timeoutMs = 0;       ///< 0 keeps the function's own.
    std::int32_t deadlineMs = 0;      ///< For all exchanges of the call together; 0 none.
    std::int32_t retries = 0;         ///< How often at most a failed exchange is repeated.
    std::string caFile;
    std::string certificateFile;
    std::string keyFile;
    std::string keyPassphrase; ///< Only @env: or @file:.
    bool insecure = false;
    std::string proxy;
    std::string recordFile;
    std::string replayFile;
};
int CallFunction(const CallOptions& options);

struct PlatformOptions {
    std::uint16_t port = 0;
    std::string database;
    double timeScale = 1.0;
    double alarmsPerMinute = 0.0;
    bool verbose = false;
    bool wall = false; ///< Run the video wall service, too.
    std::uint16_t wallPort = 0;
    std::string faultsFile;           ///< Rules for faults; empty for none.
    std::string seedFile;             ///< Documents to write first; empty for none.
    std::string listen = "127.0.0.1"; ///< Address.
    std::string token;                ///< Only @env: or @file:; empty makes one where one is needed.
    bool coverage = false;            ///< Say how functions are answered instead of running.
};
int RunPlatform(const PlatformOptions& options);

} // namespace nexwire::tools
