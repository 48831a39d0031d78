#pragma once

#include "nexwire/JSONStruct.h"

// Devices as the platform keeps them. Times are ISO 8601 texts, "2026-03-01T08:00:00+00:00". Identifiers are texts
// of 32 characters in paths; where a device has a longer one it travels whole under "mLongStrGuid".

namespace protocol {

/// Who a device is, where it is, and how the platform logs on to it.
struct NEXWIRE_API DeviceBasicInfo : IInboundData {
    std::string mLongStrGuid; ///< The device's identifier in full; spelled so on the wire.
    std::string name;         ///< Up to 64 characters.
    std::string deviceType;   ///< For example: "camera", "encoder", "alarmPanel", "accessController", "publishServer".
    std::string protocolType; ///< How the platform speaks to it. One of: "" any, "sdk", "kestrel", "corvid".
    std::string address;      ///< IP address or host name.
    std::int32_t port = 0;    ///< Port of the device's own service. 1 to 65535; 0: none.
    std::string username;     ///< Up to 32 characters.
    std::string password;     ///< Sent as it is given; empty in answers.
    std::string serialNo;
    std::string model;
    std::string softwareVersion; ///< Firmware, as the device writes it.
    std::string groupGuid;       ///< Resource group that holds it.
    NEXWIRE_JSON
};

/// What the platform keeps about a device beside who it is.
struct NEXWIRE_API DeviceExtInfo : IInboundData {
    std::string streamKey;        ///< Secret of encrypted streams; empty in answers.
    bool streamEncrypt = false;   ///< Its streams are encrypted.
    std::string streamServerGuid; ///< Stream media server that hands its streams out; empty: the device itself.
    bool timeSync = false;        ///< The platform sets its clock.
    std::string timeZone;         ///< For example: "UTC+01:00".
    std::string remark;           ///< Up to 256 characters.
    NEXWIRE_JSON
};

/// What a device has and can do, as far as the platform must know.
struct NEXWIRE_API DeviceCapacity : IReturnData {
    std::int32_t channelNum = 0;     ///< Video channels.
    std::int32_t alarmInputNum = 0;  ///< Alarm inputs.
    std::int32_t alarmOutputNum = 0; ///< Alarm outputs.
    std::int32_t audioInputNum = 0;  ///< Audio inputs.
    std::int32_t doorNum = 0;        ///< Doors.
    std::int32_t readerNum = 0;      ///< Card readers.
    std::int32_t zoneNum = 0;        ///< Zones of an alarm panel.
    std::int32_t partitionNum = 0;   ///< Partitions of an alarm panel.
    std::int32_t relayNum = 0;       ///< Relays.
    bool intercom = false;           ///< Can be talked to.
    bool cloudP2P = false;           ///< Can be reached through the peer-to-peer cloud.
    NEXWIRE_JSON
};

/// A device as the platform keeps it.
struct NEXWIRE_API DeviceResponse : IReturnData {
    std::string deviceGuid; ///< Identifier for paths.
    DeviceBasicInfo deviceBasicInfo;
    DeviceExtInfo deviceExtInfo;
    DeviceCapacity deviceCapacity;
    std::int32_t onlineState = 0;   ///< One of: 0 offline, 1 online, 2 not asked yet.
    std::int32_t errorCode = 0;     ///< Why it is offline, the device's number; 0 none.
    std::int32_t securityLevel = 0; ///< Strength of its password. One of: 0 unknown, 1 weak, 2 fair, 3 strong.
    std::string addedTime;          ///< When the platform got it.
    std::string refreshTime;        ///< When its data was last read from it.
    NEXWIRE_JSON
};

struct NEXWIRE_API DeviceResponseData : IReturnData {
    DeviceResponse deviceResponse;
    NEXWIRE_JSON
};

/// Devices, a page of them.
struct NEXWIRE_API DeviceResponseListData : IReturnData {
    std::vector<DeviceResponse> deviceResponseList;
    std::int32_t total = 0; ///< Devices that the condition selects.
    NEXWIRE_JSON
};

/// Which devices are meant, and what is wanted of them.
struct NEXWIRE_API DeviceQueryCondition : IInboundData {
    std::string mLongStrGuid;                ///< One device, its identifier in full; spelled so on the wire.
    std::vector<std::string> deviceGuidList; ///< Several devices; empty: all.
    std::string deviceType;                  ///< As in `DeviceBasicInfo`; empty: any.
    std::string keyword;                     ///< Part of a name or an address.
    std::int32_t onlineState = -1;           ///< One of: -1 any, 0 offline, 1 online, 2 not asked yet.
    std::vector<std::string> keyList;        ///< Keys wanted, for example "serialNo"; empty: all.
    std::int32_t pageNo = 1;                 ///< From 1.
    std::int32_t pageSize = 0;               ///< 1 to 1000; 0: all on one page.
    NEXWIRE_JSON
};

/// Devices by their identifiers.
struct NEXWIRE_API DeviceList : IInboundData {
    std::vector<std::string> deviceGuidList;
    NEXWIRE_JSON
};

/// A device to add, or all that answer in a range of addresses.
struct NEXWIRE_API DeviceAddReq : IInboundData {
    std::string name;            ///< Up to 64 characters; empty: its address.
    std::string deviceType;      ///< As in `DeviceBasicInfo`.
    std::string protocolType;    ///< One of: "sdk", "kestrel", "corvid".
    std::string addMode;         ///< One of: "address", "addressRange", "serialNo".
    std::string address;         ///< IP address or host name; with "addressRange" the first.
    std::string endAddress;      ///< The last of a range; empty otherwise.
    std::int32_t port = 0;       ///< Port of the device's own service. 1 to 65535; 0: none.
    std::string serialNo;        ///< With "serialNo"; empty otherwise.
    std::string username;        ///< Plain; the library encrypts it.
    std::string password;        ///< Plain; the library encrypts it.
    std::string groupGuid;       ///< Resource group for what it brings; empty: the default one.
    bool importChannels = false; ///< Its channels, inputs and outputs go into the group at once.
    bool timeSync = false;       ///< The platform sets its clock.
    NEXWIRE_JSON
};

/// What became of one device of a request.
struct NEXWIRE_API DeviceResult : IReturnData {
    std::string deviceGuid;
    std::string address;         ///< Where the device is, or was looked for.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API DeviceResultListData : IReturnData {
    std::vector<DeviceResult> deviceResultList;
    NEXWIRE_JSON
};

/// A change of a device; only what is named is sent.
struct NEXWIRE_API DeviceModificationReq : IInboundData {
    DeviceBasicInfo deviceBasicInfo;
    DeviceExtInfo deviceExtInfo;
    NEXWIRE_JSON
};

/// A device that may have been added already.
struct NEXWIRE_API DeviceExisted : IInboundData {
    std::string address;   ///< IP address or host name.
    std::int32_t port = 0; ///< 1 to 65535.
    std::string username;
    std::string password;
    NEXWIRE_JSON
};

struct NEXWIRE_API DeviceExistedResult : IReturnData {
    bool existed = false;
    std::int32_t existedType = 0; ///< What it has in common. One of: 0 nothing, 1 address and port, 2 serial number.
    std::string deviceGuid;       ///< The device that is there; empty when none is.
    NEXWIRE_JSON
};

struct NEXWIRE_API DeviceExistedResultData : IReturnData {
    DeviceExistedResult deviceExistedResult;
    NEXWIRE_JSON
};

} // namespace protocol
