#pragma once

#include "protocol/Common.h"
#include "protocol/DeviceCommon.h"

namespace protocol {

/// Days on which a plan follows times of their own instead of the week.
struct NEXWIRE_API ACHolidayPlan : IInboundData {
    std::string holidayName;
    DateRange dateRange;
    std::vector<TimeSegment> timeSegmentList; ///< Empty: the plan is closed on these days.
    NEXWIRE_JSON
};

/// When a plan applies.
struct NEXWIRE_API ACPlanDetailInfo : IInboundData {
    DateRange validRange;                       ///< Empty dates: without limit.
    std::vector<DayPlan> weekPlanList;          ///< At most one per day of the week; a missing day is closed.
    std::vector<ACHolidayPlan> holidayPlanList; ///< The first that covers a day replaces its week plan.
    NEXWIRE_JSON
};

/// A new plan.
struct NEXWIRE_API ACPlanInfoAddParam : IInboundData {
    std::string planInfoName;
    std::int32_t planInfoType = 0; ///< What the plan is for; server vocabulary, carried as it is.
    ACPlanDetailInfo detailInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API ACPlanInfoAddedReturn : IReturnData {
    std::string planInfoGuid;
    std::string planInfoName;
    NEXWIRE_JSON
};

struct NEXWIRE_API ACPlanInfoAddedReturnData : IReturnData {
    ACPlanInfoAddedReturn planInfoAddedReturn;
    NEXWIRE_JSON
};

/// Plans to remove.
struct NEXWIRE_API ACPlanInfoRemoveParam : IInboundData {
    std::vector<std::string> planInfoGuidList;
    NEXWIRE_JSON
};

/// One result per plan; a plan that access groups still use is refused.
struct NEXWIRE_API ACPlanInfoRemoveResultListData : IReturnData {
    std::vector<OperationResult> planInfoRemoveResultList;
    NEXWIRE_JSON
};

/// Which plans are asked for.
struct NEXWIRE_API ACBasicPlanQueryCondition : IInboundData {
    std::int32_t planInfoType = 0; ///< Server vocabulary, carried as it is.
    NEXWIRE_JSON
};

/// A plan without its details.
struct NEXWIRE_API ACBasicPlanInfoResponse : IReturnData {
    std::string planInfoGuid;
    std::string planInfoName;
    std::int32_t planInfoType = 0; ///< Server vocabulary, carried as it is.
    std::string description;
    bool isUsed = false; ///< At least one access group follows it.
    NEXWIRE_JSON
};

struct NEXWIRE_API ACBasicPlanInfoResponseListData : IReturnData {
    std::vector<ACBasicPlanInfoResponse> basicPlanInfoResponseList;
    NEXWIRE_JSON
};

/// How one plan is asked for; its GUID stands in the path.
struct NEXWIRE_API ACSinglePlanQuery : IInboundData {
    std::int32_t planInfoType = 0; ///< Server vocabulary, carried as it is.
    bool needDetailInfo = true;    ///< False: name and description are enough.
    NEXWIRE_JSON
};

/// A plan as the platform keeps it.
struct NEXWIRE_API ACSinglePlanQueryResult : IReturnData {
    std::string planInfoGuid;
    std::string planInfoName;
    std::int32_t planInfoType = 0; ///< Server vocabulary, carried as it is.
    ACPlanDetailInfo detailInfo;
    std::string description;
    std::int64_t modifyTime = 0; ///< Last change, milliseconds since 1970-01-01 UTC.
    NEXWIRE_JSON
};

struct NEXWIRE_API ACSinglePlanQueryResultData : IReturnData {
    ACSinglePlanQueryResult singlePlanQueryResult;
    NEXWIRE_JSON
};

/// A plan as it is to be; its GUID stands in the path.
struct NEXWIRE_API ACPlanInfoModifyParam : IInboundData {
    std::string planInfoName;
    std::int32_t planInfoType = 0; ///< Server vocabulary, carried as it is.
    ACPlanDetailInfo detailInfo;
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API ACPlanInfoModifyResult : IReturnData {
    std::string planInfoGuid;
    std::string planInfoName;
    std::vector<std::string> accessGroupGuidList; ///< Groups whose download the change has made necessary.
    NEXWIRE_JSON
};

struct NEXWIRE_API ACPlanInfoModifyResultData : IReturnData {
    ACPlanInfoModifyResult planInfoModifyResult;
    NEXWIRE_JSON
};

/// Access groups that follow a plan.
struct NEXWIRE_API AccessGroupGuidsListData : IReturnData {
    std::vector<std::string> accessGroupGuidsList;
    NEXWIRE_JSON
};

} // namespace protocol
