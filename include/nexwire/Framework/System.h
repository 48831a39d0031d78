#pragma once

#include "protocol/Framework/System.h"

// Settings that hold for the whole platform. Threads, truth and errors: see Server.h.

namespace nexwire {

/// Where the framework keeps its configuration.
class NEXWIRE_API CGetSystemConfigFile {
public:
    static bool request(protocol::ConfigFilePathData& result);
};

/// Where the framework saves files of its users.
class NEXWIRE_API CGetSystemSaveFilePath {
public:
    static bool request(protocol::FilePathData& result);
};

/// Part of the world whose cloud the platform uses.
class NEXWIRE_API CGetSystemCloudP2PRegion {
public:
    static bool request(protocol::CloudP2PRegionData& result);
};

/// General settings, read and written.
class NEXWIRE_API CSystemServerConfig {
public:
    static bool request(protocol::SystemServerConfigData& result);
    static bool request(const protocol::SystemConfigAdd& config);
};

/// How clients write dates and times.
class NEXWIRE_API CGetDateTimeFormat {
public:
    static bool request(protocol::DateTimeFormatData& result);
};

/// Whether data of persons is protected.
class NEXWIRE_API CGetSystemEnableGDPR {
public:
    static bool request(protocol::EnableGDPRData& result);
};

/// Whether data of persons may be exported.
class NEXWIRE_API CGetSystemEnableExportPersonInfor {
public:
    static bool request(protocol::ExportPersonInforCfgData& result);
};

} // namespace nexwire
