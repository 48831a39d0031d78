#include "nexwire/Alarm/ClientLink.h"

#include "core/Pipeline.h"

namespace nexwire {
namespace {

constexpr const char* kResources = "/7730/v1/alarmCenter/resources/";
constexpr const char* kAlarm = "/7730/v1/alarm/";
constexpr const char* kEvents = "/events";

} // namespace

bool CGetResourceEventClientLink::request(protocol::ResourceEventInfoData& result, const std::string& resourceGuid,
                                          const protocol::ResourceEvent& query)
{
    return Exchange(Query(Path(kResources, resourceGuid, kEvents), query), result);
}

bool CGetResourceEventClientLink::requestGUID(protocol::ResourceEventGuidData& result, const std::string& resourceGuid,
                                              const protocol::ResourceEvent& query)
{
    return Exchange(Query(Path(kResources, resourceGuid, "/eventGuid"), query), result);
}

bool CModifyResourceEventClientLink::request(const std::string& resourceGuid, const protocol::ResourceEventCfg& config)
{
    return Exchange(Write(Path(kResources, resourceGuid, kEvents), config));
}

bool CDeleteResourceEventClientLink::request(protocol::ResourceEventResultData& result, const std::string& resourceGuid,
                                             const protocol::ResourceEventDelete& events)
{
    return Exchange(Remove(Path(kResources, resourceGuid, kEvents), events), result);
}

bool CGetChannelEventClientLink::request(protocol::CameraEventInfoData& result, const std::string& channelGuid,
                                         const protocol::CameraEvent& query)
{
    return Exchange(Query(Path(kAlarm, "channels/", channelGuid, kEvents), query), result);
}

bool CModifyChannelEventClientLink::request(const std::string& channelGuid, const protocol::CameraEventCfg& config)
{
    return Exchange(Write(Path(kAlarm, "channels/", channelGuid, kEvents), config));
}

bool CGetAlarmInputClientLink::request(protocol::AlarmInputEventInfoData& result, const std::string& alarmInputGuid,
                                       const protocol::AlarmInEvent& query)
{
    return Exchange(Query(Path(kAlarm, "alarmInputs/", alarmInputGuid, kEvents), query), result);
}

bool CModifyAlarmInputClientLink::request(const std::string& alarmInputGuid, const protocol::AlarmInputEventCfg& config)
{
    return Exchange(Write(Path(kAlarm, "alarmInputs/", alarmInputGuid, kEvents), config));
}

bool CGetAlarmAllTemplates::request(protocol::TemplateEventResponseListData& result,
                                    const protocol::QueryEventCondition& condition)
{
    return Exchange(Query(Path(kAlarm, "templates"), condition), result);
}

bool CModifyAlarmTemplates::request(protocol::TemplateEventResultListData& result,
                                    const protocol::ModifyEventTemplates& templates)
{
    return Exchange(Write(Path(kAlarm, "templates"), templates), result);
}

bool CGetAlarmSingleTemplate::request(protocol::TemplateEventInfoData& result, const std::string& templateGuid)
{
    return Exchange(Query(Path(kAlarm, "templates/", templateGuid)), result);
}

} // namespace nexwire
