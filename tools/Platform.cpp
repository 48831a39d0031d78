#include "simulator/Platform.h"
#include "simulator/VideoWallService.h"

#include <array>
#include <csignal>
#include <cstdio>

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>

#include "tools/Commands.h"

namespace nexwire {
namespace tools {
namespace {

std::string Loopback(std::uint16_t port)
{
    return "http://127.0.0.1:" + std::to_string(port);
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
    simulator::VideoWallService wall(wallOptions);
    std::string error;
    if (!platform.Start(error) || (options.wall && !wall.Start(error))) {
        Complain(error);
        return kTransport;
    }
    Print(Loopback(platform.Port()) + (options.wall ? " " + Loopback(wall.Port()) : "") + "\n");
    context.run();
    wall.Stop();
    platform.Stop();
    return kDone;
}

} // namespace tools
} // namespace nexwire
