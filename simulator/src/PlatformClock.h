#pragma once

#include <cstdint>
#include <functional>
#include <mutex>

namespace nexwire::simulator {

/// The platform's clock: another one, moved and made faster or slower. Safe from any thread.
class PlatformClock {
public:
    explicit PlatformClock(std::function<std::int64_t()> source) : source_(std::move(source)), fromMs_(source_()) {}

    std::int64_t Now() const
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return At(source_());
    }
    /// How far it is ahead of the other.
    std::int64_t Ahead() const
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        const std::int64_t source = source_();
        return At(source) - source;
    }
    double Scale() const
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return scale_;
    }
    void Advance(std::int64_t milliseconds)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        aheadMs_ += milliseconds;
    }
    void SetScale(double scale)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        const std::int64_t source = source_();
        aheadMs_ = At(source) - source;
        fromMs_ = source;
        scale_ = scale;
    }

private:
    std::int64_t At(std::int64_t source) const
    {
        return source + aheadMs_ + static_cast<std::int64_t>(static_cast<double>(source - fromMs_) * (scale_ - 1.0));
    }

    mutable std::mutex mutex_;
    std::function<std::int64_t()> source_;
    std::int64_t fromMs_; ///< When the scale began.
    std::int64_t aheadMs_ = 0;
    double scale_ = 1.0;
};

} // namespace nexwire::simulator
