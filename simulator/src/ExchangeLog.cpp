#include "src/ExchangeLog.h"

#include <algorithm>

namespace nexwire::simulator {
namespace {

std::shared_ptr<const std::string> Cut(std::shared_ptr<const std::string> body)
{
    return body != nullptr && body->size() > ExchangeLog::kMostOfBody
               ? std::make_shared<const std::string>(body->substr(0, ExchangeLog::kMostOfBody))
               : body;
}

std::uint64_t SizeOf(const Bodies& bodies)
{
    return (bodies.sent ? bodies.sent->size() : 0) + (bodies.answer ? bodies.answer->size() : 0);
}

} // namespace

void ExchangeLog::Add(HttpServer::Done&& done, std::int64_t timeMs, bool wall)
{
    auto bodies = std::make_shared<const Bodies>(Bodies{Cut(std::move(done.sent)), Cut(std::move(done.answer))});
    done.sent.reset();
    done.answer.reset();
    auto exchange = std::make_shared<Exchange>();
    exchange->timeMs = timeMs;
    exchange->wall = wall;
    exchange->served = std::move(done);
    KeptExchange gone; // Destroyed without the lock.
    const std::lock_guard<std::mutex> lock(mutex_);
    exchange->id = ++lastId_;
    bytes_ += SizeOf(*bodies);
    exchanges_.push_back({std::move(exchange), std::move(bodies)});
    if (exchanges_.size() > kMostExchanges) {
        gone = std::move(exchanges_.front());
        exchanges_.pop_front();
        bytes_ -= gone.bodies ? SizeOf(*gone.bodies) : 0;
    }
    firstWithBodies_ = std::max(firstWithBodies_, exchanges_.front().exchange->id);
    for (; bytes_ > kMostBytes; ++firstWithBodies_) {
        KeptExchange& oldest = exchanges_[static_cast<std::size_t>(firstWithBodies_ - exchanges_.front().exchange->id)];
        bytes_ -= SizeOf(*oldest.bodies);
        oldest.bodies.reset();
    }
}

std::vector<KeptExchange> ExchangeLog::After(std::int64_t id, std::size_t most) const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    const std::int64_t behind = std::max<std::int64_t>(lastId_ - std::max<std::int64_t>(id, 0), 0);
    const std::size_t count = std::min({static_cast<std::size_t>(behind), most, exchanges_.size()});
    return {exchanges_.end() - static_cast<std::ptrdiff_t>(count), exchanges_.end()};
}

KeptExchange ExchangeLog::Find(std::int64_t id) const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (exchanges_.empty() || id < exchanges_.front().exchange->id || id > lastId_) {
        return {};
    }
    return exchanges_[static_cast<std::size_t>(id - exchanges_.front().exchange->id)];
}

void ExchangeLog::Clear()
{
    std::deque<KeptExchange> gone;
    const std::lock_guard<std::mutex> lock(mutex_);
    gone.swap(exchanges_);
    bytes_ = 0;
    firstWithBodies_ = lastId_ + 1;
}

std::int64_t ExchangeLog::LastId() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return lastId_;
}

} // namespace nexwire::simulator
