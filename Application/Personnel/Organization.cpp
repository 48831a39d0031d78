#include "nexwire/Personnel/Organization.h"

#include "Application/Personnel/Roots.h"
#include "core/Pipeline.h"

namespace nexwire {

using namespace protocol::personnelcommon;

bool CreateOrganizationComm::request(OrganizationInfoListData& result, const OrganizationsAddList& organizations,
                                     std::string)
{
    return Exchange(Write(Path(kPersonnelRoot, "organizations"), organizations), result);
}

bool DeleteOrganizationComm::request(OrganizationInfoListData& result, const OrganizationsDelList& organizations,
                                     const std::string&)
{
    return Exchange(Remove(Path(kPersonnelRoot, "organizations"), organizations), result);
}

bool GetOrganizationComm::request(OrganizationInfoListData& result, const QueryCondition& condition, std::string)
{
    return Exchange(Query(Path(kPersonnelRoot, "organizations"), condition), result);
}

bool GetSingleOrganizationComm::request(OrganizationInfo& result, const QueryCondition& condition, std::string orgGuid,
                                        std::string)
{
    return Exchange(Query(Path(kPersonnelRoot, "organizations/", orgGuid), condition), result);
}

bool ModifySingleOrganizationComm::request(const Organization& organization, const std::string& orgGuid,
                                           const std::string&)
{
    return Exchange(Write(Path(kPersonnelRoot, "organizations/", orgGuid), organization));
}

bool InternalFindOrgComm::request(OrganizationInfoListData& result, const QueryCondition& condition,
                                  const std::string& orgGuid)
{
    return Exchange(Query(Path(kInternalPersonnelRoot, "organizations/", orgGuid), condition), result);
}

bool GetOrgOfPersonnelComm::request(OrganizationInfo& result, const QueryCondition& condition, std::string personGuid,
                                    std::string)
{
    return Exchange(Query(Path(kPersonnelRoot, "personnels/", personGuid, "/organization"), condition), result);
}

bool ModifyOrgOfPersonnelComm::request(OrganizationInfo& result, const ParentModification& modification,
                                       std::string orgGuid)
{
    return Exchange(Write(Path(kPersonnelRoot, "organizations/", orgGuid, "/personnels"), modification), result);
}

} // namespace nexwire
