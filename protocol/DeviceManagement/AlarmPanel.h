#pragma once

#include "protocol/Common.h"
#include "protocol/DeviceManagement/Device.h"

// Alarm panels: partitions that are armed, the zones in them that sensors belong to, relays; and the guard states of
// devices. Partitions, zones and relays are numbered from 1 on their device.

namespace protocol {

// ---- Partitions ----

/// What partitions are to do.
struct NEXWIRE_API PartitionControl : IInboundData {
    std::string action;      ///< One of: "arm", "armStay", "armInstant", "disarm", "clearAlarm".
    std::string operatorPwd; ///< Code of the panel's operator, plain; empty: the platform's own. Up to 32 characters.
    std::vector<std::int32_t> partitionNoList; ///< From 1; empty: all.
    NEXWIRE_JSON
};

/// What one partition, zone or relay made of an order.
struct NEXWIRE_API PanelControlResult : IReturnData {
    std::int32_t no = 0;         ///< Of the partition, zone or relay, from 1.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API PartitionControlRsp : IReturnData {
    std::vector<PanelControlResult> resultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PartitionControlRspData : IReturnData {
    PartitionControlRsp partitionControlRsp;
    NEXWIRE_JSON
};

struct NEXWIRE_API PartitionStatus : IReturnData {
    std::int32_t partitionNo = 0; ///< From 1.
    std::string armState;         ///< One of: "disarmed", "armed", "armedStay", "armedInstant", "arming".
    bool alarm = false;           ///< An alarm is up in it.
    bool fault = false;           ///< A zone of it cannot be armed.
    std::string changeTime;       ///< Of the last change, ISO 8601.
    NEXWIRE_JSON
};

struct NEXWIRE_API PartitionStatusRsp : IReturnData {
    std::vector<PartitionStatus> partitionStatusList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PartitionStatusRspData : IReturnData {
    PartitionStatusRsp partitionStatusRsp;
    NEXWIRE_JSON
};

/// A part of a building that is armed as one.
struct NEXWIRE_API PartitionInfo : IReturnData {
    std::string partitionGuid;
    std::string deviceGuid; ///< Panel that it belongs to.
    std::string name;
    std::int32_t partitionNo = 0;         ///< From 1.
    std::int32_t entryDelay = 0;          ///< Time to disarm after coming in. 0 to 255 s.
    std::int32_t exitDelay = 0;           ///< Time to leave after arming. 0 to 255 s.
    std::vector<std::int32_t> zoneNoList; ///< Its zones, from 1.
    PartitionStatus partitionStatus;
    NEXWIRE_JSON
};

struct NEXWIRE_API PartitionInfoData : IReturnData {
    PartitionInfo partitionInfo;
    NEXWIRE_JSON
};

// ---- Zones ----

struct NEXWIRE_API ZoneStatus : IReturnData {
    std::int32_t zoneNo = 0; ///< From 1.
    bool armed = false;
    bool bypassed = false; ///< Left out of arming.
    bool alarm = false;
    bool fault = false;
    bool tamper = false;      ///< Its housing was opened.
    std::int32_t battery = 0; ///< Of a wireless sensor. 0 to 100 %.
    std::string changeTime;   ///< Of the last change, ISO 8601.
    NEXWIRE_JSON
};

/// A zone: a sensor, or several on one line.
struct NEXWIRE_API ZoneInfo : IReturnData {
    std::string zoneGuid;
    std::string deviceGuid; ///< Panel that it belongs to.
    std::string name;
    std::int32_t zoneNo = 0;        ///< From 1.
    std::int32_t partitionNo = 0;   ///< Partition that it is in, from 1; 0 none.
    std::string zoneType;           ///< For example: "instant", "delayed", "follow", "24h", "fire", "panic".
    std::string detectorType;       ///< For example: "magneticContact", "passiveInfrared", "smoke", "glassBreak".
    std::string relatedChannelGuid; ///< Channel that shows the zone; empty: none.
    ZoneStatus zoneStatus;
    NEXWIRE_JSON
};

struct NEXWIRE_API ZoneInfoData : IReturnData {
    ZoneInfo zoneInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API PartitionZoneInfo : IReturnData {
    std::int32_t partitionNo = 0; ///< From 1.
    std::vector<ZoneInfo> zoneInfoList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PartitionZoneInfoData : IReturnData {
    PartitionZoneInfo partitionZoneInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API ZoneAndDeviceInfoRsp : IReturnData {
    ZoneInfo zoneInfo;
    DeviceResponse deviceInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API ZoneAndDeviceInfoRspData : IReturnData {
    ZoneAndDeviceInfoRsp zoneAndDeviceInfoRsp;
    NEXWIRE_JSON
};

/// What zones are to do.
struct NEXWIRE_API ZoneControl : IInboundData {
    std::string action;                   ///< One of: "arm", "disarm", "bypass", "bypassRestore", "clearAlarm".
    std::vector<std::int32_t> zoneNoList; ///< From 1. 1 to 512 elements.
    NEXWIRE_JSON
};

struct NEXWIRE_API ZoneControlRsp : IReturnData {
    std::vector<PanelControlResult> resultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ZoneControlRspData : IReturnData {
    ZoneControlRsp zoneControlRsp;
    NEXWIRE_JSON
};

struct NEXWIRE_API ZoneStatusRsp : IReturnData {
    std::vector<ZoneStatus> zoneStatusList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ZoneStatusRspData : IReturnData {
    ZoneStatusRsp zoneStatusRsp;
    NEXWIRE_JSON
};

/// A channel that shows a zone.
struct NEXWIRE_API RelativeChannel : IReturnData {
    std::int32_t zoneNo = 0; ///< From 1.
    std::string channelGuid; ///< Empty: none shows it.
    std::string channelName;
    std::int32_t channelNo = 0;   ///< From 1.
    std::int32_t onlineState = 0; ///< One of: 0 offline, 1 online, 2 not asked yet.
    NEXWIRE_JSON
};

// ---- Relays ----

/// What relays are to do.
struct NEXWIRE_API RelayControl : IInboundData {
    std::int32_t action = 0;               ///< One of: 0 open, 1 close.
    std::int32_t duration = 0;             ///< Goes back by itself. 1 to 3600 s; 0: stays.
    std::vector<std::int32_t> relayNoList; ///< From 1. 1 to 512 elements.
    NEXWIRE_JSON
};

struct NEXWIRE_API RelayControlRsp : IReturnData {
    std::vector<PanelControlResult> resultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API RelayControlRspData : IReturnData {
    RelayControlRsp relayControlRsp;
    NEXWIRE_JSON
};

struct NEXWIRE_API RelayStatus : IReturnData {
    std::string relayGuid;
    std::string name;
    std::int32_t relayNo = 0; ///< From 1.
    std::int32_t state = 0;   ///< One of: 0 open, 1 closed, 2 not known.
    NEXWIRE_JSON
};

struct NEXWIRE_API RelayStatusRsp : IReturnData {
    std::vector<RelayStatus> relayStatusList;
    NEXWIRE_JSON
};

struct NEXWIRE_API RelayStatusRspData : IReturnData {
    RelayStatusRsp relayStatusRsp;
    NEXWIRE_JSON
};

// ---- Guards ----

/// Whether a device reports alarms.
struct NEXWIRE_API DeviceGuardState : IReturnData {
    std::string deviceGuid;
    std::string deviceName;
    std::int32_t guardState = 0; ///< One of: 0 off, 1 on, 2 failed.
    std::int32_t errorCode = 0;  ///< Why it failed, the device's number; 0 none.
    NEXWIRE_JSON
};

struct NEXWIRE_API DeviceGuardStateListData : IReturnData {
    std::vector<DeviceGuardState> deviceGuardStateList;
    NEXWIRE_JSON
};

/// Switches the reports of devices on or off.
struct NEXWIRE_API DeviceGuard : IInboundData {
    std::int32_t guardState = 0; ///< One of: 0 off, 1 on.
    std::vector<std::string> deviceGuidList;
    NEXWIRE_JSON
};

/// What one device made of it.
struct NEXWIRE_API GuardResult : IReturnData {
    std::string deviceGuid;
    std::int32_t guardState = 0; ///< One of: 0 off, 1 on, 2 failed.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API GuardResultListData : IReturnData {
    std::vector<GuardResult> guardResultList;
    NEXWIRE_JSON
};

// ---- Intercom ----

/// What an intercom device is to do.
struct NEXWIRE_API IntercomControl : IInboundData {
    std::string action;              ///< One of: "call", "answer", "hangUp", "refuse", "openDoor".
    std::int32_t periodNumber = 1;   ///< Where the call goes: phase of the estate. 1 to 9.
    std::int32_t buildingNumber = 0; ///< 0 to 999.
    std::int32_t unitNumber = 0;     ///< 0 to 99.
    std::int32_t roomNumber = 0;     ///< 0 to 99999.
    std::int32_t doorNo = 1;         ///< Door for "openDoor". From 1.
    NEXWIRE_JSON
};

} // namespace protocol
