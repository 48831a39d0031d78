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

namespace nexwire {
namespace loopback {

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
    explicit PlainStream(tcp::socket socket) : m_socket(std::move(socket)) {}

    tcp::socket& Socket() override { return m_socket; }
    void Open(Done done) override { done({}, 0); }
    void ReadSome(asio::mutable_buffer buffer, Done done) override
    {
        m_socket.async_read_some(buffer, std::move(done));
    }
    void Write(asio::const_buffer bytes, Done done) override
    {
        asio::async_write(m_socket, asio::const_buffers_1(bytes), std::move(done));
    }
    void SignOff(Done done) override { done({}, 0); }

private:
    tcp::socket m_socket;
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
    m_steps.push_back({kind, nullptr, 0, time});
    return *this;
}

Reply& Reply::Send(std::shared_ptr<const std::string> bytes, std::size_t size)
{
    Add(Step::Kind::Send);
    m_steps.back().bytes = std::move(bytes);
    m_steps.back().size = size;
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
    m_steps.back().kind = Step::Kind::Drip;
    m_steps.back().time = pause;
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
        : m_transport(std::move(transport)), m_acceptor(m_context, kAnyPort), m_port(m_acceptor.local_endpoint().port())
    {
        m_default = Reply::Json("{}");
        Accept();
        m_thread = std::thread([this] { m_context.run(); });
    }

    ~Impl()
    {
        m_context.stop();
        m_thread.join();
    }

    class Connection;

    void Accept();
    Reply Take(RawRequest request)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        const Handler handler = m_queue.empty() ? m_handler : nullptr;
        Reply reply;
        if (!m_queue.empty()) {
            reply = std::move(m_queue.front());
            m_queue.pop_front();
        } else if (!handler) {
            reply = m_default;
        }
        if (m_keep) {
            m_requests.push_back(handler ? request : std::move(request));
            m_changed.notify_all();
        }
        lock.unlock();
        return handler ? handler(request) : reply;
    }

    bool Keeps() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_keep;
    }

    template <class Change>
    void Locked(Change change)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        change();
        m_changed.notify_all();
    }

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    std::deque<Reply> m_queue;
    Reply m_default;
    Handler m_handler;
    Reply m_onAccept;
    int m_receiveBuffer = 0;
    bool m_keep = true;
    std::vector<RawRequest> m_requests;
    std::size_t m_accepted = 0;
    std::size_t m_open = 0;
    const std::shared_ptr<Transport> m_transport;

    // Last, because connections that are still open end with it and count themselves out.
    asio::io_context m_context;
    tcp::acceptor m_acceptor;
    const std::uint16_t m_port;
    std::thread m_thread;
};

