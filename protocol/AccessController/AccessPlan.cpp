#include "protocol/AccessController/AccessPlan.h"

#include "core/FieldTable.h"

namespace protocol {

// The wire leaves out the AC that the structures' names begin with.
// clang-format off
NEXWIRE_INBOUND_FIELDS(ACHolidayPlan, "holidayPlan", F(holidayName), F(dateRange), F(timeSegmentList))
NEXWIRE_INBOUND_FIELDS(ACPlanDetailInfo, "planDetailInfo", F(validRange), F(weekPlanList), F(holidayPlanList))
NEXWIRE_INBOUND_FIELDS(ACPlanInfoAddParam, "planInfoAddParam", F(planInfoName), F(planInfoType), F(detailInfo))
NEXWIRE_RETURN_FIELDS(ACPlanInfoAddedReturn, F(planInfoGuid), F(planInfoName))
NEXWIRE_RETURN_FIELDS(ACPlanInfoAddedReturnData, F(planInfoAddedReturn))
NEXWIRE_INBOUND_FIELDS(ACPlanInfoRemoveParam, "planInfoRemoveParam", F(planInfoGuidList))
NEXWIRE_RETURN_FIELDS(ACPlanInfoRemoveResultListData, F(planInfoRemoveResultList))
NEXWIRE_INBOUND_FIELDS(ACBasicPlanQueryCondition, "basicPlanQueryCondition", F(planInfoType))
NEXWIRE_RETURN_FIELDS(ACBasicPlanInfoResponse, F(planInfoGuid), F(planInfoName), F(planInfoType), F(description), F(isUsed))
NEXWIRE_RETURN_FIELDS(ACBasicPlanInfoResponseListData, F(basicPlanInfoResponseList))
NEXWIRE_INBOUND_FIELDS(ACSinglePlanQuery, "singlePlanQuery", F(planInfoType), F(needDetailInfo))
NEXWIRE_RETURN_FIELDS(ACSinglePlanQueryResult, F(planInfoGuid), F(planInfoName), F(planInfoType), F(detailInfo), F(description), F(modifyTime))
NEXWIRE_RETURN_FIELDS(ACSinglePlanQueryResultData, F(singlePlanQueryResult))
NEXWIRE_INBOUND_FIELDS(ACPlanInfoModifyParam, "planInfoModifyParam", F(planInfoName), F(planInfoType), F(detailInfo), F(description))
NEXWIRE_RETURN_FIELDS(ACPlanInfoModifyResult, F(planInfoGuid), F(planInfoName), F(accessGroupGuidList))
NEXWIRE_RETURN_FIELDS(ACPlanInfoModifyResultData, F(planInfoModifyResult))
NEXWIRE_RETURN_FIELDS(AccessGroupGuidsListData, F(accessGroupGuidsList))
// clang-format on

} // namespace protocol
