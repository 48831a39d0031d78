#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

#include "src/ExchangeText.h"

namespace nexwire::simulator {

/// What a test says must be called, counted as it happens. Safe from any thread.
class Expectations {
public:
    /// One, or a list. Counting begins behind exchange `after`. @throws Problem.
    void Add(const Json& wanted, std::int64_t after);
    void Clear();

    /// Whether there is nothing to count.
    bool Idle() const { return idle_; }
    void Note(std::string_view path, const std::vector<const WireFunction*>& functions, std::string_view body);

    /// {"met", "expectations"}; what is not met names the call that comes nearest.
    Json Report(const ExchangeText& texts, const ExchangeLog& log, Allocator& memory) const;

private:
    struct Wanted {
        std::string function; ///< Pattern.
        std::string path;     ///< Pattern.
        std::string body;     ///< JSON of the members that must match; empty: any.
        std::int64_t least = 0;
        std::int64_t most = 0;
        std::int64_t after = 0;
        std::int64_t seen = 0;
        bool Met() const { return seen >= least && seen <= most; }
    };
    static Wanted Read(const Json& json, std::int64_t after);
    /// What keeps a call from being the one that is wanted; empty when it is.
    /// @param called  whether it is the function and path at least.
    static std::string Mismatch(const Wanted& wanted, std::string_view path,
                                const std::vector<const WireFunction*>& functions, std::string_view body, bool& called);
    static Json Nearest(const Wanted& wanted, const ExchangeText& texts, const ExchangeLog& log, Allocator& memory);

    mutable std::mutex mutex_;
    std::vector<Wanted> wanted_;
    std::atomic<bool> idle_{true};
};

} // namespace nexwire::simulator
