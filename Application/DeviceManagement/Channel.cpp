#include "nexwire/DeviceManagement/Channel.h"

#include "Application/DeviceManagement/ByNumber.h"
#include "Application/DeviceManagement/DeviceGuid.h"
#include "core/Log.h"

namespace nexwire {
namespace {

using protocol::ChannelExtra;
using protocol::PresetInfo;

/// A request about a channel or its presets: what it sends of a structure, and the device's identifier in full where
/// the path cannot carry it.
template <class Structure>
struct ChannelBody : Structure {
    template <class... Members>
    explicit ChannelBody(const Structure& structure, const std::string& deviceGuid, Members Structure::*... members)
        : Structure(structure)
    {
        std::vector<const void*> sent{&(this->*members)...};
        if (guid::IsLong(deviceGuid)) {
            this->longDeviceGuid = deviceGuid;
            sent.push_back(&this->longDeviceGuid);
        }
        core::SendOnly(*this, static_cast<Structure*>(this), sent);
    }
};

template <class... Piece>
Path ChannelPath(const std::string& serial, const std::string& channelGuid, const Piece&... piece)
{
    return DevicePath(Route::External, serial, "/channels/", channelGuid, piece...);
}

/// Changes one member of a preset.
template <class Member>
bool UpdatePreset(const char* function, const char* request, const std::string& deviceGuid,
                  const std::string& channelGuid, const std::string& presetGuid, Member PresetInfo::*member,
                  const Member& value)
{
    return core::Guard([&] {
        PresetInfo preset;
        preset.*member = value;
        const ChannelBody<PresetInfo> body(preset, deviceGuid, member);
        const std::string serial = guid::SupplyForChannel(function, request, deviceGuid);
        return Exchange(Write(ChannelPath(serial, channelGuid, "/presets/", presetGuid), body));
    });
}

} // namespace

bool CGetChannelInfoComm::request(protocol::ChannelInfoData& result, const std::string& deviceGuid,
                                  const std::string& channelGuid)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        const ChannelBody<ChannelExtra> body(ChannelExtra(), deviceGuid);
        const std::string serial = guid::SupplyForChannel(function, "CGetChannelInfoComm", deviceGuid);
        return Exchange(Query(ChannelPath(serial, channelGuid), body), result);
    });
}

bool CInteralGetChannelInfoComm::request(protocol::ChannelInfoData& result, const std::string& deviceGuid,
                                         const std::string& channelGuid)
{
    return Exchange(Query(DevicePath(Route::Internal, deviceGuid, "/channels/", channelGuid)), result);
}

bool CSetChannelInfoComm::request(const protocol::ChannelExtra& extra, const std::string& deviceGuid,
                                  const std::string& channelGuid)
{
    return Exchange(Write(ChannelPath(deviceGuid, channelGuid), extra));
}

bool CChannelRequestComm::setRelatedServers(const std::string& deviceGuid, const std::string& channelGuid,
                                            const std::string& relatedServer)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        ChannelExtra extra;
        extra.relatedServer = relatedServer;
        const ChannelBody<ChannelExtra> body(extra, deviceGuid, &ChannelExtra::relatedServer);
        const std::string serial = guid::SupplyForChannel(function, "setRelatedServers", deviceGuid);
        return Exchange(Write(ChannelPath(serial, channelGuid), body));
    });
}

bool CGetChannelAndDevComm::request(protocol::ChannelAndDeviceInfoRspData& result,
                                    const protocol::ChannelQueryReq& query, const std::string& deviceGuid,
                                    unsigned int channelNo)
{
    return QueryByNumber(result, deviceGuid, "/channels/", channelNo, query);
}

bool CGetChannelsAndDevComm::request(protocol::ChannelsAndDeviceInfoRspData& result,
                                     const protocol::ChannelParamReq& query, const std::string& deviceGuid)
{
    return Exchange(Query(DevicePath(Route::Internal, deviceGuid, "/channels"), query), result);
}

bool CChannelCaptureComm::request(std::string& picture, const std::string& deviceGuid, const std::string& channelGuid)
{
    return ExchangeForBytes(Query(DevicePath(Route::Internal, deviceGuid, "/channels/", channelGuid, "/captures")),
                            picture);
}

bool CChannelPresetComm::getAllPresetInfo(protocol::PresetInfoListData& result, const std::string& deviceGuid,
                                          const std::string& channelGuid)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        const ChannelBody<PresetInfo> body(PresetInfo(), deviceGuid);
        const std::string serial = guid::SupplyForChannel(function, "getAllPresetInfo", deviceGuid);
        return Exchange(Query(ChannelPath(serial, channelGuid, "/presets"), body), result);
    });
}

bool CChannelPresetComm::savePreset(std::string& presetGuid, protocol::PresetInfo& preset,
                                    const std::string& deviceGuid, const std::string& channelGuid)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        const ChannelBody<PresetInfo> body(preset, deviceGuid, &PresetInfo::presetGuid, &PresetInfo::presetNo,
                                           &PresetInfo::name, &PresetInfo::cloudP2PNo);
        const std::string serial = guid::SupplyForChannel(function, "savePreset", deviceGuid);
        PresetInfo saved = preset;
        if (!ExchangeBothWays(Write(ChannelPath(serial, channelGuid, "/presets"), body), saved)) {
            return false;
        }
        std::string savedGuid = saved.presetGuid;
        preset = std::move(saved);
        presetGuid = std::move(savedGuid);
        return true;
    });
}

bool CChannelPresetComm::deletePreset(const std::string& deviceGuid, const std::string& channelGuid,
                                      const std::string& presetGuid)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        PresetInfo preset;
        preset.presetGuid = presetGuid;
        const ChannelBody<PresetInfo> body(preset, deviceGuid, &PresetInfo::presetGuid);
        const std::string serial = guid::SupplyForChannel(function, "deletePreset", deviceGuid);
        return Exchange(Remove(ChannelPath(serial, channelGuid, "/presets"), body));
    });
}

bool CChannelPresetComm::updatePresetName(const std::string& deviceGuid, const std::string& channelGuid,
                                          const std::string& presetGuid, const std::string& name)
{
    return UpdatePreset(NEXWIRE_FUNCTION, "updatePresetName", deviceGuid, channelGuid, presetGuid, &PresetInfo::name,
                        name);
}

bool CChannelPresetComm::updateCloudP2PPresetNo(int cloudP2PNo, const std::string& deviceGuid,
                                                const std::string& channelGuid, const std::string& presetGuid)
{
    return UpdatePreset(NEXWIRE_FUNCTION, "updateCloudP2PPresetNo", deviceGuid, channelGuid, presetGuid,
                        &PresetInfo::cloudP2PNo, static_cast<std::int32_t>(cloudP2PNo));
}

bool CChannelSdkPassThroughComm::request(protocol::NetsdkPassThroughRspData& result, const std::string& deviceGuid,
                                         protocol::NetsdkPassThroughReq& command)
{
    return NetsdkExchange(deviceGuid, command, result);
}

bool CKestrelPassThroughComm::request(protocol::KestrelPassThroughRspData& result,
                                      const protocol::KestrelPassThroughReq& query, const std::string& deviceGuid)
{
    return KestrelExchange(Route::External, deviceGuid, query, result);
}

bool CInterKestrelPassThroughComm::request(protocol::KestrelPassThroughRspData& result,
                                           const protocol::KestrelPassThroughReq& query, const std::string& deviceGuid)
{
    return KestrelExchange(Route::Internal, deviceGuid, query, result);
}

} // namespace nexwire
