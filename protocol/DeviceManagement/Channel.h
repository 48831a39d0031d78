#pragma once

#include "protocol/DeviceManagement/Device.h"

// Video channels of devices with their streams and presets. Channels are numbered from 1 on their device.

namespace protocol {

/// One of the streams that a channel sends.
struct NEXWIRE_API ChannelStream : IReturnData {
    std::int32_t streamType = 0; ///< One of: 0 main, 1 sub, 2 third.
    std::string codec;           ///< For example: "H.264", "H.265", "MJPEG".
    std::string resolution;      ///< For example: "1920x1080".
    std::int32_t frameRate = 0;  ///< Pictures a second.
    std::int32_t bitRate = 0;    ///< kbit/s; the most where it varies.
    bool audio = false;          ///< Carries sound.
    std::string url;             ///< Where the stream is taken.
    NEXWIRE_JSON
};

/// What the platform adds to a channel.
struct NEXWIRE_API ChannelExtra : IInboundData {
    std::string longDeviceGuid;  ///< The device's identifier in full, where the path cannot carry it.
    std::string name;            ///< Up to 64 characters.
    std::string relatedServer;   ///< GUID of the stream media server that hands its streams out; empty: the device.
    std::int32_t streamType = 0; ///< Stream for live pictures. One of: 0 main, 1 sub, 2 third.
    std::int32_t transport = 0;  ///< How the stream is taken. One of: 0 TCP, 1 UDP, 2 multicast.
    std::string storageServer;   ///< GUID of the server that records it; empty: none.
    std::string remark;          ///< Up to 256 characters.
    NEXWIRE_JSON
};

/// A channel as the platform keeps it.
struct NEXWIRE_API ChannelInfo : IReturnData {
    std::string channelGuid;
    std::string deviceGuid;       ///< Device that it belongs to.
    std::int32_t channelNo = 0;   ///< From 1.
    std::int32_t channelType = 0; ///< One of: 0 analogue, 1 network camera, 2 virtual.
    std::string cameraType;       ///< For example: "box", "dome", "speedDome", "fisheye", "thermal".
    std::int32_t onlineState = 0; ///< One of: 0 offline, 1 online, 2 not asked yet.
    std::int32_t recordState = 0; ///< One of: 0 not recording, 1 recording, 2 failed.
    bool ptz = false;             ///< Can be moved and zoomed; has presets.
    bool talk = false;            ///< Two-way sound.
    std::string address;          ///< Of a network camera behind a recorder; empty otherwise.
    ChannelExtra channelExtra;
    std::vector<ChannelStream> channelStreamList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ChannelInfoData : IReturnData {
    ChannelInfo channelInfo;
    NEXWIRE_JSON
};

/// What is wanted of a channel, and from where.
struct NEXWIRE_API ChannelQueryReq : IInboundData {
    bool refresh = false;             ///< Ask the device again instead of answering from memory.
    std::vector<std::string> keyList; ///< Keys wanted; empty: all.
    NEXWIRE_JSON
};

struct NEXWIRE_API ChannelAndDeviceInfoRsp : IReturnData {
    ChannelInfo channelInfo;
    DeviceResponse deviceInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API ChannelAndDeviceInfoRspData : IReturnData {
    ChannelAndDeviceInfoRsp channelAndDeviceInfoRsp;
    NEXWIRE_JSON
};

/// Which channels of a device are asked for.
struct NEXWIRE_API ChannelParamReq : IInboundData {
    std::vector<std::int32_t> channelNoList; ///< Numbers, from 1; empty: all.
    std::int32_t channelType = -1;           ///< One of: -1 any, 0 analogue, 1 network camera, 2 virtual.
    std::int32_t onlineState = -1;           ///< One of: -1 any, 0 offline, 1 online, 2 not asked yet.
    NEXWIRE_JSON
};

/// Channels of one device.
struct NEXWIRE_API ChannelsAndDeviceInfoRsp : IReturnData {
    std::vector<ChannelInfo> channelInfoList;
    DeviceResponse deviceInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API ChannelsAndDeviceInfoRspData : IReturnData {
    ChannelsAndDeviceInfoRsp channelsAndDeviceInfoRsp;
    NEXWIRE_JSON
};

/// A position that a camera goes back to.
struct NEXWIRE_API PresetInfo : IInboundData {
    std::string longDeviceGuid;  ///< The device's identifier in full, where the path cannot carry it.
    std::string presetGuid;      ///< Empty in a new one.
    std::int32_t presetNo = 0;   ///< Number on the camera. 1 to 300; 0: the next that is free.
    std::string name;            ///< Up to 32 characters.
    std::int32_t cloudP2PNo = 0; ///< Number in the peer-to-peer cloud; 0 none.
    NEXWIRE_JSON
};

struct NEXWIRE_API PresetInfoListData : IReturnData {
    std::vector<PresetInfo> presetInfoList;
    NEXWIRE_JSON
};

} // namespace protocol
