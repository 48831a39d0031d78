#include "simulator/Platform.h"
#include "simulator/VideoWallService.h"

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

} // namespace

int RunPlatform(const PlatformOptions& options)
{
    // Taken before anything runs, so that no signal finds the platform half started.
    boost::asio::io_context context;
    boost::asio::signal_set signals(context, SIGINT, SIGTERM);
    signals.async_wait([](const boost::system::error_code&, int) {});

    simulator::Options own;
    own.port = options.port;
    own.databasePath = options.database;
    own.timeScale = options.timeScale;
    simulator::VideoWallService::Options wallOptions;
    wallOptions.port = options.wallPort;
    wallOptions.timeScale = options.timeScale;
    if (options.verbose) {
        own.onExchange = [](const simulator::Exchange& exchange) {
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
