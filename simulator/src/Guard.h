#pragma once

#include <optional>
#include <string>

#include "src/Engine.h"

namespace nexwire::simulator {

/// Keeps away requests that a page of somebody else has a browser send, and, where more than this machine can reach the
/// platform, whoever does not know the token. Immutable once the port is known.
class Guard {
public:
    /// @param address  that is listened on. @param token  empty: none is asked for.
    Guard(std::string address, std::string token) : address_(std::move(address)), token_(std::move(token)) {}

    /// The answer to what must not come in; nothing for all else.
    std::optional<Answer> Refuse(const Request& request, std::uint16_t port) const;
    /// The header field that keeps a token which came with the address of the page; empty without.
    std::string Cookie(const Request& request) const;

private:
    bool KnowsToken(const Request& request) const;
    bool IsOwnHost(std::string_view host, std::uint16_t port) const;

    std::string address_;
    std::string token_;
};

} // namespace nexwire::simulator
