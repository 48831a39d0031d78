#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// Ports that the platform's services listen at.
struct NEXWIRE_API ServerPort : IReturnData {
    std::int32_t httpPort = 0;    ///< 1 to 65535; 0: closed.
    std::int32_t httpsPort = 0;   ///< 1 to 65535; 0: closed.
    std::int32_t messagePort = 0; ///< Notifications to clients. 1 to 65535; 0: closed.
    std::int32_t streamPort = 0;  ///< Live and recorded video. 1 to 65535; 0: closed.
    std::int32_t alarmPort = 0;   ///< Alarms from devices. 1 to 65535; 0: closed.
    std::int32_t storagePort = 0; ///< Pictures and files. 1 to 65535; 0: closed.
    NEXWIRE_JSON
};

struct NEXWIRE_API ServerPortData : IReturnData {
    ServerPort serverPort;
    NEXWIRE_JSON
};

/// Has the server restart.
struct NEXWIRE_API Reboot : IInboundData {
    std::int32_t delay = 0; ///< Until it begins. 0 to 3600 s.
    bool force = false;     ///< Does not wait for running tasks.
    std::string reason;     ///< For the log. Up to 256 characters.
    NEXWIRE_JSON
};

/// Language of the server's own texts.
struct NEXWIRE_API Setserverlang : IInboundData {
    std::string language; ///< Required. For example: "en-US", "zh-CN", "de-DE".
    NEXWIRE_JSON
};

/// Look of the clients.
struct NEXWIRE_API SkinInfo : IInboundData {
    std::string skinName;     ///< Required. For example: "dark", "light".
    std::string accentColor;  ///< "#RRGGBB"; empty: that of the skin.
    std::int32_t scale = 100; ///< Size of texts and controls. 50 to 300 %.
    bool highContrast = false;
    NEXWIRE_JSON
};

/// A file that goes out with a mail.
struct NEXWIRE_API EmailAttachment : IInboundData {
    std::string fileName; ///< As the receiver sees it.
    std::string filePath; ///< Where the server finds it.
    NEXWIRE_JSON
};

/// A mail for the server to send by its own account.
struct NEXWIRE_API Email : IInboundData {
    std::vector<std::string> receiverList; ///< Addresses. Required. 1 to 64 elements.
    std::vector<std::string> copyList;     ///< Addresses that get a copy. Up to 64 elements.
    std::string subject;                   ///< Up to 256 characters.
    std::string content;
    bool isHtml = false; ///< The content is HTML.
    std::vector<EmailAttachment> attachmentList;
    NEXWIRE_JSON
};

/// A report on the state of the client, as a text that only the server reads.
struct NEXWIRE_API Dclog : IInboundData {
    std::string report;
    NEXWIRE_JSON
};

struct NEXWIRE_API DclogRsp : IReturnData {
    std::string dclogGuid;   ///< Identifier that the report is kept under.
    std::string receiveTime; ///< "2026-03-01T08:00:00+00:00".
    std::int64_t size = 0;   ///< What was taken in, bytes.
    NEXWIRE_JSON
};

struct NEXWIRE_API DclogRspData : IReturnData {
    DclogRsp dclogRsp;
    NEXWIRE_JSON
};

/// A sentence to fill a text template with, and what to fill it with.
struct NEXWIRE_API TemplateTest : IInboundData {
    std::string templateName;           ///< Template to try. Required.
    std::string language;               ///< As in `Setserverlang`; empty: that of the server.
    std::vector<std::string> valueList; ///< Values for its places, in order.
    NEXWIRE_JSON
};

struct NEXWIRE_API TemplateTestRsp : IReturnData {
    std::string templateName;
    std::string content;                   ///< The template with its places filled.
    std::vector<std::string> unfilledList; ///< Places that no value was given for.
    NEXWIRE_JSON
};

struct NEXWIRE_API TemplateTestRspData : IReturnData {
    TemplateTestRsp templateTestRsp;
    NEXWIRE_JSON
};

} // namespace protocol
