#pragma once

#include "protocol/DeviceManagement/CloudP2P.h"

// The peer-to-peer cloud. Threads, truth and errors: see Device.h; identifiers go into paths as they are given.

namespace nexwire {

/// Logs the platform on to the cloud.
class NEXWIRE_API CCloudP2PAccountLoginComm {
public:
    /// @param account  sent as it is; on success what the answer says of it has replaced its members.
    static bool request(protocol::CloudP2PAccountInfo& account);
};

/// Logs the platform off from the cloud.
class NEXWIRE_API CCloudP2PAccountLogoutComm {
public:
    static bool request();
};

/// The account that the platform is logged on with.
class NEXWIRE_API CGetCloudP2PAccountComm {
public:
    static bool request(protocol::CloudP2PAccountResultData& result);
};

/// What the platform knows of the cloud.
class NEXWIRE_API CCloudP2PConfigComm {
public:
    static bool request(protocol::CloudP2PConfigs& result);
};

/// The standard that a device's certification follows.
class NEXWIRE_API CGetCloudP2PCertStandard {
public:
    static bool request(const std::string& deviceGuid, protocol::CertificationStandardData& result);
};

/// Has the cloud check that a device belongs to the account.
class NEXWIRE_API CCloudP2PUserCheck {
public:
    static bool request(const std::string& deviceGuid);
};

/// What a channel can do through the cloud.
class NEXWIRE_API CGetCloudP2PCapabilitiesComm {
public:
    static bool request(protocol::CloudP2PCapabilitiesData& result, const std::string& deviceGuid,
                        const std::string& channelGuid);
};

} // namespace nexwire
