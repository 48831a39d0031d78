#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <keel/Error.h>

#include "core/Guard.h"
#include "nexwire/HTTPCommonJSONStruct.h"
#include "nexwire/LastExchange.h"
#include "nexwire/RequestRecords.h"

// The vocabulary request functions are written in:
//
//   return Exchange(Query(Path("/7730/v1/.../devices/", deviceGuid), condition), result);
//
// A verb (method code) with a path and perhaps a body makes an operation; an ending sends it and says what becomes
// of the answer. Pieces and bodies are only referred to: use an operation within the statement that makes it.

namespace nexwire {

/// A path as literal pieces and identifiers, put together when the request is sent. Identifiers go in as given.
class Path {
public:
    static constexpr std::size_t kMaxPieces = 8;

    Path(const char* literal) : pieces_{std::string_view(literal)}, count_(1) {}
    template <class First, class Second, class... More>
    Path(const First& first, const Second& second, const More&... more)
        : pieces_{std::string_view(first), std::string_view(second), std::string_view(more)...},
          count_(2 + sizeof...(More))
    {
        static_assert(2 + sizeof...(More) <= kMaxPieces, "too many pieces");
    }

    std::string Text() const;

private:
    std::array<std::string_view, kMaxPieces> pieces_;
    std::size_t count_;
};

/// One request, not yet sent.
class Operation {
public:
    Operation(std::int32_t method, const Path& path, const protocol::IInboundData* body)
        : path_(path), body_(body), method_(method)
    {
    }

    /// Adds a header field for the executor.
    Operation& Header(const char* name, std::string_view value);
    /// Adds a header field unless its value is empty.
    Operation& HeaderUnlessEmpty(const char* name, std::string_view value);
    /// Asks the executor for its slower worker.
    Operation& OnSlowThread() { return Header("RequstType", "slowThread"); }
    /// Replaces the default time-out, in milliseconds; 0 keeps it.
    Operation& Timeout(std::int32_t timeoutMs);

    RequestParams Build() const;

private:
    static constexpr std::size_t kMaxHeaders = 2;

    Path path_;
    const protocol::IInboundData* body_;
    std::int32_t method_;
    std::int32_t timeoutMs_ = 0;
    std::array<std::pair<const char*, std::string_view>, kMaxHeaders> headers_{};
    std::size_t headerCount_ = 0;
};

/// Method code 0: single settings, small lists, raw fetches.
inline Operation Read(const Path& path)
{
    return {0, path, nullptr};
}
inline Operation Read(const Path& path, const protocol::IInboundData& body)
{
    return {0, path, &body};
}
/// Method code 1: creation, modification, actions.
inline Operation Write(const Path& path)
{
    return {1, path, nullptr};
}
inline Operation Write(const Path& path, const protocol::IInboundData& body)
{
    return {1, path, &body};
}
/// Method code 2: queries, searches, pass-through, and some modifications.
inline Operation Query(const Path& path)
{
    return {2, path, nullptr};
}
inline Operation Query(const Path& path, const protocol::IInboundData& body)
{
    return {2, path, &body};
}
/// Method code 3: deletions.
inline Operation Remove(const Path& path)
{
    return {3, path, nullptr};
}
inline Operation Remove(const Path& path, const protocol::IInboundData& body)
{
    return {3, path, &body};
}

namespace core {

/// What the ending does with a parsed envelope whose number is not 0.
enum class Verdict {
    Accept, ///< Nothing: the exchange took place.
    Judge,  ///< Makes the code the last error and fails.

};

/// Hands a request to the executor and notes what happened for `LastExchange`.
bool Execute(RspInfos& response, const RequestParams& request);

/// While it lives, requests leave no trace in `LastExchange`: for those inside another, after its own exchange.
class InnerRequests {
public:
    InnerRequests();
    ~InnerRequests();
    InnerRequests(const InnerRequests&) = delete;
    InnerRequests& operator=(const InnerRequests&) = delete;

private:
    ExchangeRecord kept_;
};

/// Why the exchange that `LastExchange` tells of came to nothing, for functions that hand it out: the executor's
/// error, or no error with a text where it did not set one.
Keel::Error::ErrorCode Failure();

/// Sends an operation and reads the envelope into `envelope`. The one path that all typed requests take.
bool Run(const Operation& operation, protocol::ReturnData& envelope, Verdict verdict);

/// A shared pointer that does not own: the result lives on the stack of its call.
template <class Result>
std::shared_ptr<protocol::IJSONStruct> Borrow(Result& result)
{
    return {std::shared_ptr<void>(), &result};
}

template <class Result>
bool RunInto(const Operation& operation, Result& result, Verdict verdict) noexcept
{
    return Guard([&] {
        Result fresh;
        protocol::ReturnData envelope(Borrow(fresh));
        if (!Run(operation, envelope, verdict)) {
            return false;
        }
        result = std::move(fresh);
        return true;
    });
}

bool RunWithoutResult(const Operation& operation, Verdict verdict) noexcept;
bool RunForCode(const Operation& operation, protocol::IJSONStruct* fresh, int& code);

} // namespace core

// ---- Endings ----

/// True when the envelope parsed, whatever its code; `result` is replaced then and untouched otherwise.
template <class Result>
bool Exchange(const Operation& operation, Result& result) noexcept
{
    return core::RunInto(operation, result, core::Verdict::Accept);
}

/// The same without a result.
bool Exchange(const Operation& operation) noexcept;

/// True when the envelope parsed and its number is 0. Any other code becomes the last error, and `result` is
/// untouched.
template <class Result>
bool ExchangeJudged(const Operation& operation, Result& result) noexcept
{
    return core::RunInto(operation, result, core::Verdict::Judge);
}

/// The same without a result.
bool ExchangeJudged(const Operation& operation) noexcept;

/// As `ExchangeJudged`; besides, `code` receives the envelope's number whenever the envelope parsed.
bool ExchangeForCode(const Operation& operation, int& code) noexcept;

template <class Result>
bool ExchangeForCode(const Operation& operation, Result& result, int& code) noexcept
{
    return core::Guard([&] {
        Result fresh;
        if (!core::RunForCode(operation, &fresh, code)) {
            return false;
        }
        result = std::move(fresh);
        return true;
    });
}

/// True when the executor got an answer; what it says is not looked at.
bool ExchangeUnread(const Operation& operation) noexcept;

} // namespace nexwire
