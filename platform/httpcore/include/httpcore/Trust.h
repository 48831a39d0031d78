#pragma once

#include <atomic>
#include <chrono>
#include <map>
#include <mutex>
#include <string>

namespace httpcore {

/// Which servers cannot be trusted to keep a connection: those that closed a kept one under a request. For a while
/// every request to such a server gets a connection of its own. Safe from any number of threads; takes no lock as long
/// as all servers are trusted.
class Trust {
public:
    /// How long a server is not trusted after a loss.
    static constexpr std::chrono::minutes kDuration{5};

    /// The server, "host:port" or the like, closed a kept connection under a request.
    void Lost(const std::string& server);

    /// Whether connections to the server may be kept and used again.
    bool MayKeep(const std::string& server) const;

private:
    using Clock = std::chrono::steady_clock;

    std::atomic<bool> any_{false};
    mutable std::mutex mutex_;
    std::map<std::string, Clock::time_point> until_;
};

} // namespace httpcore
