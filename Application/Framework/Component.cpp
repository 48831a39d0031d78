#include "nexwire/Framework/Component.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/internal/framework/";

} // namespace

bool CComponentRegisterComm::request(const protocol::ComponentRegisterInfo& component)
{
    return Exchange(Write(Path(kRoot, "register"), component));
}

bool CGetComponentIDComm::request(protocol::ComponentIDListData& result,
                                  const protocol::QueryComponentCondition& condition)
{
    return Exchange(Write(Path(kRoot, "components"), condition), result);
}

bool CMessagesComm::request(const protocol::Subscribe& param)
{
    return Exchange(Write(Path(kRoot, "messages"), param));
}

bool CPermissionRegisterComm::request(const protocol::PermissionItemInfos& items)
{
    return Exchange(Write(Path(kRoot, "permissions/items"), items));
}

bool CPermissionComm::requestSpecified(protocol::PermissionCodeInfos& result,
                                       const protocol::PermissionCodeInfos& codes)
{
    return Exchange(Query("/7730/v1/framework/permissions", codes), result);
}

bool CAlarmCenterAlarmUI::request(const protocol::AlarmUI& param)
{
    return Exchange(Write(Path(kRoot, "alarmUI"), param));
}

bool CJumpUiToComm::request(const protocol::JumpUiTo& param)
{
    return Exchange(Write(Path(kRoot, "jumpUiTo"), param));
}

bool CFrameworkResize::request(const protocol::FrameworkResize& param)
{
    return Exchange(Write(Path(kRoot, "resize"), param));
}

bool CAppMaximize::request(protocol::AppMaximizeResultData& result, const protocol::AppIsMaximize& param)
{
    return Exchange(Query(Path(kRoot, "appMaximize"), param), result);
}

bool CAlarmCenertSize::request(protocol::AlarmCenertSizeResultData& result, const protocol::AlarmCenertSize& param)
{
    return Exchange(Query(Path(kRoot, "AlarmCenterSize"), param), result);
}

} // namespace nexwire
