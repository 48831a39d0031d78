#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <benchmark/benchmark.h>

namespace bench {

/// Seconds on the clock.
inline double Clock()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

inline double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The times of the library and of a peer that do the same by turns.
class Turns {
public:
    /// @param seconds  what measures time.
    explicit Turns(double (*seconds)() = &Clock) : seconds_(seconds) {}

    /// One turn of both; false when one of them says so. The first one has the colder caches, and may have to fetch
    /// memory that the other one finds, so they take turns at that, too.
    template <class Own, class Peer>
    bool Take(const Own& own, const Peer& peer)
    {
        const bool first = own_.size() % 2 == 0;
        bool good = !first || Timed(own_, own);
        good = Timed(peer_, peer) && good;
        return (first || Timed(own_, own)) && good;
    }

    /// Seconds.
    double Own() const { return Median(own_); }
    double BestOwn() const { return *std::min_element(own_.begin(), own_.end()); }
    double BestPeer() const { return *std::min_element(peer_.begin(), peer_.end()); }

    /// How many times as fast as the peer the library is.
    double Ratio() const
    {
        std::vector<double> ratios;
        for (std::size_t i = 0; i < own_.size(); ++i) {
            ratios.push_back(peer_[i] / own_[i]);
        }
        return Median(std::move(ratios));
    }

private:
    template <class Step>
    bool Timed(std::vector<double>& times, const Step& step)
    {
        const double start = seconds_();
        const bool good = step();
        times.push_back(seconds_() - start);
        return good;
    }

    double (*const seconds_)();
    std::vector<double> own_;
    std::vector<double> peer_;
};

/// What `bench_report` prints: a figure of the library's, the ratio, the ratio to reach (0: none; -1.15: at most 1.15).
///
/// @param label  the figure's unit and the peer's name, as "us|bare libcurl".
inline void Report(benchmark::State& state, double own, double ratio, double bar, const std::string& label)
{
    using benchmark::Counter;
    state.counters["turn_own"] = Counter(own, Counter::kAvgThreads);
    state.counters["turn_ratio"] = Counter(ratio, Counter::kAvgThreads);
    state.counters["turn_bar"] = Counter(bar, Counter::kAvgThreads);
    state.SetLabel(label);
}

/// How much memory the process needed at most, beyond what it had before.
class HeldMemory {
public:
    /// Runs the step and notes its peak.
    template <class Step>
    bool During(const Step& step)
    {
#if defined(__GLIBC__)
        malloc_trim(0); // What the heap kept of before would not be seen.
#endif
        std::ofstream("/proc/self/clear_refs") << "5";
        const double before = StatusMiB("VmRSS:");
        const bool good = step();
        most_ = std::max(most_, StatusMiB("VmHWM:") - before);
        return good;
    }
    void Report(benchmark::State& state) const
    {
        state.counters["turn_held"] = most_;
    }
    double MiB() const
    {
        return most_;
    }

private:
    /// A line of the process's own status; 0 where there is none.
    static double StatusMiB(const std::string& name)
    {
        std::ifstream status("/proc/self/status");
        for (std::string line; std::getline(status, line);) {
            if (line.compare(0, name.size(), name) == 0) {
                return std::stod(line.substr(name.size())) / 1024;
            }
        }
        return 0;
    }

    double most_ = 0;
};

} // namespace bench
