#include "src/HttpServer.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/strand.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>

#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>
#include <vector>

#include <keel/StringUtil.h>

namespace nexwire::simulator {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kReadSize = 65536;
constexpr std::uint32_t kHeaderLimit = 64u * 1024u;

std::string Text(beast::string_view view)
{
    return {view.data(), view.size()};
}

std::string LowerCase(beast::string_view view)
{
    return Keel::StringUtil::LowerCase(Text(view));
}

struct Shared {
    HttpServer::Settings settings;
    HttpServer::Handler handler;
    HttpServer::Observer observer;
};

// One connection. All its handlers run on its strand, so it needs no lock.
class Session : public std::enable_shared_from_this<Session> {
public:
    Session(tcp::socket socket, const Shared& shared) : stream_(std::move(socket)), shared_(shared)
    {
        beast::error_code ignored;
        stream_.socket().set_option(tcp::no_delay(true), ignored);
        buffer_.reserve(kReadSize); // What it holds is what one read asks for.
    }

    void Read()
    {
        parser_.emplace();
        parser_->header_limit(kHeaderLimit);
        parser_->body_limit(shared_.settings.bodyLimit);
        stream_.expires_after(std::chrono::seconds(shared_.settings.idleSeconds));
        http::async_read_header(stream_, buffer_, *parser_,
                                [self = shared_from_this()](beast::error_code error, std::size_t) {
                                    error ? self->Broken(error) : self->HeaderRead();
                                });
    }

private:
    void HeaderRead()
    {
        if (!beast::iequals(parser_->get()[http::field::expect], "100-continue")) {
            ReadBody();
            return;
        }
        response_ = {};
        response_.version(11);
        response_.result(http::status::continue_);
        http::async_write(stream_, response_, [self = shared_from_this()](beast::error_code error, std::size_t) {
            if (!error) {
                self->ReadBody();
            }
        });
    }

    void ReadBody()
    {
        http::async_read(stream_, buffer_, *parser_, [self = shared_from_this()](beast::error_code error, std::size_t) {
            error ? self->Broken(error) : self->Handle();
        });
    }

    void Handle()
    {
        const auto begin = Clock::now();
        auto& message = parser_->get();
        Request request;
        request.verb = Text(message.method_string());
        const std::string target = Text(message.target());
        const std::size_t mark = target.find('?');
        request.path = target.substr(0, mark);
        request.query = mark == std::string::npos ? std::string() : target.substr(mark + 1);
        for (const auto& field : message) {
            request.headers[LowerCase(field.name_string())] = Text(field.value());
        }
        request.body = std::move(message.body());
        const Answer answer = shared_.handler(request);
        HttpServer::Done done;
        done.verb = request.verb;
        done.target = Text(message.target());
        done.requestBytes = request.body.size();
        Send(answer, message.keep_alive(), message.method() == http::verb::head, begin, std::move(done));
    }

    // The peer said something that is not HTTP, or too much of it, or left.
    void Broken(beast::error_code error)
    {
        if (error == http::error::end_of_stream ||
            error.category() != http::make_error_code(http::error::end_of_stream).category()) {
            Close();
            return;
        }
        const bool tooLarge = error == http::error::body_limit || error == http::error::header_limit;
        const bool cut = error == http::error::partial_message;
        if (cut) {
            Close();
            return;
        }
        const Answer answer = tooLarge ? RefuseOutright(413, Reason::kBodyTooLarge, error.message())
                                       : RefuseOutright(400, Reason::kMalformedHttp, error.message());
        HttpServer::Done done;
        done.verb = "-";
        done.target = "-";
        if (parser_->is_header_done()) {
            done.verb = Text(parser_->get().method_string());
            done.target = Text(parser_->get().target());
        }
        Send(answer, false, false, Clock::now(), std::move(done));
    }

    void Send(const Answer& answer, bool keepAlive, bool noBody, Clock::time_point begin, HttpServer::Done done)
    {
        response_ = {};
        response_.version(11);
        response_.result(answer.status);
        response_.set(http::field::content_type, answer.type);
        if (!answer.range.empty()) {
            response_.set(http::field::content_range, answer.range);
        }
        response_.keep_alive(keepAlive);
        response_.body() = noBody ? std::string() : answer.body;
        response_.prepare_payload();
        done.status = answer.status;
        done.code = answer.code;
        done.answerBytes = response_.body().size();
        done.milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
        shared_.observer(done);
        http::async_write(stream_, response_,
                          [self = shared_from_this(), keepAlive](beast::error_code error, std::size_t) {
                              if (error) {
                                  return;
                              }
                              keepAlive ? self->Read() : self->Close();
                          });
    }

    // Says goodbye and reads what still comes for a moment: closing with unread bytes would reset the connection
    // before the peer has read the answer.
    void Close()
    {
        beast::error_code ignored;
        stream_.socket().shutdown(tcp::socket::shutdown_send, ignored);
        stream_.expires_after(std::chrono::seconds(2));
        Drain();
    }

    void Drain()
    {
        stream_.async_read_some(asio::buffer(rest_), [self = shared_from_this()](beast::error_code error, std::size_t) {
            if (!error) {
                self->Drain();
            }
        });
    }

    beast::tcp_stream stream_;
    const Shared& shared_;
    beast::flat_buffer buffer_;
    std::optional<http::request_parser<http::string_body>> parser_;
    http::response<http::string_body> response_;
    std::array<char, 4096> rest_{};
};

} // namespace

class HttpServer::Impl {
public:
    explicit Impl(Shared shared)
        : shared_(std::move(shared)), context_(static_cast<int>(shared_.settings.threads)), acceptor_(context_)
    {
    }

    void Start()
    {
        const tcp::endpoint endpoint(asio::ip::address_v4::loopback(), shared_.settings.port);
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
        acceptor_.async_accept(asio::make_strand(context_), [this](beast::error_code error, tcp::socket socket) {
            if (!error) {
                std::make_shared<Session>(std::move(socket), shared_)->Read();
            } else if (!acceptor_.is_open()) {
                return;
            }
            Accept();
        });
    }

    Shared shared_;
    asio::io_context context_; // Destroys the sessions that are left; they refer to what stands above.
    tcp::acceptor acceptor_;
    std::uint16_t port_ = 0;
    std::vector<std::thread> workers_;
};

HttpServer::HttpServer(Settings settings, Handler handler, Observer observer)
    : impl_(std::make_unique<Impl>(Shared{settings, std::move(handler), std::move(observer)}))
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
