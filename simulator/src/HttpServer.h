#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "src/Engine.h"

namespace nexwire::simulator {

/// HTTP/1.1 with connections that stay open. Malformed requests are answered and their connection closed.
class HttpServer {
public:
    struct Settings {
        std::string address = "127.0.0.1";
        std::uint16_t port = 0;
        unsigned threads = 2;
        std::uint64_t bodyLimit = 0;
        unsigned idleSeconds = 60;
    };
    /// What became of one request; the bytes are those of the bodies.
    struct Done {
        Request request;    ///< Without its body.
        std::string target; ///< Path and query as received.
        std::shared_ptr<const std::string> sent;
        std::shared_ptr<const std::string> answer;
        std::string head; ///< Of the answer: its lines.
        unsigned status = 0;
        std::string code;
        std::string message;
        std::string type;  ///< Of the answer's body.
        std::string fault; ///< The rule that struck.
        std::uint64_t requestBytes = 0;
        std::uint64_t answerBytes = 0;
        double milliseconds = 0.0;
    };
    using Handler = std::function<Answer(const Request&)>; ///< Called on any worker; must not throw.
    using Observer = std::function<void(Done&&)>;          ///< Called on any worker; must not throw.

    HttpServer(Settings settings, Handler handler, Observer observer);
    ~HttpServer();

    /// @throws boost::system::system_error when the address is none or its port cannot be bound.
    void Start();
    void Stop();
    std::uint16_t Port() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace nexwire::simulator
