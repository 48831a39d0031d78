#pragma once

#include "protocol/Personnel/Organization.h"

namespace nexwire {

// Organisations: the tree that persons hang in.
//
// All functions of this file block until the answer is there and may be called from any thread. They return true when
// the answer was a readable envelope, whatever its code; a result is untouched on false. Members that begin with
// "Internal" are for components of the platform; the others are for clients.

class NEXWIRE_API CreateOrganizationComm {
public:
    /// Creates organisations: one result each. A name that its parent already has is refused.
    static bool request(protocol::personnelcommon::OrganizationInfoListData& result,
                        const protocol::personnelcommon::OrganizationsAddList& organizations, std::string unusedSid);
};

class NEXWIRE_API DeleteOrganizationComm {
public:
    /// Removes organisations: one result each. One that still has persons or organisations below it is refused.
    static bool request(protocol::personnelcommon::OrganizationInfoListData& result,
                        const protocol::personnelcommon::OrganizationsDelList& organizations,
                        const std::string& unusedSid);
};

class NEXWIRE_API GetOrganizationComm {
public:
    /// The organisations that fit a condition, parents before those below them.
    static bool request(protocol::personnelcommon::OrganizationInfoListData& result,
                        const protocol::personnelcommon::QueryCondition& condition, std::string unusedSid);
};

class NEXWIRE_API GetSingleOrganizationComm {
public:
    /// One organisation.
    static bool request(protocol::personnelcommon::OrganizationInfo& result,
                        const protocol::personnelcommon::QueryCondition& condition, std::string orgGuid,
                        std::string unusedSid);
};

class NEXWIRE_API ModifySingleOrganizationComm {
public:
    /// Renames or moves an organisation. Below itself it cannot go.
    static bool request(const protocol::personnelcommon::Organization& organization, const std::string& orgGuid,
                        const std::string& unusedSid);
};

class NEXWIRE_API InternalFindOrgComm {
public:
    /// An organisation and those below it that fit a condition.
    static bool request(protocol::personnelcommon::OrganizationInfoListData& result,
                        const protocol::personnelcommon::QueryCondition& condition, const std::string& orgGuid);
};

class NEXWIRE_API GetOrgOfPersonnelComm {
public:
    /// The organisation that a person is in.
    static bool request(protocol::personnelcommon::OrganizationInfo& result,
                        const protocol::personnelcommon::QueryCondition& condition, std::string personGuid,
                        std::string unusedSid);
};

class NEXWIRE_API ModifyOrgOfPersonnelComm {
public:
    /// Moves persons into an organisation. The result is the organisation with its new number of persons.
    static bool request(protocol::personnelcommon::OrganizationInfo& result,
                        const protocol::personnelcommon::ParentModification& modification, std::string orgGuid);
};

} // namespace nexwire
