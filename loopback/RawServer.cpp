#include "loopback/RawServer.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>

#include <keel/StringUtil.h>

#include "loopback/Transport.h"

namespace nexwire::loopback {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;
using Keel::StringUtil::LowerCase;
using std::chrono::milliseconds;

namespace {

const tcp::endpoint kAnyPort(asio::ip::address_v4::loopback(), 0);

std::string Trim(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Takes the head apart; `request.bytes` ends with the empty line.
void ParseHead(RawRequest& request)
{
    const std::size_t lineEnd = request.bytes.find("\r\n");
    const std::string line = request.bytes.substr(0, lineEnd);
    const std::size_t first = line.find(' ');
    request.method = line.substr(0, first);
    if (first != std::string::npos) {
        request.target = line.substr(first + 1, line.rfind(' ') - first - 1);
    }
    for (std::size_t at = lineEnd + 2; at < request.bytes.size();) {
        const std::size_t end = request.bytes.find("\r\n", at);
        const std::string field = request.bytes.substr(at, end - at);
        const std::size_t colon = field.find(':');
        if (colon != std::string::npos) {
            request.fields.emplace_back(field.substr(0, colon), Trim(field.substr(colon + 1)));
        }
        at = end + 2;
    }
}

/// Bytes of `rest` that belong to a chunked body; npos when more must come first.
std::size_t ChunksEnd(const std::string& rest)
{
    const std::size_t last = rest.rfind("0\r\n\r\n", 0) == 0 ? 0 : rest.find("\r\n0\r\n\r\n");
    return last == std::string::npos ? last : last + (last == 0 ? 5 : 7);
}

class PlainStream : public Stream {
public:
    explicit PlainStream(tcp::socket socket) : socket_(std::move(socket)) {}

    tcp::socket& Socket() override { return socket_; }
    void Open(Done done) override { done({}, 0); }
    void ReadSome(asio::mutable_buffer buffer, Done done) override { socket_.async_read_some(buffer, std::move(done)); }
    void Write(asio::const_buffer bytes, Done done) override
    {
        asio::async_write(socket_, asio::const_buffers_1(bytes), std::move(done));
    }
    void SignOff(Done done) override { done({}, 0); }

private:
    tcp::socket socket_;
};

class PlainTransport : public Transport {
public:
    const char* Scheme() const override { return "http"; }
    std::unique_ptr<Stream> Wrap(tcp::socket socket) override
    {
        return std::make_unique<PlainStream>(std::move(socket));
    }
};

} // namespace

Reply& Reply::Add(Step::Kind kind, milliseconds time)
{
    steps_.push_back({kind, nullptr, 0, time});
    return *this;
}

Reply& Reply::Send(std::shared_ptr<const std::string> bytes, std::size_t size)
{
    Add(Step::Kind::Send);
    steps_.back().bytes = std::move(bytes);
    steps_.back().size = size;
    return *this;
}

Reply& Reply::Send(std::string bytes)
{
    const auto shared = std::make_shared<const std::string>(std::move(bytes));
    return Send(shared, shared->size());
}

Reply& Reply::Drip(std::string bytes, milliseconds pause)
{
    Send(std::move(bytes));
    steps_.back().kind = Step::Kind::Drip;
    steps_.back().time = pause;
    return *this;
}

Reply& Reply::Wait(milliseconds time)
{
    return Add(Step::Kind::Wait, time);
}

Reply& Reply::Close()
{
    return Add(Step::Kind::Close);
}

Reply& Reply::SignOff()
{
    return Add(Step::Kind::SignOff);
}

Reply& Reply::Reset()
{
    return Add(Step::Kind::Reset);
}

Reply& Reply::Hang()
{
    return Add(Step::Kind::Hang);
}

std::string Reply::HttpBytes(int status, const std::string& body, const std::vector<std::string>& fields)
{
    std::string bytes = "HTTP/1.1 " + std::to_string(status) + " Scripted\r\n";
    for (const std::string& field : fields) {
        bytes += field + "\r\n";
    }
    return bytes + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

Reply Reply::Http(int status, const std::string& body, const std::vector<std::string>& fields)
{
    return Reply().Send(HttpBytes(status, body, fields));
}

Reply Reply::Json(const std::string& body)
{
    return Http(200, body, {"Content-Type: application/json"});
}

Reply Reply::Chunked(const std::string& body, std::size_t chunk)
{
    static const char digits[] = "0123456789abcdef";
    std::string bytes = "HTTP/1.1 200 Scripted\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (std::size_t at = 0; at < body.size(); at += chunk) {
        const std::string piece = body.substr(at, chunk);
        std::string size;
        for (std::size_t left = piece.size(); left != 0; left /= 16) {
            size.insert(size.begin(), digits[left % 16]);
        }
        bytes += size + "\r\n" + piece + "\r\n";
    }
    return Reply().Send(bytes + "0\r\n\r\n");
}

std::vector<std::string> RawRequest::Values(const std::string& name) const
{
    std::vector<std::string> values;
    const std::string wanted = LowerCase(name);
    for (const auto& field : fields) {
        if (field.first.size() == wanted.size() && LowerCase(field.first) == wanted) {
            values.push_back(field.second);
        }
    }
    return values;
}

std::string RawRequest::Value(const std::string& name) const
{
    const std::vector<std::string> values = Values(name);
    return values.empty() ? "<none>" : values.size() > 1 ? "<several>" : values.front();
}

// Everything below `Run` happens on the server's thread; what tests read is under the mutex.
class RawServer::Impl {
public:
    explicit Impl(std::shared_ptr<Transport> transport)
        : transport_(std::move(transport)), acceptor_(context_, kAnyPort), port_(acceptor_.local_endpoint().port())
    {
        default_ = Reply::Json("{}");
        Accept();
        thread_ = std::thread([this] { context_.run(); });
    }

