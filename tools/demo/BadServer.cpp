#include "tools/demo/BadServer.h"

#include <array>
#include <list>
#include <string>
#include <thread>

#include <boost/asio.hpp>

namespace nexwire {
namespace demo {

namespace asio = boost::asio;
using boost::asio::ip::tcp;

struct BadServer::Server {
    explicit Server(Manner manner_) : manner(manner_) { Accept(); }

    void Accept()
    {
        acceptor.async_accept([this](const boost::system::error_code& error, tcp::socket socket) {
            if (error) {
                return;
            }
            connections.push_back(std::move(socket));
            Read(connections.back());
            Accept();
        });
    }

    void Read(tcp::socket& socket)
    {
        socket.async_read_some(
            asio::buffer(input), [this, &socket](const boost::system::error_code& error, std::size_t) {
                if (error) {
                    return;
                }
                if (manner == Manner::NotJson) {
                    asio::async_write(socket, asio::buffer(page), [](const boost::system::error_code&, std::size_t) {});
                }
                Read(socket);
            });
    }

    const Manner manner;
    const std::string page = "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 33\r\n\r\n"
                             "<html>Sign in to the Wi-Fi</html>";
    std::array<char, 4096> input{};
    asio::io_context context;
    std::list<tcp::socket> connections;
    tcp::acceptor acceptor{context, tcp::endpoint(asio::ip::address_v4::loopback(), 0)};
    std::thread thread;
};

BadServer::BadServer(Manner manner) : server_(new Server(manner))
{
    Server* const server = server_.get();
    server->thread = std::thread([server] { server->context.run(); });
}

BadServer::~BadServer()
{
    server_->context.stop();
    server_->thread.join();
}

std::uint16_t BadServer::Port() const
{
    return server_->acceptor.local_endpoint().port();
}

} // namespace demo
} // namespace nexwire
