#pragma once

#include <keel/Error.h>

#include "protocol/PassThrough/PassThrough.h"

// All functions of this file block until the answer is there and may be called from any thread.

namespace nexwire {

/// Commands for devices through the platform, for callers that bring their own command codes and texts.
///
/// True when the envelope parsed; the response is untouched otherwise. The external route is the one
/// for clients, the internal one for components of the platform.
class NEXWIRE_API CPassThroughRequest {
public:
    /// External route.
    static bool dagRequest(protocol::DagPassThroughRsp& response, const protocol::DagPassThroughReq& request,
                           const std::string& deviceGuid);
    /// Internal route.
    static bool dagRequestInner(protocol::DagPassThroughRsp& response, const protocol::DagPassThroughReq& request,
                                const std::string& deviceGuid);
};

/// The same with a time-out per call, and in batches.
class NEXWIRE_API accessParamComm {
public:
    /// Internal route. @param timeoutMs  milliseconds for the exchange; 0 keeps the default of 40000.
    static bool dagThroughRequest(const protocol::DagPassThroughReq& request, const std::string& deviceGuid,
                                  protocol::DagPassThroughRspData& response, int timeoutMs);
    /// External route, otherwise the same.
    static bool dagThroughRequestExternal(protocol::DagPassThroughRspData& response,
                                          const protocol::DagPassThroughReq& request, const std::string& deviceGuid,
                                          int timeoutMs);

    /// One step of a batch on the internal route. @param errorText  receives on failure the text of the executor's
    /// error, or what else went wrong.
    static bool batchPassThroughRequest(const protocol::BatchPassThroughReq& request, const std::string& deviceGuid,
                                        protocol::BatchPassThroughRspData& response, std::string& errorText);
    /// One step of a batch on the external route. @param error  receives on failure the executor's error, or {0, 0}
    /// with a text when nothing was sent or the answer could not be read.
    static bool batchPassThroughRequestExternal(protocol::BatchPassThroughRspData& response,
                                                Keel::Error::ErrorCode& error,
                                                const protocol::BatchPassThroughReq& request,
                                                const std::string& deviceGuid);

    /// Sets the structure that `data` points at with a command of the caller's choice, on the external route.
    ///
    /// @param data       a structure derived from `protocol::IInboundData`; null sends no input.
    /// @param errorText  as for batches.
    static bool setSchedule(int command, void* data, const std::string& deviceGuid, std::string& errorText);
};

/// Door plans with a command of the caller's choice, on the external route.
class NEXWIRE_API ACDoorPlan {
public:
    /// @param data  a structure derived from `protocol::IInboundData`; null sends no input. The last text plays no
    ///              part in the request.
    static bool setDoorPlan(int command, void* data, const std::string& deviceGuid, const std::string& unused);
    /// @param output  receives the device's answer as it is; an empty answer is false. The last text plays no part
    ///                in the request.
    static bool getDoorStatusInfo(int command, std::string& output, const std::string& deviceGuid,
                                  const std::string& unused);
};

} // namespace nexwire
