#include "protocol/InformationRelease/Marquee.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(MatrialResource, "matrialResource", F(name), F(materialType), F(fileName), F(fileData), F(content), F(duration), F(remark))
NEXWIRE_RETURN_FIELDS(MatrialResourceAdded, F(materialGuid))
NEXWIRE_INBOUND_FIELDS(MatrialResourceQueryCondition, "matrialResourceQueryCondition", F(name), F(materialType), F(withData), F(pageNo), F(pageSize))
NEXWIRE_RETURN_FIELDS(MatrialResourceInfo, F(materialGuid), F(name), F(materialType), F(fileName), F(fileData), F(content), F(duration), F(fileSize), F(remark), F(modifyTime))
NEXWIRE_RETURN_FIELDS(MatrialResourceRespone, F(total), F(pageNo), F(pageSize), F(matrialResourceList))
NEXWIRE_INBOUND_FIELDS(PublishItem, "publishItem", F(materialGuid), F(duration), F(region))
NEXWIRE_INBOUND_FIELDS(CachePublishData, "cachePublishData", F(name), F(publishMode), F(beginTime), F(endTime), F(deviceGuidList), F(terminalGuidList), F(itemList))
NEXWIRE_RETURN_FIELDS(CachePublishDataResult, F(publishGuid), F(totalSize), F(resultList))
NEXWIRE_RETURN_FIELDS(TerminalProgress, F(terminalGuid), F(terminalName), F(progress), F(state), F(errorCode))
NEXWIRE_RETURN_FIELDS(PublicReleaseProgress, F(progress), F(state), F(terminalProgressList))
NEXWIRE_INBOUND_FIELDS(TerminalUpgrade, "terminalUpgrade", F(packageGuid), F(packageType), F(version), F(terminalGuidList), F(force))
NEXWIRE_RETURN_FIELDS(TerminalUpgradeProgress, F(progress), F(state), F(terminalProgressList))
NEXWIRE_INBOUND_FIELDS(TerminalScreenShot, "terminalScreenShot", F(terminalGuid), F(pictureFormat), F(width), F(height))
NEXWIRE_RETURN_FIELDS(TerminalScreenShotReply, F(screenShot))
NEXWIRE_INBOUND_FIELDS(PortConfig, "portConfig", F(httpPort), F(httpsPort), F(streamPort), F(alarmPort), F(registerPort), F(pictureStoragePort))
NEXWIRE_INBOUND_FIELDS(GeneralCorvidKey, "generalCorvidKey", F(corvidKey), F(enable))
NEXWIRE_RETURN_FIELDS(ModifyGeneralCorvidKeyResult, F(status), F(resultList))
// clang-format on

} // namespace protocol
