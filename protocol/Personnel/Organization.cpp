#include "protocol/Personnel/Organization.h"

#include "core/FieldTable.h"

namespace protocol::personnelcommon {

// clang-format off
NEXWIRE_INBOUND_FIELDS(Organization, "organization", F(guid), F(name), F(code), F(parOrgGuid), F(orgType), F(orderNo), F(description))
NEXWIRE_INBOUND_FIELDS(OrganizationsAddList, "organizationsAddList", F(organizationList))
NEXWIRE_INBOUND_FIELDS(OrganizationsDelList, "organizationsDelList", F(guidList))
NEXWIRE_RETURN_FIELDS(OrganizationInfo, F(guid), F(name), F(code), F(parOrgGuid), F(fullPath), F(orgType), F(orderNo), F(personNum), F(childNum), F(description), F(createTime), F(modifyTime), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(OrganizationInfoListData, F(organizationInfoList))
NEXWIRE_INBOUND_FIELDS(QueryCondition, "QueryCondition", F(orgType), F(queryType), F(name), F(componentId), F(parOrgGuid))
NEXWIRE_INBOUND_FIELDS(ParentModification, "parentModification", F(personnelGuidList), F(oldOrgGuid), F(keepAccess))
// clang-format on

} // namespace protocol::personnelcommon
