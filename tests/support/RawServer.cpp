#include "support/RawServer.h"

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

namespace test_support {

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

// How many bytes of `rest` belong to the body; npos when more must come first.
std::size_t BodyEnd(const RawRequest& request, const std::string& rest)
{
    if (LowerCase(request.Value("Transfer-Encoding")) == "chunked") {
        const std::size_t last = rest.rfind("0\r\n\r\n", 0) == 0 ? 0 : rest.find("\r\n0\r\n\r\n");
        return last == std::string::npos ? last : last + (last == 0 ? 5 : 7);
    }
    const std::vector<std::string> lengths = request.Values("Content-Length");
    const std::size_t length = lengths.empty() ? 0 : std::stoul("0" + lengths.front());
    return rest.size() < length ? std::string::npos : length;
}

} // namespace

Reply& Reply::Send(std::string bytes)
{
    m_steps.push_back({Step::Kind::Send, std::move(bytes), milliseconds(0)});
    return *this;
}

Reply& Reply::Drip(std::string bytes, milliseconds pause)
{
    m_steps.push_back({Step::Kind::Drip, std::move(bytes), pause});
    return *this;
}

Reply& Reply::Wait(milliseconds time)
{
    m_steps.push_back({Step::Kind::Wait, {}, time});
    return *this;
}

Reply& Reply::Close()
{
    m_steps.push_back({Step::Kind::Close, {}, milliseconds(0)});
    return *this;
}

Reply& Reply::Reset()
{
    m_steps.push_back({Step::Kind::Reset, {}, milliseconds(0)});
    return *this;
}

Reply& Reply::Hang()
{
    m_steps.push_back({Step::Kind::Hang, {}, milliseconds(0)});
    return *this;
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
    for (const auto& field : fields) {
        if (LowerCase(field.first) == LowerCase(name)) {
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
    Impl() : m_acceptor(m_context, kAnyPort), m_port(m_acceptor.local_endpoint().port())
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
    Reply Take(const RawRequest& request)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_requests.push_back(request);
        m_changed.notify_all();
        if (!m_queue.empty()) {
            Reply reply = std::move(m_queue.front());
            m_queue.pop_front();
            return reply;
        }
        if (!m_handler) {
            return m_default;
        }
        const Handler handler = m_handler;
        lock.unlock();
        return handler(request);
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
    std::vector<RawRequest> m_requests;
    std::size_t m_accepted = 0;
    std::size_t m_open = 0;

    // Last, because connections that are still open end with it and count themselves out.
    asio::io_context m_context;
    tcp::acceptor m_acceptor;
    const std::uint16_t m_port;
    std::thread m_thread;
};

class RawServer::Impl::Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(Impl& server, tcp::socket socket, std::size_t number)
        : m_server(server), m_socket(std::move(socket)), m_timer(server.m_context), m_number(number)
    {
        m_server.Locked([this] { ++m_server.m_open; });
        error_code ignored;
        m_socket.set_option(tcp::no_delay(true), ignored);
    }

    ~Connection()
    {
        m_server.Locked([this] { --m_server.m_open; });
    }

    void Start(Reply reply)
    {
        if (reply.Steps().empty()) {
            ReadRequest();
            return;
        }
        m_reply = std::move(reply);
        Run(0);
    }

private:
    void ReadRequest()
    {
        m_reading = true;
        if (TakeRequest()) {
            return;
        }
        ReadSome([self = shared_from_this()] { self->ReadRequest(); });
    }

    template <class Then>
    void ReadSome(Then then)
    {
        m_socket.async_read_some(asio::buffer(m_piece),
                                 [self = shared_from_this(), then](const error_code& error, std::size_t count) {
                                     if (!error) {
                                         self->m_received.append(self->m_piece, count);
                                         then();
                                     }
                                 });
    }

    // True when a complete request was there and its reply has begun.
    bool TakeRequest()
    {
        const std::size_t headEnd = m_received.find("\r\n\r\n");
        if (headEnd == std::string::npos) {
            return false;
        }
        RawRequest request;
        request.connection = m_number;
        request.bytes = m_received.substr(0, headEnd + 4);
        ParseHead(request);
        const std::string rest = m_received.substr(headEnd + 4);
        const std::size_t length = BodyEnd(request, rest);
        if (length == std::string::npos) {
            return false;
        }
        request.body = rest.substr(0, length);
        request.bytes += request.body;
        m_received = rest.substr(length);
        m_reply = m_server.Take(request);
        Run(0);
        return true;
    }

    void Run(std::size_t index)
    {
        if (index == m_reply.Steps().size()) {
            ReadRequest();
            return;
        }
        const Reply::Step& step = m_reply.Steps()[index];
        error_code ignored;
        switch (step.kind) {
        case Reply::Step::Kind::Send:
            asio::async_write(m_socket, asio::buffer(step.bytes),
                              [self = shared_from_this(), index](const error_code& error, std::size_t) {
                                  if (!error) {
                                      self->Run(index + 1);
                                  }
                              });
            break;
        case Reply::Step::Kind::Drip:
            Drip(index, 0);
            break;
        case Reply::Step::Kind::Wait:
            After(step.time, [self = shared_from_this(), index] { self->Run(index + 1); });
            break;
        case Reply::Step::Kind::Close:
            m_socket.shutdown(tcp::socket::shutdown_send, ignored);
            Drain();
            break;
        case Reply::Step::Kind::Reset:
            m_socket.set_option(asio::socket_base::linger(true, 0), ignored);
            m_socket.close(ignored);
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
        if (at == step.bytes.size()) {
            Run(index + 1);
            return;
        }
        After(step.time, [self = shared_from_this(), index, at] {
            asio::async_write(self->m_socket, asio::buffer(&self->m_reply.Steps()[index].bytes[at], 1),
                              [self, index, at](const error_code& error, std::size_t) {
                                  if (!error) {
                                      self->Drip(index, at + 1);
                                  }
                              });
        });
    }

    template <class Then>
    void After(milliseconds time, Then then)
    {
        m_timer.expires_after(time);
        m_timer.async_wait([then](const error_code& error) {
            if (!error) {
                then();
            }
        });
    }

    // Reads and forgets until the client goes away; closing with unread bytes would turn into a reset.
    void Drain()
    {
        m_received.clear();
        ReadSome([self = shared_from_this()] { self->Drain(); });
    }

    Impl& m_server;
    tcp::socket m_socket;
    asio::steady_timer m_timer;
    const std::size_t m_number;
    bool m_reading = false;
    char m_piece[65536];
    std::string m_received;
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

RawServer::RawServer() : m_impl(std::make_unique<Impl>()) {}

RawServer::~RawServer() = default;

std::uint16_t RawServer::Port() const
{
    return m_impl->m_port;
}

std::string RawServer::Base() const
{
    return "http://127.0.0.1:" + std::to_string(Port());
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

} // namespace test_support
