#include "simulator/Platform.h"

#include <csignal>

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>

#include "tools/Commands.h"

namespace nexwire {
namespace tools {

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
    if (options.verbose) {
        own.onExchange = [](const simulator::Exchange& exchange) {
            std::fputs((simulator::ToLine(exchange) + "\n").c_str(), stderr);
        };
    }
    simulator::Platform platform(own);
    std::string error;
    if (!platform.Start(error)) {
        Complain(error);
        return kTransport;
    }
    Print("http://127.0.0.1:" + std::to_string(platform.Port()) + "\n");
    context.run();
    platform.Stop();
    return kDone;
}

} // namespace tools
} // namespace nexwire
