#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "nexwire/IRequestExecutor.h"

namespace nexwire::host {

/// Where the session comes from and when it ended.
struct TokenOptions {
    /// Gives a session; asked for the first one with an empty text, later with the one that ended. An empty answer is a
    /// failure. One thread at a time; it may call the library itself, such calls travel with the old session.
    std::function<std::string(const std::string& ended)> renew;
    std::string header = "SID";     ///< Mark of the request that carries the session.
    std::int32_t endedCategory = 0; ///< Envelope code by which the platform says that the session ended.
    std::int32_t endedNumber = 0;   ///< 0 0 is never such a code.
    std::int32_t endedStatus = 401; ///< HTTP status that says the same; 0 none.
};

/// Sends every request with the session and gets a new one when the platform says that it ended: once, however many
/// calls wait for it. The request is then sent once more. A request that carries the mark already keeps its own.
///
/// Safe from any number of threads.
class TokenExecutor : public IRequestExecutor {
public:
    /// @param inner  does the work; must not be null.
    TokenExecutor(std::unique_ptr<IRequestExecutor> inner, const TokenOptions& options);
    ~TokenExecutor() override;

    /// @return what the inner executor returns. When no new session was to be had, that is the answer by which the
    ///         platform said so; without a first one false with `HostError::RequestRefused`, and nothing was sent.
    bool Execute(RspInfos& response, const RequestParams& request, int flag) override;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace nexwire::host
