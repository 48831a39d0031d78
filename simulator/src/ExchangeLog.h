#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

#include "src/HttpServer.h"

namespace nexwire::simulator {

/// What went over the wire once. Immutable.
struct Exchange {
    std::int64_t id = 0; ///< From 1, without gaps.
    std::int64_t timeMs = 0;
    bool wall = false;       ///< Through the video wall service.
    HttpServer::Done served; ///< Without its bodies.
};

/// The bodies of an exchange, as far as they are kept.
struct Bodies {
    std::shared_ptr<const std::string> sent;
    std::shared_ptr<const std::string> answer;
};

struct KeptExchange {
    std::shared_ptr<const Exchange> exchange;
    std::shared_ptr<const Bodies> bodies; ///< Null once they are forgotten.
};

/// The last exchanges, in memory. Safe from any thread.
class ExchangeLog {
public:
    static constexpr std::size_t kMostExchanges = 10000;
    static constexpr std::uint64_t kMostBytes = 64u << 20u; ///< Of bodies; the oldest go first.
    static constexpr std::size_t kMostOfBody = 1u << 20u;   ///< Of one body; the rest is not kept.

    /// Takes an exchange in; the time is its own.
    void Add(HttpServer::Done&& done, std::int64_t timeMs, bool wall);
    /// Those behind an identifier, oldest first; the newest of them when there are more than `most`.
    std::vector<KeptExchange> After(std::int64_t id, std::size_t most) const;
    /// Null without one.
    KeptExchange Find(std::int64_t id) const;
    void Clear();
    std::int64_t LastId() const; ///< 0 before the first.

private:
    mutable std::mutex mutex_;
    std::deque<KeptExchange> exchanges_;
    std::int64_t lastId_ = 0;
    std::uint64_t bytes_ = 0;
    std::int64_t firstWithBodies_ = 1;
};

} // namespace nexwire::simulator
