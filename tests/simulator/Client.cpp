#include "Client.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

#include <array>
#include <chrono>
#include <thread>

namespace test {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;

tcp::endpoint Endpoint(std::uint16_t port)
{
    return {asio::ip::address_v4::loopback(), port};
}

} // namespace

class Client::Impl {
public:
    explicit Impl(std::uint16_t port) : socket_(context_) { socket_.connect(Endpoint(port)); }

    Reply Send(const std::string& verb, const std::string& path, const std::string& body)
    {
        const std::string head = verb + " " + path +
                                 " HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Length: " + std::to_string(body.size()) +
                                 "\r\n\r\n";
        asio::write(socket_, asio::buffer(head + body));
        http::response_parser<http::string_body> parser;
        parser.body_limit(256u << 20u);
        parser.skip(verb == "HEAD");
        parser.eager(true);
        while (!parser.is_done()) {
            beast::error_code error;
            buffer_.commit(socket_.read_some(buffer_.prepare(kReadSize), error));
            if (error == asio::error::eof && parser.got_some()) {
                parser.put_eof(error = {});
            } else if (!error) {
                buffer_.consume(parser.put(buffer_.data(), error));
            }
            if (error && error != http::error::need_more) {
                throw beast::system_error(error);
            }
        }
        Reply reply;
        reply.status = parser.get().result_int();
        reply.body = parser.get().body();
        reply.json = std::make_shared<rapidjson::Document>();
        reply.json->Parse(reply.body.c_str(), reply.body.size());
        if (reply.json->HasParseError()) {
            reply.json.reset();
        }
        return reply;
    }

private:
    static constexpr std::size_t kReadSize = 64u * 1024u;

    asio::io_context context_;
    tcp::socket socket_;
    beast::flat_buffer buffer_;
};

Client::Client(std::uint16_t port) : impl_(std::make_unique<Impl>(port)) {}
Client::~Client() = default;

Reply Client::Send(const std::string& verb, const std::string& path, const std::string& body)
{
    return impl_->Send(verb, path, body);
}

std::string SendRaw(std::uint16_t port, const std::string& bytes, bool closeAfter)
{
    asio::io_context context;
    tcp::socket socket(context);
    socket.connect(Endpoint(port));
    beast::error_code error;
    asio::write(socket, asio::buffer(bytes), error); // The platform may close before it has all.
    if (closeAfter) {
        socket.shutdown(tcp::socket::shutdown_send, error);
    }
    std::string answer;
    std::array<char, 4096> piece{};
    socket.non_blocking(true);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    while (std::chrono::steady_clock::now() < end) {
        answer.append(piece.data(), socket.read_some(asio::buffer(piece), error));
        if (error == asio::error::would_block) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        } else if (error) {
            break;
        }
    }
    return answer;
}

} // namespace test
