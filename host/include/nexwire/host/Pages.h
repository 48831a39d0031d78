#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "nexwire/ParseJSONUtil.h"
#include "nexwire/host/CallScope.h"

namespace nexwire::host {

/// How reading through pages ended.
enum class PagesEnd {
    Complete,  ///< To the last page, or `each` had enough.
    Failed,    ///< A call returned false; the last error says why.
    Cancelled, ///< The scope was cancelled.
    Late,      ///< The time of the scope was over.
    Stuck,     ///< The platform repeated itself, or there are pages without end.
};

constexpr std::int32_t kMostPages = 100000;

/// What `each` made of a page.
struct PageSeen {
    std::size_t count = 0; ///< Elements. Fewer than `pageSize` are the last ones; to end earlier return 0.
    /// Identifier of the first element, so that a platform is found out that numbers its pages and always sends the
    /// same; empty: only whole pages are compared.
    std::string first;
};

/// Whether the scope of the calling thread was cancelled.
inline bool IsCancelled()
{
    return CallScope::Current() != nullptr && CallScope::Current()->Cancelled();
}

/// Whether the time of the calling thread's scope is over.
inline bool IsLate()
{
    const CallScope* const scope = CallScope::Current();
    return scope != nullptr && scope->HasDeadline() && CallScope::Clock::now() >= scope->Deadline();
}

/// What stands in the way of another page; `otherwise` when nothing does.
inline PagesEnd ScopeEnd(PagesEnd otherwise)
{
    return IsCancelled() ? PagesEnd::Cancelled : IsLate() ? PagesEnd::Late : otherwise;
}

/// A number for what a page holds, to tell whether the next one is the same. 0 for what is no structure: it is never
/// the same.
template <class Part>
std::size_t PageMark(const Part& part)
{
    if constexpr (std::is_base_of_v<protocol::IJSONStruct, Part>) {
        return std::hash<std::string>()(protocol::StructureToJSON(part));
    } else {
        return 0;
    }
}

template <class Item>
std::size_t PageMark(const std::vector<Item>& items)
{
    std::size_t mark = 0;
    for (const Item& item : items) {
        mark = mark * 31 + PageMark(item);
    }
    return mark;
}

/// Reads page after page through a condition with the members `pageNo` and `pageSize` (from 1, at least 1):
///
///     ForEachPage<protocol::StatisticsCalcDataData>(
///         condition, [](auto& page, const auto& asked) { return CalculateComm::queryCalculate(page, asked); },
///         [&](auto& page) { Use(page); return page.statisticsCalcData.statisticsCalcList.size(); });
///
/// A page that is the same as the one before is Stuck, and `each` does not get it.
///
/// @param read  (Result&, const Condition&) to bool: a request function.
/// @param each  (Result&) to the number of elements on the page, or to a `PageSeen`.
template <class Result, class Condition, class Read, class Each>
PagesEnd ForEachPage(Condition condition, const Read& read, const Each& each)
{
    std::size_t before = 0;
    std::string first;
    for (std::int32_t page = 0; page < kMostPages; ++page, ++condition.pageNo) {
        if (const PagesEnd end = ScopeEnd(PagesEnd::Complete); end != PagesEnd::Complete) {
            return end;
        }
        Result result;
        if (!read(result, static_cast<const Condition&>(condition))) {
            return ScopeEnd(PagesEnd::Failed);
        }
        const std::size_t mark = PageMark(result);
        if (mark != 0 && mark == before) {
            return PagesEnd::Stuck;
        }
        before = mark;
        PageSeen seen;
        if constexpr (std::is_same_v<std::invoke_result_t<Each, Result&>, PageSeen>) {
            seen = each(result);
        } else {
            seen.count = each(result);
        }
        if (!seen.first.empty() && seen.first == first) {
            return PagesEnd::Stuck;
        }
        first = std::move(seen.first);
        if (seen.count == 0 || static_cast<std::int64_t>(seen.count) < condition.pageSize) {
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
/// The first request goes as it is, later ones with the identifier of the batch only. Stuck are an identifier that was
/// given up for another one and comes again, and three pages in a row that are empty or the same as the page before:
/// devices need a moment for the first ones, so pause in `each` when it gets none.
///
/// @param read  (bool& finished, std::string& guid, std::vector<Item>&, const Request&) to bool.
/// @param each  (std::vector<Item>&), for each page, also an empty one.
template <class Item, class Request, class Read, class Each>
PagesEnd ForEachBatchPage(Request request, const Read& read, const Each& each)
{
    constexpr int kMostStanding = 3;
    int standing = 0;
    std::size_t before = 0;
    std::set<std::string> batches;
    for (std::int32_t page = 0; page < kMostPages; ++page) {
        if (const PagesEnd end = ScopeEnd(PagesEnd::Complete); end != PagesEnd::Complete) {
            return end;
        }
        bool finished = false;
        std::string guid;
        std::vector<Item> items;
        if (!read(finished, guid, items, static_cast<const Request&>(request))) {
            return ScopeEnd(PagesEnd::Failed);
        }
        const std::size_t mark = PageMark(items);
        const bool moves = !items.empty() && (mark == 0 || mark != before);
        before = mark;
        standing = moves ? 0 : standing + 1;
        each(items);
        if (finished) {
            return PagesEnd::Complete;
        }
        if (guid.empty() || standing == kMostStanding || (guid != request.guid && !batches.insert(guid).second)) {
            return PagesEnd::Stuck;
        }
        request.guid = guid;
        request.batchSendDataList.clear();
    }
    return PagesEnd::Stuck;
}

} // namespace nexwire::host
