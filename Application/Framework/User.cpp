#include "nexwire/Framework/User.h"

#include "core/Pipeline.h"
#include "nexwire/Framework/Encryption.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/framework/";

/// What cannot be deciphered stays as it is.
void Decipher(std::string& text)
{
    protocol::DecryptionInfo info;
    info.ciphertextList.push_back(text);
    protocol::PlaintextListData opened;
    if (CDecryptionComm::request(opened, info, std::string()) && !opened.plaintextList.empty()) {
        text = std::move(opened.plaintextList.front().plaintext);
    }
}

} // namespace

bool CGetAllUserBasicInfoComm::request(protocol::UserInfoListData& result)
{
    return core::Guard([&] {
        protocol::UserInfoListData users;
        if (!Exchange(Query(Path(kRoot, "users")), users)) {
            return false;
        }
        const core::InnerExchanges inner;
        for (protocol::UserInfo& user : users.userInfoList) {
            Decipher(user.telephone);
        }
        result = std::move(users);
        return true;
    });
}

bool CGetCurrentUserInfoComm::request(protocol::CurrentUserInfoData& result)
{
    return Exchange(Write("/7730/v1/internal/framework/userInfo"), result);
}

bool CFrameworkUserISExist::request(protocol::UserExist& user, protocol::UserIsExistData& result)
{
    return Exchange(Query(Path(kRoot, "userIsExist"), user), result);
}

bool CUserResetPassword::request(const protocol::ResetPassword& param)
{
    return Exchange(Write(Path(kRoot, "resetPassword"), param));
}

bool CUserCheckPassword::request(const protocol::CheckAnswer& param, protocol::CheckAnswerResultData& result)
{
    return Exchange(Query(Path(kRoot, "checkPassword"), param), result);
}

bool CFrameworkSafeProblem::request(const protocol::SafetyProblem& param)
{
    return Exchange(Write(Path(kRoot, "safeProblem"), param));
}

bool CFrameworkGetSafeProblem::request(protocol::ServerSafetyProblemData& result)
{
    return Exchange(Query(Path(kRoot, "getSafeProblem")), result);
}

bool CCheckSafeProblemIsSet::request(protocol::UserSafeProblemIsSetData& result)
{
    return Exchange(Query(Path(kRoot, "checkUserSafeProblem")), result);
}

bool CGetIsSuperUserComm::request(protocol::CurrentUserInforRspData& result, const protocol::CurrentUserInfor& user)
{
    // A capital V, unlike the others.
    return Exchange(Write("/7730/V1/framework/users/issuperuser", user), result);
}

} // namespace nexwire
