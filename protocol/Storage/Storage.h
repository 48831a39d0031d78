#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// Files of the storage server that are to be reached over HTTP.
struct NEXWIRE_API FilePathMapUrl : IInboundData {
    std::string storageServerGuid;         ///< Empty: the server that the platform chooses.
    std::vector<std::string> filePathList; ///< On the storage server. Required.
    std::int32_t validMinutes = 60;        ///< How long the addresses hold. 1 to 10080 min.
    NEXWIRE_JSON
};

struct NEXWIRE_API FileUrl : IReturnData {
    std::string filePath;
    std::string url;           ///< Empty: there is no such file.
    std::string expireTime;    ///< "2026-03-01T08:00:00+00:00".
    std::int64_t fileSize = 0; ///< Bytes.
    NEXWIRE_JSON
};

struct NEXWIRE_API FilePathMapUrlResult : IReturnData {
    std::vector<FileUrl> fileUrlList; ///< In the order of the request.
    NEXWIRE_JSON
};

/// Addresses that are not needed any more; spelled so on the wire.
struct NEXWIRE_API DeletefilePathMapUrl : IInboundData {
    std::vector<std::string> urlList; ///< Required.
    NEXWIRE_JSON
};

struct NEXWIRE_API StorageDisk : IReturnData {
    std::string diskName;
    std::int64_t totalSpace = 0; ///< Megabytes.
    std::int64_t freeSpace = 0;  ///< Megabytes.
    std::int32_t diskState = 0;  ///< One of: 0 unknown, 1 in order, 2 full, 3 broken.
    std::int32_t diskUse = 0;    ///< One of: 0 none, 1 recordings, 2 pictures, 3 files.
    NEXWIRE_JSON
};

/// The server that keeps recordings, pictures and files.
struct NEXWIRE_API StorageServerInfo : IReturnData {
    std::string storageServerGuid;
    std::string storageServerName;
    std::string address;
    std::int32_t httpPort = 0;     ///< 1 to 65535; 0: closed.
    std::int32_t httpsPort = 0;    ///< 1 to 65535; 0: closed.
    std::int32_t serverStatus = 0; ///< One of: 0 unknown, 1 online, 2 offline.
    std::vector<StorageDisk> storageDiskList;
    NEXWIRE_JSON
};

} // namespace protocol
