#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "nexwire/IRequestExecutor.h"
#include "nexwire/host/HostError.h"

namespace nexwire::host {

/// What goes wrong with the requests it fits, and how often.
struct FaultRule {
    enum class Fault {
        Delay,  ///< The answer comes later; the time of the request still holds.
        Unsent, ///< Fails with `error` before anything is sent.
        Lost,   ///< Is sent, and fails with `error` instead of its answer.
        Torn,   ///< Succeeds with a body that ends early.
        Status, ///< Fails with an HTTP status.
        Answer, ///< Succeeds with `body`, and nothing is sent.
    };

    std::string path;         ///< A part of the paths it fits; empty fits all.
    std::int32_t method = -1; ///< Method code that it fits; -1 all.
    double probability = 1.0; ///< 0 to 1.
    std::int32_t times = -1;  ///< How often at most; -1 without end.
    Fault fault = Fault::Lost;
    std::int32_t delayMs = 0; ///< For `Delay`.
    HostError error = HostError::AnswerIncomplete;
    std::int32_t status = 503; ///< For `Status`.
    std::string body;          ///< For `Answer` and `Status`.
};

/// Makes requests go wrong by rules, for tests of a client. The same rules, seed and order of requests give the same
/// faults. The first rule that fits and strikes counts, except that a delay lets later rules strike as well. Safe from
/// any number of threads.
class FaultExecutor : public IRequestExecutor {
public:
    /// @param inner  does the work; may be null when no request is to come through.
    FaultExecutor(std::unique_ptr<IRequestExecutor> inner, std::vector<FaultRule> rules, std::uint32_t seed = 1);
    ~FaultExecutor() override;

    bool Execute(RspInfos& response, const RequestParams& request, int flag) override;

    /// How often a rule struck, in the order of the rules.
    std::vector<std::uint64_t> Struck() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace nexwire::host
