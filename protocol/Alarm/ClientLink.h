#pragma once

#include "protocol/Common.h"

// Client links: what clients do by themselves when a resource reports an event. Event types are those of alarms, for
// example "motion", "alarmInput", "zone".

namespace protocol {

/// What clients do when an event comes.
struct NEXWIRE_API ClientLink : IInboundData {
    bool popUp = false;                       ///< Show the alarm in front of everything.
    bool sound = false;                       ///< Play a sound.
    std::string soundFile;                    ///< Which one; empty: that of the level.
    bool speak = false;                       ///< Read the alarm out.
    bool mapLocate = false;                   ///< Show the place on its map.
    bool wallDisplay = false;                 ///< Show the channels on the video wall.
    std::int32_t duration = 0;                ///< How long pictures stay. 1 to 3600 s; 0: until they are closed.
    std::vector<std::string> channelGuidList; ///< Channels to show. Up to 16 elements.
    std::vector<std::string> userGuidList;    ///< Users whose clients do so; empty: all.
    NEXWIRE_JSON
};

/// An event of a resource with what clients do then.
struct NEXWIRE_API LinkedEvent : IReturnData {
    std::string eventGuid;
    std::string eventType;
    std::string eventName;
    std::int32_t alarmLevel = 1; ///< One of: 1 low, 2 medium, 3 high.
    bool enable = true;
    std::string templateGuid; ///< Template for when it counts; empty: always.
    ClientLink clientLink;
    NEXWIRE_JSON
};

/// The same as it is to be.
struct NEXWIRE_API LinkedEventCfg : IInboundData {
    std::string eventGuid; ///< Empty in a new one.
    std::string eventType;
    std::int32_t alarmLevel = 1; ///< One of: 1 low, 2 medium, 3 high.
    bool enable = true;
    std::string templateGuid; ///< Template for when it counts; empty: always.
    ClientLink clientLink;
    NEXWIRE_JSON
};

// ---- Resources of any kind ----

/// Which events of a resource are asked for.
struct NEXWIRE_API ResourceEvent : IInboundData {
    std::string resourceType;               ///< For example: "channel", "alarmInput", "zone", "door", "device".
    std::vector<std::string> eventTypeList; ///< Empty: all.
    NEXWIRE_JSON
};

struct NEXWIRE_API ResourceEventInfo : IReturnData {
    std::string resourceGuid;
    std::string resourceName;
    std::vector<LinkedEvent> linkedEventList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ResourceEventInfoData : IReturnData {
    ResourceEventInfo resourceEventInfo;
    NEXWIRE_JSON
};

/// Identifiers of the linked events of a resource.
struct NEXWIRE_API ResourceEventGuid : IReturnData {
    std::vector<std::string> eventGuidList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ResourceEventGuidData : IReturnData {
    ResourceEventGuid resourceEventGuid;
    NEXWIRE_JSON
};

/// Events of a resource as they are to be; those that are not named stay as they are.
struct NEXWIRE_API ResourceEventCfg : IInboundData {
    std::string resourceType; ///< As in `ResourceEvent`.
    std::vector<LinkedEventCfg> linkedEventList;
    NEXWIRE_JSON
};

/// Events of a resource whose links are removed.
struct NEXWIRE_API ResourceEventDelete : IInboundData {
    std::string resourceType; ///< As in `ResourceEvent`.
    std::vector<std::string> eventGuidList;
    NEXWIRE_JSON
};

/// One result per event.
struct NEXWIRE_API ResourceEventResult : IReturnData {
    std::vector<OperationResult> operationResultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ResourceEventResultData : IReturnData {
    ResourceEventResult resourceEventResult;
    NEXWIRE_JSON
};

// ---- Channels ----

/// Which events of a channel are asked for.
struct NEXWIRE_API CameraEvent : IInboundData {
    std::vector<std::string> eventTypeList; ///< Empty: all.
    NEXWIRE_JSON
};

struct NEXWIRE_API CameraEventInfo : IReturnData {
    std::string channelGuid;
    std::string channelName;
    std::vector<LinkedEvent> linkedEventList;
    NEXWIRE_JSON
};

struct NEXWIRE_API CameraEventInfoData : IReturnData {
    CameraEventInfo cameraEventInfo;
    NEXWIRE_JSON
};

/// Events of a channel as they are to be; those that are not named stay as they are.
struct NEXWIRE_API CameraEventCfg : IInboundData {
    std::vector<LinkedEventCfg> linkedEventList;
    NEXWIRE_JSON
};

// ---- Alarm inputs ----

/// Which events of an alarm input are asked for.
struct NEXWIRE_API AlarmInEvent : IInboundData {
    std::vector<std::string> eventTypeList; ///< Empty: all.
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmInputEventInfo : IReturnData {
    std::string alarmInputGuid;
    std::string alarmInputName;
    std::vector<LinkedEvent> linkedEventList;
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmInputEventInfoData : IReturnData {
    AlarmInputEventInfo alarmInputEventInfo;
    NEXWIRE_JSON
};

/// Events of an alarm input as they are to be; those that are not named stay as they are.
struct NEXWIRE_API AlarmInputEventCfg : IInboundData {
    std::vector<LinkedEventCfg> linkedEventList;
    NEXWIRE_JSON
};

// ---- Templates ----

/// Which templates are asked for.
struct NEXWIRE_API QueryEventCondition : IInboundData {
    std::string keyword;       ///< Part of a name; empty: all.
    bool enabledOnly = false;  ///< Leave out those that are switched off.
    std::int32_t pageNo = 1;   ///< From 1.
    std::int32_t pageSize = 0; ///< 1 to 1000; 0: all on one page.
    NEXWIRE_JSON
};

/// When events count and how they are shown, for many resources at once.
struct NEXWIRE_API EventTemplate : IInboundData {
    std::string templateGuid; ///< Empty in a new one.
    std::string name;         ///< Up to 64 characters.
    bool enable = true;
    std::vector<std::string> eventTypeList;
    std::int32_t alarmLevel = 1;        ///< One of: 1 low, 2 medium, 3 high.
    std::vector<std::int32_t> weekdays; ///< 1 Monday to 7 Sunday: 1 to 7. Up to 7 elements.
    std::string beginTime;              ///< "HH:MM:SS" of each of these days.
    std::string endTime;                ///< "HH:MM:SS"; "24:00:00" is the end of the day.
    ClientLink clientLink;
    NEXWIRE_JSON
};

/// A template with what uses it.
struct NEXWIRE_API TemplateEventResponse : IReturnData {
    EventTemplate eventTemplate;
    std::int32_t resourceNum = 0; ///< Resources whose events follow it.
    NEXWIRE_JSON
};

struct NEXWIRE_API TemplateEventResponseListData : IReturnData {
    std::vector<TemplateEventResponse> templateEventResponseList;
    std::int32_t total = 0; ///< Templates that the condition selects.
    NEXWIRE_JSON
};

/// Templates as they are to be: new, changed, removed.
struct NEXWIRE_API ModifyEventTemplates : IInboundData {
    std::vector<EventTemplate> eventTemplateList; ///< Added when their identifier is empty, otherwise changed.
    std::vector<std::string> removeGuidList;
    NEXWIRE_JSON
};

/// What became of one template.
struct NEXWIRE_API TemplateEventResult : IReturnData {
    std::string templateGuid;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API TemplateEventResultListData : IReturnData {
    std::vector<TemplateEventResult> templateEventResultList;
    NEXWIRE_JSON
};

/// One template with the resources that follow it.
struct NEXWIRE_API TemplateEventInfo : IReturnData {
    EventTemplate eventTemplate;
    std::vector<std::string> resourceGuidList;
    NEXWIRE_JSON
};

struct NEXWIRE_API TemplateEventInfoData : IReturnData {
    TemplateEventInfo templateEventInfo;
    NEXWIRE_JSON
};

} // namespace protocol
