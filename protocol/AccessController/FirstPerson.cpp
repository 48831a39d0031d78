#include "protocol/AccessController/FirstPerson.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(FirstPersonParam, "firstPersonParam", F(deviceGuid), F(doorGuid), F(doorNo), F(personnelGuid), F(personnelNo), F(personnelName))
NEXWIRE_INBOUND_FIELDS(FirstPersonAddParam, "firstPersonAddParam", F(firstPersonParamList))
NEXWIRE_RETURN_FIELDS(FirstPersonAddReturn, F(guid), F(doorGuid), F(personnelGuid), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(FirstPersonAddReturnListData, F(firstPersonAddReturnList))
NEXWIRE_INBOUND_FIELDS(FirstPersonRemoveList, "firstPersonRemoveList", F(guidList))
NEXWIRE_RETURN_FIELDS(FirstPersonRemoveResultListData, F(firstPersonRemoveResultList))
NEXWIRE_INBOUND_FIELDS(FirstPersonQueryCondition, "firstPersonQueryCondition", F(downStatus), F(personnelName), F(personnelNo))
NEXWIRE_INBOUND_FIELDS(FirstPersonCondition, "firstPersonCondition", F(isQuery), F(firstPersonFilterCondition))
NEXWIRE_RETURN_FIELDS(FirstPersonInfo, F(guid), F(deviceGuid), F(doorGuid), F(doorNo), F(personnelGuid), F(personnelNo), F(personnelName), F(downStatus), F(errorCode), F(errorMsg))
NEXWIRE_RETURN_FIELDS(FirstPersonQueryResultRsp, F(doorGuid), F(firstPersonInfoList))
NEXWIRE_RETURN_FIELDS(FirstPersonQueryResultRspData, F(firstPersonQueryResultRsp))
// clang-format on

} // namespace protocol
