#pragma once

#include "protocol/Framework/Server.h"

// The platform's server as a whole. All functions block until the answer is there and may be called from any thread.
// They return true when the answer was a readable envelope, whatever its code; a result is untouched on false.

namespace nexwire {

/// The ports that the server's services listen at.
class NEXWIRE_API CGetServerPortCommon {
public:
    static bool request(protocol::ServerPortData& result);
};

/// Restarts the server. The connection may break before the answer comes; the call is false then.
class NEXWIRE_API CFrameworkServerReboot {
public:
    static bool request(const protocol::Reboot& param);
};

/// Stops the server.
class NEXWIRE_API CFrameworkServerClose {
public:
    static bool request();
};

/// Sets the language of the server's own texts.
class NEXWIRE_API CSetServerLang {
public:
    static bool request(const protocol::Setserverlang& param);
};

/// Tells the server which look the clients have.
class NEXWIRE_API CFrameworkServerSkinInfo {
public:
    static bool request(const protocol::SkinInfo& param);
};

/// Has the server send a mail. True says that it took the mail, not that it arrived.
class NEXWIRE_API CSendEmail {
public:
    static bool request(const protocol::Email& mail);
};

/// Hands the server a report on the state of the client.
class NEXWIRE_API CReportDclogCommon {
public:
    /// @param report    text that only the server reads.
    /// @param internal  true for components of the platform, false for clients.
    static bool request(protocol::DclogRspData& result, const std::string& report, bool internal);
};

/// Tries a text template of the server with given values.
class NEXWIRE_API CTemplateComm {
public:
    static bool request(protocol::TemplateTestRspData& result, const protocol::TemplateTest& param);
};

} // namespace nexwire
