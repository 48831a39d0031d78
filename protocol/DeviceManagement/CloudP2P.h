#pragma once

#include "nexwire/JSONStruct.h"

// The peer-to-peer cloud: an account that reaches devices behind address translation without a route of their own.

namespace protocol {

/// The account that the platform logs on with.
struct NEXWIRE_API CloudP2PAccountInfo : IInboundData {
    std::string account;       ///< Name, mail address or telephone number of the account.
    std::string password;      ///< Sent as it is given; empty in answers.
    std::string countryCode;   ///< Where the account is kept, ISO 3166, for example "NO"; empty: found out.
    std::string serverAddress; ///< Cloud server of an installation of its own; empty: the public one.
    NEXWIRE_JSON
};

/// The account as the platform has it.
struct NEXWIRE_API CloudP2PAccountResult : IReturnData {
    std::string account;
    std::string countryCode;
    std::string serverAddress;
    std::int32_t loginState = 0; ///< One of: 0 logged off, 1 logged on, 2 login expired.
    std::string loginTime;       ///< ISO 8601; empty while logged off.
    std::int32_t deviceNum = 0;  ///< Devices bound to the account.
    NEXWIRE_JSON
};

struct NEXWIRE_API CloudP2PAccountResultData : IReturnData {
    CloudP2PAccountResult cloudP2PAccountResult;
    NEXWIRE_JSON
};

/// How the cloud serves one region.
struct NEXWIRE_API CloudP2PConfig : IReturnData {
    std::string region;          ///< ISO 3166 code of the country, or name of the region.
    std::string serverAddress;   ///< Host name.
    std::int32_t serverPort = 0; ///< 1 to 65535.
    bool tls = true;
    NEXWIRE_JSON
};

/// What the platform knows of the cloud.
struct NEXWIRE_API CloudP2PConfigs : IReturnData {
    bool enable = false;           ///< The platform may use the cloud at all.
    std::string registerUrl;       ///< Page where an account is made.
    std::string forgetPasswordUrl; ///< Page where a password is made anew.
    std::vector<CloudP2PConfig> cloudP2PConfigList;
    NEXWIRE_JSON
};

/// Which standard a device's certification for the cloud follows.
struct NEXWIRE_API CertificationStandard : IReturnData {
    std::string standard; ///< For example: "basic", "enhanced".
    bool certified = false;
    std::string validTime; ///< ISO 8601; empty: without limit.
    NEXWIRE_JSON
};

struct NEXWIRE_API CertificationStandardData : IReturnData {
    CertificationStandard certificationStandard;
    NEXWIRE_JSON
};

/// What a channel can do through the cloud.
struct NEXWIRE_API CloudP2PCapabilities : IReturnData {
    bool preview = false;          ///< Live streams.
    bool playback = false;         ///< Recordings.
    bool talk = false;             ///< Two-way sound.
    bool ptz = false;              ///< Moving and zooming.
    bool preset = false;           ///< Presets, with numbers of the cloud's own.
    std::int32_t presetNum = 0;    ///< Most presets.
    std::int32_t maxStreamNum = 0; ///< Streams at a time.
    NEXWIRE_JSON
};

struct NEXWIRE_API CloudP2PCapabilitiesData : IReturnData {
    CloudP2PCapabilities cloudP2PCapabilities;
    NEXWIRE_JSON
};

} // namespace protocol
