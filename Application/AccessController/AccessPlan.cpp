#include "nexwire/AccessController/AccessPlan.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/accessController/";

} // namespace

bool ACPlanTemplate::getAllBasicPlans(protocol::ACBasicPlanInfoResponseListData& result,
                                      const protocol::ACBasicPlanQueryCondition& condition)
{
    return Exchange(Query(Path(kRoot, "allBasicPlanInfos"), condition), result);
}

bool ACPlanTemplate::addPlans(protocol::ACPlanInfoAddedReturnData& result, const protocol::ACPlanInfoAddParam& param)
{
    return Exchange(Write(Path(kRoot, "planInfos"), param), result);
}

bool ACPlanTemplate::deletePlans(protocol::ACPlanInfoRemoveResultListData& result,
                                 const protocol::ACPlanInfoRemoveParam& param)
{
    return Exchange(Remove(Path(kRoot, "planInfos"), param), result);
}

bool ACPlanTemplate::getPlan(protocol::ACSinglePlanQueryResultData& result, const protocol::ACSinglePlanQuery& query,
                             const std::string& planGuid)
{
    return Exchange(Query(Path(kRoot, "planInfos/", planGuid), query), result);
}

bool ACPlanTemplate::modifyPlan(protocol::ACPlanInfoModifyResultData& result,
                                const protocol::ACPlanInfoModifyParam& param, const std::string& planGuid)
{
    return Exchange(Write(Path(kRoot, "planInfos/", planGuid), param), result);
}

bool ACPlanTemplate::getAccessGroupGuids(protocol::AccessGroupGuidsListData& result, const std::string& planGuid)
{
    return Exchange(Read(Path(kRoot, "planUsedAccessGroup/", planGuid)), result);
}

} // namespace nexwire
