#pragma once

#include "protocol/Common.h"

// Who counts as the first person of the day at a door; what such a person starts there is a setting of the door
// (`firstPersonMode` of `AcsDoorParamCfg`). Download states are server vocabulary, carried as they are.

namespace protocol {

/// A person who is to count as first person at a door.
struct NEXWIRE_API FirstPersonParam : IInboundData {
    std::string deviceGuid; ///< Device that the door belongs to.
    std::string doorGuid;
    std::int32_t doorNo = 0; ///< Number of the door on its device, from 1.
    std::string personnelGuid;
    std::string personnelNo; ///< Number the person is known by, for example on a badge.
    std::string personnelName;
    NEXWIRE_JSON
};

/// Entries to add.
struct NEXWIRE_API FirstPersonAddParam : IInboundData {
    std::vector<FirstPersonParam> firstPersonParamList;
    NEXWIRE_JSON
};

/// What became of one entry.
struct NEXWIRE_API FirstPersonAddReturn : IReturnData {
    std::string guid; ///< Of the new entry; empty when it was refused.
    std::string doorGuid;
    std::string personnelGuid;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API FirstPersonAddReturnListData : IReturnData {
    std::vector<FirstPersonAddReturn> firstPersonAddReturnList;
    NEXWIRE_JSON
};

/// Entries to remove.
struct NEXWIRE_API FirstPersonRemoveList : IInboundData {
    std::vector<std::string> guidList; ///< GUIDs of entries, not of persons.
    NEXWIRE_JSON
};

struct NEXWIRE_API FirstPersonRemoveResultListData : IReturnData {
    std::vector<OperationResult> firstPersonRemoveResultList;
    NEXWIRE_JSON
};

/// Which entries are wanted.
struct NEXWIRE_API FirstPersonQueryCondition : IInboundData {
    std::int32_t downStatus = -1; ///< Download state; -1: any.
    std::string personnelName;    ///< Part of the name; empty: any.
    std::string personnelNo;      ///< Empty: any.
    NEXWIRE_JSON
};

/// Question for the entries of a door.
struct NEXWIRE_API FirstPersonCondition : IInboundData {
    bool isQuery = false; ///< True: narrow by the filter below.
    FirstPersonQueryCondition firstPersonFilterCondition;
    NEXWIRE_JSON
};

/// An entry as the platform keeps it.
struct NEXWIRE_API FirstPersonInfo : IReturnData {
    std::string guid;
    std::string deviceGuid;
    std::string doorGuid;
    std::int32_t doorNo = 0; ///< Number of the door on its device, from 1.
    std::string personnelGuid;
    std::string personnelNo;
    std::string personnelName;
    std::int32_t downStatus = 0; ///< Whether the device has it yet.
    std::int32_t errorCode = 0;  ///< 0, or why the download failed.
    std::string errorMsg;
    NEXWIRE_JSON
};

struct NEXWIRE_API FirstPersonQueryResultRsp : IReturnData {
    std::string doorGuid;
    std::vector<FirstPersonInfo> firstPersonInfoList;
    NEXWIRE_JSON
};

struct NEXWIRE_API FirstPersonQueryResultRspData : IReturnData {
    FirstPersonQueryResultRsp firstPersonQueryResultRsp;
    NEXWIRE_JSON
};

} // namespace protocol