    ~Impl()
    {
        context_.stop();
        thread_.join();
    }

    class Connection;

    void Accept();
    Reply Take(RawRequest request)
    {
        std::unique_lock<std::mutex> lock(mutex_);
        const Handler handler = queue_.empty() ? handler_ : nullptr;
        Reply reply;
        if (!queue_.empty()) {
            reply = std::move(queue_.front());
            queue_.pop_front();
        } else if (!handler) {
            reply = default_;
        }
        if (keep_) {
            requests_.push_back(handler ? request : std::move(request));
            changed_.notify_all();
        }
        lock.unlock();
        return handler ? handler(request) : reply;
    }

    bool Keeps() const
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return keep_;
    }

    template <class Change>
    void Locked(Change change)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        change();
        changed_.notify_all();
    }

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::deque<Reply> queue_;
    Reply default_;
    Handler handler_;
    Reply onAccept_;
    int receiveBuffer_ = 0;
    bool keep_ = true;
    std::vector<RawRequest> requests_;
    std::size_t accepted_ = 0;
    std::size_t open_ = 0;
    const std::shared_ptr<Transport> transport_;

    // Last, because connections that are still open end with it and count themselves out.
    asio::io_context context_;
    tcp::acceptor acceptor_;
    const std::uint16_t port_;
    std::thread thread_;
};

class RawServer::Impl::Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(Impl& server, tcp::socket socket, std::size_t number)
        : server_(server), stream_(server.transport_->Wrap(std::move(socket))), timer_(server.context_),
          number_(number), piece_(kPieceBytes)
    {
        server_.Locked([this] { ++server_.open_; });
        error_code ignored;
        stream_->Socket().set_option(tcp::no_delay(true), ignored);
    }

    ~Connection()
    {
        server_.Locked([this] { --server_.open_; });
    }

    void Start(Reply reply)
    {
        stream_->Open(IfGood([this, onAccept = std::move(reply)](std::size_t) {
            if (onAccept.Steps().empty()) {
                ReadHead();
                return;
            }
            reply_ = onAccept;
            Run(0);
        }));
    }

