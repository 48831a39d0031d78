#include "protocol/Framework/Group.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(QueryGroupCondition, "queryGroupCondition", F(parentGroupGuid), F(groupName), F(groupType), F(includeSub))
NEXWIRE_RETURN_FIELDS(Group, F(groupGuid), F(groupName), F(parentGroupGuid), F(groupType), F(orderNo), F(elementNum), F(description))
NEXWIRE_RETURN_FIELDS(GroupListData, F(groupList))
NEXWIRE_INBOUND_FIELDS(QueryGroupByResourceCondition, "queryGroupByResourceCondition", F(resourceGuid), F(resourceType))
NEXWIRE_INBOUND_FIELDS(GroupModify, "groupModify", F(groupName), F(parentGroupGuid), F(orderNo), F(description))
NEXWIRE_RETURN_FIELDS(GroupModifyResult, F(groupGuid), F(groupName))
NEXWIRE_INBOUND_FIELDS(GroupAdd, "groupAdd", F(groupGuid), F(groupName), F(parentGroupGuid), F(groupType), F(description))
NEXWIRE_RETURN_FIELDS(GroupAddData, F(groupAdd))
NEXWIRE_INBOUND_FIELDS(GroupDelete, "groupDelete", F(groupGuidList), F(deleteElements))
NEXWIRE_RETURN_FIELDS(GroupDeleteResultListData, F(groupDeleteResultList))
NEXWIRE_INBOUND_FIELDS(GroupImport, "groupImport", F(groupGuid), F(groupName), F(parentGroupGuid), F(deviceGuidList))
NEXWIRE_RETURN_FIELDS(GroupImportResult, F(groupGuid), F(groupName), F(elementNum), F(operationResultList))
NEXWIRE_RETURN_FIELDS(GroupImportResultData, F(groupImportResult))
NEXWIRE_RETURN_FIELDS(Element, F(elementGuid), F(elementName), F(elementType), F(groupGuid), F(deviceGuid), F(elementNo), F(elementStatus), F(orderNo), F(abilityList), F(description))
NEXWIRE_INBOUND_FIELDS(QueryElementsCondition, "queryElementsCondition", F(elementName), F(elementTypeList), F(elementStatus), F(includeSub), F(pageNo), F(pageSize))
NEXWIRE_RETURN_FIELDS(QueryElementsResult, F(total), F(pageNo), F(elementList))
NEXWIRE_RETURN_FIELDS(DeviceElements, F(deviceGuid), F(deviceName), F(elementList))
NEXWIRE_RETURN_FIELDS(QueryElementsByDeviceResult, F(total), F(pageNo), F(deviceElementsList))
NEXWIRE_INBOUND_FIELDS(QuerySingleElementCondition, "querySingleElementCondition", F(elementType), F(needStatus))
NEXWIRE_RETURN_FIELDS(ElementData, F(element))
NEXWIRE_INBOUND_FIELDS(ElementModify, "elementModify", F(elementName), F(orderNo), F(description))
NEXWIRE_RETURN_FIELDS(ElementModifyResult, F(elementGuid), F(elementName), F(groupGuid))
NEXWIRE_INBOUND_FIELDS(ElementDelete, "elementDelete", F(elementGuidList))
NEXWIRE_RETURN_FIELDS(ElementDeleteResultListData, F(elementDeleteResultList))
NEXWIRE_INBOUND_FIELDS(ResourceToGroup, "resourceToGroup", F(resourceGuidList), F(resourceType))
NEXWIRE_RETURN_FIELDS(ResourceToGroupResultListData, F(resourceToGroupResultList))
NEXWIRE_INBOUND_FIELDS(SyncGroupAndElement, "syncGroupAndElement", F(elementType), F(elementStatus), F(includeSub))
NEXWIRE_INBOUND_FIELDS(QueryElementInfo, "queryElementInfo", F(elementGuid))
// clang-format on

} // namespace protocol