class RawServer::Impl::Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(Impl& server, tcp::socket socket, std::size_t number)
        : m_server(server), m_stream(server.m_transport->Wrap(std::move(socket))), m_timer(server.m_context),
          m_number(number), m_piece(kPieceBytes)
    {
        m_server.Locked([this] { ++m_server.m_open; });
        error_code ignored;
        m_stream->Socket().set_option(tcp::no_delay(true), ignored);
    }

    ~Connection()
    {
        m_server.Locked([this] { --m_server.m_open; });
    }

    void Start(Reply reply)
    {
        m_stream->Open(IfGood([this, onAccept = std::move(reply)](std::size_t) {
            if (onAccept.Steps().empty()) {
                ReadHead();
                return;
            }
            m_reply = onAccept;
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
        m_stream->ReadSome(asio::buffer(m_piece), IfGood([this, then](std::size_t count) {
                               m_received.append(m_piece.data(), count);
                               then();
                           }));
    }

    void ReadHead()
    {
        m_reading = true;
        const std::size_t end = m_received.find("\r\n\r\n");
        if (end == std::string::npos) {
            ReadMore([this] { ReadHead(); });
            return;
        }
        m_request = RawRequest();
        m_request.connection = m_number;
        m_request.bytes = m_received.substr(0, end + 4);
        m_received.erase(0, end + 4);
        ParseHead(m_request);
        if (LowerCase(m_request.Value("Transfer-Encoding")) == "chunked") {
            ReadChunks();
            return;
        }
        const std::vector<std::string> lengths = m_request.Values("Content-Length");
        m_bodyLeft = lengths.empty() ? 0 : std::stoul("0" + lengths.front());
        ReadBody(m_server.Keeps());
    }

    void ReadBody(bool keep)
    {
        const std::size_t size = std::min(m_bodyLeft, m_received.size());
        if (keep) {
            m_request.body.append(m_received, 0, size);
        }
        m_received.erase(0, size);
        m_bodyLeft -= size;
        if (m_bodyLeft > 0) {
            ReadMore([this, keep] { ReadBody(keep); });
        } else {
            Answer();
        }
    }

    void ReadChunks()
    {
        const std::size_t end = ChunksEnd(m_received);
        if (end == std::string::npos) {
            ReadMore([this] { ReadChunks(); });
            return;
        }
        m_request.body = m_received.substr(0, end);
        m_received.erase(0, end);
        Answer();
    }

    void Answer()
    {
        m_request.bytes += m_request.body;
        m_reply = m_server.Take(std::move(m_request));
        Run(0);
    }

    void Run(std::size_t index)
    {
        if (index == m_reply.Steps().size()) {
            ReadHead();
            return;
        }
        const Reply::Step& step = m_reply.Steps()[index];
        error_code ignored;
        switch (step.kind) {
        case Reply::Step::Kind::Send:
            m_stream->Write(asio::buffer(step.bytes->data(), step.size),
                            IfGood([this, index](std::size_t) { Run(index + 1); }));
            break;
        case Reply::Step::Kind::Drip:
            Drip(index, 0);
            break;
        case Reply::Step::Kind::Wait:
            After(step.time, [self = shared_from_this(), index] { self->Run(index + 1); });
            break;
        case Reply::Step::Kind::Close:
            m_stream->Socket().shutdown(tcp::socket::shutdown_send, ignored);
            Drain();
            break;
        case Reply::Step::Kind::SignOff:
            m_stream->SignOff([self = shared_from_this()](const error_code&, std::size_t) {});
            break;
        case Reply::Step::Kind::Reset:
            m_stream->Socket().set_option(asio::socket_base::linger(true, 0), ignored);
            m_stream->Socket().close(ignored);
            break;
        case Reply::Step::Kind::Hang:
            if (m_reading) {
                Drain();
            } else {
                After(std::chrono::hours(24), [self = shared_from_this()] {});
            }
            break;
        }
    }

    void Drip(std::size_t index, std::size_t at)
    {
        const Reply::Step& step = m_reply.Steps()[index];
        if (at == step.size) {
            Run(index + 1);
            return;
        }
        After(step.time, [self = shared_from_this(), index, at] {
            self->m_stream->Write(asio::buffer(self->m_reply.Steps()[index].bytes->data() + at, 1),
                                  self->IfGood([self, index, at](std::size_t) { self->Drip(index, at + 1); }));
        });
    }

    // One type for all: each further one would compile the machinery anew.
    void After(milliseconds time, std::function<void()> then)
    {
        m_timer.expires_after(time);
        m_timer.async_wait([then = std::move(then)](const error_code& error) {
            if (!error) {
                then();
            }
        });
    }

    // Reads and forgets until the client goes away; closing with unread bytes would turn into a reset.
    void Drain()
    {
        m_received.clear();
        ReadMore([this] { Drain(); });
    }

    Impl& m_server;
    const std::unique_ptr<Stream> m_stream;
    asio::steady_timer m_timer;
    const std::size_t m_number;
    bool m_reading = false;
    std::vector<char> m_piece;
    std::string m_received; ///< What has not been looked at.
    RawRequest m_request;
    std::size_t m_bodyLeft = 0; ///< Bytes of its body that are still to come.
    Reply m_reply;
};

void RawServer::Impl::Accept()
{
    m_acceptor.async_accept([this](const error_code& error, tcp::socket socket) {
        if (error) {
            return;
        }
        Reply onAccept;
        std::size_t number = 0;
        Locked([&] {
            onAccept = m_onAccept;
            number = m_accepted++;
        });
        std::make_shared<Connection>(*this, std::move(socket), number)->Start(std::move(onAccept));
        Accept();
    });
}

RawServer::RawServer() : RawServer(std::make_shared<PlainTransport>()) {}

RawServer::RawServer(std::shared_ptr<Transport> transport) : m_impl(std::make_unique<Impl>(std::move(transport))) {}

RawServer::~RawServer() = default;

std::uint16_t RawServer::Port() const
{
    return m_impl->m_port;
}

std::string RawServer::Base() const
{
    return m_impl->m_transport->Scheme() + std::string("://127.0.0.1:") + std::to_string(Port());
}

void RawServer::Enqueue(Reply reply)
{
    m_impl->Locked([&] { m_impl->m_queue.push_back(std::move(reply)); });
}

void RawServer::SetDefault(Reply reply)
{
    m_impl->Locked([&] { m_impl->m_default = std::move(reply); });
}

void RawServer::SetHandler(Handler handler)
{
    m_impl->Locked([&] { m_impl->m_handler = std::move(handler); });
}

void RawServer::SetOnAccept(Reply reply)
{
    m_impl->Locked([&] { m_impl->m_onAccept = std::move(reply); });
}

void RawServer::SetReceiveBuffer(int bytes)
{
    // Accepted sockets inherit it from the listening one.
    asio::post(m_impl->m_context, [this, bytes] {
        error_code ignored;
        m_impl->m_acceptor.set_option(asio::socket_base::receive_buffer_size(bytes), ignored);
        m_impl->Locked([&] { m_impl->m_receiveBuffer = bytes; });
    });
    std::unique_lock<std::mutex> lock(m_impl->m_mutex);
    m_impl->m_changed.wait(lock, [&] { return m_impl->m_receiveBuffer == bytes; });
}

void RawServer::SetKeeping(bool keep)
{
    m_impl->Locked([&] { m_impl->m_keep = keep; });
}

std::vector<RawRequest> RawServer::TakeRequests()
{
    std::vector<RawRequest> requests;
    m_impl->Locked([&] { requests.swap(m_impl->m_requests); });
    return requests;
}

std::vector<RawRequest> RawServer::Requests() const
{
    const std::lock_guard<std::mutex> lock(m_impl->m_mutex);
    return m_impl->m_requests;
}

bool RawServer::WaitForRequests(std::size_t count, milliseconds time) const
{
    std::unique_lock<std::mutex> lock(m_impl->m_mutex);
    return m_impl->m_changed.wait_for(lock, time, [&] { return m_impl->m_requests.size() >= count; });
}

std::size_t RawServer::Connections() const
{
    const std::lock_guard<std::mutex> lock(m_impl->m_mutex);
    return m_impl->m_accepted;
}

bool RawServer::WaitForOpen(std::size_t count, milliseconds time) const
{
    std::unique_lock<std::mutex> lock(m_impl->m_mutex);
    return m_impl->m_changed.wait_for(lock, time, [&] { return m_impl->m_open == count; });
}

std::uint16_t ClosedPort()
{
    asio::io_context context;
    return tcp::acceptor(context, kAnyPort).local_endpoint().port();
}

class DeafListener::Impl {
public:
    Impl() : m_acceptor(m_context)
    {
        m_acceptor.open(tcp::v4());
        m_acceptor.bind(kAnyPort);
        m_acceptor.listen(0);
        // The queue holds one or two whatever is asked for; fill it until an attempt stays unanswered.
        for (int attempt = 0; attempt < 16 && !m_works; ++attempt) {
            m_fillers.emplace_back(m_context);
            bool done = false;
            m_fillers.back().async_connect(m_acceptor.local_endpoint(), [&done](const error_code&) { done = true; });
            m_context.restart();
            m_context.run_for(milliseconds(100));
            m_works = !done;
        }
    }

    ~Impl()
    {
        // The pending attempt refers to a local of the constructor; it is dropped, never run.
        m_context.stop();
    }

    asio::io_context m_context;
    tcp::acceptor m_acceptor;
    std::deque<tcp::socket> m_fillers;
    bool m_works = false;
};

DeafListener::DeafListener() : m_impl(std::make_unique<Impl>()) {}

DeafListener::~DeafListener() = default;

std::uint16_t DeafListener::Port() const
{
    return m_impl->m_acceptor.local_endpoint().port();
}

bool DeafListener::Works() const
{
    return m_impl->m_works;
}

} // namespace loopback
} // namespace nexwire