private:
    static constexpr std::size_t kPieceBytes = std::size_t{256} << 10;

    // What follows when all went well; the connection lives until then, and ends when nothing more is to come.
    template <class Then>
    Stream::Done IfGood(Then then)
    {
        return [self = shared_from_this(), then = std::move(then)](const error_code& error, std::size_t count) {
            if (!error) {
                then(count);
            }
        };
    }

    template <class Then>
    void ReadMore(Then then)
    {
        stream_->ReadSome(asio::buffer(piece_), IfGood([this, then](std::size_t count) {
                              received_.append(piece_.data(), count);
                              then();
                          }));
    }

    void ReadHead()
    {
        reading_ = true;
        const std::size_t end = received_.find("\r\n\r\n");
        if (end == std::string::npos) {
            ReadMore([this] { ReadHead(); });
            return;
        }
        request_ = RawRequest();
        request_.connection = number_;
        request_.bytes = received_.substr(0, end + 4);
        received_.erase(0, end + 4);
        ParseHead(request_);
        if (LowerCase(request_.Value("Transfer-Encoding")) == "chunked") {
            ReadChunks();
            return;
        }
        const std::vector<std::string> lengths = request_.Values("Content-Length");
        bodyLeft_ = lengths.empty() ? 0 : std::stoul("0" + lengths.front());
        ReadBody(server_.Keeps());
    }

    void ReadBody(bool keep)
    {
        const std::size_t size = std::min(bodyLeft_, received_.size());
        if (keep) {
            request_.body.append(received_, 0, size);
        }
        received_.erase(0, size);
        bodyLeft_ -= size;
        if (bodyLeft_ > 0) {
            ReadMore([this, keep] { ReadBody(keep); });
        } else {
            Answer();
        }
    }

    void ReadChunks()
    {
        const std::size_t end = ChunksEnd(received_);
        if (end == std::string::npos) {
            ReadMore([this] { ReadChunks(); });
            return;
        }
        request_.body = received_.substr(0, end);
        received_.erase(0, end);
        Answer();
    }

    void Answer()
    {
        request_.bytes += request_.body;
        reply_ = server_.Take(std::move(request_));
        Run(0);
    }

    void Run(std::size_t index)
    {
        if (index == reply_.Steps().size()) {
            ReadHead();
            return;
        }
        const Reply::Step& step = reply_.Steps()[index];
        error_code ignored;
        switch (step.kind) {
        case Reply::Step::Kind::Send:
            stream_->Write(asio::buffer(step.bytes->data(), step.size),
                           IfGood([this, index](std::size_t) { Run(index + 1); }));
            break;
        case Reply::Step::Kind::Drip:
            Drip(index, 0);
            break;
        case Reply::Step::Kind::Wait:
            After(step.time, [self = shared_from_this(), index] { self->Run(index + 1); });
            break;
        case Reply::Step::Kind::Close:
            stream_->Socket().shutdown(tcp::socket::shutdown_send, ignored);
            Drain();
            break;
        case Reply::Step::Kind::SignOff:
            stream_->SignOff([self = shared_from_this()](const error_code&, std::size_t) {});
            break;
        case Reply::Step::Kind::Reset:
            stream_->Socket().set_option(asio::socket_base::linger(true, 0), ignored);
            stream_->Socket().close(ignored);
            break;
        case Reply::Step::Kind::Hang:
            if (reading_) {
                Drain();
            } else {
                After(std::chrono::hours(24), [self = shared_from_this()] {});
            }
            break;
        }
    }

    void Drip(std::size_t index, std::size_t at)
    {
        const Reply::Step& step = reply_.Steps()[index];
        if (at == step.size) {
            Run(index + 1);
            return;
        }
        After(step.time, [self = shared_from_this(), index, at] {
            self->stream_->Write(asio::buffer(self->reply_.Steps()[index].bytes->data() + at, 1),
                                 self->IfGood([self, index, at](std::size_t) { self->Drip(index, at + 1); }));
        });
    }

    // One type for all: each further one would compile the machinery anew.
    void After(milliseconds time, std::function<void()> then)
    {
        timer_.expires_after(time);
        timer_.async_wait([then = std::move(then)](const error_code& error) {
            if (!error) {
                then();
            }
        });
    }

    // Reads and forgets until the client goes away; closing with unread bytes would turn into a reset.
    void Drain()
    {
        received_.clear();
        ReadMore([this] { Drain(); });
    }

    Impl& server_;
    const std::unique_ptr<Stream> stream_;
    asio::steady_timer timer_;
    const std::size_t number_;
    bool reading_ = false;
    std::vector<char> piece_;
    std::string received_; ///< What has not been looked at.
    RawRequest request_;
    std::size_t bodyLeft_ = 0; ///< Bytes of its body that are still to come.
    Reply reply_;
};

void RawServer::Impl::Accept()
{
    acceptor_.async_accept([this](const error_code& error, tcp::socket socket) {
        if (error) {
            return;
        }
        Reply onAccept;
        std::size_t number = 0;
        Locked([&] {
            onAccept = onAccept_;
            number = accepted_++;
        });
        std::make_shared<Connection>(*this, std::move(socket), number)->Start(std::move(onAccept));
        Accept();
    });
}

