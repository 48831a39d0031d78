#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// Where the framework keeps its configuration.
struct NEXWIRE_API ConfigFilePath : IReturnData {
    std::string path;       ///< Absolute, on the server.
    std::string modifyTime; ///< Last change, "2026-03-01T08:00:00+00:00".
    NEXWIRE_JSON
};

struct NEXWIRE_API ConfigFilePathData : IReturnData {
    ConfigFilePath configFilePath;
    NEXWIRE_JSON
};

/// Where the framework saves files of its users; all absolute, on the server.
struct NEXWIRE_API FilePath : IReturnData {
    std::string picturePath;
    std::string recordPath;
    std::string exportPath;
    std::string logPath;
    std::int64_t freeSpace = 0; ///< Left there, megabytes.
    NEXWIRE_JSON
};

struct NEXWIRE_API FilePathData : IReturnData {
    FilePath filePath;
    NEXWIRE_JSON
};

/// Part of the world whose cloud the platform uses.
struct NEXWIRE_API CloudP2PRegion : IReturnData {
    std::string region;          ///< For example: "DE", "US".
    std::string serverAddress;   ///< Host of the cloud there.
    std::int32_t serverPort = 0; ///< 1 to 65535; 0: the usual one.
    NEXWIRE_JSON
};

struct NEXWIRE_API CloudP2PRegionData : IReturnData {
    CloudP2PRegion cloudP2PRegion;
    NEXWIRE_JSON
};

/// Settings of the server as a whole.
struct NEXWIRE_API SystemServerConfig : IReturnData {
    std::string systemName;
    std::string language;              ///< For example: "en-US", "zh-CN", "de-DE".
    std::string timeZone;              ///< Distance to UTC. For example: "+00:00", "+08:00".
    std::int32_t logKeepDays = 0;      ///< 1 to 3650 d.
    std::int32_t alarmKeepDays = 0;    ///< 1 to 3650 d.
    bool timeSync = false;             ///< Devices get the server's time.
    std::int32_t timeSyncInterval = 0; ///< 1 to 10080 min.
    bool autoLogin = false;            ///< Clients sign in without asking.
    bool autoBackup = false;           ///< The database is saved every night.
    NEXWIRE_JSON
};

struct NEXWIRE_API SystemServerConfigData : IReturnData {
    SystemServerConfig systemServerConfig;
    NEXWIRE_JSON
};

/// The settings as they are to be.
struct NEXWIRE_API SystemConfigAdd : IInboundData {
    std::string systemName;             ///< Up to 64 characters.
    std::string language;               ///< For example: "en-US", "zh-CN", "de-DE".
    std::string timeZone;               ///< Distance to UTC. For example: "+00:00", "+08:00".
    std::int32_t logKeepDays = 180;     ///< 1 to 3650 d.
    std::int32_t alarmKeepDays = 180;   ///< 1 to 3650 d.
    bool timeSync = true;               ///< Devices get the server's time.
    std::int32_t timeSyncInterval = 60; ///< 1 to 10080 min.
    bool autoLogin = false;             ///< Clients sign in without asking.
    bool autoBackup = true;             ///< The database is saved every night.
    NEXWIRE_JSON
};

/// How clients write dates and times.
struct NEXWIRE_API DateTimeFormat : IReturnData {
    std::string dateFormat;    ///< One of: "yyyy-MM-dd", "MM-dd-yyyy", "dd-MM-yyyy".
    std::string timeFormat;    ///< One of: "HH:mm:ss", "hh:mm:ss tt".
    std::int32_t firstDay = 0; ///< First day of the week. One of: 0 Sunday, 1 Monday, 6 Saturday.
    NEXWIRE_JSON
};

struct NEXWIRE_API DateTimeFormatData : IReturnData {
    DateTimeFormat dateTimeFormat;
    NEXWIRE_JSON
};

/// Whether data of persons is protected: hidden on the screen and asked for before it is kept.
struct NEXWIRE_API EnableGDPR : IReturnData {
    bool enable = false;
    std::string modifyTime; ///< Last change, "2026-03-01T08:00:00+00:00".
    NEXWIRE_JSON
};

struct NEXWIRE_API EnableGDPRData : IReturnData {
    EnableGDPR enableGDPR;
    NEXWIRE_JSON
};

/// Whether data of persons may be exported.
struct NEXWIRE_API ExportPersonInforCfg : IReturnData {
    bool enable = false;
    bool withPictures = false; ///< Pictures of faces, too.
    bool isEncrypted = true;   ///< Files are enciphered with a password.
    NEXWIRE_JSON
};

struct NEXWIRE_API ExportPersonInforCfgData : IReturnData {
    ExportPersonInforCfg exportPersonInforCfg;
    NEXWIRE_JSON
};

} // namespace protocol
