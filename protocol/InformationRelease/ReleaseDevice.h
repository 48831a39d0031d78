#pragma once

#include "nexwire/JSONStruct.h"

// What release servers are sent and asked on the batch channel. Times are ISO 8601 texts, "2026-03-01T08:00:00+00:00".

namespace protocol {

/// A file on its way to a release server.
struct NEXWIRE_API FileUpload : IInboundData {
    std::string fileName;      ///< As the server is to keep it.
    std::string fileType;      ///< One of: "material", "template", "package", "certificate", "configuration".
    std::string localFilePath; ///< Where the platform's device gateway finds it.
    std::int64_t fileSize = 0; ///< Bytes.
    std::string md5;           ///< Of the content, 32 hexadecimal digits; empty: not checked.
    bool overwrite = false;
    NEXWIRE_JSON
};

/// A file to fetch from a release server.
struct NEXWIRE_API FileDownload : IInboundData {
    std::string fileName;      ///< As the server keeps it.
    std::string fileType;      ///< One of: "material", "template", "log", "certificate", "configuration".
    std::string localFilePath; ///< Where the platform's device gateway puts it.
    NEXWIRE_JSON
};

/// New firmware for a release server.
struct NEXWIRE_API DeviceUpgradeCon : IInboundData {
    std::string packagePath; ///< Where the platform's device gateway finds the package.
    std::string packageType; ///< One of: "firmware", "application".
    std::string version;     ///< Empty: whatever the package holds.
    bool keepConfig = true;
    bool reboot = true; ///< Restart when it is in place.
    NEXWIRE_JSON
};

/// How far a transfer, an upgrade or a connection has come.
struct NEXWIRE_API BatchProgressValue : IInboundData {
    std::int32_t progress = 0;  ///< 0 to 100 %.
    std::string state;          ///< One of: "waiting", "running", "done", "failed", "stopped".
    std::int32_t errorCode = 0; ///< Why it failed, the server's number; 0 none.
    std::string detail;         ///< What it is doing, or the words for the failure; may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API BatchProgressValueData : IInboundData {
    BatchProgressValue batchProgressValue;
    NEXWIRE_JSON
};

/// Which log entries of a release server are wanted.
struct NEXWIRE_API DeviceLogQueryCondition : IInboundData {
    std::string beginTime;
    std::string endTime;
    std::string majorType;        ///< One of: "all", "alarm", "exception", "operation", "information".
    std::string minorType;        ///< Server vocabulary; empty: any.
    std::string userName;         ///< Who did it; empty: anybody.
    std::int32_t maxResults = 40; ///< Entries on a page, 1 to 200.
    NEXWIRE_JSON
};

/// A log entry of a release server.
struct NEXWIRE_API DeviceLogQueryResult : IInboundData {
    std::string logTime;
    std::string majorType; ///< As in `DeviceLogQueryCondition`.
    std::string minorType;
    std::string userName;      ///< Empty: the server itself.
    std::string remoteAddress; ///< From where.
    std::string objectName;    ///< Terminal, program or material that it is about; may be empty.
    std::string description;
    NEXWIRE_JSON
};

/// How to reach a terminal or server from afar.
struct NEXWIRE_API RemoteConnectParam : IInboundData {
    std::string terminalGuid;  ///< Empty: the server itself.
    std::string address;       ///< Where the connection is to come to.
    std::int32_t port = 0;     ///< 1 to 65535.
    std::int32_t duration = 0; ///< Until it closes by itself, 0 to 1440 min; 0: when it is closed.
    NEXWIRE_JSON
};

} // namespace protocol
