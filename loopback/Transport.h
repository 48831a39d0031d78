#pragma once

#include <functional>
#include <memory>

#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>

namespace nexwire::loopback {

/// The bytes of one connection, whatever lies between them and the socket. Used on the server's thread only.
class Stream {
public:
    using Done = std::function<void(const boost::system::error_code& error, std::size_t count)>;

    virtual ~Stream() = default;
    virtual boost::asio::ip::tcp::socket& Socket() = 0;
    /// Before anything is read or written.
    virtual void Open(Done done) = 0;
    virtual void ReadSome(boost::asio::mutable_buffer buffer, Done done) = 0;
    /// Writes all of it.
    virtual void Write(boost::asio::const_buffer bytes, Done done) = 0;
    /// Tells the client that nothing follows, where there is a way to say so that nobody on the way can forge.
    virtual void SignOff(Done done) = 0;
};

/// How connections of a server are made.
class Transport {
public:
    virtual ~Transport() = default;
    /// "http" or "https".
    virtual const char* Scheme() const = 0;
    virtual std::unique_ptr<Stream> Wrap(boost::asio::ip::tcp::socket socket) = 0;
};

} // namespace nexwire::loopback
