#include "protocol/Alarm/AlarmLog.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(AlarmLogCondition, "alarmLogCondition", F(beginTime), F(endTime), F(alarmTypeList), F(alarmLevelList), F(deviceGuidList), F(sourceGuidList), F(processStateList), F(processUser), F(keyword), F(withPicture), F(orderBy), F(descending), F(pageNo), F(pageSize))
NEXWIRE_RETURN_FIELDS(AlarmLog, F(alarmLogGuid), F(alarmType), F(alarmLevel), F(alarmTime), F(endTime), F(deviceGuid), F(deviceName), F(sourceGuid), F(sourceName), F(sourceType), F(description), F(processState), F(processUser), F(processTime), F(pictureNum))
NEXWIRE_RETURN_FIELDS(AlarmLogResponseData, F(total), F(alarmLogList))
NEXWIRE_RETURN_FIELDS(AlarmLogResponseDataData, F(alarmLogResponseData))
NEXWIRE_INBOUND_FIELDS(AlarmLogDetailQueryCondition, "alarmLogDetailQueryCondition", F(alarmLogGuid), F(needPicture), F(needProcessing))
NEXWIRE_RETURN_FIELDS(AlarmLogPicture, F(pictureGuid), F(channelGuid), F(captureTime), F(storageGuid), F(picUrl), F(pictureSize))
NEXWIRE_RETURN_FIELDS(AlarmProcessing, F(processUser), F(processTime), F(processState), F(comment))
NEXWIRE_RETURN_FIELDS(AlarmLogDetails, F(alarmLog), F(alarmLogPictureList), F(alarmProcessingList), F(personGuid), F(cardNo), F(rawEvent))
NEXWIRE_RETURN_FIELDS(AlarmLogDetailsData, F(alarmLogDetails))
NEXWIRE_INBOUND_FIELDS(ProcessingAlarmData, "processingAlarmData", F(alarmLogGuidList), F(processState), F(processUser), F(comment))
NEXWIRE_INBOUND_FIELDS(AlarmPicStorageConfigQuery, "alarmPicStorageConfigQuery", F(storageType))
NEXWIRE_INBOUND_FIELDS(AlarmPicStorageConfig, "alarmPicStorageConfig", F(storageType), F(filePath), F(storageGuid), F(keepDays), F(capacity), F(overwrite))
NEXWIRE_INBOUND_FIELDS(PicStorageSource, "picStorageSource", F(storageGuid), F(picUrl), F(thumbnail))
NEXWIRE_INBOUND_FIELDS(AlarmPicQuery, "alarmPicQuery", F(pictureGuid))
// clang-format on

} // namespace protocol
