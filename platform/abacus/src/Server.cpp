#include "abacus/Server.h"

#include "Table.h"

namespace Abacus {

// clang-format off
ABACUS_DOCUMENT_TABLE(PublishServerCap, "PublishServerCap", M(isSptMaterial), M(isSptProgram), M(isSptSchedule), M(isSptTemplate), M(isSptTerminal), M(isSptRelease), M(isSptUserRole), M(isSptOrganization), M(isSptApproval), M(isSptDataSource), M(isSptStatistics), M(releaseNum), M(transferPort), M(serverMode), M(protocolVersion))
ABACUS_DOCUMENT_TABLE(User, "User", M(userNum), M(userNameLength), M(passwordLength), M(userLevel), M(loginProtocol), M(expireDays), M(isSptDisable), M(isSptBindAddress))
ABACUS_PART_TABLE(Permission, M(name), M(scope), M(isDefault))
ABACUS_DOCUMENT_TABLE(PublishServerUser, "PublishServerUser", L(permissionList, "permission"), M(roleNum), M(terminalNum), M(isSptInherit))
ABACUS_DOCUMENT_TABLE(UserRoleCap, "UserRoleCap", M(roleNum), M(nameLength), M(remarkLength), L(permissionList, "permission"), M(isSptCopy))
ABACUS_DOCUMENT_TABLE(Organization, "Organization", M(organizationNum), M(levelNum), M(nameLength), M(remarkLength), M(userNum), M(resourceType), M(isSptMove))
ABACUS_DOCUMENT_TABLE(BasicCapability, "BasicCapability", M(model), M(firmwareVersion), M(channelNum), M(alarmInNum), M(alarmOutNum), M(diskNum), M(networkNum), M(language), M(videoFormat), M(isSptReboot), M(isSptRestoreDefault), M(isSptUpgrade), M(isSptLogSearch), M(isSptRemoteConnect))
ABACUS_DOCUMENT_TABLE(SecurityAbility, "SecurityAbility", M(tlsVersion), M(certificateType), M(passwordLevel), M(passwordLength), M(lockAttempts), M(lockMin), M(securityQuestionNum), M(keyAlgorithm), M(isSptAddressFilter), M(isSptAudit), M(isSptEncryptedMaterial))
ABACUS_DOCUMENT_TABLE(ResponseStatus, "ResponseStatus", M(requestURL), M(statusCode), M(statusString), M(subStatusCode))
// clang-format on

} // namespace Abacus
