#include "nexwire/Video/View.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kViews = "/7730/v1/video/views";
constexpr const char* kGroups = "/7730/v1/video/viewgroups";

} // namespace

bool CMainViewRequest::getAllView(protocol::ViewResoponseListData& result)
{
    return Exchange(Query(kViews), result);
}

bool CMainViewRequest::getAllViewWithTeamNo(protocol::ViewResoponseListData& result, const std::string& teamNo)
{
    // Reads, but with the method code of a change.
    return Exchange(Write(Path(kViews, "/team/", teamNo)), result);
}

bool CMainViewRequest::getViewByGUID(protocol::ViewResoponse& result, const std::string& viewGuid)
{
    return Exchange(Query(Path(kViews, "/", viewGuid)), result);
}

bool CMainViewRequest::addView(protocol::ViewResultData& result, const protocol::ViewParam& view)
{
    return Exchange(Write(kViews, view), result);
}

bool CMainViewRequest::modifyView(protocol::ViewResultData& result, const protocol::ViewParam& view,
                                  const std::string& viewGuid)
{
    return Exchange(Write(Path(kViews, "/", viewGuid), view), result);
}

bool CMainViewRequest::deleteView(protocol::ViewResultWithCodeListData& result, const protocol::RemoveView& views)
{
    return Exchange(Remove(kViews, views), result);
}

bool CGetAllViewGroupsComm::request(protocol::ViewgroupListData& result)
{
    return Exchange(Query(kGroups), result);
}

bool CAddViewGroupComm::request(protocol::ViewgroupAddRspData& result, const protocol::ViewgroupAdd& group)
{
    return Exchange(Write(kGroups, group), result);
}

bool CDeleteViewGroupsComm::request(const protocol::ViewgroupDelete& groups)
{
    return ExchangeUnread(Remove(kGroups, groups));
}

bool ViewgroupModify::request(const protocol::ViewgroupModify& group, const std::string& viewgroupGuid)
{
    return ExchangeUnread(Write(Path(kGroups, "/", viewgroupGuid), group));
}

} // namespace nexwire
