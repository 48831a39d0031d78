#include "simulator/Platform.h"
#include "simulator/VideoWallService.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <random>

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>

#include "tools/Commands.h"
#include "tools/OpenApi.h"
#include "tools/Secrets.h"

namespace nexwire::tools {
namespace {

std::string Address(const std::string& host, std::uint16_t port)
{
    const bool six = host.find(':') != std::string::npos;
    return "http://" + (six ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

std::string NewToken()
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::random_device source;
    std::string token;
    for (int i = 0; i < 32; ++i) {
        token += kDigits[source() & 15u];
    }
    return token;
}

/// The token that was given, or one that is made where others can reach the platform. False with a text for the user.
bool ChooseToken(const PlatformOptions& options, std::string& token, std::string& error)
{
    bool typed = false;
    if (!Resolve(options.token, token, typed, error)) {
        return false;
    }
    if (typed && !token.empty()) {
        error = "others can read a command line: give the token as --token @env:VARIABLE or --token @file:PATH";
        return false;
    }
    if (token.empty() && !simulator::IsLoopbackAddress(options.listen)) {
        token = NewToken();
    }
    return true;
}

/// Has the workbench do what a file says. False with a text for the user.
bool Apply(simulator::Platform& platform, const char* verb, const char* target, const std::string& file)
{
    std::string text;
    std::string error;
    if (file.empty()) {
        return true;
    }
    if (!ReadWhole(file, text, error)) {
        Complain(error);
        return false;
    }
    const simulator::WorkbenchAnswer answer = platform.Workbench(verb, target, text);
    if (answer.status != 200) {
        Complain(file + ": " + answer.body);
    }
    return answer.status == 200;
}

int ListCoverage()
{
    static const char* const names[] = {"behaviour", "state", "sample"};
    std::array<std::size_t, 3> counts{};
    std::string text;
    for (const simulator::Coverage& each : simulator::CoverageOfFunctions()) {
        ++counts[each.how];
        text += Padded(names[each.how], 11) + each.function + "\n";
    }
    for (std::size_t how = 0; how < counts.size(); ++how) {
        text += std::to_string(counts[how]) + " " + names[how] + (how + 1 < counts.size() ? ", " : "\n");
    }
    Print(text);
    return kDone;
}

} // namespace

int RunPlatform(const PlatformOptions& options)
{
    if (options.coverage) {
        return ListCoverage();
    }
    // Taken before anything runs, so that no signal finds the platform half started.
    boost::asio::io_context context;
    boost::asio::signal_set signals(context, SIGINT, SIGTERM);
#if defined(SIGBREAK)
    signals.add(SIGBREAK); // Ctrl+Break, and a console that is closed.
#endif
    signals.async_wait([](const boost::system::error_code&, int) {});

    simulator::Options own;
    own.port = options.port;
    own.databasePath = options.database;
    own.timeScale = options.timeScale;
    own.alarmsPerMinute = options.alarmsPerMinute;
    own.address = options.listen;
    own.openApi = OpenApiDocument;
    std::string error;
    if (!ChooseToken(options, own.token, error)) {
        Complain(error);
        return kUsage;
    }
    simulator::VideoWallService::Options wallOptions;
    wallOptions.port = options.wallPort;
    wallOptions.timeScale = options.timeScale;
    if (options.verbose) {
        own.onExchange = [](const simulator::Served& exchange) {
            std::fputs((simulator::ToLine(exchange) + "\n").c_str(), stderr);
        };
        wallOptions.onExchange = own.onExchange;
    }
    simulator::Platform platform(own);
    wallOptions.platform = &platform;
    simulator::VideoWallService wall(wallOptions);
    if (!platform.Start(error) || (options.wall && !wall.Start(error))) {
        Complain(error);
        return kTransport;
    }
    if (!Apply(platform, "PUT", "faults", options.faultsFile) || !Apply(platform, "POST", "seed", options.seedFile)) {
        return kUsage;
    }
    const std::string address = Address(options.listen, platform.Port());
    if (!own.token.empty() && options.token.empty()) {
        std::fputs(("nexwire: every request needs the header field \"Authorization: Bearer " + own.token +
                    "\"; the page: " + address + "/_workbench/?token=" + own.token + "\n")
                       .c_str(),
                   stderr);
    }
    Print(address + (options.wall ? " " + Address("127.0.0.1", wall.Port()) : "") + "\n");
    context.run();
    wall.Stop();
    platform.Stop();
    return kDone;
}

} // namespace nexwire::tools
