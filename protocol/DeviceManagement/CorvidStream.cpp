#include "protocol/DeviceManagement/CorvidStream.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_RETURN_FIELDS(CorvidSMSPort, F(address), F(port), F(tlsPort))
NEXWIRE_INBOUND_FIELDS(CorvidPreview, "corvidPreview", F(channelNo), F(streamType), F(transport), F(serverAddress), F(serverPort))
NEXWIRE_INBOUND_FIELDS(CorvidVoice, "corvidVoice", F(audioNo), F(codec), F(transport), F(serverAddress), F(serverPort))
NEXWIRE_RETURN_FIELDS(SessionID, F(sessionID))
NEXWIRE_RETURN_FIELDS(SessionIDData, F(sessionID))
NEXWIRE_INBOUND_FIELDS(PushStream, "pushStream", F(sessionID), F(channelNo), F(streamKind))
NEXWIRE_INBOUND_FIELDS(CorvidFindRecFileParam, "corvidFindRecFileParam", F(channelNo), F(recordType), F(beginTime), F(endTime), F(position), F(maxResults))
NEXWIRE_RETURN_FIELDS(CorvidRecFile, F(fileName), F(channelNo), F(recordType), F(beginTime), F(endTime), F(fileSize), F(locked))
NEXWIRE_RETURN_FIELDS(CorvidRecFindResult, F(total), F(isFinish), F(corvidRecFileList))
NEXWIRE_INBOUND_FIELDS(CorvidPlayBackParam, "corvidPlayBackParam", F(channelNo), F(fileName), F(beginTime), F(endTime), F(streamType), F(serverAddress), F(serverPort))
NEXWIRE_INBOUND_FIELDS(CorvidPlayBackOperateParam, "corvidPlayBackOperateParam", F(sessionID), F(operate), F(speed), F(seekTime))
NEXWIRE_INBOUND_FIELDS(CMSearchProfile, "cmSearchProfile", F(maxResults), F(maxTimeSpan), F(channelNoList), F(recordTypeList), F(pictureTypeList))
NEXWIRE_INBOUND_FIELDS(SearchRecPicFileParam, "searchRecPicFileParam", F(searchID), F(searchKind), F(channelNoList), F(typeList), F(beginTime), F(endTime), F(position), F(maxResults))
NEXWIRE_INBOUND_FIELDS(CMSearchItem, "cmSearchItem", F(fileName), F(channelNo), F(type), F(beginTime), F(endTime), F(fileSize), F(uri))
NEXWIRE_INBOUND_FIELDS(CMSearchResult, "cmSearchResult", F(searchID), F(responseStatus), F(total), F(searchItemList))
NEXWIRE_INBOUND_FIELDS(ChanStatus, "chanStatus", F(channelNo), F(name), F(onlineState), F(recordState), F(videoLoss), F(address))
NEXWIRE_INBOUND_FIELDS(ChanStatusList, "chanStatusList", F(chanStatusList))
// clang-format on

} // namespace protocol
