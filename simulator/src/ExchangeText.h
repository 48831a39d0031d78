#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <keel/Redact.h>

#include "src/Description.h"
#include "src/ExchangeLog.h"

namespace nexwire::simulator {

/// Says in words of the library what went over the wire. Safe from any thread.
class ExchangeText {
public:
    explicit ExchangeText(const Description& description);

    /// The functions that send such a request; those alone that the body tells apart.
    std::vector<const WireFunction*> FunctionsOf(std::string_view verb, std::string_view path,
                                                 std::string_view body) const;
    std::vector<const WireFunction*> FunctionsOf(const KeptExchange& kept) const;

    /// One line of a list; see `Whole` for the rest.
    Json Summary(const KeptExchange& kept, Allocator& memory) const;
    /// Everything that is known, without secrets unless they are asked for.
    /// @param server  where the platform is: "http://127.0.0.1:8080".
    Json Whole(const KeptExchange& kept, bool secrets, const std::string& server, Allocator& memory) const;

    std::string Redacted(const std::string& text) const { return redactor_.Redact(text); }

private:
    std::string RedactedQuery(std::string_view query) const;
    Json HeaderFields(const std::string& head, bool secrets, Allocator& memory) const;
    Json Body(const std::string* body, std::string_view type, std::uint64_t bytes, bool secrets,
              Allocator& memory) const;

    const Description& description_;
    std::multimap<std::string, const WireFunction*, std::less<>> direct_; ///< Of the video wall, by path.
    Keel::CRedactor redactor_;
};

/// The key that a body begins with; empty when it is no object.
std::string_view FirstKey(std::string_view body);
/// JSON that a text holds, or the text.
Json Opened(std::string_view text, Allocator& memory);

/// The same call by other means: {"curl", "call", "cpp"} (CallLines.cpp).
/// @param target  path and query. @param function  null when nobody sends this.
Json CallLines(const Wire& library, const Exchange& exchange, const std::string& target, const std::string& body,
               const WireFunction* function, const std::string& server, const Keel::CRedactor& redactor,
               Allocator& memory);

} // namespace nexwire::simulator
