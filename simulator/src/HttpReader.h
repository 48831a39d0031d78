#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "src/Engine.h"

namespace nexwire::simulator {

/// Takes what comes over a connection apart into requests, one after the other. It knows nothing of sockets.
class HttpReader {
public:
    enum class State {
        kMore,      ///< More must come first.
        kContinues, ///< The peer waits for a word before it sends the body. Told once a request.
        kWhole,
        kTooLarge,
        kMalformed,
    };

    explicit HttpReader(std::uint64_t bodyLimit);
    ~HttpReader();
    HttpReader(const HttpReader&) = delete;
    HttpReader& operator=(const HttpReader&) = delete;

    /// From here on the next request, which may begin with the rest of what came last time.
    void Begin();
    /// Where what comes next may be put, and how much of it.
    std::pair<char*, std::size_t> Room();
    /// So much was put there.
    void Came(std::size_t size);
    State Read();

    /// Moves out what is known: of a broken request at most verb and target, "-" where not even they came.
    /// @param target  path and query as received.
    void Take(Request& request, std::string& target);
    bool KeepsAlive() const;
    /// What is wrong with a broken request.
    const std::string& Problem() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace nexwire::simulator
