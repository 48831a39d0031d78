#pragma once

#include "Application/PassThrough/PassThrough.h"
#include "protocol/DeviceManagement/Resource.h"

namespace nexwire {

/// Asks about a resource that its number on a device names, over the route of the platform's own components.
///
/// @param body  nothing or a structure.
template <class Result, class... Body>
bool QueryByNumber(Result& result, const std::string& deviceGuid, const char* segment, unsigned int number,
                   const Body&... body) noexcept
{
    return core::Guard([&] {
        const std::string text = std::to_string(number);
        return Exchange(Query(DevicePath(Route::Internal, deviceGuid, segment, text), body...), result);
    });
}

/// The same where all that is said is whether the device is asked again.
template <class Result>
bool QueryByNumber(Result& result, const std::string& deviceGuid, const char* segment, unsigned int number,
                   bool refresh) noexcept
{
    return core::Guard([&] {
        protocol::ResourceByNoReq body;
        body.refresh = refresh;
        return QueryByNumber(result, deviceGuid, segment, number, body);
    });
}

} // namespace nexwire
