#include "src/HttpServer.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/string.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

#include <array>
#include <chrono>
#include <functional>
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

constexpr std::size_t kReadSize = 64u * 1024u;
constexpr std::uint32_t kHeaderLimit = 64u * 1024u;
constexpr std::size_t kDrops = 16; // Of an answer that drips.
constexpr std::chrono::milliseconds kStreamStep(50);

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

/// What goes on when a read or write is over. One type for all: each further one would compile the machinery anew.
using Next = std::function<void(beast::error_code, std::size_t)>;

// One connection. All its handlers run on its strand, so it needs no lock.
class Session : public std::enable_shared_from_this<Session> {
public:
    Session(tcp::socket socket, const Shared& shared)
        : stream_(std::move(socket)), timer_(stream_.get_executor()), shared_(shared)
    {
        beast::error_code ignored;
        stream_.socket().set_option(tcp::no_delay(true), ignored);
    }

    void Read()
    {
        parser_.emplace();
        parser_->header_limit(kHeaderLimit);
        parser_->body_limit(shared_.settings.bodyLimit);
        headRead_ = false;
        stream_.expires_after(std::chrono::seconds(shared_.settings.idleSeconds));
        Feed();
    }

private:
    /// Gives the parser what has come, which may begin with the rest of what came last time.
    void Feed()
    {
        beast::error_code error;
        if (buffer_.size() > 0) {
            buffer_.consume(parser_->put(buffer_.data(), error));
        }
        if (error && error != http::error::need_more) {
            Broken(error);
        } else if (parser_->is_done()) {
            Handle();
        } else if (parser_->is_header_done() && !headRead_) {
            headRead_ = true;
            parser_->eager(true);
            if (beast::iequals(parser_->get()[http::field::expect], "100-continue")) {
                Write("HTTP/1.1 100 Continue\r\n\r\n", "", [this] { Feed(); });
            } else {
                Feed();
            }
        } else {
            stream_.async_read_some(buffer_.prepare(kReadSize),
                                    Next([self = shared_from_this()](beast::error_code failed, std::size_t size) {
                                        self->buffer_.commit(size);
                                        failed ? self->Close() : self->Feed();
                                    }));
        }
    }

    void Write(std::string head, std::string_view body, std::function<void()> then)
    {
        head_ = std::move(head);
        const std::array<asio::const_buffer, 2> both = {asio::buffer(head_), asio::buffer(body.data(), body.size())};
        asio::async_write(stream_, both, Next([self = shared_from_this(), then](beast::error_code error, std::size_t) {
                              if (!error) {
                                  then();
                              }
                          }));
    }

    void Wait(std::chrono::steady_clock::duration time, std::function<void()> then)
    {
        timer_.expires_after(time);
        timer_.async_wait([self = shared_from_this(), then](beast::error_code error) {
            if (!error) {
                then();
            }
        });
    }

    void Handle()
    {
        begin_ = Clock::now();
        auto& message = parser_->get();
        Request& request = done_.request;
        request = Request();
        request.verb = Text(message.method_string());
        done_.target = Text(message.target());
        const std::size_t mark = done_.target.find('?');
        request.path = done_.target.substr(0, mark);
        request.query = mark == std::string::npos ? std::string() : done_.target.substr(mark + 1);
        for (const auto& field : message) {
            request.headers[LowerCase(field.name_string())] = Text(field.value());
        }
        request.body = std::move(message.body());
        keepAlive_ = message.keep_alive();
        answer_ = shared_.handler(request);
        if (message.method() == http::verb::head) {
            answer_.body.clear();
        }
        if (answer_.delayMs > 0 && answer_.damage != Damage::kDrip) {
            Wait(std::chrono::milliseconds(answer_.delayMs), [this] { Send(); });
        } else {
            Send();
        }
    }

    // The peer said something that is not HTTP, or too much of it.
    void Broken(beast::error_code error)
    {
        const bool tooLarge = error == http::error::body_limit || error == http::error::header_limit;
        answer_ = tooLarge ? RefuseOutright(413, Reason::kBodyTooLarge, error.message())
                           : RefuseOutright(400, Reason::kMalformedHttp, error.message());
        done_.request = Request();
        done_.request.verb = "-";
        done_.target = "-";
        if (parser_->is_header_done()) {
            done_.request.verb = Text(parser_->get().method_string());
            done_.target = Text(parser_->get().target());
        }
        begin_ = Clock::now();
        keepAlive_ = false;
        Send();
    }

