#pragma once

#include "protocol/AccessController/Intercom.h"

// Video intercom. All functions block until the answer is there and may be called from any thread.
//
// The log functions are true when the answer was a readable envelope, whatever its code. Functions with a device GUID
// are one exchange with the device through the platform: a control or a notice is true when the platform's answer was
// readable, whatever the device makes of it, a get when the device answered with the structure asked for. A result
// is untouched on false.

namespace nexwire {

/// Calls that the platform has logged, and control of the stations.
class NEXWIRE_API DialLogComm {
public:
    /// A page of calls.
    static bool getDialLogs(const protocol::DailInfosGet& condition, protocol::DailInfosResponseDataData& result);
    /// One result per call.
    static bool addDialLog(const protocol::DialInfoAdd& param, protocol::DialInfoResultData& result);
    /// One result per call.
    static bool deleteDialLogs(const protocol::DialInfoDelete& param, protocol::DialInfoResultData& result);

    /// Has a gateway control something attached to it.
    static bool resourceControlGateway(const protocol::ResourceControl& input, const std::string& deviceGuid);
    /// The same for gateways that speak the device-access protocol or have an HTTP API.
    static bool corvidKestrelControlGateway(const protocol::ResourceControl& input, const std::string& deviceGuid);
    /// Opens or closes the door of a station.
    static bool remoteControlGateway(const protocol::RemoteControlGateway& input, const std::string& deviceGuid);
    /// Which remote control of doors a device with an HTTP API supports.
    static bool getKestrelControlGatewayCap(protocol::RemoteControlDoor& output, const std::string& deviceGuid);
    /// The door stations of a device.
    static bool getOutDoorUnitInfo(protocol::OutDoorUnitInfo& output, const std::string& deviceGuid);
};

/// Notices to residents.
class NEXWIRE_API NoticeLogComm {
public:
    /// A page of notices that were sent.
    static bool getNoticeLogs(const protocol::NoticeGet& condition, protocol::NoticeInfosResponseDataData& result);
    /// Logs notices; sends none. One result per notice.
    static bool addNoticeLog(const protocol::NoticeInfoAdd& param, protocol::NoticeInfoResultData& result);
    /// One result per notice.
    static bool deleteNoticeLogs(const protocol::NoticeInfoDelete& param, protocol::NoticeInfoResultData& result);

    /// Sends a notice to a device; logs none.
    static bool sendNotice(const protocol::NoticeInfo& input, const std::string& deviceGuid);
};

} // namespace nexwire
