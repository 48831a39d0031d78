#include "protocol/DeviceManagement/DeviceTask.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_RETURN_FIELDS(RulePoint, F(x), F(y))
NEXWIRE_RETURN_FIELDS(TaskRuleInfo, F(ruleGuid), F(name), F(ruleNo), F(ruleType), F(enable), F(sensitivity), F(duration), F(pointList))
NEXWIRE_RETURN_FIELDS(TaskRuleInfoData, F(taskRuleInfo))
NEXWIRE_RETURN_FIELDS(TaskInfo, F(taskGuid), F(deviceGuid), F(name), F(taskType), F(state), F(progress), F(relatedServer), F(relateChannelNo), F(beginTime), F(endTime), F(taskRuleInfoList))
NEXWIRE_RETURN_FIELDS(TaskInfoData, F(taskInfo))
NEXWIRE_INBOUND_FIELDS(TaskQueryReq, "taskQueryReq", F(refresh), F(needRules))
NEXWIRE_RETURN_FIELDS(TaskAndDeviceInfoRsp, F(taskInfo), F(deviceInfo))
NEXWIRE_RETURN_FIELDS(TaskAndDeviceInfoRspData, F(taskAndDeviceInfoRsp))
NEXWIRE_INBOUND_FIELDS(TaskModification, "taskModification", F(relatedServer), F(relateChannelNo))
NEXWIRE_INBOUND_FIELDS(DeviceUpgradeConfig, "deviceUpgradeConfig", F(autoUpgrade), F(beginTime), F(endTime), F(concurrentNum))
NEXWIRE_RETURN_FIELDS(DeviceUpgradeConfigData, F(deviceUpgradeConfig))
NEXWIRE_INBOUND_FIELDS(AppTask, "appTask", F(taskGuid), F(appName), F(appVersion), F(filePath), F(fileSize), F(deviceGuidList), F(progress))
NEXWIRE_RETURN_FIELDS(AppInfo, F(appId), F(appName), F(appVersion), F(state), F(memoryUsage), F(installTime), F(licenceEndTime))
NEXWIRE_RETURN_FIELDS(AppList, F(appInfoList))
NEXWIRE_INBOUND_FIELDS(AppManage, "appManage", F(appId), F(action), F(state))
NEXWIRE_INBOUND_FIELDS(SynchronousReq, "synchronousReq", F(deviceGuidList), F(syncType), F(force))
NEXWIRE_INBOUND_FIELDS(SmsAddInfo, "smsAddInfo", F(name), F(address), F(port), F(streamPort), F(username), F(password), F(maxStreamNum))
NEXWIRE_RETURN_FIELDS(SmsResult, F(smsGuid), F(address), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(SmsResultListData, F(smsResultList))
NEXWIRE_RETURN_FIELDS(SmsResponse, F(smsGuid), F(name), F(address), F(port), F(streamPort), F(username), F(maxStreamNum), F(streamNum), F(onlineState), F(softwareVersion))
NEXWIRE_RETURN_FIELDS(SmsResponseData, F(smsResponse))
NEXWIRE_RETURN_FIELDS(SmsResponseListData, F(smsResponseList))
NEXWIRE_INBOUND_FIELDS(SmsGuidList, "smsGuidList", F(smsGuidList))
NEXWIRE_INBOUND_FIELDS(SmsModificationReq, "smsModificationReq", F(name), F(address), F(port), F(streamPort), F(username), F(password), F(maxStreamNum))
// clang-format on

} // namespace protocol
