#include "protocol/InformationRelease/ReleaseDevice.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(FileUpload, "fileUpload", F(fileName), F(fileType), F(localFilePath), F(fileSize), F(md5), F(overwrite))
NEXWIRE_INBOUND_FIELDS(FileDownload, "fileDownload", F(fileName), F(fileType), F(localFilePath))
NEXWIRE_INBOUND_FIELDS(DeviceUpgradeCon, "deviceUpgradeCon", F(packagePath), F(packageType), F(version), F(keepConfig), F(reboot))
NEXWIRE_INBOUND_FIELDS(BatchProgressValue, "batchProgressValue", F(progress), F(state), F(errorCode), F(detail))
NEXWIRE_INBOUND_FIELDS(BatchProgressValueData, "batchProgressValueData", F(batchProgressValue))
NEXWIRE_INBOUND_FIELDS(DeviceLogQueryCondition, "deviceLogQueryCondition", F(beginTime), F(endTime), F(majorType), F(minorType), F(userName), F(maxResults))
NEXWIRE_INBOUND_FIELDS(DeviceLogQueryResult, "deviceLogQueryResult", F(logTime), F(majorType), F(minorType), F(userName), F(remoteAddress), F(objectName), F(description))
NEXWIRE_INBOUND_FIELDS(RemoteConnectParam, "remoteConnectParam", F(terminalGuid), F(address), F(port), F(duration))
// clang-format on

} // namespace protocol
