#pragma once

#include "protocol/DeviceManagement/Device.h"
#include "protocol/DeviceManagement/DeviceService.h"

// What one device says, and what is done with one or many. Threads, truth and errors: see Device.h; identifiers go
// into paths as they are given.

namespace nexwire {

/// A device's state as the platform knows it.
class NEXWIRE_API CGetDeviceStatus {
public:
    static bool request(protocol::DeviceStatusData& result, const std::string& deviceGuid);
};

/// Has the platform ask a device for its state now.
class NEXWIRE_API CDeviceStatusComm {
public:
    static bool request(protocol::DeviceStatusData& result, const std::string& deviceGuid);
};

/// Who is logged on to a device.
class NEXWIRE_API CGetDeviceOnlineUser {
public:
    static bool request(protocol::OnlineUserListData& result, const std::string& deviceGuid);
};

/// Network cards of a device with what runs over them.
class NEXWIRE_API CGetNetWorkFlow {
public:
    static bool request(protocol::NetworkParamData& result, const std::string& deviceGuid);
};

/// Codes to scan devices from.
class NEXWIRE_API CGetDevQRCode {
public:
    static bool request(protocol::QrCodesRspData& result, const protocol::DeviceList& devices);
};

/// What a device can do.
class NEXWIRE_API CDeviceCapabilitiesComm {
public:
    static bool request(protocol::CapabilitiesData& result, const std::string& deviceGuid,
                        const protocol::CapabilitiesQueryCondition& condition);
};

/// The same over the route of the platform's own components.
class NEXWIRE_API CDeviceCapabilitiesInnerComm {
public:
    static bool request(protocol::CapabilitiesData& result, const std::string& deviceGuid,
                        const protocol::CapabilitiesQueryCondition& condition);
};

/// Files on devices.
class NEXWIRE_API CDeviceDownloadsComm {
public:
    /// True when an answer came, whatever it says.
    ///
    /// @param content      the file, byte for byte.
    /// @param contentType  "Content-Type" of the answer; left alone when it has none.
    /// @param filePath     where the device has the file.
    static bool request(std::string& content, std::string& contentType, const std::string& deviceGuid,
                        const std::string& filePath);
};

/// Pages of devices, as the platform's web server fetches them.
class NEXWIRE_API CDeviceGetHttpFromNginx {
public:
    /// True when an answer came; its body is dropped.
    ///
    /// @param contentType  "Content-Type" of the answer; left alone when it has none.
    /// @param url          path and query on the device.
    static bool request(std::string& contentType, const std::string& deviceGuid, const std::string& url);
};

/// Sends a file that the platform has to a device.
class NEXWIRE_API CDeviceUploadFile {
public:
    static bool request(const protocol::UploadFileToDev& file, const std::string& deviceGuid);
};

/// Wipers of cameras.
class NEXWIRE_API CWiperComm {
public:
    /// One result per wiper.
    static bool request(protocol::WiperControlResultListData& result, const protocol::WiperReq& order);
};

/// Sets the clocks of devices by the platform's.
class NEXWIRE_API CTimeSyncComm {
public:
    /// One result per device.
    static bool request(const protocol::DeviceList& devices, protocol::DeviceResultListData& result);
};

/// How the platform checks the certificates of devices.
class NEXWIRE_API CDeviceCertVerificationComm {
public:
    static bool get(protocol::CertVerificationResultData& result);
    static bool set(const protocol::CertVerificationReq& setting);
};

/// Devices that open for a password alone; spelled so.
class NEXWIRE_API CDevicePurePwdVerityComm {
public:
    static bool request(protocol::PurePwdVerityEnableDeviceRspData& result);
};

/// Logs a user of the platform on to devices, with permissions.
class NEXWIRE_API CDevicePermissionLogin {
public:
    static bool request(protocol::DevicePermissionDataReturn& result, const protocol::DevicePermissionData& login);
};

/// Ends such a login.
class NEXWIRE_API CDevicePermissionOffline {
public:
    static bool request(protocol::DevicePermissionDataReturn& result, const protocol::DevicePermissionData& login);
};

} // namespace nexwire
