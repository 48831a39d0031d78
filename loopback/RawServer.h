#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace nexwire::loopback {

class Transport;

/// What the server does with one request: a list of steps, run in order. After the last step the connection waits
/// for its next request, so a reply that must end the connection says so with `Close` or `Reset`.
///
///     Reply::Json(R"({"code":"0-0"})")                          a whole, well-formed answer
///     Reply().Wait(200ms).Send("HTTP/1.1 200 OK\r\n").Close()     late, then truncated
///     Reply().Send("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n").Drip("123456789", 100ms)
///     Reply().Hang()                                            never answers
class Reply {
public:
    /// Sends the bytes as they are, in one piece.
    Reply& Send(std::string bytes);
    /// The first `size` of them; all replies that share them send the same memory.
    Reply& Send(std::shared_ptr<const std::string> bytes, std::size_t size);
    /// Sends one byte after another with a pause before each.
    Reply& Drip(std::string bytes, std::chrono::milliseconds pause);
    /// Does nothing for a while.
    Reply& Wait(std::chrono::milliseconds time);
    /// Ends the connection in an orderly way; what was sent arrives. Over TLS without its closing alert.
    Reply& Close();
    /// Sends TLS's closing alert before it ends the connection.
    Reply& SignOff();
    /// Breaks the connection with a reset; bytes on their way may be lost.
    Reply& Reset();
    /// Keeps the connection open and never sends anything again.
    Reply& Hang();

    /// A complete answer: status line, the fields given (each without its line end), Content-Length, body.
    static Reply Http(int status, const std::string& body, const std::vector<std::string>& fields = {});
    /// The bytes of such an answer, to be cut, dripped or damaged.
    static std::string HttpBytes(int status, const std::string& body, const std::vector<std::string>& fields = {});
    /// 200 with "Content-Type: application/json".
    static Reply Json(const std::string& body);
    /// 200 whose body travels in chunks of `chunk` bytes.
    static Reply Chunked(const std::string& body, std::size_t chunk);

    struct Step {
        enum class Kind { Send, Drip, Wait, Close, SignOff, Reset, Hang };
        Kind kind;
        std::shared_ptr<const std::string> bytes;
        std::size_t size = 0;
        std::chrono::milliseconds time{0};
    };
    const std::vector<Step>& Steps() const { return steps_; }

private:
    Reply& Add(Step::Kind kind, std::chrono::milliseconds time = {});

    std::vector<Step> steps_;
};

/// A request as it came over the wire.
struct RawRequest {
    std::string bytes;          ///< Everything, byte for byte.
    std::string method;         ///< First word of the request line.
    std::string target;         ///< Second word of the request line.
    std::string body;           ///< What follows the empty line; the chunk framing, if any, is kept.
    std::size_t connection = 0; ///< Number of its connection, from 0 in the order of acceptance.

    /// Names and values of the header fields in their order, blanks around values removed.
    std::vector<std::pair<std::string, std::string>> fields;

    /// Every value of a field, whatever the case of its name.
    std::vector<std::string> Values(const std::string& name) const;
    /// The only value of a field; "<none>" without one, "<several>" with more than one.
    std::string Value(const std::string& name) const;
};

/// A scripted TCP server on a free port of 127.0.0.1 that speaks just enough HTTP to know where a request ends.
///
/// Each request takes the next reply of the queue, or what the handler says, or the default reply, in this order.
/// One thread of its own serves all connections, so any number of clients may hang at once. All members may be called
/// from any thread. The destructor closes every connection.
class RawServer {
public:
    using Handler = std::function<Reply(const RawRequest&)>;

    RawServer();
    /// Over something else than plain TCP.
    explicit RawServer(std::shared_ptr<Transport> transport);
    ~RawServer();
    RawServer(const RawServer&) = delete;
    RawServer& operator=(const RawServer&) = delete;

    std::uint16_t Port() const;
    /// "http://127.0.0.1:" and the port, or with the scheme of the transport.
    std::string Base() const;

    /// Adds a reply for the next request that has none yet.
    void Enqueue(Reply reply);
    /// What answers when the queue is empty and there is no handler; 200 with the body "{}" at first.
    void SetDefault(Reply reply);
    /// Answers when the queue is empty. Runs on the server's thread and must not wait.
    void SetHandler(Handler handler);
    /// Runs on every new connection instead of reading a request: nothing is read before its last step, and
    /// after a `Hang` nothing ever, so the client's sending stalls once the buffers are full.
    void SetOnAccept(Reply reply);
    /// Limits the receive buffer of connections to come, to make sending stall early.
    void SetReceiveBuffer(int bytes);

    /// False: requests are answered and forgotten, and bodies whose length is declared are dropped as they come, so
    /// that the server costs next to nothing; the handler sees heads without them. True at first.
    void SetKeeping(bool keep);
    /// The complete requests so far, in the order in which they were complete.
    std::vector<RawRequest> Requests() const;
    /// The same, and forgets them.
    std::vector<RawRequest> TakeRequests();
    /// Waits until that many requests have come; false when they have not within the time.
    bool WaitForRequests(std::size_t count, std::chrono::milliseconds time = std::chrono::seconds(10)) const;
    /// Connections accepted so far.
    std::size_t Connections() const;
    /// Waits until that many connections are open; false when it is another number all the time.
    bool WaitForOpen(std::size_t count, std::chrono::milliseconds time = std::chrono::seconds(10)) const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

/// A port of 127.0.0.1 that refuses connections: it was free a moment ago and nobody listens on it.
std::uint16_t ClosedPort();

/// A port that neither accepts nor refuses: its backlog is full, so connecting takes for ever.
class DeafListener {
public:
    DeafListener();
    ~DeafListener();
    std::uint16_t Port() const;
    /// False where the system refuses connections instead of leaving them unanswered.
    bool Works() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace nexwire::loopback
