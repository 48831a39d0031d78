#include "protocol/Storage/Storage.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(FilePathMapUrl, "filePathMapUrl", F(storageServerGuid), F(filePathList), F(validMinutes))
NEXWIRE_RETURN_FIELDS(FileUrl, F(filePath), F(url), F(expireTime), F(fileSize))
NEXWIRE_RETURN_FIELDS(FilePathMapUrlResult, F(fileUrlList))
NEXWIRE_INBOUND_FIELDS(DeletefilePathMapUrl, "deletefilePathMapUrl", F(urlList))
NEXWIRE_RETURN_FIELDS(StorageDisk, F(diskName), F(totalSpace), F(freeSpace), F(diskState), F(diskUse))
NEXWIRE_RETURN_FIELDS(StorageServerInfo, F(storageServerGuid), F(storageServerName), F(address), F(httpPort), F(httpsPort), F(serverStatus), F(storageDiskList))
// clang-format on

} // namespace protocol
