#pragma once

#include <array>
#include <memory>
#include <string>
#include <thread>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>

namespace bench {

/// A server on 127.0.0.1 that does nothing but answer every request with the same bytes, so that only the clients are
/// measured. One thread for all connections, lest it matters on which processor each connection's thread happens to
/// run. Lives until the process ends.
class NullServer {
public:
    NullServer() : acceptor_(context_, Tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0))
    {
        Accept();
        std::thread([this] { context_.run(); }).detach();
    }

    std::string Port() const { return std::to_string(acceptor_.local_endpoint().port()); }

    /// To be called between exchanges, as `LastBody`.
    void AnswerWith(const std::string& body)
    {
        answer_ =
            "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) +
            "\r\n\r\n" + body;
    }

    /// Of the latest request.
    const std::string& LastBody() const { return lastBody_; }

private:
    using Tcp = boost::asio::ip::tcp;
    using Error = boost::system::error_code;

    struct Connection {
        explicit Connection(Tcp::socket accepted) : socket(std::move(accepted)) {}
        Tcp::socket socket;
        std::array<char, 16 * 1024> piece;
        std::string request;
    };

    void Accept()
    {
        acceptor_.async_accept([this](const Error& error, Tcp::socket socket) {
            if (!error) {
                socket.set_option(Tcp::no_delay(true));
                Read(std::make_shared<Connection>(std::move(socket)));
                Accept();
            }
        });
    }

    void Read(const std::shared_ptr<Connection>& connection)
    {
        connection->socket.async_read_some(boost::asio::buffer(connection->piece),
                                           [this, connection](const Error& error, std::size_t size) {
                                               if (!error) {
                                                   connection->request.append(connection->piece.data(), size);
                                                   Answer(connection);
                                               }
                                           });
    }

    void Answer(const std::shared_ptr<Connection>& connection)
    {
        static const std::string kLength = "Content-Length: ";
        std::string& request = connection->request;
        const std::size_t head = request.find("\r\n\r\n");
        const std::size_t field = request.find(kLength);
        if (head != std::string::npos) {
            const std::size_t body = field < head ? std::stoul("0" + request.substr(field + kLength.size(), 9)) : 0;
            if (request.size() >= head + 4 + body) {
                lastBody_.assign(request, head + 4, body);
                request.clear();
                Error error;
                boost::asio::write(connection->socket, boost::asio::buffer(answer_), error);
            }
        }
        Read(connection);
    }

    boost::asio::io_context context_;
    Tcp::acceptor acceptor_;
    // Used by the main thread between exchanges only, and a round trip lies between the two sides.
    std::string answer_;
    std::string lastBody_;
};

} // namespace bench
