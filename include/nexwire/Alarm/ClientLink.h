#pragma once

#include "protocol/Alarm/ClientLink.h"

// Client links and templates. All functions block until the answer is there and may be called from any thread. They
// return true when the answer was a readable envelope, whatever its code; a result is untouched on false.

namespace nexwire {

/// Events of a resource with what clients do then.
class NEXWIRE_API CGetResourceEventClientLink {
public:
    static bool request(protocol::ResourceEventInfoData& result, const std::string& resourceGuid,
                        const protocol::ResourceEvent& query);
    /// Their identifiers only.
    static bool requestGUID(protocol::ResourceEventGuidData& result, const std::string& resourceGuid,
                            const protocol::ResourceEvent& query);
};

/// Sets what clients do at events of a resource.
class NEXWIRE_API CModifyResourceEventClientLink {
public:
    static bool request(const std::string& resourceGuid, const protocol::ResourceEventCfg& config);
};

/// Removes links of a resource.
class NEXWIRE_API CDeleteResourceEventClientLink {
public:
    /// One result per event.
    static bool request(protocol::ResourceEventResultData& result, const std::string& resourceGuid,
                        const protocol::ResourceEventDelete& events);
};

/// Events of a channel with what clients do then.
class NEXWIRE_API CGetChannelEventClientLink {
public:
    static bool request(protocol::CameraEventInfoData& result, const std::string& channelGuid,
                        const protocol::CameraEvent& query);
};

/// Sets what clients do at events of a channel.
class NEXWIRE_API CModifyChannelEventClientLink {
public:
    static bool request(const std::string& channelGuid, const protocol::CameraEventCfg& config);
};

/// Events of an alarm input with what clients do then.
class NEXWIRE_API CGetAlarmInputClientLink {
public:
    static bool request(protocol::AlarmInputEventInfoData& result, const std::string& alarmInputGuid,
                        const protocol::AlarmInEvent& query);
};

/// Sets what clients do at events of an alarm input.
class NEXWIRE_API CModifyAlarmInputClientLink {
public:
    static bool request(const std::string& alarmInputGuid, const protocol::AlarmInputEventCfg& config);
};

/// Templates of events.
class NEXWIRE_API CGetAlarmAllTemplates {
public:
    static bool request(protocol::TemplateEventResponseListData& result,
                        const protocol::QueryEventCondition& condition);
};

/// Adds, changes and removes templates.
class NEXWIRE_API CModifyAlarmTemplates {
public:
    /// One result per template.
    static bool request(protocol::TemplateEventResultListData& result, const protocol::ModifyEventTemplates& templates);
};

/// One template with the resources that follow it.
class NEXWIRE_API CGetAlarmSingleTemplate {
public:
    static bool request(protocol::TemplateEventInfoData& result, const std::string& templateGuid);
};

} // namespace nexwire
