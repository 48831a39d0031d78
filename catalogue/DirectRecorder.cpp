#include "catalogue/DirectRecorder.h"

#include <mutex>
#include <thread>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

namespace nexwire {
namespace catalogue {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using boost::asio::ip::tcp;

struct DirectRecorder::Server {
    asio::io_context context;
    tcp::acceptor acceptor{context, tcp::endpoint(asio::ip::address_v4::loopback(), 0)};
    std::mutex mutex;
    std::unique_ptr<RequestParams> last;
    std::string data = "{}";
    std::thread thread;
    /// The connection being served, so that the destructor can end it.
    std::shared_ptr<tcp::socket> current;
    bool stopping = false;

    void Serve()
    {
        for (;;) {
            boost::system::error_code error;
            const auto socket = std::make_shared<tcp::socket>(context);
            acceptor.accept(*socket, error);
            {
                const std::lock_guard<std::mutex> lock(mutex);
                if (stopping || error) {
                    return;
                }
                current = socket;
            }
            Answer(*socket);
        }
    }

    void Answer(tcp::socket& socket)
    {
        boost::beast::flat_buffer buffer;
        while (Read(socket, buffer)) {
            std::string body = R"({"code":0,"module":0,"msg":"","data":)";
            {
                const std::lock_guard<std::mutex> lock(mutex);
                body += data + "}";
            }
            const std::string answer =
                "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) +
                "\r\n\r\n" + body;
            boost::system::error_code error;
            asio::write(socket, asio::const_buffer(answer.data(), answer.size()), error);
        }
    }

    bool Read(tcp::socket& socket, boost::beast::flat_buffer& buffer)
    {
        http::request_parser<http::string_body> parser;
        parser.eager(true);
        while (!parser.is_done()) {
            boost::system::error_code error;
            buffer.commit(socket.read_some(buffer.prepare(65536), error));
            if (!error) {
                buffer.consume(parser.put(buffer.data(), error));
            }
            if (error && error != http::error::need_more) {
                return false;
            }
        }
        const auto& received = parser.get();
        const std::lock_guard<std::mutex> lock(mutex);
        last = std::make_unique<RequestParams>(std::string(received.target()), 2, received.body());
        for (const auto& field : received) {
            last->headers[std::string(field.name_string())] = std::string(field.value());
        }
        last->headers.erase("Host");
        return true;
    }
};

DirectRecorder::DirectRecorder() : server_(new Server)
{
    Server* const server = server_.get();
    server->thread = std::thread([server] { server->Serve(); });
}

DirectRecorder::~DirectRecorder()
{
    boost::system::error_code ignored;
    {
        const std::lock_guard<std::mutex> lock(server_->mutex);
        server_->stopping = true;
        if (server_->current) {
            server_->current->shutdown(tcp::socket::shutdown_both, ignored);
        }
    }
    // Wakes the acceptor, which a close from another thread need not.
    asio::io_context context;
    tcp::socket wake(context);
    wake.connect(server_->acceptor.local_endpoint(ignored), ignored);
    server_->thread.join();
}

std::string DirectRecorder::Port() const
{
    return std::to_string(server_->acceptor.local_endpoint().port());
}

void DirectRecorder::SetData(const std::string& json)
{
    const std::lock_guard<std::mutex> lock(server_->mutex);
    server_->data = json;
}

void DirectRecorder::Clear()
{
    const std::lock_guard<std::mutex> lock(server_->mutex);
    server_->last.reset();
}

bool DirectRecorder::Take(RequestParams& request)
{
    const std::lock_guard<std::mutex> lock(server_->mutex);
    if (!server_->last) {
        return false;
    }
    request = std::move(*server_->last);
    server_->last.reset();
    return true;
}

} // namespace catalogue
} // namespace nexwire