    void Send()
    {
        const auto field = [](const char* name, const std::string& value) {
            return value.empty() ? std::string() : std::string(name) + ": " + value + "\r\n";
        };
        const bool streams = static_cast<bool>(answer_.stream);
        const bool closes = !keepAlive_ || streams || answer_.damage == Damage::kTorn;
        body_ = std::make_shared<const std::string>(std::move(answer_.body));
        std::string head = "HTTP/1.1 " + std::to_string(answer_.status) + " " +
                           Text(http::obsolete_reason(static_cast<http::status>(answer_.status))) + "\r\n" +
                           field("Content-Type", answer_.type) + field("Content-Range", answer_.range) +
                           answer_.fields + field("Connection", closes ? "close" : "") +
                           (streams ? std::string() : field("Content-Length", std::to_string(body_->size()))) + "\r\n";
        const Damage damage = answer_.damage;
        Tell(head);
        stream_.expires_after(std::chrono::seconds(shared_.settings.idleSeconds)); // A delay may have taken longer.
        if (damage == Damage::kResetBefore) {
            Reset();
        } else if (streams) {
            stream_.expires_never();
            Write(std::move(head), {}, [this] { Go(); });
        } else if (damage == Damage::kDrip) {
            stream_.expires_never();
            Write(std::move(head), {}, [this] { Drip(0); });
        } else if (damage == Damage::kTorn) {
            Write(std::move(head), std::string_view(*body_).substr(0, body_->size() / 2), [this] { Close(); });
        } else if (damage == Damage::kResetAfter) {
            // What is still on its way would be lost with the connection.
            Write(std::move(head), *body_, [this] { Wait(std::chrono::milliseconds(20), [this] { Reset(); }); });
        } else {
            Write(std::move(head), *body_, [this] { keepAlive_ ? Read() : Close(); });
        }
    }

    void Tell(const std::string& head)
    {
        done_.requestBytes = done_.request.body.size();
        done_.sent = std::make_shared<const std::string>(std::move(done_.request.body));
        done_.answer = body_;
        done_.head = head;
        done_.status = answer_.status;
        done_.code = std::move(answer_.code);
        done_.message = std::move(answer_.message);
        done_.type = std::move(answer_.type);
        done_.fault = std::move(answer_.fault);
        done_.answerBytes = body_->size();
        done_.milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - begin_).count();
        shared_.observer(std::move(done_));
    }

    // One piece after the other, spread over the time of the delay.
    void Drip(std::size_t drop)
    {
        if (drop == kDrops) {
            keepAlive_ ? Read() : Close();
            return;
        }
        const std::size_t begin = body_->size() * drop / kDrops;
        const std::size_t end = body_->size() * (drop + 1) / kDrops;
        Wait(std::chrono::milliseconds(answer_.delayMs) / kDrops, [this, begin, end, drop] {
            Write({}, std::string_view(*body_).substr(begin, end - begin), [this, drop] { Drip(drop + 1); });
        });
    }

    // Asks what there is to say and says it, until nobody listens.
    void Go()
    {
        std::string more;
        if (!answer_.stream(more)) {
            Close();
        } else if (more.empty()) {
            Wait(kStreamStep, [this] { Go(); });
        } else {
            Write(std::move(more), {}, [this] { Wait(kStreamStep, [this] { Go(); }); });
        }
    }

    void Reset()
    {
        beast::error_code ignored;
        stream_.socket().set_option(asio::socket_base::linger(true, 0), ignored);
        stream_.socket().close(ignored);
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
        stream_.async_read_some(asio::mutable_buffer(rest_.data(), rest_.size()),
                                Next([self = shared_from_this()](beast::error_code error, std::size_t) {
                                    if (!error) {
                                        self->Drain();
                                    }
                                }));
    }

    beast::tcp_stream stream_;
    asio::steady_timer timer_;
    const Shared& shared_;
    beast::flat_buffer buffer_;
    std::optional<http::request_parser<http::string_body>> parser_;
    bool headRead_ = false;
    bool keepAlive_ = false;
    Clock::time_point begin_;
    Answer answer_;
    HttpServer::Done done_; ///< Of the request that is being answered.
    std::string head_;      ///< Of the answer that is going out, like the body.
    std::shared_ptr<const std::string> body_;
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
