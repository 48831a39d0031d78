#include "catalogue/DirectRecorder.h"

#include <mutex>
#include <thread>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>

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
        boost::system::error_code error;
        for (;;) {
            http::request<http::string_body> received;
            http::read(socket, buffer, received, error);
            if (error) {
                return;
            }
            {
                const std::lock_guard<std::mutex> lock(mutex);
                last = std::make_unique<RequestParams>(std::string(received.target()), 2, received.body());
                for (const auto& field : received) {
                    last->headers[std::string(field.name_string())] = std::string(field.value());
                }
                last->headers.erase("Host");
            }
            http::response<http::string_body> response(http::status::ok, 11);
            response.set(http::field::content_type, "application/json");
            response.body() = R"({"code":0,"module":0,"msg":"","data":{}})";
            response.prepare_payload();
            http::write(socket, response, error);
        }
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
