#pragma once

#include "protocol/Framework/Group.h"

// Resource groups and their elements. Groups are made, changed and filled by the platform's own administration; the
// seven functions for that are declared for callers that name them, send nothing and are false. Threads, truth and
// errors of the others: see Server.h.

namespace nexwire {

/// Groups, in any depth.
class NEXWIRE_API CGetAllGroupsComm {
public:
    static bool request(protocol::GroupListData& result, const protocol::QueryGroupCondition& condition);
};

/// One group; the result is the group itself.
class NEXWIRE_API CGetSingleGroupComm {
public:
    static bool request(protocol::Group& result, const std::string& groupGuid,
                        const protocol::QueryGroupCondition& condition);
};

class NEXWIRE_API CAddGroupComm {
public:
    /// Sends nothing: groups are added by the platform's administration.
    static bool request(protocol::GroupAddData& result, const protocol::GroupAdd& group);
};

class NEXWIRE_API CModifyGroupComm {
public:
    /// Sends nothing: groups are changed by the platform's administration.
    static bool request(protocol::GroupModifyResult& result, const std::string& groupGuid,
                        const protocol::GroupModify& group);
};

class NEXWIRE_API CDeleteGroupsComm {
public:
    /// Sends nothing: groups are removed by the platform's administration.
    static bool request(protocol::GroupDeleteResultListData& result, protocol::GroupDelete& groups);
};

class NEXWIRE_API CResourceToGroupComm {
public:
    /// Sends nothing: groups are filled by the platform's administration.
    static bool request(protocol::ResourceToGroupResultListData& result, const std::string& groupGuid,
                        protocol::ResourceToGroup& resources);
};

class NEXWIRE_API CResourceMoveToNewGroupComm {
public:
    /// Sends nothing: resources are moved by the platform's administration.
    static bool request(protocol::ResourceToGroupResultListData& result, const std::string& groupGuid,
                        const protocol::ResourceToGroup& resources);
};

/// A page of the elements of a group.
class NEXWIRE_API CGetGroupElementsComm {
public:
    static bool request(protocol::QueryElementsResult& result, const std::string& groupGuid,
                        const protocol::QueryElementsCondition& condition);
};

class NEXWIRE_API CGetGroupElementsByDeviceComm {
public:
    /// Sends nothing: elements are read by `CGetGroupElementsComm`.
    static bool request(protocol::QueryElementsByDeviceResult& result, const std::string& groupGuid,
                        const protocol::QueryElementsCondition& condition);
};

class NEXWIRE_API CDeleteGroupElementsComm {
public:
    /// Sends nothing: elements are removed by the platform's administration.
    static bool request(protocol::ElementDeleteResultListData& result, const std::string& groupGuid,
                        protocol::ElementDelete& elements);
};

/// One element of a group.
class NEXWIRE_API CGetGroupSingleElementComm {
public:
    static bool request(protocol::ElementData& result, const std::string& groupGuid, const std::string& elementGuid,
                        const protocol::QuerySingleElementCondition& condition);
};

/// The same on the executor's slower worker.
class NEXWIRE_API CGetGroupSingleElementCommBySlowThread {
public:
    static bool request(protocol::ElementData& result, const std::string& groupGuid, const std::string& elementGuid,
                        const protocol::QuerySingleElementCondition& condition);
};

/// Changes one element of a group.
class NEXWIRE_API CModifyGroupSingleElementComm {
public:
    static bool request(protocol::ElementModifyResult& result, const std::string& groupGuid,
                        const std::string& elementGuid, const protocol::ElementModify& element);
};

/// Sets the state that the elements of a group show.
class NEXWIRE_API CSyncGroupAndElement {
public:
    /// @param elementType    only elements of this type, as in `Element`; 0: all.
    /// @param elementStatus  0 unknown, 1 online, 2 offline, 3 in alarm, 4 disabled.
    /// @param includeSub     elements of the groups below, too.
    static bool request(const std::string& groupGuid, int elementType, int elementStatus, bool includeSub);
};

/// Takes devices into a group, with their channels, doors, inputs and outputs.
class NEXWIRE_API CDevice2GroupComm {
public:
    static bool request(protocol::GroupImportResultData& result, const protocol::GroupImport& devices);
};

/// The groups that hold a resource.
class NEXWIRE_API CGetGroupInfo {
public:
    static bool request(protocol::GroupListData& result, const protocol::QueryGroupByResourceCondition& condition);
};

/// An element with its full description; the result is the element itself.
class NEXWIRE_API CQueryElementInfoInternal {
public:
    static bool request(protocol::Element& result, const std::string& elementGuid);
    /// The same, looked for in one group only.
    static bool request(protocol::Element& result, const std::string& groupGuid, const std::string& elementGuid);
};

} // namespace nexwire
