#pragma once

#include <atomic>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "src/Engine.h"

namespace nexwire::simulator {

/// What goes wrong with an exchange.
enum class Fault { kDelay, kDrip, kResetBefore, kResetAfter, kTorn, kEmpty, kRefuse, kStatus };

/// Which exchanges something goes wrong with, and what.
struct FaultRule {
    std::string name;
    std::string function; ///< Pattern of "Class::function"; empty: any.
    std::string path;     ///< Pattern; empty: any.
    Fault fault = Fault::kDelay;
    std::int64_t ms = 0;   ///< Of a delay, or that the pieces of a drip take together.
    std::string code;      ///< Of a refusal.
    unsigned status = 503; ///< Of a bare HTTP answer.
    bool done = true;      ///< Whether the request is carried out before its answer is spoilt.
    double probability = 1.0;
    std::int64_t seed = 0;  ///< Of the dice.
    std::int64_t times = 0; ///< After so many it strikes no more; 0: no end.
    bool enabled = true;
    std::int64_t struck = 0; ///< How often it has.
};

/// The rules in force. Safe from any thread.
class Faults {
public:
    /// Replaces all rules; those that stay the same go on where they were. @throws Problem, and changes nothing.
    void Set(const Json& list);
    /// Adds a rule, or replaces the one of its name. @throws Problem.
    void Add(const Json& rule);
    void Clear();
    Json List(Allocator& memory) const;

    /// Whether there is nothing to look for.
    bool Idle() const { return idle_; }
    /// The first rule that strikes such a request, counted.
    std::optional<FaultRule> Strike(std::string_view path, const std::vector<const WireFunction*>& functions);

private:
    struct Kept {
        FaultRule rule;
        std::mt19937 dice;
    };
    Kept Read(const Json& rule, std::size_t number) const;

    mutable std::mutex mutex_;
    std::vector<Kept> rules_;
    std::atomic<bool> idle_{true};
};

/// Makes the answer as a rule wants it.
/// @param handle  carries the request out. @param refuse  makes a refusal with a code of the envelope.
Answer Spoil(const FaultRule& rule, const std::function<Answer()>& handle,
             const std::function<Answer(const std::string& code)>& refuse);

/// Whether a pattern names the function; "C" before its class may be left out.
bool Names(std::string_view pattern, const WireFunction& function);

} // namespace nexwire::simulator
