#include "protocol/Log/Log.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(LogCodition, "logCodition", F(beginTime), F(endTime), F(userNameList), F(logTypeList), F(moduleList), F(logResult), F(keyword), F(ascending), F(pageNo), F(pageSize))
NEXWIRE_INBOUND_FIELDS(Log, "log", F(logTime), F(userName), F(clientAddress), F(logType), F(moduleName), F(operation), F(resourceGuid), F(resourceName), F(logResult), F(content))
NEXWIRE_RETURN_FIELDS(LogInfo, F(logGuid), F(logTime), F(userName), F(clientAddress), F(logType), F(moduleName), F(operation), F(resourceGuid), F(resourceName), F(logResult), F(content))
NEXWIRE_RETURN_FIELDS(LogFilterConditionSupported, F(total), F(pageNo), F(logInfoList), F(userNameList), F(logTypeList), F(moduleList), F(earliestTime), F(latestTime), F(backupPath))
NEXWIRE_RETURN_FIELDS(LogFilterConditionSupportedData, F(logFilterConditionSupported))
// clang-format on

} // namespace protocol
