#pragma once

#include "abacus/Types.h"

// The server itself, those who work with it, and how it is secured.

namespace Abacus {

/// What a server is able to do at all.
struct PublishServerCap {
    bool isSptMaterial = false;
    bool isSptProgram = false;
    bool isSptSchedule = false;
    bool isSptTemplate = false;
    bool isSptTerminal = false;
    bool isSptRelease = false;
    bool isSptUserRole = false;
    bool isSptOrganization = false;
    bool isSptApproval = false;
    bool isSptDataSource = false;
    bool isSptStatistics = false;
    Range releaseNum; ///< Releases that go out at once.
    Range transferPort;
    Options serverMode;          ///< "single", "cluster", "cascade".
    std::string protocolVersion; ///< "major.minor".
    ABACUS_DOCUMENT
};

/// What a user of a server may be.
struct User {
    Range userNum;
    Range userNameLength;
    Range passwordLength;
    Options userLevel;     ///< "administrator", "operator", "viewer".
    Options loginProtocol; ///< "digest", "session".
    Range expireDays;      ///< Days until a password has to be changed.
    bool isSptDisable = false;
    bool isSptBindAddress = false; ///< A user can be tied to addresses.
    ABACUS_DOCUMENT
};

/// A right that a user may have.
struct Permission {
    std::string name; ///< As "materialUpload".
    Options scope;    ///< "own", "organization", "all".
    bool isDefault = false;
    ABACUS_PART
};

/// What users may be allowed.
struct PublishServerUser {
    std::vector<Permission> permissionList;
    Range roleNum;             ///< Roles of a user.
    Range terminalNum;         ///< Terminals that a user looks after.
    bool isSptInherit = false; ///< Rights come down from the organisation.
    ABACUS_DOCUMENT
};

/// What a role of users may be.
struct UserRoleCap {
    Range roleNum;
    Range nameLength;
    Range remarkLength;
    std::vector<Permission> permissionList;
    bool isSptCopy = false;
    ABACUS_DOCUMENT
};

/// What an organisation may be.
struct Organization {
    Range organizationNum;
    Range levelNum;
    Range nameLength;
    Range remarkLength;
    Range userNum;        ///< Users of one.
    Options resourceType; ///< What belongs to one: "material", "program", "schedule", "terminal".
    bool isSptMove = false;
    ABACUS_DOCUMENT
};

/// What every device says of itself.
struct BasicCapability {
    std::string model;
    std::string firmwareVersion;
    Range channelNum;
    Range alarmInNum;
    Range alarmOutNum;
    Range diskNum;
    Range networkNum;
    Options language; ///< As "en".
    Options videoFormat;
    bool isSptReboot = false;
    bool isSptRestoreDefault = false;
    bool isSptUpgrade = false;
    bool isSptLogSearch = false;
    bool isSptRemoteConnect = false;
    ABACUS_DOCUMENT
};

/// How a server can be secured.
struct SecurityAbility {
    Options tlsVersion;      ///< As "1.2".
    Options certificateType; ///< "selfSigned", "signed".
    Options passwordLevel;   ///< "weak", "medium", "strong".
    Range passwordLength;
    Range lockAttempts; ///< Wrong passwords until a user is locked out.
    Range lockMin;      ///< Minutes.
    Range securityQuestionNum;
    Options keyAlgorithm;
    bool isSptAddressFilter = false;
    bool isSptAudit = false;
    bool isSptEncryptedMaterial = false;
    ABACUS_DOCUMENT
};

/// What a device answers instead of a document that it does not give.
struct ResponseStatus {
    std::string requestURL;
    std::int32_t statusCode = 0; ///< 1 done; otherwise the kind of refusal.
    std::string statusString;
    std::string subStatusCode; ///< A word for the reason, as "notSupport"; may be empty.
    ABACUS_DOCUMENT
};

} // namespace Abacus
