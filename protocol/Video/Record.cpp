#include "protocol/Video/Record.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(RecordSegment, "recordSegment", F(beginTime), F(endTime), F(recordType))
NEXWIRE_INBOUND_FIELDS(RecordDay, "recordDay", F(weekday), F(recordSegmentList))
NEXWIRE_INBOUND_FIELDS(TemplateQueryCondition, "templateQueryCondition", F(templateName), F(templateType))
NEXWIRE_RETURN_FIELDS(TemplateResponse, F(templateGuid), F(templateName), F(templateType), F(isUsed), F(description))
NEXWIRE_RETURN_FIELDS(TemplateResponseListData, F(templateResponseList))
NEXWIRE_RETURN_FIELDS(TemplateInfo, F(templateGuid), F(templateName), F(templateType), F(recordDayList), F(description), F(modifyTime))
NEXWIRE_RETURN_FIELDS(TemplateInfoData, F(templateInfo))
NEXWIRE_INBOUND_FIELDS(ModifyTemplate, "modifyTemplate", F(operateType), F(templateGuid), F(templateName), F(templateType), F(recordDayList), F(description))
NEXWIRE_INBOUND_FIELDS(ModifyTemplates, "modifyTemplates", F(modifyTemplateList))
NEXWIRE_RETURN_FIELDS(TemplateResult, F(templateGuid), F(templateName), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(TemplateResultListData, F(templateResultList))
NEXWIRE_INBOUND_FIELDS(LocalFile, "localFile", F(channelGuid), F(fileType), F(beginTime), F(endTime))
NEXWIRE_INBOUND_FIELDS(LocalFileInfo, "localFileInfo", F(fileGuid), F(fileName), F(filePath), F(channelGuid), F(channelName), F(fileType), F(beginTime), F(endTime), F(fileSize), F(isLocked))
NEXWIRE_RETURN_FIELDS(LocalFileResult, F(total), F(localFileInfoList))
NEXWIRE_RETURN_FIELDS(LocalFileResultData, F(localFileResult))
NEXWIRE_INBOUND_FIELDS(LocalFileNotify, "localFileNotify", F(notifyType), F(localFileInfoList))
NEXWIRE_RETURN_FIELDS(FileNotifyResult, F(successNum), F(failedNum), F(fileGuidList))
NEXWIRE_RETURN_FIELDS(FileNotifyResultData, F(fileNotifyResult))
NEXWIRE_INBOUND_FIELDS(LocalFileQuery, "localFileQuery", F(channelGuidList), F(fileType), F(fileName), F(beginTime), F(endTime), F(pageNo), F(pageSize))
NEXWIRE_RETURN_FIELDS(LocalFileQueryResult, F(total), F(pageNo), F(localFileInfoList))
NEXWIRE_RETURN_FIELDS(LocalFileQueryResultData, F(localFileQueryResult))
NEXWIRE_RETURN_FIELDS(VideoSystemConfigData, F(picturePath), F(recordPath), F(pictureFormat), F(snapshotNum), F(packTime), F(prePlayTime), F(decodeMode), F(streamType), F(overwrite))
NEXWIRE_RETURN_FIELDS(VideoSystemConfigDataData, F(videoSystemConfigData))
NEXWIRE_INBOUND_FIELDS(PicStorage, "picStorage", F(picUrl), F(storageServerGuid), F(width), F(height))
NEXWIRE_INBOUND_FIELDS(BroadCastNotify, "broadCastNotify", F(broadCastType), F(content), F(userGuidList), F(channelGuidList), F(volume))
NEXWIRE_RETURN_FIELDS(BroadCastResult, F(broadCastGuid), F(successNum), F(failedNum), F(failedGuidList))
NEXWIRE_RETURN_FIELDS(BroadCastResultData, F(broadCastResult))
// clang-format on

} // namespace protocol
