#pragma once

#include <string>
#include <string_view>

#include "core/Pipeline.h"
#include "nexwire/ParseJSONUtil.h"
#include "protocol/PassThrough/PassThrough.h"

// Commands for devices, as request functions say them: one line per row of a command table.
//
//   NEXWIRE_DEVICE_GET(AcsParamConfig, getAcsHostParamRequest, AcsHostParamCfg, External, 2101)
//   NEXWIRE_DEVICE_SET(AcsParamConfig, setAcsHostParamRequest, AcsHostParamCfg, External, 4101)
//
// Members with more arguments call DeviceGet, DeviceSet or DeviceCommand themselves.

namespace nexwire {

/// The two ways to a device: for clients, and for components of the platform.
enum class Route { External, Internal };

Path DevicePath(Route route, const std::string& deviceGuid, const char* lastSegment);

/// Sends one command and reads the device's answer; false unless the envelope parsed.
///
/// @param input      what to set; null for everything else.
/// @param timeoutMs  0 keeps the default.
bool DeviceExchange(Route route, int command, const std::string& deviceGuid, std::string_view condition,
                    const protocol::IInboundData* input, protocol::DagPassThroughRsp& answer,
                    int timeoutMs = 0) noexcept;

/// Reads a structure from a device. False when the device's answer is empty or does not hold the structure under
/// its root name; `output` is untouched then.
template <class Structure>
bool DeviceGet(Route route, int command, const std::string& deviceGuid, Structure& output,
               std::string_view condition = {}, int timeoutMs = 0) noexcept
{
    return core::Guard([&] {
        protocol::DagPassThroughRsp answer;
        Structure fresh;
        if (!DeviceExchange(route, command, deviceGuid, condition, nullptr, answer, timeoutMs) ||
            !protocol::TParseJSONStr(fresh, answer.outBuffer)) {
            return false;
        }
        output = std::move(fresh);
        return true;
    });
}

/// Writes a structure to a device.
bool DeviceSet(Route route, int command, const std::string& deviceGuid, const protocol::IInboundData& input,
               std::string_view condition = {}, int timeoutMs = 0) noexcept;

/// Has a device do something that takes no structure.
bool DeviceCommand(Route route, int command, const std::string& deviceGuid, std::string_view condition = {},
                   int timeoutMs = 0) noexcept;

} // namespace nexwire

#define NEXWIRE_DEVICE_GET(Class, function, Structure, route, command)                                                 \
    bool Class::function(protocol::Structure& output, const std::string& deviceGuid)                                   \
    {                                                                                                                  \
        return DeviceGet(Route::route, command, deviceGuid, output);                                                   \
    }
#define NEXWIRE_DEVICE_SET(Class, function, Structure, route, command)                                                 \
    bool Class::function(const protocol::Structure& input, const std::string& deviceGuid)                              \
    {                                                                                                                  \
        return DeviceSet(Route::route, command, deviceGuid, input);                                                    \
    }
