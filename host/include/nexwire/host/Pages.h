#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "nexwire/host/CallScope.h"

namespace nexwire {
namespace host {

/// How reading through pages ended.
enum class PagesEnd {
    Complete,  ///< To the last page, or `each` had enough.
    Failed,    ///< A call returned false; the last error says why. A scope's deadline ends so, too.
    Cancelled, ///< The scope was cancelled between two pages.
    Stuck,     ///< The platform repeated itself: a batch identifier without a new element, or pages without end.
};

constexpr std::int32_t kMostPages = 100000;

/// Whether the scope of the calling thread was cancelled.
inline bool IsCancelled()
{
    return CallScope::Current() != nullptr && CallScope::Current()->Cancelled();
}

/// Reads page after page through a condition with the members `pageNo` and `pageSize` (from 1, at least 1):
///
///     ForEachPage<protocol::StatisticsCalcDataData>(
///         condition, [](auto& page, const auto& asked) { return CalculateComm::queryCalculate(page, asked); },
///         [&](auto& page) { Use(page); return page.statisticsCalcData.statisticsCalcList.size(); });
///
/// @param read  (Result&, const Condition&) to bool: a request function.
/// @param each  (Result&) to the number of elements on the page. Fewer than `pageSize` are the last ones; to end
///              earlier return 0.
template <class Result, class Condition, class Read, class Each>
PagesEnd ForEachPage(Condition condition, const Read& read, const Each& each)
{
    for (std::int32_t page = 0; page < kMostPages; ++page, ++condition.pageNo) {
        if (IsCancelled()) {
            return PagesEnd::Cancelled;
        }
        Result result;
        if (!read(result, static_cast<const Condition&>(condition))) {
            return PagesEnd::Failed;
        }
        const std::size_t count = each(result);
        if (count == 0 || static_cast<std::int64_t>(count) < condition.pageSize) {
            return PagesEnd::Complete;
        }
    }
    return PagesEnd::Stuck;
}

/// Reads a device's batch to its end through a function that appends to a list and says whether it is finished:
///
///     ForEachBatchPage<protocol::PdcResultData>(request, [&](auto& finished, auto& guid, auto& items, const auto&
///     asked) {
///         return CDataStatisticsComm::PCSDKRequest(finished, guid, device, items, asked);
///     }, [&](auto& items) { Use(items); });
///
/// The first request goes as it is, later ones with the identifier of the batch only. Three pages in a row without an
/// element are Stuck: devices need a moment for the first ones, so pause in `each` when it gets none.
///
/// @param read  (bool& finished, std::string& guid, std::vector<Item>&, const Request&) to bool.
/// @param each  (std::vector<Item>&), for each page, also an empty one.
template <class Item, class Request, class Read, class Each>
PagesEnd ForEachBatchPage(Request request, const Read& read, const Each& each)
{
    constexpr int kMostEmpty = 3;
    int empty = 0;
    for (std::int32_t page = 0; page < kMostPages; ++page) {
        if (IsCancelled()) {
            return PagesEnd::Cancelled;
        }
        bool finished = false;
        std::string guid;
        std::vector<Item> items;
        if (!read(finished, guid, items, static_cast<const Request&>(request))) {
            return PagesEnd::Failed;
        }
        empty = items.empty() ? empty + 1 : 0;
        each(items);
        if (finished) {
            return PagesEnd::Complete;
        }
        if (guid.empty() || empty == kMostEmpty) {
            return PagesEnd::Stuck;
        }
        request.guid = guid;
        request.batchSendDataList.clear();
    }
    return PagesEnd::Stuck;
}

} // namespace host
} // namespace nexwire
