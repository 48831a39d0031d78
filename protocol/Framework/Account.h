#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// Who asks for a login token.
struct NEXWIRE_API LoginTokenRequest : IInboundData {
    std::int32_t clientType = 0; ///< One of: 0 desktop client, 1 phone, 2 browser, 3 service.
    NEXWIRE_JSON
};

/// Locks the signed-in user's screen, opens it again, or asks how it stands.
struct NEXWIRE_API LockScreenRequest : IInboundData {
    std::int32_t operateType = 0; ///< One of: 0 ask, 1 lock, 2 unlock.
    std::string userName;
    std::string password; ///< Enciphered; needed to unlock only.
    std::int32_t lockMinutes =
        0; ///< Locks by itself after so long without a key or the mouse; 0: as it was. 0 to 1440 min.
    NEXWIRE_JSON
};

/// The signed-in user's session.
struct NEXWIRE_API UserResponseInfo : IReturnData {
    std::string userGuid;
    std::string userName;
    std::int32_t userType = 0;    ///< One of: 0 super user, 1 administrator, 2 operator.
    std::string token;            ///< Stands for the user towards other services; empty in answers about the lock.
    std::string tokenExpireTime;  ///< "2026-03-01T08:00:00+00:00".
    bool isLocked = false;        ///< The screen is locked.
    std::int32_t lockMinutes = 0; ///< Locks by itself after so long; 0: never, min.
    std::int32_t remainTimes = 0; ///< Tries left to unlock until the user is shut out; -1: without limit.
    NEXWIRE_JSON
};

struct NEXWIRE_API UserResponseInfoData : IReturnData {
    UserResponseInfo userResponseInfo;
    NEXWIRE_JSON
};

/// Has device management count the time that a cloud token still holds.
struct NEXWIRE_API StartTiming : IInboundData {
    std::string token;
    NEXWIRE_JSON
};

/// Account at the maker's cloud; a question when sent, the account when it comes back.
struct NEXWIRE_API OrvelAccountInfo : IInboundData {
    std::string accountName; ///< Empty in a question: the account of the signed-in user.
    std::string nickName;
    std::int32_t accountType = 0; ///< One of: 0 personal, 1 company.
    std::string region;           ///< Code of the country that the account belongs to. For example: "DE", "US".
    std::string email;
    std::string telephone;
    std::string token;           ///< Stands for the account at the cloud.
    std::string tokenExpireTime; ///< "2026-03-01T08:00:00+00:00".
    bool isLoggedIn = false;
    NEXWIRE_JSON
};

/// The account as it is to be.
struct NEXWIRE_API OrvelAccountInfoModify : IInboundData {
    std::string accountName; ///< Required.
    std::string nickName;    ///< Up to 64 characters.
    std::string region;      ///< For example: "DE", "US".
    std::string email;
    std::string telephone;
    NEXWIRE_JSON
};

/// Units that the user reads measured values in.
struct NEXWIRE_API UserMeasureModify : IInboundData {
    std::string userGuid;             ///< Empty: the signed-in user.
    std::int32_t temperatureUnit = 0; ///< One of: 0 degrees Celsius, 1 degrees Fahrenheit.
    std::int32_t lengthUnit = 0;      ///< One of: 0 metric, 1 imperial.
    std::int32_t speedUnit = 0;       ///< One of: 0 kilometres an hour, 1 miles an hour.
    NEXWIRE_JSON
};

/// Which team is asked for.
struct NEXWIRE_API TeamOperateRequestInfo : IInboundData {
    std::string accountName;  ///< Empty: the account of the signed-in user.
    bool needMembers = false; ///< The members are wanted, too.
    NEXWIRE_JSON
};

struct NEXWIRE_API TeamMember : IReturnData {
    std::string accountName;
    std::string nickName;
    std::int32_t memberRole = 0; ///< One of: 0 owner, 1 administrator, 2 member.
    std::string joinTime;        ///< "2026-03-01T08:00:00+00:00".
    NEXWIRE_JSON
};

/// A team of accounts that share devices.
struct NEXWIRE_API TeamOperateResponseInfo : IReturnData {
    std::string teamNo; ///< What views are shared under, too.
    std::string teamName;
    std::int32_t memberRole = 0; ///< Of the account asked about. One of: 0 owner, 1 administrator, 2 member.
    std::int32_t memberNum = 0;
    std::int32_t deviceNum = 0;
    std::vector<TeamMember> memberList; ///< When they were asked for.
    NEXWIRE_JSON
};

struct NEXWIRE_API TeamOperateResponseInfoData : IReturnData {
    TeamOperateResponseInfo teamOperateResponseInfo;
    NEXWIRE_JSON
};

/// Data that may still be relayed through the cloud.
struct NEXWIRE_API StreamPackageInfoResponseInfo : IReturnData {
    std::string packageGuid;
    std::string packageName;
    std::int64_t totalSize = 0;    ///< Megabytes.
    std::int64_t usedSize = 0;     ///< Megabytes.
    std::string beginTime;         ///< "2026-03-01T08:00:00+00:00".
    std::string endTime;           ///< "2026-03-01T08:00:00+00:00".
    std::int32_t packageState = 0; ///< One of: 0 none, 1 in use, 2 used up, 3 past.
    NEXWIRE_JSON
};

struct NEXWIRE_API StreamPackageInfoResponseInfoData : IReturnData {
    StreamPackageInfoResponseInfo streamPackageInfoResponseInfo;
    NEXWIRE_JSON
};

/// What a component wants to be told over the message channel; comes back with the channel it got.
struct NEXWIRE_API WSRequestInfo : IInboundData {
    std::string componentId; ///< Required.
    bool isReceive = true;   ///< False: nothing any more.
    std::string topic;       ///< For example: "account", "team", "device".
    std::string channelUrl;  ///< Where the messages come; filled by the server.
    NEXWIRE_JSON
};

/// Account and team of the signed-in user in one.
struct NEXWIRE_API UserLoginAccountTeamInfo : IReturnData {
    std::string userGuid;
    std::string userName;
    std::string accountName; ///< Empty: not signed in at the cloud.
    std::string nickName;
    std::string region;
    std::string teamNo; ///< Empty: in no team.
    std::string teamName;
    std::int32_t memberRole = 0; ///< One of: 0 owner, 1 administrator, 2 member.
    NEXWIRE_JSON
};

/// A device that is to be the one worked with; comes back as it stands then.
struct NEXWIRE_API Resource : IInboundData {
    std::string resourceGuid; ///< Required.
    std::string resourceName;
    std::int32_t resourceType = 0; ///< Kind of the resource, as in `Element`.
    std::string parentGuid;        ///< Device that it belongs to, empty for a device.
    bool isActive = true;
    std::string activeTime; ///< "2026-03-01T08:00:00+00:00"; filled by the server.
    NEXWIRE_JSON
};

} // namespace protocol
