#pragma once

#include "protocol/Framework/User.h"

// Users of the platform, their passwords and safety questions. Threads, truth and errors: see Server.h. The library
// enciphers nothing here: have passwords and answers enciphered by `CEncryptionComm` first.

namespace nexwire {

/// All users.
class NEXWIRE_API CGetAllUserBasicInfoComm {
public:
    /// The server keeps `UserInfo::telephone` enciphered; for each user in turn the function has it deciphered through
    /// `CDecryptionComm`. Where that fails the member stays enciphered and the call is still true. It sends one request
    /// more than there are users; `LastExchange` tells of the first.
    static bool request(protocol::UserInfoListData& result);
};

/// The signed-in user.
class NEXWIRE_API CGetCurrentUserInfoComm {
public:
    static bool request(protocol::CurrentUserInfoData& result);
};

/// Whether there is a user of that name.
class NEXWIRE_API CFrameworkUserISExist {
public:
    /// @param user  the question; it is not changed.
    static bool request(protocol::UserExist& user, protocol::UserIsExistData& result);
};

/// Sets a password anew. What the server refuses is still true; its reason stands in `LastExchange`.
class NEXWIRE_API CUserResetPassword {
public:
    static bool request(const protocol::ResetPassword& param);
};

/// Checks a password or safety answers; a right password signs the user in.
class NEXWIRE_API CUserCheckPassword {
public:
    /// True says that they were checked; `CheckAnswerResult::isPassed` says how it went.
    static bool request(const protocol::CheckAnswer& param, protocol::CheckAnswerResultData& result);
};

/// Stores the signed-in user's answers to safety questions.
class NEXWIRE_API CFrameworkSafeProblem {
public:
    static bool request(const protocol::SafetyProblem& param);
};

/// The safety questions to choose from.
class NEXWIRE_API CFrameworkGetSafeProblem {
public:
    static bool request(protocol::ServerSafetyProblemData& result);
};

/// Whether the signed-in user has answered safety questions.
class NEXWIRE_API CCheckSafeProblemIsSet {
public:
    static bool request(protocol::UserSafeProblemIsSetData& result);
};

/// Whether a user is the super user.
class NEXWIRE_API CGetIsSuperUserComm {
public:
    static bool request(protocol::CurrentUserInforRspData& result, const protocol::CurrentUserInfor& user);
};

} // namespace nexwire
