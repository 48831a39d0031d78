#pragma once

#include "protocol/DeviceManagement/Device.h"

// What a device has beside channels: alarm inputs and outputs, audio inputs, card readers, radars, lane controllers,
// switch ports. They are numbered from 1 on their device.

namespace protocol {

/// What is wanted of a resource that its number names.
struct NEXWIRE_API ResourceByNoReq : IInboundData {
    bool refresh = false; ///< Ask the device again instead of answering from memory.
    NEXWIRE_JSON
};

// ---- Alarm inputs ----

/// An input that a sensor is wired to.
struct NEXWIRE_API AlarmInputInfo : IReturnData {
    std::string alarmInputGuid;
    std::string deviceGuid; ///< Device that it belongs to.
    std::string name;
    std::int32_t alarmInputNo = 0; ///< From 1.
    std::string sensorType;        ///< Contact at rest. One of: "" not known, "normallyOpen", "normallyClosed".
    std::int32_t state = 0;        ///< One of: 0 at rest, 1 alarm, 2 not known.
    bool armed = false;
    std::string groupGuid; ///< Resource group that holds it.
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmInputInfoData : IReturnData {
    AlarmInputInfo alarmInputInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmInputQueryReq : IInboundData {
    bool refresh = false;             ///< Ask the device again instead of answering from memory.
    std::vector<std::string> keyList; ///< Keys wanted; empty: all.
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmInputAndDeviceInfoRsp : IReturnData {
    AlarmInputInfo alarmInputInfo;
    DeviceResponse deviceInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmInputAndDeviceInfoRspData : IReturnData {
    AlarmInputAndDeviceInfoRsp alarmInputAndDeviceInfoRsp;
    NEXWIRE_JSON
};

// ---- Alarm outputs ----

/// An output that a siren or a lamp is wired to.
struct NEXWIRE_API AlarmOutputAttr : IReturnData {
    std::string alarmOutputGuid;
    std::string deviceGuid; ///< Device that it belongs to.
    std::string name;
    std::int32_t alarmOutputNo = 0; ///< From 1.
    std::int32_t state = 0;         ///< One of: 0 off, 1 on, 2 not known.
    std::int32_t duration = 0;      ///< Goes off by itself. 1 to 3600 s; 0: stays on.
    std::string groupGuid;          ///< Resource group that holds it.
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmOutputAttrData : IReturnData {
    AlarmOutputAttr alarmOutputAttr;
    NEXWIRE_JSON
};

/// Alarm outputs of one device.
struct NEXWIRE_API AlarmOutputParam : IReturnData {
    std::string deviceGuid;
    std::string deviceName;
    std::vector<AlarmOutputAttr> alarmOutputList;
    NEXWIRE_JSON
};

/// Alarm outputs of all devices that have some.
struct NEXWIRE_API AlarmOutputInfo : IReturnData {
    std::vector<AlarmOutputParam> alarmOutputParamList;
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmOutputInfoData : IReturnData {
    AlarmOutputInfo alarmOutputInfo;
    NEXWIRE_JSON
};

/// What an alarm output is to do.
struct NEXWIRE_API AlarmOutputControl : IInboundData {
    std::int32_t action = 0;   ///< One of: 0 off, 1 on.
    std::int32_t duration = 0; ///< Goes off by itself. 1 to 3600 s; 0: as the output is set.
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmOutputStatusRsp : IReturnData {
    std::string alarmOutputGuid;
    std::int32_t state = 0; ///< One of: 0 off, 1 on, 2 not known.
    std::string changeTime; ///< Of the last change, ISO 8601.
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmOutputStatusRspData : IReturnData {
    AlarmOutputStatusRsp alarmOutputStatusRsp;
    NEXWIRE_JSON
};

// ---- Audio inputs ----

/// A microphone or line input.
struct NEXWIRE_API AudioInput : IReturnData {
    std::string audioInputGuid;
    std::string deviceGuid; ///< Device that it belongs to.
    std::string name;
    std::int32_t audioInputNo = 0;  ///< From 1.
    std::string codec;              ///< For example: "G.711A", "G.711U", "AAC".
    std::int32_t samplingRate = 0;  ///< Hz.
    std::int32_t volume = 0;        ///< 0 to 100 %.
    std::string relatedChannelGuid; ///< Channel whose sound it is; empty: none.
    NEXWIRE_JSON
};

struct NEXWIRE_API AudioInputData : IReturnData {
    AudioInput audioInput;
    NEXWIRE_JSON
};

struct NEXWIRE_API AudioInAndDeviceInfoRsp : IReturnData {
    AudioInput audioInput;
    DeviceResponse deviceInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API AudioInAndDeviceInfoRspData : IReturnData {
    AudioInAndDeviceInfoRsp audioInAndDeviceInfoRsp;
    NEXWIRE_JSON
};

// ---- Card readers ----

/// A card reader of an access controller.
struct NEXWIRE_API CardReaderInfo : IReturnData {
    std::string cardReaderGuid;
    std::string deviceGuid; ///< Device that it belongs to.
    std::string name;
    std::int32_t cardReaderNo = 0; ///< From 1.
    std::string doorGuid;          ///< Door that it opens.
    std::int32_t direction = 0;    ///< One of: 0 not known, 1 in, 2 out.
    std::string readerType;        ///< For example: "wiegand", "rs485", "network".
    std::int32_t onlineState = 0;  ///< One of: 0 offline, 1 online, 2 not asked yet.
    std::string serialNo;
    std::string softwareVersion;    ///< Firmware, as the reader writes it.
    std::string relatedChannelGuid; ///< Channel that shows who stands there; empty: none.
    NEXWIRE_JSON
};

struct NEXWIRE_API CardReaderInfoData : IReturnData {
    CardReaderInfo cardReaderInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API CardReaderAndDeviceInfoRsp : IReturnData {
    CardReaderInfo cardReaderInfo;
    DeviceResponse deviceInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API CardReaderAndDeviceInfoRspData : IReturnData {
    CardReaderAndDeviceInfoRsp cardReaderAndDeviceInfoRsp;
    NEXWIRE_JSON
};

/// A card reader as it is to be.
struct NEXWIRE_API CardReaderModification : IInboundData {
    std::string name;           ///< Up to 64 characters.
    std::string doorGuid;       ///< Door that it opens.
    std::int32_t direction = 0; ///< One of: 0 not known, 1 in, 2 out.
    NEXWIRE_JSON
};

// ---- Lane controllers ----

/// A lane of a barrier with its controller.
struct NEXWIRE_API LaneControllerInfo : IReturnData {
    std::string laneControllerGuid;
    std::string deviceGuid; ///< Device that it belongs to.
    std::string name;
    std::int32_t laneControllerNo = 0; ///< From 1.
    std::int32_t direction = 0;        ///< One of: 0 not known, 1 in, 2 out, 3 both.
    std::int32_t barrierState = 0;     ///< One of: 0 not known, 1 open, 2 closed, 3 moving.
    std::int32_t onlineState = 0;      ///< One of: 0 offline, 1 online, 2 not asked yet.
    std::string serialNo;
    std::string softwareVersion; ///< Firmware, as the controller writes it.
    NEXWIRE_JSON
};

struct NEXWIRE_API LaneControllerInfoData : IReturnData {
    LaneControllerInfo laneControllerInfo;
    NEXWIRE_JSON
};

// ---- Radars ----

/// A radar that watches an area.
struct NEXWIRE_API RadarAttr : IReturnData {
    std::string radarGuid;
    std::string deviceGuid; ///< Device that it belongs to.
    std::string name;
    std::int32_t radarNo = 0;                    ///< From 1.
    std::int32_t onlineState = 0;                ///< One of: 0 offline, 1 online, 2 not asked yet.
    double range = 0;                            ///< Reach in metres.
    double angle = 0;                            ///< Opening. 0 to 360 °.
    double longitude = 0;                        ///< -180 to 180 °.
    double latitude = 0;                         ///< -90 to 90 °.
    double installHeight = 0;                    ///< Metres above ground.
    double direction = 0;                        ///< Of its middle, from north clockwise. 0 to 360 °.
    std::int32_t targetNum = 0;                  ///< Most targets that it follows at a time.
    std::vector<std::string> relatedChannelList; ///< GUIDs of the channels that follow its targets.
    NEXWIRE_JSON
};

struct NEXWIRE_API RadarAttrData : IReturnData {
    RadarAttr radarAttr;
    NEXWIRE_JSON
};

// ---- Switches ----

/// A port of a network switch.
struct NEXWIRE_API SwitchPort : IReturnData {
    std::string deviceGuid;
    std::int32_t portNo = 0; ///< From 1.
    std::string name;
    std::int32_t linkState = 0;   ///< One of: 0 down, 1 up.
    std::int32_t linkSpeed = 0;   ///< Mbit/s; 0 no link.
    bool poe = false;             ///< Feeds what is plugged in.
    std::int32_t poePower = 0;    ///< Milliwatts drawn.
    std::int32_t receiveRate = 0; ///< kbit/s at the moment.
    std::int32_t sendRate = 0;    ///< kbit/s at the moment.
    std::string peerDeviceGuid;   ///< Device that is plugged in; empty: none that is known.
    NEXWIRE_JSON
};

} // namespace protocol
