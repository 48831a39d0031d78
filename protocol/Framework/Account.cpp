#include "protocol/Framework/Account.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(LoginTokenRequest, "loginTokenRequest", F(clientType))
NEXWIRE_INBOUND_FIELDS(LockScreenRequest, "lockScreenRequest", F(operateType), F(userName), F(password), F(lockMinutes))
NEXWIRE_RETURN_FIELDS(UserResponseInfo, F(userGuid), F(userName), F(userType), F(token), F(tokenExpireTime), F(isLocked), F(lockMinutes), F(remainTimes))
NEXWIRE_RETURN_FIELDS(UserResponseInfoData, F(userResponseInfo))
NEXWIRE_INBOUND_FIELDS(StartTiming, "startTiming", F(token))
NEXWIRE_INBOUND_FIELDS(OrvelAccountInfo, "orvelAccountInfo", F(accountName), F(nickName), F(accountType), F(region), F(email), F(telephone), F(token), F(tokenExpireTime), F(isLoggedIn))
NEXWIRE_INBOUND_FIELDS(OrvelAccountInfoModify, "orvelAccountInfoModify", F(accountName), F(nickName), F(region), F(email), F(telephone))
NEXWIRE_INBOUND_FIELDS(UserMeasureModify, "userMeasureModify", F(userGuid), F(temperatureUnit), F(lengthUnit), F(speedUnit))
NEXWIRE_INBOUND_FIELDS(TeamOperateRequestInfo, "teamOperateRequestInfo", F(accountName), F(needMembers))
NEXWIRE_RETURN_FIELDS(TeamMember, F(accountName), F(nickName), F(memberRole), F(joinTime))
NEXWIRE_RETURN_FIELDS(TeamOperateResponseInfo, F(teamNo), F(teamName), F(memberRole), F(memberNum), F(deviceNum), F(memberList))
NEXWIRE_RETURN_FIELDS(TeamOperateResponseInfoData, F(teamOperateResponseInfo))
NEXWIRE_RETURN_FIELDS(StreamPackageInfoResponseInfo, F(packageGuid), F(packageName), F(totalSize), F(usedSize), F(beginTime), F(endTime), F(packageState))
NEXWIRE_RETURN_FIELDS(StreamPackageInfoResponseInfoData, F(streamPackageInfoResponseInfo))
NEXWIRE_INBOUND_FIELDS(WSRequestInfo, "wsRequestInfo", F(componentId), F(isReceive), F(topic), F(channelUrl))
NEXWIRE_RETURN_FIELDS(UserLoginAccountTeamInfo, F(userGuid), F(userName), F(accountName), F(nickName), F(region), F(teamNo), F(teamName), F(memberRole))
NEXWIRE_INBOUND_FIELDS(Resource, "resource", F(resourceGuid), F(resourceName), F(resourceType), F(parentGuid), F(isActive), F(activeTime))
// clang-format on

} // namespace protocol
