#include "nexwire/AccessController/FirstPerson.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/accessController/firstPersonInfos";

} // namespace

bool FirstPersonOpenDoor::addDatas(const protocol::FirstPersonAddParam& param,
                                   protocol::FirstPersonAddReturnListData& result)
{
    return Exchange(Write(kRoot, param), result);
}

bool FirstPersonOpenDoor::deleteDatas(const protocol::FirstPersonRemoveList& param,
                                      protocol::FirstPersonRemoveResultListData& result)
{
    return Exchange(Remove(kRoot, param), result);
}

bool FirstPersonOpenDoor::queryDatas(const std::string& guid, const protocol::FirstPersonCondition& condition,
                                     protocol::FirstPersonQueryResultRspData& result)
{
    return Exchange(Query(Path(kRoot, "/", guid), condition), result);
}

} // namespace nexwire
