#pragma once

#include "protocol/Personnel/Person.h"

namespace nexwire {

// Persons of the register, the rule for their numbers, and the properties that a site defines for them.
//
// All functions of this file block until the answer is there and may be called from any thread. They return true when
// the answer was a readable envelope, whatever its code; a result is untouched on false. Members that begin with
// "Internal" or "CInternal" are for components of the platform; the others are for clients.

class NEXWIRE_API AddPersonComm {
public:
    /// Adds persons: one result each. A number, card or password that somebody has already is refused.
    static bool request(protocol::personnelcommon::PersonnelResultListData& result,
                        const protocol::personnelcommon::AddPersonnel& persons, std::string unusedSid);
};

class NEXWIRE_API DelPersonComm {
public:
    /// Removes persons with all their credentials: one result each.
    static bool request(protocol::personnelcommon::PersonnelResultListData& result,
                        const protocol::personnelcommon::DeletePersonnelInfo& persons, std::string unusedSid);
};

class NEXWIRE_API FindMultiPersonComm {
public:
    /// A page of the persons that fit a condition.
    static bool request(protocol::personnelcommon::TotalData& result,
                        const protocol::personnelcommon::QueryMultiPersons& condition, std::string unusedSid);
    /// How many persons there are.
    static bool request(protocol::personnelcommon::NumberPersonnelData& result);
};

class NEXWIRE_API FindPersonsComm {
public:
    /// A page of the persons that fit a condition, as `FindMultiPersonComm`.
    static bool request(protocol::personnelcommon::TotalData& result,
                        const protocol::personnelcommon::QueryMultiPersons& condition, std::string unusedSid);
};

class NEXWIRE_API FindPersonComm {
public:
    /// One person; the condition says which sections are wanted.
    static bool request(protocol::personnelcommon::PersonnelResp& result,
                        const protocol::personnelcommon::QueryPerson& condition, std::string personGuid,
                        std::string unusedSid);
};

class NEXWIRE_API ModifyPersonComm {
public:
    /// Replaces the sections that are sent; use the filter of `person` to send only some.
    static bool request(const protocol::personnelcommon::PersonnelInfo& person, std::string personGuid,
                        std::string unusedSid);
};

class NEXWIRE_API FindPersonByOtherComm {
public:
    /// Persons by number, card, telephone or something else than their GUID.
    static bool request(protocol::personnelcommon::TotalData& result,
                        const protocol::personnelcommon::QueryPerson& condition, std::string unusedSid);
};

class NEXWIRE_API FindPersonsOfOrgComm {
public:
    /// A page of the persons of an organisation. The last flag plays no part in the request.
    static bool request(protocol::personnelcommon::TotalData& result,
                        const protocol::personnelcommon::QueryMultiPersons& condition, const std::string& orgGuid,
                        std::string unusedSid, bool unusedFlag);
};

class NEXWIRE_API InternalFindPersonComm {
public:
    /// One person; the condition says which sections are wanted.
    static bool request(protocol::personnelcommon::PersonnelResp& result,
                        const protocol::personnelcommon::QueryPerson& condition, std::string personGuid);
};

class NEXWIRE_API InternalFindPersonByOtherComm {
public:
    /// Persons by number, card, telephone or something else than their GUID.
    static bool request(protocol::personnelcommon::TotalData& result,
                        const protocol::personnelcommon::QueryPerson& condition);
};

class NEXWIRE_API InternalFindMultiPersonComm {
public:
    /// A page of the persons that fit a condition.
    static bool request(protocol::personnelcommon::TotalData& result,
                        const protocol::personnelcommon::QueryMultiPersons& condition);
};

class NEXWIRE_API InternalFindPersonsOfOrgComm {
public:
    /// A page of the persons of an organisation.
    static bool request(protocol::personnelcommon::TotalData& result,
                        const protocol::personnelcommon::QueryMultiPersons& condition, const std::string& orgGuid);
};

class NEXWIRE_API CInternalModifyPersonComm {
public:
    /// Replaces the sections that are sent; use the filter of `person` to send only some.
    static bool request(const protocol::personnelcommon::PersonnelInfo& person, const std::string& personGuid);
};

class NEXWIRE_API CInternalModifyDeviceComm {
public:
    /// Tells the register that a device has changed, so that its persons have to be written anew.
    static bool request(const std::string& deviceGuid);
};

class NEXWIRE_API GetDefaultSNComm {
public:
    /// The number that the rule would give to the next person.
    static bool request(protocol::personnelcommon::DefaultSnData& result);
};

/// How numbers of new persons are made.
class NEXWIRE_API CPersonSNRuleComm {
public:
    /// Numbers that persons already have stay.
    static bool setRules(const protocol::personnelcommon::PersonnelSNRule& rule);
    static bool getRules(protocol::personnelcommon::PersonnelSNRule& result);
};

// ---- Properties that a site defines ----

class NEXWIRE_API FindPrivatePropertyComm {
public:
    /// All properties.
    static bool request(protocol::personnelcommon::PrivatePropertyResultListData& result);
};

class NEXWIRE_API AddPrivatePropertyComm {
public:
    /// Adds properties: one result each. A name that exists is refused.
    static bool request(protocol::personnelcommon::PrivatePropertyResultListData& result,
                        const protocol::personnelcommon::PrivatePropertyList& properties, std::string unusedSid);
};

class NEXWIRE_API DeletePrivatePropertyComm {
public:
    /// Removes properties together with the values that persons have of them: one result each.
    static bool request(protocol::personnelcommon::PrivatePropertyResultListData& result,
                        const protocol::personnelcommon::PrivatePropertyDeleteList& properties, std::string unusedSid);
};

class NEXWIRE_API ModifyPrivatePropertyComm {
public:
    /// Renames a property.
    static bool request(std::string name, std::string propertyGuid, std::string unusedSid);
};

} // namespace nexwire
