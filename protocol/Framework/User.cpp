#include "protocol/Framework/User.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_RETURN_FIELDS(UserRole, F(roleGuid), F(roleName))
NEXWIRE_RETURN_FIELDS(UserLockParam, F(autoLock), F(lockMinutes), F(maxFailures), F(banMinutes))
NEXWIRE_RETURN_FIELDS(UserInfo, F(userGuid), F(userName), F(realName), F(userType), F(enabled), F(isLocked), F(isOnline), F(roleList), F(permissionCodeList), F(telephone), F(email), F(validBeginTime), F(validEndTime), F(lastLoginTime), F(description))
NEXWIRE_RETURN_FIELDS(UserInfoListData, F(userInfoList))
NEXWIRE_RETURN_FIELDS(CurrentUserInfo, F(userGuid), F(userName), F(userType), F(roleList), F(permissionCodeList), F(loginTime), F(clientAddress), F(lockParam))
NEXWIRE_RETURN_FIELDS(CurrentUserInfoData, F(currentUserInfo))
NEXWIRE_INBOUND_FIELDS(UserExist, "userExist", F(userName))
NEXWIRE_RETURN_FIELDS(UserIsExist, F(userName), F(isExist), F(enabled), F(isSafeProblemSet))
NEXWIRE_RETURN_FIELDS(UserIsExistData, F(userIsExist))
NEXWIRE_INBOUND_FIELDS(SafetyAnswer, "safetyAnswer", F(problemId), F(safetyAnswer))
NEXWIRE_INBOUND_FIELDS(SafetyProblem, "safetyProblem", F(userName), F(password), F(answerList))
NEXWIRE_RETURN_FIELDS(SafetyProblemItem, F(problemId), F(problem))
NEXWIRE_RETURN_FIELDS(ServerSafetyProblem, F(problemList), F(requiredNum))
NEXWIRE_RETURN_FIELDS(ServerSafetyProblemData, F(serverSafetyProblem))
NEXWIRE_INBOUND_FIELDS(ResetPassword, "resetPassword", F(userName), F(oldPassword), F(answerList), F(newPassword))
NEXWIRE_INBOUND_FIELDS(CheckAnswer, "checkAnswer", F(userName), F(password), F(answerList))
NEXWIRE_RETURN_FIELDS(CheckAnswerResult, F(isPassed), F(remainTimes), F(lockSeconds), F(wrongProblemList))
NEXWIRE_RETURN_FIELDS(CheckAnswerResultData, F(checkAnswerResult))
NEXWIRE_RETURN_FIELDS(UserSafeProblemIsSet, F(userName), F(isSet), F(answeredNum))
NEXWIRE_RETURN_FIELDS(UserSafeProblemIsSetData, F(userSafeProblemIsSet))
NEXWIRE_INBOUND_FIELDS(CurrentUserInfor, "currentUserInfor", F(userGuid), F(userName))
NEXWIRE_RETURN_FIELDS(CurrentUserInforRsp, F(userGuid), F(userName), F(isSuperUser))
NEXWIRE_RETURN_FIELDS(CurrentUserInforRspData, F(currentUserInforRsp))
// clang-format on

} // namespace protocol
