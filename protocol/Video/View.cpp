#include "protocol/Video/View.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(ViewWindow, "viewWindow", F(windowNo), F(row), F(column), F(rowSpan), F(columnSpan), F(channelGuid), F(channelName), F(streamType), F(isSoundOn))
NEXWIRE_INBOUND_FIELDS(ViewParam, "viewParam", F(viewName), F(viewgroupGuid), F(teamNo), F(rows), F(columns), F(viewWindowList), F(pollingInterval), F(isDefault), F(description))
NEXWIRE_RETURN_FIELDS(ViewResoponse, F(viewGuid), F(viewName), F(viewgroupGuid), F(teamNo), F(rows), F(columns), F(viewWindowList), F(pollingInterval), F(isDefault), F(description), F(createUser), F(modifyTime))
NEXWIRE_RETURN_FIELDS(ViewResoponseListData, F(viewResoponseList))
NEXWIRE_RETURN_FIELDS(ViewResult, F(viewGuid), F(viewName), F(modifyTime))
NEXWIRE_RETURN_FIELDS(ViewResultData, F(viewResult))
NEXWIRE_INBOUND_FIELDS(RemoveView, "removeView", F(viewGuidList))
NEXWIRE_RETURN_FIELDS(ViewResultWithCode, F(viewGuid), F(viewName), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(ViewResultWithCodeListData, F(viewResultWithCodeList))
NEXWIRE_RETURN_FIELDS(Viewgroup, F(viewgroupGuid), F(viewgroupName), F(parentGuid), F(orderNo), F(viewGuidList))
NEXWIRE_RETURN_FIELDS(ViewgroupListData, F(viewgroupList))
NEXWIRE_INBOUND_FIELDS(ViewgroupAdd, "viewgroupAdd", F(viewgroupName), F(parentGuid), F(orderNo), F(viewGuidList))
NEXWIRE_RETURN_FIELDS(ViewgroupAddRsp, F(viewgroupGuid), F(viewgroupName))
NEXWIRE_RETURN_FIELDS(ViewgroupAddRspData, F(viewgroupAddRsp))
NEXWIRE_INBOUND_FIELDS(ViewgroupDelete, "viewgroupDelete", F(viewgroupGuidList))
NEXWIRE_INBOUND_FIELDS(ViewgroupModify, "viewgroupModify", F(viewgroupName), F(parentGuid), F(orderNo), F(viewGuidList))
// clang-format on

} // namespace protocol
