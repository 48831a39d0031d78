#include "src/Guard.h"

#include "simulator/Platform.h"
#include "src/Query.h"
#include "src/Wire.h"

namespace nexwire::simulator {
namespace {

constexpr std::string_view kCookie = "nexwire-token";

std::string_view Field(const Request& request, std::string_view name)
{
    const auto found = request.headers.find(name);
    return found == request.headers.end() ? std::string_view() : std::string_view(found->second);
}

/// Takes as long whatever is wrong, so that time tells nothing.
bool SameSecret(std::string_view left, std::string_view right)
{
    unsigned difference = left.size() == right.size() ? 0u : 1u;
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i) {
        difference |= static_cast<unsigned>(static_cast<unsigned char>(left[i] ^ right[i]));
    }
    return difference == 0;
}

} // namespace

bool IsLoopbackAddress(std::string_view address)
{
    return address == "localhost" || address == "::1" || BeginsWith(address, "127.");
}

bool Guard::IsOwnHost(std::string_view host, std::uint16_t port) const
{
    const std::size_t bracket = host.find(']');
    const std::size_t colon = host.find(':', bracket == std::string_view::npos ? 0 : bracket);
    if (colon != std::string_view::npos && host.substr(colon + 1) != std::to_string(port)) {
        return false;
    }
    host = host.substr(0, colon);
    if (bracket != std::string_view::npos && host.front() == '[') {
        host = host.substr(1, bracket - 1);
    }
    // Whoever listens everywhere has more names than it knows, and asks for the token.
    const bool everywhere = address_ == "0.0.0.0" || address_ == "::";
    return everywhere || host == address_ || host == "127.0.0.1" || host == "::1" || Same(host, "localhost");
}

bool Guard::KnowsToken(const Request& request) const
{
    const std::string_view field = Field(request, "authorization");
    if (BeginsWith(field, "bearer ")) {
        return SameSecret(field.substr(7), token_);
    }
    std::string_view cookies = Field(request, "cookie");
    for (std::size_t at = cookies.find(kCookie); at != std::string_view::npos; at = cookies.find(kCookie, at + 1)) {
        std::string_view value = cookies.substr(at + kCookie.size());
        if (!value.empty() && value.front() == '=' && SameSecret(value.substr(1, value.find(';') - 1), token_)) {
            return true;
        }
    }
    return SameSecret(Query(request.query).Text("token"), token_);
}

std::optional<Answer> Guard::Refuse(const Request& request, std::uint16_t port) const
{
    const std::string_view host = Field(request, "host");
    if (!host.empty() && !IsOwnHost(host, port)) {
        return RefuseOutright(403, Reason::kForeignPage, "Host is \"" + std::string(host) + "\"");
    }
    const std::string_view origin = Field(request, "origin");
    if (!origin.empty() && origin != "http://" + std::string(host)) {
        return RefuseOutright(403, Reason::kForeignPage, "Origin is \"" + std::string(origin) + "\"");
    }
    if (!token_.empty() && !KnowsToken(request)) {
        return RefuseOutright(401, Reason::kNoToken, "");
    }
    return std::nullopt;
}

std::string Guard::Cookie(const Request& request) const
{
    return token_.empty() || !SameSecret(Query(request.query).Text("token"), token_)
               ? std::string()
               : "Set-Cookie: " + std::string(kCookie) + "=" + token_ + "; Path=/; HttpOnly; SameSite=Strict\r\n";
}

} // namespace nexwire::simulator
