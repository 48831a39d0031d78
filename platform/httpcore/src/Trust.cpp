#include "httpcore/Trust.h"

#include <iterator>

namespace httpcore {

void Trust::Lost(const std::string& server)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const Clock::time_point now = Clock::now();
    for (auto each = m_until.begin(); each != m_until.end();) {
        each = each->second <= now ? m_until.erase(each) : std::next(each);
    }
    m_until[server] = now + kDuration;
    m_any = true;
}

bool Trust::MayKeep(const std::string& server) const
{
    if (!m_any) {
        return true;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_until.find(server);
    return found == m_until.end() || found->second <= Clock::now();
}

} // namespace httpcore
