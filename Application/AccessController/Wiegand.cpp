#include "nexwire/AccessController/Wiegand.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

bool CGetWiegands::request(protocol::WiegandQueryResultListData& result)
{
    return Exchange(Query("/7730/v1/accessController/wiegands"), result);
}

bool CSetWiegand::request(protocol::OperationResultListData& result, const protocol::WiegandModifyParam& param)
{
    return Exchange(Write("/7730/v1/accessController/wiegands", param), result);
}

NEXWIRE_DEVICE_SET(AcsCustomWiegandConfig, setAcsChannelControlParamRequest, WiegandModifyParam, Internal, 4208)

} // namespace nexwire
