#include "src/HttpServer.h"

#include <optional>
#include <thread>
#include <vector>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/strand.hpp>

#include "src/HttpSession.h"
#include "src/HttpSocket.h"

namespace nexwire::simulator {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

class HttpServer::Impl {
public:
    explicit Impl(HttpShared shared)
        : shared_(std::move(shared)), context_(static_cast<int>(shared_.settings.threads)), acceptor_(context_)
    {
    }

    void Start()
    {
        const tcp::endpoint endpoint(asio::ip::make_address(shared_.settings.address), shared_.settings.port);
        acceptor_.open(endpoint.protocol());
#ifndef _WIN32
        // Elsewhere the option would let a second server take the same port.
        acceptor_.set_option(asio::socket_base::reuse_address(true));
#endif
        acceptor_.bind(endpoint);
        acceptor_.listen();
        port_ = acceptor_.local_endpoint().port();
        Accept();
        for (unsigned i = 0; i < shared_.settings.threads; ++i) {
            workers_.emplace_back([this] { context_.run(); });
        }
    }

    void Stop()
    {
        context_.stop();
        for (std::thread& worker : workers_) {
            worker.join();
        }
        workers_.clear();
    }

    std::uint16_t Port() const
    {
        return port_;
    }

private:
    void Accept()
    {
        next_.emplace(asio::make_strand(context_));
        acceptor_.async_accept(*next_, [this](error_code error) {
            if (!error) {
                Serve(ConnectionOf(std::move(*next_)), shared_);
            } else if (!acceptor_.is_open()) {
                return;
            }
            Accept();
        });
    }

    HttpShared shared_;
    asio::io_context context_; // Destroys the sessions that are left; they refer to what stands above.
    tcp::acceptor acceptor_;
    std::optional<tcp::socket> next_; ///< The connection that is accepted next.
    std::uint16_t port_ = 0;
    std::vector<std::thread> workers_;
};

HttpServer::HttpServer(Settings settings, Handler handler, Observer observer)
    : impl_(std::make_unique<Impl>(HttpShared{settings, std::move(handler), std::move(observer)}))
{
}

HttpServer::~HttpServer()
{
    Stop();
}

void HttpServer::Start()
{
    impl_->Start();
}

void HttpServer::Stop()
{
    impl_->Stop();
}

std::uint16_t HttpServer::Port() const
{
    return impl_->Port();
}

} // namespace nexwire::simulator
