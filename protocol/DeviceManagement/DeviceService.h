#pragma once

#include "protocol/Common.h"

// What the platform does with one device or with many, and what it learns from them.

namespace protocol {

/// How a device is at the moment.
struct NEXWIRE_API DeviceStatus : IReturnData {
    std::int32_t onlineState = 0;      ///< One of: 0 offline, 1 online, 2 not asked yet.
    std::int32_t errorCode = 0;        ///< Why it is offline, the device's number; 0 none.
    std::int32_t cpuUsage = 0;         ///< 0 to 100 %.
    std::int32_t memoryUsage = 0;      ///< 0 to 100 %.
    std::int32_t diskState = 0;        ///< One of: 0 no disk, 1 good, 2 full, 3 faulty.
    std::int32_t recordChannelNum = 0; ///< Channels that record.
    std::int32_t armState = 0;         ///< One of: 0 disarmed, 1 armed, 2 armed in part.
    std::string deviceTime;            ///< The device's clock, ISO 8601.
    NEXWIRE_JSON
};

struct NEXWIRE_API DeviceStatusData : IReturnData {
    DeviceStatus deviceStatus;
    NEXWIRE_JSON
};

/// Somebody who is logged on to a device.
struct NEXWIRE_API OnlineUser : IReturnData {
    std::string username;
    std::string userType;  ///< For example: "administrator", "operator", "viewer".
    std::string address;   ///< IP address that the user came from.
    std::string loginTime; ///< ISO 8601.
    NEXWIRE_JSON
};

struct NEXWIRE_API OnlineUserListData : IReturnData {
    std::vector<OnlineUser> onlineUserList;
    NEXWIRE_JSON
};

/// A picture to scan a device from.
struct NEXWIRE_API QrCode : IReturnData {
    std::string deviceGuid;
    std::string content; ///< What the code says.
    std::string qrCode;  ///< PNG picture, Base64.
    NEXWIRE_JSON
};

struct NEXWIRE_API QrCodesRspData : IReturnData {
    std::vector<QrCode> qrCodesList;
    NEXWIRE_JSON
};

/// A file of the platform that goes to a device.
struct NEXWIRE_API UploadFileToDev : IInboundData {
    std::string fileType; ///< What it is to the device. For example: "firmware", "audio", "certificate", "language".
    std::string fileName; ///< Name on the device. Up to 128 characters.
    std::string filePath; ///< Where the platform has it.
    std::int64_t fileSize = 0;  ///< Bytes.
    std::int32_t channelNo = 0; ///< Channel that it is for, from 1; 0 the device itself.
    NEXWIRE_JSON
};

/// A wiper of one channel.
struct NEXWIRE_API WiperChannel : IInboundData {
    std::string deviceGuid;
    std::string channelGuid;
    std::int32_t channelNo = 0; ///< From 1.
    NEXWIRE_JSON
};

/// What wipers are to do.
struct NEXWIRE_API WiperReq : IInboundData {
    std::int32_t action = 0;   ///< One of: 0 stop, 1 start, 2 wipe once.
    std::int32_t duration = 0; ///< How long they wipe. 1 to 3600 s; 0: until they are stopped.
    std::vector<WiperChannel> wiperChannelList;
    NEXWIRE_JSON
};

/// What one wiper made of it.
struct NEXWIRE_API WiperControlResult : IReturnData {
    std::string deviceGuid;
    std::string channelGuid;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API WiperControlResultListData : IReturnData {
    std::vector<WiperControlResult> wiperControlResultList;
    NEXWIRE_JSON
};

/// Which device's network is asked about.
struct NEXWIRE_API NetworkParamQuery : IInboundData {
    std::string deviceGuid;
    NEXWIRE_JSON
};

/// A network card with what runs over it.
struct NEXWIRE_API NetworkParam : IReturnData {
    std::int32_t networkCardNo = 0; ///< From 1.
    std::string address;            ///< IP address.
    std::string macAddress;         ///< "00:11:22:aa:bb:cc".
    std::int32_t linkSpeed = 0;     ///< Mbit/s; 0 no link.
    std::int32_t receiveRate = 0;   ///< kbit/s at the moment.
    std::int32_t sendRate = 0;      ///< kbit/s at the moment.
    std::int64_t receivedBytes = 0; ///< Since the device started.
    std::int64_t sentBytes = 0;     ///< Since the device started.
    NEXWIRE_JSON
};

struct NEXWIRE_API NetworkParamData : IReturnData {
    std::vector<NetworkParam> networkParamList;
    NEXWIRE_JSON
};

/// A file to fetch from a device.
struct NEXWIRE_API DeviceDownloadReq : IInboundData {
    std::string filePath; ///< Where the device has it.
    NEXWIRE_JSON
};

/// An address that the platform's web server fetches from a device.
struct NEXWIRE_API HttpFromNginxReq : IInboundData {
    std::string url; ///< Path and query on the device.
    NEXWIRE_JSON
};

/// Which capabilities are asked for.
struct NEXWIRE_API CapabilitiesQueryCondition : IInboundData {
    std::vector<std::string> capabilityList; ///< Names as in `Capability`; empty: all.
    std::int32_t channelNo = 0;              ///< Channel, from 1; 0 the device itself.
    bool refresh = false;                    ///< Ask the device again instead of answering from memory.
    NEXWIRE_JSON
};

/// One thing that a device may be able to do.
struct NEXWIRE_API Capability : IReturnData {
    std::string name; ///< For example: "ptz", "talk", "playback", "faceRecognition", "armPartition", "upgrade".
    bool supported = false;
    std::int32_t min = 0;                ///< Least value where the capability is a number.
    std::int32_t max = 0;                ///< Greatest value, or how many there are.
    std::vector<std::string> optionList; ///< Modes where there are several.
    NEXWIRE_JSON
};

struct NEXWIRE_API CapabilitiesData : IReturnData {
    std::string deviceGuid;
    std::int32_t channelNo = 0; ///< Channel, from 1; 0 the device itself.
    std::vector<Capability> capabilitiesList;
    NEXWIRE_JSON
};

/// Whether the platform checks the certificates of devices.
struct NEXWIRE_API CertVerificationReq : IInboundData {
    bool enable = false;
    bool allowSelfSigned = false; ///< Certificates that devices made themselves are good enough.
    std::int32_t warnDays = 0;    ///< Warn before a certificate ends. 1 to 365 d; 0: no warning.
    NEXWIRE_JSON
};

struct NEXWIRE_API CertVerificationResult : IReturnData {
    bool enable = false;
    bool allowSelfSigned = false;
    std::int32_t warnDays = 0;        ///< 1 to 365 d; 0: no warning.
    std::int32_t failedDeviceNum = 0; ///< Devices whose certificate did not pass.
    NEXWIRE_JSON
};

struct NEXWIRE_API CertVerificationResultData : IReturnData {
    CertVerificationResult certVerificationResult;
    NEXWIRE_JSON
};

/// A device whose check of bare passwords is known.
struct NEXWIRE_API PurePwdVerityEnableDevice : IReturnData {
    std::string deviceGuid;
    bool enable = false; ///< A password alone opens; the name is spelled so.
    NEXWIRE_JSON
};

struct NEXWIRE_API PurePwdVerityEnableDeviceRspData : IReturnData {
    std::vector<PurePwdVerityEnableDevice> purePwdVerityEnableDeviceList;
    NEXWIRE_JSON
};

/// Who logs on to devices with permissions of the platform, or off again.
struct NEXWIRE_API DevicePermissionData : IInboundData {
    std::string userGuid;   ///< User of the platform.
    std::string clientGuid; ///< The client that the user works at.
    std::vector<std::string> deviceGuidList;
    std::vector<std::string> permissionList; ///< For example: "preview", "playback", "control", "configuration".
    std::int32_t validSeconds = 0;           ///< The login ends by itself. 1 to 86400 s; 0: with the session.
    NEXWIRE_JSON
};

/// What came of it.
struct NEXWIRE_API DevicePermissionDataReturn : IReturnData {
    std::string permissionToken;                      ///< Names the login to the devices; empty after going offline.
    std::string expireTime;                           ///< ISO 8601.
    std::vector<OperationResult> operationResultList; ///< One per device.
    NEXWIRE_JSON
};

} // namespace protocol
