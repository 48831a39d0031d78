#include "protocol/AccessController/VerifyMode.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(PersonnelVerifyModeSet, "personnelVerifyModeSet", F(personnelGuid), F(personnelNo), F(personnelName), F(userVerifyMode))
NEXWIRE_INBOUND_FIELDS(SetVerifyModeReq, "setVerifyModeReq", F(operateType), F(personnelVerifyModeSetList))
NEXWIRE_RETURN_FIELDS(SetVerifyModeRsp, F(deviceGuid), F(operationResultList))
NEXWIRE_RETURN_FIELDS(SetVerifyModeRspData, F(setVerifyModeRsp))
NEXWIRE_INBOUND_FIELDS(PersonnelVerifyModeQueryCondition, "personnelVerifyModeQueryCondition", F(verifyModeList), F(downStatus), F(personnelName), F(personnelNo))
NEXWIRE_INBOUND_FIELDS(PersonnelVerifyModeCondition, "personnelVerifyModeCondition", F(isQuery), F(personnelVerifyModeFilterCondition))
NEXWIRE_RETURN_FIELDS(PersonnelVerifyMode, F(personnelGuid), F(personnelNo), F(personnelName), F(userVerifyMode), F(downStatus), F(errorCode), F(errorMsg))
NEXWIRE_RETURN_FIELDS(PersonnelVerifyModeRsp, F(deviceGuid), F(verifyModeList))
NEXWIRE_RETURN_FIELDS(PersonnelVerifyModeRspData, F(personnelVerifyModeRsp))
NEXWIRE_RETURN_FIELDS(PersonnelVerifyModeCount, F(userVerifyMode), F(personnelNum))
NEXWIRE_RETURN_FIELDS(PersonnelVerifyValues, F(deviceGuid), F(totalNum), F(verifyModeCountList))
NEXWIRE_RETURN_FIELDS(PersonnelVerifyValuesData, F(personnelVerifyValues))
// clang-format on

} // namespace protocol
