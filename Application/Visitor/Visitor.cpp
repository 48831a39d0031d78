#include "nexwire/Visitor/Visitor.h"

#include "core/Pipeline.h"
#include "nexwire/PassThrough/PassThrough.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/visitorManagement/";

} // namespace

bool AppointmentComm::addAppointment(protocol::AddAppointmentResultListData& result,
                                     const protocol::AddAppointment& appointments)
{
    return Exchange(Write(Path(kRoot, "visitor/appointment"), appointments), result);
}

bool AppointmentComm::getAllAppointment(protocol::QueryAppointmentResultList& result)
{
    return Exchange(Query(Path(kRoot, "visitor/appointment")), result);
}

bool AppointmentComm::getAppointmentByCondition(protocol::QueryAppointmentResultList& result,
                                                const protocol::QueryAppointmentResultCondition& condition)
{
    return Exchange(Query(Path(kRoot, "visitor/appointmentByCondition"), condition), result);
}

bool AppointmentComm::updateAppointment(const protocol::ModifyAppointment& appointment,
                                        const std::string& appointmentGuid)
{
    return Exchange(Write(Path(kRoot, "visitor/appointment/", appointmentGuid), appointment));
}

bool AppointmentComm::deleteAppointment(const protocol::DeleteAppointment& appointments)
{
    return Exchange(Remove(Path(kRoot, "visitor/appointment"), appointments));
}

bool BasicSettingComm::getConfig(protocol::QueryBasicSettingResult& result)
{
    return Exchange(Query(Path(kRoot, "setting/basic")), result);
}

bool BasicSettingComm::setConfig(const protocol::BasicSetting& setting)
{
    return Exchange(Write(Path(kRoot, "setting/basic"), setting));
}

bool AccessGroupPointComm::getAccessGroups(protocol::VisitAccessGroupQueryResponseData& result)
{
    return Exchange(Query(Path(kRoot, "visitor/accessPointGroup")), result);
}

bool AccessGroupPointComm::getAccessGroup(protocol::VisitAccessGroupQueryResp& result, const std::string& groupGuid)
{
    return Exchange(Query(Path(kRoot, "visitor/accessPointGroup/", groupGuid)), result);
}

bool AccessGroupPointComm::createAccessGroup(protocol::VisitAccessGroupAddedResult& result,
                                             const protocol::VisitAaccessGroupAddParam& group)
{
    return Exchange(Write(Path(kRoot, "visitor/accessPointGroup"), group), result);
}

bool AccessGroupPointComm::modifyAccessGroup(protocol::VisitAccessGroupModifyResultData& result,
                                             const protocol::VisitAccessGroupModifyParam& group,
                                             const std::string& groupGuid)
{
    return Exchange(Write(Path(kRoot, "visitor/accessPointGroup/", groupGuid), group), result);
}

bool AccessGroupPointComm::removeAccessGroup(protocol::DeleteAccessPointGroupResultData& result,
                                             const protocol::DeleteAccessPointGroupCondition& groups)
{
    return Exchange(Remove(Path(kRoot, "visitor/accessPointGroup"), groups), result);
}

bool RecordComm::getRecord(protocol::QueryVisitorRecordResultListData& result,
                           const protocol::QueryVisitorRecordCondition& condition)
{
    return Exchange(Query(Path(kRoot, "visitor/visitorRecord"), condition), result);
}

bool RecordComm::getVisitorErrorRecord(protocol::VisitorErrorRecordResponseData& result, const std::string& recordGuid)
{
    return Exchange(Query(Path(kRoot, "visitor/visitorErrorRecord/", recordGuid)), result);
}

bool RecordComm::getDownloadFailRecord(protocol::QueryVisitorRecordResultListData& result)
{
    return Exchange(Query(Path(kRoot, "visitor/visitorDownLoadFaildRecord")), result);
}

bool VisitorConfigComm::setConfig(protocol::VisitorRightConfigResultData& result,
                                  const protocol::VisitorRightConfig& config)
{
    return Exchange(Write(Path(kRoot, "config/visitorRight"), config), result);
}

bool DownloadPermissionComm::downloadPermission(const protocol::DownloadPermissionInfo& permission)
{
    return Exchange(Write(Path(kRoot, "permission"), permission));
}

bool VisitorDagComm::dagThroughRequest(const protocol::DagPassThroughReq& request, const std::string& deviceGuid,
                                       protocol::DagPassThroughRspData& response, int timeoutMs)
{
    return accessParamComm::dagThroughRequest(request, deviceGuid, response, timeoutMs);
}

} // namespace nexwire
