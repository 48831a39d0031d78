#pragma once

#include "protocol/DeviceManagement/CloudP2P.h"
#include "protocol/Framework/Account.h"

// The signed-in user's session, and account and team at the cloud. Threads, truth and errors: see Server.h. Tokens are
// secrets: they do not belong into logs.

namespace nexwire {

/// A token that stands for the signed-in user.
class NEXWIRE_API CGetLoginToken {
public:
    /// @param clientType  as in `LoginTokenRequest`.
    static bool request(protocol::UserResponseInfoData& result, int clientType);
};

/// The same on the executor's slower worker.
class NEXWIRE_API CGetLoginTokenBySlowThread {
public:
    /// @param clientType  as in `LoginTokenRequest`.
    static bool request(protocol::UserResponseInfoData& result, int clientType);
};

/// Hands a cloud token that was obtained elsewhere to device management. The outcome is logged.
class NEXWIRE_API CSetLoginToken {
public:
    /// @param account  sent as it is; on success what the answer says of it has replaced its members.
    static bool request(protocol::CloudP2PAccountInfo& account);
};

/// Has device management count the time that a cloud token still holds.
class NEXWIRE_API CStartTiming {
public:
    /// @param token  the token; on success the one that the answer names, if it names one.
    static bool request(std::string& token);
};

/// Locks the signed-in user's screen, opens it again, or asks how it stands.
class NEXWIRE_API CGetLockParam {
public:
    /// @param operateType  0 ask, 1 lock, 2 unlock.
    /// @param password     enciphered; needed to unlock only, otherwise empty.
    /// @param lockMinutes  the screen locks by itself after so long, 0 to 1440; 0: as it was.
    static bool request(protocol::UserResponseInfoData& result, int operateType, const std::string& userName,
                        const std::string& password, int lockMinutes);
};

/// The account at the cloud.
class NEXWIRE_API CGetOrvelAccountInfo {
public:
    /// @param account  the question by its name; on success the account, where the answer speaks of it.
    static bool request(protocol::OrvelAccountInfo& account);
};

/// Changes the account at the cloud.
class NEXWIRE_API CSetOrvelAccountInfo {
public:
    static bool request(const protocol::OrvelAccountInfoModify& param);
};

/// Sets the units that the user reads measured values in.
class NEXWIRE_API CSetUserMeasureInfo {
public:
    static bool request(const protocol::UserMeasureModify& param);
};

/// The team that the account works in.
class NEXWIRE_API CGetCurrentTeam {
public:
    static bool request(protocol::TeamOperateResponseInfoData& result, const protocol::TeamOperateRequestInfo& param);
};

/// What may still be relayed through the cloud.
class NEXWIRE_API CGetStreamPackageInfo {
public:
    static bool request(protocol::StreamPackageInfoResponseInfoData& result);
};

/// Says what a component wants to be told over the message channel. The outcome is logged.
class NEXWIRE_API CSetComponentRecvMsg {
public:
    /// @param param  sent as it is; on success with the channel that the answer names.
    static bool request(protocol::WSRequestInfo& param);
};

/// Account and team of the signed-in user in one. A failure is logged.
class NEXWIRE_API CGetAccountAndTeamInfo {
public:
    static bool request(protocol::UserLoginAccountTeamInfo& result);
};

/// Makes a device the one that is worked with.
class NEXWIRE_API CSetActiveDevice {
public:
    /// @param device  sent as it is; on success what the answer says of it has replaced its members.
    static bool request(protocol::Resource& device);
};

} // namespace nexwire
