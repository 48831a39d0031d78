#pragma once

#include "protocol/DeviceManagement/Device.h"

// Adding, removing, changing, refreshing and listing devices.
//
// All functions block until the answer is there and may be called from any thread. They return true when the answer
// was a readable envelope, whatever its code; a result is untouched on false. When the exchange fails and the answer
// still holds a code other than 0, that code is the last error.
//
// Device identifiers in paths. The server expects exactly 32 characters (bytes). Where a function says that it brings
// the identifier to length, one of more than 32 is cut to its last 10, which are the serial number, and what is
// shorter than 32 is filled up with "$". Both texts go to the log at level info.

namespace nexwire {

/// Adds devices.
class NEXWIRE_API CAddDevice {
public:
    /// One result per device. User name and password are encrypted before they travel; nothing is sent and false comes
    /// back when they cannot be.
    static bool request(protocol::DeviceResultListData& result, const protocol::DeviceAddReq& device);
    /// @param timeoutMs  milliseconds for the whole exchange; 0 keeps 40000. A range of addresses takes its time.
    static bool request(protocol::DeviceResultListData& result, const protocol::DeviceAddReq& device, int timeoutMs);
    /// The newer interface. True when an answer came, whatever it says.
    ///
    /// @param answer  the answer as it is.
    /// @param body    JSON text, sent as it is; its credentials too.
    static bool request(std::string& answer, std::string& body);
};

/// Removes devices.
class NEXWIRE_API CDeleteDevice {
public:
    /// One result per device.
    static bool request(protocol::DeviceResultListData& result, const protocol::DeviceList& devices);
};

/// Lists devices.
class NEXWIRE_API CGetAllDeviceInfo {
public:
    static bool request(protocol::DeviceResponseListData& result, const protocol::DeviceQueryCondition& condition);
    /// The newer interface, states only. True when an answer came, whatever it says.
    ///
    /// @param answer           the answer as it is.
    /// @param body             JSON text, sent as it is.
    /// @param unusedCondition  plays no part in the request.
    static bool request(std::string& answer, std::string& body, const protocol::DeviceQueryCondition& unusedCondition);
};

/// Lists devices over the newest interface.
class NEXWIRE_API CGetAllDevicesInfo {
public:
    static bool request(protocol::DeviceResponseListData& result, const protocol::DeviceQueryCondition& condition);
};

/// Lists devices over the route of the platform's own components; spelled so.
class NEXWIRE_API CInteralGetAllDeviceInfo {
public:
    static bool request(protocol::DeviceResponseListData& result, const protocol::DeviceQueryCondition& condition);
};

/// One device.
class NEXWIRE_API CGetSingleDevicesComm {
public:
    /// Brings the identifier to length.
    ///
    /// @param condition  says what is wanted; its `mLongStrGuid` is sent as `deviceGuid`, and holds it on success.
    static bool request(protocol::DeviceResponseData& result, protocol::DeviceQueryCondition& condition,
                        const std::string& deviceGuid);
};

/// The same on the executor's slower worker, for devices that keep the platform waiting.
class NEXWIRE_API CGetSingleDevicesCommBySlowThread {
public:
    static bool request(protocol::DeviceResponseData& result, protocol::DeviceQueryCondition& condition,
                        const std::string& deviceGuid);
};

/// One device over the route of the platform's own components.
class NEXWIRE_API CInternalGetDeviceComm {
public:
    static bool request(protocol::DeviceResponseData& result, const protocol::DeviceQueryCondition& condition,
                        const std::string& deviceGuid);
};

/// Changes a device. Brings the identifier to length.
class NEXWIRE_API CModDevice {
public:
    /// Sends the identifier in full, user name, password as it is given, and what the filter of `basicInfo` names
    /// besides (`basicInfo.WriteOnly({"name"})`).
    ///
    /// @param basicInfo  its `mLongStrGuid` is sent as `deviceGuid`, and holds it on success.
    static bool request(protocol::DeviceBasicInfo& basicInfo, const std::string& deviceGuid);
    /// The same with the device as it is afterwards.
    static bool request(protocol::DeviceResponseData& result, protocol::DeviceBasicInfo& basicInfo,
                        const std::string& deviceGuid);
};

/// Sets the secret of a device's encrypted streams.
class NEXWIRE_API CDeviceStreamKeyComm {
public:
    /// Brings the identifier to length.
    static bool setStreamKey(const std::string& deviceGuid, const std::string& streamKey);
};

/// Has the platform read devices again.
class NEXWIRE_API CRefreshDevices {
public:
    static bool request(const protocol::DeviceQueryCondition& condition);
};

/// Has the platform read one device again. Brings the identifier to length.
class NEXWIRE_API CRefreshSingleDevice {
public:
    /// @param condition  its `mLongStrGuid` is sent as `deviceGuid`, and holds it on success.
    static bool request(protocol::DeviceResponseData& result, protocol::DeviceQueryCondition& condition,
                        const std::string& deviceGuid);
    /// Over the route of the platform's own components.
    static bool requestinternal(const std::string& deviceGuid);
};

} // namespace nexwire
