#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

/// Reads one page of persons or credentials, each a structure under its root name, and hands them to `take` in order.
/// An item that the device reports a code for carries none and is passed over; one that cannot be read ends the call
/// with false.
template <class Structure, class Take>
bool PageInto(const Take& take, Route route, const protocol::BatchPassThroughReq& request,
              const std::string& deviceGuid, std::string& batchGuid, bool& finished,
              std::string* errorText = nullptr) noexcept
{
    return BatchPage(route, request, deviceGuid, batchGuid, finished, errorText,
                     [&take](const protocol::BatchReturnData& item) {
                         if (item.code != 0) {
                             return true;
                         }
                         Structure element;
                         if (!protocol::TParseJSONStr(element, item.outBuffer)) {
                             return false;
                         }
                         take(std::move(element));
                         return true;
                     });
}

/// The same, appended to a list.
template <class Structure>
bool PageInto(std::vector<Structure>& list, Route route, const protocol::BatchPassThroughReq& request,
              const std::string& deviceGuid, std::string& batchGuid, bool& finished,
              std::string* errorText = nullptr) noexcept
{
    return PageInto<Structure>([&list](Structure&& element) { list.push_back(std::move(element)); }, route, request,
                               deviceGuid, batchGuid, finished, errorText);
}

} // namespace nexwire
