#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol::personnelcommon {

/// An organisation as it is to be: a node of the tree that persons hang in.
struct NEXWIRE_API Organization : IInboundData {
    std::string guid;         ///< Given by the platform when empty; plays no part in a change.
    std::string name;         ///< Unique below one parent. 1 to 64 characters.
    std::string code;         ///< Short name for lists and files, may be empty.
    std::string parOrgGuid;   ///< Organisation above; empty: the root.
    std::int32_t orgType = 1; ///< One of: 1 staff, 2 visitors, 3 residents.
    std::int32_t orderNo = 0; ///< Place among its siblings, smallest first.
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API OrganizationsAddList : IInboundData {
    std::vector<Organization> organizationList;
    NEXWIRE_JSON
};

/// Organisations to remove. One that still has persons or organisations below it is refused.
struct NEXWIRE_API OrganizationsDelList : IInboundData {
    std::vector<std::string> guidList;
    NEXWIRE_JSON
};

/// An organisation as the platform keeps it, or what became of one.
struct NEXWIRE_API OrganizationInfo : IReturnData {
    std::string guid;
    std::string name;
    std::string code;
    std::string parOrgGuid;   ///< Empty: below nothing.
    std::string fullPath;     ///< Names from the root to this one, separated by "/".
    std::int32_t orgType = 1; ///< One of: 1 staff, 2 visitors, 3 residents.
    std::int32_t orderNo = 0;
    std::int32_t personNum = 0; ///< Persons in it, without those below.
    std::int32_t childNum = 0;  ///< Organisations directly below.
    std::string description;
    std::string createTime;      ///< ISO 8601, "2026-03-01T08:00:00+00:00".
    std::string modifyTime;      ///< ISO 8601.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API OrganizationInfoListData : IReturnData {
    std::vector<OrganizationInfo> organizationInfoList;
    NEXWIRE_JSON
};

/// Which organisations are asked for.
struct NEXWIRE_API QueryCondition : IInboundData {
    std::int32_t orgType = 0;   ///< One of: 0 any, 1 staff, 2 visitors, 3 residents.
    std::int32_t queryType = 0; ///< One of: 0 whole subtree, 1 directly below the parent.
    std::string name;           ///< Part of a name; empty: any.
    std::string componentId;    ///< Component of the platform that asks, for its own view of the tree; may be empty.
    std::string parOrgGuid;     ///< Organisation above; empty: the root.
    NEXWIRE_JSON
};

/// Persons that move into another organisation.
struct NEXWIRE_API ParentModification : IInboundData {
    std::vector<std::string> personnelGuidList; ///< Required.
    std::string oldOrgGuid;                     ///< Move only those who are still in it; empty: wherever they are.
    bool keepAccess = true;                     ///< Keeps what access groups give them.
    NEXWIRE_JSON
};

} // namespace protocol::personnelcommon
