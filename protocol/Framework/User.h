#pragma once

#include "nexwire/JSONStruct.h"

// Passwords and answers to safety questions travel enciphered: `CEncryptionComm` makes the texts that stand here.

namespace protocol {

struct NEXWIRE_API UserRole : IReturnData {
    std::string roleGuid;
    std::string roleName;
    NEXWIRE_JSON
};

/// When a user's screen locks, and when the user is shut out.
struct NEXWIRE_API UserLockParam : IReturnData {
    bool autoLock = false;        ///< The screen locks by itself.
    std::int32_t lockMinutes = 0; ///< Without a key or the mouse until it does. 0 to 1440 min.
    std::int32_t maxFailures = 0; ///< Wrong passwords until the user is shut out; 0: never. 0 to 10.
    std::int32_t banMinutes = 0;  ///< For how long. 0 to 1440 min.
    NEXWIRE_JSON
};

/// A user of the platform.
struct NEXWIRE_API UserInfo : IReturnData {
    std::string userGuid;
    std::string userName;
    std::string realName;
    std::int32_t userType = 0; ///< One of: 0 super user, 1 administrator, 2 operator.
    bool enabled = true;
    bool isLocked = false; ///< Shut out after too many wrong passwords.
    bool isOnline = false;
    std::vector<UserRole> roleList;
    std::vector<std::string> permissionCodeList; ///< What the roles permit together.
    std::string telephone; ///< Kept enciphered by the server; `CGetAllUserBasicInfoComm` has it deciphered.
    std::string email;
    std::string validBeginTime; ///< "2026-03-01T08:00:00+00:00"; empty: without limit.
    std::string validEndTime;   ///< Not before validBeginTime; empty: without limit.
    std::string lastLoginTime;  ///< Empty: never.
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API UserInfoListData : IReturnData {
    std::vector<UserInfo> userInfoList;
    NEXWIRE_JSON
};

/// The user who is signed in.
struct NEXWIRE_API CurrentUserInfo : IReturnData {
    std::string userGuid;
    std::string userName;
    std::int32_t userType = 0; ///< One of: 0 super user, 1 administrator, 2 operator.
    std::vector<UserRole> roleList;
    std::vector<std::string> permissionCodeList; ///< What the roles permit together.
    std::string loginTime;                       ///< "2026-03-01T08:00:00+00:00".
    std::string clientAddress;                   ///< Where the user works.
    UserLockParam lockParam;
    NEXWIRE_JSON
};

struct NEXWIRE_API CurrentUserInfoData : IReturnData {
    CurrentUserInfo currentUserInfo;
    NEXWIRE_JSON
};

/// A user name to look for.
struct NEXWIRE_API UserExist : IInboundData {
    std::string userName; ///< Required. Up to 64 characters.
    NEXWIRE_JSON
};

struct NEXWIRE_API UserIsExist : IReturnData {
    std::string userName;
    bool isExist = false;
    bool enabled = false;
    bool isSafeProblemSet = false; ///< The password can be set anew by answering safety questions.
    NEXWIRE_JSON
};

struct NEXWIRE_API UserIsExistData : IReturnData {
    UserIsExist userIsExist;
    NEXWIRE_JSON
};

/// A safety question and its answer.
struct NEXWIRE_API SafetyAnswer : IInboundData {
    std::int32_t problemId = 0; ///< Number of the question on the server. From 1.
    std::string safetyAnswer;   ///< Enciphered. Required.
    NEXWIRE_JSON
};

/// The answers by which the signed-in user will be known again.
struct NEXWIRE_API SafetyProblem : IInboundData {
    std::string userName;                 ///< Empty: the signed-in user.
    std::string password;                 ///< Enciphered. Required.
    std::vector<SafetyAnswer> answerList; ///< Required. 1 to 5 elements.
    NEXWIRE_JSON
};

struct NEXWIRE_API SafetyProblemItem : IReturnData {
    std::int32_t problemId = 0; ///< From 1.
    std::string problem;        ///< In the server's language.
    NEXWIRE_JSON
};

/// Questions to choose from.
struct NEXWIRE_API ServerSafetyProblem : IReturnData {
    std::vector<SafetyProblemItem> problemList;
    std::int32_t requiredNum = 0; ///< So many must be answered.
    NEXWIRE_JSON
};

struct NEXWIRE_API ServerSafetyProblemData : IReturnData {
    ServerSafetyProblem serverSafetyProblem;
    NEXWIRE_JSON
};

/// A new password, for a user who is known by the old one or by safety answers.
struct NEXWIRE_API ResetPassword : IInboundData {
    std::string userName;                 ///< Required.
    std::string oldPassword;              ///< Enciphered; empty: known by the answers.
    std::vector<SafetyAnswer> answerList; ///< Empty: known by the old password. Up to 5 elements.
    std::string newPassword;              ///< Enciphered. Required.
    NEXWIRE_JSON
};

/// A password or safety answers to check. A right password signs the user in.
struct NEXWIRE_API CheckAnswer : IInboundData {
    std::string userName;                 ///< Required.
    std::string password;                 ///< Enciphered; empty: the answers are checked.
    std::vector<SafetyAnswer> answerList; ///< Up to 5 elements.
    NEXWIRE_JSON
};

struct NEXWIRE_API CheckAnswerResult : IReturnData {
    bool isPassed = false;
    std::int32_t remainTimes = 0;               ///< Tries left until the user is shut out; -1: without limit.
    std::int32_t lockSeconds = 0;               ///< For how long the user is shut out, s.
    std::vector<std::int32_t> wrongProblemList; ///< Numbers of the questions that were answered wrong.
    NEXWIRE_JSON
};

struct NEXWIRE_API CheckAnswerResultData : IReturnData {
    CheckAnswerResult checkAnswerResult;
    NEXWIRE_JSON
};

struct NEXWIRE_API UserSafeProblemIsSet : IReturnData {
    std::string userName; ///< The signed-in user.
    bool isSet = false;
    std::int32_t answeredNum = 0; ///< Questions that have an answer.
    NEXWIRE_JSON
};

struct NEXWIRE_API UserSafeProblemIsSetData : IReturnData {
    UserSafeProblemIsSet userSafeProblemIsSet;
    NEXWIRE_JSON
};

/// A user who may be the super user.
struct NEXWIRE_API CurrentUserInfor : IInboundData {
    std::string userGuid; ///< Empty: known by the name.
    std::string userName; ///< Both empty: the signed-in user.
    NEXWIRE_JSON
};

struct NEXWIRE_API CurrentUserInforRsp : IReturnData {
    std::string userGuid;
    std::string userName;
    bool isSuperUser = false;
    NEXWIRE_JSON
};

struct NEXWIRE_API CurrentUserInforRspData : IReturnData {
    CurrentUserInforRsp currentUserInforRsp;
    NEXWIRE_JSON
};

} // namespace protocol
