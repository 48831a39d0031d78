#pragma once

#include "protocol/Common.h"

// Groups of persons for access control. A person group is a set of persons with numbers on devices; an authorisation
// group needs members of several person groups to pass a door together.

namespace protocol {

// ---- Person groups ----

/// A person in a group.
struct NEXWIRE_API PerGroupMember : IInboundData {
    std::string personnelGuid;
    std::string personNo;
    std::string personName;
    NEXWIRE_JSON
};

struct NEXWIRE_API PerGroupAddReq : IInboundData {
    std::string perGroupName; ///< Unique. 1 to 64 characters.
    std::string description;
    std::vector<PerGroupMember> perGroupMemberList;
    NEXWIRE_JSON
};

/// A change of a group; `perGroupGuid` also goes into the path.
struct NEXWIRE_API PerGroupModReq : IInboundData {
    std::string perGroupGuid; ///< Required.
    std::string perGroupName; ///< 1 to 64 characters.
    std::string description;
    std::vector<PerGroupMember> perGroupMemberList; ///< All members as they are to be.
    NEXWIRE_JSON
};

struct NEXWIRE_API PerGroupDelReq : IInboundData {
    std::vector<std::string> perGroupGuidList; ///< Required.
    NEXWIRE_JSON
};

struct NEXWIRE_API PerGroupQueryReq : IInboundData {
    std::string perGroupGuid;  ///< Empty: any.
    std::string perGroupName;  ///< Part of a name; empty: any.
    std::string personnelGuid; ///< Groups that this person is in; empty: any.
    NEXWIRE_JSON
};

/// A new or changed group.
struct NEXWIRE_API PerGroupResult : IReturnData {
    std::string perGroupGuid;
    std::string perGroupName;
    std::vector<std::string> deviceGuidList; ///< Devices that have to be written anew.
    std::int32_t resultCode = 0;             ///< 0 done, otherwise the server's error number.
    std::string resultMsg;                   ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API PerGroupResultData : IReturnData {
    PerGroupResult perGroupResult;
    NEXWIRE_JSON
};

struct NEXWIRE_API PerGroupResultListData : IReturnData {
    std::vector<PerGroupResult> perGroupResultList;
    NEXWIRE_JSON
};

/// What became of one removal; a group that an authorisation group uses is refused.
struct NEXWIRE_API PerGroupDelRsp : IReturnData {
    std::string perGroupGuid;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API PerGroupDelRspListData : IReturnData {
    std::vector<PerGroupDelRsp> perGroupDelRspList;
    NEXWIRE_JSON
};

/// A group as the platform keeps it.
struct NEXWIRE_API PerGroupQueryRsp : IReturnData {
    std::string perGroupGuid;
    std::string perGroupName;
    std::string description;
    std::vector<PerGroupMember> perGroupMemberList;
    bool isUsed = false; ///< At least one authorisation group needs it.
    NEXWIRE_JSON
};

struct NEXWIRE_API PerGroupQueryRspListData : IReturnData {
    std::vector<PerGroupQueryRsp> perGroupQueryRspList;
    NEXWIRE_JSON
};

// ---- Groups on a device ----

/// A group's number on a device and who is in it there.
struct NEXWIRE_API PerGroupMemberInfo : IInboundData {
    std::int32_t groupNo = 0; ///< On the device. From 1; 0: not there.
    std::string perGroupGuid;
    std::string perGroupName;
    bool enable = true; ///< The device heeds the group.
    std::vector<PerGroupMember> perGroupMemberList;
    NEXWIRE_JSON
};

/// The groups that a device is to have; `deviceGuid` also goes into the path.
struct NEXWIRE_API PerGroupMemberInfoData : IInboundData {
    std::string deviceGuid; ///< Required.
    std::vector<PerGroupMemberInfo> perGroupMemberInfoList;
    NEXWIRE_JSON
};

/// The groups that a device has.
struct NEXWIRE_API PerGroupMemberInfoDataRsp : IReturnData {
    std::string deviceGuid;
    std::vector<PerGroupMemberInfo> perGroupMemberInfoList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PerGroupMemberInfoDataRspData : IReturnData {
    PerGroupMemberInfoDataRsp perGroupMemberInfoDataRsp;
    NEXWIRE_JSON
};

/// In which group of a device a person is.
struct NEXWIRE_API UserBelongGroupNum : IInboundData {
    std::string personnelGuid;
    std::string personNo;
    std::vector<std::int32_t> groupNoList; ///< Filled by the answer. From 1. Up to 4 elements.
    NEXWIRE_JSON
};

/// Persons whose groups on a device are asked for; comes back with the groups.
struct NEXWIRE_API UserBelongGroupNumIInboundData : IInboundData {
    std::vector<UserBelongGroupNum> userBelongGroupNumList;
    NEXWIRE_JSON
};

// ---- Authorisation groups ----

/// How many of a person group have to be there.
struct NEXWIRE_API AuthGroupMember : IInboundData {
    std::string perGroupGuid;
    std::string perGroupName;    ///< Filled in answers.
    std::int32_t personNum = 1;  ///< Persons of the group who must identify. 1 to 16.
    std::int32_t sequenceNo = 0; ///< Turn of the group; 0: in any order.
    NEXWIRE_JSON
};

struct NEXWIRE_API AuthGroupAddReq : IInboundData {
    std::string authGroupName; ///< Unique. 1 to 64 characters.
    std::string deviceGuid;
    std::int32_t doorNo = 1;                          ///< Of the device. From 1.
    std::string planInfoGuid;                         ///< When the group is needed; empty: always.
    std::int32_t intervalTime = 10;                   ///< Between two persons at most. 1 to 255 s.
    bool remoteConfirm = false;                       ///< An operator has to agree besides.
    std::vector<AuthGroupMember> authGroupMemberList; ///< Up to 8 elements.
    NEXWIRE_JSON
};

/// A change of a group; `authGroupGuid` also goes into the path.
struct NEXWIRE_API AuthGroupModReq : IInboundData {
    std::string authGroupGuid; ///< Required.
    std::string authGroupName; ///< 1 to 64 characters.
    std::string deviceGuid;
    std::int32_t doorNo = 1;                          ///< Of the device. From 1.
    std::string planInfoGuid;                         ///< When the group is needed; empty: always.
    std::int32_t intervalTime = 10;                   ///< Between two persons at most. 1 to 255 s.
    bool remoteConfirm = false;                       ///< An operator has to agree besides.
    std::vector<AuthGroupMember> authGroupMemberList; ///< All of them as they are to be. Up to 8 elements.
    NEXWIRE_JSON
};

struct NEXWIRE_API AuthGroupDelReq : IInboundData {
    std::vector<std::string> authGroupGuidList; ///< Required.
    NEXWIRE_JSON
};

struct NEXWIRE_API AuthGroupQueryReq : IInboundData {
    std::string authGroupGuid; ///< Empty: any.
    std::string authGroupName; ///< Part of a name; empty: any.
    std::string deviceGuid;    ///< Empty: any.
    std::int32_t doorNo = 0;   ///< Of the device. From 1; 0: any.
    NEXWIRE_JSON
};

/// A new or changed group.
struct NEXWIRE_API AuthGroupResult : IReturnData {
    std::string authGroupGuid;
    std::string authGroupName;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API AuthGroupResultData : IReturnData {
    AuthGroupResult authGroupResult;
    NEXWIRE_JSON
};

struct NEXWIRE_API AuthGroupResultListData : IReturnData {
    std::vector<AuthGroupResult> authGroupResultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API AuthGroupDelRsp : IReturnData {
    std::string authGroupGuid;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API AuthGroupDelRspListData : IReturnData {
    std::vector<AuthGroupDelRsp> authGroupDelRspList;
    NEXWIRE_JSON
};

/// A group as the platform keeps it.
struct NEXWIRE_API AuthGroupQueryRsp : IReturnData {
    std::string authGroupGuid;
    std::string authGroupName;
    std::string deviceGuid;
    std::string deviceName;
    std::int32_t doorNo = 0;       ///< Of the device. From 1.
    std::string planInfoGuid;      ///< When the group is needed; empty: always.
    std::int32_t intervalTime = 0; ///< Between two persons at most. 1 to 255 s.
    bool remoteConfirm = false;
    std::vector<AuthGroupMember> authGroupMemberList;
    NEXWIRE_JSON
};

struct NEXWIRE_API AuthGroupQueryRspListData : IReturnData {
    std::vector<AuthGroupQueryRsp> authGroupQueryRspList;
    NEXWIRE_JSON
};

} // namespace protocol
