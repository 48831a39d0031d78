#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// Entries of the log that are asked for; what is empty or 0 does not narrow. Spelled so on the wire.
struct NEXWIRE_API LogCodition : IInboundData {
    std::string beginTime; ///< "2026-03-01T08:00:00+00:00".
    std::string endTime;   ///< Not before beginTime, included.
    std::vector<std::string> userNameList;
    std::vector<std::int32_t>
        logTypeList; ///< One of: 1 sign-in, 2 operation, 3 configuration, 4 device, 5 alarm, 6 system.
    std::vector<std::string> moduleList; ///< For example: "framework", "accessController", "video".
    std::int32_t logResult = 0;          ///< One of: 0 any, 1 done, 2 failed.
    std::string keyword;                 ///< Part of the content.
    bool ascending = false;              ///< Oldest first.
    std::int32_t pageNo = 1;             ///< From 1.
    std::int32_t pageSize = 50;          ///< 1 to 1000.
    NEXWIRE_JSON
};

/// An entry to write.
struct NEXWIRE_API Log : IInboundData {
    std::string logTime;  ///< "2026-03-01T08:00:00+00:00"; empty: when it arrives.
    std::string userName; ///< Empty: the signed-in user.
    std::string clientAddress;
    std::int32_t logType = 2; ///< One of: 1 sign-in, 2 operation, 3 configuration, 4 device, 5 alarm, 6 system.
    std::string moduleName;   ///< For example: "framework", "accessController", "video".
    std::string operation;    ///< What was done, in a word or two.
    std::string resourceGuid; ///< What it was done to, may be empty.
    std::string resourceName;
    std::int32_t logResult = 1; ///< One of: 1 done, 2 failed.
    std::string content;        ///< Required. May be enciphered: see `CSearchFilterLogsComm::decryption`.
    NEXWIRE_JSON
};

/// An entry as the platform keeps it.
struct NEXWIRE_API LogInfo : IReturnData {
    std::string logGuid;
    std::string logTime; ///< "2026-03-01T08:00:00+00:00".
    std::string userName;
    std::string clientAddress;
    std::int32_t logType = 0; ///< One of: 1 sign-in, 2 operation, 3 configuration, 4 device, 5 alarm, 6 system.
    std::string moduleName;
    std::string operation;
    std::string resourceGuid;
    std::string resourceName;
    std::int32_t logResult = 0; ///< One of: 1 done, 2 failed.
    std::string content;        ///< May be enciphered: see `CSearchFilterLogsComm::decryption`.
    NEXWIRE_JSON
};

/// A page of the log, and by what it can be narrowed.
struct NEXWIRE_API LogFilterConditionSupported : IReturnData {
    std::int32_t total = 0; ///< Entries on all pages together.
    std::int32_t pageNo = 0;
    std::vector<LogInfo> logInfoList;
    std::vector<std::string> userNameList; ///< Users that there are entries of.
    std::vector<std::int32_t> logTypeList; ///< Types that there are entries of, as in `LogInfo`.
    std::vector<std::string> moduleList;   ///< Modules that there are entries of.
    std::string earliestTime;              ///< Of all entries, "2026-03-01T08:00:00+00:00".
    std::string latestTime;                ///< Of all entries, "2026-03-01T08:00:00+00:00".
    std::string backupPath;                ///< File that a backup was written to, on the server; otherwise empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API LogFilterConditionSupportedData : IReturnData {
    LogFilterConditionSupported logFilterConditionSupported;
    NEXWIRE_JSON
};

} // namespace protocol
