#pragma once

#include "protocol/Common.h"

// Signage: materials, what is published of them, and the terminals that show it. Times are ISO 8601 texts,
// "2026-03-01T08:00:00+00:00".

namespace protocol {

/// A material: a file or text that terminals show. Spelled Matrial.
struct NEXWIRE_API MatrialResource : IInboundData {
    std::string name;           ///< Up to 64 characters.
    std::string materialType;   ///< One of: "picture", "video", "audio", "text", "webPage".
    std::string fileName;       ///< With its ending; empty for texts and pages.
    std::string fileData;       ///< The file, Base64; empty for texts and pages.
    std::string content;        ///< The text, or the page's address.
    std::int32_t duration = 10; ///< How long it stays, 1 to 86400 s.
    std::string remark;         ///< Up to 256 characters.
    NEXWIRE_JSON
};

/// The identifier of a new material.
struct NEXWIRE_API MatrialResourceAdded : IReturnData {
    std::string materialGuid;
    NEXWIRE_JSON
};

/// Which materials are wanted; empty texts do not narrow.
struct NEXWIRE_API MatrialResourceQueryCondition : IInboundData {
    std::string name;           ///< Part of the name.
    std::string materialType;   ///< As in `MatrialResource`; empty: any.
    bool withData = false;      ///< The files too, not only what is known of them.
    std::int32_t pageNo = 1;    ///< From 1.
    std::int32_t pageSize = 20; ///< 1 to 500.
    NEXWIRE_JSON
};

/// A material as the platform keeps it.
struct NEXWIRE_API MatrialResourceInfo : IReturnData {
    std::string materialGuid;
    std::string name;
    std::string materialType; ///< As in `MatrialResource`.
    std::string fileName;
    std::string fileData;
    std::string content;
    std::int32_t duration = 0; ///< Seconds.
    std::int64_t fileSize = 0; ///< Bytes.
    std::string remark;
    std::string modifyTime;
    NEXWIRE_JSON
};

/// Materials, a page of them. Spelled Respone.
struct NEXWIRE_API MatrialResourceRespone : IReturnData {
    std::int32_t total = 0; ///< Materials that the condition selects.
    std::int32_t pageNo = 0;
    std::int32_t pageSize = 0;
    std::vector<MatrialResourceInfo> matrialResourceList;
    NEXWIRE_JSON
};

/// A material's place in what is published.
struct NEXWIRE_API PublishItem : IInboundData {
    std::string materialGuid;
    std::int32_t duration = 0; ///< 0 to 86400 s; 0: as the material says.
    std::string region;        ///< Part of the screen. One of: "full", "top", "bottom", "left", "right".
    NEXWIRE_JSON
};

/// What is to be published, and on which terminals.
struct NEXWIRE_API CachePublishData : IInboundData {
    std::string name;        ///< Up to 64 characters.
    std::string publishMode; ///< One of: "schedule" by the clock, "insert" at once, "clear" everything off.
    std::string beginTime;   ///< Empty: at once.
    std::string endTime;     ///< Empty: until something else is published.
    std::vector<std::string> deviceGuidList;   ///< Release servers.
    std::vector<std::string> terminalGuidList; ///< Empty: all terminals of the servers.
    std::vector<PublishItem> itemList;         ///< In the order in which they are shown.
    NEXWIRE_JSON
};

/// What became of it: a result for each server.
struct NEXWIRE_API CachePublishDataResult : IReturnData {
    std::string publishGuid;
    std::int64_t totalSize = 0; ///< Bytes that each terminal will load.
    std::vector<OperationResult> resultList;
    NEXWIRE_JSON
};

/// How far one terminal has come, with a release or an upgrade.
struct NEXWIRE_API TerminalProgress : IReturnData {
    std::string terminalGuid;
    std::string terminalName;
    std::int32_t progress = 0;  ///< 0 to 100 %.
    std::string state;          ///< One of: "waiting", "running", "done", "failed", "stopped".
    std::int32_t errorCode = 0; ///< Why it failed, the terminal's number; 0 none.
    NEXWIRE_JSON
};

/// How far a release has come.
struct NEXWIRE_API PublicReleaseProgress : IReturnData {
    std::int32_t progress = 0; ///< Over all terminals, 0 to 100 %.
    std::string state;         ///< One of: "waiting", "running", "done", "failed", "stopped".
    std::vector<TerminalProgress> terminalProgressList;
    NEXWIRE_JSON
};

/// New firmware for terminals.
struct NEXWIRE_API TerminalUpgrade : IInboundData {
    std::string packageGuid; ///< Package that the platform holds.
    std::string packageType; ///< One of: "firmware", "application".
    std::string version;
    std::vector<std::string> terminalGuidList; ///< Empty: all terminals of the server.
    bool force = false;                        ///< Also where the version is the same or newer.
    NEXWIRE_JSON
};

/// How far an upgrade has come.
struct NEXWIRE_API TerminalUpgradeProgress : IReturnData {
    std::int32_t progress = 0; ///< Over all terminals, 0 to 100 %.
    std::string state;         ///< One of: "waiting", "running", "done", "failed", "stopped".
    std::vector<TerminalProgress> terminalProgressList;
    NEXWIRE_JSON
};

/// Of which terminal a picture is wanted.
struct NEXWIRE_API TerminalScreenShot : IInboundData {
    std::string terminalGuid;
    std::string pictureFormat; ///< One of: "jpeg", "png".
    std::int32_t width = 0;    ///< 0 to 7680 pixels; 0: as the screen.
    std::int32_t height = 0;   ///< 0 to 4320 pixels; 0: as the screen.
    NEXWIRE_JSON
};

struct NEXWIRE_API TerminalScreenShotReply : IReturnData {
    std::string screenShot; ///< The picture, Base64.
    NEXWIRE_JSON
};

/// Ports on which a server works. 1 to 65535; 0: not used.
struct NEXWIRE_API PortConfig : IInboundData {
    std::int32_t httpPort = 0;
    std::int32_t httpsPort = 0;
    std::int32_t streamPort = 0;   ///< Live pictures.
    std::int32_t alarmPort = 0;    ///< Where devices report alarms to.
    std::int32_t registerPort = 0; ///< Where devices register by themselves.
    std::int32_t pictureStoragePort = 0;
    NEXWIRE_JSON
};

/// The access key that all devices share on the Corvid protocol.
struct NEXWIRE_API GeneralCorvidKey : IInboundData {
    std::string corvidKey; ///< 8 to 32 characters.
    bool enable = false;   ///< Devices without a key of their own use it.
    NEXWIRE_JSON
};

/// What became of a new access key.
struct NEXWIRE_API ModifyGeneralCorvidKeyResult : IReturnData {
    std::string status;                      ///< "success", or the reason.
    std::vector<OperationResult> resultList; ///< Devices that did not take it.
    NEXWIRE_JSON
};

} // namespace protocol
