#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

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

/// What stands before a device's identifier in a path.
constexpr const char* DeviceRoot(Route route)
{
    return route == Route::External ? "/7730/v1/deviceManagement/devices/"
                                    : "/7730/v1/internal/deviceManagement/devices/";
}

/// A device's path; the pieces follow its identifier.
template <class... Piece>
Path DevicePath(Route route, const std::string& deviceGuid, const Piece&... piece)
{
    return Path(DeviceRoot(route), deviceGuid, piece...);
}

/// Sends one command and reads the device's answer; false unless the envelope parsed.
///
/// @param input      what to set; null for everything else.
/// @param timeoutMs  0 keeps the default.
bool DeviceExchange(Route route, int command, const std::string& deviceGuid, std::string_view condition,
                    const protocol::IInboundData* input, protocol::DagPassThroughRsp& answer,
                    int timeoutMs = 0) noexcept;

/// Reads a structure from a device. False when the device's answer is empty or does not hold the structure under
/// its root name; `output` is untouched then.
///
/// @param input  what is asked for, where that takes a structure.
bool DeviceGet(Route route, int command, const std::string& deviceGuid, protocol::IInboundData& output,
               std::string_view condition = {}, int timeoutMs = 0,
               const protocol::IInboundData* input = nullptr) noexcept;

/// Writes a structure to a device.
bool DeviceSet(Route route, int command, const std::string& deviceGuid, const protocol::IInboundData& input,
               std::string_view condition = {}, int timeoutMs = 0) noexcept;

/// Has a device do something that takes no structure.
bool DeviceCommand(Route route, int command, const std::string& deviceGuid, std::string_view condition = {},
                   int timeoutMs = 0) noexcept;

/// One step of a batch command: sends the caller's request as it is. Outputs of the batch are written on success only.
///
/// @param errorText  receives why there is no answer; may be null.
bool BatchExchange(Route route, const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                   protocol::BatchPassThroughRsp& answer, std::string* errorText = nullptr) noexcept;

/// Reads one page of a batch, item by item. One that cannot be read ends the call with false; what was read before it
/// stays. `batchGuid` and `finished` are written on success only.
///
/// @param read  takes an item; false when it cannot be read.
bool BatchPage(Route route, const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
               std::string& batchGuid, bool& finished, std::string* errorText,
               const std::function<bool(const protocol::BatchReturnData& item)>& read) noexcept;

/// The same where each item carries a structure under its root name, which is appended to `list`.
bool AppendPage(Route route, const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                core::TargetList list, std::string& batchGuid, bool& finished,
                std::string* errorText = nullptr) noexcept;

/// Sends a request to a device's HTTP interface and hands out what it answers.
bool KestrelExchange(Route route, const std::string& deviceGuid, const protocol::KestrelPassThroughReq& request,
                     protocol::KestrelPassThroughRspData& answer) noexcept;

/// Reads a structure that stands under its root name in a device's HTTP answer.
bool KestrelGet(const std::string& deviceGuid, std::string_view requestLine, protocol::IInboundData& output) noexcept;

/// Sends a command to a device's own programming interface.
bool NetsdkExchange(const std::string& deviceGuid, const protocol::NetsdkPassThroughReq& request,
                    protocol::NetsdkPassThroughRspData& answer) noexcept;

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
