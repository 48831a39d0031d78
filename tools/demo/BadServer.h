#pragma once

#include <cstdint>
#include <memory>

namespace nexwire {
namespace demo {

/// A server on loopback that does what no platform should.
class BadServer {
public:
    enum class Manner {
        Silent,  ///< Takes the request and never answers.
        NotJson, ///< Answers every request with a web page.
    };

    explicit BadServer(Manner manner);
    ~BadServer();
    BadServer(const BadServer&) = delete;
    BadServer& operator=(const BadServer&) = delete;

    std::uint16_t Port() const;

private:
    struct Server;
    std::unique_ptr<Server> server_;
};

} // namespace demo
} // namespace nexwire
