#include "nexwire/AccessController/FirstPerson.h"

#include "core/Pipeline.h"

namespace nexwire {

#define ROOT "/7730/v1/accessController/firstPersonInfos"

bool FirstPersonOpenDoor::addDatas(const protocol::FirstPersonAddParam& param,
                                   protocol::FirstPersonAddReturnListData& result)
{
    return Exchange(Write(ROOT, param), result);
}

bool FirstPersonOpenDoor::deleteDatas(const protocol::FirstPersonRemoveList& param,
                                      protocol::FirstPersonRemoveResultListData& result)
{
    return Exchange(Remove(ROOT, param), result);
}

bool FirstPersonOpenDoor::queryDatas(const std::string& guid, const protocol::FirstPersonCondition& condition,
                                     protocol::FirstPersonQueryResultRspData& result)
{
    return Exchange(Query(Path(ROOT "/", guid), condition), result);
}

} // namespace nexwire
