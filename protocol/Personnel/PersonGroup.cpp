#include "protocol/Personnel/PersonGroup.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(PerGroupMember, "perGroupMember", F(personnelGuid), F(personNo), F(personName))
NEXWIRE_INBOUND_FIELDS(PerGroupAddReq, "perGroupAddReq", F(perGroupName), F(description), F(perGroupMemberList))
NEXWIRE_INBOUND_FIELDS(PerGroupModReq, "perGroupModReq", F(perGroupGuid), F(perGroupName), F(description), F(perGroupMemberList))
NEXWIRE_INBOUND_FIELDS(PerGroupDelReq, "perGroupDelReq", F(perGroupGuidList))
NEXWIRE_INBOUND_FIELDS(PerGroupQueryReq, "perGroupQueryReq", F(perGroupGuid), F(perGroupName), F(personnelGuid))
NEXWIRE_RETURN_FIELDS(PerGroupResult, F(perGroupGuid), F(perGroupName), F(deviceGuidList), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(PerGroupResultData, F(perGroupResult))
NEXWIRE_RETURN_FIELDS(PerGroupResultListData, F(perGroupResultList))
NEXWIRE_RETURN_FIELDS(PerGroupDelRsp, F(perGroupGuid), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(PerGroupDelRspListData, F(perGroupDelRspList))
NEXWIRE_RETURN_FIELDS(PerGroupQueryRsp, F(perGroupGuid), F(perGroupName), F(description), F(perGroupMemberList), F(isUsed))
NEXWIRE_RETURN_FIELDS(PerGroupQueryRspListData, F(perGroupQueryRspList))
NEXWIRE_INBOUND_FIELDS(PerGroupMemberInfo, "perGroupMemberInfo", F(groupNo), F(perGroupGuid), F(perGroupName), F(enable), F(perGroupMemberList))
NEXWIRE_INBOUND_FIELDS(PerGroupMemberInfoData, "perGroupMemberInfoData", F(deviceGuid), F(perGroupMemberInfoList))
NEXWIRE_RETURN_FIELDS(PerGroupMemberInfoDataRsp, F(deviceGuid), F(perGroupMemberInfoList))
NEXWIRE_RETURN_FIELDS(PerGroupMemberInfoDataRspData, F(perGroupMemberInfoDataRsp))
NEXWIRE_INBOUND_FIELDS(UserBelongGroupNum, "userBelongGroupNum", F(personnelGuid), F(personNo), F(groupNoList))
NEXWIRE_INBOUND_FIELDS(UserBelongGroupNumIInboundData, "userBelongGroupNumIInboundData", F(userBelongGroupNumList))
NEXWIRE_INBOUND_FIELDS(AuthGroupMember, "authGroupMember", F(perGroupGuid), F(perGroupName), F(personNum), F(sequenceNo))
NEXWIRE_INBOUND_FIELDS(AuthGroupAddReq, "authGroupAddReq", F(authGroupName), F(deviceGuid), F(doorNo), F(planInfoGuid), F(intervalTime), F(remoteConfirm), F(authGroupMemberList))
NEXWIRE_INBOUND_FIELDS(AuthGroupModReq, "authGroupModReq", F(authGroupGuid), F(authGroupName), F(deviceGuid), F(doorNo), F(planInfoGuid), F(intervalTime), F(remoteConfirm), F(authGroupMemberList))
NEXWIRE_INBOUND_FIELDS(AuthGroupDelReq, "authGroupDelReq", F(authGroupGuidList))
NEXWIRE_INBOUND_FIELDS(AuthGroupQueryReq, "authGroupQueryReq", F(authGroupGuid), F(authGroupName), F(deviceGuid), F(doorNo))
NEXWIRE_RETURN_FIELDS(AuthGroupResult, F(authGroupGuid), F(authGroupName), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(AuthGroupResultData, F(authGroupResult))
NEXWIRE_RETURN_FIELDS(AuthGroupResultListData, F(authGroupResultList))
NEXWIRE_RETURN_FIELDS(AuthGroupDelRsp, F(authGroupGuid), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(AuthGroupDelRspListData, F(authGroupDelRspList))
NEXWIRE_RETURN_FIELDS(AuthGroupQueryRsp, F(authGroupGuid), F(authGroupName), F(deviceGuid), F(deviceName), F(doorNo), F(planInfoGuid), F(intervalTime), F(remoteConfirm), F(authGroupMemberList))
NEXWIRE_RETURN_FIELDS(AuthGroupQueryRspListData, F(authGroupQueryRspList))
// clang-format on

} // namespace protocol
