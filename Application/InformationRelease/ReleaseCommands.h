#pragma once

namespace nexwire {

/// What release servers are told on the command channels.
enum ReleaseCommand : int {
    kBasicCapability = 302,
    kSecurityCapability = 303,
    kReboot = 2221,
    kRestoreDefault = 2222,
    kUpgrade = 9202,
    kFindLogs = 9234,

    // Assumptions: gateways number these differently. Servers of another numbering need another value here, and
    // nothing else.
    kUploadFile = 9241,
    kDownloadFile = 9242,
    kTransferProgress = 9243,
    kRemoteConnect = 9244,
};

} // namespace nexwire
