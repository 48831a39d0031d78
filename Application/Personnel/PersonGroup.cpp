#include "nexwire/Personnel/PersonGroup.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/accessController/";

} // namespace

bool CAddPerGroup::request(protocol::PerGroupResultListData& result, const protocol::PerGroupAddReq& group)
{
    return Exchange(Write(Path(kRoot, "perGroups"), group), result);
}

bool CDelPerGroup::request(protocol::PerGroupDelRspListData& result, const protocol::PerGroupDelReq& groups)
{
    return Exchange(Remove(Path(kRoot, "perGroups"), groups), result);
}

bool CModPerGroup::request(protocol::PerGroupResultData& result, const protocol::PerGroupModReq& group)
{
    return Exchange(Write(Path(kRoot, "perGroups/", group.perGroupGuid), group), result);
}

bool CSearchPerGroup::request(protocol::PerGroupQueryRspListData& result, const protocol::PerGroupQueryReq& condition)
{
    return Exchange(Query(Path(kRoot, "perGroups"), condition), result);
}

bool CGetPerGroupMember::request(protocol::PerGroupMemberInfoDataRspData& result, const std::string& deviceGuid)
{
    return Exchange(Query(Path(kRoot, "belongGroup/devices/", deviceGuid)), result);
}

bool CSetPerGroupMember::request(protocol::PerGroupMemberInfoData& groups)
{
    return ExchangeBothWays(Write(Path(kRoot, "belongGroup/devices/", groups.deviceGuid), groups), groups);
}

bool CGetPerBelongGroupNum::request(protocol::UserBelongGroupNumIInboundData& persons, const std::string& deviceGuid)
{
    return ExchangeBothWays(Query(Path(kRoot, "belongGroupnum/devices/", deviceGuid), persons), persons);
}

bool CAddAuthGroup::request(protocol::AuthGroupResultListData& result, const protocol::AuthGroupAddReq& group)
{
    return Exchange(Write(Path(kRoot, "authGroups"), group), result);
}

bool CDelAuthGroup::request(protocol::AuthGroupDelRspListData& result, const protocol::AuthGroupDelReq& groups)
{
    return Exchange(Remove(Path(kRoot, "authGroups"), groups), result);
}

bool CModAuthGroup::request(protocol::AuthGroupResultData& result, const protocol::AuthGroupModReq& group)
{
    return Exchange(Write(Path(kRoot, "authGroups/", group.authGroupGuid), group), result);
}

bool CSearchAuthGroup::request(protocol::AuthGroupQueryRspListData& result,
                               const protocol::AuthGroupQueryReq& condition)
{
    return Exchange(Query(Path(kRoot, "authGroups"), condition), result);
}

} // namespace nexwire
