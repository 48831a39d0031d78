#pragma once

#include "protocol/AccessController/AccessPlan.h"

namespace nexwire {

/// Access plans: when doors may be passed. Access groups follow them.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was a readable envelope, whatever its code; a result is untouched on false.
class NEXWIRE_API ACPlanTemplate {
public:
    /// All plans of a type, without their details.
    static bool getAllBasicPlans(protocol::ACBasicPlanInfoResponseListData& result,
                                 const protocol::ACBasicPlanQueryCondition& condition);
    static bool addPlans(protocol::ACPlanInfoAddedReturnData& result, const protocol::ACPlanInfoAddParam& param);
    /// One result per plan.
    static bool deletePlans(protocol::ACPlanInfoRemoveResultListData& result,
                            const protocol::ACPlanInfoRemoveParam& param);
    static bool getPlan(protocol::ACSinglePlanQueryResultData& result, const protocol::ACSinglePlanQuery& query,
                        const std::string& planGuid);
    /// Replaces a plan. The result names the access groups that have to be downloaded again.
    static bool modifyPlan(protocol::ACPlanInfoModifyResultData& result, const protocol::ACPlanInfoModifyParam& param,
                           const std::string& planGuid);
    /// The access groups that follow a plan.
    static bool getAccessGroupGuids(protocol::AccessGroupGuidsListData& result, const std::string& planGuid);
};

} // namespace nexwire
