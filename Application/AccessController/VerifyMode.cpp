#include "nexwire/AccessController/VerifyMode.h"

#include "core/Pipeline.h"

namespace nexwire {

#define ROOT "/7730/v1/accessController/"

bool CPersonnelVerify::request(const std::string& deviceGuid, const protocol::SetVerifyModeReq& param,
                               protocol::SetVerifyModeRspData& result)
{
    return Exchange(Write(Path(ROOT "personnelVerifyMode/devices/", deviceGuid), param), result);
}

bool CGetPersonnelVerify::request(const std::string& deviceGuid,
                                  const protocol::PersonnelVerifyModeCondition& condition,
                                  protocol::PersonnelVerifyModeRspData& result)
{
    return Exchange(Query(Path(ROOT "personnelVerifyMode/devices/", deviceGuid), condition), result);
}

bool CGetPersonnelVerify::requestValues(const std::string& deviceGuid, protocol::PersonnelVerifyValuesData& result)
{
    return Exchange(Query(Path(ROOT "personnelVerifyModeCount/devices/", deviceGuid)), result);
}

} // namespace nexwire
