#pragma once

#include "protocol/Personnel/PersonGroup.h"

namespace nexwire {

// Person groups, their numbers on devices, and the authorisation groups that need several of them to pass a door.
//
// All functions of this file block until the answer is there and may be called from any thread. They return true when
// the answer was a readable envelope, whatever its code; a result is untouched on false.

class NEXWIRE_API CAddPerGroup {
public:
    /// Creates a group. A name that exists is refused.
    static bool request(protocol::PerGroupResultListData& result, const protocol::PerGroupAddReq& group);
};

class NEXWIRE_API CDelPerGroup {
public:
    /// Removes groups: one result each. A group that an authorisation group uses is refused.
    static bool request(protocol::PerGroupDelRspListData& result, const protocol::PerGroupDelReq& groups);
};

class NEXWIRE_API CModPerGroup {
public:
    /// Replaces the group that `group.perGroupGuid` names.
    static bool request(protocol::PerGroupResultData& result, const protocol::PerGroupModReq& group);
};

class NEXWIRE_API CSearchPerGroup {
public:
    /// The groups that fit a condition, with their members.
    static bool request(protocol::PerGroupQueryRspListData& result, const protocol::PerGroupQueryReq& condition);
};

class NEXWIRE_API CGetPerGroupMember {
public:
    /// The groups that a device has, with their numbers there.
    static bool request(protocol::PerGroupMemberInfoDataRspData& result, const std::string& deviceGuid);
};

class NEXWIRE_API CSetPerGroupMember {
public:
    /// Replaces the groups of the device that `groups.deviceGuid` names. Where the answer carries groups, `groups`
    /// receives them: those that were new have their numbers then.
    static bool request(protocol::PerGroupMemberInfoData& groups);
};

class NEXWIRE_API CGetPerBelongGroupNum {
public:
    /// In which groups of a device persons are. `persons` names them and receives the groups.
    static bool request(protocol::UserBelongGroupNumIInboundData& persons, const std::string& deviceGuid);
};

class NEXWIRE_API CAddAuthGroup {
public:
    /// Creates a group. A name that exists is refused.
    static bool request(protocol::AuthGroupResultListData& result, const protocol::AuthGroupAddReq& group);
};

class NEXWIRE_API CDelAuthGroup {
public:
    /// Removes groups: one result each.
    static bool request(protocol::AuthGroupDelRspListData& result, const protocol::AuthGroupDelReq& groups);
};

class NEXWIRE_API CModAuthGroup {
public:
    /// Replaces the group that `group.authGroupGuid` names.
    static bool request(protocol::AuthGroupResultData& result, const protocol::AuthGroupModReq& group);
};

class NEXWIRE_API CSearchAuthGroup {
public:
    /// The groups that fit a condition.
    static bool request(protocol::AuthGroupQueryRspListData& result, const protocol::AuthGroupQueryReq& condition);
};

} // namespace nexwire
