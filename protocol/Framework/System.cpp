#include "protocol/Framework/System.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_RETURN_FIELDS(ConfigFilePath, F(path), F(modifyTime))
NEXWIRE_RETURN_FIELDS(ConfigFilePathData, F(configFilePath))
NEXWIRE_RETURN_FIELDS(FilePath, F(picturePath), F(recordPath), F(exportPath), F(logPath), F(freeSpace))
NEXWIRE_RETURN_FIELDS(FilePathData, F(filePath))
NEXWIRE_RETURN_FIELDS(CloudP2PRegion, F(region), F(serverAddress), F(serverPort))
NEXWIRE_RETURN_FIELDS(CloudP2PRegionData, F(cloudP2PRegion))
NEXWIRE_RETURN_FIELDS(SystemServerConfig, F(systemName), F(language), F(timeZone), F(logKeepDays), F(alarmKeepDays), F(timeSync), F(timeSyncInterval), F(autoLogin), F(autoBackup))
NEXWIRE_RETURN_FIELDS(SystemServerConfigData, F(systemServerConfig))
NEXWIRE_INBOUND_FIELDS(SystemConfigAdd, "systemConfigAdd", F(systemName), F(language), F(timeZone), F(logKeepDays), F(alarmKeepDays), F(timeSync), F(timeSyncInterval), F(autoLogin), F(autoBackup))
NEXWIRE_RETURN_FIELDS(DateTimeFormat, F(dateFormat), F(timeFormat), F(firstDay))
NEXWIRE_RETURN_FIELDS(DateTimeFormatData, F(dateTimeFormat))
NEXWIRE_RETURN_FIELDS(EnableGDPR, F(enable), F(modifyTime))
NEXWIRE_RETURN_FIELDS(EnableGDPRData, F(enableGDPR))
NEXWIRE_RETURN_FIELDS(ExportPersonInforCfg, F(enable), F(withPictures), F(isEncrypted))
NEXWIRE_RETURN_FIELDS(ExportPersonInforCfgData, F(exportPersonInforCfg))
// clang-format on

} // namespace protocol
