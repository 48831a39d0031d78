#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

namespace nexwire::simulator {

/// The bytes of one connection and the time that it has, whatever library moves them. What it calls back runs one after
/// the other, never two at once; all members are called from there.
class HttpConnection {
public:
    /// How it went, and how many bytes.
    using Next = std::function<void(bool good, std::size_t size)>;

    HttpConnection() = default;
    virtual ~HttpConnection() = default;
    HttpConnection(const HttpConnection&) = delete;
    HttpConnection& operator=(const HttpConnection&) = delete;

    virtual void ReadSome(char* room, std::size_t size, Next next) = 0;
    /// Writes all of both, which stay where they are until then.
    virtual void Write(std::string_view head, std::string_view body, Next next) = 0;
    virtual void Wait(std::chrono::steady_clock::duration time, std::function<void()> then) = 0;
    /// From now on it has so long before it is closed, whatever it does.
    virtual void Limit(std::chrono::steady_clock::duration time) = 0;
    virtual void Unlimit() = 0;
    /// The peer sees the end of what it reads; what it sends still comes.
    virtual void FinishSending() = 0;
    /// Breaks it; bytes on their way are lost.
    virtual void Reset() = 0;
};

} // namespace nexwire::simulator
