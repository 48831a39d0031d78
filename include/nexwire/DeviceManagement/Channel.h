#pragma once

#include "protocol/DeviceManagement/Channel.h"
#include "protocol/PassThrough/PassThrough.h"

// Channels with their presets, and texts for devices.
//
// All functions block until the answer is there and may be called from any thread. They return true when the answer
// was a readable envelope, whatever its code; a result is untouched on false. Where a function says that it brings the
// device's identifier to length, the path carries 32 characters of it (see Device.h), and the body carries it in full
// as "longDeviceGuid" when it is longer.

namespace nexwire {

/// One channel.
class NEXWIRE_API CGetChannelInfoComm {
public:
    /// Brings the device's identifier to length.
    static bool request(protocol::ChannelInfoData& result, const std::string& deviceGuid,
                        const std::string& channelGuid);
};

/// One channel over the route of the platform's own components; spelled so.
class NEXWIRE_API CInteralGetChannelInfoComm {
public:
    static bool request(protocol::ChannelInfoData& result, const std::string& deviceGuid,
                        const std::string& channelGuid);
};

/// Changes what the platform adds to a channel.
class NEXWIRE_API CSetChannelInfoComm {
public:
    static bool request(const protocol::ChannelExtra& extra, const std::string& deviceGuid,
                        const std::string& channelGuid);
};

/// Single settings of a channel.
class NEXWIRE_API CChannelRequestComm {
public:
    /// Sets which stream media server hands the channel's streams out, and nothing else. Brings the device's
    /// identifier to length.
    static bool setRelatedServers(const std::string& deviceGuid, const std::string& channelGuid,
                                  const std::string& relatedServer);
};

/// A channel by its number, together with its device, over the route of the platform's own components.
class NEXWIRE_API CGetChannelAndDevComm {
public:
    static bool request(protocol::ChannelAndDeviceInfoRspData& result, const protocol::ChannelQueryReq& query,
                        const std::string& deviceGuid, unsigned int channelNo);
};

/// Channels of a device, together with it, over the route of the platform's own components.
class NEXWIRE_API CGetChannelsAndDevComm {
public:
    static bool request(protocol::ChannelsAndDeviceInfoRspData& result, const protocol::ChannelParamReq& query,
                        const std::string& deviceGuid);
};

/// A snapshot of a channel.
class NEXWIRE_API CChannelCaptureComm {
public:
    /// True when an answer came, whatever it says.
    ///
    /// @param picture  the answer, byte for byte.
    static bool request(std::string& picture, const std::string& deviceGuid, const std::string& channelGuid);
};

/// Presets of a channel. All bring the device's identifier to length.
class NEXWIRE_API CChannelPresetComm {
public:
    static bool getAllPresetInfo(protocol::PresetInfoListData& result, const std::string& deviceGuid,
                                 const std::string& channelGuid);
    /// Saves where the camera looks now.
    ///
    /// @param presetGuid  receives the preset's identifier.
    /// @param preset      what to save, without its longDeviceGuid; on success the preset as the platform keeps it.
    static bool savePreset(std::string& presetGuid, protocol::PresetInfo& preset, const std::string& deviceGuid,
                           const std::string& channelGuid);
    static bool deletePreset(const std::string& deviceGuid, const std::string& channelGuid,
                             const std::string& presetGuid);
    /// Sends the name and nothing else.
    static bool updatePresetName(const std::string& deviceGuid, const std::string& channelGuid,
                                 const std::string& presetGuid, const std::string& name);
    /// Sends the number in the peer-to-peer cloud and nothing else.
    static bool updateCloudP2PPresetNo(int cloudP2PNo, const std::string& deviceGuid, const std::string& channelGuid,
                                       const std::string& presetGuid);
};

/// Commands for a device's own programming interface; neither read nor changed on the way.
class NEXWIRE_API CChannelSdkPassThroughComm {
public:
    /// @param command  sent as it is, and not changed.
    static bool request(protocol::NetsdkPassThroughRspData& result, const std::string& deviceGuid,
                        protocol::NetsdkPassThroughReq& command);
};

/// Requests for a device's HTTP interface; neither read nor changed on the way.
class NEXWIRE_API CKestrelPassThroughComm {
public:
    static bool request(protocol::KestrelPassThroughRspData& result, const protocol::KestrelPassThroughReq& query,
                        const std::string& deviceGuid);
};

/// The same over the route of the platform's own components.
class NEXWIRE_API CInterKestrelPassThroughComm {
public:
    static bool request(protocol::KestrelPassThroughRspData& result, const protocol::KestrelPassThroughReq& query,
                        const std::string& deviceGuid);
};

} // namespace nexwire
