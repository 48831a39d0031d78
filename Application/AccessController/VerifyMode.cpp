#include "nexwire/AccessController/VerifyMode.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/accessController/";

} // namespace

bool CPersonnelVerify::request(const std::string& deviceGuid, const protocol::SetVerifyModeReq& param,
                               protocol::SetVerifyModeRspData& result)
{
    return Exchange(Write(Path(kRoot, "personnelVerifyMode/devices/", deviceGuid), param), result);
}

bool CGetPersonnelVerify::request(const std::string& deviceGuid,
                                  const protocol::PersonnelVerifyModeCondition& condition,
                                  protocol::PersonnelVerifyModeRspData& result)
{
    return Exchange(Query(Path(kRoot, "personnelVerifyMode/devices/", deviceGuid), condition), result);
}

bool CGetPersonnelVerify::requestValues(const std::string& deviceGuid, protocol::PersonnelVerifyValuesData& result)
{
    return Exchange(Query(Path(kRoot, "personnelVerifyModeCount/devices/", deviceGuid)), result);
}

} // namespace nexwire
