#include "nexwire/Wiegand.h"

#include "core/Pipeline.h"

namespace nexwire {

bool CGetWiegands::request(protocol::WiegandQueryResultListData& result)
{
    return Exchange(Query("/7730/v1/accessController/wiegands"), result);
}

bool CSetWiegand::request(protocol::OperationResultListData& result, const protocol::WiegandModifyParam& param)
{
    return Exchange(Write("/7730/v1/accessController/wiegands", param), result);
}

} // namespace nexwire
