#include "protocol/DeviceManagement/Channel.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_RETURN_FIELDS(ChannelStream, F(streamType), F(codec), F(resolution), F(frameRate), F(bitRate), F(audio), F(url))
NEXWIRE_INBOUND_FIELDS(ChannelExtra, "channelExtra", F(longDeviceGuid), F(name), F(relatedServer), F(streamType), F(transport), F(storageServer), F(remark))
NEXWIRE_RETURN_FIELDS(ChannelInfo, F(channelGuid), F(deviceGuid), F(channelNo), F(channelType), F(cameraType), F(onlineState), F(recordState), F(ptz), F(talk), F(address), F(channelExtra), F(channelStreamList))
NEXWIRE_RETURN_FIELDS(ChannelInfoData, F(channelInfo))
NEXWIRE_INBOUND_FIELDS(ChannelQueryReq, "channelQueryReq", F(refresh), F(keyList))
NEXWIRE_RETURN_FIELDS(ChannelAndDeviceInfoRsp, F(channelInfo), F(deviceInfo))
NEXWIRE_RETURN_FIELDS(ChannelAndDeviceInfoRspData, F(channelAndDeviceInfoRsp))
NEXWIRE_INBOUND_FIELDS(ChannelParamReq, "channelParamReq", F(channelNoList), F(channelType), F(onlineState))
NEXWIRE_RETURN_FIELDS(ChannelsAndDeviceInfoRsp, F(channelInfoList), F(deviceInfo))
NEXWIRE_RETURN_FIELDS(ChannelsAndDeviceInfoRspData, F(channelsAndDeviceInfoRsp))
NEXWIRE_INBOUND_FIELDS(PresetInfo, "presetInfo", F(longDeviceGuid), F(presetGuid), F(presetNo), F(name), F(cloudP2PNo))
NEXWIRE_RETURN_FIELDS(PresetInfoListData, F(presetInfoList))
// clang-format on

} // namespace protocol
