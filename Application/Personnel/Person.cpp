#include "nexwire/Personnel/Person.h"

#include "Application/Personnel/Roots.h"
#include "core/Pipeline.h"

namespace nexwire {

using namespace protocol::personnelcommon;

bool AddPersonComm::request(PersonnelResultListData& result, const AddPersonnel& persons, std::string)
{
    return Exchange(Write(Path(kPersonnelRoot, "personnels"), persons), result);
}

bool DelPersonComm::request(PersonnelResultListData& result, const DeletePersonnelInfo& persons, std::string)
{
    return Exchange(Remove(Path(kPersonnelRoot, "personnels"), persons), result);
}

bool FindMultiPersonComm::request(TotalData& result, const QueryMultiPersons& condition, std::string)
{
    return Exchange(Query(Path(kPersonnelRoot, "personnels"), condition), result);
}

bool FindMultiPersonComm::request(NumberPersonnelData& result)
{
    return Exchange(Read(Path(kPersonnelRoot, "personnels")), result);
}

bool FindPersonsComm::request(TotalData& result, const QueryMultiPersons& condition, std::string)
{
    return Exchange(Query(Path(kPersonnelRoot, "personnels"), condition), result);
}

bool FindPersonComm::request(PersonnelResp& result, const QueryPerson& condition, std::string personGuid, std::string)
{
    return Exchange(Query(Path(kPersonnelRoot, "personnels/", personGuid), condition), result);
}

bool ModifyPersonComm::request(const PersonnelInfo& person, std::string personGuid, std::string)
{
    return Exchange(Write(Path(kPersonnelRoot, "personnels/", personGuid), person));
}

bool FindPersonByOtherComm::request(TotalData& result, const QueryPerson& condition, std::string)
{
    return Exchange(Query(Path(kPersonnelRoot, "personnels/search"), condition), result);
}

bool FindPersonsOfOrgComm::request(TotalData& result, const QueryMultiPersons& condition, const std::string& orgGuid,
                                   std::string, bool)
{
    return Exchange(Query(Path(kPersonnelRoot, "organizations/", orgGuid, "/personnels"), condition), result);
}

bool InternalFindPersonComm::request(PersonnelResp& result, const QueryPerson& condition, std::string personGuid)
{
    return Exchange(Query(Path(kInternalPersonnelRoot, "personnels/", personGuid), condition), result);
}

bool InternalFindPersonByOtherComm::request(TotalData& result, const QueryPerson& condition)
{
    return Exchange(Query(Path(kInternalPersonnelRoot, "personnels/search"), condition), result);
}

bool InternalFindMultiPersonComm::request(TotalData& result, const QueryMultiPersons& condition)
{
    return Exchange(Query(Path(kInternalPersonnelRoot, "personnels"), condition), result);
}

bool InternalFindPersonsOfOrgComm::request(TotalData& result, const QueryMultiPersons& condition,
                                           const std::string& orgGuid)
{
    return Exchange(Query(Path(kInternalPersonnelRoot, "organizations/", orgGuid, "/personnels"), condition), result);
}

bool CInternalModifyPersonComm::request(const PersonnelInfo& person, const std::string& personGuid)
{
    return Exchange(Write(Path(kInternalPersonnelRoot, "personnels/", personGuid), person));
}

bool CInternalModifyDeviceComm::request(const std::string& deviceGuid)
{
    return Exchange(Write(Path(kInternalPersonnelRoot, "personnels/device/", deviceGuid)));
}

bool GetDefaultSNComm::request(DefaultSnData& result)
{
    return Exchange(Read(Path(kPersonnelRoot, "defaultSn")), result);
}

bool CPersonSNRuleComm::setRules(const PersonnelSNRule& rule)
{
    return Exchange(Write(Path(kPersonnelRoot, "personnels/snRule"), rule));
}

bool CPersonSNRuleComm::getRules(PersonnelSNRule& result)
{
    return Exchange(Query(Path(kPersonnelRoot, "personnels/snRule")), result);
}

bool FindPrivatePropertyComm::request(PrivatePropertyResultListData& result)
{
    return Exchange(Query(Path(kPersonnelRoot, "privateProperties")), result);
}

bool AddPrivatePropertyComm::request(PrivatePropertyResultListData& result, const PrivatePropertyList& properties,
                                     std::string)
{
    return Exchange(Write(Path(kPersonnelRoot, "privateProperties"), properties), result);
}

bool DeletePrivatePropertyComm::request(PrivatePropertyResultListData& result,
                                        const PrivatePropertyDeleteList& properties, std::string)
{
    return Exchange(Remove(Path(kPersonnelRoot, "privateProperties"), properties), result);
}

bool ModifyPrivatePropertyComm::request(std::string name, std::string propertyGuid, std::string)
{
    return Exchange(Write(Path(kPersonnelRoot, "privateProperties/", propertyGuid),
                          Only(&PrivatePropertyModification::name, name)));
}

} // namespace nexwire
