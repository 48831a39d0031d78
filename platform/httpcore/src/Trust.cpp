#include "httpcore/Trust.h"

#include <iterator>

namespace httpcore {

void Trust::Lost(const std::string& server)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    const Clock::time_point now = Clock::now();
    for (auto each = until_.begin(); each != until_.end();) {
        each = each->second <= now ? until_.erase(each) : std::next(each);
    }
    until_[server] = now + kDuration;
    any_ = true;
}

bool Trust::MayKeep(const std::string& server) const
{
    if (!any_) {
        return true;
    }
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto found = until_.find(server);
    return found == until_.end() || found->second <= Clock::now();
}

} // namespace httpcore
