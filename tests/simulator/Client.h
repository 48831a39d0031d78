#pragma once

#include <rapidjson/document.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "simulator/Platform.h"

namespace test {

/// An answer as it came over the wire.
struct Reply {
    unsigned status = 0;
    std::string body;
    std::shared_ptr<rapidjson::Document> json;

    std::string Code() const { return Text("/code"); }
    std::string Text(const std::string& pointer) const;  ///< "(none)" where there is no text.
    std::int64_t Int(const std::string& pointer) const;  ///< -999 where there is no number.
    std::size_t Size(const std::string& pointer) const;  ///< Elements of a list; 999 where there is none.
    std::string Print(const std::string& pointer) const; ///< Compact JSON; empty where there is nothing.
    std::vector<std::string> Texts(const std::string& pointer, const std::string& member) const;
};

/// One connection that stays open.
class Client {
public:
    explicit Client(std::uint16_t port);
    ~Client();

    Reply Send(const std::string& verb, const std::string& path, const std::string& body = {});

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

/// Writes bytes on a connection of their own, closes its sending side when asked, and returns all that comes back
/// until the platform closes, or what came within two seconds.
std::string SendRaw(std::uint16_t port, const std::string& bytes, bool closeAfter = true);

/// A platform in the process whose clock the test moves.
class Site {
public:
    explicit Site(const std::string& databasePath = {}, std::uint64_t bodyLimit = 1u << 20u);

    Reply Put(const std::string& path, const std::string& body = {}) { return Send("PUT", path, body); }
    Reply Post(const std::string& path, const std::string& body = {}) { return Send("POST", path, body); }
    Reply Get(const std::string& path) { return Send("GET", path, {}); }
    Reply Delete(const std::string& path, const std::string& body) { return Send("DELETE", path, body); }
    /// `path` begins after "/7730/v1/".
    Reply Send(const std::string& verb, const std::string& path, const std::string& body);

    void Advance(std::int64_t milliseconds) { *now_ += milliseconds; }
    std::int64_t NowMs() const { return *now_; }
    std::uint16_t Port() const { return platform_->Port(); }

    nexwire::simulator::Platform& Platform() { return *platform_; }

private:
    std::shared_ptr<std::atomic<std::int64_t>> now_;
    std::unique_ptr<nexwire::simulator::Platform> platform_;
    std::unique_ptr<Client> client_;
};

/// GUIDs of the seeded world.
std::string Device(int number);
std::string Person(int number);

} // namespace test