RawServer::RawServer() : RawServer(std::make_shared<PlainTransport>()) {}

RawServer::RawServer(std::shared_ptr<Transport> transport) : impl_(std::make_unique<Impl>(std::move(transport))) {}

RawServer::~RawServer() = default;

std::uint16_t RawServer::Port() const
{
    return impl_->port_;
}

std::string RawServer::Base() const
{
    return impl_->transport_->Scheme() + std::string("://127.0.0.1:") + std::to_string(Port());
}

void RawServer::Enqueue(Reply reply)
{
    impl_->Locked([&] { impl_->queue_.push_back(std::move(reply)); });
}

void RawServer::SetDefault(Reply reply)
{
    impl_->Locked([&] { impl_->default_ = std::move(reply); });
}

void RawServer::SetHandler(Handler handler)
{
    impl_->Locked([&] { impl_->handler_ = std::move(handler); });
}

void RawServer::SetOnAccept(Reply reply)
{
    impl_->Locked([&] { impl_->onAccept_ = std::move(reply); });
}

void RawServer::SetReceiveBuffer(int bytes)
{
    // Accepted sockets inherit it from the listening one.
    asio::post(impl_->context_, [this, bytes] {
        error_code ignored;
        impl_->acceptor_.set_option(asio::socket_base::receive_buffer_size(bytes), ignored);
        impl_->Locked([&] { impl_->receiveBuffer_ = bytes; });
    });
    std::unique_lock<std::mutex> lock(impl_->mutex_);
    impl_->changed_.wait(lock, [&] { return impl_->receiveBuffer_ == bytes; });
}

void RawServer::SetKeeping(bool keep)
{
    impl_->Locked([&] { impl_->keep_ = keep; });
}

std::vector<RawRequest> RawServer::TakeRequests()
{
    std::vector<RawRequest> requests;
    impl_->Locked([&] { requests.swap(impl_->requests_); });
    return requests;
}

std::vector<RawRequest> RawServer::Requests() const
{
    const std::lock_guard<std::mutex> lock(impl_->mutex_);
    return impl_->requests_;
}

bool RawServer::WaitForRequests(std::size_t count, milliseconds time) const
{
    std::unique_lock<std::mutex> lock(impl_->mutex_);
    return impl_->changed_.wait_for(lock, time, [&] { return impl_->requests_.size() >= count; });
}

std::size_t RawServer::Connections() const
{
    const std::lock_guard<std::mutex> lock(impl_->mutex_);
    return impl_->accepted_;
}

bool RawServer::WaitForOpen(std::size_t count, milliseconds time) const
{
    std::unique_lock<std::mutex> lock(impl_->mutex_);
    return impl_->changed_.wait_for(lock, time, [&] { return impl_->open_ == count; });
}

std::uint16_t ClosedPort()
{
    asio::io_context context;
    return tcp::acceptor(context, kAnyPort).local_endpoint().port();
}

class DeafListener::Impl {
public:
    Impl() : acceptor_(context_)
    {
        acceptor_.open(tcp::v4());
        acceptor_.bind(kAnyPort);
        acceptor_.listen(0);
        // The queue holds one or two whatever is asked for; fill it until an attempt stays unanswered.
        for (int attempt = 0; attempt < 16 && !works_; ++attempt) {
            fillers_.emplace_back(context_);
            bool done = false;
            fillers_.back().async_connect(acceptor_.local_endpoint(), [&done](const error_code&) { done = true; });
            context_.restart();
            context_.run_for(milliseconds(100));
            works_ = !done;
        }
    }

    ~Impl()
    {
        // The pending attempt refers to a local of the constructor; it is dropped, never run.
        context_.stop();
    }

    asio::io_context context_;
    tcp::acceptor acceptor_;
    std::deque<tcp::socket> fillers_;
    bool works_ = false;
};

DeafListener::DeafListener() : impl_(std::make_unique<Impl>()) {}

DeafListener::~DeafListener() = default;

std::uint16_t DeafListener::Port() const
{
    return impl_->acceptor_.local_endpoint().port();
}

bool DeafListener::Works() const
{
    return impl_->works_;
}

} // namespace nexwire::loopback
