#include "src/HttpSocket.h"

#include <array>

#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>

namespace nexwire::simulator {
namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;
using Clock = std::chrono::steady_clock;

// One type for all that goes on later: each further one would compile the machinery anew.
using Moved = std::function<void(error_code, std::size_t)>;
using Later = std::function<void(error_code)>;

class HttpSocket final : public HttpConnection, public std::enable_shared_from_this<HttpSocket> {
public:
    explicit HttpSocket(tcp::socket socket)
        : socket_(std::move(socket)), timer_(socket_.get_executor()), watch_(socket_.get_executor())
    {
        error_code ignored;
        socket_.set_option(tcp::no_delay(true), ignored);
    }

    void ReadSome(char* room, std::size_t size, Next next) override
    {
        socket_.async_read_some(asio::mutable_buffer(room, size), Told(std::move(next)));
    }

    void Write(std::string_view head, std::string_view body, Next next) override
    {
        const std::array<asio::const_buffer, 2> both = {asio::buffer(head.data(), head.size()),
                                                        asio::buffer(body.data(), body.size())};
        asio::async_write(socket_, both, Told(std::move(next)));
    }

    void Wait(Clock::duration time, std::function<void()> then) override
    {
        timer_.expires_after(time);
        timer_.async_wait(Later([then = std::move(then)](error_code error) {
            if (!error) {
                then();
            }
        }));
    }

    void Limit(Clock::duration time) override
    {
        limit_ = Clock::now() + time;
        if (!watched_ || limit_ < watch_.expiry()) {
            Watch();
        }
    }

    void Unlimit() override { limit_ = kNever; }

    void FinishSending() override
    {
        error_code ignored;
        socket_.shutdown(tcp::socket::shutdown_send, ignored);
    }

    void Reset() override
    {
        error_code ignored;
        socket_.set_option(asio::socket_base::linger(true, 0), ignored);
        socket_.close(ignored);
    }

private:
    static constexpr Clock::time_point kNever = Clock::time_point::max();

    static Moved Told(Next next)
    {
        return [next = std::move(next)](error_code error, std::size_t size) { next(!error, size); };
    }

    // What puts the limit off leaves the timer alone, which looks again when it strikes: a connection lives for many
    // requests.
    void Watch()
    {
        watched_ = true;
        watch_.expires_at(limit_);
        watch_.async_wait(Later([weak = weak_from_this()](error_code error) {
            const std::shared_ptr<HttpSocket> self = weak.lock();
            if (error || !self) {
                return;
            }
            self->watched_ = false;
            if (self->limit_ <= Clock::now()) {
                error_code ignored;
                self->socket_.close(ignored);
            } else if (self->limit_ != kNever) {
                self->Watch();
            }
        }));
    }

    tcp::socket socket_;
    asio::steady_timer timer_;
    asio::steady_timer watch_;
    bool watched_ = false; ///< The timer runs.
    Clock::time_point limit_ = kNever;
};

} // namespace

std::shared_ptr<HttpConnection> ConnectionOf(tcp::socket socket)
{
    return std::make_shared<HttpSocket>(std::move(socket));
}

} // namespace nexwire::simulator
