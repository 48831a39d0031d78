#include "protocol/Framework/Component.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(ComponentRegisterInfo, "componentRegisterInfo", F(componentId), F(componentName), F(componentType), F(version), F(address), F(processId), F(startTime))
NEXWIRE_INBOUND_FIELDS(QueryComponentCondition, "queryComponentCondition", F(componentName), F(componentType), F(onlineOnly))
NEXWIRE_RETURN_FIELDS(ComponentID, F(componentId), F(componentName), F(componentType), F(version), F(online))
NEXWIRE_RETURN_FIELDS(ComponentIDListData, F(componentIDList))
NEXWIRE_INBOUND_FIELDS(Subscribe, "subscribe", F(componentId), F(messageTypeList), F(isSubscribe))
NEXWIRE_INBOUND_FIELDS(PermissionItemInfo, "permissionItemInfo", F(permissionCode), F(permissionName), F(parentCode), F(componentId), F(permissionType), F(orderNo))
NEXWIRE_INBOUND_FIELDS(PermissionItemInfos, "permissionItemInfos", F(permissionItemInfoList))
NEXWIRE_INBOUND_FIELDS(PermissionCodeInfo, "permissionCodeInfo", F(permissionCode), F(permissionName), F(isPermitted))
NEXWIRE_INBOUND_FIELDS(PermissionCodeInfos, "permissionCodeInfos", F(permissionCodeInfoList))
NEXWIRE_INBOUND_FIELDS(AlarmUI, "alarmUI", F(isShow), F(alarmGuid), F(deviceGuid), F(isTopmost))
NEXWIRE_INBOUND_FIELDS(JumpUiTo, "jumpUiTo", F(componentId), F(viewName), F(resourceGuid), F(parameter))
NEXWIRE_INBOUND_FIELDS(FrameworkResize, "frameworkResize", F(left), F(top), F(width), F(height), F(windowState))
NEXWIRE_INBOUND_FIELDS(AppIsMaximize, "appIsMaximize", F(componentId), F(isMaximize))
NEXWIRE_RETURN_FIELDS(AppMaximizeResult, F(componentId), F(isMaximize), F(width), F(height))
NEXWIRE_RETURN_FIELDS(AppMaximizeResultData, F(appMaximizeResult))
NEXWIRE_INBOUND_FIELDS(AlarmCenertSize, "alarmCenertSize", F(width), F(height), F(isCollapsed))
NEXWIRE_RETURN_FIELDS(AlarmCenertSizeResult, F(width), F(height), F(isCollapsed))
NEXWIRE_RETURN_FIELDS(AlarmCenertSizeResultData, F(alarmCenertSizeResult))
// clang-format on

} // namespace protocol
